#include <algorithm>
#include <gtest/gtest.h>

#include "foundation/limits.h"
#include "support/block_fonts.h"
#include "text/multiline_text6.h"
#include "text/text_format_code.h"

namespace footlight {
namespace {

using test::blockFonts;

std::string pieces(const char* text, const CFontCollection& fonts) {
  std::string all;
  parseText(text, fonts, 16, [&](const CTextFormatCode& code) {
    switch (code.type()) {
      case _formatCode::font:
        all += "{" + code.getFont()->getStyle().str() + "}";
        break;
      case _formatCode::text:
        all += "[" + code.getText().str() + "]";
        break;
      case _formatCode::tab:
        all += "{tab}";
        break;
      case _formatCode::lineEnd:
        all += "{end}";
        break;
      case _formatCode::editBox:
        all += "{" + std::to_string(code.getWidth()) + " " + code.getName().str() + " " +
               code.getText().str() + "}";
        break;
      case _formatCode::color:
        all += code.endsColor() ? "{}" : "{" + std::to_string(code.getColor()) + "}";
        break;
    }
  });
  return all;
}

TEST(Markup, IsCutIntoPieces) {
  const auto fonts = blockFonts();
  const struct {
    const char *text, *pieces;
  } kRows[] = {
      {"a<B>b<B>c", "[a]{BOLD}[b]{STANDARD}[c]"},
      {"a<X>b<b>c<>d", "[abcd]"},
      {"a<I>b", "[a][b]"},  // a style that the fonts lack
      {"1<2", "[1<2]"},
      {"1<2|3<B>4", "[1<2|3]{BOLD}[4]"},
      {"<a<B", "[<a<B]"},
      {"a>b", "[a>b]"},
      {"a|b||\rc\n", "[a]{end}[b]{end}{end}{end}[c]"},
      {"a\tb", "[a]{tab}[b]"},
      {"<COLOR 255,128,8>a<COLOR>", "{64513}[a]{}"},
      {"<COLOR 31><COLOR-1><COLOR63488>", "{31}{65535}{63488}"},
      {"<COLOR 255,1>", "{63488}"},
      {"<COLOR 1,2", "[<COLOR 1,2]"},
      {"<E,40,NAME,some text><E><E,9>", "{40 NAME some text}{9  }"},
      {"", ""},
  };
  for (const auto& row : kRows) EXPECT_EQ(pieces(row.text, *fonts), row.pieces) << row.text;
  EXPECT_EQ(packColor(15, 255, 128, 8), 0x7E01);
}

TEST(Markup, LooksForStylesAsTheFamilySays) {
  const auto fonts = blockFonts();
  fonts->setStyle("BOLD");
  EXPECT_EQ(pieces("a<B>b<B>c", *fonts), "[a]{STANDARD}[b]{STANDARD}[c]");
  fonts->setStyle("");
  fonts->setFamily("OTHER");
  EXPECT_EQ(pieces("a<B>b", *fonts), "[a][b]");
  fonts->setFamily("");
  fonts->setSize(12);
  EXPECT_EQ(pieces("a<B>b", *fonts), "[a][b]");
}

Owned<CMultilineText6> textOf(CSimpleFont6* font, int width, const char* says, bool hypertext = true) {
  Owned<CMultilineText6> text(new CMultilineText6(nullptr, hypertext, nullptr));
  text->setJustify({0, 0, width, 100}, _justify::left, _justify::top);
  text->setFont(font);
  text->setText(says);
  return text;
}

// Every word with its place, then the size of all.
std::string wordsOf(const CText6& text) {
  std::string all;
  for (int i = 0; i < text.getNumWords(); ++i) {
    const CXPoint at = text.getWordPosition(i);
    all += text.getWordAt(i).str() + " " + std::to_string(at.x) + "," + std::to_string(at.y) + " ";
  }
  return all + std::to_string(text.Width()) + "x" + std::to_string(text.Height());
}

TEST(MultilineText6, BreaksLines) {
  const auto fonts = blockFonts();
  const struct {
    const char* text;
    int width;
    const char* words;
  } kRows[] = {
      {"ab cd ef", 30, "ab 0,0 cd 18,0 ef 0,8 30x18"},
      {"ab cd ef", 29, "ab 0,0 cd 0,8 ef 0,16 12x26"},
      {"ab  cd ", 99, "ab 0,0 cd 18,0 30x10"},  // blanks only part words
      {"abcdef gh", 20, "abcdef 0,0 gh 0,8 36x18"},
      {"a bcdef", 20, "a 0,0 bcdef 0,8 30x18"},
      {"a|b", 99, "a 0,0 b 0,8 6x18"},
      {"a||b", 99, "a 0,0 b 0,16 6x26"},
      {"a|||b", 99, "a 0,0 b 0,14 6x24"},  // of empty lines only the first has a height
      {"|a|", 99, "a 0,8 6x18"},
      {"a&NBSP;b\tc", 99, "a 0,0 b 12,0 c 24,0 30x10"},
      {"a<B>b<B>c", 99, "a 0,0 b 6,0 c 14,0 20x10"},
      {"a <B>b c<B> d", 26, "a 0,0 b 14,0 c 0,8 d 14,8 22x18"},  // the style goes on in the next line
      {"ab<B>cd", 20, "ab 0,0 cd 0,8 16x18"},
      {"a<E,15,N,t>b <E,40,N,t>", 30, "a 0,0 b 21,0 30x18"},
      {"", 99, "0x0"},
      {"ab cd", 0, "ab 0,0 cd 0,8 12x18"},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(wordsOf(*textOf(fonts.get(), row.width, row.text)), row.words) << row.text;
}

TEST(MultilineText6, BreaksLinesOfAPlainFont) {
  const auto font = test::simpleFont(test::blockFont(4, 10));
  const auto text = textOf(font.get(), 30, "ab <B> cd|ef gh");
  EXPECT_EQ(text->Size(), CXSize(30, 34));  // "ab", "<B>", "cd|ef", "gh": no code counts
  EXPECT_EQ(text->lineCount(), 4);
  EXPECT_EQ(text->getNumWords(), 0);
}

TEST(MultilineText6, StandsInItsRectangle) {
  const auto fonts = blockFonts();
  const auto text = textOf(fonts.get(), 60, "abc defg hij|k");
  const struct {
    _justify h, v;
    const char* words;
    CXPoint corner;
  } kRows[] = {
      {_justify::left, _justify::top, "abc 10,5 defg 34,5 hij 10,13 k 10,21 ", {10, 5}},
      {_justify::right, _justify::bottom, "abc 22,67 defg 46,67 hij 52,75 k 64,83 ", {22, 67}},
      {_justify::center, _justify::center, "abc 16,36 defg 40,36 hij 31,44 k 37,52 ", {16, 36}},
      {_justify::top, _justify::left, "abc 10,5 defg 34,5 hij 10,13 k 10,21 ", {10, 5}},
  };
  for (const auto& row : kRows) {
    text->setJustify({10, 5, 70, 93}, row.h, row.v);
    EXPECT_EQ(wordsOf(*text), row.words + std::string("48x26"));
    EXPECT_EQ(text->GetPosition(), row.corner);
  }
  text->setJustify({10, 5, 70, 93}, _justify::right, _justify::top);
  text->Move(3, 4);
  EXPECT_EQ(text->getWordPosition(2), CXPoint(55, 17));
  text->SetPosition(0, 0);
  EXPECT_EQ(text->getWordPosition(2), CXPoint(30, 8));
  text->setText("k");  // back in its rectangle
  EXPECT_EQ(text->getWordPosition(0), CXPoint(64, 5));
}

TEST(MultilineText6, KnowsItsWords) {
  const auto fonts = blockFonts();
  const auto text = textOf(fonts.get(), 60, "abc defg abc<B>bold");
  text->setJustify({100, 50, 160, 90}, _justify::left, _justify::top);
  const struct {
    CXPoint point;
    int word;
  } kRows[] = {{{100, 50}, 0}, {{117, 50}, 0},  {{118, 50}, -1}, {{124, 50}, 1},
               {{147, 57}, 1}, {{148, 50}, -1}, {{99, 50}, -1},  {{100, 49}, -1},
               {{100, 61}, 2}, {{118, 61}, 3},  {{118, 68}, 3},  {{118, 69}, -1}};
  for (const auto& row : kRows)
    EXPECT_EQ(text->getWordAtXY(row.point), row.word) << row.point.x << ' ' << row.point.y;
  EXPECT_EQ(text->getWordWidth(1), 23);
  EXPECT_EQ(text->search("abc", 0), 0);
  EXPECT_EQ(text->search("abc", 1), 2);
  EXPECT_EQ(text->search("abc", 3), -1);
  EXPECT_EQ(text->search("bold", -9), 3);
  for (const int none : {-1, 4, 1 << 30, -(1 << 30)}) {
    EXPECT_EQ(text->getWordAt(none), "");
    EXPECT_EQ(text->getWordPosition(none), CXPoint(-1, -1));
    EXPECT_EQ(text->getWordWidth(none), 0);
    text->setWordColor(none, 1);
  }
  EXPECT_EQ(text->get_ht_lines_info(1).top, 8);
  EXPECT_EQ(text->get_ht_lines_info(1).words.size(), 2U);
  EXPECT_EQ(text->get_ht_lines_info(2).words.size(), 0U);
  EXPECT_EQ(textOf(fonts.get(), 60, "abc", false)->getWordAtXY({0, 0}), -1);
  EXPECT_EQ(text->getColoruredText("a<COLOR 1>b<COLOR>", 7), "<COLOR7>ab<COLOR>");

  CText6 line(nullptr, true, nullptr);
  line.setFont(fonts.get());
  line.setText("  ab  c|d");
  EXPECT_EQ(wordsOf(line), "ab 12,-1 c 36,-1 d 42,-1 48x10");
  EXPECT_EQ(line.getWordAtXY({36, -99}), 1);
}

// The colours at the middle of the first letters of a line, six pixels apart.
std::vector<std::uint32_t> colorsOf(CText6& text, int count) {
  CGraphicsObject target(nullptr, {100, 40}, 16);
  text.redraw(&target);
  std::vector<std::uint32_t> colors;
  for (int i = 0; i < count; ++i) colors.push_back(target.GetPixel(6 * i + 2, 5).GetInBPP(16));
  return colors;
}

TEST(Text6, TakesItsColoursInTheirOrder) {
  using Colors = std::vector<std::uint32_t>;
  const auto fonts = blockFonts();
  CText6 line(nullptr, true, nullptr);
  line.setFont(fonts.get());
  line.setText("a<COLOR 7>b<COLOR>c d");
  EXPECT_EQ(colorsOf(line, 5),
            (Colors{0x5555, 7, 0xFFFF, 0, 0xFFFF}));  // as in the file, and white behind the code
  const auto text = textOf(fonts.get(), 99, "a<COLOR 7>b<COLOR>c d");
  fonts->setColor(5);
  EXPECT_EQ(colorsOf(*text, 5), (Colors{0, 7, 0, 0, 0}));
  text->setText(text->getText());
  EXPECT_EQ(colorsOf(*text, 5), (Colors{5, 7, 5, 0, 5}));
  fonts->setDefColor(6);
  EXPECT_EQ(colorsOf(*text, 5), (Colors{6, 7, 6, 0, 6}));
  text->setColor(8);
  EXPECT_EQ(colorsOf(*text, 5), (Colors{8, 7, 8, 0, 8}));
  EXPECT_EQ(fonts->getColor(), 8);
  text->setWordColor(1, 9);
  text->setWordColor(3, 10);
  EXPECT_EQ(colorsOf(*text, 5), (Colors{8, 9, 8, 0, 10}));
  text->setWordColor(1, ht_Word::kFontsOwn);
  EXPECT_EQ(colorsOf(*text, 5), (Colors{8, 7, 8, 0, 10}));
  text->setText("a b");
  EXPECT_EQ(colorsOf(*text, 3), (Colors{8, 0, 8}));
}

TEST(Text6, DrawsPlainLettersFurtherApart) {
  const auto font = test::simpleFont(test::blockFont(4, 10));
  CText6 line(nullptr, false, nullptr);
  line.setFont(font.get());
  line.setText("a<b");
  EXPECT_EQ(line.getLength(), 18);
  CGraphicsObject target(nullptr, {40, 10}, 16);
  line.redraw(&target);
  for (int x = 0; x < 30; ++x) EXPECT_EQ(target.GetPixel(x, 0).GetInBPP(16) != 0, x < 24 && x % 8 < 4) << x;
}

TEST(Text6, HasNoFontOnceThatEnded) {
  auto fonts = blockFonts();
  const auto text = textOf(fonts.get(), 60, "abc");
  fonts.reset();
  EXPECT_EQ(colorsOf(*text, 1), std::vector<std::uint32_t>{0});
  text->setColor(7);
  text->setText("abc def");
  EXPECT_EQ(text->Size(), CXSize());
  EXPECT_EQ(text->getWordAtXY({0, 0}), -1);
  const auto others = blockFonts();
  text->setFont(others.get());
  EXPECT_EQ(colorsOf(*text, 2), (std::vector<std::uint32_t>{7, 7}));
  const Owned<CFontCollection> empty(new CFontCollection(nullptr));
  text->setFont(empty.get());
  EXPECT_EQ(wordsOf(*text), "0x0");
}

TEST(Text6, LeavesOutWhatIsTooLong) {
  const auto fonts = blockFonts();
  const auto text = textOf(fonts.get(), 60, "abc");
  text->setText(std::string(limits::kTextBytes, 'a'));
  EXPECT_EQ(text->lineCount(), 1);
  text->setText(std::string(limits::kTextBytes + 1, 'b'));
  EXPECT_EQ(text->getText().GetAt(0), 'a');
  text->setText(std::string(limits::kTextBytes / 8 + 1, '\t'));
  EXPECT_EQ(text->getText().GetAt(0), 'a');
}

// Boxes

class Unit final : public CXObject, public CEditBoxMaker {
 public:
  std::unique_ptr<CTextBox> makeTextBox(CSimpleFont6* /*font*/, CXRect rect, int /*priority*/,
                                        const CXString& text) override {
    struct Box final : CTextBox {
      Box(Unit& unit, std::size_t place) : unit_(unit), place_(place) { ++unit.alive; }
      ~Box() override { --unit_.alive; }
      void setPosition(CXPoint leftTop) override {
        CXRect& box = unit_.rects[place_];
        box = CXRect(0, 0, box.Width(), box.Height()) + leftTop;
      }
      Unit& unit_;
      std::size_t place_;
    };
    rects.push_back(rect);
    texts += text.str() + " ";
    return std::make_unique<Box>(*this, rects.size() - 1);
  }
  CXObject* asObject() override { return this; }

  std::vector<CXRect> rects;
  std::string texts;
  int alive = 0;
};

TEST(Text6, HoldsBoxesUntilItsNextText) {
  const auto fonts = blockFonts();
  Unit unit;
  Owned<CMultilineText6> text(new CMultilineText6(nullptr, false, &unit));
  text->setJustify({10, 10, 70, 90}, _justify::right, _justify::top);
  text->setFont(fonts.get());
  text->setText("ab <E,20,N,one>c|<E,-1,N,two><E,1000000000,N,three>");
  EXPECT_EQ(unit.texts, "one two three ");
  EXPECT_EQ(unit.rects, (std::vector<CXRect>{{44, 10, 64, 20}, {10, 18, 10, 28}, {10, 18, 70, 28}}));
  text->Move(5, 1);
  EXPECT_EQ(unit.rects[0], CXRect(49, 11, 69, 21));
  text->setJustify({0, 0, 60, 80}, _justify::left, _justify::top);
  EXPECT_EQ(unit.rects[0], CXRect(18, 0, 38, 10));
  text->setText("plain");
  EXPECT_EQ(unit.alive, 0);
  std::string many;
  for (int i = 0; i < 300; ++i) many += "<E,1,N,t>";
  text->setText(many);
  EXPECT_EQ(unit.alive, static_cast<int>(limits::kBoxesOfText));
  text.reset();
  EXPECT_EQ(unit.alive, 0);
}

}  // namespace
}  // namespace footlight
