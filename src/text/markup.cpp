// Cuts a marked-up text into pieces.

#include "text/font_collection.h"
#include "text/text_format_code.h"

namespace footlight {

namespace {

constexpr const char* kStandardStyle = "STANDARD";

class MarkupParser {
 public:
  using Taker = std::function<void(const CTextFormatCode&)>;

  MarkupParser(const CFontCollection& fonts, int bitsPerPixel, const Taker& take)
      : fonts_(fonts), bpp_(bitsPerPixel), take_(take), font_(fonts.getBaseFont()) {}

  void parse(std::string_view text) {
    while (!text.empty()) {
      const std::size_t plain = std::min(text.find_first_of("\t\n\r|<"), text.size());
      word_.append(text.substr(0, plain));
      text.remove_prefix(plain);
      if (!text.empty()) text.remove_prefix(text.front() == '<' ? takeCode(text) : takeMark(text.front()));
    }
    flushWord();
  }

 private:
  void flushWord() {
    if (!word_.empty()) take_(CTextFormatCode(CXString(std::exchange(word_, {}))));
  }

  std::size_t takeMark(char mark) {
    if (mark == '\n') return 1;
    flushWord();
    take_(CTextFormatCode(mark == '\t' ? _formatCode::tab : _formatCode::lineEnd, bpp_, CXString()));
    return 1;
  }

  // How much of the text the code is. Where no ">" comes next all up to the next "<" is plain.
  std::size_t takeCode(std::string_view text) {
    const std::size_t end = std::min(text.find_first_of("<>", 1), text.size());
    if (end == text.size() || text[end] == '<') {
      word_.append(text.substr(0, end));
      return end;
    }
    useCode(text.substr(1, end - 1));
    return end + 1;
  }

  void useCode(std::string_view code) {
    if (const StyleToggle* toggle = findStyleToggle(code)) {
      flushWord();
      changeFont(*toggle);
    } else if (code.starts_with(kBoxCode)) {
      flushWord();
      take_(CTextFormatCode(_formatCode::editBox, bpp_, CXString(code)));
    } else if (code.starts_with(kColorCode)) {
      flushWord();
      take_(CTextFormatCode(_formatCode::color, bpp_, CXString(code.substr(kColorCode.size()))));
    }
  }

  // What scripts set on the family goes before what the font says of itself; the style only as long as no
  // code has changed it.
  void changeFont(const StyleToggle& toggle) {
    if (font_ == nullptr) return;
    const bool isBase = font_ == fonts_.getBaseFont() && fonts_.getStyle().IsString();
    const CXString& style = isBase ? fonts_.getStyle() : font_->getStyle();
    const CXString& family = fonts_.getFamily().IsString() ? fonts_.getFamily() : font_->getFamily();
    const int size = fonts_.getSize() != 0 ? fonts_.getSize() : font_->getSize();
    CSimpleFont6* found =
        fonts_.get(family, style.equalsIgnoreCase(toggle.style) ? kStandardStyle : toggle.style, size);
    if (found == nullptr) return;
    font_ = found;
    take_(CTextFormatCode(font_, CXString("<") + toggle.code + ">"));
  }

  const CFontCollection& fonts_;
  int bpp_;
  const Taker& take_;
  CSimpleFont6* font_;
  std::string word_;
};

}  // namespace

void parseText(std::string_view text, const CFontCollection& fonts, int bitsPerPixel,
               const std::function<void(const CTextFormatCode&)>& take) {
  MarkupParser(fonts, bitsPerPixel, take).parse(text);
}

}  // namespace footlight
