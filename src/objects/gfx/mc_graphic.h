#pragma once

// What IMAGE and ANIMO have in common: a graphic on the screen that can be watched for collisions and hears
// the mouse over it.

#include "gfx/collision_inspector.h"
#include "input/mouse_listener.h"
#include "script/mc_object.h"

namespace footlight {

class CFileResolver;
class CRefreshScreen;

namespace type {
inline constexpr int kAnimo = 2000;
inline constexpr int kImage = 2008;
}  // namespace type

class CMC_Graphic : public CMC_Object, public CCollisionObserver, public CMouseListener {
 public:
  static bool isTypeOf(int type) { return type == type::kImage || type == type::kAnimo; }

  int getPriority() const { return priority_; }
  // Behind the base's part: whether it is a button and how it is watched, the file, whether it is on the
  // screen, whether it shows, its priority, FLUSHAFTERPLAYED, PRELOAD.
  void serialize(CXArchive& archive) override;

  bool verifyBehaviour(const CXString& signal) override;

  // Signals when the graphic begins and ends to touch another one that the scene watches.
  void monitorCollisions(bool useAlpha);
  virtual void removeCollisionsMonitoring();
  std::optional<const CGraphicsObject*> onlyHears() const override { return getGraphic(); }

 protected:
  static constexpr int kOffScreen = -1;  // the priority of what is not on the screen

  // Of no name.
  CMC_Graphic(CMC_ObjectsContainer* container, int type);
  CMC_Graphic(CMC_ObjectsContainer* container, const CMElement* element, int type);

  // Of one that is not, nothing is kept but what all objects keep, and the three behind this have no meaning.
  virtual bool isOfFile() const { return true; }
  // Loads the file in place of what there is.
  virtual void load(const CXString& /*name*/, bool /*preload*/) {}
  // The file behind the graphic; null without one.
  virtual CFileResolver* file() const { return nullptr; }
  // Shows it, or not, as the definition would.
  virtual void show(bool /*on*/) {}

  CRefreshScreen* screen() const;
  CWindow* window() const { return window_; }
  // Watches for collisions if the definition says so.
  void monitorIfWanted();
  // Puts a newly loaded graphic where the one before was on the screen.
  void takePlace(int priority);
  // With the event's and the other's name, with the other's alone, else plain. Nothing when `a` is not this.
  void signalCollision(SignalIndex signal, CGraphicsObject* a, CGraphicsObject* b,
                       const CXString& event = {});
  // The signal with the button's name, else the plain one.
  void signalButton(SignalIndex signal, int button);
  // Hears the mouse no longer.
  void forgetMouse();

  bool focus_ = false;       // the mouse is over the graphic
  bool mouseBound_ = false;  // a mouse signal has been bound
  bool asButton_ = false;
  bool changeCursor_ = true;
  bool preload_ = true;  // read at once, as it also is without a PRELOAD

 private:
  bool isMonitored() const { return monitorCollision_ || monitorCollisionAlpha_; }

  CWindow* window_;
  int priority_ = 0;
  bool monitorCollision_ = false;
  bool monitorCollisionAlpha_ = false;
};

}  // namespace footlight
