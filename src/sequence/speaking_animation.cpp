#include "sequence/speaking_animation.h"

#include "foundation/code_page.h"
#include "foundation/random.h"

namespace footlight {

namespace {

constexpr const char* kBlank = "PIXEL.ANN";  // stands for no picture, and is never shown
constexpr int kDraws = 10000;                // until what was drawn last plays, whatever it is

}  // namespace

namespace speech {

CXString eventName(const CXString& prefix, const char* word) {
  return prefix.IsString() ? prefix + "_" + word : CXString(word);
}

bool isTalk(const CXString& prefix, std::string_view event) {
  if (prefix.IsEmpty()) return !event.empty() && event.front() >= '0' && event.front() <= '9';
  const CXString begin = prefix + "_";
  const auto length = static_cast<std::size_t>(begin.Length());
  if (event.size() < length || !begin.equalsIgnoreCase(CXString(event.substr(0, length)))) return false;
  const CXString word(event.substr(length));
  return !word.equalsIgnoreCase(kStart) && !word.equalsIgnoreCase(kEnd) && !word.equalsIgnoreCase(kStop);
}

}  // namespace speech

CSpeakingAnimation::CSpeakingAnimation(CWindow* window, CResourcesManager* resources,
                                       const CSequenceCast* cast)
    : CPlayable(window), window_(window), resources_(resources), cast_(cast) {
  setType(kType);
}

CSpeakingAnimation::~CSpeakingAnimation() { CSpeakingAnimation::retire(); }

void CSpeakingAnimation::retire() {
  ++course_;
  phase_ = Phase::idle;
  forget();
  figure_.leave(this);
  file_.giveBack(std::exchange(resources_, nullptr));
  sound_ = nullptr;
}

void CSpeakingAnimation::forget() {
  if (CAnimo6* animo = figure_.get()) animo->removeNotifier(this);
  if (CSound4* sound = sound_.get()) sound->removeNotifier(this);
}

// What it is made of

void CSpeakingAnimation::setAnimation(const CXString& name) {
  forget();
  figure_.leave(this);
  CSequenceFigure* figure = cast_ != nullptr ? cast_->figure(name) : nullptr;
  if (figure != nullptr) {
    figure_.take(this, figure);
  } else {
    figure_.takeFile(window_, resources_, name);
  }
  if (!name.equalsIgnoreCase(kBlank)) figure_.show();
}

void CSpeakingAnimation::apply(const CXString& name) {
  if (CSound4* own = cast_ != nullptr ? cast_->sound(name) : nullptr) return apply(own);
  apply(static_cast<CPlayable*>(nullptr));
  file_.take(resources_, name, [&] { return Owned<CSound4>(new CSound4(window_, name, true, false)); });
  sound_ = file_.get();
}

void CSpeakingAnimation::apply(CPlayable* playable) {
  if (CSound4* sound = sound_.get()) sound->removeNotifier(this);
  file_.giveBack(resources_);
  sound_ = dynamic_cast<CSound4*>(playable);
}

void CSpeakingAnimation::substAnimation(CAnimo* animation) {
  if (CAnimo6* animo = figure_.get()) animo->removeNotifier(this);
  figure_.replace(animation);
}

// Speaking

void CSpeakingAnimation::play() {
  const Ref<CSpeakingAnimation> self(this);
  const int course = ++course_;
  phase_ = Phase::starting;
  notify(kStarted);
  if (!isOnCourse(course)) return;
  prepare();
  if (hasStart_ && playReserved(speech::kStart)) return;
  if (!isOnCourse(course)) return;
  if (CSound4* sound = sound_.get()) sound->setNotifier(this);
  speak();
}

void CSpeakingAnimation::prepare() {
  CSound4* sound = sound_.get();
  CAnimo6* animo = figure_.get();
  if (sound != nullptr) sound->addNotifier(this);
  if (animo == nullptr) return;
  setStatus(getStatus() | kPlaying);
  animo->addNotifier(this);
  if (sound == nullptr) return;
  sound->load();
  sound->setVolume(getVolume());
  sound->setPanning(getPanning());
  if (getFrequency() > 0) sound->setFrequency(getFrequency());
}

// False when the animation does not play: it has no such event.
bool CSpeakingAnimation::playReserved(const char* word) {
  const Ref<CAnimo6> animo(figure_.get());
  if (!animo) return false;
  animo->Play(speech::eventName(prefix_, word), 0, CAnimo::kUsualFps);
  return animo->isPlaying();
}

void CSpeakingAnimation::speak() {
  const int course = course_;
  phase_ = Phase::talking;
  if (const Ref<CSound4> sound(sound_.get()); sound) sound->play();
  if (isOnCourse(course)) playOnOf();
}

void CSpeakingAnimation::playOnOf() {
  if (!isSounding()) return finish();
  const Ref<CAnimo6> animo(figure_.get());
  const int count = animo ? animo->GetNOE() : 0;
  if (count > 0) animo->Play(drawEvent(*animo, count), 0, CAnimo::kUsualFps);
}

// Where no event can come the numbers of all draws but the last are left out at once.
int CSpeakingAnimation::drawEvent(const CAnimo& animation, int count) const {
  const auto isTalk = [&](int event) { return speech::isTalk(prefix_, animation.GetEventName(event)); };
  int event = 0;
  while (event < count && !isTalk(event)) ++event;
  if (event == count) {
    CXRandom::skip(kDraws - 1);
    return CXRandom::next() % count;
  }
  for (int i = 0; i < kDraws; ++i) {
    event = CXRandom::next() % count;
    if (isTalk(event)) break;
  }
  return event;
}

bool CSpeakingAnimation::onPlayableFinished(CPlayable* playable) {
  const Ref<CSpeakingAnimation> self(this);
  if (phase_ == Phase::idle) return false;
  if (playable != figure_.get()) {
    if (phase_ == Phase::talking) finish();
  } else if (phase_ == Phase::starting) {
    speak();
  } else if (phase_ == Phase::closing) {
    close();
  } else {
    playOnOf();
  }
  return false;
}

// The speech is over: the end event, if there is one and it can be seen, is all that is left.
void CSpeakingAnimation::finish() {
  const int course = course_;
  phase_ = Phase::closing;
  const Ref<CAnimo6> animo(figure_.get());
  if (animo && animo->isPlaying() && animo->isVisible()) {
    animo->stop(false);
    if (hasEnd_ && (playReserved(speech::kEnd) || playReserved(speech::kStop))) return;
  }
  if (isOnCourse(course) && phase_ == Phase::closing) close();
}

void CSpeakingAnimation::close() {
  silence();
  notify(kFinished);
}

// Stopping

// Nobody hears of it.
void CSpeakingAnimation::silence() {
  ++course_;
  phase_ = Phase::idle;
  setStatus(getStatus() & ~kPlaying);
  forget();
  if (CSound4* sound = sound_.get()) {
    sound->Stop();
    sound->Flush();
  }
  if (CAnimo6* animo = figure_.get()) animo->StopNoNotify();
}

void CSpeakingAnimation::stop(bool notifies) {
  if (phase_ == Phase::idle) return;
  const Ref<CSpeakingAnimation> self(this);
  const bool talks = phase_ == Phase::talking || phase_ == Phase::closing;
  if (!notifies || !talks) {
    silence();
    if (notifies) notify(kFinished);
    return;
  }
  ++course_;
  setStatus(getStatus() & ~kPlaying);
  const Ref<CAnimo6> animo(figure_.get());
  if (CSound4* sound = sound_.get()) {
    sound->stop(true);
    sound->Flush();
  }
  if (animo) animo->stop(true);
}

void CSpeakingAnimation::pause() {
  if (CSound4* sound = sound_.get()) sound->pause();
  if (CAnimo6* animo = figure_.get()) animo->pause();
}

void CSpeakingAnimation::resume() {
  const Ref<CSpeakingAnimation> self(this);
  if (const Ref<CSound4> sound(sound_.get()); sound) sound->resume();
  if (const Ref<CAnimo6> animo(figure_.get()); animo) animo->resume();
}

// The figure

bool CSpeakingAnimation::isPlaying() const { return isSounding() || figure_.isPlaying(); }

void CSpeakingAnimation::move(int dx, int dy) {
  if (CAnimo6* animo = figure_.get()) animo->move(dx, dy);
}

void CSpeakingAnimation::setPosition(int px, int py) {
  if (CAnimo6* animo = figure_.get()) animo->setPosition(px, py);
}

void CSpeakingAnimation::setVisibility(bool visible) {
  if (CAnimo6* animo = figure_.get()) animo->setVisibility(visible);
}

bool CSpeakingAnimation::isVisible() const {
  const CAnimo6* animo = figure_.get();
  return animo != nullptr && animo->isVisible();
}

void CSpeakingAnimation::alwaysOnTop() {
  if (CAnimo6* animo = figure_.get()) animo->alwaysOnTop();
}

}  // namespace footlight
