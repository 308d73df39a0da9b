#pragma once

// Collects bytes of a file or a frame, little-endian whatever the machine is: the twin of ByteReader. Every
// put gives the writer back, so that the fields of a record stand in a row.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace footlight {

class ByteWriter {
 public:
  ByteWriter& u8(std::uint8_t value) { return number(value, 1); }
  ByteWriter& u16(std::uint16_t value) { return number(value, 2); }
  ByteWriter& i16(std::int16_t value) { return number(value, 2); }
  ByteWriter& u32(std::uint32_t value) { return number(value, 4); }
  ByteWriter& i32(std::int32_t value) { return number(value, 4); }
  ByteWriter& f64(double value) { return number(std::bit_cast<std::int64_t>(value), 8); }
  // The lowest `width` bytes of a number, 8 at most: what does not fit the field is cut.
  ByteWriter& number(std::int64_t value, int width) {
    for (int i = 0; i < width; ++i) bytes_.push_back(static_cast<std::byte>(value >> (8 * i) & 0xFF));
    return *this;
  }

  ByteWriter& bytes(std::span<const std::byte> more) {
    bytes_.insert(bytes_.end(), more.begin(), more.end());
    return *this;
  }
  // The characters alone, without length or end.
  ByteWriter& text(std::string_view characters) { return bytes(std::as_bytes(std::span(characters))); }
  ByteWriter& zeros(std::size_t count) {
    bytes_.resize(bytes_.size() + count);
    return *this;
  }
  // A field of fixed width: what does not fit is cut, the rest is zero.
  ByteWriter& field(std::string_view characters, std::size_t width) {
    const std::string_view kept = characters.substr(0, width);
    return text(kept).zeros(width - kept.size());
  }

  void reserve(std::size_t count) { bytes_.reserve(count); }
  void clear() { bytes_.clear(); }
  std::size_t size() const { return bytes_.size(); }
  std::span<const std::byte> written() const { return bytes_; }
  std::vector<std::byte> take() { return std::exchange(bytes_, {}); }

 private:
  std::vector<std::byte> bytes_;
};

}  // namespace footlight
