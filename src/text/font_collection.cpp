#include "text/font_collection.h"

#include <algorithm>

namespace footlight {

void CFontCollection::addFont(Owned<CSimpleFont6> font) {
  if (font == nullptr || indexOf(font.get()) >= 0) return;
  if (baseFont_ == nullptr) baseFont_ = font.get();
  fonts_.push_back(std::move(font));
}

void CFontCollection::setBaseFont(CSimpleFont6* font) {
  if (font == nullptr || indexOf(font) >= 0) baseFont_ = font;
}

CSimpleFont6* CFontCollection::get(const CXString& family, const CXString& style, int size) const {
  for (const Owned<CSimpleFont6>& font : fonts_) {
    if (font->getSize() == size && font->getFamily().equalsIgnoreCase(family) &&
        font->getStyle().equalsIgnoreCase(style))
      return font.get();
  }
  return nullptr;
}

CSimpleFont6* CFontCollection::at(int index) const {
  return index >= 0 && index < count() ? fonts_[static_cast<std::size_t>(index)].get() : nullptr;
}

int CFontCollection::indexOf(const CSimpleFont6* font) const {
  const auto found = std::ranges::find(fonts_, font, &Owned<CSimpleFont6>::get);
  return found != fonts_.end() ? static_cast<int>(found - fonts_.begin()) : -1;
}

int CFontCollection::drawLetter(int x, int y, char previous, char letter) {
  if (baseFont_ == nullptr) return 0;
  baseFont_->SetDestiny(getDestiny());
  return baseFont_->drawLetter(x, y, previous, letter);
}

int CFontCollection::getLetterWidth(char previous, char letter) const {
  return baseFont_ != nullptr ? baseFont_->getLetterWidth(previous, letter) : 0;
}

int CFontCollection::getRealLetterWidth(char letter) const {
  return baseFont_ != nullptr ? baseFont_->getRealLetterWidth(letter) : 0;
}

int CFontCollection::Height() const { return baseFont_ != nullptr ? baseFont_->Height() : 0; }

void CFontCollection::SetClippingRect(char letter, CXRect rect) {
  if (baseFont_ != nullptr) baseFont_->SetClippingRect(letter, rect);
}

void CFontCollection::setColor(int colour) {
  CSimpleFont6::setColor(colour);
  for (const Owned<CSimpleFont6>& font : fonts_) font->setColor(colour);
}

void CFontCollection::SetOpacity(std::uint8_t opacity) {
  CSimpleFont6::SetOpacity(opacity);
  for (const Owned<CSimpleFont6>& font : fonts_) font->SetOpacity(opacity);
}

void CFontCollection::setDefColor(int colour) {
  CSimpleFont6::setDefColor(colour);
  for (const Owned<CSimpleFont6>& font : fonts_) font->setDefColor(colour);
}

}  // namespace footlight
