#pragma once

// A small group of pictures and buttons that shows and hides as one. The strip at the top of its background
// moves all of it.
//
// Its parts belong to others and are kept weakly. They go on the screen above everything else.

#include <vector>

#include "input/button.h"
#include "input/control.h"

namespace footlight {

class CXDialog final : public CXObject, public CControlNotifier {
 public:
  // `unitObject` is the engine object whose end is the unit's.
  CXDialog(CWindow* window, CControlUnit* unit, CXObject* unitObject);

  // Shares the parts, which stay where they are; its strip moves them as well.
  std::unique_ptr<CXObject> clone() const override;

  // The picture that all else stands on; it takes the place of the one before.
  void setBackground(CGraphicsObject* graphics);
  // Nothing is taken twice.
  void add(CGraphicsObject* object);
  void add(CButton* button);
  // With the background.
  void show() { setVisible(true); }
  void hide() { setVisible(false); }
  // All but the background.
  void move(CXPoint distance);

  void onStartDragging(CControl* control, CXPoint point) override;
  void onDragging(CControl* control, CXPoint point) override;
  void onEndDragging(CControl* control, CXPoint point) override;

 private:
  CXRect titleStrip() const;
  // Takes the picture from its place on the screen to one so much higher.
  void raise(CGraphicsObject* graphics);
  void setVisible(bool visible);

  CWindow* window_;
  CControlUnit* unit_;
  WeakRef<CXObject> unitObject_;
  Owned<CButton> titleButton_;  // null without a background
  WeakRef<CGraphicsObject> background_;
  CXPoint dragPoint_;
  bool visible_ = true;
  std::vector<WeakRef<CGraphicsObject>> objects_;
  std::vector<WeakRef<CButton>> buttons_;
};

}  // namespace footlight
