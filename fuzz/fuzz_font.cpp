// A font file, from the disk to the letters. One that loads is the same each time and comes back from its own
// written form; each of its letters stays where its width says. One that does not load has no letters.

#include "demand.h"
#include "files/file.h"
#include "text/fnt_format.h"
#include "text/font_collection.h"

namespace footlight::fuzz {

namespace {

void checkForm(std::span<const std::byte> file) {
  const char* why = nullptr;
  const auto font = readFnt(file, &why);
  if (!font) return;
  const auto again = readFnt(writeFnt(*font), &why);
  demand(again && again->size == font->size && again->letters == font->letters &&
         again->kerning == font->kerning && again->left == font->left && again->right == font->right &&
         again->colour == font->colour && again->alpha == font->alpha);
}

void checkLetters(CSimpleFont6& font) {
  CGraphicsObject target(nullptr, {40, 20}, 16);
  font.SetDestiny(&target);
  char previous = 0;
  for (int i = 0; i < 256; i += 3) {
    const auto letter = static_cast<char>(i);
    demand(font.getRealLetterWidth(letter) >= 0);
    demand(font.drawLetter(i % 50 - 5, i % 30 - 5, previous, letter) ==
           font.getLetterWidth(previous, letter) + 2);
    if (i % 4 == 0) font.SetClippingRect(letter, CXRect(i % 5, 1, 9, i % 16));
    if (i % 64 == 0) font.setColor(i * 77);
    previous = letter;
  }
}

void checkFont(std::span<const std::uint8_t> data) {
  const auto bytes = std::as_bytes(data);
  checkForm(bytes);
  const test::Disk disk = {
      {"C:\\GAME\\a.fnt", std::make_shared<const std::vector<std::byte>>(bytes.begin(), bytes.end())}};
  const Machine machine(disk);
  CSimpleFont6 font(nullptr, "a.fnt");
  demand(font.LastError() == 0 || font.LastError() == CFile::kNotFound);
  demand(font.LastError() == 0 || (font.letterCount() == 0 && font.Size() == CXSize()));
  checkLetters(font);
  font.Load(CXString("none.fnt"));
  demand(font.LastError() == CFile::kNotFound && font.letterCount() == 0);
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::checkFont({data, size});
  return 0;
}
