// Scripts' methods of CANVAS.

#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/graphics_methods.h"
#include "objects/gfx/mc_canvas.h"
#include "script/mc_runner.h"

namespace footlight {

namespace {

using namespace graphics_methods;

template <auto F>
Result onCanvas(CMC_Canvas& object, Call& call) {
  return onGraphic<F>(object.getCanvas(), call);
}

// The object behind a picture's name, without the name of a frame.
CMC_Object* ownerOf(const Call& call, int index) {
  const CXString name = call.text(index);
  const int mark = name.Find('!');
  return call.findAny(mark < 0 ? name.view() : name.slice(0, mark));
}

Result add(CMC_Canvas& object, Call& call) {
  CGraphicsObject* graphic = graphicsArgument(call, 0);
  if (graphic != nullptr) object.add(graphic, ownerOf(call, 0), call.integer(1));
  return {};
}

Result remove(CCanvas& canvas, Call& call) {
  canvas.remove(graphicsArgument(call, 0));
  return {};
}

void show(CCanvas& canvas) { canvas.Visible(true); }
void hide(CCanvas& canvas) { canvas.Visible(false); }

Result setCanvasPriority(CCanvas& canvas, Call& call) {
  setPriority(canvas, call);
  canvas.Invalidate();
  return {};
}

Result setPosition(CCanvas& canvas, Call& call) {
  canvas.Invalidate();
  canvas.SetPosition(point(call, 0));
  canvas.Invalidate();
  return {};
}

void clear(CCanvas& canvas) {
  canvas.removeAll();
  canvas.clear(true);
  canvas.Invalidate();
}

Result capture(CMC_Canvas& object, Call& call) {
  object.capture(call.boolean(0));
  return {};
}

Result setOpacity(CCanvas& canvas, Call& call) {
  canvas.SetOpacity(static_cast<std::uint8_t>(call.integer(0) & 0xFF));
  return {};
}

Result setAsButton(CMC_Canvas& object, Call& call) {
  object.setAsButton(call.boolean(0), call.boolean(1));
  return {};
}

Result erase(CCanvas& canvas, Call& call) {
  canvas.erase(graphicsArgument(call, 0), call.integer(1), call.integer(2));
  return {};
}

Result draw(CCanvas& canvas, Call& call) {
  const Ref<CGraphicsObject> object(graphicsArgument(call, 0));
  if (object) canvas.draw(object->getDrawn(), call.integer(1), call.integer(2));
  return {};
}

Result save(CCanvas& canvas, Call& call) {
  canvas.compose();
  saveCopy(canvas, call);
  return {};
}

constexpr Method kMethods[] = {
    {1, "ADD", "picture:name, [priority:int]", method<add>,
     "Puts a picture on the canvas, where it stands in the canvas's own pixels; higher priorities lie on "
     "top, "
     "0 without the argument. A TEXT or IMAGE belongs to the canvas from then on."},
    {2, "REMOVE", "picture:name", method<onCanvas<remove>>, "Takes a picture off the canvas."},
    {3, "SHOW", "", method<onCanvas<show>>, "Shows it."},
    {4, "HIDE", "", method<onCanvas<hide>>, "Hides it."},
    {5, "SETPRIORITY", "priority:int", method<onCanvas<setCanvasPriority>>,
     "Higher ones are drawn over lower ones."},
    {6, "SETPOSITION", "x:int, y:int", method<onCanvas<setPosition>>,
     "Puts its left upper corner there, in pixels of the screen."},
    {7, "MOVE", "dx:int, dy:int", method<onCanvas<move>>, "Moves it by so many pixels."},
    {8, "CLEAR", "", method<onCanvas<clear>>, "Takes all off it and wipes it, what was drawn or kept too."},
    {9, "CAPTURE", "ends:bool", method<capture>,
     "Keeps what it shows, in place of what was kept where it has no alpha, and takes all off it; with TRUE "
     "the TEXTs and IMAGEs that were put on it end. Only with BACKGROUND."},
    {10, "SETOPACITY", "opacity:int", method<onCanvas<setOpacity>>, "From 0, invisible, to 255, opaque."},
    {11, "SETASBUTTON", "cursor:bool, signals:bool", method<setAsButton>,
     "Whether the pointer changes its shape over it, and whether it sends the signals of the mouse."},
    {12, "ERASE", "picture:name, x:int, y:int", method<onCanvas<erase>>,
     "Rubs out with the alpha of a picture, placed in the canvas's own pixels. Only with BACKGROUND and "
     "ALPHA."},
    {13, "DRAW", "picture:name, x:int, y:int", method<onCanvas<draw>>,
     "Paints a picture onto it for good, placed in the canvas's own pixels. Only with BACKGROUND."},
    {14, "SAVE", "file:file, [scaleX:real], [scaleY:real], [left:int], [top:int], [right:int], [bottom:int]",
     method<onCanvas<save>>,
     "Writes it to a picture file, or a part of it in its own pixels; the scales make it smaller or greater, "
     "1 "
     "without them."},
};

constexpr auto kProperties = std::to_array<Property>({
    {"PRIORITY", PropertyKind::integer, "0", "Higher ones are drawn over lower ones."},
    {"WIDTH", PropertyKind::integer, "0", "Its width, in pixels."},
    {"HEIGHT", PropertyKind::integer, "0", "Its height, in pixels."},
    {"ALPHA", PropertyKind::boolean, "FALSE", "TRUE lets shine through it what lies beneath."},
    {"BACKGROUND", PropertyKind::boolean, "FALSE",
     "TRUE gives it a second picture beneath, on which DRAW, ERASE and CAPTURE work."},
});

}  // namespace

extern constinit const ScriptType kCanvasType = {
    .number = type::kCanvas,
    .idWord = "CANVAS",
    .definitionWord = "CANVAS",
    .meaning = "A surface to draw on.",
    .pass = 6,
    .signals = kSurfaceSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Canvas>,
};

}  // namespace footlight
