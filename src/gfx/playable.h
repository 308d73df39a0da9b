#pragma once

// The base of everything that runs over time: animations, sounds, sequences. It gives them one vocabulary of
// play, stop, pause and resume, a status, a table of events with parameters, and observers that hear of
// start, step, finish and resume.
//
// A playable is no engine object by itself; `asObject` gives the object that it is part of, and everybody who
// keeps a playable keeps that object weakly beside it. Observers run scripts: while they are told, the object
// is pinned, and who was told may come and go.

#include <utility>
#include <vector>

#include "files/file_resolver.h"
#include "foundation/geometry.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CAnimo;
class CPlayable;
class CWindow;

class CPlayableObserver {
 public:
  virtual ~CPlayableObserver() = default;
  virtual bool onPlayableStarted(CPlayable* /*playable*/) { return false; }
  virtual bool onPlayableTick(CPlayable* /*playable*/) { return false; }
  virtual bool onPlayableFinished(CPlayable* /*playable*/) { return false; }
  virtual bool onPlayableResumed(CPlayable* /*playable*/) { return false; }
};

// An observer, and the engine object whose end ends the observing.
struct PlayableObserver {
  PlayableObserver() = default;
  template <class T>
  PlayableObserver(T* itsObserver) : observer(itsObserver), object(itsObserver) {}
  PlayableObserver(CPlayableObserver* itsObserver, CXObject* itsObject)
      : observer(itsObserver), object(itsObject) {}

  CPlayableObserver* observer = nullptr;
  WeakRef<CXObject> object;
};

// Names of events and a text for each.
class CPlayableEvents {
 public:
  // Appends, even if the name is there.
  void addEvent(CXString name, CXString value) { events_.emplace_back(std::move(name), std::move(value)); }
  // Replaces the text of the first event of exactly that name; an unknown one is ignored.
  void setParameter(const CXString& name, const CXString& value);
  // Of the first event of that name in any case, else empty.
  CXString getParameter(const CXString& name) const;

 private:
  std::vector<std::pair<CXString, CXString>> events_;
};

class CPlayable : public CFileResolver {
 public:
  static constexpr int kStopped = 0;
  static constexpr int kPlaying = 1;
  static constexpr int kPaused = 2;
  // Kinds of notifications.
  static constexpr int kStarted = 1;
  static constexpr int kTick = 2;
  static constexpr int kFinished = 3;
  static constexpr int kResumed = 4;
  // Marks for `seek`.
  static constexpr int kPrevious = -3;
  static constexpr int kNext = -4;

  explicit CPlayable(CWindow* /*window*/) {}
  CPlayable(const CPlayable&) = delete;
  CPlayable& operator=(const CPlayable&) = delete;

  // The engine object that this is part of; never null.
  virtual CXObject* asObject() = 0;

  virtual void addChild(CPlayable* /*child*/) {}
  virtual void setParent(CPlayable* parent) { parent_ = parent; }
  virtual bool isParent() const { return parent_ == nullptr; }
  virtual void substAnimation(CAnimo* /*animation*/) {}
  // Makes `T` the only observer.
  template <class T>
  void setNotifier(T* observer) {
    clearNotifiers();
    addNotifier(observer);
  }
  virtual CPlayable* getPlaying() { return isPlaying() ? this : nullptr; }
  virtual CXString getParam() const { return parameter_; }
  virtual CXString getParameter(const CXString& event) const { return events_.getParameter(event); }
  virtual CXString getParameter() const { return parameter_; }
  // What plays ends without a word, then the event begins with its parameter.
  virtual void play(const CXString& event);
  virtual void play() = 0;
  virtual void stop(bool notifies) = 0;
  virtual void pause() = 0;
  virtual void resume() = 0;
  virtual void onStarted() {}
  virtual void onFinished() {}
  virtual int getStatus() const { return playableStatus_; }
  virtual bool isPlaying() const { return (playableStatus_ & kPlaying) != 0; }
  virtual bool isPaused() const { return (playableStatus_ & kPaused) != 0; }
  virtual int getType() const { return type_; }
  // To a place, or by one of the two marks.
  virtual void seek(int place) = 0;
  virtual int previous();
  virtual int next();
  virtual int getFPS() const { return 10; }
  virtual void move(int /*dx*/, int /*dy*/) {}
  virtual void move(CXPoint distance) { move(distance.x, distance.y); }
  virtual void setPosition(int /*px*/, int /*py*/) {}
  virtual void setPosition(CXPoint point) { setPosition(point.x, point.y); }
  virtual void SetGlobalPosition(int /*px*/, int /*py*/) {}
  virtual void SetGlobalPosition(CXPoint point) { SetGlobalPosition(point.x, point.y); }
  virtual bool isVisible() const { return shown_; }
  virtual void setVisibility(bool visible) { shown_ = visible; }
  virtual void show() { setVisibility(true); }
  virtual void hide() { setVisibility(false); }
  virtual void alwaysOnTop() {}
  virtual CXString getLastPlayedEvent() const { return lastPlayedEvent_; }
  // Tells every observer, the generic one last; gives the last answer, true when nobody was told.
  virtual bool notify(int kind);
  virtual void setVolume(int volume) { volume_ = volume; }
  virtual void setPanning(int panning) { panning_ = panning; }
  virtual void setFrequency(int frequency) { frequency_ = frequency; }

  // `T` is the observer and the engine object whose end ends the observing. Nobody is listed twice.
  template <class T>
  void addNotifier(T* observer) {
    addObserver(observer, observer);
  }
  void removeNotifier(const CPlayableObserver* observer);
  void clearNotifiers() { observers_.clear(); }
  void setGenericNotifier(PlayableObserver observer) { generic_ = std::move(observer); }

  void addEvent(CXString name, CXString value) { events_.addEvent(std::move(name), std::move(value)); }
  void setParameter(const CXString& name, const CXString& value) { events_.setParameter(name, value); }
  void setParameter(CXString parameter) { parameter_ = std::move(parameter); }
  void setName(CXString name) { playableName_ = std::move(name); }
  const CXString& getName() const { return playableName_; }
  void setWaitMode(bool waits) { waitMode_ = waits; }
  bool getWaitMode() const { return waitMode_; }
  void setMode(int mode) { mode_ = mode; }
  int getMode() const { return mode_; }
  void addParent() { ++parentCount_; }
  void subParent() { --parentCount_; }
  int getParentCount() const { return parentCount_; }
  int getVolume() const { return volume_; }
  int getPanning() const { return panning_; }
  int getFrequency() const { return frequency_; }

 protected:
  void setStatus(int status) { playableStatus_ = status; }
  void setType(int type) { type_ = type; }
  void setPlace(int place) { place_ = place; }
  int place() const { return place_; }

 private:
  void addObserver(CPlayableObserver* observer, CXObject* object);

  int type_ = 0;
  int playableStatus_ = kStopped;
  int place_ = -1;
  CXString playableName_;
  bool waitMode_ = true;
  CXString parameter_;
  CPlayableEvents events_;
  int mode_ = 1;
  int parentCount_ = 0;
  bool shown_ = true;
  CXString lastPlayedEvent_;
  int volume_ = 0;
  int panning_ = 0;
  int frequency_ = 0;
  CPlayable* parent_ = nullptr;
  PlayableObserver generic_;
  std::vector<PlayableObserver> observers_;
};

}  // namespace footlight
