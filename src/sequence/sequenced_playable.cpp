#include "sequence/sequenced_playable.h"

#include <algorithm>
#include <unordered_set>

#include "foundation/arithmetic.h"
#include "foundation/random.h"
#include "gfx/animation_manager.h"
#include "gfx/window.h"
#include "sequence/animo_sequence_element.h"
#include "sequence/sequence_parameter.h"
#include "sequence/speaking_animation.h"

namespace footlight {

CSequencedPlayable::CSequencedPlayable(CWindow* window) : CPlayable(window), window_(window) {
  setType(kType);
  if (CAnimationManager* manager = CWindow::animationsOf(window)) manager->add(this, nullptr);
}

CSequencedPlayable::~CSequencedPlayable() { CSequencedPlayable::retire(); }

void CSequencedPlayable::retire() {
  ++course_;
  if (CAnimationManager* manager = CWindow::animationsOf(std::exchange(window_, nullptr)))
    manager->remove(this);
}

// Children

void CSequencedPlayable::addChild(CPlayable* child) {
  if (child == nullptr) return;
  children_.push_back({child, child->asObject()});
  child->setParent(this);
}

CPlayable* CSequencedPlayable::getChild(int index) const {
  if (index < 0 || index >= getChildrenCount()) return nullptr;
  const Child& child = children_[static_cast<std::size_t>(index)];
  return child.object ? child.playable : nullptr;
}

bool CSequencedPlayable::currentPlays() const {
  const CPlayable* child = getChild(current_);
  return child != nullptr && child->isPlaying();
}

void CSequencedPlayable::accure(CPlayable* playable) const {
  playable->setVolume(getVolume());
  playable->setPanning(getPanning());
  if (getFrequency() > 0) playable->setFrequency(getFrequency());
}

// Starting

// A node that was stopped while it was held is held no more.
void CSequencedPlayable::play() {
  const Ref<CSequencedPlayable> self(this);
  const int course = ++course_;
  setStatus(getStatus() & ~kPaused);
  ++begins_;
  notify(kStarted);
  if (isOnCourse(course)) begin();
  --begins_;
}

void CSequencedPlayable::begin() {
  const int count = getChildrenCount();
  if (getMode() == kByParameter) {
    const int index = chosenByParameter();
    if (index < 0 || index >= count) return;
    setParameter(getParameter());
    beginOne(index);
  } else if (count == 0) {
    return;
  } else if (getMode() == kByChance) {
    beginOne(CXRandom::next() % count);
  } else {
    beginInOrder();
  }
}

int CSequencedPlayable::chosenByParameter() const {
  const CXString parameter = getParam();
  return parameter.IsString() ? sequence_parameter::decode(parameter.GetAt(0)) : -1;
}

void CSequencedPlayable::beginOne(int index) {
  const int course = course_;
  setStatus(getStatus() | kPlaying);
  current_ = index;
  const bool hasEnded = start(index, true);
  if (!isOnCourse(course)) return;
  if (getMode() == kByChance) setPlace(wrap_add(place(), 1));
  if (hasEnded) childEnded();
}

// The first child that is waited for starts together with those before it.
void CSequencedPlayable::beginInOrder() {
  const int course = course_;
  setStatus(getStatus() | kPlaying);
  bool hasEnded = false;
  bool waits = false;
  for (current_ = 0;; ++current_) {
    hasEnded = start(current_, true);
    if (!isOnCourse(course)) return;
    setPlace(current_);
    const CPlayable* started = getChild(current_);
    waits = started == nullptr || started->getWaitMode();
    if (waits || current_ + 1 >= getChildrenCount()) break;
  }
  if (hasEnded) childEnded();
}

// True when the child, or another one, has told its end before the start was over.
bool CSequencedPlayable::start(int index, bool handsParameter) {
  CPlayable* child = getChild(index);
  if (child == nullptr) return false;
  const Ref<CXObject> object(child->asObject());
  const int course = course_;
  child->setNotifier(this);
  if (handsParameter) child->setParameter(getParam());
  starting_ = course;
  hasEnded_ = false;
  child->play();
  if (!isOnCourse(course)) return false;
  starting_ = -1;
  if (!object->isDisposed()) accure(child);
  return std::exchange(hasEnded_, false);
}

// Going on

bool CSequencedPlayable::onPlayableFinished(CPlayable* /*playable*/) {
  if (isPaused()) return false;
  if (starting_ == course_) {
    hasEnded_ = true;
    return false;
  }
  const Ref<CSequencedPlayable> self(this);
  childEnded();
  return false;
}

void CSequencedPlayable::childEnded() {
  if (getMode() == kInOrder && isPlaying()) {
    if (current_ >= 0 && !currentPlays()) goOn(true);
    return;
  }
  if (isPlaying()) stop(false);
  if (!isDisposed()) notify(kFinished);
}

int CSequencedPlayable::next() {
  const Ref<CSequencedPlayable> self(this);
  if (isPaused() || !isPlaying() || current_ < 0 || currentPlays()) return place();
  if (getMode() == kInOrder) goOn(false);
  if (getMode() == kByChance) stop(false);
  return place();
}

// Behind the current child, which has ended; `isTold` when it said so itself.
void CSequencedPlayable::goOn(bool isTold) {
  while (place() < getChildrenCount() - 1) {
    if (const CPlayable* ended = getChild(current_)) setParameter(ended->getParam());
    const int course = course_;
    const bool hasEnded = start(++current_, true);
    if (!isOnCourse(course)) return;
    setPlace(place() + 1);
    notify(kTick);
    if (!hasEnded || !isOnCourse(course) || isPaused() || currentPlays()) return;
    isTold = true;
  }
  stop(true);
  if (isTold && !isDisposed()) notify(kFinished);
}

// Stopping

// A node that has not begun its first child yet does not begin it any more.
void CSequencedPlayable::stop(bool notifies) {
  if (begins_ == 0 && (current_ < 0 || !isPlaying())) return;
  const Ref<CSequencedPlayable> self(this);
  ++course_;
  setStatus(getStatus() & ~kPlaying);
  CPlayable* child = getChild(current_);
  const Ref<CXObject> object(child != nullptr ? child->asObject() : nullptr);
  if (child != nullptr) child->stop(notifies);
}

void CSequencedPlayable::pause() {
  if (!isPlaying() || current_ < 0) return;
  if (CPlayable* child = getChild(current_)) child->pause();
  setStatus(getStatus() | kPaused);
}

void CSequencedPlayable::resume() {
  if (!isPaused() || current_ < 0) return;
  const Ref<CSequencedPlayable> self(this);
  CPlayable* child = getChild(current_);
  const Ref<CXObject> object(child != nullptr ? child->asObject() : nullptr);
  if (child != nullptr) child->resume();
  setStatus(getStatus() & ~kPaused);
  notify(kResumed);
}

void CSequencedPlayable::seek(int place) {
  const Ref<CSequencedPlayable> self(this);
  stop(true);
  if (isDisposed()) return;
  int index = place;
  if (place == kNext) index = current_ + 1;
  if (place == kPrevious) index = current_ - 1;
  if (place == kLast) index = getChildrenCount() - 1;
  if (place == kFirst) index = 0;
  current_ = index >= 0 && index < getChildrenCount() ? index : -1;
  if (current_ >= 0 && start(current_, false)) childEnded();
}

// Asking

CXString CSequencedPlayable::getParameter() const {
  CXString parameter = getParam();
  if (parameter.Length() <= 1) return {};
  return getMode() == kByParameter ? parameter.Right(1) : parameter;
}

CPlayable* CSequencedPlayable::get(const CXString& event) {
  CXString parameter = getParameter(event);
  CPlayable* reached = this;
  while (parameter.IsString()) {
    const auto* node = dynamic_cast<CSequencedPlayable*>(reached);
    if (node == nullptr) break;
    const bool chooses = node->getMode() == kByParameter;
    CPlayable* child = node->getChild(chooses ? sequence_parameter::decode(parameter.GetAt(0)) : 0);
    if (child == nullptr) break;
    if (chooses) parameter = parameter.Right(1);
    reached = child;
  }
  return reached;
}

CPlayable* CSequencedPlayable::getPlaying() {
  CPlayable* child = isPlaying() ? getChild(current_) : nullptr;
  return child != nullptr ? child->getPlaying() : nullptr;
}

CXString CSequencedPlayable::getLastPlayedEvent(const CXString& name) const {
  CPlayable* current = isPlaying() ? getChild(current_) : nullptr;
  if (current == nullptr) return {};
  if (name.IsEmpty() || name == getName()) {
    const auto* node = dynamic_cast<CSequencedPlayable*>(current);
    return node != nullptr ? node->getLastPlayedEvent(CXString()) : current->getName();
  }
  for (const Child& child : children_) {
    const auto* node = child.object ? dynamic_cast<CSequencedPlayable*>(child.playable) : nullptr;
    CXString found = node != nullptr ? node->getLastPlayedEvent(name) : CXString();
    if (found.IsString()) return found;
  }
  return {};
}

// All leaves

template <class Visit>
void CSequencedPlayable::eachLeaf(Visit visit) const {
  for (int i = 0; i < getChildrenCount(); ++i) {
    CPlayable* child = getChild(i);
    if (child == nullptr) continue;
    if (child->getType() == kType) {
      static_cast<const CSequencedPlayable*>(child)->eachLeaf(visit);
    } else {
      visit(child);
    }
  }
}

namespace {

CAnimo* animationOf(CPlayable* leaf) {
  if (auto* element = dynamic_cast<CAnimoSequenceElement*>(leaf)) return element->getAnimo();
  if (auto* speaker = dynamic_cast<CSpeakingAnimation*>(leaf)) return speaker->getAnimation();
  return dynamic_cast<CAnimo*>(leaf);
}

}  // namespace

std::vector<CAnimo*> CSequencedPlayable::getAllAnimations() const {
  std::vector<CAnimo*> found;
  std::unordered_set<CAnimo*> known;
  eachLeaf([&](CPlayable* leaf) {
    CAnimo* animation = animationOf(leaf);
    if (animation != nullptr && known.insert(animation).second) found.push_back(animation);
  });
  return found;
}

std::vector<CPlayable*> CSequencedPlayable::getAllOfType(int type) const {
  std::vector<CPlayable*> found;
  std::unordered_set<CPlayable*> known;
  eachLeaf([&](CPlayable* leaf) {
    if (leaf->getType() == type && known.insert(leaf).second) found.push_back(leaf);
  });
  return found;
}

CAnimo* CSequencedPlayable::shownAnimation(int which) const {
  const std::vector<CAnimo*> all = getAllAnimations();
  const auto found = std::ranges::find_if(
      all, [which](const CAnimo* animation) { return which == 1 || animation->isPlaying(); });
  return found != all.end() ? *found : nullptr;
}

CXRect CSequencedPlayable::getBoundingBox(int which) const {
  const CAnimo* animation = shownAnimation(which);
  return animation != nullptr ? animation->GetBoundingBox() : CXRect();
}

CXPoint CSequencedPlayable::getPosition(int which) const {
  const CAnimo* animation = shownAnimation(which);
  return animation != nullptr ? animation->GetPosition() : CXPoint();
}

void CSequencedPlayable::move(int dx, int dy) {
  for (CAnimo* animation : getAllAnimations()) animation->move(dx, dy);
}

void CSequencedPlayable::setPosition(int px, int py) {
  for (const Child& child : children_) {
    if (child.object) child.playable->setPosition(px, py);
  }
}

void CSequencedPlayable::alwaysOnTop() {
  for (const Child& child : children_) {
    if (child.object) child.playable->alwaysOnTop();
  }
}

void CSequencedPlayable::setVisibility(bool visible) {
  for (const Child& child : children_) {
    if (child.object && child.playable->isVisible() != visible) child.playable->setVisibility(visible);
  }
  CPlayable::setVisibility(visible);
}

}  // namespace footlight
