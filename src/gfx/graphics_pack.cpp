// Packed and plain pixels of a graphic object. The run-length form stays at hand while the plain one is in
// use, so that going back costs nothing.

#include "files/rle_compression.h"
#include "gfx/graphics_object.h"
#include "gfx/pixel_format.h"

namespace footlight {

// Block packing and pictures in other forms are refused where they are read; nothing is left to do here.
void CGraphicsObject::DeCompress() {}

void CGraphicsObject::DeCompressRLE2() {
  if (compression_ != _compression::rle || !data_) return;
  const int bpp = data_.bpp();
  packedData_ = data_;
  packedAlpha_ = alpha_;
  data_ = PixelBlock(CRLECompression::decompress(
                         packedData_.bytes(), static_cast<std::size_t>(get_data_size(width_, height_, bpp))),
                     bpp);
  if (packedAlpha_) {
    alpha_ = PixelBlock(CRLECompression::decompresschar(packedAlpha_.bytes(), pixelCount()), 8);
  }
  compression_ = _compression::none;
}

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
  data_ = PixelBlock(CRLECompression::compress(data_.bytes()), data_.bpp());
  if (alpha_) alpha_ = PixelBlock(CRLECompression::compresschar(alpha_.bytes()), 8);
  compression_ = _compression::rle;
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
