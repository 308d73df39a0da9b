#pragma once

// What the methods of several graphic types read from their arguments and do with them. For
// the runners alone.

#include "gfx/graphics_object.h"
#include "script/mc_runner.h"

namespace footlight {

// The graphic object that the text of an argument names, or null.
inline CGraphicsObject* graphicsArgument(const Call& call, int index) {
  const CXString name = call.text(index);
  CGraphicsObject* found = call.scope() != nullptr ? call.scope()->getGraphicsObject(name) : nullptr;
  if (found == nullptr && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::object, "no picture of the name " + name.str());
  return found;
}

inline CXRect rectangleArgument(const Call& call, int first) {
  return {call.integer(first), call.integer(first + 1), call.integer(first + 2), call.integer(first + 3)};
}

// Writes a copy of the picture to the file of the first argument; the next two scale it, and four more cut it
// before that: left, top, right, bottom.
inline void saveCopy(const CGraphicsObject& picture, const Call& call) {
  const Owned<CGraphicsObject> copy(new CGraphicsObject(picture.getWindow(), picture));
  if (call.count() > 3) copy->crop(rectangleArgument(call, 3));
  const double sx = call.has(2) ? call.real(1) : 1.0;
  const double sy = call.has(2) ? call.real(2) : 1.0;
  if (sx != 1.0 || sy != 1.0) copy->Scale(sx, sy);
  copy->SetClippingRect({});
  copy->Save(call.text(0), _compression::none);
}

}  // namespace footlight
