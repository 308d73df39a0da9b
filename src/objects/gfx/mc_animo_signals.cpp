// What an ANIMO signals: its playback, its collisions, the mouse over it.

#include "gfx/window.h"
#include "objects/gfx/mc_animo.h"
#include "script/mc_objects_container.h"

namespace footlight {

namespace {

// Signals of the type, by their index.
constexpr int kOnStarted = 3;
constexpr int kOnFinished = 4;
constexpr int kOnFrameChanged = 7;
constexpr int kOnCollision = 8;
constexpr int kOnCollisionFinished = 9;
constexpr int kOnFocusOn = 10;
constexpr int kOnFocusOff = 11;
constexpr int kOnClick = 12;
constexpr int kOnRelease = 13;

constexpr const char* kReverse = "_REVERSE";

}  // namespace

// --- playback
// ------------------------------------------------------------------------------------------------------

CXString CMC_Animo::getSignalEvent(const CXString& event) {
  const bool isReverse = event.endsWith(kReverse);
  return isReverse ? event.Left(event.Length() - CXString(kReverse).Length()) : event;
}

CXString CMC_Animo::signalEvent() const {
  const CAnimo6* animo = getAnimo();
  return animo != nullptr ? getSignalEvent(animo->GetEventName(animo->GetCurrentEvent()).Upper())
                          : CXString();
}

bool CMC_Animo::isSignalOf(int index, const CPlayable* playable) const {
  return isSignalBound(index) && getAnimo() != nullptr && getAnimo() == playable;
}

void CMC_Animo::signalPlayback(int index, const char* signal, const CPlayable* playable) {
  if (!isSignalOf(index, playable)) return;
  const Ref<CMC_Animo> self(this);
  if (!onSignal(CXString(signal) + "^" + signalEvent())) onSignal(signal);
}

bool CMC_Animo::onPlayableStarted(CPlayable* playable) {
  signalPlayback(kOnStarted, "ONSTARTED", playable);
  return false;
}

bool CMC_Animo::onPlayableFinished(CPlayable* playable) {
  signalPlayback(kOnFinished, "ONFINISHED", playable);
  return false;
}

bool CMC_Animo::onPlayableTick(CPlayable* playable) {
  if (!isSignalOf(kOnFrameChanged, playable)) return false;
  const Ref<CMC_Animo> self(this);
  const CAnimo6& animo = *getAnimo();
  const CXString name = animo.getFrameName(CAnimo::kCurrent, CAnimo::kCurrent);
  const CXString event = signalEvent();
  const CXString detail = name.IsString()
                              ? "ONFRAMECHANGED^" + name.Upper()
                              : CXString("ONFRAMECHANGEDFRAME^") + CXString::toString(animo.Current());
  if (!onSignal(detail) && !onSignal("ONFRAMECHANGED^" + event)) onSignal("ONFRAMECHANGED");
  return false;
}

// --- collisions
// ----------------------------------------------------------------------------------------------------

void CMC_Animo::onCollision(CGraphicsObject* a, CGraphicsObject* b) {
  signalCollision(kOnCollision, "ONCOLLISION", a, b, signalEvent());
}

void CMC_Animo::onCollisionFinished(CGraphicsObject* a, CGraphicsObject* b) {
  signalCollision(kOnCollisionFinished, "ONCOLLISIONFINISHED", a, b, signalEvent());
}

// --- the mouse
// ---------------------------------------------------------------------------------------------------

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
  onSignal("ONFOCUSON");
}

void CMC_Animo::leaveFocus(bool announces) {
  playButton("ONFOCUSOFF");
  if (changeCursor_) window()->EndActiveCursor();
  if (!announces) return;
  focus_ = false;
  onSignal("ONFOCUSOFF");
}

bool CMC_Animo::onMouseMove(CXPoint point) {
  const Ref<CMC_Animo> self(this);
  if (!isButton()) return CMouseListener::onMouseMove(point);
  const bool announces = mouseBound_ && (isSignalBound(kOnFocusOn) || isSignalBound(kOnFocusOff));
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
    if (isSignalBound(kOnClick)) signalButton("ONCLICK", button);
  }
  return CMouseListener::onClick(button, point);
}

bool CMC_Animo::onRelease(int button, CXPoint point) {
  const Ref<CMC_Animo> self(this);
  if (isButton() && mouseBound_ && isSignalBound(kOnRelease) && isHit(point))
    signalButton("ONRELEASE", button);
  return CMouseListener::onRelease(button, point);
}

}  // namespace footlight
