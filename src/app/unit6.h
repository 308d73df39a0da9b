#pragma once

// CUnit6 is the run-time side of a scene: the sink of mouse and key events, dragging, the music file, the
// background and the scene's resources. There is one for the whole process, borrowed by the scene that runs.

#include <memory>
#include <vector>

#include "foundation/geometry.h"
#include "foundation/timer_notificator.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"
#include "gfx/random_playable.h"
#include "gfx/screen_unit.h"
#include "input/button.h"
#include "input/control_unit.h"
#include "input/edit_box.h"
#include "input/key_listener.h"
#include "input/mouse_listener.h"
#include "text/edit_box_maker.h"

namespace footlight {

class CGraphicsObject;
class CMC_Scene;
class CRefreshScreen;
class CResourcesManager;
class CWindow;

class CUnit6 : public CXObject,
               public CScreenUnit,
               public CControlUnit,
               public CControlNotifier,
               public CEditBoxUnit,
               public CEditBoxMaker,
               public CKeyListener,
               public CMouseListener,
               public CRandomPlayableNotifier,
               public CTimerNotificator {
 public:
  static constexpr int kMousePriority = 100000;
  static constexpr int kDragPriority = 10000;
  static constexpr int kNoCode = 0;

  CUnit6(CWindow* window, CXString name, CResourcesManager* general);
  ~CUnit6() override;
  CUnit6(const CUnit6&) = delete;
  CUnit6& operator=(const CUnit6&) = delete;

  // Takes a scene on; `other` is the unit whose music goes on, or null.
  virtual void initialize(CMC_Scene* scene, CUnit6* other);
  void onInitialUpdate() override;
  bool wasInitiallyUpdated() const override { return wasInitiallyUpdated_; }
  virtual void domodal() {}
  // Lets the scene go: dragging, the drawn objects, the background and the scene's resources end.
  virtual void done(CMC_Scene* scene, CUnit6* other);
  virtual CWindow* getWindow() const { return window_; }
  virtual CRefreshScreen* getCanvas() const;
  bool isActive() const override { return active_; }
  // Plays a music file; null means the scene's. Without `force` only if the scene says that
  // music should start.
  virtual void startMusic(const char* name, bool force);
  virtual void stopMusic();
  virtual const CXString& getMusicFileName() const { return musicFileName_; }
  virtual const CXString& getBackgroundFileName() const { return backgroundFileName_; }
  virtual void setBackground();
  // Moves an object with the mouse, on top of all others, until the release, and tells the button of it.
  bool onStartDragging(CGraphicsObject* object, CXPoint point, CButton* button) override;
  virtual void onDragging(CXPoint point);
  virtual void onEndDragging();
  using CControlNotifier::onDragging;
  using CControlNotifier::onEndDragging;
  using CControlNotifier::onStartDragging;
  virtual CResourcesManager* getResourcesManager() const { return resources_.get(); }
  void onTimer(TimerId /*id*/) override {}
  bool isLive() const override { return active_ && wasInitiallyUpdated_; }

  // The caret of the boxes that come; null for none.
  virtual void setCursor(CGraphicsObject* cursor) { cursor_ = cursor; }
  // A new box, which the unit owns: the text in the font goes on the screen with that priority.
  virtual CEditBox6* addEditBox(CSimpleFont6* font, const CXRect& rect, int priority, const CXString& text);
  void activateEditBox(CEditBox6* box) override;
  void onEditBoxActivated(CEditBox6* box) override;
  bool isActiveEditBox(const CEditBox6* box) const override { return box == activeBox_.get(); }
  // A box that stands in a text.
  std::unique_ptr<CTextBox> makeTextBox(CSimpleFont6* font, CXRect rect, int priority,
                                        const CXString& text) override;
  CXObject* asObject() override { return this; }
  // Ends the box; none of the unit's is passed over.
  virtual void removeEditBox(CEditBox6* box);
  virtual void flushEditBoxes();
  // From 0 in the order of their making; -1 when none is active.
  virtual int getCurrentEditBoxIndex() const;
  // To the next box that is not disabled, round and round.
  virtual void nextEditBox();
  // To the box before, disabled or not.
  virtual void prevEditBox();
  void onKeyDown(int key) override;

  // Starts the playable at random moments while the scene runs: so many times a minute, in runs of up
  // to `repeats` starts.
  void addRandomPlayable(CPlayable* playable, double rate, int repeats, const CXString& event);
  // Puts the dragged object back where it was taken.
  void bringBackDraggingObjectPosition();
  bool isDragging() const override { return dragging_; }
  void setBackgroundFileName(CXString name) { backgroundFileName_ = std::move(name); }
  const CXString& getUnitName() const { return unitName_; }
  void setUnitName(CXString name) { unitName_ = std::move(name); }
  CMC_Scene* getScene() const { return scene_.get(); }
  int getRetCode() const { return retCode_; }
  void setRetCode(int code) { retCode_ = code; }

  bool onMouseMove(CXPoint point) override;
  bool onClick(int button, CXPoint point) override;
  bool onRelease(int button, CXPoint point) override;
  using CMouseListener::onClick;
  using CMouseListener::onRelease;

 private:
  CXString unitName_;
  CWindow* window_;
  WeakRef<CMC_Scene> scene_;
  bool active_ = false;
  bool wasInitiallyUpdated_ = false;
  int retCode_ = kNoCode;
  CXString backgroundFileName_;
  CXString musicFileName_;
  std::unique_ptr<CResourcesManager> resources_;
  CResourcesManager* general_;
  Owned<CRandomPlayable> randomPlayable_;  // while a scene runs

  bool dragging_ = false;
  bool draggingMode_ = false;  // the drag ends with the next click instead of the release
  WeakRef<CGraphicsObject> dragged_;
  WeakRef<CButton> draggedButton_;
  int draggedPriority_ = 0;
  CXPoint dragStart_;
  CXPoint dragPoint_;

  std::vector<Owned<CEditBox6>> editBoxes_;
  WeakRef<CEditBox6> activeBox_;
  WeakRef<CGraphicsObject> cursor_;
};

}  // namespace footlight
