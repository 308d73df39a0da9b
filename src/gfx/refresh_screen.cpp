#include "gfx/refresh_screen.h"

#include <algorithm>
#include <array>
#include <utility>

#include "gfx/image_file.h"
#include "gfx/screen_unit.h"
#include "gfx/surface.h"
#include "gfx/window.h"

namespace footlight {

namespace {

// Gives an object's clipping rectangle back when a drawing is over.
class ClipKeeper {
 public:
  explicit ClipKeeper(CGraphicsObject* object) : object_(object), kept_(object->GetClippingRect()) {}
  ~ClipKeeper() { object_->SetClippingRect(kept_); }
  ClipKeeper(const ClipKeeper&) = delete;
  ClipKeeper& operator=(const ClipKeeper&) = delete;
  bool hadClip() const { return !kept_.IsEmpty(); }

 private:
  Ref<CGraphicsObject> object_;
  CXRect kept_;
};

}  // namespace

CRefreshScreen::CRefreshScreen(CWindow* window, bool local)
    : CGraphicsObject(window), background_(window, this) {
  setSize(window->GetScreenSize());
  bpp_ = window->GetBpp();
  if (local) localDestiny_.reset(new CDirectDrawSurface(window, Size(), bpp_, false));
}

CRefreshScreen::~CRefreshScreen() = default;

// The list

void CRefreshScreen::put(CGraphicsObject* object, int priority) {
  if (object == nullptr || queue_.find(object) != nullptr) return;
  object->setRefreshOwner(this);
  queue_.add(object, priority, 0);
  Invalidate(object);
}

CRefreshScreen& CRefreshScreen::operator<<(CGraphicsObject* object) {
  put(object, 0);
  return *this;
}

CRefreshScreen& CRefreshScreen::operator>>(CGraphicsObject* object) {
  queue_.remove(object);
  return *this;
}

void CRefreshScreen::SetPriority(CGraphicsObject* object, int priority) {
  if (queue_.find(object) == nullptr) return;
  queue_.remove(object);
  queue_.add(object, priority, 0);
}

int CRefreshScreen::GetPriority(const CGraphicsObject* object) const {
  const CValidationElement* element = queue_.find(object);
  return element != nullptr ? element->priority : -1;
}

int CRefreshScreen::GetFlags(const CGraphicsObject* object) const {
  const CValidationElement* element = queue_.find(object);
  return element != nullptr ? element->flags : 0;
}

bool CRefreshScreen::SetFlags(CGraphicsObject* object, int flags) {
  if (object == nullptr) {
    SetFlags(flags);
    return true;
  }
  CValidationElement* element = queue_.find(object);
  if (element == nullptr) return false;
  element->flags = flags;
  return true;
}

void CRefreshScreen::Visible(bool visible) {
  for (const WeakRef<CGraphicsObject>& object : queue_.objects()) {
    if (object) object->Visible(visible);
  }
}

// What is dirty

void CRefreshScreen::Invalidate(CGraphicsObject* object) {
  if (object == nullptr || !object->isVisible() || queue_.find(object) == nullptr) return;
  CXRect box = object->GetBoundingBox();
  Invalidate(&box);
}

void CRefreshScreen::Invalidate(CXRect* rect) {
  const CXRect dirty = rect == nullptr ? screenRect() : rect->Common(screenRect());
  if (rect != nullptr && dirty.IsEmpty()) return;
  region_.add(&dirty);
  if (isFlipping_) sinceFlip_.add(&dirty);
}

void CRefreshScreen::validateFlipped() {
  std::swap(region_, sinceFlip_);
  sinceFlip_.clear();
}

// A frame

bool CRefreshScreen::Redraw(CDirectDrawSurface* destination, CSurface* /*surface*/, bool* fullRepaint) {
  CScreenUnit* unit = window_->getScreenUnit();
  if (unit == nullptr) return drawFrame(destination);
  const bool isFirst = !unit->wasInitiallyUpdated();
  if (isFirst) {
    if (notifyFlag_) notify(0);
    // The handlers may have ended the scene.
    if (unit == window_->getScreenUnit()) unit->onInitialUpdate();
    window_->Invalidate();
    if (fullRepaint != nullptr) *fullRepaint = true;
  } else {
    unit->onUpdate();
  }
  unit = window_->getScreenUnit();
  const bool result = unit != nullptr && unit->wasInitiallyUpdated() && drawFrame(destination);
  if (isFirst && notifyFlag_) notify(5);
  return result;
}

void CRefreshScreen::Redraw() {
  if (localDestiny_ != nullptr) drawFrame(localDestiny_.get());
}

bool CRefreshScreen::drawFrame(CDirectDrawSurface* destination) {
  if (destination == nullptr) return false;
  // A frame inside a frame: the next one repaints everything.
  if (isDrawing_) {
    wantsRepaint_ = true;
    return false;
  }
  isDrawing_ = true;
  const bool hasDirty = composeFrame(destination);
  isDrawing_ = false;
  return hasDirty;
}

bool CRefreshScreen::composeFrame(CDirectDrawSurface* destination) {
  region_.compact();
  if (std::exchange(wantsRepaint_, false)) Invalidate(static_cast<CXRect*>(nullptr));
  const bool hasDirty = !region_.isEmpty();
  ++frameCount_;
  destSurface_ = destination;
  background_.Redraw(destination, region_);
  const bool tells = notifyFlag_ && !queue_.isEmpty();
  if (tells) notify(1);
  for (const WeakRef<CGraphicsObject>& entry : queue_.objects()) {
    if (const Ref<CGraphicsObject> object = entry.get(); object) drawElement(object.get(), destination);
  }
  if (tells && notifyFlag_) notify(2);
  if ((GetFlags() & kGrayFlag) != 0) destination->ToGrayScale();
  return hasDirty;
}

void CRefreshScreen::drawElement(CGraphicsObject* object, CDirectDrawSurface* destination) {
  if (!object->isVisible()) return;
  if (object->isInvalidated()) {
    drawWhole(object, destination);
  } else {
    drawDirty(object, destination);
  }
}

void CRefreshScreen::drawWhole(CGraphicsObject* object, CDirectDrawSurface* destination) {
  const CXRect shown = object->GetBoundingBox().Common(screenRect());
  if (shown.IsEmpty()) return;
  const ClipKeeper keeper(object);
  object->SetClippingRect(shown - object->GetPosition());
  object->SetDestiny(destination);
  object->Redraw();
}

// A full region draws the object whole. An object with a clipping rectangle of its own is drawn in all of
// that, for each dirty rectangle that touches it. One rectangle that covers the object whole is enough.
void CRefreshScreen::drawDirty(CGraphicsObject* object, CDirectDrawSurface* destination) {
  const auto draw = [&](const CXRect& part) {
    const ClipKeeper keeper(object);
    object->SetDestiny(destination);
    if (!keeper.hadClip()) object->SetClippingRect(part - object->GetPosition());
    object->Redraw();
    return part.Size() == object->Size();
  };
  if (region_.isFull()) {
    draw(object->GetBoundingBox());
    return;
  }
  // The region is asked again for each: an object may invalidate something, or move, while it draws.
  const auto next = [&](int from) { return region_.findFrom(from, object->GetBoundingBox()); };
  for (int place = next(0); place >= 0; place = next(place + 1)) {
    if (draw(region_.at(place).Common(object->GetBoundingBox()))) return;
  }
}

CGraphicsObject* CRefreshScreen::getGraphicsAt(int px, int py, bool visibleOnly, int minPriority,
                                               int maxPriority, bool ignoreAlpha) {
  int best = -1;
  CGraphicsObject* found = nullptr;
  const CXPoint point(px, py);
  for (const auto& element : queue_.elements()) {
    CGraphicsObject* object = element->object.get();
    const int priority = element->priority;
    if (object == nullptr || (visibleOnly && !object->isVisible()) ||
        (minPriority > -1 && priority < minPriority) || (maxPriority > -1 && priority > maxPriority) ||
        !object->GetBoundingBox().IsInRect(point)) {
      continue;
    }
    const bool hit = ignoreAlpha || !object->hasAlpha() ||
                     object->GetPixel(_channel::alpha, object->ClientCoords(point)) != 0;
    if (hit && priority >= best) {
      best = priority;
      found = object;
    }
  }
  return found;
}

// Notifiers

void CRefreshScreen::addObserver(CCanvasObserver* notifier, CXObject* object) {
  notifiers_.push_back({notifier, object});
}

void CRefreshScreen::removeNotifier(const CCanvasObserver* notifier) {
  const auto found =
      std::ranges::find_if(notifiers_, [&](const Notifier& entry) { return entry.notifier == notifier; });
  if (found != notifiers_.end()) notifiers_.erase(found);
}

void CRefreshScreen::notify(int event) {
  using Call = void (CCanvasObserver::*)();
  constexpr std::array<Call, 6> kCalls = {
      &CCanvasObserver::onInitialUpdate, &CCanvasObserver::onUpdate,   &CCanvasObserver::onUpdated,
      &CCanvasObserver::onFocusOn,       &CCanvasObserver::onFocusOff, &CCanvasObserver::onInitialUpdated,
  };
  if (event < 0 || event >= static_cast<int>(kCalls.size())) return;
  const std::vector<Notifier> snapshot = notifiers_;
  for (const Notifier& entry : snapshot) {
    const Ref<CXObject> object = entry.object.get();
    const bool listed =
        std::ranges::any_of(notifiers_, [&](const Notifier& n) { return n.notifier == entry.notifier; });
    if (object && listed) (entry.notifier->*kCalls[static_cast<std::size_t>(event)])();
  }
  std::erase_if(notifiers_, [](const Notifier& entry) { return !entry.object; });
}

void CRefreshScreen::onFocusOn() {
  if (notifyFlag_) notify(3);
}

void CRefreshScreen::onFocusOff() {
  if (notifyFlag_) notify(4);
}

// Background and saving

void CRefreshScreen::SetBackground(const CXString& fileName) {
  CImageFile file(window_);
  file.Load(fileName);
  backgroundImage_ = file.takeObject();
  background_.SetBackground(backgroundImage_.get());
}

int CRefreshScreen::Save(const CXString& name, _compression compression) {
  CDirectDrawSurface* frame = destSurface_.get();
  return frame != nullptr ? frame->Save(name, compression) : LastError();
}

}  // namespace footlight
