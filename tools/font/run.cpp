#include "font/run.h"

#include "font/letters.h"
#include "foundation/code_page.h"
#include "foundation/limits.h"
#include "machine_file.h"
#include "platform/posix/atomic_file.h"

namespace footlight::font {

namespace {

using Bytes = std::vector<std::byte>;

Outcome failure(const std::string& file, const std::string& why) { return {file + ": " + why, {}, {}}; }

std::string_view textOf(const Bytes& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

Outcome write(const std::string& name, std::span<const std::byte> bytes) {
  const std::string why = platform::writeAtomically(name, bytes);
  return why.empty() ? Outcome() : failure(name, why);
}

std::string sizeOf(const FntFont& font) {
  const int cell = font.letters.empty() ? 0 : font.size.width / static_cast<int>(font.letters.size());
  return std::to_string(font.letters.size()) + " letters in cells of " + std::to_string(cell) + "x" +
         std::to_string(font.size.height);
}

Outcome make(const Words& words) {
  std::string why;
  std::string letters = drawableLetters();
  if (!words.letters.empty()) {
    const auto text = image::readFile(words.letters, limits::kTextFileBytes, &why);
    const auto wanted = text ? lettersFrom(textOf(*text), &why) : std::nullopt;
    if (!wanted) return failure(words.letters, why);
    letters = *wanted;
  }
  const auto file = image::readFile(words.input, limits::kPictureFileBytes, &why);
  const auto outline =
      file ? drawLetters(*file, words.face, words.size, letters, words.kerning, &why) : std::nullopt;
  if (!outline) return failure(words.input, why);
  Outcome outcome = write(words.output, writeFnt(outline->font));
  if (!outline->missing.empty() && !words.letters.empty())
    outcome.remark = words.input + " does not have " + code_page::toUtf8(outline->missing);
  outcome.info = words.output + ": " + sizeOf(outline->font);
  return outcome;
}

Outcome fromPicture(const Words& words) {
  std::string why;
  const auto picture = image::readFile(words.input, limits::kPictureFileBytes, &why);
  if (!picture) return failure(words.input, why);
  const auto strip = platform::decodePng(*picture);
  if (!strip) return failure(words.input, "is no PNG picture, or a damaged one");
  const auto letters = image::readFile(words.letters, limits::kTextFileBytes, &why);
  const auto font = letters ? fromStrip(*strip, textOf(*letters), &why) : std::nullopt;
  if (!font) return failure(words.letters, why);
  Outcome outcome = write(words.output, writeFnt(*font));
  outcome.info = words.output + ": " + sizeOf(*font);
  return outcome;
}

Outcome takeApart(const Words& words, const FntFont& font) {
  const platform::PngPicture strip = toStrip(font);
  const std::string why = platform::writePngFile(words.output, strip.width, strip.height, strip.pixels,
                                                 platform::PngChannels::rgba);
  if (!why.empty()) return failure(words.output, why);
  const std::string text = toText(font);
  return write(words.letters, std::as_bytes(std::span(text)));
}

Outcome describe(const Words& words, const FntFont& font) {
  std::string letters;
  for (const std::uint8_t letter : font.letters) letters += static_cast<char>(letter);
  return {{}, words.input + ": " + sizeOf(font) + "\n" + code_page::toUtf8(letters), {}};
}

}  // namespace

Outcome run(const Words& words) {
  if (words.command == Command::make) return make(words);
  if (words.command == Command::strip) return fromPicture(words);
  std::string why;
  const auto file = image::readFile(words.input, limits::kPictureFileBytes, &why);
  if (!file) return failure(words.input, why);
  const char* fault = "";
  const auto font = readFnt(*file, &fault);
  if (!font) return failure(words.input, fault);
  return words.command == Command::unpack ? takeApart(words, *font) : describe(words, *font);
}

}  // namespace footlight::font
