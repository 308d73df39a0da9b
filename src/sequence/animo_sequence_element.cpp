#include "sequence/animo_sequence_element.h"

namespace footlight {

CAnimoSequenceElement::CAnimoSequenceElement(CWindow* window) : CPlayable(window) { setType(kType); }

CAnimoSequenceElement::~CAnimoSequenceElement() { CAnimoSequenceElement::retire(); }

void CAnimoSequenceElement::take(CSequenceFigure* figure, const CXString& event) {
  figure_.take(this, figure);
  resolve(event);
}

void CAnimoSequenceElement::takeFile(CWindow* window, CResourcesManager* resources, const CXString& name,
                                     const CXString& event) {
  if (figure_.takeFile(window, resources, name)) figure_.show();
  resolve(event);
}

void CAnimoSequenceElement::resolve(const CXString& event) {
  const Ref<CAnimo6> animo(getAnimo());
  if (!animo) return;
  animo->ensureLoaded();
  const int number = animo->resolveEventName(event);
  eventIndex_ = number >= 0 ? number : event.toNumber();
}

void CAnimoSequenceElement::retire() {
  forget();
  figure_.leave(this);
}

void CAnimoSequenceElement::forget() {
  if (CAnimo6* animo = getAnimo()) animo->removeNotifier(this);
}

void CAnimoSequenceElement::substAnimation(CAnimo* animation) {
  forget();
  figure_.replace(animation);
}

// Observers may stop the element in its start.
void CAnimoSequenceElement::play() {
  const Ref<CAnimoSequenceElement> self(this);
  const int course = ++course_;
  notify(kStarted);
  const Ref<CAnimo6> animo(getAnimo());
  if (course != course_ || !animo) return;
  animo->ensureLoaded();
  if (animo->GetEventInfo(eventIndex_) == nullptr) return;
  animo->setCurrentEvent(eventIndex_);
  animo->play();
  if (course == course_ && getAnimo() == animo.get()) animo->addNotifier(this);
}

void CAnimoSequenceElement::stop(bool notifies) {
  const Ref<CAnimoSequenceElement> self(this);
  ++course_;
  setStatus(getStatus() & ~kPlaying);
  if (const Ref<CAnimo6> animo(getAnimo()); animo) animo->stop(notifies);
  forget();
}

void CAnimoSequenceElement::pause() {
  if (CAnimo6* animo = getAnimo()) animo->pause();
}

void CAnimoSequenceElement::resume() {
  if (const Ref<CAnimo6> animo(getAnimo()); animo) animo->resume();
}

bool CAnimoSequenceElement::isVisible() const {
  const CAnimo6* animo = getAnimo();
  return animo != nullptr && animo->isVisible();
}

void CAnimoSequenceElement::setVisibility(bool visible) {
  if (CAnimo6* animo = getAnimo()) animo->setVisibility(visible);
}

bool CAnimoSequenceElement::onPlayableFinished(CPlayable* playable) {
  if (playable != getAnimo()) return false;
  forget();
  notify(kFinished);
  return false;
}

}  // namespace footlight
