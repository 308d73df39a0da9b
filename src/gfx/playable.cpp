#include "gfx/playable.h"

#include <algorithm>

namespace footlight {

void CPlayableEvents::setParameter(const CXString& name, const CXString& value) {
  const auto found = std::ranges::find_if(events_, [&](const auto& event) { return event.first == name; });
  if (found != events_.end()) found->second = value;
}

CXString CPlayableEvents::getParameter(const CXString& name) const {
  const auto found =
      std::ranges::find_if(events_, [&](const auto& event) { return event.first.equalsIgnoreCase(name); });
  return found != events_.end() ? found->second : CXString();
}

void CPlayable::play(const CXString& event) {
  const Ref<CXObject> self(asObject());
  stop(false);
  lastPlayedEvent_ = event;
  playableStatus_ = kPlaying;
  parameter_ = events_.getParameter(event);
  play();
}

int CPlayable::previous() {
  seek(kPrevious);
  return place_;
}

int CPlayable::next() {
  seek(kNext);
  return place_;
}

void CPlayable::addObserver(CPlayableObserver* observer, CXObject* object) {
  std::erase_if(observers_, [](const PlayableObserver& entry) { return !entry.object; });
  const bool isListed = std::ranges::any_of(
      observers_, [&](const PlayableObserver& entry) { return entry.observer == observer; });
  if (!isListed) observers_.push_back({observer, object});
}

void CPlayable::removeNotifier(const CPlayableObserver* observer) {
  std::erase_if(observers_, [&](const PlayableObserver& entry) { return entry.observer == observer; });
}

bool CPlayable::notify(int kind) {
  using Operation = bool (CPlayableObserver::*)(CPlayable*);
  constexpr Operation kOperations[] = {
      &CPlayableObserver::onPlayableStarted, &CPlayableObserver::onPlayableTick,
      &CPlayableObserver::onPlayableFinished, &CPlayableObserver::onPlayableResumed};
  if (kind < kStarted || kind > kResumed) return true;
  const Ref<CXObject> self(asObject());
  std::vector<PlayableObserver> snapshot = observers_;
  if (generic_.object) snapshot.push_back(generic_);
  bool answer = true;
  for (const PlayableObserver& entry : snapshot) {
    const Ref<CXObject> object(entry.object.get());
    if (object) answer = (entry.observer->*kOperations[kind - 1])(this);
  }
  return answer;
}

}  // namespace footlight
