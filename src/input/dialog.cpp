#include "input/dialog.h"

#include <algorithm>

#include "gfx/graphics_object.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"

namespace footlight {

namespace {

constexpr int kTitleHeight = 30;  // pixels
constexpr int kBackgroundPriority = 100000;
constexpr int kRaise = 100001;

template <class T>
bool contains(const std::vector<WeakRef<T>>& list, const T* object) {
  return std::ranges::any_of(list, [object](const auto& entry) { return entry.get() == object; });
}

}  // namespace

CXDialog::CXDialog(CWindow* window, CControlUnit* unit, CXObject* unitObject)
    : window_(window), unit_(unit), unitObject_(unitObject) {}

std::unique_ptr<CXObject> CXDialog::clone() const {
  auto made = std::make_unique<CXDialog>(window_, unit_, unitObject_.get());
  made->background_ = background_;
  made->dragPoint_ = dragPoint_;
  made->visible_ = visible_;
  made->objects_ = objects_;
  made->buttons_ = buttons_;
  if (titleButton_) {
    made->titleButton_.reset(static_cast<CButton*>(titleButton_->clone().release()));
    made->titleButton_->addNotifier(made.get());
    made->titleButton_->getHotSpot()->EnableCursor(false);
  }
  return made;
}

CXRect CXDialog::titleStrip() const {
  const CXRect box = background_->GetBoundingBox();
  return {box.left, box.top, box.right, wrap_add(box.top, kTitleHeight)};
}

void CXDialog::setBackground(CGraphicsObject* graphics) {
  CRefreshScreen* screen = window_->getRefreshScreen();
  if (graphics == nullptr || screen == nullptr) return;
  background_ = graphics;
  const CXRect strip = titleStrip();
  dragPoint_ = strip.LeftTop();
  titleButton_.reset(new CButton(window_, strip));
  titleButton_->addNotifier(this);
  titleButton_->setUnit(unit_, unitObject_.get());
  titleButton_->Set(graphics, true);
  titleButton_->EnableDragging(true);
  titleButton_->getHotSpot()->EnableCursor(false);
  screen->remove(graphics);
  screen->put(graphics, kBackgroundPriority);
}

void CXDialog::raise(CGraphicsObject* graphics) {
  CRefreshScreen* screen = window_->getRefreshScreen();
  if (graphics == nullptr || screen == nullptr) return;
  const int priority = screen->GetPriority(graphics);
  screen->remove(graphics);
  screen->put(graphics, wrap_add(priority, kRaise));
}

void CXDialog::add(CGraphicsObject* object) {
  if (object == nullptr || contains(objects_, object)) return;
  raise(object);
  objects_.emplace_back(object);
}

void CXDialog::add(CButton* button) {
  if (button == nullptr || contains(buttons_, button)) return;
  for (CGraphicsObject* picture : {button->getStandard(), button->GetSOOnMove(), button->GetSOOnClick()}) {
    raise(picture);
  }
  buttons_.emplace_back(button);
}

void CXDialog::setVisible(bool visible) {
  visible_ = visible;
  for (const auto& object : objects_) {
    if (object) object->Visible(visible);
  }
  for (const auto& button : buttons_) {
    if (button) button->Enable(visible);
  }
  if (titleButton_) titleButton_->Enable(visible);  // its picture is the background
}

void CXDialog::move(CXPoint distance) {
  for (const auto& object : objects_) {
    if (object) object->Move(distance);
  }
  for (const auto& button : buttons_) {
    if (button) button->Move(distance);
  }
}

// The title strip
void CXDialog::onStartDragging(CControl* /*control*/, CXPoint point) { dragPoint_ = point; }

void CXDialog::onDragging(CControl* /*control*/, CXPoint point) {
  move(point - dragPoint_);
  dragPoint_ = point;
}

// A drag disables its button; this one must take the next drag too.
void CXDialog::onEndDragging(CControl* /*control*/, CXPoint /*point*/) {
  if (!titleButton_ || !background_) return;
  titleButton_->SetActiveRect(titleStrip());
  titleButton_->Enable(visible_);
}

}  // namespace footlight
