#include "sequence/figure_link.h"

#include "gfx/refresh_screen.h"
#include "gfx/window.h"

namespace footlight {

void FigureLink::take(CPlayable* playable, CSequenceFigure* figure) {
  animo_ = figure->getAnimo();
  figure_ = figure;
  object_ = figure->asObject();
  figure->addSeq(playable);
}

bool FigureLink::takeFile(CWindow* window, CResourcesManager* resources, const CXString& name) {
  bool isNew = false;
  file_.take(resources, name, [&] {
    isNew = true;
    Owned<CAnimo6> animo(new CAnimo6(window));
    animo->setFilename(name);
    animo->Load(name);
    return animo;
  });
  animo_ = file_.get();
  return isNew;
}

void FigureLink::replace(CAnimo* animo) {
  animo_ = dynamic_cast<CAnimo6*>(animo);
  if (animo == nullptr) object_ = nullptr;
}

void FigureLink::leave(const CPlayable* playable) {
  if (object_) figure_->removeSeq(playable);
  object_ = nullptr;
  animo_ = nullptr;
  file_.giveBack(nullptr);
}

void FigureLink::show() const {
  const CWindow* window = animo_ ? animo_->getWindow() : nullptr;
  if (CRefreshScreen* screen = window != nullptr ? window->getRefreshScreen() : nullptr)
    screen->put(animo_.get(), kPriority);
}

}  // namespace footlight
