#include "files/rle_compression2.h"

#include <algorithm>

namespace footlight {

namespace {

void unpackRow(std::span<const std::byte> packed, std::span<std::byte> row) {
  while (packed.size() > 1 && !row.empty()) {
    const int byte = std::to_integer<int>(packed.front());
    const int control = byte < 128 ? byte : byte - 256;
    packed = packed.subspan(1);
    const std::size_t stored = control < 0 ? 1 : std::min<std::size_t>(control + 1, packed.size());
    const std::size_t wanted = std::min<std::size_t>(control < 0 ? 1 - control : stored, row.size());
    if (control < 0) {
      std::fill_n(row.begin(), wanted, packed.front());
    } else {
      std::copy_n(packed.begin(), wanted, row.begin());
    }
    packed = packed.subspan(stored);
    row = row.subspan(wanted);
  }
}

}  // namespace

std::vector<std::byte> CRLECompression2::Decompress() const {
  const auto width = static_cast<std::size_t>(std::max(0, size_.width));
  const auto height = static_cast<std::size_t>(std::max(0, size_.height));
  std::vector<std::byte> out(width * height);
  std::span<const std::byte> packed = data_;
  for (std::size_t y = 0; y < std::min(height, rowLengths_.size()); ++y) {
    const auto length = std::min<std::size_t>(std::max<int>(0, rowLengths_[y]), packed.size());
    unpackRow(packed.first(length), std::span(out).subspan(y * width, width));
    packed = packed.subspan(length);
  }
  return out;
}

}  // namespace footlight
