#pragma once

namespace footlight {

class CGraphicsObject;
class CXRect;

// Hears of a graphic object whose picture changed, and of its end (see
// CGraphicsObject::addInvalidateObserver).
class CInvalidateObserver {
 public:
  virtual ~CInvalidateObserver() = default;
  // The rectangle is where the object stands, in pixels of the screen.
  virtual void onInvalidate(CGraphicsObject* object, CXRect* rect) = 0;
  virtual void onDestroy(CGraphicsObject* object) = 0;
};

}  // namespace footlight
