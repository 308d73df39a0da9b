#include "text/text6.h"

#include "text/font_collection.h"

namespace footlight {

CText6::CText6(CWindow* window, bool hypertext, CEditBoxMaker* unit)
    : CGraphicsObject(window),
      unit_(unit),
      unitObject_(unit != nullptr ? unit->asObject() : nullptr),
      hypertext_(hypertext) {}
CText6::~CText6() = default;
void CText6::flush_ht_info() {}
void CText6::setFont(CSimpleFont6* font) { font_ = font; }
void CText6::setText(const CXString& text) { rawText_ = text; }
void CText6::setJustify(CXRect rect, _justify h, _justify v) {
  rect_ = rect;
  hJustify_ = h;
  vJustify_ = v;
}
CXString CText6::getColoruredText(const CXString& text, int /*colour*/) const { return text; }
void CText6::setColor(int colour) { defColor_ = colour; }
int CText6::getWordAtXY(CXPoint /*point*/) const { return -1; }
CXString CText6::getWordAt(int /*word*/) const { return {}; }
CXPoint CText6::getWordPosition(int /*word*/) const { return {-1, -1}; }
int CText6::getWordWidth(int /*word*/) const { return 0; }
int CText6::search(const CXString& /*text*/, int /*from*/) const { return -1; }
void CText6::setWordColor(int /*word*/, int /*colour*/) {}
int CText6::getLength() const { return 0; }
int CText6::getLength(const CSimpleFont6* font, std::string_view text) {
  if (font == nullptr) return 0;
  int length = 0;
  char previous = 0;
  for (const char letter : text) {
    length = wrap_add(length, font->getLetterWidth(previous, letter) + CSimpleFont6::kLetterGap);
    previous = letter;
  }
  return length;
}
ht_Line CText6::get_ht_lines_info(int /*line*/) const { return {}; }
int CText6::count_words() const { return 0; }
CXString CText6::convTab(const CXString& text) { return text.replace("\t", "        "); }
void CText6::SetPosition(int px, int py) { CGraphicsObject::SetPosition(px, py); }
void CText6::Move(int dx, int dy) { CGraphicsObject::Move(dx, dy); }
void CText6::redraw(CGraphicsObject* /*destination*/) {}
TextLayout CText6::layOut(CFontCollection* /*fonts*/) const { return {}; }
void CText6::relayOut() {}

}  // namespace footlight
