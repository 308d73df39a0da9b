// What one graphic object does to another's planes: sub-objects, and the merging of alpha planes.

#include <algorithm>

#include "foundation/depth.h"
#include "gfx/blit.h"
#include "gfx/graphics_object.h"
#include "gfx/validation_quene.h"

namespace footlight {

// Sub-objects

// The last one takes the picture without sub-objects with it: what is drawn now stays, and edits count again.
void CGraphicsObject::dropChildrenIfNone() {
  if (children_ == nullptr) return;
  children_->dropEnded();
  if (!children_->isEmpty()) return;
  children_.reset();
  backup_.reset();
}

void CGraphicsObject::addObject(CGraphicsObject* object, int priority) {
  if (object == nullptr) return;
  dropChildrenIfNone();
  if (children_ == nullptr) children_ = std::make_unique<CValidationQuene>();
  if (children_->find(object) == nullptr) children_->add(object, priority, 0);
  object->addInvalidateObserver(this);
  unpack();
  if (!backup_ && hasPlainPixels()) backup_ = data_.copy();
}

void CGraphicsObject::removeObject(const CGraphicsObject* object) {
  if (children_ == nullptr || children_->find(object) == nullptr) return;
  children_->remove(object);
  dropChildrenIfNone();
}

void CGraphicsObject::removeAllObjects() {
  if (children_ == nullptr) return;
  for (const WeakRef<CGraphicsObject>& child : children_->objects()) {
    if (child) child->removeInvalidateObserver(this);
  }
  children_.reset();
}

void CGraphicsObject::drawChildren() {
  dropChildrenIfNone();
  if (backup_ && hasPlainPixels() && backup_.size() == data_.size()) {
    if (backup_.bpp() != data_.bpp() && blit::convert_bpp(backup_.bytes(), backup_.bpp(), data_.bpp())) {
      backup_.setBpp(data_.bpp());
    }
    std::ranges::copy(backup_.bytes(), data_.bytes().begin());
  }
  if (children_ == nullptr) return;
  for (const WeakRef<CGraphicsObject>& entry : children_->objects()) {
    const Ref<CGraphicsObject> child = entry.get();
    if (!child) continue;
    const CXRect clip = child->GetClippingRect();
    child->redraw(this);
    child->SetClippingRect(clip);
  }
}

// Alpha planes

namespace {

// Copies rows of a plane between places that the caller has checked.
void copyRows(std::byte* target, std::ptrdiff_t targetStride, const std::byte* source,
              std::ptrdiff_t sourceStride, CXSize size) {
  for (int y = 0; y < size.height; ++y)
    std::copy_n(source + y * sourceStride, size.width, target + y * targetStride);
}

}  // namespace

void CGraphicsObject::restoreAlpha(CGraphicsObject* other) {
  if (other == nullptr || other->mergeSaved_.empty()) return;
  unpack();
  const CXRect rect = other->mergeRect_;
  const auto plane = plainAlpha();
  if (plane.empty() || !rect.IsPartOf({0, 0, width_, height_})) return;  // it was saved from another object
  copyRows(plane.data() + std::ptrdiff_t{rect.top} * width_ + rect.left, width_, other->mergeSaved_.data(),
           rect.Width(), rect.Size());
  CXRect shown = rect + position_;
  Invalidate(&shown);
}

void CGraphicsObject::mergeAlpha(CXPoint point, CGraphicsObject* other) {
  if (other == nullptr) return;
  unpack();
  other->unpack();
  restoreAlpha(other);
  other->mergeSaved_.clear();
  const auto plane = plainAlpha();
  const auto patch = other->plainAlpha();
  const CXRect place =
      CXRect(point.x, point.y, wrap_add(point.x, other->width_), wrap_add(point.y, other->height_));
  const CXRect rect = place.Common({0, 0, width_, height_});
  if (plane.empty() || patch.empty() || rect.IsEmpty() || place.right < place.left ||
      place.bottom < place.top)
    return;
  other->mergeRect_ = rect;
  other->mergeSaved_.resize(static_cast<std::size_t>(rect.Width()) * static_cast<std::size_t>(rect.Height()));
  std::byte* covered = plane.data() + std::ptrdiff_t{rect.top} * width_ + rect.left;
  copyRows(other->mergeSaved_.data(), rect.Width(), covered, width_, rect.Size());
  const std::ptrdiff_t offset = std::ptrdiff_t{rect.top - point.y} * other->width_ + (rect.left - point.x);
  copyRows(covered, width_, patch.data() + offset, other->width_, rect.Size());
  CXRect shown = rect + position_;
  Invalidate(&shown);
}

void CGraphicsObject::mergeAlpha2(CXPoint point, CGraphicsObject* other, bool reset) {
  if (other == nullptr) return;
  unpack();
  other->unpack();
  const auto plane = plainAlpha();
  const auto patch = other->plainAlpha();
  if (plane.empty()) return;
  if (reset) std::ranges::fill(plane, std::byte{255});
  CXRect box = other->GetBoundingBox();
  const int columns = std::min(box.Width(), other->width_);
  const int rows = std::min(box.Height(), other->height_);
  for (int j = 0; j < rows && !patch.empty(); ++j) {
    for (int i = 0; i < columns; ++i) {
      const CXPoint at = point + CXPoint(i, j);
      if (at.x < 0 || at.y < 0 || at.x >= width_ || at.y >= height_) continue;
      std::byte& value = plane[static_cast<std::size_t>(std::ptrdiff_t{at.y} * width_ + at.x)];
      if (value != std::byte{0})
        value = patch[static_cast<std::size_t>(std::ptrdiff_t{j} * other->width_ + i)];
    }
  }
  Invalidate(&box);
}

}  // namespace footlight
