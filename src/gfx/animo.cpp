#include "gfx/animo.h"

#include <algorithm>

#include "foundation/arithmetic.h"
#include "gfx/animation_manager.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"

namespace footlight {

CAnimo::CAnimo(CWindow* window)
    : CGraphicsObject(window),
      CPlayable(window),
      frames_(std::make_shared<Frames>()),
      author_("Jonas Verhoekt") {
  setType(kType);
  if (CAnimationManager* manager = CWindow::animationsOf(window))
    manager->add(this, window->getRefreshScreen());
}

CAnimo::CAnimo(CWindow* window, const CXString& name) : CAnimo(window) { CAnimo::Load(name); }

CAnimo::CAnimo(const CAnimo& source)
    : CGraphicsObject(source.getWindow(), source),
      CPlayable(source.getWindow()),
      frames_(source.frames_),
      events_(source.events_),
      framePositions_(source.framePositions_),
      author_(source.author_),
      description_(source.description_),
      frameInEvent_(source.frameInEvent_),
      currentFrame_(source.currentFrame_),
      currentEvent_(source.currentEvent_),
      lastEvent_(source.lastEvent_),
      fps_(source.fps_),
      randomFramesNumber_(source.randomFramesNumber_),
      animoFlags_(source.animoFlags_),
      globalPosition_(source.globalPosition_),
      direction_(source.direction_) {
  setType(kType);
  CPlayable::setVolume(source.getVolume());
  CPlayable::setPanning(source.getPanning());
  CPlayable::setFrequency(source.getFrequency());
  setFilename(source.getFileName());
  setLoaded(source.isLoaded());
  toRelease(source.releaseAfterUse());
  if (CAnimationManager* manager = CWindow::animationsOf(window_))
    manager->add(this, window_->getRefreshScreen());
}

CAnimo::~CAnimo() {
  if (CAnimationManager* manager = CWindow::animationsOf(window_)) manager->remove(this);
}

void CAnimo::retire() {
  StopNoNotify();
  Visible(false);
  if (CRefreshScreen* owner = getRefreshOwner(); owner != nullptr) *owner >> this;
}

// Frames and events

int CAnimo::GetNOF() const { return static_cast<int>(frames_->size()); }

CFrame* CAnimo::GetFrame(int number) const {
  return number >= 0 && number < GetNOF() ? (*frames_)[static_cast<std::size_t>(number)].get() : nullptr;
}

CGraphicsObject* CAnimo::getDrawn() { return this; }

const _annEventInfo3* CAnimo::GetEventInfo(int event) const {
  return event >= 0 && event < GetNOE() ? &events_[static_cast<std::size_t>(event)] : nullptr;
}

int CAnimo::GetEventNo(const CXString& name) const {
  const auto found =
      std::ranges::find_if(events_, [&](const auto& event) { return event.name.equalsIgnoreCase(name); });
  return found != events_.end() ? static_cast<int>(found - events_.begin()) : -1;
}

CXString CAnimo::GetEventName(int event) const {
  const _annEventInfo3* info = GetEventInfo(event);
  return info != nullptr ? info->name : CXString();
}

int CAnimo::GetNOFInEvent(int event) const {
  const _annEventInfo3* info = GetEventInfo(event);
  return info != nullptr ? info->frameCount() : 0;
}

int CAnimo::getFirstEvent() const {
  const auto found = std::ranges::find_if(events_, [](const auto& event) { return !event.frames.empty(); });
  return found != events_.end() ? static_cast<int>(found - events_.begin()) : 0;
}

void CAnimo::setCurrentEvent(int event) {
  if (GetEventInfo(event) != nullptr) currentEvent_ = lastEvent_ = event;
}

int CAnimo::GetFrameNo(int event, int position) const {
  const _annEventInfo3* info = GetEventInfo(GetEventNo(event));
  if (info == nullptr) return -1;
  if (position == kCurrent) position = frameInEvent_;
  if (position == kFirst) position = 0;
  if (position == kLast) position = info->frameCount() - 1;
  const bool isInside = position >= 0 && position < info->frameCount();
  return isInside ? info->frames[static_cast<std::size_t>(position)] : -1;
}

namespace {

// The position of that name; -1 when there is none.
int positionOf(const _annEventInfo3& event, const CXString& name) {
  const auto found =
      std::ranges::find_if(event.infos, [&](const auto& info) { return info.name.equalsIgnoreCase(name); });
  return found != event.infos.end() ? static_cast<int>(found - event.infos.begin()) : -1;
}

}  // namespace

int CAnimo::GetFrameNo(int event, const CXString& name) const {
  const _annEventInfo3* info = GetEventInfo(GetEventNo(event));
  const int position = info != nullptr ? positionOf(*info, name) : -1;
  return position >= 0 ? GetFrameNo(event, position) : -1;
}

CFrame* CAnimo::getFrame(const CXString& name) const {
  for (const _annEventInfo3& event : events_) {
    const int position = positionOf(event, name);
    if (position >= 0) return GetFrame(event.frames[static_cast<std::size_t>(position)]);
  }
  return nullptr;
}

CXString CAnimo::getFrameName(int event, int position) const {
  const _annEventInfo3* info = GetEventInfo(GetEventNo(event));
  const _anmFrameInfo3* record =
      info != nullptr ? info->info(position == kCurrent ? frameInEvent_ : position) : nullptr;
  return record != nullptr ? record->name : CXString();
}

void CAnimo::setFrameName(int event, int position, CXString name) {
  const _annEventInfo3* info = GetEventInfo(GetEventNo(event));
  const _anmFrameInfo3* record =
      info != nullptr ? info->info(position == kCurrent ? frameInEvent_ : position) : nullptr;
  if (record != nullptr) const_cast<_anmFrameInfo3*>(record)->name = std::move(name);
}

// What is shown

const _anmFrameInfo3* CAnimo::currentInfo() const {
  const _annEventInfo3* event = GetEventInfo(currentEvent_);
  return event != nullptr ? event->info(frameInEvent_) : nullptr;
}

CXPoint CAnimo::framePlace(int frame) const {
  const auto index = static_cast<std::size_t>(frame);
  return frame >= 0 && index < framePositions_.size() ? framePositions_[index] : CXPoint();
}

// The pixels of the current frame, whatever form they have now.
void CAnimo::takePixels() {
  const CXPoint place = position_;
  if (const CFrame* frame = currentFrame()) link(*frame);
  position_ = place;
}

void CAnimo::updateWithCurrentFrame() {
  if (currentFrame() == nullptr) return;
  takePixels();
  const _anmFrameInfo3* info = currentInfo();
  position_ = framePlace(currentFrame_) + (info != nullptr ? info->offset : CXPoint());
}

void CAnimo::SetFrame(int frame) {
  if (GetFrame(frame) == nullptr) return;
  CXRect area = GetBoundingBox();
  currentFrame_ = frame;
  takePixels();
  position_ = framePlace(frame);
  area.Sum(GetBoundingBox());
  CRefreshScreen* owner = getRefreshOwner();
  if (isVisible() && owner != nullptr) owner->Invalidate(&area);
  setInvalidated(true);
  reportMove();
}

void CAnimo::Set(int frame) {
  if (GetFrame(frame) == nullptr) return;
  const CXRect before = GetBoundingBox();
  if (isVisible()) Invalidate();
  currentFrame_ = frame;
  const Ref<CAnimo> self(this);
  notify(kTick);  // observers find the place that the position's offset gives
  updateWithCurrentFrame();
  if (isVisible() && GetBoundingBox() != before) Invalidate();
}

void CAnimo::SetEventFrame(int event, int position) {
  if (event == kCurrent) event = currentEvent_;
  if (position == kCurrent) position = 0;
  const _annEventInfo3* info = GetEventInfo(event);
  if (info == nullptr || position < 0 || position >= info->frameCount()) return;
  const Ref<CAnimo> self(this);
  const CXRect before = GetBoundingBox();
  if (isVisible()) Invalidate();
  if (status_ == _astatus::playing) PlaySoundFX(event, position);
  const _anmFrameInfo3* record = info->info(position);
  if (record != nullptr) position_ = position_ + record->offset;
  if (record != nullptr && opacity_ == 255)
    opacity_ = record->opacity != 255 ? record->opacity : info->opacity;
  currentEvent_ = event;
  frameInEvent_ = position;
  Set(info->frames[static_cast<std::size_t>(position)]);
  if (!isDisposed() && GetBoundingBox() != before) reportMove();
}

void CAnimo::SetEventFrame(int event, const CXString& name) {
  const _annEventInfo3* info = GetEventInfo(GetEventNo(event));
  const int position = info != nullptr ? positionOf(*info, name) : -1;
  if (position >= 0) SetEventFrame(event, position);
}

// Place

void CAnimo::SetPosition(int px, int py) {
  std::ranges::fill(framePositions_, CXPoint(px, py));
  updateWithCurrentFrame();
  if (currentFrame() == nullptr) position_ = {px, py};
  reportMove();
}

void CAnimo::SetGlobalPosition(int px, int py) {
  globalPosition_ = CXPoint(px, py) - getAnchor();
  reportMove();
}

void CAnimo::Move(int dx, int dy) {
  CXRect area = GetBoundingBox();
  globalPosition_ = globalPosition_ + CXPoint(dx, dy);
  area.Sum(GetBoundingBox());
  if (CRefreshScreen* owner = getRefreshOwner(); owner != nullptr) owner->Invalidate(&area);
  setInvalidated(true);
  reportMove();
}

CXRect CAnimo::getRect() const {
  const CXPoint at = GetPosition();
  return {at.x, at.y, wrap_add(at.x, Width()), wrap_add(at.y, Height())};
}

CXRect CAnimo::GetBoundingBox() const {
  const CXRect box = getRect();
  return clippingRect_.IsEmpty() ? box : box.Common(clippingRect_ + GetPosition());
}

}  // namespace footlight
