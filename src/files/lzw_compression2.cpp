#include "files/lzw_compression2.h"

#include <algorithm>
#include <lzo/lzo1x.h>
#include <memory>

#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"

namespace footlight {

namespace {

constexpr std::size_t kHeaderBytes = 8;
constexpr std::size_t kWorkBytes = std::size_t{256} << 10;
constexpr std::size_t kMostOutOfOne = 255;  // a byte of the stream makes at most so many
static_assert(kWorkBytes >= LZO1X_1_MEM_COMPRESS);

bool isReady() {
  static const bool ready = lzo_init() == LZO_E_OK;
  return ready;
}

const unsigned char* raw(const std::byte* bytes) { return reinterpret_cast<const unsigned char*>(bytes); }
unsigned char* raw(std::byte* bytes) { return reinterpret_cast<unsigned char*>(bytes); }

struct Block {
  std::size_t claimed;  // bytes that it says it unpacks to
  std::span<const std::byte> stream;
};

Block blockOf(std::span<const std::byte> data) {
  ByteReader reader(data);
  const int claimed = reader.i32();
  const int packed = reader.i32();
  const std::size_t length = packed < 0 ? reader.left() : static_cast<std::size_t>(packed);
  return {static_cast<std::size_t>(std::max(0, claimed)), reader.atMost(length)};
}

struct Decoded {
  std::size_t size;  // bytes that the stream has filled
  bool isCut;        // there was no room for the next record
};

Decoded decode(std::span<const std::byte> stream, std::span<std::byte> out) {
  if (!isReady() || out.empty() || stream.empty()) return {0, false};
  lzo_uint size = out.size();
  const int result =
      lzo1x_decompress_safe(raw(stream.data()), stream.size(), raw(out.data()), &size, nullptr);
  return {std::min<std::size_t>(size, out.size()), result == LZO_E_OUTPUT_OVERRUN};
}

// The beginning of what a stream holds, where its last record crosses the end of what is wanted. The decoder
// gives whole records only, so it gets the room that the stream can fill.
std::size_t decodeBeyond(const Block& block, std::span<std::byte> out) {
  std::vector<std::byte> all(std::min(block.claimed, block.stream.size() * kMostOutOfOne));
  const std::size_t size = std::min(decode(block.stream, all).size, out.size());
  std::copy_n(all.begin(), size, out.begin());
  return size;
}

// Fills the beginning of `out` and gives the number of bytes.
std::size_t unpack(const Block& block, std::span<std::byte> out) {
  const Decoded first = decode(block.stream, out);
  std::size_t size = first.size;
  if (first.isCut && block.claimed > out.size()) size = std::max(size, decodeBeyond(block, out));
  return std::min(size, block.claimed);
}

}  // namespace

std::vector<std::byte> CLZWCompression2::compress() const {
  // Twice the input; a few bytes can grow by more than that.
  const std::size_t room = std::max(data_.size() * 2, data_.size() + data_.size() / 16 + 67);
  std::vector<std::byte> block(kHeaderBytes + room);
  const auto work = std::make_unique<std::byte[]>(kWorkBytes);
  lzo_uint size = room;
  if (!isReady() || lzo1x_1_compress(raw(data_.data()), data_.size(), raw(block.data() + kHeaderBytes), &size,
                                     work.get()) != LZO_E_OK) {
    return {};
  }
  ByteWriter header;
  header.number(std::ssize(data_), 4).number(static_cast<std::int64_t>(size), 4);
  std::ranges::copy(header.written(), block.begin());
  block.resize(kHeaderBytes + size);
  return block;
}

std::vector<std::byte> CLZWCompression2::decompress(std::size_t unpackedSize) const {
  std::vector<std::byte> out(unpackedSize);
  const std::size_t size = unpack(blockOf(data_), out);
  // The decoder may have touched bytes behind those that it counts.
  std::fill(out.begin() + static_cast<std::ptrdiff_t>(size), out.end(), std::byte{0});
  return out;
}

std::vector<std::byte> CLZWCompression2::decompressUpTo(std::size_t bound) const {
  const Block block = blockOf(data_);
  std::vector<std::byte> out(std::min({bound, block.claimed, block.stream.size() * kMostOutOfOne}));
  out.resize(unpack(block, out));
  return out;
}

}  // namespace footlight
