#pragma once

// What comes of laying a text out: its lines, the runs of letters in them, the words. Places are pixels from
// the text's corner. A layout holds no fonts, only their numbers in the family.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace footlight {

// A word of a text that is kept for looking up.
struct ht_Word {
  static constexpr int kFontsOwn = 0x10000;  // no colour of its own

  int left;
  int right;
  int color = kFontsOwn;
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
  static constexpr int kPlainFont = -1;  // the text's font is no family
  static constexpr int kTextsOwn = -1;   // the text's colour

  // Letters of one font and colour, or a gap for a box.
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
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
  };
  struct Box {
    std::uint32_t line;
    int x;
    int width;
    std::string text;
    int font;
  };

  std::string letters;
  std::vector<Run> runs;
  std::vector<Line> lines;
  std::vector<ht_Word> words;
  std::vector<Box> boxes;
  int width = 0;
  int height = 0;
};

}  // namespace footlight
