#include "gfx/img_format.h"

#include <algorithm>
#include <array>

#include "foundation/byte_reader.h"
#include "gfx/pixel_format.h"

namespace footlight {

namespace {

constexpr std::size_t kHeaderBytes = 40;
constexpr std::array<std::uint8_t, 4> kMagic = {'P', 'I', 'K', 0};

bool startsWith(std::span<const std::byte> file, std::string_view magic) {
  return file.size() > magic.size() && file[magic.size()] == std::byte{0} &&
         std::equal(magic.begin(), magic.end(), file.begin(),
                    [](char c, std::byte b) { return static_cast<std::byte>(c) == b; });
}

int formatOf(int field) { return field == 2 || field == 4 || field == 8 ? GetRealBpp(field) : field; }

// The bytes, cut or filled with zeros to the size.
std::vector<std::byte> sized(std::span<const std::byte> bytes, std::int64_t size) {
  std::vector<std::byte> out(static_cast<std::size_t>(size));
  std::copy_n(bytes.begin(), std::min(bytes.size(), out.size()), out.begin());
  return out;
}

std::vector<std::byte> asTheyAre(std::span<const std::byte> bytes) { return {bytes.begin(), bytes.end()}; }

const char* refusal(std::span<const std::byte> file) {
  if (startsWith(file, "NVI") || file.size() > kHeaderBytes)
    return "the picture is in an older layout, which is not read";
  return "the file is no picture";
}

void put(std::vector<std::byte>* out, std::int64_t number) {
  for (int shift = 0; shift < 32; shift += 8) out->push_back(static_cast<std::byte>(number >> shift & 0xFF));
}

}  // namespace

std::optional<ImgPicture> readImg(std::span<const std::byte> file, const char** why) {
  if (!startsWith(file, "PIK")) {
    *why = refusal(file);
    return std::nullopt;
  }
  ByteReader reader(file);
  reader.skip(kMagic.size());
  ImgPicture picture;
  picture.size.width = reader.i32();
  picture.size.height = reader.i32();
  picture.bpp = formatOf(reader.i32());
  reader.skip(8);
  const int packing = reader.i32();
  const std::int64_t alphaSize = std::max(0, reader.i32());
  picture.position.x = reader.i32();
  picture.position.y = reader.i32();
  if (!reader.ok() || !isPictureSize(picture.size.width, picture.size.height)) {
    *why = "the picture's header is cut off or its size is out of bounds";
    return std::nullopt;
  }
  const std::int64_t pixels = std::int64_t{picture.size.width} * picture.size.height;
  const std::int64_t plainSize = pixels * get_pixel_size(picture.bpp);
  const std::int64_t colourSize = static_cast<std::int64_t>(reader.left()) - alphaSize;
  const bool isPlain = packing == static_cast<int>(_compression::none) && colourSize == plainSize;
  if (!isPlain && packing != static_cast<int>(_compression::rle)) {
    *why = "the picture is packed in a form that is not read";
    return std::nullopt;
  }
  picture.compression = isPlain ? _compression::none : _compression::rle;
  const auto colour = reader.atMost(static_cast<std::uint64_t>(std::max<std::int64_t>(0, colourSize)));
  const auto alpha = reader.atMost(static_cast<std::uint64_t>(alphaSize));
  picture.colour = isPlain ? sized(colour, plainSize) : asTheyAre(colour);
  if (alphaSize > 0) picture.alpha = isPlain ? sized(alpha, pixels) : asTheyAre(alpha);
  return picture;
}

std::vector<std::byte> writeImg(const ImgPicture& picture, _compression packing) {
  std::vector<std::byte> out;
  out.reserve(kHeaderBytes + picture.colour.size() + picture.alpha.size());
  for (const std::uint8_t byte : kMagic) out.push_back(static_cast<std::byte>(byte));
  put(&out, picture.size.width);
  put(&out, picture.size.height);
  put(&out, picture.bpp);
  put(&out, static_cast<std::int64_t>(picture.colour.size()));
  put(&out, 0);
  put(&out, static_cast<std::int64_t>(packing));
  put(&out, static_cast<std::int64_t>(picture.alpha.size()));
  put(&out, picture.position.x);
  put(&out, picture.position.y);
  out.insert(out.end(), picture.colour.begin(), picture.colour.end());
  out.insert(out.end(), picture.alpha.begin(), picture.alpha.end());
  return out;
}

}  // namespace footlight
