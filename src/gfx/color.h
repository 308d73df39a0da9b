#pragma once

// A colour in one of four models. Red, green, blue and alpha are 0 to 255; a ready pixel carries its own
// model and turns into no other: asked for one it gives itself.

#include <cstdint>

#include "foundation/xobject.h"

namespace footlight {

enum class _colormodel {
  rgb = 4,    // bytes of the value, lowest first: 0, red, green, blue
  rgba = 5,   // alpha, red, green, blue
  bpp15 = 6,  // a pixel 5-5-5
  bpp16 = 7,  // a pixel 5-6-5
};

class CColor : public CXObject {
 public:
  CColor() = default;
  CColor(int red, int green, int blue) { Set(red, green, blue); }
  CColor(int red, int green, int blue, int alpha) { Set(red, green, blue, alpha); }
  explicit CColor(int value) { set(value); }
  CColor(std::uint16_t pixel, _colormodel model) { Set(pixel, model); }

  void Set(int red, int green, int blue) { store(red, green, blue, 0, _colormodel::rgb); }
  void Set(int red, int green, int blue, int alpha) { store(red, green, blue, alpha, _colormodel::rgba); }
  void Set(std::uint16_t pixel, _colormodel model) {
    value_ = pixel;
    model_ = model;
  }
  void set(int value) {
    value_ = static_cast<std::uint32_t>(value);
    model_ = _colormodel::rgba;
  }

  std::uint32_t value() const { return value_; }
  _colormodel model() const { return model_; }

  // The value in another model; from the models of bytes to a pixel, everything else as it stands.
  std::uint32_t Convert(_colormodel model) const;
  // 15, 16, 24 and 32 bits per pixel ask for the models 6, 7, 4 and 5; others give the value as it stands.
  std::uint32_t GetInBPP(int bpp) const;
  // What stands in the memory of a surface that shows this colour; 24 and 32 bits per pixel are 0x00RRGGBB.
  std::uint32_t GetSurfacePixel(int bpp) const;

 private:
  void store(int red, int green, int blue, int alpha, _colormodel model) {
    value_ = byte(alpha) | byte(red) << 8 | byte(green) << 16 | byte(blue) << 24;
    model_ = model;
  }
  static std::uint32_t byte(int value) { return static_cast<std::uint32_t>(value) & 0xFF; }
  bool isBytes() const { return model_ == _colormodel::rgb || model_ == _colormodel::rgba; }
  std::uint32_t red() const { return value_ >> 8 & 0xFF; }
  std::uint32_t green() const { return value_ >> 16 & 0xFF; }
  std::uint32_t blue() const { return value_ >> 24; }

  std::uint32_t value_ = 0;
  _colormodel model_ = _colormodel::rgb;
};

}  // namespace footlight
