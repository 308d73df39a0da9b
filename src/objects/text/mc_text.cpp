#include "objects/text/mc_text.h"

#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/text/mc_font.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

namespace {

CXRect rectOf(const CMC_ObjectsContainer& container, const CMElement& element) {
  const CGraphicsObject* graphics = container.getGraphicsObject(element.getPropertyValue("RECT"));
  return graphics != nullptr ? graphics->GetBoundingBox() : element.getPropertyRectValue("RECT");
}

CRefreshScreen* screenOf(const CGraphicsObject& graphics) {
  return graphics.getWindow() != nullptr ? graphics.getWindow()->getRefreshScreen() : nullptr;
}

}  // namespace

CMC_Text::CMC_Text(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kText),
      text_(
          new CMultilineText6(container->getWindow(), element->getPropertyBoolValue("HYPERTEXT"), nullptr)) {
  text_->setJustify(rectOf(*container, *element),
                    resolveJustify(element->getPropertyValue("HJUSTIFY"), _justify::left),
                    resolveJustify(element->getPropertyValue("VJUSTIFY"), _justify::top));
  text_->setFont(CMC_Font::fontOf(container, element->getPropertyValue("FONT")));
  text_->setText(element->getPropertyValue("TEXT"));
  CRefreshScreen* screen = screenOf(*text_);
  if (element->getPropertyBoolValue("TOCANVAS") && screen != nullptr)
    screen->put(text_.get(), element->getPropertyIntValue("PRIORITY"));
  text_->Visible(element->getPropertyBoolValue("VISIBLE"));
  initializeBehaviours(container, element);
}

CMC_Text::CMC_Text(const CMC_Text& other)
    : CMC_Object(other),
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
