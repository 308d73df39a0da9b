#pragma once

// The methods that IMAGE and ANIMO have in common, and how a method reaches the graphic behind its object.
// For the runners alone.

#include <array>
#include <type_traits>

#include "foundation/diagnose.h"
#include "gfx/graphics_object.h"
#include "objects/gfx/mc_graphic.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight::graphics_methods {

// Calls F on the graphic: `Result F(Graphic&, Call&)`, or one of the graphic alone that gives nothing, an
// integer or a truth value. Without a graphic the method is a silent null.
template <auto F, class Graphic>
Result onGraphic(Graphic* graphic, Call& call) {
  const Ref<Graphic> held(graphic);
  if (!held) {
    diagnose::reportCall(diagnose::Group::object, "there is no picture");
    return {};
  }
  if constexpr (std::is_invocable_v<decltype(F), Graphic&, Call&>) {
    return F(*held, call);
  } else if constexpr (std::is_same_v<std::invoke_result_t<decltype(F), Graphic&>, void>) {
    F(*held);
    return {};
  } else if constexpr (std::is_same_v<std::invoke_result_t<decltype(F), Graphic&>, bool>) {
    return CMC_VariableFactory::makeBool(F(*held));
  } else {
    return CMC_VariableFactory::makeInteger(F(*held));
  }
}

// Two integers from this argument on.
inline CXPoint point(const Call& call, int first) { return {call.integer(first), call.integer(first + 1)}; }

Result move(CGraphicsObject& graphic, Call& call);
Result setPriority(CGraphicsObject& graphic, Call& call);
int getPriority(CGraphicsObject& graphic);  // -1 when it is not on the screen
// Two integers, or a word for a place of the graphic; an unknown word gives the origin.
Result setAnchor(CGraphicsObject& graphic, Call& call);
void invalidate(CGraphicsObject& graphic);
void flipH(CGraphicsObject& graphic);
void flipV(CGraphicsObject& graphic);
void resetFlips(CGraphicsObject& graphic);

// To the box of the graphic that the one argument names, or to four integers.
Result setClipping(CGraphicsObject& graphic, Call& call);
void clearClipping(CGraphicsObject& graphic);
Result drawOnto(CGraphicsObject& graphic, Call& call);

int positionX(CGraphicsObject& graphic);
int positionY(CGraphicsObject& graphic);
int width(CGraphicsObject& graphic);
int height(CGraphicsObject& graphic);
int opacity(CGraphicsObject& graphic);
bool isVisible(CGraphicsObject& graphic);
Result isNear(CGraphicsObject& graphic, Call& call);
// At a place of the screen; both read signed numbers, so an alpha above 127 comes out negative. 0 outside.
Result getAlpha(CGraphicsObject& graphic, Call& call);
Result getPixel(CGraphicsObject& graphic, Call& call);

Result monitorCollision(CMC_Graphic& object, Call& call);
Result removeMonitorCollision(CMC_Graphic& object, Call& call);

// The properties that both begin with.
inline constexpr auto kPictureProperties = std::to_array<Property>({
    {"FILENAME", PropertyKind::file, "", "Its file."},
    {"TOCANVAS", PropertyKind::boolean, "FALSE", "TRUE puts it on the screen at the start."},
    {"VISIBLE", PropertyKind::boolean, "FALSE", "TRUE shows it at the start."},
    {"FLUSHAFTERPLAYED", PropertyKind::boolean, "FALSE",
     "TRUE lets its pixels go whenever it is hidden; they are read again when they are needed."},
    {"PRELOAD", PropertyKind::boolean, "TRUE",
     "TRUE reads the file at the start, FALSE when it is first needed."},
    {"MONITORCOLLISION", PropertyKind::boolean, "FALSE", "TRUE watches for collisions of boxes."},
    {"MONITORCOLLISIONALPHA", PropertyKind::boolean, "FALSE", "TRUE watches for collisions of pixels."},
    {"PRIORITY", PropertyKind::integer, "0", "Higher ones are drawn over lower ones."},
});

}  // namespace footlight::graphics_methods
