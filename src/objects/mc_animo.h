#pragma once

// ANIMO: the script's face of an animation. It puts the animation on the screen, turns its playback, its
// collisions and the mouse over it into signals, and lets an animation with events of the right names behave
// as a button.
//
// The animation of a scene's object belongs to the scene's resources manager and is shared by all objects
// that load the same file; elsewhere, and for clones, the object owns it. Either way the object refers to it
// weakly: an animation that has gone is none, and every operation on it is left out.

#include <vector>

#include "gfx/animo6.h"
#include "gfx/collision_inspector.h"
#include "input/mouse_listener.h"
#include "script/mc_object.h"

namespace footlight {

class CMC_Scene;
class CRefreshScreen;
class CResourcesManager;

class CMC_Animo : public CMC_Object,
                  public CPlayableObserver,
                  public CCollisionObserver,
                  public CMouseListener {
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
  CAnimo6* getAnimo() const { return animo_.get(); }
  // Plays the event for no special event, so that the button comes up.
  void setAsButton(bool asButton, bool changeCursor);
  void setOnFirstFrame(bool onFirstFrame) { onFirstFrame_ = onFirstFrame; }
  int getPriority() const { return priority_; }
  // Sequences that play this animation hear of a new one, and of its end. They take themselves out.
  void addSeq(CPlayable* sequence) { seqs_.push_back(sequence); }
  void removeSeq(const CPlayable* sequence) { std::erase(seqs_, sequence); }

  // Replaces the animation unless it is of that file; it keeps its place on the screen. With `preload` it is
  // read now, else when it is first shown or played.
  virtual void load(const CXString& name, bool preload);

  bool done(bool keep) override;
  bool verifyBehaviour(const CXString& signal) override;
  std::unique_ptr<CMC_Object> copy() const override;
  // The name without its ending "_REVERSE".
  static CXString getSignalEvent(const CXString& event);

  void monitorCollisions(bool useAlpha);
  virtual void removeCollisionsMonitoring();

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

 private:
  CRefreshScreen* screen() const;
  CResourcesManager* manager() const;
  CMC_Scene* level() const;
  bool isMonitored() const { return monitorCollision_ || monitorCollisionAlpha_; }
  CXString signalEvent() const;
  bool isSignalOf(int index, const CPlayable* playable) const;
  void signalPlayback(int index, const char* signal, const CPlayable* playable);
  void signalCollision(int index, const char* signal, CGraphicsObject* a, CGraphicsObject* b);
  bool isButton() const;
  bool isHit(CXPoint point) const;
  void playButton(const char* event);
  void enterFocus(bool announces);
  void leaveFocus(bool announces);
  void signalButton(const char* signal, int button);
  void takeShared(CResourcesManager* resources, const CXString& name, bool preload);
  void makeOwn(CResourcesManager* resources, const CXString& name, bool preload);
  Owned<CAnimo6> makeAnimo(const CXString& name, bool preload) const;
  void giveBack();
  void tellSequences(CAnimo* animo);

  CWindow* window_;
  WeakRef<CAnimo6> animo_;
  Owned<CAnimo6> own_;  // the animation, unless a manager owns it
  int priority_ = 0;
  bool focus_ = false;       // the mouse is over the animation
  bool mouseBound_ = false;  // a mouse signal has been bound
  bool asButton_ = false;
  bool onFirstFrame_ = false;  // the mouse counts over the first frame's place, not the current one's
  bool changeCursor_ = true;
  bool monitorCollision_ = false;
  bool monitorCollisionAlpha_ = false;
  bool preload_ = false;
  std::vector<CPlayable*> seqs_;
};

}  // namespace footlight
