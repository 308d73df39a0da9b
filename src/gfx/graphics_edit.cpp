// Changes to a graphic object's own pixels.

#include <algorithm>
#include <array>

#include "gfx/graphics_object.h"
#include "gfx/pixel_format.h"

namespace footlight {

namespace {

constexpr bool isTwoBytes(int bpp) { return bpp == 15 || bpp == 16; }

using Pixel24 = std::array<std::byte, 3>;

// The rows of a plane whose bytes cover width x height units.
void turnUpsideDown(std::span<std::byte> plane, int width, int height, int unitBytes) {
  const std::ptrdiff_t rowBytes = std::ptrdiff_t{width} * unitBytes;
  for (std::ptrdiff_t y = 0; y < height / 2; ++y) {
    std::byte* upper = plane.data() + y * rowBytes;
    std::swap_ranges(upper, upper + rowBytes, plane.data() + (height - 1 - y) * rowBytes);
  }
}

template <class Unit>
void mirrorRows(std::span<std::byte> plane, int width, int height) {
  auto* units = reinterpret_cast<Unit*>(plane.data());
  for (std::ptrdiff_t y = 0; y < height; ++y) std::reverse(units + y * width, units + (y + 1) * width);
}

// Packs again what was packed when the edit began; the packed form kept from before is out of date then.
class Repack {
 public:
  explicit Repack(CGraphicsObject* object) : object_(object), method_(object->getCompression()) {
    if (method_ == _compression::rle) object->DeCompressRLE2();
  }
  ~Repack() { object_->Compress(method_); }
  Repack(const Repack&) = delete;
  Repack& operator=(const Repack&) = delete;

 private:
  CGraphicsObject* object_;
  _compression method_;
};

}  // namespace

bool CGraphicsObject::canEdit() const {
  return hasPlainPixels() && isTwoBytes(data_.bpp()) && data_.size() >= pixelCount() * 2;
}

// Plain pixels of 2 or 3 bytes that cover the picture.
bool CGraphicsObject::canFlip() const {
  const int bytes = GetPixelSize();
  return hasPlainPixels() && (bytes == 2 || bytes == 3) &&
         data_.size() >= pixelCount() * static_cast<std::size_t>(bytes);
}

void CGraphicsObject::FlipH() {
  const Repack repack(this);
  dropPacked();
  if (!canFlip()) return;
  turnUpsideDown(data_.bytes(), width_, height_, GetPixelSize());
  if (const auto plane = plainAlpha(); !plane.empty()) turnUpsideDown(plane, width_, height_, 1);
  flippedH_ = !flippedH_;
}

void CGraphicsObject::FlipV() {
  const Repack repack(this);
  dropPacked();
  if (!canFlip()) return;
  if (GetPixelSize() == 3) {
    mirrorRows<Pixel24>(data_.bytes(), width_, height_);
  } else {
    mirrorRows<std::uint16_t>(data_.bytes(), width_, height_);
  }
  if (const auto plane = plainAlpha(); !plane.empty()) mirrorRows<std::uint8_t>(plane, width_, height_);
  flippedV_ = !flippedV_;
}

void CGraphicsObject::resetFlips() {
  if (flippedV_) FlipV();
  if (flippedH_) FlipH();
}

// The packed form no longer matches pixels that are edited in place.
void CGraphicsObject::dropPacked() {
  packedData_.reset();
  packedAlpha_.reset();
  unpacked_ = false;
}

void CGraphicsObject::Fill(CColor* colour) {
  if (colour == nullptr || compression_ != _compression::none) return;
  const std::span<std::byte> bytes = GetDataPtr();
  const std::uint32_t pixel = colour->GetSurfacePixel(getBpp());
  if (isTwoBytes(getBpp())) {
    std::fill_n(reinterpret_cast<std::uint16_t*>(bytes.data()), bytes.size() / 2,
                static_cast<std::uint16_t>(pixel));
  } else if (getBpp() == 32) {
    std::fill_n(reinterpret_cast<std::uint32_t*>(bytes.data()), bytes.size() / 4, pixel);
  }
}

void CGraphicsObject::Fill(CXRect rect, CColor* colour) {
  const bool inside =
      rect.left <= rect.right && rect.top <= rect.bottom && rect.isInside({0, 0, width_, height_});
  if (colour == nullptr || !inside || !canEdit()) return;
  auto* pixels = reinterpret_cast<std::uint16_t*>(data_.bytes().data());
  const auto pixel = static_cast<std::uint16_t>(colour->GetInBPP(getBpp()));
  for (std::ptrdiff_t y = rect.top; y < rect.bottom; ++y) {
    std::fill(pixels + y * width_ + rect.left, pixels + y * width_ + rect.right, pixel);
  }
}

void CGraphicsObject::InvertColors() {
  constexpr std::uint16_t kAllChannels = 0x7FFF;
  const std::span<std::byte> bytes = GetDataPtr();
  if (getBpp() != 15 || compression_ != _compression::none) return;
  auto* pixels = reinterpret_cast<std::uint16_t*>(bytes.data());
  for (std::size_t i = 1; i < bytes.size() / 2; ++i) pixels[i] = ~pixels[i] & kAllChannels;
}

// The first pixel keeps its colour, and the green of 5-6-5 loses its lowest bit.
void CGraphicsObject::ToGrayScale() {
  const std::span<std::byte> bytes = GetDataPtr();
  const int bpp = getBpp();
  if (!isTwoBytes(bpp) || compression_ != _compression::none) return;
  auto* pixels = reinterpret_cast<std::uint16_t*>(bytes.data());
  const std::size_t count = bytes.size() / 2;
  const int redShift = bpp == 15 ? 10 : 11;
  const int greenShift = bpp == 15 ? 5 : 6;  // of its upper five bits
  for (std::size_t i = 1; i < count; ++i) {
    const std::uint32_t p = pixels[i];
    const std::uint32_t gray = ((p >> redShift & 0x1F) + (p >> greenShift & 0x1F) + (p & 0x1F)) / 3;
    pixels[i] = static_cast<std::uint16_t>(gray | gray << greenShift | gray << redShift);
  }
}

}  // namespace footlight
