#include "objects/text/mc_text.h"

#include "files/archive.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/text/mc_font.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

namespace {

constexpr int kOffScreen = -1;

CRefreshScreen* screenOf(const CGraphicsObject& graphics) {
  return graphics.getWindow() != nullptr ? graphics.getWindow()->getRefreshScreen() : nullptr;
}

}  // namespace

CMC_Text::CMC_Text(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kText),
      vJustify_(element->getPropertyValue("VJUSTIFY")),
      hJustify_(element->getPropertyValue("HJUSTIFY")),
      rect_(element->getPropertyValue("RECT")),
      fontName_(element->getPropertyValue("FONT")),
      text_(
          new CMultilineText6(container->getWindow(), element->getPropertyBoolValue("HYPERTEXT"), nullptr)) {
  build(element->getPropertyValue("TEXT"), element->getPropertyBoolValue("TOCANVAS"),
        element->getPropertyIntValue("PRIORITY"), element->getPropertyBoolValue("VISIBLE"));
  initializeBehaviours(container, element);
}

CXRect CMC_Text::area() const {
  const CGraphicsObject* graphics = getScene()->getGraphicsObject(rect_);
  return graphics != nullptr ? graphics->GetBoundingBox() : rect_.toRect();
}

void CMC_Text::build(const CXString& text, bool toCanvas, int priority, bool visible) {
  text_->setJustify(area(), resolveJustify(hJustify_, _justify::left),
                    resolveJustify(vJustify_, _justify::top));
  text_->setFont(CMC_Font::fontOf(getScene(), fontName_));
  text_->setText(text);
  CRefreshScreen* screen = screenOf(*text_);
  if (toCanvas && screen != nullptr) screen->put(text_.get(), priority);
  text_->Visible(visible);
}

// Whether the words of a text can be asked for is not kept: those of one that is read can be.
void CMC_Text::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  const CRefreshScreen* screen = text_ != nullptr ? screenOf(*text_) : nullptr;
  int priority = screen != nullptr ? screen->GetPriority(text_.get()) : kOffScreen;
  bool isOnScreen = priority != kOffScreen;
  bool isShown = text_ != nullptr && text_->isVisible();
  CXString text = text_ != nullptr ? text_->getText() : CXString();
  for (CXString* property : {&vJustify_, &hJustify_, &rect_}) archive.pass(*property);
  archive.pass(priority);
  archive.pass(fontName_);
  archive.pass(isOnScreen);
  archive.pass(isShown);
  archive.pass(text);
  if (archive.isStoring() || archive.hasFailed()) return;
  text_.reset(new CMultilineText6(getScene()->getWindow(), true, nullptr));
  build(text, isOnScreen, priority, isShown);
}

CMC_Text::CMC_Text(const CMC_Text& other)
    : CMC_Object(other),
      vJustify_(other.vJustify_),
      hJustify_(other.hJustify_),
      rect_(other.rect_),
      fontName_(other.fontName_),
      text_(other.text_ != nullptr ? static_cast<CMultilineText6*>(other.text_->clone().release())
                                   : nullptr) {
  CRefreshScreen* screen = text_ != nullptr ? screenOf(*text_) : nullptr;
  if (screen != nullptr && screen->getIndex(other.getText()) >= 0)
    screen->put(text_.get(), screen->GetPriority(other.getText()));
}

CMC_Text::~CMC_Text() = default;

std::unique_ptr<CMC_Object> CMC_Text::copy() const {
  return text_ != nullptr ? std::unique_ptr<CMC_Object>(new CMC_Text(*this)) : nullptr;
}

_justify CMC_Text::resolveJustify(const CXString& word, _justify otherwise) {
  constexpr std::string_view kWords[] = {"LEFT", "RIGHT", "CENTER", "TOP", "BOTTOM"};
  for (std::size_t i = 0; i < std::size(kWords); ++i) {
    if (word == kWords[i]) return static_cast<_justify>(i);
  }
  return otherwise;
}

void CMC_Text::unlink() {
  if (text_ == nullptr) return;
  text_->Invalidate();
  if (CRefreshScreen* screen = screenOf(*text_)) screen->remove(text_.get());
  text_.reset();
}

}  // namespace footlight
