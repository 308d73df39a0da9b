// Changes to a graphic object that give it other planes: cutting, scaling, displacing, filling, channels.

#include <algorithm>
#include <cmath>

#include "foundation/arithmetic.h"
#include "gfx/graphics_object.h"
#include "gfx/pixel_format.h"

namespace footlight {

namespace {

std::uint16_t* words(const PixelBlock& block) {
  return reinterpret_cast<std::uint16_t*>(block.bytes().data());
}

std::size_t indexOf(int px, int py, int width) {
  return static_cast<std::size_t>(py) * static_cast<std::size_t>(width) + static_cast<std::size_t>(px);
}

}  // namespace

// Plain 2-byte pixels that cover the picture; what was packed stays plain.
bool CGraphicsObject::unpackToEdit() {
  DeCompress();
  DeCompressRLE2();
  return canEdit();
}

void CGraphicsObject::replacePlanes(CXSize size, PixelBlock pixels, PixelBlock alpha) {
  dropPacked();
  setSize(size);
  data_ = std::move(pixels);
  alpha_ = std::move(alpha);
}

// New planes of that size: `from(x, y)` is the index of the pixel to take, below 0 for none.
template <class From>
void CGraphicsObject::remap(CXSize size, From from) {
  PixelBlock pixels = PixelBlock::forPicture(size.width, size.height, getBpp());
  if (!pixels) return;
  const auto plane = plainAlpha();
  PixelBlock alpha = plane.empty() ? PixelBlock() : PixelBlock::forPicture(size.width, size.height, 8);
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) {
      const std::int64_t source = from(x, y);
      if (source < 0 || source >= static_cast<std::int64_t>(pixelCount())) continue;
      const std::size_t target = indexOf(x, y, size.width);
      words(pixels)[target] = words(data_)[source];
      if (alpha) alpha.bytes()[target] = plane[static_cast<std::size_t>(source)];
    }
  }
  replacePlanes(size, std::move(pixels), std::move(alpha));
}

void CGraphicsObject::crop(CXRect rect) {
  const CXRect part = rect.Common({0, 0, width_, height_});
  if (!unpackToEdit() || part.left >= part.right || part.top >= part.bottom) return;
  remap(part.Size(), [&](int x, int y) { return std::int64_t{part.top + y} * width_ + part.left + x; });
}

void CGraphicsObject::Scale(double sx, double sy) {
  const CXSize size(to_int(width_ * sx), to_int(height_ * sy));
  if (!unpackToEdit() || !isPictureSize(size.width, size.height)) return;
  remap(size, [&](int x, int y) {
    const int column = std::min(to_int(x / sx), width_ - 1);
    const int row = std::min(to_int(y / sy), height_ - 1);
    return std::int64_t{row} * width_ + column;
  });
}

void CGraphicsObject::Scale2x() {
  if (!unpackToEdit()) return;
  remap({width_ / 2, height_ / 2}, [&](std::int64_t x, std::int64_t y) { return 2 * y * width_ + 2 * x; });
}

void CGraphicsObject::displacementFilter(std::span<const CXPoint> map, bool alphaToo) {
  if (!unpackToEdit() || map.size() < pixelCount()) return;
  PixelBlock pixels = PixelBlock::forPicture(width_, height_, getBpp());
  const auto plane = plainAlpha();
  PixelBlock alpha = alphaToo && !plane.empty() ? alpha_.copy() : PixelBlock();
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) {
      const std::size_t target = indexOf(x, y, width_);
      const std::int64_t source =
          (std::int64_t{y} + map[target].y) * width_ + std::int64_t{x} + map[target].x;
      if (source < 1 || source >= static_cast<std::int64_t>(pixelCount())) continue;
      words(pixels)[target] = words(data_)[source];
      if (alpha) alpha.bytes()[target] = plane[static_cast<std::size_t>(source)];
    }
  }
  replacePlanes(Size(), std::move(pixels), alpha ? std::move(alpha) : alpha_);
}

void CGraphicsObject::outline(std::uint16_t colour, int thickness) {
  if (!unpackToEdit() || plainAlpha().empty()) return;
  dropPacked();
  const auto paint = [&](int x, int y) {
    words(data_)[indexOf(x, y, width_)] = colour;
    plainAlpha()[indexOf(x, y, width_)] = std::byte{255};
  };
  for (int i = 0; i < std::min(thickness, std::max(width_, height_)); ++i) {
    for (int x = 0; x < width_ && i < height_; ++x) {
      paint(x, i);
      paint(x, height_ - 1 - i);
    }
    for (int y = 0; y < height_ && i < width_; ++y) {
      paint(i, y);
      paint(width_ - 1 - i, y);
    }
  }
}

// Flood fill

bool CGraphicsObject::isOpen(int px, int py, std::uint16_t pixel, std::span<const std::uint16_t> mask) const {
  const std::size_t index = indexOf(px, py, width_);
  return mask[index] != 0 && words(data_)[index] != pixel;
}

// The span around a place, painted. To the right it ends before the last column; the place itself always
// belongs to it.
_floodfill CGraphicsObject::paintSpan(int px, int py, std::uint16_t pixel,
                                      std::span<const std::uint16_t> mask) {
  int left = px;
  while (left > 0 && isOpen(left - 1, py, pixel, mask)) --left;
  int right = px;
  while (right + 1 < width_ - 1 && isOpen(right + 1, py, pixel, mask)) ++right;
  for (int x = left; x <= right; ++x) words(data_)[indexOf(x, py, width_)] = pixel;
  return {static_cast<std::int16_t>(left), static_cast<std::int16_t>(py),
          static_cast<std::int16_t>(right - left + 1)};
}

// What a span still has to look at: the next row in its direction over all of it, then the row behind beside
// the span that it came from. An explicit stack keeps the order of the recursion.
CXRect CGraphicsObject::PrepareFloodFill(CXPoint point, const CColor& colour,
                                         std::span<const std::uint16_t> mask) {
  struct Visit {
    _floodfill span;
    int direction;
    int parentLeft;
    int parentRight;
    int next;  // column to look at
    bool isBehind;
  };
  floodSpans_.clear();
  const bool isInside = point.x >= 0 && point.y >= 0 && point.x < width_ && point.y < height_;
  if (!isInside || !unpackToEdit() || mask.size() < pixelCount()) return {};
  dropPacked();
  const auto pixel = static_cast<std::uint16_t>(colour.GetInBPP(getBpp()));
  CXRect box(point.x, point.y, point.x + 1, point.y + 1);
  std::vector<Visit> stack;
  const auto enter = [&](int x, int y, int direction, int parentLeft, int parentRight) {
    const _floodfill span = paintSpan(x, y, pixel, mask);
    floodSpans_.push_back(span);
    box.Sum(CXRect(span.x, span.y, span.x + span.length, span.y + 1));
    stack.push_back({span, direction, parentLeft, parentRight, span.x, false});
  };
  enter(point.x, point.y, 1, point.x, point.x - 1);
  while (!stack.empty()) {
    Visit& visit = stack.back();
    const int right = visit.span.x + visit.span.length - 1;
    const int row = visit.span.y + (visit.isBehind ? -visit.direction : visit.direction);
    if (visit.next > right || row < 0 || row >= height_) {
      if (visit.isBehind) {
        stack.pop_back();
      } else {
        visit.isBehind = true;
        visit.next = visit.span.x;
      }
      continue;
    }
    const int x = visit.next++;
    const bool isOfParent = visit.isBehind && x >= visit.parentLeft && x <= visit.parentRight;
    if (isOfParent || !isOpen(x, row, pixel, mask)) continue;
    enter(x, row, visit.isBehind ? -visit.direction : visit.direction, visit.span.x, right);
  }
  return box;
}

void CGraphicsObject::FloodFill(const CColor& colour) {
  if (!canEdit()) return;
  const auto pixel = static_cast<std::uint16_t>(colour.GetInBPP(getBpp()));
  for (const _floodfill& span : floodSpans_) {
    const std::int64_t start = std::int64_t{span.y} * width_ + span.x;
    if (start < 0 || start + span.length > static_cast<std::int64_t>(pixelCount())) continue;
    std::fill_n(words(data_) + start, span.length, pixel);
  }
}

// Channels

const PixelBlock& CGraphicsObject::channelPlane(_channel channel) const {
  return channel == _channel::alpha ? alpha_ : channels_[static_cast<std::size_t>(channel)];
}

void CGraphicsObject::setChannelPlane(_channel channel, PixelBlock plane) {
  (channel == _channel::alpha ? alpha_ : channels_[static_cast<std::size_t>(channel)]) = std::move(plane);
}

void CGraphicsObject::Split() {
  if (!hasPlainPixels() || getBpp() != 24 || data_.size() < pixelCount() * 3) return;
  const auto bytes = data_.bytes();
  for (std::size_t channel = 0; channel < channels_.size(); ++channel) {
    channels_[channel] = PixelBlock::forPicture(width_, height_, 8);
    const auto plane = channels_[channel].bytes();
    for (std::size_t i = 0; i < pixelCount(); ++i) plane[i] = bytes[i * 3 + 2 - channel];
  }
  bpp_ = 24;
  data_.reset();
}

void CGraphicsObject::JoinChannels() {
  PixelBlock joined = PixelBlock::forPicture(width_, height_, 24);
  if (!joined) return;
  for (std::size_t channel = 0; channel < channels_.size(); ++channel) {
    const auto plane = channels_[channel].bytes();
    const std::size_t count = std::min(plane.size(), pixelCount());
    for (std::size_t i = 0; i < count; ++i) joined.bytes()[i * 3 + 2 - channel] = plane[i];
  }
  dropPacked();
  compression_ = _compression::none;
  bpp_ = 24;
  data_ = std::move(joined);
}

std::vector<std::byte> CGraphicsObject::Join2Channels() const {
  std::vector<std::byte> joined(pixelCount() * 4);
  const auto colours = data_.bytes();
  const auto alpha = alpha_.bytes();
  for (std::size_t i = 0; i < pixelCount(); ++i) {
    for (std::size_t c = 0; c < 3 && i * 3 + c < colours.size(); ++c) joined[i * 4 + c] = colours[i * 3 + c];
    if (i < alpha.size()) joined[i * 4 + 3] = alpha[i];
  }
  return joined;
}

void CGraphicsObject::SplitOn2(std::span<const std::byte> joined, int pixels) {
  const std::size_t count =
      std::min({joined.size() / 4, pixelCount(), static_cast<std::size_t>(std::max(0, pixels))});
  PixelBlock colours = PixelBlock::forPicture(width_, height_, 24);
  PixelBlock alpha = PixelBlock::forPicture(width_, height_, 8);
  if (!colours || !alpha) return;
  for (std::size_t i = 0; i < count; ++i) {
    std::copy_n(joined.begin() + static_cast<std::ptrdiff_t>(i * 4), 3,
                colours.bytes().begin() + static_cast<std::ptrdiff_t>(i * 3));
    alpha.bytes()[i] = joined[i * 4 + 3];
  }
  dropPacked();
  compression_ = _compression::none;
  data_ = std::move(colours);
  alpha_ = std::move(alpha);
}

}  // namespace footlight
