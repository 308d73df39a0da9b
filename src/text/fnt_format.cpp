#include "text/fnt_format.h"

#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"
#include "foundation/limits.h"

namespace footlight {

namespace {

template <class To>
std::vector<To> take(ByteReader& reader, std::size_t count) {
  const auto bytes = reader.bytes(count);
  std::vector<To> taken(bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) taken[i] = static_cast<To>(bytes[i]);
  return taken;
}

bool isPossible(const FntFont& font, std::int32_t letters, const char** why) {
  *why = "the size of the font's strip is out of bounds";
  if (!limits::isPictureSize(font.size.width, font.size.height)) return false;
  *why = "the font's pixels are not of 16 bits";
  if (font.bpp != 15 && font.bpp != 16) return false;
  *why = "the font has more letters than there are bytes, or more than its strip has columns";
  return letters >= 0 && letters <= FntFont::kMostLetters && letters <= font.size.width;
}

}  // namespace

std::optional<FntFont> readFnt(std::span<const std::byte> file, const char** why) {
  constexpr std::size_t kMagicBytes = 4;
  ByteReader reader(file);
  reader.skip(kMagicBytes);
  FntFont font;
  font.size.width = reader.i32();
  font.size.height = reader.i32();
  font.bpp = reader.i32();
  const std::int32_t letters = reader.i32();
  if (!isPossible(font, letters, why)) return std::nullopt;

  const auto n = static_cast<std::size_t>(letters);
  const auto pixels = static_cast<std::size_t>(font.size.width) * static_cast<std::size_t>(font.size.height);
  font.letters = take<std::uint8_t>(reader, n);
  font.kerning = take<std::int8_t>(reader, n * n);
  font.left = take<std::int8_t>(reader, n);
  font.right = take<std::int8_t>(reader, n);
  font.colour = take<std::byte>(reader, pixels * 2);
  font.alpha = take<std::byte>(reader, pixels);
  *why = "the font file is cut short";
  return reader.ok() ? std::optional(std::move(font)) : std::nullopt;
}

std::vector<std::byte> writeFnt(const FntFont& font) {
  ByteWriter writer;
  writer.field("FNT", 4).i32(font.size.width).i32(font.size.height).i32(font.bpp);
  writer.i32(static_cast<std::int32_t>(font.letters.size())).bytes(std::as_bytes(std::span(font.letters)));
  for (const auto* table : {&font.kerning, &font.left, &font.right})
    writer.bytes(std::as_bytes(std::span(*table)));
  return writer.bytes(font.colour).bytes(font.alpha).take();
}

}  // namespace footlight
