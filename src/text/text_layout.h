#pragma once

// What comes of laying a text out: its lines, the runs of letters in them, its words. Places are pixels from
// the corner of the text or, in a line, from the line's left end. A layout holds no fonts, only their numbers
// in the family that it was made for.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/xstring.h"

namespace footlight {

class CSimpleFont6;

// A word of a text that is kept for looking up.
struct ht_Word {
  static constexpr int kFontsOwn = 0x10000;  // no colour of its own

  int left;
  int right;
  int color;
  std::uint32_t begin;  // in the letters of the layout
  std::uint32_t end;
};

// The words of one line; good until the text changes.
struct ht_Line {
  int top = 0;
  int bottom = 0;
  std::span<const ht_Word> words;
};

struct TextLayout {
  static constexpr int kPlainFont = -1;  // the font is no family
  // Colours that are the text's own: before any code, and behind the one that ends a colour.
  static constexpr int kFirstColor = -1;
  static constexpr int kColorEnded = -2;

  // Letters of one font and colour that no code interrupts.
  struct Run {
    std::uint32_t begin;
    std::uint32_t end;
    int x;
    int font;
    int color;
  };
  struct Line {
    std::uint32_t firstRun;
    std::uint32_t firstWord;
    int x;  // of the text's alignment, which the text knows
    int y;
    int width;
    int height;
  };
  struct Box {
    std::uint32_t line;
    int x;
    int width;
    CXString text;
  };

  std::string letters;  // all that is drawn, line after line
  std::vector<Run> runs;
  std::vector<Line> lines;
  std::vector<ht_Word> words;
  std::vector<Box> boxes;
  int width = 0;
  int height = 0;
  int reach = 0;  // how far letters go down from a line's upper edge

  std::span<const Run> runsOf(std::size_t line) const {
    const std::size_t end = line + 1 < lines.size() ? lines[line + 1].firstRun : runs.size();
    return std::span(runs).subspan(lines[line].firstRun, end - lines[line].firstRun);
  }
  std::span<const ht_Word> wordsOf(std::size_t line) const {
    if (words.empty()) return {};
    const std::size_t end = line + 1 < lines.size() ? lines[line + 1].firstWord : words.size();
    return std::span(words).subspan(lines[line].firstWord, end - lines[line].firstWord);
  }
};

// The text as one line. A box is at most so many pixels wide. `bitsPerPixel` is that of the colours.
TextLayout layOutLine(const CSimpleFont6& font, std::string_view text, int boxWidth, int bitsPerPixel);
// The text in lines of so many pixels. Each costs time in proportion to the length of the text.
TextLayout layOutLines(const CSimpleFont6& font, std::string_view text, int width, int bitsPerPixel);
// What the letters take, one behind the other.
int lengthOf(const CSimpleFont6& font, std::string_view text);

}  // namespace footlight
