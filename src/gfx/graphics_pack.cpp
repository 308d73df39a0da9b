// Packed and plain pixels of a graphic object. The run-length form stays at hand while the plain one is in
// use, so that going back costs nothing.

#include "files/file.h"
#include "foundation/diagnose.h"
#include "gfx/graphics_object.h"
#include "gfx/jpeg.h"
#include "gfx/pixel_format.h"

namespace footlight {

void CGraphicsObject::DeCompress() {
  JpegAllowance allowance;
  decompressWithin(allowance);
}

void CGraphicsObject::decompressWithin(JpegAllowance& allowance) {
  const auto size = static_cast<std::size_t>(get_data_size(width_, height_, getBpp()));
  const auto block = [](std::vector<std::byte> bytes, int bpp) { return PixelBlock(std::move(bytes), bpp); };
  switch (compression_) {
    case _compression::lzw:
      data_ = block(unpackPlane(_compression::lzw, Plane::colour, data_.bytes(), size), getBpp());
      break;
    case _compression::lzwOverRle:
      data_ = block(unwrapRle(Plane::colour, data_.bytes(), size), getBpp());
      if (alpha_) alpha_ = block(unwrapRle(Plane::alpha, alpha_.bytes(), pixelCount()), 8);
      compression_ = _compression::rle;
      return;
    case _compression::jpeg:
      if (!decodeJpeg(allowance)) return;
      break;
    default:
      return;
  }
  if (alpha_) alpha_ = block(unpackPlane(_compression::lzw, Plane::alpha, alpha_.bytes(), pixelCount()), 8);
  compression_ = _compression::none;
}

// Pixels of 3 or 4 bytes do not come out of JPEG data, so such an object becomes one of 16 bits per pixel.
bool CGraphicsObject::decodeJpeg(JpegAllowance& allowance) {
  std::string why;
  const int bpp = getBpp() == 15 ? 15 : 16;
  std::vector<std::byte> pixels = unpackJpeg(data_.bytes(), {width_, height_}, bpp, allowance, &why);
  if (pixels.empty()) {
    diagnose::report(diagnose::Group::file, fileName_, "", why);
    Flush();
    setSize({});
    setErrorCode(CFile::kNotFound);
    return false;
  }
  bpp_ = bpp;
  data_ = PixelBlock(std::move(pixels), bpp);
  return true;
}

void CGraphicsObject::DeCompressRLE2() {
  if (compression_ != _compression::rle || !data_) return;
  const int bpp = data_.bpp();
  packedData_ = data_;
  packedAlpha_ = alpha_;
  data_ = PixelBlock(unpackPlane(_compression::rle, Plane::colour, packedData_.bytes(),
                                 static_cast<std::size_t>(get_data_size(width_, height_, bpp))),
                     bpp);
  if (packedAlpha_) {
    alpha_ = PixelBlock(unpackPlane(_compression::rle, Plane::alpha, packedAlpha_.bytes(), pixelCount()), 8);
  }
  compression_ = _compression::none;
}

// Pixels that something else has unpacked, and will pack again, stay its own.
void CGraphicsObject::unpack() {
  if (unpacked_ || compression_ != _compression::rle) return;
  DeCompressRLE2();
  unpacked_ = true;
}

void CGraphicsObject::pack(bool /*freePlain*/) {
  if (!unpacked_) return;
  if (packedData_) {
    data_ = std::exchange(packedData_, {});
    alpha_ = std::exchange(packedAlpha_, {});
    compression_ = _compression::rle;
  }
  unpacked_ = false;
}

void CGraphicsObject::bringBackCompressed() {
  if (unpacked_ || !packedData_) return;
  data_ = std::exchange(packedData_, {});
  alpha_ = std::exchange(packedAlpha_, {});
  compression_ = _compression::rle;
}

void CGraphicsObject::Compress(_compression method) {
  if (method != _compression::rle || !hasPlainPixels()) return;
  data_ = PixelBlock(packPlane(method, Plane::colour, data_.bytes()), data_.bpp());
  if (alpha_) alpha_ = PixelBlock(packPlane(method, Plane::alpha, alpha_.bytes()), 8);
  compression_ = _compression::rle;
  dropPacked();
}

void CGraphicsObject::Flush() {
  bpp_ = getBpp();
  data_.reset();
  alpha_.reset();
  packedData_.reset();
  packedAlpha_.reset();
  backup_.reset();
  mergeSaved_.clear();
  unpacked_ = false;
  compression_ = _compression::none;
}

void CGraphicsObject::alloc(CXSize size, int bpp) {
  Flush();
  setSize(size);
  bpp_ = bpp;
  data_ = PixelBlock::forPicture(width_, height_, bpp);
  alpha_ = PixelBlock::forPicture(width_, height_, 8);
}

void CGraphicsObject::Alloc() {
  Flush();
  data_ = PixelBlock::forPicture(width_, height_, bpp_);
}

}  // namespace footlight
