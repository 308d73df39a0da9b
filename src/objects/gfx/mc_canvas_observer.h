#pragma once

// CANVAS_OBSERVER: the script's hand on the window's refresh screen, and its ear: each notification of the
// screen becomes a signal while the screen notifies at all.

#include "gfx/canvas_observer.h"
#include "script/mc_object.h"

namespace footlight {

class CRefreshScreen;
class CWindow;

namespace type {
inline constexpr int kCanvasObserver = 103;
}

enum class CanvasObserverSignal {
  onInitialUpdate = kFirstOwnSignal,
  onUpdate,
  onUpdated,
  onWindowFocusOn,
  onWindowFocusOff,
  onInitialUpdated,
  count
};

class CMC_CanvasObserver : public CMC_Object, public CCanvasObserver {
 public:
  CMC_CanvasObserver(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_CanvasObserver() override;
  static bool isTypeOf(int type) { return type == type::kCanvasObserver; }
  // Another ear on the same screen, with bindings of its own.
  std::unique_ptr<CMC_Object> copy() const override;

  CWindow* getWindow() const { return window_; }
  // It stands for the frame.
  CGraphicsObject* getGraphic() const override;
  // Null while the window has no screen.
  CRefreshScreen* getScreen() const;

  void onInitialUpdate() override { signal(CanvasObserverSignal::onInitialUpdate); }
  void onInitialUpdated() override { signal(CanvasObserverSignal::onInitialUpdated); }
  void onUpdate() override { signal(CanvasObserverSignal::onUpdate); }
  void onUpdated() override { signal(CanvasObserverSignal::onUpdated); }
  void onFocusOn() override { signal(CanvasObserverSignal::onWindowFocusOn); }
  void onFocusOff() override { signal(CanvasObserverSignal::onWindowFocusOff); }

 protected:
  void unlink() override;

 private:
  CMC_CanvasObserver(const CMC_CanvasObserver& other);
  void signal(CanvasObserverSignal signal);

  CWindow* window_;
};

}  // namespace footlight
