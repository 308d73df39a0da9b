#include "text/multiline_text6.h"

#include "files/text_file_reader.h"

namespace footlight {

std::unique_ptr<CXObject> CMultilineText6::clone() const {
  auto copy = std::make_unique<CMultilineText6>(window_, hypertext_, nullptr);
  copy->takeLook(*this);
  return copy;
}

void CMultilineText6::flush() {
  Invalidate();
  layout_ = {};
  setSize(CXSize());
}

void CMultilineText6::takeFontsColor() {
  const CSimpleFont6* font = font_.get();
  if (hasColor_ || font == nullptr) return;
  firstColor_ = font->getColor();
  defColor_ = firstColor_;
}

void CMultilineText6::setText(const CXString& text) {
  takeFontsColor();
  CText6::setText(text.replace("&NBSP;", " "));
}

void CMultilineText6::setFont(CSimpleFont6* font) {
  font_ = font;
  takeFontsColor();
  relayOut();
}

int CMultilineText6::Load(const CXString& name) {
  CTextFileReader reader(window_, name);
  setErrorCode(reader.LastError());
  if (LastError() != 0) return LastError();
  std::string text;
  while (!reader.eof()) {
    std::string_view line = reader.getLine();
    if (line.ends_with('\r')) line.remove_suffix(1);
    text.append(line) += '\r';
  }
  setText(text);
  return 0;
}

TextLayout CMultilineText6::layOut(const CSimpleFont6& font) const {
  return layOutLines(font, rawText_, rect_.Width(), bitsPerPixel());
}

int CMultilineText6::getWordAtXY(CXPoint point) const {
  if (!hypertext_) return -1;
  const CXPoint place = point - GetPosition();
  for (std::size_t i = 0; i < layout_.lines.size(); ++i) {
    const TextLayout::Line& line = layout_.lines[i];
    if (line.y <= place.y && place.y <= wrap_add(line.y, line.height))
      return wordInLine(i, wrap_sub(place.x, line.x));
  }
  return -1;
}

CXPoint CMultilineText6::getWordPosition(int word) const {
  CXPoint place = CText6::getWordPosition(word);
  if (hypertext_ && wordAt(word) != nullptr)
    place.y = wrap_add(GetPosition().y, layout_.lines[lineOfWord(static_cast<std::size_t>(word))].y);
  return place;
}

}  // namespace footlight
