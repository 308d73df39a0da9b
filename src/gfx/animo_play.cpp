// The course of an animation: start, step, loop, stop.

#include <algorithm>

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/animo.h"
#include "gfx/window.h"

namespace footlight {

namespace {

constexpr std::string_view kReverse = "_reverse";

bool has(std::uint32_t flags, std::uint32_t bit) { return (flags & bit) != 0; }

}  // namespace

// Starting

bool CAnimo::isInterruptible() const {
  const _annEventInfo3* event = GetEventInfo(currentEvent_);
  return !has(animoFlags_, kUninterruptible) &&
         (event == nullptr || !has(event->flags, _annEventInfo3::kUninterruptible));
}

void CAnimo::Play(int event, int position, int /*fps*/) {
  const Ref<CAnimo> self(this);
  Invalidate();
  if (GetNOFInEvent(event) == 0) return;
  if (status_ == _astatus::playing && !isInterruptible()) return;
  const int course = ++course_;
  if (GetEventInfo(currentEvent_) != nullptr)
    events_[static_cast<std::size_t>(currentEvent_)].loopCounter = 0;
  lastEvent_ = currentEvent_ = event;
  if (!isVisible()) Visible(true);
  if (fps_ == 0) fps_ = kUsualFps;
  status_ = _astatus::playing;
  setStatus(kPlaying);
  SetEventFrame(event, position);
  if (course_ == course && !isDisposed()) notify(kStarted);
}

void CAnimo::Play(const CXString& event, int position, int fps) {
  const int number = resolveEventName(event);
  if (number >= 0) Play(number, position, fps);
}

void CAnimo::play(const CXString& event) {
  const int number = resolveEventName(event);
  if (GetNOFInEvent(number) > 0) lastEvent_ = number;
  CPlayable::play(event);
  // There was nothing to play: what counts as playing for others must not wait for an end.
  if (isPlaying() && status_ != _astatus::playing) setStatus(kStopped);
}

void CAnimo::Continue() {
  const _annEventInfo3* event = GetEventInfo(currentEvent_);
  if (event == nullptr) return;
  fps_ = event->fps > 0 ? event->fps : kUsualFps;
  status_ = _astatus::playing;
  setStatus(kPlaying);
  Next();
}

void CAnimo::playReverse(const CXString& event, int position) {
  int number = -1;
  if (event.Lower().endsWith(kReverse))
    number = GetEventNo(event.Left(event.Length() - static_cast<int>(kReverse.size())));
  if (number < 0) number = GetEventNo(event + kReverse.data());
  if (number < 0) {
    const _annEventInfo3* forward = GetEventInfo(GetEventNo(event));
    if (forward != nullptr) number = addReverse(*forward);
  }
  if (number >= 0) Play(number, position, kUsualFps);
}

// Gives the number of the new event; -1 when there are too many.
int CAnimo::addReverse(const _annEventInfo3& event) {
  if (GetNOE() >= limits::kEventsOfAnimation) {
    limitHit("events of an animation");
    return -1;
  }
  _annEventInfo3 reversed = event;
  reversed.name = event.name + kReverse.data();
  reversed.loopCounter = 0;
  std::ranges::reverse(reversed.frames);
  reversed.infos.resize(event.infos.empty() ? 0 : reversed.frames.size());
  std::ranges::reverse(reversed.infos);
  const auto from = static_cast<std::size_t>(&event - events_.data());
  if (from < sounds_.size()) {
    auto row = sounds_[from];
    row.resize(reversed.frames.size());
    std::ranges::reverse(row);
    sounds_.resize(events_.size());
    sounds_.push_back(std::move(row));
  }
  events_.push_back(std::move(reversed));
  return GetNOE() - 1;
}

// Stopping

void CAnimo::StopNoNotify() {
  if (status_ != _astatus::playing) return;
  if (streamedSound_ != nullptr) streamedSound_->stop();
  const _annEventInfo3* event = GetEventInfo(currentEvent_);
  const std::uint32_t flags = event != nullptr ? event->flags : 0;
  ++course_;
  status_ = _astatus::stopped;
  setStatus(kStopped);
  const bool survives = has(animoFlags_, kSoundSurvives) || has(flags, _annEventInfo3::kSoundSurvives);
  if (!survives && currentSound_ != nullptr) std::exchange(currentSound_, nullptr)->stop();
  if (has(flags, _annEventInfo3::kHidesAtStop)) Visible(false);
}

void CAnimo::Stop() {
  if (status_ == _astatus::playing) StopNoNotify();
}

// One that is paused stays so.
void CAnimo::stop(bool notifies) {
  if (status_ != _astatus::playing) return;
  StopNoNotify();
  if (notifies) notify(kFinished);
}

// The end of the event by itself. False when an observer gave the animation another course.
bool CAnimo::finish() {
  StopNoNotify();
  const int course = course_;
  notify(kFinished);
  return course == course_ && !isDisposed();
}

void CAnimo::Pause() {
  if (status_ != _astatus::playing) return;
  status_ = _astatus::paused;
  setStatus(kPaused);
}

void CAnimo::Resume() {
  if (status_ != _astatus::paused) return;
  status_ = _astatus::playing;
  setStatus(kPlaying);
  notify(kResumed);
}

// Stepping

int CAnimo::next() {
  if (direction_ == _direction::forward) {
    Next();
  } else {
    Prev();
  }
  return frameInEvent_;
}

int CAnimo::previous() {
  Prev();
  return frameInEvent_;
}

void CAnimo::seek(int place) {
  if (place == kNext) {
    next();
  } else if (place == kPrevious) {
    previous();
  } else {
    Seek(place);
  }
}

bool CAnimo::Next() {
  const Ref<CAnimo> self(this);
  if (isVisible()) Invalidate();
  const _annEventInfo3* event = GetEventInfo(currentEvent_);
  if (GetNOF() == 0 || event == nullptr || event->frames.empty()) return false;
  const int before = currentFrame_;
  int position = frameInEvent_ + 1;
  bool goesOn = true;
  if (event->loopTo == 0) {
    if (position >= event->frameCount()) goesOn = endEvent(&position);
  } else if (position > event->loopTo) {
    goesOn = stepLoop(*event, &position);
  }
  if (goesOn) SetEventFrame(currentEvent_, position);
  return currentFrame_ != before;
}

// Behind the last position of the event.
bool CAnimo::endEvent(int* position) {
  *position = GetNOFInEvent(currentEvent_) - 1;
  if (!has(animoFlags_, kGoesOn)) return finish();
  if (GetNOFInEvent(currentEvent_ + 1) > 0) {
    ++currentEvent_;
    *position = 0;
  }
  return true;
}

bool CAnimo::isSounding() const {
  return (streamedSound_ != nullptr && streamedSound_->isPlaying()) ||
         (currentSound_ != nullptr && currentSound_->isPlaying());
}

// Behind the end of the loop.
bool CAnimo::stepLoop(const _annEventInfo3& event, int* position) {
  if (has(event.flags, _annEventInfo3::kPingPong)) {
    *position = std::max(0, *position - 2);
    direction_ = _direction::backward;
    return true;
  }
  if (has(event.flags, _annEventInfo3::kLoopsWithSound) && !isSounding()) {
    if (*position + 1 >= event.frameCount()) return endEvent(position);
    ++*position;
    return true;
  }
  return countLoop(position);
}

bool CAnimo::countLoop(int* position) {
  _annEventInfo3& event = events_[static_cast<std::size_t>(currentEvent_)];
  if (event.loopCount == 0 || ++event.loopCounter < event.loopCount) {
    *position = event.loopFrom;
    return true;
  }
  event.loopCounter = 0;
  return finish();
}

bool CAnimo::Prev() {
  const Ref<CAnimo> self(this);
  if (isVisible()) Invalidate();
  const _annEventInfo3* event = GetEventInfo(currentEvent_);
  if (GetNOF() == 0 || event == nullptr || event->frames.empty()) return false;
  const int before = currentFrame_;
  int position = frameInEvent_ - 1;
  bool goesOn = true;
  if (event->loopTo == 0) {
    if (position < 0) goesOn = finish();
  } else if (position < event->loopFrom) {
    goesOn = stepBack(*event, &position);
  }
  if (goesOn) SetEventFrame(currentEvent_, std::max(0, position));
  return currentFrame_ != before;
}

// Before the begin of the loop.
bool CAnimo::stepBack(const _annEventInfo3& event, int* position) {
  if (has(event.flags, _annEventInfo3::kPingPong)) {
    *position = std::min(*position + 2, event.frameCount() - 1);
    direction_ = _direction::forward;
    return true;
  }
  const bool runsOn = has(event.flags, _annEventInfo3::kLoopsWithSound) && !isSounding();
  if (runsOn && *position > 0) return true;
  *position = event.loopTo;
  return !runsOn || finish();
}

// Sounds

void CAnimo::preloadSounds() {
  sounds_.clear();
  if (has(animoFlags_, kStreamsSounds) || window_ == nullptr) return;
  for (int event = 0; event < GetNOE(); ++event) {
    const auto& infos = events_[static_cast<std::size_t>(event)].infos;
    for (std::size_t i = 0; i < infos.size(); ++i) {
      if (infos[i].soundName.IsString()) soundAt(event, static_cast<int>(i), infos[i].soundName);
    }
  }
}

// The sound of a position; a clone makes its own when it first plays it.
std::shared_ptr<CFrameSound>& CAnimo::soundAt(int event, int position, const CXString& name) {
  const auto row = static_cast<std::size_t>(event);
  const auto column = static_cast<std::size_t>(position);
  if (sounds_.size() <= row) sounds_.resize(row + 1);
  if (sounds_[row].size() <= column) sounds_[row].resize(column + 1);
  auto& sound = sounds_[row][column];
  if (sound == nullptr) sound = makeFrameSound(window_, window_->GetSoundFXFullPath(name), false);
  return sound;
}

void CAnimo::start(CFrameSound& sound) const {
  sound.setVolume(getVolume());
  sound.setPanning(getPanning());
  if (getFrequency() > 0) sound.setFrequency(getFrequency());
  sound.play();
}

void CAnimo::PlaySoundFX(int event, int position) {
  const _annEventInfo3* info = GetEventInfo(event);
  const _anmFrameInfo3* record = info != nullptr ? info->info(position) : nullptr;
  if (record == nullptr || record->soundName.IsEmpty() || window_ == nullptr) return;
  if (has(animoFlags_, kStreamsSounds)) {
    if (streamedSound_ != nullptr) streamedSound_->stop();
    streamedSound_ = makeFrameSound(window_, window_->GetSoundFXFullPath(record->soundName), true);
    start(*streamedSound_);
    return;
  }
  if (currentSound_ != nullptr) currentSound_->stop();
  currentSound_ = soundAt(event, position, record->soundName);
  start(*currentSound_);
}

}  // namespace footlight
