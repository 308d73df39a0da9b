#pragma once

// The compositor: graphic objects in the order of their priority, the dirty part of the screen, the
// background. Each frame it restores the background in the dirty rectangles and draws the objects over them:
// whole if they were invalidated themselves, else only inside the rectangles that touch them.
//
// It owns neither the objects nor the notifiers; both are held weakly, and each object leaves when it ends.

#include <vector>

#include "gfx/background_manager.h"
#include "gfx/canvas_observer.h"
#include "gfx/direct_draw_surface.h"
#include "gfx/refresh_region.h"
#include "gfx/validation_quene.h"

namespace footlight {

class CSurface;

class CRefreshScreen : public CGraphicsObject {
 public:
  static constexpr int kGrayFlag = 2;  // every frame ends in shades of gray

  // As large as the screen. A local one draws into a surface of its own.
  CRefreshScreen(CWindow* window, bool local);
  ~CRefreshScreen() override;

  // Lists the object, if it is not listed yet, and redraws it.
  void put(CGraphicsObject* object, int priority);
  CRefreshScreen& operator<<(CGraphicsObject* object);
  // Takes the object off; what it covered is not redrawn.
  CRefreshScreen& operator>>(CGraphicsObject* object);
  void remove(const CGraphicsObject* object) { queue_.remove(object); }
  void Empty() { queue_.removeAll(); }
  // The object comes behind its new equals. Nothing is redrawn.
  void SetPriority(CGraphicsObject* object, int priority);
  int GetPriority(const CGraphicsObject* object) const;  // -1 when it is not listed
  int getIndex(const CGraphicsObject* object) const { return queue_.getIndex(object); }
  using CGraphicsObject::GetFlags;
  int GetFlags(const CGraphicsObject* object) const;
  using CGraphicsObject::SetFlags;
  bool SetFlags(CGraphicsObject* object, int flags);  // null: the screen's own
  CRefreshRegion* getRefreshList() { return &region_; }
  const CValidationQuene& queue() const { return queue_; }

  using CGraphicsObject::Invalidate;
  void Invalidate(CGraphicsObject* object);
  void Invalidate(CXRect* rect) override;  // null: the whole screen
  // Nothing is dirty any more.
  void validate() { region_.clear(); }

  // One frame into `destination`, with the updates that the current scene needs before it. True when
  // something was dirty. `fullRepaint` is set by the first frame of a scene.
  bool Redraw(CDirectDrawSurface* destination, CSurface* surface, bool* fullRepaint);
  void Redraw() override;  // of a local screen into its own surface
  void Visible(bool visible) override;

  // The topmost object at the point, of equals the last one, or null. Priorities of -1 do not limit.
  // Transparent pixels count only with `ignoreAlpha`.
  virtual CGraphicsObject* getGraphicsAt(int px, int py, bool visibleOnly, int minPriority, int maxPriority,
                                         bool ignoreAlpha);
  virtual void onFocusOn();
  virtual void onFocusOff();

  // `T` is the notifier and the engine object whose end ends the notifying.
  template <class T>
  void addNotifier(T* notifier) {
    addObserver(notifier, notifier);
  }
  void removeNotifier(const CCanvasObserver* notifier);
  void enableNotifyFlag(bool enabled) { notifyFlag_ = enabled; }
  bool isNotifying() const { return notifyFlag_; }
  // 0 and 5: before and after a scene's first frame, 1 and 2: before and after a frame, 3 and 4: the
  // focus comes, goes.
  void notify(int event);

  // With a pair of buffers, what was dirty in one frame is drawn in the next one as well.
  void setFlipping(bool flips) { isFlipping_ = flips; }
  // A frame was flipped: what became dirty since the flip before stays for the other buffer.
  void validateFlipped();

  void SetBackground(CColor* colour) { background_.SetBackground(colour); }
  void SetBackground(CGraphicsObject* object) { background_.SetBackground(object); }
  // A picture file; an unreadable one leaves no background.
  void SetBackground(const CXString& fileName);
  void setBackground(Owned<CDirectDrawSurface> surface) { background_.setBackground(std::move(surface)); }
  CDirectDrawSurface* getBackgroundIfc() const { return background_.surface(); }
  // Drops the picture that a file name brought; what is on the screen stays.
  // NOLINTNEXTLINE(bugprone-virtual-near-miss): both names are part of the interface
  void flush() { backgroundImage_.reset(); }

  using CGraphicsObject::Save;
  int Save(const CXString& name, _compression compression) override;  // the last frame

  CXRect screenRect() const { return {0, 0, width_, height_}; }
  int getFrameCount() const { return frameCount_; }

 private:
  struct Notifier {
    CCanvasObserver* notifier;
    WeakRef<CXObject> object;
  };

  void addObserver(CCanvasObserver* notifier, CXObject* object);
  bool drawFrame(CDirectDrawSurface* destination);
  bool composeFrame(CDirectDrawSurface* destination);
  void drawElement(CGraphicsObject* object, CDirectDrawSurface* destination);
  void drawWhole(CGraphicsObject* object, CDirectDrawSurface* destination);
  void drawDirty(CGraphicsObject* object, CDirectDrawSurface* destination);

  CRefreshRegion region_{true};
  CRefreshRegion sinceFlip_{true};  // what was invalidated after the last flip
  bool isFlipping_ = false;
  CValidationQuene queue_;
  CBackgroundManager background_;
  Owned<CGraphicsObject> backgroundImage_;
  Owned<CDirectDrawSurface> localDestiny_;
  WeakRef<CDirectDrawSurface> destSurface_;
  std::vector<Notifier> notifiers_;
  bool notifyFlag_ = false;
  bool isDrawing_ = false;
  bool wantsRepaint_ = false;
  int frameCount_ = 0;
};

}  // namespace footlight
