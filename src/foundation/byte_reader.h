#pragma once

// A bounded cursor over bytes of a file or a frame, little-endian. Every get is checked: one that does
// not fit poisons the reader, and from then on all gets yield zeros and nothing is left. The bytes
// stay the caller's.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace footlight {

class ByteReader {
 public:
  explicit ByteReader(std::span<const std::byte> bytes) : bytes_(bytes) {}

  // False once a get or a skip went past the end.
  bool ok() const { return !poisoned_; }
  std::size_t left() const { return poisoned_ ? 0 : bytes_.size() - position_; }
  std::size_t position() const { return position_; }

  std::uint8_t u8() { return static_cast<std::uint8_t>(number(1)); }
  std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
  std::int16_t i16() { return static_cast<std::int16_t>(u16()); }
  std::uint32_t u32() { return static_cast<std::uint32_t>(number(4)); }
  std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
  double f64() { return std::bit_cast<double>(number(8)); }

  // The next `count` bytes; none of them when fewer are left.
  std::span<const std::byte> bytes(std::uint64_t count) {
    if (count > left()) {
      poisoned_ = true;
      return {};
    }
    const auto taken = bytes_.subspan(position_, static_cast<std::size_t>(count));
    position_ += taken.size();
    return taken;
  }
  // Up to `count` bytes, fewer at the end of the data; never poisons.
  std::span<const std::byte> atMost(std::uint64_t count) { return bytes(count < left() ? count : left()); }
  void skip(std::uint64_t count) { bytes(count); }

 private:
  std::uint64_t number(std::size_t width) {
    const auto taken = bytes(width);
    std::uint64_t value = 0;
    for (std::size_t i = taken.size(); i > 0; --i)
      value = value << 8 | std::to_integer<std::uint64_t>(taken[i - 1]);
    return value;
  }

  std::span<const std::byte> bytes_;
  std::size_t position_ = 0;
  bool poisoned_ = false;
};

}  // namespace footlight
