#include "gfx/virtual_graphics_object.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "gfx/blit_planes.h"
#include "gfx/pixel_format.h"

namespace footlight {

namespace {

void makeReadable(CGraphicsObject& picture) {
  picture.compose();
  picture.DeCompress();
  picture.unpack();
}

bool hasWholeAlpha(const CGraphicsObject& picture) {
  const CXSize size = picture.Size();
  return picture.hasAlpha() && picture.AlphaChannel().size() >= static_cast<std::size_t>(size.width) *
                                                                    static_cast<std::size_t>(size.height);
}

// A block of so many bytes, the old one if it fits and nobody else has it.
void ensureBlock(PixelBlock* block, CXSize size, int bpp) {
  const auto bytes = static_cast<std::size_t>(get_data_size(size.width, size.height, bpp));
  if (block->size() != bytes || block->bpp() != bpp)
    *block = PixelBlock::forPicture(size.width, size.height, bpp);
}

// The alpha plane of a picture of another width, as rows.
struct AlphaRows {
  const std::byte* bytes;
  std::ptrdiff_t pitch;
  const std::byte* at(int x, int y) const { return bytes + y * pitch + x; }
};

AlphaRows rowsOf(const CGraphicsObject& picture) {
  return {picture.AlphaChannel().bytes().data(), picture.Width()};
}

}  // namespace

CVirtualGraphicsObject::~CVirtualGraphicsObject() {
  for (CGraphicsObject* part : CVirtualGraphicsObject::drawnParts()) {
    if (part != nullptr) part->removeInvalidateObserver(this);
  }
}

void CVirtualGraphicsObject::replace(WeakRef<CGraphicsObject>* role, CGraphicsObject* object) {
  if (object != nullptr && closesCircle(*this, *object)) {
    limitHit("a picture that would draw itself");
    return;
  }
  Invalidate();
  CGraphicsObject* before = role->get();
  *role = object;
  if (before != nullptr && before != source() && before != mask()) before->removeInvalidateObserver(this);
  if (object != nullptr) object->addInvalidateObserver(this);
  unpack();
  Invalidate();
}

void CVirtualGraphicsObject::onInvalidate(CGraphicsObject* object, CXRect* rect) {
  if (object != source() && object != mask()) {
    CGraphicsObject::onInvalidate(object, rect);
    return;
  }
  const DepthGuard depth;
  if (!depth) return;
  if (sizeOfParts() != Size()) {
    CGraphicsObject::Invalidate();  // where it was
    unpack();
  }
  Invalidate();
}

CXSize CVirtualGraphicsObject::sizeOfParts() const {
  const CGraphicsObject* shown = source();
  const CGraphicsObject* through = mask();
  if (shown == nullptr) return {};
  if (through == nullptr) return shown->Size();
  return {std::min(shown->Width(), through->Width()), std::min(shown->Height(), through->Height())};
}

void CVirtualGraphicsObject::onDestroy(CGraphicsObject* object) {
  Invalidate();
  CGraphicsObject::onDestroy(object);
}

// The picture

void CVirtualGraphicsObject::unpack() {
  if (!isPrepared_) prepare({0, 0, limits::kPictureSide, limits::kPictureSide});
}

void CVirtualGraphicsObject::redraw(CGraphicsObject* destination) {
  const CompositeGuard guard;
  if (!guard || destination == nullptr) return;
  if (CGraphicsObject* shown = source(); shown != nullptr) {
    makeReadable(*shown);
    shown->Convert(destination->getBpp());
  }
  const CXRect own(0, 0, limits::kPictureSide, limits::kPictureSide);
  prepare(clippingRect_.IsEmpty() ? own : clippingRect_.Common(own));
  isPrepared_ = true;
  CGraphicsObject::redraw(destination);
  isPrepared_ = false;
}

// Brings a part of the picture up to date. Whole planes of the source and the mask are shared where their
// rows are as long as this one's.
void CVirtualGraphicsObject::prepare(const CXRect& part) {
  const Ref<CGraphicsObject> shown = source();
  const Ref<CGraphicsObject> mask = this->mask();
  data_.reset();
  alpha_.reset();
  compression_ = _compression::none;
  const CompositeGuard guard;
  if (shown && guard) makeReadable(*shown);
  if (mask && guard) makeReadable(*mask);
  setSize(sizeOfParts());
  if (!shown || !guard) return;
  const CXRect area = part.Common({0, 0, width_, height_});
  if (shown->getCompression() != _compression::none) return;
  takePixels(*shown, area);
  if (data_) takeAlpha(*shown, mask.get(), area);
}

void CVirtualGraphicsObject::takePixels(CGraphicsObject& source, const CXRect& part) {
  const auto unit = static_cast<std::size_t>(source.GetPixelSize());
  const auto pixels = source.GetDataPtr();
  const auto pitch = static_cast<std::size_t>(source.getPitch()) * unit;
  bpp_ = source.getBpp();
  if (pixels.size() < pitch * static_cast<std::size_t>(source.Height()) || pixels.empty()) return;
  if (source.pixels() && source.Width() == width_) {
    data_ = source.pixels();
    return;
  }
  ensureBlock(&ownPixels_, Size(), bpp_);
  data_ = ownPixels_;
  if (!data_) return;
  for (int y = part.top; y < part.bottom; ++y) {
    const auto row = static_cast<std::size_t>(y);
    const auto left = static_cast<std::size_t>(part.left) * unit;
    std::memcpy(data_.bytes().data() + row * static_cast<std::size_t>(width_) * unit + left,
                pixels.data() + row * pitch + left, static_cast<std::size_t>(part.Width()) * unit);
  }
}

void CVirtualGraphicsObject::takeAlpha(const CGraphicsObject& source, const CGraphicsObject* mask,
                                       const CXRect& part) {
  const CGraphicsObject* first = hasWholeAlpha(source) ? &source : nullptr;
  const CGraphicsObject* second = mask != nullptr && hasWholeAlpha(*mask) ? mask : nullptr;
  if (first == nullptr) std::swap(first, second);
  if (first == nullptr) return;
  if (second == nullptr && first->Width() == width_) {
    alpha_ = first->AlphaChannel();
    return;
  }
  ensureBlock(&ownAlpha_, Size(), 8);
  alpha_ = ownAlpha_;
  if (!alpha_ || part.IsEmpty()) return;
  const auto count = static_cast<std::size_t>(part.Width());
  for (int y = part.top; y < part.bottom; ++y) {
    std::byte* out = alpha_.bytes().data() + std::ptrdiff_t{y} * width_ + part.left;
    const std::byte* a = rowsOf(*first).at(part.left, y);
    if (second != nullptr) {
      blit::multiply(a, rowsOf(*second).at(part.left, y), out, count);
    } else {
      std::memcpy(out, a, count);
    }
  }
}

// Asked often, so only the one place is looked at.
int CVirtualGraphicsObject::GetPixel(_channel channel, CXPoint point) {
  const Ref<CGraphicsObject> shown = source();
  const Ref<CGraphicsObject> mask = this->mask();
  const bool isInside = point.x >= 0 && point.y >= 0 && point.x < width_ && point.y < height_;
  if (channel != _channel::alpha || !shown || !isInside) return 0;
  const auto weight = [&](CGraphicsObject* picture) {
    return picture != nullptr && picture->hasAlpha() ? picture->GetPixel(_channel::alpha, point) : 255;
  };
  const bool isPlain = !shown->hasAlpha() && (!mask || !mask->hasAlpha());
  if (isPlain) return 0;  // as for every picture without an alpha plane
  return blit::product(static_cast<std::uint32_t>(weight(shown.get())),
                       static_cast<std::uint32_t>(weight(mask.get())));
}

}  // namespace footlight
