// Loading and saving of a graphic object.

#include <algorithm>

#include "files/file.h"
#include "foundation/byte_reader.h"
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

std::vector<std::uint32_t> CGraphicsObject::toRgb() const {
  std::vector<std::uint32_t> colours(pixelCount());
  const PixelBlock block = shareablePixels();
  const int bpp = getBpp();
  const auto unit = static_cast<std::size_t>(get_pixel_size(bpp));
  if (compression_ != _compression::none || block.size() < colours.size() * unit) return colours;
  ByteReader reader(block.bytes());
  for (std::uint32_t& colour : colours) {
    switch (bpp) {
      case 15: {
        const std::uint32_t pixel = reader.u16();
        colour = (pixel & 0x7C00) << 9 | (pixel & 0x3E0) << 6 | (pixel & 0x1F) << 3;
        break;
      }
      case 16:
        colour = toPixel32(reader.u16());
        break;
      case 32:
        colour = reader.u32() & 0xFFFFFF;
        break;
      default:
        break;
    }
  }
  return colours;
}

int CGraphicsObject::Load(const CXString& /*name*/) {
  if (window_ != nullptr && window_->GetSurface() != nullptr) Convert(window_->GetBpp());
  return LastError();
}

int CGraphicsObject::Load(CFile* /*file*/) { return LastError(); }

int CGraphicsObject::Save(const CXString& name, _compression compression) {
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
