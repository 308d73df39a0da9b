#include "text/text_layout.h"

#include <algorithm>
#include <optional>

#include "foundation/limits.h"
#include "text/font_collection.h"
#include "text/text_format_code.h"

namespace footlight {

namespace {

constexpr int kLineOverlap = 2;
constexpr std::string_view kTab = "        ";

// Sums of widths are 64-bit; no screen is as wide as what does not fit a place.
int toPlace(std::int64_t sum) {
  constexpr std::int64_t kFarthest = 1 << 30;
  return static_cast<int>(std::clamp(sum, -kFarthest, kFarthest));
}

const CSimpleFont6* singleFont(const CSimpleFont6& font) {
  return font.isMultifont() ? static_cast<const CFontCollection&>(font).getBaseFont() : &font;
}

std::int64_t measure(const CSimpleFont6& font, std::string_view text) {
  std::int64_t length = 0;
  char previous = 0;
  for (const char letter : text) {
    length += font.CSimpleFont6::getLetterWidth(previous, letter) + CSimpleFont6::kLetterGap;
    previous = letter;
  }
  return length;
}

class Layouter {
 public:
  // Without a width nothing is wrapped.
  Layouter(const CSimpleFont6& font, std::optional<int> width, int boxWidth)
      : fonts_(font.isMultifont() ? static_cast<const CFontCollection*>(&font) : nullptr),
        font_(singleFont(font)),
        lineHeight_(font.Height()),
        fontNumber_(fonts_ != nullptr ? fonts_->indexOf(font_) : TextLayout::kPlainFont),
        width_(width),
        boxWidth_(boxWidth) {
    layout_.reach = lineHeight_;
    beginLine();
  }

  TextLayout run(std::string_view text, int bitsPerPixel) {
    if (font_ == nullptr) return {};
    layout_.letters.reserve(text.size());
    if (fonts_ == nullptr) {
      addText(text);
    } else {
      parseText(text, *fonts_, bitsPerPixel, [this](const CTextFormatCode& code) { add(code); });
    }
    if (!width_ || hasContent_) endLine();
    finish();
    return std::move(layout_);
  }

 private:
  void add(const CTextFormatCode& code) {
    isRunOpen_ = false;
    switch (code.type()) {
      case _formatCode::font:
        font_ = code.getFont();
        fontNumber_ = fonts_->indexOf(font_);
        layout_.reach = std::max(layout_.reach, font_->Height());
        break;
      case _formatCode::text:
        addText(code.getText());
        break;
      case _formatCode::tab:
        addText(kTab);
        break;
      case _formatCode::lineEnd:
        if (width_) endLine();
        break;
      case _formatCode::editBox:
        addBox(code);
        break;
      case _formatCode::color:
        color_ = code.endsColor() ? TextLayout::kColorEnded : code.getColor();
        break;
    }
  }

  void addText(std::string_view text) {
    while (!text.empty()) {
      const std::size_t blanks = std::min(text.find_first_not_of(' '), text.size());
      addBlanks(blanks);
      text.remove_prefix(blanks);
      const std::string_view word = text.substr(0, text.find(' '));
      if (!word.empty()) addWord(word);
      text.remove_prefix(word.size());
    }
  }

  // Where lines are wrapped blanks only part words, each time one of them.
  void addBlanks(std::size_t count) {
    if (count == 0) return;
    if (width_) {
      hasBlank_ = true;
    } else {
      addLetters(std::string(count, ' '));
    }
  }

  void addWord(std::string_view word) {
    makeRoom(width_ ? measure(*font_, word) : 0);
    const std::int64_t left = pen_;
    const auto begin = static_cast<std::uint32_t>(layout_.letters.size());
    addLetters(word);
    const auto end = static_cast<std::uint32_t>(layout_.letters.size());
    if (fonts_ != nullptr)
      layout_.words.push_back({toPlace(left), toPlace(pen_ - 1), ht_Word::kFontsOwn, begin, end});
  }

  // Puts the waiting blank, or ends the line, before something of that width.
  void makeRoom(std::int64_t width) {
    const std::int64_t blank = hasBlank_ && hasContent_ ? measure(*font_, " ") : 0;
    if (width_ && hasContent_ && pen_ + blank + width > *width_) {
      endLine();
    } else if (blank != 0) {
      addLetters(" ");
    }
    hasBlank_ = false;
    hasContent_ = true;
  }

  void addLetters(std::string_view text) {
    const auto begin = static_cast<std::uint32_t>(layout_.letters.size());
    if (!isRunOpen_) {
      layout_.runs.push_back({begin, begin, toPlace(pen_), fontNumber_, color_});
      previous_ = 0;
    }
    isRunOpen_ = true;
    layout_.letters += text;
    layout_.runs.back().end = static_cast<std::uint32_t>(layout_.letters.size());
    for (const char letter : text) {
      pen_ += font_->CSimpleFont6::getLetterWidth(previous_, letter) + CSimpleFont6::kLetterGap;
      previous_ = letter;
    }
  }

  void addBox(const CTextFormatCode& code) {
    const int width = std::clamp(code.getWidth(), 0, std::max(0, boxWidth_));
    makeRoom(width);
    if (layout_.boxes.size() < limits::kBoxesOfText)
      layout_.boxes.push_back(
          {static_cast<std::uint32_t>(layout_.lines.size() - 1), toPlace(pen_), width, code.getText()});
    pen_ += width;
    isRunOpen_ = false;
  }

  void beginLine() {
    layout_.lines.push_back({static_cast<std::uint32_t>(layout_.runs.size()),
                             static_cast<std::uint32_t>(layout_.words.size()), 0, 0, 0, 0});
    pen_ = 0;
    isRunOpen_ = false;
    hasBlank_ = false;
    hasContent_ = false;
  }

  // Of empty lines that follow each other only the first has a height.
  void endLine() {
    TextLayout::Line& line = layout_.lines.back();
    const bool isEmpty = width_ && !hasContent_;
    line.width = toPlace(pen_);
    line.height = isEmpty && wasEmpty_ ? 0 : lineHeight_;
    wasEmpty_ = isEmpty;
    beginLine();
  }

  void finish() {
    layout_.lines.pop_back();  // the one that was begun last
    std::int64_t y = 0;
    for (TextLayout::Line& line : layout_.lines) {
      line.y = toPlace(y);
      layout_.width = std::max(layout_.width, line.width);
      layout_.height = toPlace(y + line.height);
      y += line.height - kLineOverlap;
    }
  }

  const CFontCollection* fonts_;  // null for a plain font
  const CSimpleFont6* font_;
  int lineHeight_;
  int fontNumber_;
  std::optional<int> width_;
  int boxWidth_;
  TextLayout layout_;
  int color_ = TextLayout::kFirstColor;
  std::int64_t pen_ = 0;
  char previous_ = 0;
  bool isRunOpen_ = false;
  bool hasBlank_ = false;    // blanks since the last word
  bool hasContent_ = false;  // of the line
  bool wasEmpty_ = false;    // the line before
};

}  // namespace

TextLayout layOutLine(const CSimpleFont6& font, std::string_view text, int boxWidth, int bitsPerPixel) {
  return Layouter(font, std::nullopt, boxWidth).run(text, bitsPerPixel);
}

TextLayout layOutLines(const CSimpleFont6& font, std::string_view text, int width, int bitsPerPixel) {
  return Layouter(font, width, width).run(text, bitsPerPixel);
}

int lengthOf(const CSimpleFont6& font, std::string_view text) {
  const CSimpleFont6* single = singleFont(font);
  return single != nullptr ? toPlace(measure(*single, text)) : 0;
}

}  // namespace footlight
