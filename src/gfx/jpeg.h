#pragma once

// A JPEG picture from a file or from memory. It is decoded by libjpeg, whose own way of ending the program at
// a mistake is turned into an error code: an object whose data cannot be read has the size 0 x 0, the error
// code 2000 and a text that says why. Data that end early are no mistake: the rest of the picture is what the
// library makes of it.
//
// Refused are pictures over the size limits, colours that the library does not turn into RGB, and data that
// keep the decoder busy for nothing: more than 256 scans, more than 1,000 warnings, or more pixels times
// scans than the pictures of one file may have together (JpegAllowance).

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "foundation/geometry.h"
#include "foundation/limits.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CWindow;

// What the pictures of one file may still cost, in pixels times scans: a scan takes the same time however few
// bytes it has.
class JpegAllowance {
 public:
  // False when it is used up.
  bool take(std::int64_t scannedPixels) {
    left_ -= std::min(left_, scannedPixels);
    return left_ > 0;
  }

 private:
  std::int64_t left_ = limits::kScannedPixels;
};

class JPEG : public CXObject {
 public:
  // Reads the file now; 2000 also when there is no such file.
  JPEG(CWindow* window, const CXString& fileName);
  // Reads the header now; the data and the allowance stay the caller's until the picture is decoded.
  JPEG(std::span<const std::byte> data, JpegAllowance& allowance);
  explicit JPEG(std::span<const std::byte> data);
  ~JPEG() override;
  JPEG(const JPEG&) = delete;
  JPEG& operator=(const JPEG&) = delete;

  int getWidth() const { return width_; }
  int getHeight() const { return height_; }
  // The pixels: 5-5-5 for 15 bits per pixel, 5-6-5 for any other number. Once only; nothing when that fails.
  std::vector<std::byte> decompress(int bpp);
  // The reason behind the error code, for reports.
  const std::string& why() const { return why_; }

 private:
  struct Library;

  void open(std::span<const std::byte> data, JpegAllowance& allowance);
  void fail(const std::string& why);

  JpegAllowance ownAllowance_;
  std::vector<std::byte> file_;
  std::unique_ptr<Library> library_;
  int width_ = 0;
  int height_ = 0;
  std::string why_;
};

// The pixels of JPEG data as a picture of that size: what both have is taken, the rest is black. Nothing when
// the data cannot be read; `why` says so then.
std::vector<std::byte> unpackJpeg(std::span<const std::byte> data, CXSize size, int bpp,
                                  JpegAllowance& allowance, std::string* why);

}  // namespace footlight
