#pragma once

// A button: up to three pictures, two sounds, and a hot spot that it owns. Its area is a rectangle or
// its standard picture.
//
// Pictures and sounds belong to others and are kept weakly: one that has gone is none.
//
// A whole click: the pointer comes (the picture for it shows, its sound plays, onMouseMove, onFocusOn), the
// press (the sound plays, onClick, then the pressed look with the sound once more), the release (the look
// ends, onRelease, onAction), the pointer leaves (the look and the sound end, onFocusOff). A release
// elsewhere reaches what lies there.

#include <memory>

#include "input/control.h"
#include "input/hot_spot.h"
#include "sound/sound4.h"

namespace footlight {

class CButton;
class CGraphicsObject;

// Hands what the mouse does to its button.
class CButtonHotSpot final : public CHotSpot {
 public:
  CButtonHotSpot(CWindow* window, CButton* owner);

  int OnMouseMove(CXPoint point) override;
  int OnLButtonDown(CXPoint point) override;
  int OnLButtonUp(CXPoint point) override;
  int OnRButtonDown(CXPoint point) override;
  int OnFocusOn(CXPoint point) override;
  int OnFocusOff(CXPoint point) override;

 private:
  bool isUnitReady() const;

  WeakRef<CButton> owner_;
  bool entered_ = false;
};

class CButton final : public CControl {
  friend class CButtonHotSpot;

 public:
  // An empty rectangle leaves the area to the standard picture.
  CButton(CWindow* window, const CXRect& rect);
  ~CButton() override;

  std::unique_ptr<CXObject> clone() const override;

  // The standard picture goes on the screen; with `replaces` the old one leaves it.
  void Set(CGraphicsObject* graphics, bool replaces);
  // The pictures go on the screen, hidden. Either may be null.
  void SetOnMove(CGraphicsObject* graphics, CSound4* sound);
  void SetOnClick(CGraphicsObject* graphics, CSound4* sound);
  void SetActiveRect(const CXRect& rect);
  void SetDragging(CGraphicsObject* graphics) { gfxDrag_ = graphics; }
  // Another picture for the area, and for dragging.
  void Accent(CGraphicsObject* graphics);
  CGraphicsObject* getStandard() const { return gfxStandard_.get(); }
  CGraphicsObject* GetSOOnMove() const { return gfxOnMove_.get(); }
  CGraphicsObject* GetSOOnClick() const { return gfxOnClick_.get(); }
  CGraphicsObject* getCurrent() const { return gfxCurrent_.get(); }
  CGraphicsObject* GetDragging() const { return gfxDrag_.get(); }
  CSound4* getSoundOnMove() const { return sndOnMove_.get(); }
  CSound4* getSoundOnClick() const { return sndOnClick_.get(); }

  // Off, its pictures hide and nothing is heard of it.
  void Enable(bool enabled) override;
  // The same, but the standard picture shows.
  void DisableButVisible();
  // The pressed look.
  void Force(bool down);
  // A frozen button keeps its look for the pointer when that has left.
  void Freeze(bool frozen);
  // Asks anew whether the mouse is outside.
  void SYN();
  void EnableDragging(bool enabled) { draggingEnabled_ = enabled; }
  bool IsDraggingEnabled() const { return draggingEnabled_; }
  // Moves each picture once; without a current one the rectangle.
  void Move(CXPoint distance);
  void setUnit(CControlUnit* unit, CXObject* object) { hotSpot_->setUnit(unit, object); }
  void setPriority(int priority) { hotSpot_->setPriority(priority); }
  int getPriority() const { return hotSpot_->getPriority(); }
  CHotSpot* getHotSpot() const { return hotSpot_.get(); }
  CXPoint getClick() const { return click_; }

  // A press: a drag begins where that is on. 1 when it did.
  int OnClick(CXPoint point);

 private:
  static void show(const WeakRef<CGraphicsObject>& graphics, bool visible);
  static void play(const WeakRef<CSound4>& sound);
  void putHidden(CGraphicsObject* graphics);
  int startDragging(CXPoint point);

  CXRect activeRect_;
  bool isClone_ = false;  // its pictures stay on the screen for the button that has them too
  bool forced_ = false;
  bool frozen_ = false;
  bool draggingEnabled_ = false;
  bool outside_ = true;
  WeakRef<CGraphicsObject> gfxStandard_, gfxOnMove_, gfxOnClick_;
  WeakRef<CGraphicsObject> gfxCurrent_, gfxDrag_;
  WeakRef<CSound4> sndOnMove_, sndOnClick_;
  CXPoint click_;  // of the last release
  Owned<CButtonHotSpot> hotSpot_;
};

}  // namespace footlight
