#pragma once

// A figure that speaks: while a sound runs, events of an animation that its prefix admits play one after the
// other by chance. An event may go before the speech, and one may end it. The end is told once, however it
// comes. A figure without an animation, or with one that has no events, speaks without pictures.
//
// Which events: with a prefix those named PREFIX_..., else those that begin with a digit; letter case does
// not matter. Behind the prefix START, END and STOP are reserved.

#include "sequence/figure_link.h"
#include "sound/sound4.h"

namespace footlight {

// The events of figures that speak.
namespace speech {
inline constexpr const char* kStart = "START";
inline constexpr const char* kEnd = "END";
inline constexpr const char* kStop = "STOP";

// The name of a reserved event.
CXString eventName(const CXString& prefix, const char* word);
// Whether an event of that name may be drawn while the figure talks.
bool isTalk(const CXString& prefix, std::string_view event);
}  // namespace speech

class CSpeakingAnimation : public CXObject, public CPlayable, public CPlayableObserver {
 public:
  static constexpr int kType = 5;

  CSpeakingAnimation(CWindow* window, CResourcesManager* resources, const CSequenceCast* cast);
  ~CSpeakingAnimation() override;
  CSpeakingAnimation(const CSpeakingAnimation&) = delete;
  CSpeakingAnimation& operator=(const CSpeakingAnimation&) = delete;

  CXObject* asObject() override { return this; }
  void retire() override;
  void destroy() override { dispose(); }

  // The animation of an object of the scene, else one from a file: shared where there is a manager.
  void setAnimation(const CXString& name);
  CAnimo* getAnimation() const { return figure_.get(); }
  // The sound of an object of the scene, else that of a file by its full name.
  void apply(const CXString& name);
  // A sound that belongs to others; another kind of playable is none.
  void apply(CPlayable* playable);
  void setPrefix(CXString prefix) { prefix_ = std::move(prefix); }
  void setStarting(bool on) { hasStart_ = on; }
  void setEnding(bool on) { hasEnd_ = on; }
  void setOnlyEvents(bool /*on*/) {}  // of no effect

  void substAnimation(CAnimo* animation) override;
  void play() override;
  using CPlayable::play;
  // With `notifies` while it talks the end comes with that of the animation or of the sound.
  void stop(bool notifies) override;
  void pause() override;
  void resume() override;
  void seek(int /*place*/) override {}
  bool isPlaying() const override;
  void move(int dx, int dy) override;
  using CPlayable::move;
  void setPosition(int px, int py) override;
  using CPlayable::setPosition;
  void setVisibility(bool visible) override;
  bool isVisible() const override;
  void alwaysOnTop() override;
  bool onPlayableFinished(CPlayable* playable) override;

 private:
  enum class Phase { idle, starting, talking, closing };

  CSound4* sound() const { return sound_.get(); }
  bool isSounding() const { return sound_ && sound_->IsPlaying(); }
  bool isOnCourse(int course) const { return course == course_ && !isDisposed(); }
  void prepare();
  bool playReserved(const char* word);
  void speak();
  void playOnOf();
  int drawEvent(const CAnimo& animation, int count) const;
  void finish();
  void close();
  void silence();
  void forget();

  CWindow* window_;
  CResourcesManager* resources_;
  const CSequenceCast* cast_;
  FigureLink figure_;
  WeakRef<CSound4> sound_;
  SharedResource<CSound4> file_;
  CXString prefix_;
  bool hasStart_ = false;
  bool hasEnd_ = false;
  Phase phase_ = Phase::idle;
  int course_ = 0;  // counts starts and stops
};

}  // namespace footlight
