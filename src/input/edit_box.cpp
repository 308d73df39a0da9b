#include "input/edit_box.h"

#include <algorithm>

#include "foundation/arithmetic.h"
#include "foundation/limits.h"
#include "foundation/xtimer.h"
#include "gfx/graphics_object.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "input/button.h"
#include "input/keyboard.h"
#include "text/multiline_text6.h"
#include "text/simple_font.h"

namespace footlight {

namespace {

constexpr int kBlink = 400;  // milliseconds between the caret's changes
constexpr char kLineEnd = '|';

// Texts have codes in these brackets; fonts draw them for other letters.
constexpr char escaped(char character) {
  if (character == '<') return '@';
  return character == '>' ? '$' : character;
}

}  // namespace

CEditBox6::CEditBox6(CWindow* window, CEditBoxUnit* unit, CControlUnit* controls, CXObject* unitObject,
                     CSimpleFont6* font, const CXRect& rect, int priority, CXString text)
    : window_(window),
      unit_(unit),
      unitObject_(unitObject),
      rect_(rect),
      text_(std::move(text)),
      button_(new CButton(window, rect)),
      font_(font),
      display_(new CMultilineText6(window, false, nullptr)) {
  button_->addNotifier(this);
  button_->setUnit(controls, unitObject);
  display_->setFont(font);
  place();
  show();
  display_->Visible(true);
  if (CRefreshScreen* screen = window_->getRefreshScreen()) screen->put(display_.get(), priority);
  window_->registerKeyListener(this);
  window_->registerMouseListener(this, kMousePriority);
}

CEditBox6::~CEditBox6() {
  window_->unregisterKeyListener(this);
  window_->unregisterMouseListener(this);
  stopBlinking();
}

// Notifiers

void CEditBox6::addNotifier(CEditBoxNotifier* notifier, CXObject* object) {
  removeNotifier(notifier);
  notifiers_.push_back({notifier, object});
}

void CEditBox6::removeNotifier(const CEditBoxNotifier* notifier) {
  std::erase_if(notifiers_,
                [&](const Notifier& entry) { return entry.notifier == notifier || !entry.object; });
}

void CEditBox6::notify(int kind) {
  using Event = void (CEditBoxNotifier::*)(CEditBox6*);
  static constexpr Event kEvents[] = {&CEditBoxNotifier::onFocusOn, &CEditBoxNotifier::onFocusOff,
                                      &CEditBoxNotifier::onChanged, &CEditBoxNotifier::onEnter,
                                      &CEditBoxNotifier::onEsc};
  if (kind < 1 || kind > std::ssize(kEvents)) return;
  const Ref<CEditBox6> self(this);
  const std::vector<Notifier> snapshot = notifiers_;
  for (const Notifier& entry : snapshot) {
    const Ref<CXObject> object = entry.object.get();
    if (object && !isDisposed()) (entry.notifier->*kEvents[kind - 1])(this);
  }
}

// The text and its place

void CEditBox6::setText(CXString text) {
  if (text.Length() > limits::kStringBytes) return;
  text_ = std::move(text);
  show();
}

void CEditBox6::show() { display_->setText(text_); }

void CEditBox6::place() {
  display_->setJustify(rect_, _justify::left, _justify::top);
  display_->SetClippingRect({0, 0, rect_.Width(), rect_.Height()});
}

void CEditBox6::setRect(const CXRect& rect) {
  rect_ = rect;
  place();
  display_->Invalidate();
  button_->SetActiveRect(rect_);
  updateCursor();
}

void CEditBox6::setPosition(CXPoint point) {
  setRect({point.x, point.y, wrap_add(point.x, rect_.Width()), wrap_add(point.y, rect_.Height())});
}

void CEditBox6::move(CXPoint distance) { setPosition(rect_.LeftTop() + distance); }

void CEditBox6::setColor(int color) {
  display_->setColor(color);
  display_->Invalidate();
}

void CEditBox6::setPriority(int priority) {
  if (CRefreshScreen* screen = window_->getRefreshScreen()) screen->SetPriority(display_.get(), priority);
}

void CEditBox6::setVisibility(bool visible) { display_->Visible(visible); }

// Whose turn it is

void CEditBox6::activate(bool active) {
  const Ref<CEditBox6> self(this);
  if (active && unit() != nullptr) unit()->onEditBoxActivated(this);
  if (isDisposed()) return;
  active_ = active;
  stopBlinking();
  if (active) {
    cursorPos_ = text_.Length();
    timer_ = window_->GetTimerInterface()->add(kBlink, this);
    updateCursor();
  }
  notify(active ? 1 : 2);
}

void CEditBox6::enable(bool enabled) {
  const Ref<CEditBox6> self(this);
  enabled_ = enabled;
  button_->Enable(enabled);
  if (!active_) return;
  active_ = false;
  stopBlinking();
  notify(2);
}

void CEditBox6::stopBlinking() {
  if (timer_ != 0) window_->GetTimerInterface()->remove(timer_);
  timer_ = 0;
}

void CEditBox6::onTimer(TimerId /*id*/) {
  if (CGraphicsObject* cursor = cursor_.get()) cursor->Visible(!cursor->isVisible());
}

void CEditBox6::onControlAction(CControl* /*control*/, CXPoint /*point*/) {
  if (!active_ && unit() != nullptr) unit()->activateEditBox(this);
}

// Only the box whose turn it is gives it up, so that a click on one box is not undone by all the others.
bool CEditBox6::onClick(CXPoint point) {
  if (unit() != nullptr && unit()->isActiveEditBox(this) && !rect_.IsInRect(point))
    unit()->activateEditBox(nullptr);
  return false;
}

// The caret

int CEditBox6::caret() const { return std::clamp(cursorPos_, 0, text_.Length()); }

void CEditBox6::setCursorPos(int position) {
  cursorPos_ = position;
  updateCursor();
}

int CEditBox6::lengthOf(std::string_view line) const {
  return font_ ? CText6::getLength(font_.get(), line) : 0;
}

// All line ends of the text count, also those behind the caret. A caret that would leave the box stays.
void CEditBox6::updateCursor() {
  CGraphicsObject* cursor = cursor_.get();
  if (cursor == nullptr) return;
  cursor->Invalidate();
  if (caret() == 0) {
    cursor->SetPosition(rect_.left, wrap_add(rect_.top, 1));
  } else {
    constexpr int kOverlap = 4;  // pixels that lines share
    const int lineBegin = text_.FindLast(kLineEnd, caret() - 1) + 1;
    const int x = wrap_add(rect_.left, lengthOf(text_.slice(lineBegin, caret())));
    const int lineHeight = font_ ? wrap_sub(font_->Height(), kOverlap) : 0;
    const int y = wrap_add(wrap_mul(lineHeight, text_.getCount(kLineEnd)), wrap_add(rect_.top, 1));
    if (x < rect_.right) cursor->SetPosition(x, y);
  }
  cursor->Invalidate();
}

// Keys

// By scan code, in ascending order.
struct CEditBox6::Key {
  int code;
  void (CEditBox6::*press)();
};

void CEditBox6::onKeyDown(int key) {
  static constexpr Key kKeys[] = {{1, &CEditBox6::escape}, {14, &CEditBox6::backspace},
                                  {28, &CEditBox6::enter}, {199, &CEditBox6::home},
                                  {203, &CEditBox6::left}, {205, &CEditBox6::right},
                                  {207, &CEditBox6::end},  {211, &CEditBox6::remove}};
  if (!takesKeys() || !window_->getKeyboardInterface()->isTyped(key)) return;
  const auto* found = std::ranges::find(kKeys, key, &Key::code);
  if (found == std::end(kKeys)) return;
  cursorPos_ = caret();
  (this->*found->press)();
}

void CEditBox6::escape() { notify(5); }

void CEditBox6::backspace() {
  if (cursorPos_ == 0) return;
  --cursorPos_;
  remove();
}

void CEditBox6::remove() {
  if (cursorPos_ >= text_.Length()) return;
  text_ = text_.Left(cursorPos_) + text_.slice(cursorPos_ + 1, text_.Length());
  show();
  updateCursor();
}

// A line end goes to the end of the text wherever the caret stands.
void CEditBox6::enter() {
  if (noNewLine_ || text_.Length() >= limits::kStringBytes) return;
  text_ += kLineEnd;
  ++cursorPos_;
  show();
  updateCursor();
  notify(4);
}

void CEditBox6::home() { setCursorPos(0); }
void CEditBox6::left() { setCursorPos(std::max(0, cursorPos_ - 1)); }
void CEditBox6::right() { setCursorPos(std::min(text_.Length(), cursorPos_ + 1)); }
void CEditBox6::end() { setCursorPos(text_.Length()); }

// Characters

void CEditBox6::onChar(unsigned char character) {
  if (!takesKeys() || character == 0 || text_.Length() + 1 >= limits::kStringBytes) return;
  cursorPos_ = caret();
  const char typed = escaped(static_cast<char>(character));
  CXString candidate = text_.Left(cursorPos_);
  candidate += typed;
  candidate += text_.slice(cursorPos_, text_.Length());
  const int lastBar = candidate.FindLast(kLineEnd);
  if (lengthOf(candidate.slice(lastBar + 1, candidate.Length())) <= rect_.Width()) {
    ++cursorPos_;
    text_ = std::move(candidate);
  } else if (noNewLine_) {
    return;
  } else {
    wrap(candidate, lastBar);
  }
  show();
  updateCursor();
  notify(3);
}

// Breaks the last line behind its last blank, else before its last character.
void CEditBox6::wrap(const CXString& candidate, int lastBar) {
  const int blank = candidate.FindLast(' ');
  const int split = blank > lastBar ? blank + 1 : candidate.Length() - 1;
  cursorPos_ += 2;
  text_ = candidate.Left(split);
  text_ += kLineEnd;
  text_ += candidate.slice(split, candidate.Length());
}

}  // namespace footlight
