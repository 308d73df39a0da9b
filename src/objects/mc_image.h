#pragma once

// IMAGE: the script's face of a still picture. It puts the picture on the screen and turns the mouse over it
// into signals.
//
// The picture of a scene's object belongs to the scene's resources manager and is shared by all objects that
// load the same file; elsewhere, and for clones, the object owns it. Either way the object refers to it
// weakly: a picture that has gone is no picture, and every operation on it is left out.

#include "foundation/geometry.h"
#include "gfx/collision_inspector.h"
#include "gfx/image.h"
#include "input/mouse_listener.h"
#include "script/mc_object.h"

namespace footlight {

class CMC_Scene;
class CRefreshScreen;
class CResourcesManager;

class CMC_Image : public CMC_Object, public CCollisionObserver, public CMouseListener {
 public:
  // Without a picture yet, of no name.
  explicit CMC_Image(CMC_ObjectsContainer* container);
  // Around a picture that it takes over, of no name.
  CMC_Image(CMC_ObjectsContainer* container, Owned<CImage> image);
  // Loads the picture and shows it as the definition says.
  CMC_Image(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Image() override;
  static bool isTypeOf(int type) { return type == type::kImage; }

  // The picture, or null.
  CImage* getImage() const { return image_.get(); }
  CXPoint GetStartingPosition() const { return startingPosition_; }
  void SetStartingPosition(int x, int y) { startingPosition_ = {x, y}; }
  void setAsButton(bool asButton, bool changeCursor);
  int getPriority() const { return priority_; }

  // Replaces the picture, whatever its name; it keeps its place on the screen. With `preload` it is read now,
  // else its pixels come later.
  virtual void load(const CXString& name, bool preload);

  bool done(bool keep) override;
  bool verifyBehaviour(const CXString& signal) override;
  std::unique_ptr<CMC_Object> copy() const override;

  // Signals when the picture begins and ends to touch another one that the scene watches.
  void monitorCollisions(bool useAlpha);
  virtual void removeCollisionsMonitoring();
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
  void signalCollision(int index, const char* signal, CGraphicsObject* a, CGraphicsObject* b);
  bool isHit(CXPoint point) const;
  bool hearsMouse() const;
  void signalButton(const char* signal, int button);
  void takeShared(CResourcesManager* resources, const CXString& name, bool preload);
  void makeOwn(CResourcesManager* resources, const CXString& name, bool preload);
  Owned<CImage> makeImage(const CXString& name, bool preload) const;
  void giveBack();

  CWindow* window_;
  WeakRef<CImage> image_;
  Owned<CImage> own_;  // the picture, unless a manager owns it
  CXPoint startingPosition_;
  int priority_ = 0;
  bool focus_ = false;       // the mouse is over the picture
  bool mouseBound_ = false;  // a mouse signal has been bound
  bool asButton_ = false;
  bool changeCursor_ = true;
  bool monitorCollision_ = false;
  bool monitorCollisionAlpha_ = false;
};

}  // namespace footlight
