#pragma once

// Fonts for tests: every letter is a solid block.

#include <string>

#include "text/fnt_format.h"
#include "text/font_collection.h"

namespace footlight::test {

// Letters `width` pixels wide, in cells that are wider by one column on each side.
inline FntFont blockFont(int width, int height,
                         std::string_view letters = "abcdefghijklmnopqrstuvwxyz<>|12") {
  const auto n = static_cast<int>(letters.size());
  FntFont font;
  font.size = {n * (width + 2), height};
  font.letters.assign(letters.begin(), letters.end());
  font.kerning.resize(letters.size() * letters.size());
  font.left.assign(letters.size(), 1);
  font.right.assign(letters.size(), 1);
  const auto pixels = static_cast<std::size_t>(font.size.width * height);
  font.colour.assign(pixels * 2, std::byte{0x55});
  font.alpha.assign(pixels, std::byte{255});
  return font;
}

inline std::string blockFontFile() {
  const std::vector<std::byte> bytes = writeFnt(blockFont(4, 10));
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline Owned<CSimpleFont6> simpleFont(FntFont font, const char* style = "STANDARD", int size = 10) {
  Owned<CSimpleFont6> made(new CSimpleFont6(nullptr));
  made->take(std::move(font));
  made->setFamily("BLOCK");
  made->setStyle(style);
  made->setSize(size);
  return made;
}

// STANDARD letters take 6 pixels with the gap, BOLD ones 8.
inline Owned<CFontCollection> blockFonts() {
  Owned<CFontCollection> fonts(new CFontCollection(nullptr));
  fonts->addFont(simpleFont(blockFont(4, 10)));
  fonts->addFont(simpleFont(blockFont(6, 12), "BOLD"));
  return fonts;
}

}  // namespace footlight::test
