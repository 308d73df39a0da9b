#include "gfx/img_format.h"

#include <algorithm>
#include <string_view>

#include "files/lzw_compression.h"
#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"
#include "gfx/pixel_block.h"
#include "gfx/pixel_format.h"

namespace footlight {

namespace {

using Bytes = std::vector<std::byte>;
using View = std::span<const std::byte>;
using Found = std::optional<ImgPicture>;

constexpr std::size_t kHeaderBytes = 40;
constexpr std::string_view kMagic("PIK\0", 4);
constexpr std::string_view kOlderMagic("NVI\0", 4);
constexpr std::size_t kOldestStart = 80;
constexpr std::size_t kOldestHeaderBytes = 94;
constexpr int kOldestAlphaFlag = 1 << 10;

bool startsWith(View file, std::string_view magic) {
  return file.size() >= magic.size() &&
         std::equal(magic.begin(), magic.end(), file.begin(),
                    [](char c, std::byte b) { return static_cast<std::byte>(c) == b; });
}

int formatOf(int field) { return field == 2 || field == 4 || field == 8 ? GetRealBpp(field) : field; }

std::int64_t pixelsOf(const ImgPicture& picture) {
  return std::int64_t{picture.size.width} * picture.size.height;
}

std::int64_t plainSizeOf(const ImgPicture& picture) {
  return get_data_size(picture.size.width, picture.size.height, picture.bpp);
}

// What stands in the file; LZO blocks are unpacked here, straight from its bytes.
void setPlanes(ImgPicture& picture, int packing, View colour, View alpha) {
  const auto form = static_cast<_compression>(packing);
  const bool becomesPlain = form == _compression::none || form == _compression::lzw;
  const auto plane = [&](Plane which, View bytes, std::int64_t plainSize) -> Bytes {
    if (becomesPlain) return unpackPlane(form, which, bytes, static_cast<std::size_t>(plainSize));
    return {bytes.begin(), bytes.end()};
  };
  picture.stored = form;
  picture.compression = becomesPlain ? _compression::none : form;
  picture.colour = plane(Plane::colour, colour, plainSizeOf(picture));
  if (picture.hasAlpha) picture.alpha = plane(Plane::alpha, alpha, pixelsOf(picture));
}

bool isForm(int packing) { return packing == 0 || (packing >= 2 && packing <= 5); }

// What holds for the numbers of every layout.
const char* faultOf(const ImgPicture& picture, int packing, std::int64_t colourSize, std::int64_t alphaSize) {
  if (!isPictureSize(picture.size.width, picture.size.height))
    return "the picture's width or height is out of bounds";
  if (!isForm(packing)) return "the picture is packed in an unknown form";
  if (colourSize < 0 || alphaSize < 0) return "the picture's planes do not fit its file";
  if (packing == 0 && alphaSize != 0 && alphaSize != pixelsOf(picture))
    return "the picture's alpha plane is not of the picture's size";
  return nullptr;
}

Found refuse(const char** why, const char* text) {
  *why = text;
  return std::nullopt;
}

constexpr const char* kCutOff = "the picture's header is cut off";

Found readCurrent(View file, const char** why) {
  ByteReader reader(file);
  reader.skip(kMagic.size());
  ImgPicture picture;
  picture.size.width = reader.i32();
  picture.size.height = reader.i32();
  picture.bpp = formatOf(reader.i32());
  std::int64_t colourSize = reader.i32();
  reader.skip(4);
  int packing = reader.i32();
  const std::int64_t alphaSize = reader.i32();
  picture.position.x = reader.i32();
  picture.position.y = reader.i32();
  if (!reader.ok()) return refuse(why, kCutOff);
  if (packing != static_cast<int>(_compression::jpeg)) {
    colourSize = static_cast<std::int64_t>(reader.left()) - alphaSize;
  }
  if (packing == 0 && colourSize != plainSizeOf(picture)) packing = static_cast<int>(_compression::lzw);
  if (const char* fault = faultOf(picture, packing, colourSize, alphaSize); fault != nullptr)
    return refuse(why, fault);
  picture.hasAlpha = alphaSize > 0;
  const View colour = reader.atMost(static_cast<std::uint64_t>(colourSize));
  setPlanes(picture, packing, colour, reader.atMost(static_cast<std::uint64_t>(alphaSize)));
  return picture;
}

Found readOlder(View file, const char** why) {
  ByteReader reader(file);
  reader.skip(kOlderMagic.size());
  ImgPicture picture;
  picture.size.width = reader.i16();
  picture.size.height = reader.i16();
  picture.bpp = formatOf(reader.u8());
  const int colourSize = reader.i32();
  const int alphaSize = reader.i32();
  picture.position.x = reader.i16();
  picture.position.y = reader.i16();
  const int packing = reader.i32();
  reader.skip(12);
  if (!reader.ok()) return refuse(why, kCutOff);
  if (const char* fault = faultOf(picture, packing, colourSize, alphaSize); fault != nullptr)
    return refuse(why, fault);
  picture.hasAlpha = alphaSize > 0;
  const View colour = reader.atMost(static_cast<std::uint64_t>(colourSize));
  const View alpha = reader.atMost(static_cast<std::uint64_t>(alphaSize));
  if (packing == static_cast<int>(_compression::lzw)) {
    const auto unpack = [](View block, std::int64_t size) {
      return CLZWCompression(block).decompress(static_cast<std::size_t>(size));
    };
    picture.stored = _compression::lzw;
    picture.colour = unpack(colour, plainSizeOf(picture));
    if (picture.hasAlpha) picture.alpha = unpack(alpha, pixelsOf(picture));
    return picture;
  }
  setPlanes(picture, packing, colour, alpha);
  return picture;
}

// An LZO block at the reader, by its own length.
View takeBlock(ByteReader& reader, View file) {
  constexpr std::size_t kBlockHeaderBytes = 8;
  const std::size_t start = reader.position();
  reader.atMost(4);
  const int packed = reader.i32();
  if (!reader.ok()) return {};
  reader.atMost(static_cast<std::uint64_t>(std::max(0, packed)));
  return file.subspan(start, std::max(kBlockHeaderBytes, reader.position() - start));
}

// The colour data go up to the alpha plane. Some writers counted a header of 40 bytes, so plain pixels may
// come short by the difference.
Found readOldest(View file, const char** why) {
  ByteReader reader(file);
  reader.skip(kOldestStart);
  ImgPicture picture;
  picture.size.width = reader.i16();
  picture.size.height = reader.i16();
  reader.skip(6);
  const int flags = reader.u16();
  reader.skip(2);
  if (!reader.ok()) return refuse(why, "the file is no picture");
  const int code = flags & 0xF;
  if (code != 2 && code != 4 && code != 8) return refuse(why, "the file is no picture");
  picture.bpp = formatOf(code);
  picture.hasAlpha = (flags & kOldestAlphaFlag) != 0;
  if (const char* fault = faultOf(picture, 0, 0, picture.hasAlpha ? pixelsOf(picture) : 0); fault != nullptr)
    return refuse(why, fault);
  const std::int64_t plainSize = plainSizeOf(picture);
  const std::int64_t length = static_cast<std::int64_t>(file.size()) - kOldestHeaderBytes -
                              (picture.hasAlpha ? pixelsOf(picture) : 0);
  const bool isPlain =
      length == plainSize || length + std::int64_t{kOldestHeaderBytes - kHeaderBytes} == plainSize;
  const _compression form = isPlain ? _compression::none : _compression::lzw;
  const View colour =
      isPlain ? reader.atMost(static_cast<std::uint64_t>(plainSize)) : takeBlock(reader, file);
  picture.stored = form;
  picture.colour = unpackPlane(form, Plane::colour, colour, static_cast<std::size_t>(plainSize));
  if (!picture.hasAlpha) return picture;
  const View alpha = reader.atMost(reader.left());
  const auto alphaSize = static_cast<std::size_t>(pixelsOf(picture));
  picture.alpha =
      unpackPlane(alpha.size() == alphaSize ? _compression::none : form, Plane::alpha, alpha, alphaSize);
  return picture;
}

}  // namespace

std::optional<ImgPicture> readImg(std::span<const std::byte> file, const char** why) {
  if (startsWith(file, kMagic)) return readCurrent(file, why);
  if (isOlderImg(file)) return readOlder(file, why);
  return readOldest(file, why);
}

bool isOlderImg(std::span<const std::byte> file) { return startsWith(file, kOlderMagic); }

std::vector<std::byte> writeImg(const ImgPicture& picture, _compression packing) {
  ByteWriter out;
  out.reserve(kHeaderBytes + picture.colour.size() + picture.alpha.size());
  for (const char c : kMagic) out.u8(static_cast<std::uint8_t>(c));
  out.i32(picture.size.width).i32(picture.size.height).i32(picture.bpp);
  out.number(std::ssize(picture.colour), 4).i32(0).i32(static_cast<std::int32_t>(packing));
  out.number(std::ssize(picture.alpha), 4).i32(picture.position.x).i32(picture.position.y);
  return out.bytes(picture.colour).bytes(picture.alpha).take();
}

}  // namespace footlight
