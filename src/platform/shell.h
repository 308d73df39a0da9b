#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace footlight::platform {

enum class Cursor { none, main, active, wait };

// A page for the printer: rows of 32-bit 0x00RRGGBB, and its name.
struct PrintPage {
  std::string_view name;
  int width, height;
  std::span<const std::uint32_t> pixels;
};

// Boxes, cursors and printing.
class Shell {
 public:
  virtual ~Shell() = default;
  // Texts in code page 1250.
  virtual void messageBox(std::string_view caption, std::string_view text) = 0;
  virtual void setCursor(Cursor cursor) = 0;
  virtual void showCursor(bool visible) = 0;
  virtual void clipCursor(int left, int top, int right, int bottom) = 0;
  virtual void releaseCursor() = 0;
  // True when the page went to a printer, or to the picture file that stands for one.
  virtual bool print(const PrintPage& page) = 0;
  // A line for whoever debugs the engine.
  virtual void debugText(std::string_view /*text*/) {}
};

}  // namespace footlight::platform
