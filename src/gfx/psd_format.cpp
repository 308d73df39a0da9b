#include "gfx/psd_format.h"

#include <algorithm>
#include <cstdlib>

#include "files/rle_compression2.h"
#include "foundation/byte_reader.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "gfx/pixel_block.h"

namespace footlight {

namespace {

// Numbers with the highest byte first.
class BigReader : public ByteReader {
 public:
  using ByteReader::ByteReader;
  std::uint16_t big16() {
    const std::uint16_t value = u16();
    return static_cast<std::uint16_t>(value << 8 | value >> 8);
  }
  std::int16_t signed16() { return static_cast<std::int16_t>(big16()); }
  std::uint32_t big32() { return __builtin_bswap32(u32()); }
  std::int32_t signed32() { return static_cast<std::int32_t>(big32()); }
};

constexpr const char* kEndsEarly = "the PSD file ends early";

std::size_t areaOf(const CXRect& rect) {
  const std::int64_t width = std::int64_t{rect.right} - rect.left;
  const std::int64_t height = std::int64_t{rect.bottom} - rect.top;
  return isPictureSize(width, height) ? static_cast<std::size_t>(width * height) : 0;
}

std::string readName(BigReader& reader) {
  const std::size_t length = reader.u8();
  if (length == 0) {
    return {};
  }
  const std::size_t padded = (length + 1 + 3) / 4 * 4 - 1;
  const auto bytes = reader.bytes(padded);
  if (bytes.empty()) return {};
  const auto* letters = reinterpret_cast<const char*>(bytes.data());
  return std::string(letters, std::find(letters, letters + length, '\0'));
}

// Behind the name; anything that is no block ends the record.
void skipBlocks(BigReader& reader, std::span<const std::byte> file) {
  constexpr std::string_view kMark = "8BIM";
  for (;;) {
    const auto rest = file.subspan(std::min(reader.position(), file.size()));
    const bool isBlock = reader.ok() && rest.size() >= kMark.size() &&
                         std::equal(kMark.begin(), kMark.end(), reinterpret_cast<const char*>(rest.data()));
    if (!isBlock) return;
    reader.skip(8);
    reader.skip(reader.big32());
  }
}

void readRecord(BigReader& reader, std::span<const std::byte> file, std::size_t channels, PsdLayer* layer) {
  for (std::size_t i = 0; i < channels; ++i) {
    layer->channels.push_back({.id = reader.signed16(), .plane = {}});
    reader.skip(4);
  }
  reader.skip(16);
  if (reader.signed32() > 0) reader.skip(20);
  reader.skip(reader.big32());
  layer->name = readName(reader);
  skipBlocks(reader, file);
}

// The packed rows of a plane; they are passed over where the layer has no picture.
std::vector<std::byte> readRows(BigReader& reader, const CXRect& rect) {
  std::vector<std::int16_t> lengths;
  std::uint64_t packed = 0;
  for (std::int64_t y = rect.top; y < rect.bottom && reader.ok(); ++y) {
    lengths.push_back(reader.signed16());
    packed += static_cast<std::uint64_t>(std::max<int>(0, lengths.back()));
  }
  const auto data = reader.bytes(packed);
  if (!reader.ok() || areaOf(rect) == 0) return {};
  return CRLECompression2(rect.Size(), lengths, data).Decompress();
}

std::vector<std::byte> readPlain(BigReader& reader, const CXRect& rect) {
  const std::int64_t width = std::int64_t{rect.right} - rect.left;
  const std::int64_t height = std::int64_t{rect.bottom} - rect.top;
  if (width <= 0 || height <= 0) return {};
  const auto bytes = reader.bytes(static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height));
  return areaOf(rect) != 0 ? std::vector<std::byte>(bytes.begin(), bytes.end()) : std::vector<std::byte>();
}

// False when the file ends within the layer.
bool readPlanes(BigReader& reader, PsdLayer* layer) {
  enum Coding { kPlain = 0, kRows = 1 };
  for (PsdChannel& channel : layer->channels) {
    const int coding = reader.signed16();
    if (coding == kPlain) channel.plane = readPlain(reader, layer->rect);
    if (coding == kRows) channel.plane = readRows(reader, layer->rect);
  }
  return reader.ok();
}

// The records of all layers. Each has some bytes, so a count that the file has no room for is no count.
bool readRecords(BigReader& reader, std::span<const std::byte> file, PsdPicture* picture) {
  constexpr std::size_t kLeastRecord = 16 + 2 + 16 + 4 + 4 + 1;
  constexpr std::size_t kChannelRecord = 6;
  const int count = std::abs(int{reader.signed16()});
  if (!reader.ok() || count > limits::kPhotoLayers ||
      static_cast<std::size_t>(count) * kLeastRecord > reader.left()) {
    picture->why = "no layers that can be read are in the PSD file";
    return false;
  }
  std::size_t channels = 0;
  for (int i = 0; i < count; ++i) {
    PsdLayer layer;
    layer.rect.top = reader.signed32();
    layer.rect.left = reader.signed32();
    layer.rect.bottom = reader.signed32();
    layer.rect.right = reader.signed32();
    const std::size_t own = reader.big16();
    if (i == 0) channels = own;
    if (channels > limits::kPhotoChannels || channels * kChannelRecord > reader.left()) {
      picture->why = "a layer of the PSD file has too many channels";
      return false;
    }
    readRecord(reader, file, channels, &layer);
    if (!reader.ok()) {
      picture->why = kEndsEarly;
      return false;
    }
    picture->layers.push_back(std::move(layer));
  }
  return true;
}

}  // namespace

PsdPicture readPsd(std::span<const std::byte> file) {
  PsdPicture picture;
  BigReader reader(file);
  reader.skip(26);
  reader.skip(4);  // the length of the colour mode data
  reader.skip(reader.big32());
  reader.skip(8);
  if (!readRecords(reader, file, &picture)) {
    picture.layers.clear();  // no layer's pixels come before the last record
    return picture;
  }
  std::size_t whole = 0;
  std::int64_t pixels = 0;
  for (PsdLayer& layer : picture.layers) {
    pixels += static_cast<std::int64_t>(areaOf(layer.rect));
    if (pixels > limits::kAnimationPixels ||
        !memory::hasRoom(static_cast<std::int64_t>(areaOf(layer.rect) * layer.channels.size()))) {
      picture.why = "the layers of the PSD file are too large";
      break;
    }
    layer.isWhole = readPlanes(reader, &layer);
    if (!layer.isWhole) {
      picture.why = kEndsEarly;
      break;
    }
    ++whole;
  }
  picture.layers.resize(whole);
  return picture;
}

}  // namespace footlight
