#pragma once

#include "foundation/geometry.h"

namespace footlight {

class CButton;
class CGraphicsObject;

// What hot spots and controls must know of the scene's unit that they belong to.
class CControlUnit {
 public:
  virtual ~CControlUnit() = default;
  virtual bool isActive() const = 0;
  virtual bool isDragging() const = 0;
  // False until the scene's first frame.
  virtual bool wasInitiallyUpdated() const = 0;
  // Moves the picture with the mouse until the release and tells the button of it. True when it does.
  virtual bool onStartDragging(CGraphicsObject* object, CXPoint point, CButton* button) = 0;
};

}  // namespace footlight
