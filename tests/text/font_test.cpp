#include <gtest/gtest.h>

#include "files/file.h"
#include "gfx/animo.h"
#include "support/block_fonts.h"
#include "support/screen_world.h"
#include "text/font5.h"
#include "text/font_maker.h"

namespace footlight {
namespace {

using test::blockFont;
using test::simpleFont;

TEST(SimpleFont, MeasuresLetters) {
  FntFont source = blockFont(4, 10, "abl<>~ ");
  source.kerning[0 * 7 + 1] = 3;   // b after a
  source.kerning[3 * 7 + 0] = -2;  // a after <
  source.kerning[5 * 7 + 1] = 1;   // b after ~
  source.kerning[6 * 7 + 1] = 9;   // b after a blank
  source.left[1] = 3;
  source.right[4] = 127;
  const auto font = simpleFont(source);
  const struct {
    char previous, letter;
    int width, real;
  } kRows[] = {
      {0, 'a', 4, 4},   {'b', 'a', 4, 4}, {'a', 'b', -1, 2}, {'?', 'b', 2, 2},
      {' ', 'b', 2, 2}, {'~', 'b', 1, 2}, {'@', 'a', 6, 4},  {'<', 'a', 6, 4},
      {0, '@', 4, 4},   {0, '<', 4, 4},   {0, '$', 0, 0},    {0, ' ', 4, 4},
      {'a', ' ', 4, 4}, {'a', '~', 1, 1}, {'a', '?', 0, 0},  {'a', 0, 0, 0},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE((std::string{row.previous, row.letter}));
    EXPECT_EQ(font->getLetterWidth(row.previous, row.letter), row.width);
    EXPECT_EQ(font->getRealLetterWidth(row.letter), row.real);
    EXPECT_EQ(font->drawLetter(0, 0, row.previous, row.letter), row.width + 2);
  }
}

TEST(SimpleFont, DrawsInItsColourWithinItsClip) {
  const auto font = simpleFont(blockFont(4, 3));
  CGraphicsObject target(nullptr, {12, 3}, 16);
  font->SetDestiny(&target);
  font->setColor(0xF800);
  font->SetClippingRect('b', CXRect(1, 1, 3, 9));
  font->drawLetter(5, 0, 'a', 'b');
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 12; ++x)
      EXPECT_EQ(target.GetPixel(x, y).GetInBPP(16), y > 0 && x >= 6 && x < 8 ? 0xF800U : 0U) << x << ' ' << y;
  }
  font->SetClippingRect(CXRect());
  font->drawLetter(8, 0, 0, 'b');
  EXPECT_EQ(target.GetPixel(11, 0).GetInBPP(16), 0xF800U);
  // The whole strip has the colour for whoever looks at it.
  EXPECT_EQ(std::to_integer<int>(font->GetDataPtr().back()), 0xF8);
}

TEST(FntFormat, RefusesWhatIsNoFont) {
  const std::vector<std::byte> good = writeFnt(blockFont(4, 3, "ab"));
  const auto with = [&](std::size_t at, std::int32_t number) {
    std::vector<std::byte> file = good;
    for (std::size_t i = 0; i < 4; ++i) file[at + i] = static_cast<std::byte>(number >> (8 * i));
    return file;
  };
  const struct {
    const char* name;
    std::vector<std::byte> file;
    bool isGood;
  } kRows[] = {
      {"whole", good, true},
      {"another magic", with(0, 77), true},
      {"no letters", with(16, 0), true},
      {"cut by a byte", {good.begin(), good.end() - 1}, false},
      {"header alone", {good.begin(), good.begin() + 20}, false},
      {"empty", {}, false},
      {"width below 0", with(4, -12), false},
      {"width over the limit", with(4, 16385), false},
      {"height that wraps with it", with(8, 0x40000000), false},
      {"8 bits", with(12, 8), false},
      {"256 letters", with(16, 256), false},
      {"letters whose square wraps", with(16, 65536), false},
      {"letters below 0", with(16, -1), false},
  };
  for (const auto& row : kRows) {
    const char* why = nullptr;
    const auto font = readFnt(row.file, &why);
    EXPECT_EQ(font.has_value(), row.isGood) << row.name;
    if (!font) continue;
    CSimpleFont6 loaded(nullptr);
    loaded.take(*font);
    EXPECT_EQ(loaded.getLetterWidth(0, 'a'), font->letters.empty() ? 0 : 4) << row.name;
  }
}

TEST(FontCollection, FindsByFamilyStyleAndSize) {
  const auto fonts = test::blockFonts();
  EXPECT_EQ(fonts->get("block", "bold", 10), fonts->at(1));
  EXPECT_EQ(fonts->get("BLOCK", "BOLD", 11), nullptr);
  EXPECT_EQ(fonts->get("BLOCK", "ITALIC", 10), nullptr);
  EXPECT_EQ(fonts->getBaseFont(), fonts->at(0));
  EXPECT_EQ(fonts->Height(), 10);
  EXPECT_EQ(fonts->getLetterWidth(0, 'a'), 4);
  fonts->setBaseFont(fonts->at(1));
  EXPECT_EQ(fonts->getLetterWidth(0, 'a'), 6);
  fonts->setBaseFont(nullptr);
  EXPECT_EQ(fonts->Height() + fonts->getLetterWidth(0, 'a') + fonts->drawLetter(0, 0, 0, 'a'), 0);
}

// A letter of a picture in rows: "#" is opaque, "." clear.
FontLetter letterOf(char letter, std::vector<std::string> rows) {
  FontLetter made{static_cast<std::uint8_t>(letter),
                  {static_cast<int>(rows[0].size()), static_cast<int>(rows.size())},
                  {},
                  {}};
  for (const std::string& row : rows) {
    for (const char pixel : row) {
      made.alpha.push_back(pixel == '#' ? 255 : pixel == '+' ? 20 : 0);
      made.pixels.push_back(0x1234);
    }
  }
  return made;
}

TEST(FontMaker, MeasuresHowFarLettersSlide) {
  const FontLetter l = letterOf('l', {"......", ".#....", ".#....", ".##...", "......"});
  const FontLetter dot = letterOf('.', {"......", "..#...", "......", "......", "......"});
  const FontLetter low = letterOf('_', {"......", "......", "......", "..###.", "......"});
  const FontLetter soft = letterOf(',', {"......", "..+...", "......", "......", "......"});
  const struct {
    const FontLetter &a, &b;
    int left, right, steps;
  } kRows[] = {
      {l, dot, 1, 3, 1},    // passes the foot, meets the stem
      {l, low, 1, 3, 0},    // meets the foot
      {low, l, 2, 1, 0},    //
      {low, dot, 2, 1, 3},  // passes all of it
      {dot, l, 2, 3, 0},    //
      {l, soft, 1, 3, 2},   // what is hardly to be seen is in nobody's way
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE((std::string{static_cast<char>(row.a.letter), static_cast<char>(row.b.letter)}));
    EXPECT_EQ(leftOffset(row.a), row.left);
    EXPECT_EQ(rightOffset(row.a), row.right);
    EXPECT_EQ(slideUnder(row.a, row.b), row.steps);
  }
  const FontLetter above = letterOf('^', {"......", "..#...", "......", "......", "......"});
  const FontLetter below = letterOf('v', {"......", "......", "..#...", "......", "......"});
  EXPECT_EQ(slideUnder(above, below), 1);  // corner to corner
  const auto font = makeFont({l, dot, letterOf(' ', {"....", "...."})});
  ASSERT_TRUE(font);
  EXPECT_EQ(font->size, CXSize(18, 5));
  EXPECT_EQ(font->kerning[1], 0);
  EXPECT_EQ(font->right[2], 6);
  EXPECT_FALSE(makeFont({}));
  EXPECT_FALSE(makeFont(std::vector<FontLetter>(257, dot)));
}

TEST(FontMaker, MakesFontsOfAnimations) {
  test::ScreenWorld world;
  world.open();
  AnnFile animation;
  _annEventInfo3 event;
  for (const char letter : {'a', 'l'}) {
    AnnFrame frame;
    frame.size = {6, 5};
    frame.colour.assign(60, std::byte{0x33});
    frame.alpha.assign(30, std::byte{255});
    event.frames.push_back(static_cast<int>(animation.frames.size()));
    animation.frames.push_back(frame);
    event.infos.emplace_back().name = CXString(std::string(1, letter));
  }
  animation.events.push_back(event);
  CFile file(world.window.get(), "letters.ann", CFile::kWriteBinary);
  const auto bytes = writeAnn(animation);
  file.Write(bytes.data(), static_cast<int>(bytes.size()));
  ASSERT_EQ(file.Close(), 0);

  CSimpleFont6 maker(world.window.get());
  EXPECT_EQ(maker.create("none.ann", "letters.fnt"), CFile::kNotFound);
  ASSERT_EQ(maker.create("letters.ann", "letters.fnt"), 0);
  const CSimpleFont6 font(world.window.get(), "letters.fnt");
  EXPECT_EQ(font.LastError(), 0);
  EXPECT_EQ(font.Size(), CXSize(12, 5));
  EXPECT_EQ(font.getLetterWidth(0, 'a'), 4);  // without its rim
  EXPECT_EQ(CSimpleFont6(world.window.get(), "none.fnt").LastError(), CFile::kNotFound);

  CFont5 older(world.window.get(), "letters.ann");
  EXPECT_EQ(older.getAlphabet(), "al");
  EXPECT_EQ(older.getLetterSize('l'), CXSize(6, 5));
  EXPECT_EQ(older.getLetterSize('x'), CXSize());
  EXPECT_EQ(older.getAlphabetHeight(), 5);
  EXPECT_EQ(older.getLengthInPixels("al a", 3), 27);
  CGraphicsObject target(nullptr, {6, 5}, 16);
  older.setDestiny(&target);
  older.drawLetter(0, 0, 'a');
  EXPECT_EQ(target.GetPixel(0, 0).GetInBPP(16), 0U);  // the corners are clear
  EXPECT_EQ(target.GetPixel(1, 0).GetInBPP(16), 0x3333U);
}

}  // namespace
}  // namespace footlight
