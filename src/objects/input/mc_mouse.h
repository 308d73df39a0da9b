#pragma once

// MOUSE: what the mouse does, as signals, and the cursor in the hands of scripts. One a chain of scopes: the
// bindings of successive scenes add up.

#include "foundation/geometry.h"
#include "input/mouse_listener.h"
#include "script/mc_object.h"

namespace footlight {

class CWindow;

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
  // Keeps the cursor in a rectangle of the picture, over a loss of the focus too, until `reset` or the
  // scene's end.
  void setClipRect(CXRect rect);
  // Frees the cursor; with `clear` for good.
  static void reset(bool clear);
  static void restore();

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
  bool isHeard(int signal) const { return enabled_ && signalsEnabled_ && isSignalBound(signal); }
  void signalButton(const char* signal, int button);
  CXPoint screenOrigin() const;

  static inline CXRect clipRect_;

  CWindow* window_;
  CXPoint position_;
  CXPoint lastClick_;
  bool enabled_ = true;
  bool signalsEnabled_ = true;
  bool visible_ = true;
};

}  // namespace footlight
