#pragma once

// The bytes of one input, read from the front. Past the end everything is zero, so that whoever makes
// something of them takes the first choice, which is always the one that ends.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace footlight::fuzz {

class InputBytes {
 public:
  explicit InputBytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  bool isOver() const { return position_ >= bytes_.size(); }
  std::uint8_t next() { return isOver() ? std::uint8_t{0} : bytes_[position_++]; }
  // A number from 0 up to below `count`; 0 for a count of 0. Two bytes for more than 256.
  std::size_t below(std::size_t count) {
    if (count <= 1) return 0;
    std::size_t value = next();
    if (count > 256) value = value << 8 | next();
    return value % count;
  }
  template <class List>
  const auto& oneOf(const List& list) {
    return std::data(list)[below(std::size(list))];
  }
  // True in `wanted` of 256 cases.
  bool chance(int wanted) { return next() >= 256 - wanted; }
  // Ends the input after that many bytes at most.
  void cut(std::size_t most) { bytes_ = bytes_.first(std::min(bytes_.size(), position_ + most)); }
  // Up to `most` bytes as text.
  std::string_view text(std::size_t most) {
    const std::size_t count = std::min(most, bytes_.size() - position_);
    const std::string_view taken(reinterpret_cast<const char*>(bytes_.data()) + position_, count);
    position_ += count;
    return taken;
  }
  std::string_view rest() { return text(bytes_.size()); }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t position_ = 0;
};

}  // namespace footlight::fuzz
