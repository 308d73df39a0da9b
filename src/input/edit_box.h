#pragma once

// A box to type in: a text on the screen, a click area over it, and a caret picture that blinks while what is
// typed goes here. At most one box of a unit is active.
//
// The font, the caret and the unit belong to others and are kept weakly. Observers run scripts and may end
// the box.

#include <vector>

#include "foundation/geometry.h"
#include "foundation/timer_notificator.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"
#include "input/control.h"
#include "input/key_listener.h"
#include "input/mouse_listener.h"

namespace footlight {

class CButton;
class CControlUnit;
class CEditBox6;
class CGraphicsObject;
class CMultilineText6;
class CSimpleFont6;
class CWindow;

class CEditBoxNotifier {
 public:
  virtual ~CEditBoxNotifier() = default;
  virtual void onFocusOn(CEditBox6* /*box*/) {}
  virtual void onFocusOff(CEditBox6* /*box*/) {}
  virtual void onChanged(CEditBox6* /*box*/) {}
  virtual void onEnter(CEditBox6* /*box*/) {}
  virtual void onEsc(CEditBox6* /*box*/) {}
};

// The unit that the boxes of a scene belong to.
class CEditBoxUnit {
 public:
  virtual ~CEditBoxUnit() = default;
  // Ends the active box's turn and begins that of the given one; null: nobody is active.
  virtual void activateEditBox(CEditBox6* box) = 0;
  // A box has been made active by itself: another that is active ends its turn.
  virtual void onEditBoxActivated(CEditBox6* box) = 0;
  virtual bool isActiveEditBox(const CEditBox6* box) const = 0;
};

class CEditBox6 final : public CXObject,
                        public CKeyListener,
                        public CControlNotifier,
                        public CMouseListener,
                        public CTimerNotificator {
 public:
  // One below the scripts' mouse.
  static constexpr int kMousePriority = 100001;

  // `T` is the unit and the engine object whose end is the unit's. The text goes on the screen with that
  // priority; the rectangle is in pixels of the screen.
  template <class T>
  CEditBox6(CWindow* window, T* unit, CSimpleFont6* font, const CXRect& rect, int priority, CXString text)
      : CEditBox6(window, unit, unit, unit, font, rect, priority, std::move(text)) {}
  ~CEditBox6() override;

  // A "|" is the end of a line. The caret stays where it is.
  void setText(CXString text);
  const CXString& getText() const { return text_; }
  void setCursor(CGraphicsObject* cursor) { cursor_ = cursor; }
  // Begins its turn with the caret at the end, or ends it.
  void activate(bool active);
  bool isActive() const { return active_; }
  void setVisibility(bool visible);
  // A box that is off takes neither clicks nor keys.
  void enable(bool enabled);
  bool isEnabled() const { return enabled_; }
  // Nobody is listed twice. `T` is the notifier and the engine object whose end ends the listening.
  template <class T>
  void addNotifier(T* notifier) {
    addNotifier(notifier, notifier);
  }
  void removeNotifier(const CEditBoxNotifier* notifier);
  // Calls the n-th operation of the notifiers, from 1; nothing for any other number.
  void notify(int kind);
  // A 16-bit pixel.
  void setColor(int color);
  void setPosition(CXPoint point);
  void setRect(const CXRect& rect);
  void move(CXPoint distance);
  // In characters from the text's begin; outside of the text it stands for the nearer end.
  void setCursorPos(int position);
  void setPriority(int priority);
  const CXRect& getBoundingRect() const { return rect_; }
  // Without keys: neither typing nor moving the caret has an effect.
  void setReadOnly(bool readOnly) { readOnly_ = readOnly; }
  // A box of one line: Enter does nothing, and a full line takes no more.
  void setNoNewLine(bool noNewLine) { noNewLine_ = noNewLine; }

  void onKeyDown(int key) override;
  void onChar(unsigned char character) override;
  void onControlAction(CControl* control, CXPoint point) override;
  using CMouseListener::onClick;
  bool onClick(CXPoint point) override;
  void onTimer(TimerId id) override;

 private:
  struct Notifier {
    CEditBoxNotifier* notifier;
    WeakRef<CXObject> object;
  };
  struct Key;

  CEditBox6(CWindow* window, CEditBoxUnit* unit, CControlUnit* controls, CXObject* unitObject,
            CSimpleFont6* font, const CXRect& rect, int priority, CXString text);
  void addNotifier(CEditBoxNotifier* notifier, CXObject* object);
  CEditBoxUnit* unit() const { return unitObject_ ? unit_ : nullptr; }
  bool takesKeys() const { return enabled_ && active_ && !readOnly_; }
  int caret() const;
  void place();
  void show();
  void updateCursor();
  void stopBlinking();
  int lengthOf(std::string_view line) const;
  void insert(std::string_view candidate);
  void wrap(const CXString& candidate, int lastBar);

  void escape();
  void backspace();
  void enter();
  void home();
  void left();
  void right();
  void end();
  void remove();

  CWindow* window_;
  CEditBoxUnit* unit_;
  WeakRef<CXObject> unitObject_;
  bool active_ = false;
  int cursorPos_ = 0;
  WeakRef<CGraphicsObject> cursor_;
  CXRect rect_;
  CXString text_;
  Owned<CButton> button_;
  WeakRef<CSimpleFont6> font_;
  Owned<CMultilineText6> display_;
  std::vector<Notifier> notifiers_;
  bool readOnly_ = false;
  bool noNewLine_ = false;
  bool enabled_ = true;
  TimerId timer_ = 0;
};

}  // namespace footlight
