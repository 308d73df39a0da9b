#pragma once

namespace footlight {

// Hears the keyboard through the window (see CWindow::registerKeyListener). Keys are scan codes.
class CKeyListener {
 public:
  virtual ~CKeyListener() = default;
  virtual void onKeyUp(int /*key*/) {}
  virtual void onKeyDown(int /*key*/) {}
  virtual void onChar(unsigned char /*character*/) {}
};

}  // namespace footlight
