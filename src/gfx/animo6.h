#pragma once

// The animation that script objects use: it draws its current frame in its own place, and keeps one frame at
// a time expanded.

#include "gfx/animo.h"

namespace footlight {

class CAnimo6 : public CAnimo {
 public:
  using CAnimo::CAnimo;
  CAnimo6(const CAnimo6& source) : CAnimo(source) {}
  CAnimo6& operator=(const CAnimo6&) = delete;

  std::unique_ptr<CXObject> clone() const override { return std::make_unique<CAnimo6>(*this); }
  void redraw(CGraphicsObject* destination) override;
  // An animation to be released after use loses its frames when it is hidden, and loads anew to be shown.
  void show() override;
  void hide() override;
  using CAnimo::Play;
  void Play(int event, int position, int fps) override;
  void Play(const CXString& event, int position, int fps) override;
  void playReverse(const CXString& event, int position) override;
  void play(const CXString& event) override;
  using CAnimo::play;
  // Of all frames; clones keep theirs.
  void FlipH() override;
  void FlipV() override;
  void resetFlips() override;
  void pack(bool freePlain) override;
  void unpack() override;
  void setVolume(int volume) override;
  void setPanning(int panning) override;
  void setFrequency(int frequency) override;

  // Back to unloaded. The event that played last stays the one to play without a name.
  virtual void flush();  // NOLINT(bugprone-virtual-near-miss): both names are part of the interface
  // On the current frame where that stands by itself, without the animation's position and offsets;
  // false without one.
  virtual bool isAt(CXPoint point, bool useAlpha);
  bool isInside(int px, int py, bool useAlpha) { return isAt({px, py}, useAlpha); }
  // Does the event of that name play, in any case?
  virtual bool isPlaying(const CXString& event) const;
  using CAnimo::isPlaying;
  virtual int GetMaxWidth() const;
  virtual int GetMaxHeight() const;

  // Loads an animation that was to be loaded later, or that was flushed.
  void ensureLoaded();

 private:
  void expandCurrent();
  template <class Change>
  void changeFrames(Change change);
};

}  // namespace footlight
