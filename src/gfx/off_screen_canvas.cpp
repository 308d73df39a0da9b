#include "gfx/off_screen_canvas.h"

#include <algorithm>
#include <utility>

#include "gfx/blit_planes.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"

namespace footlight {

namespace {

constexpr int kBufferPriority = -1;

// An alpha plane that is taken off others; without bytes it is opaque.
struct Eraser {
  PixelBlock alpha;
  int width;
  CXPoint place;
};

void lessenAlpha(CGraphicsObject& target, const Eraser& eraser, const CXRect& area) {
  const auto plane = target.AlphaChannel().bytes();
  const auto count = static_cast<std::size_t>(area.Width());
  for (int y = area.top; y < area.bottom; ++y) {
    std::byte* row = plane.data() + std::int64_t{y} * target.Width() + area.left;
    const std::int64_t from = std::int64_t{y - eraser.place.y} * eraser.width + (area.left - eraser.place.x);
    if (eraser.alpha) {
      blit::lessen(row, eraser.alpha.bytes().data() + from, count);
    } else {
      std::fill_n(row, count, std::byte{0});
    }
  }
}

bool covers(const PixelBlock& alpha, CXSize size) {
  return alpha.size() >= static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

}  // namespace

CCanvas::CCanvas(CWindow* window, CXSize size, int bpp, bool alpha, bool buffered)
    : CGraphicsObject(window, size, bpp) {
  if (alpha && data_) alpha_ = PixelBlock::forPicture(width_, height_, 8);
  if (!buffered || !data_) return;
  buffer_.reset(new CGraphicsObject(window, Size(), bpp));
  if (alpha) buffer_->AlphaChannel(PixelBlock::forPicture(width_, height_, 8));
  listBuffer();
}

CCanvas::~CCanvas() {
  for (CGraphicsObject* object : CCanvas::drawnParts()) object->removeInvalidateObserver(this);
}

void CCanvas::listBuffer() {
  if (buffer_ != nullptr) CCanvas::add(buffer_.get(), kBufferPriority);
}

// What is drawn on it

void CCanvas::add(CGraphicsObject* object, int priority) {
  if (object == nullptr || objects_.find(object) != nullptr) return;
  if (closesCircle(*this, *object)) {
    limitHit("a picture that would draw itself");
    return;
  }
  objects_.add(object, priority, 0);
  object->addInvalidateObserver(this);
  object->SetDestiny(this);
  object->Invalidate();
}

void CCanvas::remove(CGraphicsObject* object) {
  if (object == nullptr || objects_.find(object) == nullptr) return;
  object->removeInvalidateObserver(this);
  objects_.remove(object);
  showAgain(object->GetBoundingBox());
}

void CCanvas::removeAll() {
  for (CGraphicsObject* object : drawnParts()) object->removeInvalidateObserver(this);
  objects_.removeAll();
  listBuffer();
}

std::vector<CGraphicsObject*> CCanvas::drawnParts() const {
  std::vector<CGraphicsObject*> parts;
  for (const auto& element : objects_.elements()) {
    if (CGraphicsObject* object = element->object.get()) parts.push_back(object);
  }
  return parts;
}

void CCanvas::showAgain(CXRect rect) {
  rect += position_;
  if (CRefreshScreen* screen = getRefreshOwner()) screen->Invalidate(&rect);
  notifyInvalidate(&rect);
}

void CCanvas::onInvalidate(CGraphicsObject* object, CXRect* rect) {
  const DepthGuard depth;
  if (!depth || rect == nullptr) return;
  if (objects_.find(object) == nullptr) {
    CGraphicsObject::onInvalidate(object, rect);
  } else if (++regionCount_ < maxRegions) {
    showAgain(*rect);
  } else if (!invalidated_) {
    Invalidate();
  }
}

void CCanvas::onDestroy(CGraphicsObject* object) {
  objects_.dropEnded();
  CGraphicsObject::onDestroy(object);
}

// Drawing

void CCanvas::clearArea(CGraphicsObject& picture, const CXRect& area) {
  const auto wipe = [&](std::span<std::byte> plane, std::size_t unit) {
    const std::size_t rowBytes = static_cast<std::size_t>(picture.Width()) * unit;
    if (plane.size() < rowBytes * static_cast<std::size_t>(picture.Height())) return;
    for (int y = area.top; y < area.bottom; ++y)
      std::fill_n(
          plane.data() + static_cast<std::size_t>(y) * rowBytes + static_cast<std::size_t>(area.left) * unit,
          static_cast<std::size_t>(area.Width()) * unit, std::byte{0});
  };
  wipe(picture.pixels().bytes(), static_cast<std::size_t>(picture.GetPixelSize()));
  wipe(picture.AlphaChannel().bytes(), 1);
}

void CCanvas::clear(bool alsoBuffer) {
  const CXRect whole(0, 0, width_, height_);
  const CXRect area = clippingRect_.IsEmpty() ? whole : clippingRect_.Common(whole);
  if (!data_ || area.left >= area.right || area.top >= area.bottom) return;
  clearArea(*this, area);
  if (alsoBuffer && buffer_ != nullptr) clearArea(*buffer_, area);
}

void CCanvas::compose() {
  const CompositeGuard guard;
  if (!guard || !data_) return;
  clear(false);
  for (const WeakRef<CGraphicsObject>& entry : objects_.objects()) {
    const Ref<CGraphicsObject> object = entry.get();
    if (object && object->isVisible()) drawPart(*object);
  }
}

void CCanvas::drawPart(CGraphicsObject& object) {
  const CXRect kept = object.GetClippingRect();
  if (!clippingRect_.IsEmpty()) {
    const CXRect part = clippingRect_.Common(object.GetBoundingBox());
    if (part.left >= part.right || part.top >= part.bottom) return;
    object.SetClippingRect(part - object.GetPosition());
  }
  object.SetDestiny(this);
  object.Redraw();
  object.SetClippingRect(kept);
}

void CCanvas::Redraw() {
  compose();
  CGraphicsObject::Redraw();
  regionCount_ = 0;
}

// What stays

void CCanvas::capture() {
  if (buffer_ == nullptr) return;
  objects_.remove(buffer_.get());
  const CXPoint place = std::exchange(position_, {});
  const std::uint8_t opacity = std::exchange(opacity_, std::uint8_t{255});
  const CXRect clip = std::exchange(clippingRect_, {});
  SetDestiny(buffer_.get());
  Redraw();
  position_ = place;
  opacity_ = opacity;
  clippingRect_ = clip;
  SetDestiny(window_ != nullptr ? window_->getRefreshScreen() : nullptr);
  removeAll();
  Invalidate();
}

void CCanvas::draw(CGraphicsObject* object, int x, int y) {
  if (buffer_ == nullptr || object == nullptr || object == buffer_.get()) return;
  {
    const DrawnElsewhere elsewhere(object, {x, y}, buffer_.get());
    object->setInvalidated(true);
    object->SetClippingRect({});
    object->Redraw();
  }
  showAgain(CXRect(x, y, wrap_add(x, object->Width()), wrap_add(y, object->Height())));
}

void CCanvas::erase(CGraphicsObject* object, int x, int y) {
  if (buffer_ == nullptr || object == nullptr) return;
  object->DeCompress();
  object->unpack();
  const CXPoint place(std::max(x, 0), std::max(y, 0));
  const CXRect area(
      place.x, place.y,
      static_cast<int>(std::min<std::int64_t>(width_, std::int64_t{place.x} + object->Width())),
      static_cast<int>(std::min<std::int64_t>(height_, std::int64_t{place.y} + object->Height())));
  if (area.left >= area.right || area.top >= area.bottom) return;
  Eraser eraser{object->AlphaChannel(), object->Width(), place};
  if (eraser.alpha && !covers(eraser.alpha, object->Size())) return;
  for (CGraphicsObject* picture : {static_cast<CGraphicsObject*>(this), buffer_.get()}) {
    if (eraser.alpha.shares(picture->AlphaChannel())) eraser.alpha = eraser.alpha.copy();
  }
  for (CGraphicsObject* picture : {static_cast<CGraphicsObject*>(this), buffer_.get()}) {
    if (covers(picture->AlphaChannel(), Size())) lessenAlpha(*picture, eraser, area);
  }
  showAgain(area);
}

}  // namespace footlight
