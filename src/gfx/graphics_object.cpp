#include "gfx/graphics_object.h"

#include <algorithm>

#include "foundation/arithmetic.h"
#include "foundation/depth.h"
#include "gfx/blit.h"
#include "gfx/collision_inspector.h"
#include "gfx/pixel_format.h"
#include "gfx/refresh_screen.h"
#include "gfx/validation_quene.h"
#include "gfx/window.h"

namespace footlight {

CGraphicsObject::CGraphicsObject(CWindow* window) : window_(window) {}

CGraphicsObject::CGraphicsObject(CWindow* window, CXSize size, int bpp) : window_(window), bpp_(bpp) {
  setSize(size);
  Alloc();
}

CGraphicsObject::CGraphicsObject(CWindow* window, CXSize size, PixelBlock pixels)
    : window_(window), bpp_(pixels.bpp()), data_(std::move(pixels)) {
  setSize(size);
}

CGraphicsObject::CGraphicsObject(CWindow* window, const CGraphicsObject& source)
    : fileName_(source.fileName_),
      window_(window),
      position_(source.position_),
      width_(source.width_),
      height_(source.height_),
      pitch_(source.width_),
      bpp_(source.getBpp()),
      data_(source.shareablePixels()),
      alpha_(source.alpha_),
      compression_(source.compression_),
      clippingRect_(source.clippingRect_),
      opacity_(source.opacity_),
      flags_(source.flags_),
      autoClip_(source.autoClip_),
      viewport_(source.viewport_),
      alphaAsMask_(source.alphaAsMask_),
      unpacked_(source.unpacked_),
      packedData_(source.packedData_),
      packedAlpha_(source.packedAlpha_) {}

CGraphicsObject::~CGraphicsObject() {
  if (CRefreshScreen* owner = getRefreshOwner(); owner != nullptr) owner->remove(this);
  removeAllObjects();
  tellObservers([this](CInvalidateObserver* observer) { observer->onDestroy(this); });
}

std::unique_ptr<CXObject> CGraphicsObject::clone() const {
  return std::make_unique<CGraphicsObject>(window_, *this);
}

// Drawing

void CGraphicsObject::redraw(CGraphicsObject* destination) {
  if (destination == nullptr || !data_) return;
  destination->unpack();
  const std::span<std::byte> target = destination->GetDataPtr();
  if (target.empty()) return;
  unpack();
  Convert(destination->getBpp());
  if (!hasPlainPixels() || !clipTo({destination->Width(), destination->Height()})) return;

  const _canvas from{data_.bytes(), plainAlpha(), getBpp(), position_.x,
                     position_.y,   width_,       height_,  clippingRect_};
  const _canvas to{target, destination->plainAlpha(), destination->getBpp(), 0,
                   0,      destination->pitch_,       destination->Height(), viewport_};
  blit::compose(from, to, opacity_, alphaAsMask_);
}

// Narrows the clipping rectangle to what the destination shows of the object; false when that is nothing.
bool CGraphicsObject::clipTo(CXSize destination) {
  const std::int64_t x = position_.x;
  const std::int64_t y = position_.y;
  if (x + width_ <= 0 || y + height_ <= 0 || x >= destination.width || y >= destination.height) return false;
  if (!autoClip_) return true;
  const CXRect shown(static_cast<int>(std::max<std::int64_t>(0, -x)),
                     static_cast<int>(std::max<std::int64_t>(0, -y)),
                     static_cast<int>(std::min<std::int64_t>(width_, destination.width - x)),
                     static_cast<int>(std::min<std::int64_t>(height_, destination.height - y)));
  if (shown.IsEmpty()) return false;
  if (clippingRect_.IsEmpty()) {
    clippingRect_ = shown;
    return true;
  }
  clippingRect_.Set(std::max(clippingRect_.left, shown.left), std::max(clippingRect_.top, shown.top),
                    std::min(clippingRect_.right, shown.right), std::min(clippingRect_.bottom, shown.bottom));
  return clippingRect_.left < clippingRect_.right && clippingRect_.top < clippingRect_.bottom;
}

void CGraphicsObject::Redraw() {
  const DepthGuard depth;
  if (!depth) return;
  drawChildren();
  redraw(destiny_.get());
}

void CGraphicsObject::Convert(int toBpp) {
  if (!hasPlainPixels()) return;
  const int from = data_.bpp();
  const auto to = [&](int bpp) {
    if (blit::convert_bpp(data_.bytes(), from, bpp)) data_.setBpp(bpp);
  };
  if ((toBpp == 24 || toBpp == 32) && from == 15) to(16);
  if (toBpp < 24 && toBpp != from && pixelCount() > 3) to(toBpp);
}

// Place

void CGraphicsObject::setSize(CXSize size) {
  width_ = std::max(0, size.width);
  height_ = std::max(0, size.height);
  pitch_ = width_;
}

void CGraphicsObject::SetPosition(int px, int py) {
  position_ = CXPoint(px, py) - anchor_;
  reportMove();
}

void CGraphicsObject::Move(int dx, int dy) {
  CXRect area = GetBoundingBox();
  position_ = position_ + CXPoint(dx, dy);
  area.Sum(GetBoundingBox());
  if (CRefreshScreen* owner = getRefreshOwner(); owner != nullptr) owner->Invalidate(&area);
  invalidated_ = true;
  reportMove();
}

void CGraphicsObject::reportMove() {
  CCollisionInspector* inspector =
      monitorCollisions_ && window_ != nullptr ? window_->getCollisionInspector() : nullptr;
  if (inspector != nullptr) inspector->onPositionChanged(this);
}

CXRect CGraphicsObject::GetAbsoluteBoundingBox() const {
  const CXRect box = getRect();
  return clippingRect_.IsEmpty() ? box : box.Common(clippingRect_ + position_);
}

CXRect CGraphicsObject::GetBoundingBox() const {
  CXRect box = getRect();
  box.left = std::max(box.left, 0);
  box.top = std::max(box.top, 0);
  if (const CGraphicsObject* destiny = destiny_.get(); destiny != nullptr) {
    box.right = std::min(box.right, destiny->Width());
    box.bottom = std::min(box.bottom, destiny->Height());
  }
  return clippingRect_.IsEmpty() ? box : box.Common(clippingRect_ + position_);
}

void CGraphicsObject::FitRect(const CXRect& rect) {
  position_.x = wrap_add(wrap_sub(wrap_sub(rect.right, width_), rect.left) / 2, rect.left);
  position_.y = wrap_add(wrap_sub(wrap_sub(rect.bottom, height_), rect.top) / 2, rect.top);
}

bool CGraphicsObject::isNear(CXRect rect, int percent) const {
  const CXRect own = GetBoundingBox();
  const CXRect common = own.Common(rect);
  const auto area = [](const CXRect& r) { return static_cast<double>(r.Width()) * r.Height(); };
  return area(own) != 0 && area(common) * 100.0 / area(own) >= percent;
}

bool CGraphicsObject::isNear(CGraphicsObject* object, int percent) const {
  return object != nullptr && isNear(object->GetBoundingBox(), percent);
}

// Pixels

bool CGraphicsObject::isAt(CXPoint point, bool useAlpha) {
  if (!GetBoundingBox().IsInRect(point)) return false;
  return !useAlpha || GetPixel(_channel::alpha, ClientCoords(point)) > 0;
}

bool CGraphicsObject::isInside(int px, int py, bool useAlpha) { return isAt({px, py}, useAlpha); }

bool CGraphicsObject::testHit(CXPoint point) { return isAt(point, hasAlpha()); }

int CGraphicsObject::GetPixelSize() const { return get_pixel_size(getBpp()); }

int CGraphicsObject::GetPixel(_channel channel, CXPoint point) {
  if (channel != _channel::alpha) return 0;  // the colour planes are not in use
  const bool wasPacked = compression_ == _compression::rle;
  unpack();
  const std::int64_t index = std::int64_t{point.y} * width_ + point.x;
  const auto plane = alpha_.bytes();
  const bool inside = index >= 0 && index < static_cast<std::int64_t>(plane.size());
  const int value = inside ? std::to_integer<int>(plane[static_cast<std::size_t>(index)]) : 0;
  if (wasPacked) pack(true);
  return value;
}

CColor CGraphicsObject::GetPixel(int px, int py) {
  const std::span<std::byte> pixels = GetDataPtr();
  const std::int64_t index = std::int64_t{py} * pitch_ + px;
  const bool inside = px >= 0 && py >= 0 && px < width_ && py < height_ &&
                      (index + 1) * GetPixelSize() <= static_cast<std::int64_t>(pixels.size());
  if (!inside || compression_ != _compression::none) return CColor(0, 0, 0);
  const auto at = static_cast<std::size_t>(index);
  switch (getBpp()) {
    case 15:
      return {reinterpret_cast<const std::uint16_t*>(pixels.data())[at], _colormodel::bpp15};
    case 16:
      return {reinterpret_cast<const std::uint16_t*>(pixels.data())[at], _colormodel::bpp16};
    case 24: {
      const auto channel = [&](std::size_t i) { return std::to_integer<int>(pixels[at * 3 + i]); };
      return CColor(channel(0), channel(1), channel(2));
    }
    default:
      return CColor(0, 0, 0);
  }
}

void CGraphicsObject::SetPixel(int px, int py, const CColor& colour) {
  const bool inside = px >= 0 && py >= 0 && px < width_ && py < height_;
  const std::span<std::byte> pixels = GetDataPtr();
  const std::int64_t index = std::int64_t{py} * pitch_ + px;
  if (!inside || GetPixelSize() != 2 || compression_ != _compression::none ||
      (index + 1) * 2 > static_cast<std::int64_t>(pixels.size())) {
    return;
  }
  reinterpret_cast<std::uint16_t*>(pixels.data())[index] =
      static_cast<std::uint16_t>(colour.Convert(_colormodel::bpp15));
}

std::span<std::byte> CGraphicsObject::plainAlpha() const {
  return alpha_.size() >= pixelCount() ? alpha_.bytes() : std::span<std::byte>();
}

void CGraphicsObject::link(const CGraphicsObject& other) {
  position_ = other.position_;
  setSize(other.Size());
  data_ = other.data_;
  alpha_ = other.alpha_;
  bpp_ = other.getBpp();
  compression_ = other.compression_;
  unpacked_ = other.unpacked_;
  packedData_ = other.packedData_;
  packedAlpha_ = other.packedAlpha_;
  if (backup_) backup_ = hasPlainPixels() ? data_.copy() : PixelBlock();
}

void CGraphicsObject::SetOpacity(std::uint8_t opacity) {
  opacity_ = opacity;
  Invalidate();
}

void CGraphicsObject::AddOpacity(int delta) {
  opacity_ = static_cast<std::uint8_t>(std::clamp<std::int64_t>(std::int64_t{opacity_} + delta, 0, 255));
}

// Redrawing and observers

void CGraphicsObject::Visible(bool visible) {
  if (window_ != nullptr) visible_ = visible;
  Invalidate();
}

void CGraphicsObject::Invalidate() {
  const DepthGuard depth;
  if (!depth) return;
  CXRect box = GetBoundingBox();
  if (CRefreshScreen* owner = getRefreshOwner(); owner != nullptr) owner->Invalidate(&box);
  notifyInvalidate(&box);
  invalidated_ = true;
}

void CGraphicsObject::Invalidate(CXRect* rect) {
  const DepthGuard depth;
  if (!depth || rect == nullptr) return;
  CXRect box = GetBoundingBox().Common(*rect);
  if (box.IsEmpty()) return;
  if (CRefreshScreen* owner = getRefreshOwner(); owner != nullptr) owner->Invalidate(&box);
  notifyInvalidate(&box);
  invalidated_ = true;
}

// Observers may come and go while they are told.
template <class Call>
void CGraphicsObject::tellObservers(Call call) {
  if (observers_.empty()) return;
  const std::vector<Observer> snapshot = observers_;
  for (const Observer& entry : snapshot) {
    if (const Ref<CXObject> object = entry.object.get(); object) call(entry.observer);
  }
  std::erase_if(observers_, [](const Observer& entry) { return !entry.object; });
}

void CGraphicsObject::addObserver(CInvalidateObserver* observer, CXObject* object) {
  const bool listed =
      std::ranges::any_of(observers_, [&](const Observer& entry) { return entry.observer == observer; });
  if (!listed) observers_.push_back({observer, object});
}

void CGraphicsObject::removeInvalidateObserver(const CInvalidateObserver* observer) {
  std::erase_if(observers_, [&](const Observer& entry) { return entry.observer == observer; });
}

void CGraphicsObject::notifyInvalidate(CXRect* rect) {
  tellObservers([&](CInvalidateObserver* observer) { observer->onInvalidate(this, rect); });
}

void CGraphicsObject::onInvalidate(CGraphicsObject* /*object*/, CXRect* rect) { Invalidate(rect); }

void CGraphicsObject::onDestroy(CGraphicsObject* object) {
  removeInvalidateObserver(object);
  removeObject(object);
  dropChildrenIfNone();
}

void CGraphicsObject::setRefreshOwner(CRefreshScreen* owner) { refreshOwner_ = owner; }

CRefreshScreen* CGraphicsObject::getRefreshOwner() const {
  return static_cast<CRefreshScreen*>(refreshOwner_.get());
}

}  // namespace footlight
