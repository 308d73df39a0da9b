#include "tga_reader.h"

#include "foundation/byte_reader.h"
#include "foundation/limits.h"

namespace footlight::image {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;

struct Header {
  int idLength, paletteKind, kind;
  int paletteFirst, paletteCount, paletteBits;
  int width, height, bits, corner;
};

Header readHeader(ByteReader& reader) {
  Header h{};
  h.idLength = reader.u8();
  h.paletteKind = reader.u8();
  h.kind = reader.u8();
  h.paletteFirst = reader.u16();
  h.paletteCount = reader.u16();
  h.paletteBits = reader.u8();
  reader.skip(4);
  h.width = reader.u16();
  h.height = reader.u16();
  h.bits = reader.u8();
  h.corner = reader.u8();
  return h;
}

constexpr std::uint32_t widened(std::uint32_t five) { return five << 3 | five >> 2; }

// A colour of 15, 16, 24 or 32 bits.
std::uint32_t nextColour(ByteReader& reader, int bits) {
  if (bits <= 16) {
    const std::uint32_t pixel = reader.u16();
    return kOpaque | widened(pixel >> 10 & 31) << 16 | widened(pixel >> 5 & 31) << 8 | widened(pixel & 31);
  }
  const std::uint32_t blue = reader.u8();
  const std::uint32_t green = reader.u8();
  const std::uint32_t red = reader.u8();
  const std::uint32_t alpha = bits == 32 ? reader.u8() : 255;
  return alpha << 24 | red << 16 | green << 8 | blue;
}

bool isColourDepth(int bits) { return bits == 15 || bits == 16 || bits == 24 || bits == 32; }

bool isKnown(const Header& h) {
  switch (h.kind & ~8) {
    case 1:
      return h.bits == 8 && h.paletteKind == 1 && isColourDepth(h.paletteBits);
    case 2:
      return isColourDepth(h.bits);
    case 3:
      return h.bits == 8;
    default:
      return false;
  }
}

class Pixels {
 public:
  Pixels(ByteReader& reader, const Header& header) : reader_(reader), header_(header) {
    for (int i = 0; i < header.paletteCount && header.paletteKind == 1 && reader.ok(); ++i)
      palette_.push_back(nextColour(reader, header.paletteBits));
  }

  std::uint32_t next() {
    if ((header_.kind & 8) == 0) return read();
    if (left_ == 0) {
      const int control = reader_.u8();
      left_ = (control & 0x7F) + 1;
      isRun_ = (control & 0x80) != 0;
      if (isRun_) run_ = read();
    }
    --left_;
    return isRun_ ? run_ : read();
  }

 private:
  std::uint32_t read() {
    const int kind = header_.kind & ~8;
    if (kind == 2) return nextColour(reader_, header_.bits);
    const std::uint32_t value = reader_.u8();
    if (kind == 3) return kOpaque | value * 0x010101;
    const std::int64_t index = std::int64_t{value} - header_.paletteFirst;
    const bool isIn = index >= 0 && index < static_cast<std::int64_t>(palette_.size());
    return isIn ? palette_[static_cast<std::size_t>(index)] : kOpaque;
  }

  ByteReader& reader_;
  const Header& header_;
  std::vector<std::uint32_t> palette_;
  int left_ = 0;
  bool isRun_ = false;
  std::uint32_t run_ = 0;
};

}  // namespace

std::optional<Picture> readTgaPicture(std::span<const std::byte> file, std::string* why) {
  ByteReader reader(file);
  const Header header = readHeader(reader);
  reader.skip(static_cast<std::uint64_t>(header.idLength));
  if (!reader.ok() || !isKnown(header) || !limits::isPictureSize(header.width, header.height)) {
    *why = "no TGA picture that can be read";
    return std::nullopt;
  }
  Pixels pixels(reader, header);
  Picture picture;
  picture.pixels = {header.width, header.height, {}};
  picture.pixels.pixels.assign(
      static_cast<std::size_t>(header.width) * static_cast<std::size_t>(header.height), kOpaque);
  for (int y = 0; y < header.height; ++y) {
    const int row = (header.corner & 0x20) != 0 ? y : header.height - 1 - y;
    for (int x = 0; x < header.width; ++x) {
      const int column = (header.corner & 0x10) != 0 ? header.width - 1 - x : x;
      const std::uint32_t pixel = pixels.next();
      if (!reader.ok()) return picture;
      picture.pixels.pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(header.width) +
                            static_cast<std::size_t>(column)] = pixel;
      picture.hasAlpha |= (pixel & kOpaque) != kOpaque;
    }
  }
  return picture;
}

}  // namespace footlight::image
