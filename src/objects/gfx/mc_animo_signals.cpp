// What an ANIMO signals: its playback, its collisions, the mouse over it.

#include "gfx/window.h"
#include "objects/gfx/mc_animo.h"
#include "script/mc_objects_container.h"

namespace footlight {

namespace {

constexpr const char* kReverse = "_REVERSE";

}  // namespace

// Playback

CXString CMC_Animo::getSignalEvent(const CXString& event) {
  const bool isReverse = event.endsWith(kReverse);
  return isReverse ? event.Left(event.Length() - CXString(kReverse).Length()) : event;
}

CXString CMC_Animo::signalEvent() const {
  const CAnimo6* animo = getAnimo();
  return animo != nullptr ? getSignalEvent(animo->GetEventName(animo->GetCurrentEvent()).Upper())
                          : CXString();
}

bool CMC_Animo::isSignalOf(AnimoSignal signal, const CPlayable* playable) const {
  return isSignalBound(signal) && getAnimo() != nullptr && getAnimo() == playable;
}

void CMC_Animo::signalPlayback(AnimoSignal signal, const CPlayable* playable) {
  if (isSignalOf(signal, playable)) raise(signal, signalEvent());
}

bool CMC_Animo::onPlayableStarted(CPlayable* playable) {
  signalPlayback(AnimoSignal::onStarted, playable);
  return false;
}

bool CMC_Animo::onPlayableFinished(CPlayable* playable) {
  signalPlayback(AnimoSignal::onFinished, playable);
  return false;
}

bool CMC_Animo::onPlayableTick(CPlayable* playable) {
  if (!isSignalOf(AnimoSignal::onFrameChanged, playable)) return false;
  const Ref<CMC_Animo> self(this);
  const CAnimo6& animo = *getAnimo();
  const CXString name = animo.getFrameName(CAnimo::kCurrent, CAnimo::kCurrent);
  const CXString event = signalEvent();
  const CXString detail = name.IsString()
                              ? "ONFRAMECHANGED^" + name.Upper()
                              : kNamelessFrame + CXString("^") + CXString::toString(animo.Current());
  if (!onSignal(detail)) raise(AnimoSignal::onFrameChanged, event);
  return false;
}

// Collisions

void CMC_Animo::onCollision(CGraphicsObject* a, CGraphicsObject* b) {
  signalCollision(AnimoSignal::onCollision, a, b, signalEvent());
}

void CMC_Animo::onCollisionFinished(CGraphicsObject* a, CGraphicsObject* b) {
  signalCollision(AnimoSignal::onCollisionFinished, a, b, signalEvent());
}

// The mouse

void CMC_Animo::setAsButton(bool asButton, bool changeCursor) {
  asButton_ = asButton;
  changeCursor_ = changeCursor;
  if (CAnimo6* animo = getAnimo()) animo->Play("ONNOEVENT", 0, CAnimo::kUsualFps);
  focus_ = false;
}

bool CMC_Animo::isButton() const {
  const CAnimo6* animo = getAnimo();
  return asButton_ && !CWindow::isPaused() && animo != nullptr && animo->isVisible();
}

bool CMC_Animo::isHit(CXPoint point) const {
  const CAnimo6& animo = *getAnimo();
  const CFrame* first = onFirstFrame_ ? animo.GetFrame(0) : nullptr;
  return (first != nullptr ? first->GetBoundingBox() : animo.GetBoundingBox()).IsInRect(point);
}

// A click that is shown is not cut short.
void CMC_Animo::playButton(const char* event) {
  CAnimo6* animo = getAnimo();
  if (animo != nullptr && !animo->isPlaying("ONCLICK")) animo->Play(event, 0, CAnimo::kUsualFps);
}

void CMC_Animo::enterFocus(bool announces) {
  const bool isClicked = getAnimo()->isPlaying("ONCLICK");
  playButton("ONFOCUSON");
  if (!isClicked && changeCursor_) window()->BeginActiveCursor();
  if (!announces) return;
  focus_ = true;
  raise(AnimoSignal::onFocusOn);
}

void CMC_Animo::leaveFocus(bool announces) {
  playButton("ONFOCUSOFF");
  if (changeCursor_) window()->EndActiveCursor();
  if (!announces) return;
  focus_ = false;
  raise(AnimoSignal::onFocusOff);
}

bool CMC_Animo::onMouseMove(CXPoint point) {
  const Ref<CMC_Animo> self(this);
  if (!isButton()) return CMouseListener::onMouseMove(point);
  const bool announces =
      mouseBound_ && (isSignalBound(AnimoSignal::onFocusOn) || isSignalBound(AnimoSignal::onFocusOff));
  const bool isOver = isHit(point);
  if (isOver && !focus_) {
    enterFocus(announces);
  } else if (!isOver && focus_) {
    leaveFocus(announces);
  }
  return CMouseListener::onMouseMove(point);
}

bool CMC_Animo::onClick(int button, CXPoint point) {
  const Ref<CMC_Animo> self(this);
  if (isButton() && mouseBound_ && isHit(point)) {
    playButton("ONCLICK");
    if (changeCursor_) window()->EndActiveCursor();
    if (isSignalBound(AnimoSignal::onClick)) signalButton(AnimoSignal::onClick, button);
  }
  return CMouseListener::onClick(button, point);
}

bool CMC_Animo::onRelease(int button, CXPoint point) {
  const Ref<CMC_Animo> self(this);
  if (isButton() && mouseBound_ && isSignalBound(AnimoSignal::onRelease) && isHit(point))
    signalButton(AnimoSignal::onRelease, button);
  return CMouseListener::onRelease(button, point);
}

}  // namespace footlight
