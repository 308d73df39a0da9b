#pragma once

// ANIMO: the script's face of an animation. It puts the animation on the screen, turns its playback, its
// collisions and the mouse over it into signals, and lets an animation with events of the right names behave
// as a button. An animation that has gone is none, and every operation on it is left out.

#include <unordered_set>

#include "gfx/animo6.h"
#include "objects/gfx/mc_graphic.h"
#include "objects/shared_resource.h"
#include "sequence/sequence_cast.h"

namespace footlight {

enum class AnimoSignal {
  onStarted = kFirstOwnSignal,
  onFinished,
  onPaused,
  onResumed,
  onFrameChanged,
  onCollision,
  onCollisionFinished,
  onFocusOn,
  onFocusOff,
  onClick,
  onRelease,
  count
};

class CMC_Animo : public CMC_Graphic, public CPlayableObserver, public CSequenceFigure {
 public:
  // With an empty animation, of no name.
  explicit CMC_Animo(CMC_ObjectsContainer* container);
  // Around an animation that it takes over, of no name.
  CMC_Animo(CMC_ObjectsContainer* container, Owned<CAnimo6> animo);
  // Loads the animation and shows it as the definition says.
  CMC_Animo(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Animo() override;
  static bool isTypeOf(int type) { return type == type::kAnimo; }

  // The animation, or null.
  CAnimo6* getAnimo() const override { return animo_.get(); }
  CGraphicsObject* getGraphic() const override { return getAnimo(); }
  CGraphicsObject* getGraphicsFrame(const CXString& frame) const override;
  // Plays the event for no special event, so that the button comes up.
  void setAsButton(bool asButton, bool changeCursor);
  void setOnFirstFrame(bool onFirstFrame) { onFirstFrame_ = onFirstFrame; }
  // Sequences that play this animation hear of a new one, and of its end. They take themselves out.
  void addSeq(CPlayable* sequence) override { seqs_.insert(sequence); }
  void removeSeq(const CPlayable* sequence) override { seqs_.erase(const_cast<CPlayable*>(sequence)); }
  CXObject* asObject() override { return this; }

  // Replaces the animation unless it is of that file; it keeps its place on the screen. With `preload` it is
  // read now, else when it is first shown or played.
  void load(const CXString& name, bool preload) override;

  bool done(bool keep) override;
  std::unique_ptr<CMC_Object> copy() const override;
  // The name without its ending "_REVERSE".
  static CXString getSignalEvent(const CXString& event);
  // What ONFRAMECHANGED is called for a frame without a name.
  static constexpr const char* kNamelessFrame = "ONFRAMECHANGEDFRAME";

  bool onPlayableStarted(CPlayable* playable) override;
  bool onPlayableTick(CPlayable* playable) override;
  bool onPlayableFinished(CPlayable* playable) override;
  void onCollision(CGraphicsObject* a, CGraphicsObject* b) override;
  void onCollisionFinished(CGraphicsObject* a, CGraphicsObject* b) override;
  bool onMouseMove(CXPoint point) override;
  bool onClick(int button, CXPoint point) override;
  bool onRelease(int button, CXPoint point) override;
  using CMouseListener::onClick;
  using CMouseListener::onRelease;

 protected:
  void unlink() override;
  CFileResolver* file() const override { return getAnimo(); }
  void show(bool on) override;

 private:
  CXString signalEvent() const;
  bool isSignalOf(AnimoSignal signal, const CPlayable* playable) const;
  void signalPlayback(AnimoSignal signal, const CPlayable* playable);
  bool isButton() const;
  bool isHit(CXPoint point) const;
  void playButton(const char* event);
  void enterFocus(bool announces);
  void leaveFocus(bool announces);
  Owned<CAnimo6> makeAnimo(const CXString& name, bool preload) const;
  void giveBack();
  void tellSequences(CAnimo* animo);

  SharedResource<CAnimo6> animo_;
  bool onFirstFrame_ = false;  // the mouse counts over the first frame's place, not the current one's
  std::unordered_set<CPlayable*> seqs_;
};

}  // namespace footlight
