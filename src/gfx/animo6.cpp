#include "gfx/animo6.h"

#include <algorithm>

namespace footlight {

namespace {

constexpr std::uint8_t kOpaque = 255;

}  // namespace

void CAnimo6::redraw(CGraphicsObject* destination) {
  const Ref<CFrame> frame(currentFrame());
  if (!frame) return;
  if (lastRefreshed_.get() != frame.get()) clearLastRefreshed();
  const CXPoint place = frame->GetPosition();
  const CXRect clip = frame->GetClippingRect();
  const std::uint8_t opacity = frame->GetOpacity();
  frame->SetClippingRect(clippingRect_);
  frame->placeAt(GetPosition());
  frame->SetOpacity(opacity_);
  frame->redraw(destination);
  lastRefreshed_ = frame.get();
  frame->placeAt(place);
  frame->SetClippingRect(clip);
  frame->SetOpacity(opacity);
  takePixels();
}

void CAnimo6::expandCurrent() {
  CFrame* frame = currentFrame();
  if (frame == nullptr) return;
  if (lastRefreshed_.get() != frame) clearLastRefreshed();
  frame->expand();
  lastRefreshed_ = frame;
  takePixels();
}

void CAnimo6::unpack() { expandCurrent(); }

void CAnimo6::pack(bool /*freePlain*/) { clearLastRefreshed(); }

// A load that comes late, or anew, leaves what the definition and scripts have set.
void CAnimo6::ensureLoaded() {
  if (isLoaded() || getFileName().IsEmpty()) return;
  const int fps = getFPS();
  const int event = getLastEvent();
  const std::uint8_t opacity = opacity_;
  const bool wasVisible = CGraphicsObject::isVisible();
  if (Load(CXString(getFileName())) != 0) return;
  SetFPS(fps);
  if (GetNOFInEvent(event) > 0) setLastEvent(event);
  if (opacity != kOpaque) opacity_ = opacity;
  Visible(wasVisible);
}

void CAnimo6::flush() {
  const int event = getLastEvent();
  Flush();
  setLastEvent(event);
}

void CAnimo6::show() {
  ensureLoaded();
  CAnimo::show();
}

void CAnimo6::hide() {
  Visible(false);
  if (releaseAfterUse()) flush();
}

void CAnimo6::Play(int event, int position, int fps) {
  ensureLoaded();
  CAnimo::Play(event, position, fps);
}

void CAnimo6::Play(const CXString& event, int position, int fps) {
  ensureLoaded();
  CAnimo::Play(event, position, fps);
}

void CAnimo6::play(const CXString& event) {
  ensureLoaded();
  CAnimo::play(event);
}

void CAnimo6::playReverse(const CXString& event, int position) {
  ensureLoaded();
  CAnimo::playReverse(event, position);
}

// All frames

template <class Change>
void CAnimo6::changeFrames(Change change) {
  ownFrames();
  for (const auto& frame : *frames_) change(*frame);
  takePixels();
}

void CAnimo6::FlipH() {
  changeFrames([](CFrame& frame) { frame.FlipH(); });
}

void CAnimo6::FlipV() {
  changeFrames([](CFrame& frame) { frame.FlipV(); });
}

void CAnimo6::resetFlips() {
  changeFrames([](CFrame& frame) { frame.resetFlips(); });
}

int CAnimo6::GetMaxWidth() const {
  int most = 0;
  for (const auto& frame : *frames_) most = std::max(most, frame->Width());
  return most;
}

int CAnimo6::GetMaxHeight() const {
  int most = 0;
  for (const auto& frame : *frames_) most = std::max(most, frame->Height());
  return most;
}

bool CAnimo6::isAt(CXPoint point, bool useAlpha) {
  const Ref<CFrame> frame(currentFrame());
  if (!frame) return false;
  const CXPoint place = point - framePlace(Current());
  if (!CXRect(0, 0, frame->Width(), frame->Height()).IsInRect(place)) return false;
  if (!useAlpha) return true;
  expandCurrent();
  return GetPixel(_channel::alpha, place) > 0;
}

bool CAnimo6::isPlaying(const CXString& event) const {
  return isPlaying() && GetEventName(GetCurrentEvent()).equalsIgnoreCase(event);
}

// Sound

void CAnimo6::setVolume(int volume) {
  CPlayable::setVolume(volume);
  for (CFrameSound* sound : {streamedSound(), currentSound()}) {
    if (sound != nullptr) sound->setVolume(volume);
  }
}

void CAnimo6::setPanning(int panning) {
  CPlayable::setPanning(panning);
  for (CFrameSound* sound : {streamedSound(), currentSound()}) {
    if (sound != nullptr) sound->setPanning(panning);
  }
}

void CAnimo6::setFrequency(int frequency) {
  CPlayable::setFrequency(frequency);
  for (CFrameSound* sound : {streamedSound(), currentSound()}) {
    if (sound != nullptr) sound->setFrequency(frequency);
  }
}

}  // namespace footlight
