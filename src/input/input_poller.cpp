#include "input/input_poller.h"

#include "gfx/window.h"

namespace footlight {

CInputPoller::~CInputPoller() {
  if (CWindow* window = CWindow::getInstance(); window != nullptr) window->removeIPoller(this);
}

}  // namespace footlight
