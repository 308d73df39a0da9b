#pragma once

// A leaf of a sequence: one event of an animation.

#include "sequence/figure_link.h"

namespace footlight {

class CAnimoSequenceElement : public CXObject, public CPlayable, public CPlayableObserver {
 public:
  static constexpr int kType = 6;

  explicit CAnimoSequenceElement(CWindow* window);
  CAnimoSequenceElement(const CAnimoSequenceElement&) = delete;
  CAnimoSequenceElement& operator=(const CAnimoSequenceElement&) = delete;
  ~CAnimoSequenceElement() override;

  // Over the animation of an object, or over that of a file. The event is a name or a number.
  void take(CSequenceFigure* figure, const CXString& event);
  void takeFile(CWindow* window, CResourcesManager* resources, const CXString& name, const CXString& event);

  CXObject* asObject() override { return this; }
  void retire() override;
  void destroy() override { dispose(); }

  // The animation, or null.
  CAnimo6* getAnimo() const { return figure_.get(); }
  int getEventIndex() const { return eventIndex_; }

  void substAnimation(CAnimo* animation) override;
  // Without an animation, or without the event, nothing plays.
  void play() override;
  using CPlayable::play;
  void stop(bool notifies) override;
  void pause() override;
  void resume() override;
  void seek(int /*place*/) override {}
  bool isPlaying() const override { return figure_.isPlaying(); }
  bool isVisible() const override;
  void setVisibility(bool visible) override;

  bool onPlayableFinished(CPlayable* playable) override;

 private:
  void resolve(const CXString& event);
  void forget();

  FigureLink figure_;
  int eventIndex_ = 0;
  int course_ = 0;  // counts starts and stops
};

}  // namespace footlight
