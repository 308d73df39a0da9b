#include "gfx/screen_unit.h"

#include "gfx/window.h"

namespace footlight {

CScreenUnit::~CScreenUnit() {
  CWindow* window = CWindow::getInstance();
  if (window != nullptr && window->getScreenUnit() == this) window->setScreenUnit(nullptr);
}

}  // namespace footlight
