// Every decoder of packed bytes: the input is a form, a size, and packed bytes. What comes out has the asked
// size and is the same twice; and the same bytes, packed, come back.

#include <algorithm>
#include <cstdlib>

#include "files/lzw_compression.h"
#include "files/lzw_compression2.h"
#include "files/rle_compression.h"
#include "files/rle_compression2.h"

namespace footlight::fuzz {

namespace {

using Bytes = std::vector<std::byte>;
using View = std::span<const std::byte>;

void demand(bool holds) {
  if (!holds) std::abort();
}

struct Coder {
  Bytes (*unpack)(View, std::size_t);
  Bytes (*pack)(View);
};

constexpr Coder kCoders[] = {
    {CRLECompression::decompress, CRLECompression::compress},
    {CRLECompression::decompresschar, CRLECompression::compresschar},
    {[](View packed, std::size_t size) { return CLZWCompression(packed).decompress(size); },
     [](View plain) { return CLZWCompression(plain).compress(); }},
    {[](View packed, std::size_t size) { return CLZWCompression2(packed).decompress(size); },
     [](View plain) { return CLZWCompression2(plain).compress(); }},
};

void checkCoder(const Coder& coder, View bytes, std::size_t size) {
  const Bytes out = coder.unpack(bytes, size);
  demand(out.size() == size);
  demand(out == coder.unpack(bytes, size));
  const View whole = bytes.first(bytes.size() / 2 * 2);  // pairs of bytes are packed by one of the coders
  demand(std::ranges::equal(coder.unpack(coder.pack(whole), whole.size()), whole));
}

void checkRows(View bytes, std::size_t size) {
  const auto width = static_cast<int>(size % 64);
  const auto height = static_cast<int>(size / 64 % 16);
  std::vector<std::int16_t> lengths;
  for (int y = 0; y < height && bytes.size() > 1; ++y, bytes = bytes.subspan(2)) {
    lengths.push_back(
        static_cast<std::int16_t>(std::to_integer<int>(bytes[0]) | std::to_integer<int>(bytes[1]) << 8));
  }
  const CRLECompression2 rows({width, height}, lengths, bytes);
  const Bytes out = rows.Decompress();
  demand(out.size() == static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  demand(out == rows.Decompress());
}

void checkBound(View bytes, std::size_t size) {
  demand(CLZWCompression2(bytes).decompressUpTo(size).size() <= size);
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t length) {
  using namespace footlight::fuzz;
  if (length < 3) return 0;
  const std::size_t form = data[0] % (std::size(kCoders) + 2);
  const std::size_t size = data[1] | data[2] << 8;
  const View bytes = std::as_bytes(std::span(data, length)).subspan(3);
  if (form < std::size(kCoders)) {
    checkCoder(kCoders[form], bytes, size);
  } else if (form == std::size(kCoders)) {
    checkRows(bytes, size);
  } else {
    checkBound(bytes, size);
  }
  return 0;
}
