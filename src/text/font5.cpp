#include "text/font5.h"

#include <algorithm>

#include "gfx/animo.h"

namespace footlight {

CFont5::CFont5(CWindow* window) : window_(window), animo_(new CAnimo(window)) {}

CFont5::CFont5(CWindow* window, const CXString& fileName) : CFont5(window) { load(fileName); }

CFont5::~CFont5() = default;

int CFont5::load(const CXString& name) {
  animo_.reset(new CAnimo(window_, name));
  setErrorCode(animo_->LastError());
  std::string letters;
  for (int i = 0; i < animo_->GetNOF(); ++i) {
    CFrame& frame = *animo_->GetFrame(i);
    letters += animo_->getFrameName(0, i).GetAt(0);
    emptyCorners(frame);
  }
  alphabet_ = CXString(letters);
  return LastError();
}

void CFont5::emptyCorners(CFrame& frame) {
  frame.unshare();
  frame.expand();
  const auto alpha = frame.AlphaChannel().bytes();
  const auto width = static_cast<std::size_t>(frame.Width());
  const std::size_t pixels = width * static_cast<std::size_t>(frame.Height());
  if (pixels == 0 || alpha.size() < pixels) return;
  for (const std::size_t corner : {std::size_t{0}, width - 1, pixels - width, pixels - 1})
    alpha[corner] = std::byte{0};
}

CFrame* CFont5::frameOf(char letter) const {
  const int index = letter != 0 ? alphabet_.Find(letter) : -1;
  return index >= 0 ? animo_->GetFrame(index) : nullptr;
}

int CFont5::getAlphabetHeight() const {
  int height = 0;
  for (int i = 0; i < animo_->GetNOF(); ++i) height = std::max(height, animo_->GetFrame(i)->Height());
  return height;
}

CXSize CFont5::getLetterSize(char letter) const {
  const CFrame* frame = frameOf(letter);
  return frame != nullptr ? frame->Size() : CXSize();
}

void CFont5::drawLetter(CXPoint place, char letter) {
  CFrame* frame = frameOf(letter);
  if (frame == nullptr || destiny_.get() == nullptr) return;
  frame->placeAt(place);
  frame->SetClippingRect({});
  frame->redraw(destiny_.get());
}

int CFont5::getLengthInPixels(const CXString& text, int spacing) const {
  std::int64_t length = 0;
  for (const char letter : text.view())
    length += letter == ' ' ? getLetterWidth('A') : std::int64_t{getLetterWidth(letter)} + spacing;
  return to_int(static_cast<double>(length));
}

void CFont5::setDestiny(CGraphicsObject* destiny) { destiny_ = destiny; }

}  // namespace footlight
