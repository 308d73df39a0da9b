// Loading and saving of a graphic object.

#include <algorithm>

#include "files/file.h"
#include "gfx/graphics_object.h"
#include "gfx/img_format.h"
#include "gfx/pixel_format.h"
#include "gfx/window.h"

namespace footlight {

namespace {

// The rows of a rectangle from a plane of tight rows; missing bytes are zero.
std::vector<std::byte> cut(std::span<const std::byte> plane, int width, int unitBytes, const CXRect& rect) {
  const auto rowBytes = static_cast<std::size_t>(rect.Width()) * static_cast<std::size_t>(unitBytes);
  std::vector<std::byte> out(rowBytes * static_cast<std::size_t>(rect.Height()));
  auto* target = out.data();
  for (int y = rect.top; y < rect.bottom; ++y, target += rowBytes) {
    const std::size_t start = (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                               static_cast<std::size_t>(rect.left)) *
                              static_cast<std::size_t>(unitBytes);
    if (start >= plane.size()) break;
    std::copy_n(plane.begin() + static_cast<std::ptrdiff_t>(start), std::min(rowBytes, plane.size() - start),
                target);
  }
  return out;
}

}  // namespace

int CGraphicsObject::Load(CXString /*name*/) {
  if (window_ != nullptr && window_->GetSurface() != nullptr) Convert(window_->GetBpp());
  return LastError();
}

int CGraphicsObject::Load(CFile* /*file*/) { return LastError(); }

int CGraphicsObject::Save(CXString name, _compression compression) {
  CFile file(window_, name, CFile::kWriteBinary);
  setErrorCode(file.LastError());
  if (LastError() != 0) return LastError();
  if (Save(&file, compression) == 0 && file.Close() != 0) setErrorCode(CFile::kNotFound);
  return LastError();
}

int CGraphicsObject::Save(CFile* file, _compression compression) {
  const PixelBlock pixels = shareablePixels();
  const CXRect whole(0, 0, width_, height_);
  const CXRect clip = clippingRect_.Common(whole);
  const bool isPlain = compression_ == _compression::none;
  const bool isCut = isPlain && !clippingRect_.IsEmpty() && !clip.IsEmpty() && clip != whole;
  const CXRect part = isCut ? clip : whole;

  ImgPicture picture;
  picture.size = part.Size();
  picture.bpp = getBpp();
  picture.position = position_ + part.LeftTop();
  if (isPlain) {
    picture.colour = cut(pixels.bytes(), width_, get_pixel_size(picture.bpp), part);
    if (alpha_) picture.alpha = cut(alpha_.bytes(), width_, 1, part);
  } else {
    picture.colour.assign(pixels.bytes().begin(), pixels.bytes().end());
    picture.alpha.assign(alpha_.bytes().begin(), alpha_.bytes().end());
  }
  const std::vector<std::byte> bytes = writeImg(picture, compression);
  const int count = static_cast<int>(bytes.size());
  setErrorCode(file->Write(bytes.data(), count) == count ? 0 : CFile::kNotFound);
  return LastError();
}

}  // namespace footlight
