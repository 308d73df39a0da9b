#include "text/text_painter.h"

#include <algorithm>
#include <cstring>

#include "gfx/blit.h"

namespace footlight {

namespace {

std::span<std::byte> planeOf(CGraphicsObject& picture) {
  const auto plane = picture.AlphaChannel().bytes();
  const auto pixels = static_cast<std::size_t>(picture.Width()) * static_cast<std::size_t>(picture.Height());
  return plane.size() >= pixels ? plane : std::span<std::byte>();
}

}  // namespace

TextPainter::TextPainter(CGraphicsObject& picture, const CXRect& clip, std::uint8_t opacity)
    : opacity_(opacity) {
  picture.unpack();
  to_ = {picture.GetDataPtr(), planeOf(picture), picture.getBpp(), 0, 0,
         picture.getPitch(),   picture.Height(), CXRect()};
  if (!to_.data.empty()) clip_ = clip.Common({0, 0, picture.Width(), picture.Height()});
}

int TextPainter::draw(CSimpleFont6& font, int color, std::int64_t x, std::int64_t y, char previous,
                      char letter) {
  const CSimpleFont6::Place place = font.placeOf(previous, letter);
  if (place.index == CSimpleFont6::kNoLetter) return place.advance;
  Glyph glyph = {&font, place.index, font.glyphColumns(place.index), 0, 0};
  x += glyph.columns.left - font.glyphX(place.index) - place.kerning;
  if (!isSeen(glyph, x, y)) return place.advance;
  glyph.x = static_cast<int>(x);
  glyph.y = static_cast<int>(y);
  if (color == kFontsColors) {
    flush();
    drawAlone(glyph);
    return place.advance;
  }
  if (!fitsGathered(glyph, color)) {
    flush();
    begin(glyph, color);
  }
  gather(glyph);
  return place.advance;
}

bool TextPainter::isSeen(const Glyph& glyph, std::int64_t x, std::int64_t y) const {
  return x < clip_.right && x + glyph.columns.Width() > clip_.left && y + glyph.columns.top < clip_.bottom &&
         y + glyph.columns.bottom > clip_.top && !glyph.columns.IsEmpty();
}

void TextPainter::drawAlone(const Glyph& glyph) {
  CSimpleFont6& font = *glyph.font;
  font.convertFor(to_.bpp);
  font.colorCell(glyph.index);
  const CXPoint at(glyph.x - glyph.columns.left, glyph.y);
  const CXRect seen = glyph.columns.Common(clip_ - at);
  const _canvas from = {font.data_.bytes(), font.alpha_.bytes(), font.getBpp(), at.x, at.y,
                        font.width_,        font.height_,        seen};
  blit::compose(from, to_, opacity_, false);
}

// Letters that overlap must be drawn one over the other, and one strip has one colour.
bool TextPainter::fitsGathered(const Glyph& glyph, int color) const {
  return columns_ != 0 && color == color_ && glyph.y == y_ && glyph.x >= x_ + columns_ &&
         glyph.x + glyph.columns.Width() <= x_ + stride_ && glyph.font->CGraphicsObject::Height() <= rows_;
}

void TextPainter::begin(const Glyph& glyph, int color) {
  color_ = color;
  x_ = glyph.x;
  y_ = glyph.y;
  top_ = glyph.columns.top;
  bottom_ = glyph.columns.bottom;
  const int rows = glyph.font->CGraphicsObject::Height();
  const int width = glyph.columns.Width();
  const int stride = rows <= kMostRows && width <= kColumns ? kColumns : width;
  if (rows <= rows_ && stride == stride_) return;
  rows_ = rows;
  stride_ = stride;
  filledColumns_ = 0;
  const std::size_t size = static_cast<std::size_t>(rows) * static_cast<std::size_t>(stride);
  if (size <= alpha_.size()) return;
  pixels_.resize(size);
  alpha_.resize(size);
}

void TextPainter::gather(const Glyph& glyph) {
  const CXRect& from = glyph.columns;
  const auto width = static_cast<std::size_t>(from.Width());
  const auto stride = static_cast<std::size_t>(glyph.font->width_);
  const auto* source = reinterpret_cast<const std::uint8_t*>(glyph.font->alpha_.bytes().data()) +
                       static_cast<std::size_t>(from.top) * stride + static_cast<std::size_t>(from.left);
  std::uint8_t* target = alpha_.data() + std::ptrdiff_t{from.top} * stride_ + (glyph.x - x_);
  for (int row = from.top; row < from.bottom; ++row, source += stride, target += stride_)
    std::memcpy(target, source, width);
  columns_ = glyph.x - x_ + from.Width();
  top_ = std::min(top_, from.top);
  bottom_ = std::max(bottom_, from.bottom);
}

void TextPainter::fillColor() {
  if (filledWith_ == color_ && filledColumns_ >= columns_) return;
  for (int row = 0; row < rows_; ++row)
    std::fill_n(pixels_.data() + std::ptrdiff_t{row} * stride_, columns_, static_cast<std::uint16_t>(color_));
  filledWith_ = color_;
  filledColumns_ = columns_;
}

void TextPainter::flush() {
  if (columns_ == 0) return;
  fillColor();
  const CXRect used(0, top_, columns_, bottom_);
  const _canvas from = {std::as_writable_bytes(std::span(pixels_)),
                        std::as_writable_bytes(std::span(alpha_)),
                        to_.bpp == 15 ? 15 : 16,
                        x_,
                        y_,
                        stride_,
                        rows_,
                        used.Common(clip_ - CXPoint(x_, y_))};
  if (!from.clip.IsEmpty()) blit::compose(from, to_, opacity_, false);
  for (int row = top_; row < bottom_; ++row)
    std::memset(alpha_.data() + std::ptrdiff_t{row} * stride_, 0, static_cast<std::size_t>(columns_));
  columns_ = 0;
}

}  // namespace footlight
