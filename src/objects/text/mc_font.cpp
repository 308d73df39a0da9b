#include "objects/text/mc_font.h"

#include "files/archive.h"
#include "gfx/window.h"
#include "script/mc_objects_container.h"
#include "script/melement.h"

namespace footlight {

namespace {

constexpr std::string_view kPrefix = "DEF_";

}  // namespace

CMC_Font::CMC_Font(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kFont), fonts_(new CFontCollection(container->getWindow())) {
  addFonts(*element);
  initializeBehaviours(container, element);
}

CMC_Font::~CMC_Font() = default;

// The name of a property is DEF, family, style and size, with "_" between them.
void CMC_Font::addFonts(const CMElement& element) {
  for (const CMProperty* property : element.properties()) {
    if (!property->getName().starts_with(kPrefix)) continue;
    std::vector<CXString> pieces = CXString(property->getName()).toVector("_");
    pieces.resize(4);
    fonts_->addFont(Owned<CSimpleFont6>(new CSimpleFont6(fonts_->getWindow(), CXString(property->getValue()),
                                                         pieces[1], pieces[2], pieces[3].toNumber())));
  }
}

void CMC_Font::serialize(CXArchive& archive) {
  constexpr std::size_t kFontBytes = 12;
  CMC_Object::serialize(archive);
  const bool isStoring = archive.isStoring();
  const int count =
      archive.passCount(fonts_ != nullptr ? static_cast<std::size_t>(fonts_->count()) : 0, kFontBytes);
  for (int i = 0; i < count && !archive.hasFailed(); ++i) {
    const CSimpleFont6* font = isStoring ? fonts_->at(i) : nullptr;
    CXString family = isStoring ? font->getFamily() : CXString();
    CXString style = isStoring ? font->getStyle() : CXString();
    int size = isStoring ? font->getSize() : 0;
    archive.pass(family);
    archive.pass(style);
    archive.pass(size);
    if (isStoring || archive.hasFailed()) continue;
    Owned<CSimpleFont6> made(new CSimpleFont6(fonts_->getWindow()));
    made->setFamily(family);
    made->setStyle(style);
    made->setSize(size);
    fonts_->addFont(std::move(made));
  }
}

CFontCollection* CMC_Font::fontOf(const CMC_ObjectsContainer* scope, const CXString& name) {
  const auto* object = scope != nullptr ? object_cast<CMC_Font>(scope->getObject(name)) : nullptr;
  return object != nullptr ? object->getFont() : nullptr;
}

void CMC_Font::unlink() {
  if (fonts_ == nullptr) return;
  CWindow* window = fonts_->getWindow();
  fonts_.reset();
  if (window != nullptr) window->Invalidate();  // the texts that it was drawn with
}

}  // namespace footlight
