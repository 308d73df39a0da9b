#pragma once

// MOUSE: what the mouse does, as signals, and the cursor in the hands of scripts. One a chain of scopes: the
// bindings of successive scenes add up.

#include "foundation/geometry.h"
#include "input/mouse_listener.h"
#include "script/mc_object.h"

namespace footlight {

class CWindow;

namespace type {
inline constexpr int kMouse = 100;
}

enum class MouseSignal { onMove = kFirstOwnSignal, onClick, onRelease, onDblClick, count };

class CMC_Mouse : public CMC_Object, public CMouseListener {
 public:
  CMC_Mouse(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Mouse() override;
  static bool isTypeOf(int type) { return type == type::kMouse; }
  // Another listener of the one mouse, with bindings of its own.
  std::unique_ptr<CMC_Object> copy() const override;

  CWindow* getWindow() const { return window_; }
  CXPoint getPosition() const { return position_; }
  CXPoint getLastClick() const { return lastClick_; }
  // "LEFT", "MIDDLE", "RIGHT"; empty for a number that is no button's.
  static CXString getButton(int button) { return mouseButtonName(button); }

  // Whether the window hears the mouse at all; a disabled mouse shows the wait cursor.
  void enable();
  void disable();
  void enableSignals(bool on) { signalsEnabled_ = on; }
  void show();
  void hide();
  // "ARROW", "WAIT", "ACTIVE"; other words do nothing.
  void set(const CXString& cursor);
  // To a place of the picture; no event comes of it.
  void setPosition(int x, int y);
  void move(CXPoint distance);

  bool onMouseMove(CXPoint point) override;
  bool onClick(int button, CXPoint point) override;
  bool onRelease(int button, CXPoint point) override;
  bool onDblClick(CXPoint point) override;
  using CMouseListener::onClick;
  using CMouseListener::onRelease;

 protected:
  void unlink() override;

 private:
  CMC_Mouse(const CMC_Mouse& other);
  bool isHeard() const { return enabled_ && signalsEnabled_; }
  CXPoint screenOrigin() const;

  CWindow* window_;
  CXPoint position_;
  CXPoint lastClick_;
  bool enabled_ = true;
  bool signalsEnabled_ = true;
  bool visible_ = true;
};

}  // namespace footlight
