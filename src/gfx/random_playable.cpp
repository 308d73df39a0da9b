#include "gfx/random_playable.h"

#include <algorithm>

#include "foundation/arithmetic.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/random.h"
#include "foundation/xtimer.h"
#include "gfx/animo.h"
#include "gfx/window.h"

namespace footlight {

namespace {

constexpr int kSecond = 1000;
constexpr int kPicks = 10;  // of an event that may turn out to have no frames

}  // namespace

CRandomPlayableEntry::CRandomPlayableEntry(CRandomPlayable* owner, CPlayable* playable, double rate,
                                           int repeats, CXString event)
    : owner_(owner),
      playable_(playable),
      object_(playable->asObject()),
      rate_(rate),
      repeats_(repeats),
      event_(std::move(event)) {
  playable_->addNotifier(this);
  draw();
}

void CRandomPlayableEntry::draw() {
  countdown_ = wrap_add(CXRandom::random(to_int(60.0 / rate_)), 1);
  target_ = CXRandom::random(wrap_sub(repeats_, 1));
  played_ = 0;
}

bool CRandomPlayableEntry::isPlaying() const { return object_ && playable_->isPlaying(); }

void CRandomPlayableEntry::tick() {
  if (!object_ || isPlaying()) return;
  countdown_ = wrap_sub(countdown_, 1);
  if (countdown_ != 0) return;
  const Ref<CRandomPlayableEntry> self(this);
  const Ref<CXObject> object(object_.get());
  played_ = wrap_add(played_, 1);
  CRandomPlayable* owner = owner_.get();
  if (owner == nullptr || !owner->notify(this, true)) return;
  start();
}

void CRandomPlayableEntry::start() {
  if (event_.IsString()) {
    playable_->play(event_);
    return;
  }
  auto* animation = dynamic_cast<CAnimo*>(object_.get());
  for (int i = 0; i < kPicks && animation != nullptr && object_ && animation->GetNOE() > 0; ++i) {
    animation->Play(CXRandom::next() % animation->GetNOE(), 0, CAnimo::kUsualFps);
    if (animation->IsPlaying()) return;
  }
}

bool CRandomPlayableEntry::onPlayableFinished(CPlayable* finished) {
  if (finished != getPlayable()) return false;
  const Ref<CRandomPlayableEntry> self(this);
  CRandomPlayable* owner = owner_.get();
  const bool again = owner != nullptr && owner->notify(this, false);
  if (again || played_ < target_) {
    countdown_ = 1;
  } else {
    draw();
  }
  return false;
}

CRandomPlayable::CRandomPlayable(CWindow* window, CUnit6* unit)
    : unit_(unit), timer_(window->GetTimerInterface()) {
  if (timer_ != nullptr) timerId_ = timer_->add(kSecond, this);
}

CRandomPlayable::~CRandomPlayable() = default;

void CRandomPlayable::add(CPlayable* playable, double rate, int repeats, CXString event) {
  std::erase_if(entries_, [](const auto& entry) { return entry->getPlayable() == nullptr; });
  const bool hasRate = rate > 0;
  if (playable == nullptr || !hasRate) return;
  if (entries_.size() >= static_cast<std::size_t>(limits::kTimers)) {
    limitHit("random playables");
    return;
  }
  entries_.emplace_back(new CRandomPlayableEntry(this, playable, rate, repeats, std::move(event)));
}

void CRandomPlayable::remove(const CPlayable* playable) {
  const auto found =
      std::ranges::find_if(entries_, [&](const auto& entry) { return entry->getPlayable() == playable; });
  if (found != entries_.end()) entries_.erase(found);
}

void CRandomPlayable::onTimer(TimerId /*id*/) {
  const Ref<CRandomPlayable> self(this);
  std::vector<WeakRef<CRandomPlayableEntry>> snapshot;
  for (const auto& entry : entries_) snapshot.emplace_back(entry.get());
  for (const auto& weak : snapshot) {
    if (const Ref<CRandomPlayableEntry> entry(weak.get()); entry) entry->tick();
  }
}

bool CRandomPlayable::notify(CRandomPlayableEntry* entry, bool started) {
  bool answer = false;
  const std::vector<CRandomPlayableNotifier*> snapshot = notifiers_;
  for (CRandomPlayableNotifier* notifier : snapshot) {
    answer = started ? notifier->onRandomPlayableStarted(entry->getPlayable(), entry->getSeqTime())
                     : notifier->onRandomPlayableFinished(entry->getPlayable(), entry->getSeqTime());
  }
  return answer;
}

}  // namespace footlight
