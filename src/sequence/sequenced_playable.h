#pragma once

// An inner node of a sequence: plays its children one after the other, one of them by chance, or the one that
// a parameter chooses. The end of a child is heard at once; what ends without a word is found by the frame
// clock, ten times a second.
//
// Children are referred to weakly and belong to the tree: one that has gone counts as one that has ended. A
// child that ends inside its own start is stepped over when the start is over, in a loop. Children run
// scripts, which may stop, start and end the node: after each call it goes on only if nobody gave it another
// course.

#include <vector>

#include "foundation/geometry.h"
#include "gfx/playable.h"

namespace footlight {

class CSequencedPlayable : public CXObject, public CPlayable, public CPlayableObserver {
 public:
  static constexpr int kType = 7;
  // Modes.
  static constexpr int kInOrder = 1;
  static constexpr int kByChance = 2;
  static constexpr int kByParameter = 3;
  // Marks for `seek`, beside those of every playable.
  static constexpr int kFirst = -1;
  static constexpr int kLast = -2;

  explicit CSequencedPlayable(CWindow* window);
  ~CSequencedPlayable() override;
  CSequencedPlayable(const CSequencedPlayable&) = delete;
  CSequencedPlayable& operator=(const CSequencedPlayable&) = delete;

  CXObject* asObject() override { return this; }
  void retire() override;
  void destroy() override { dispose(); }

  // Behind the others; it may be a child already.
  void addChild(CPlayable* child) override;
  int getChildrenCount() const { return static_cast<int>(children_.size()); }
  // Null when it has gone, and outside of the list.
  CPlayable* getChild(int index) const;
  int getCurrent() const { return current_; }  // -1 before the first start

  // Nothing starts without children, or when the parameter chooses none.
  void play() override;
  using CPlayable::play;
  // With `notifies` the end of the child that plays is the end of the node.
  void stop(bool notifies) override;
  void pause() override;
  void resume() override;
  void seek(int place) override;
  // Goes on behind a child that has ended; gives the position.
  int next() override;
  bool onPlayableFinished(CPlayable* playable) override;

  // What is left of the parameter for the children.
  CXString getParameter() const override;
  using CPlayable::getParameter;
  // The node that the parameter of an event leads to, from here down.
  CPlayable* get(const CXString& event);
  CPlayable* getPlaying() override;
  // What plays in the node of that name, an empty one standing for this node; empty when nothing does.
  CXString getLastPlayedEvent(const CXString& name) const;
  using CPlayable::getLastPlayedEvent;
  // Gives a playable the volume, the panning and the frequency of this node.
  void accure(CPlayable* playable) const;

  // Each animation below once, and the leaves of a type.
  std::vector<CAnimo*> getAllAnimations() const;
  std::vector<CPlayable*> getAllOfType(int type) const;
  // Of the first animation with 1, else of the first that plays; empty without one.
  CXRect getBoundingBox(int which) const;
  CXPoint getPosition(int which) const;
  void move(int dx, int dy) override;
  using CPlayable::move;
  void setPosition(int px, int py) override;
  using CPlayable::setPosition;
  void alwaysOnTop() override;
  void setVisibility(bool visible) override;

 private:
  struct Child {
    CPlayable* playable;
    WeakRef<CXObject> object;
  };

  bool isOnCourse(int course) const { return course == course_ && !isDisposed(); }
  bool currentPlays() const;
  void begin();
  void beginInOrder();
  void beginOne(int index);
  int chosenByParameter() const;
  bool start(int index, bool handsParameter);
  void childEnded();
  void goOn(bool isTold);
  template <class Visit>
  void eachLeaf(Visit visit) const;
  CAnimo* shownAnimation(int which) const;

  CWindow* window_;
  std::vector<Child> children_;
  int current_ = -1;
  int course_ = 0;         // counts what gives the node another course
  int begins_ = 0;         // calls of `play` that are not over
  int starting_ = -1;      // the course on which a child's start is not over
  bool hasEnded_ = false;  // a child's end was told meanwhile
};

}  // namespace footlight
