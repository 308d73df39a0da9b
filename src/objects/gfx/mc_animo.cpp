#include "objects/gfx/mc_animo.h"

#include "gfx/refresh_screen.h"
#include "script/melement.h"

namespace footlight {

CMC_Animo::CMC_Animo(CMC_ObjectsContainer* container) : CMC_Animo(container, Owned<CAnimo6>()) {
  animo_.own(makeAnimo({}, false));
}

CMC_Animo::CMC_Animo(CMC_ObjectsContainer* container, Owned<CAnimo6> animo)
    : CMC_Graphic(container, type::kAnimo), animo_(std::move(animo)) {
  if (CAnimo6* animation = getAnimo()) animation->addNotifier(this);
  initializeBehaviours(container, nullptr);
}

CMC_Animo::CMC_Animo(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Graphic(container, element, type::kAnimo),
      onFirstFrame_(element->getPropertyBoolValue("ONFIRSTFRAME")) {
  CMC_Animo::load(element->getPropertyValue("FILENAME"), preload_);
  if (CAnimo6* animation = getAnimo()) {
    animation->toRelease(element->getPropertyBoolValue("FLUSHAFTERPLAYED"));
    monitorIfWanted();
    if (element->getPropertyBoolValue("TOCANVAS") && screen() != nullptr)
      screen()->put(animation, getPriority());
    animation->setVisibility(element->getPropertyBoolValue("VISIBLE"));
    const int fps = element->getPropertyIntValue("FPS");
    animation->SetFPS(fps == 0 ? CAnimo::kUsualFps : fps);
    animation->addNotifier(this);
  }
  initializeBehaviours(container, element);
}

CMC_Animo::~CMC_Animo() { CMC_Animo::unlink(); }

// The animation

void CMC_Animo::load(const CXString& name, bool preload) {
  CAnimo6* before = getAnimo();
  if (before == nullptr || !before->getFileName().equalsIgnoreCase(name)) {
    const int priority = screen() != nullptr ? screen()->GetPriority(before) : kOffScreen;
    giveBack();
    animo_.take(managerFor(getScene()), name, [&] { return makeAnimo(name, preload); });
    if (CAnimo6* animo = getAnimo(); priority != kOffScreen && animo != nullptr) animo->addNotifier(this);
    takePlace(priority);
  }
  if (CAnimo6* animo = getAnimo()) tellSequences(animo);
}

void CMC_Animo::show(bool on) {
  CAnimo6* animo = getAnimo();
  if (animo == nullptr) return;
  animo->setVisibility(on);
  animo->removeNotifier(this);
  animo->addNotifier(this);
}

Owned<CAnimo6> CMC_Animo::makeAnimo(const CXString& name, bool preload) const {
  Owned<CAnimo6> animo(new CAnimo6(window()));
  animo->setFilename(name);
  if (preload && name.IsString()) animo->Load(name);
  return animo;
}

void CMC_Animo::giveBack() {
  if (CAnimo6* animo = getAnimo()) {
    animo->removeNotifier(this);
    animo->Visible(false);
  }
  removeCollisionsMonitoring();
  animo_.giveBack(managerFor(getScene()));
}

void CMC_Animo::tellSequences(CAnimo* animo) {
  for (CPlayable* sequence : seqs_) sequence->substAnimation(animo);
}

std::unique_ptr<CMC_Object> CMC_Animo::copy() const {
  const CAnimo6* animo = getAnimo();
  if (animo == nullptr) return nullptr;
  Owned<CAnimo6> made(static_cast<CAnimo6*>(animo->clone().release()));
  if (screen() != nullptr) {
    const int priority = screen()->GetPriority(animo);
    screen()->put(made.get(), priority == kOffScreen ? 0 : priority);
  }
  return std::make_unique<CMC_Animo>(getScene(), std::move(made));
}

bool CMC_Animo::done(bool keep) {
  tellSequences(nullptr);
  giveBack();
  return CMC_Object::done(keep);
}

void CMC_Animo::unlink() {
  giveBack();
  forgetMouse();
}

CGraphicsObject* CMC_Animo::getGraphicsFrame(const CXString& frame) const {
  const CAnimo6* animo = getAnimo();
  return animo != nullptr ? animo->getFrame(frame) : nullptr;
}

}  // namespace footlight
