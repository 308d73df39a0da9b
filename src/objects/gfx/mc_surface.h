#pragma once

// What CANVAS and PATTERN have in common: a surface on the screen that hears the mouse over its box, once a
// mouse signal is bound.

#include "input/mouse_listener.h"
#include "script/mc_object.h"

namespace footlight {

class CRefreshScreen;
class CWindow;

enum class SurfaceSignal { onFocusOn = kFirstOwnSignal, onFocusOff, onClick, onRelease, count };

inline constexpr auto kSurfaceSignals = signalTable<SurfaceSignal>({
    {SurfaceSignal::onFocusOn, "ONFOCUSON", "The pointer has come over it."},
    {SurfaceSignal::onFocusOff, "ONFOCUSOFF", "The pointer has left it."},
    {SurfaceSignal::onClick, "ONCLICK",
     "It was clicked; as ONCLICK^LEFT, ^MIDDLE or ^RIGHT if that is bound."},
    {SurfaceSignal::onRelease, "ONRELEASE", "A mouse button was released over it; in the same forms."},
});

class CMC_Surface : public CMC_Object, public CMouseListener {
 public:
  bool verifyBehaviour(const CXString& signal) override;
  // Whether the pointer changes its shape over it, and whether it signals at all.
  void setAsButton(bool changesCursor, bool announces);

  bool onMouseMove(CXPoint point) override;
  bool onClick(int button, CXPoint point) override;
  bool onRelease(int button, CXPoint point) override;
  using CMouseListener::onClick;
  using CMouseListener::onRelease;

 protected:
  CMC_Surface(CMC_ObjectsContainer* container, const CMElement* element, int type);

  CWindow* window() const { return window_; }
  CRefreshScreen* screen() const;
  // Off the screen, and deaf.
  void leaveScreen();

 private:
  bool isHit(CXPoint point) const;
  void signalButton(SurfaceSignal signal, int button, CXPoint point);

  CWindow* window_;
  int priority_;
  bool inside_ = false;
  bool changeCursor_ = true;
  bool announce_ = true;
};

}  // namespace footlight
