#pragma once

// CANVAS_OBSERVER: the script's hand on the window's refresh screen, and its ear: each notification of the
// screen becomes a signal while the screen notifies at all.

#include "gfx/canvas_observer.h"
#include "script/mc_object.h"

namespace footlight {

class CRefreshScreen;
class CWindow;

class CMC_CanvasObserver : public CMC_Object, public CCanvasObserver {
 public:
  CMC_CanvasObserver(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_CanvasObserver() override;
  static bool isTypeOf(int type) { return type == type::kCanvasObserver; }
  // Another ear on the same screen, with bindings of its own.
  std::unique_ptr<CMC_Object> copy() const override;

  CWindow* getWindow() const { return window_; }
  // Null while the window has no screen.
  CRefreshScreen* getScreen() const;

  void onInitialUpdate() override { signal("ONINITIALUPDATE"); }
  void onInitialUpdated() override { signal("ONINITIALUPDATED"); }
  void onUpdate() override { signal("ONUPDATE"); }
  void onUpdated() override { signal("ONUPDATED"); }
  void onFocusOn() override { signal("ONWINDOWFOCUSON"); }
  void onFocusOff() override { signal("ONWINDOWFOCUSOFF"); }

 protected:
  void unlink() override;

 private:
  CMC_CanvasObserver(const CMC_CanvasObserver& other);
  void signal(const char* name);

  CWindow* window_;
};

}  // namespace footlight
