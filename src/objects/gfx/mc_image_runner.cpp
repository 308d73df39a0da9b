// Scripts' methods of IMAGE.

#include <cmath>

#include "objects/data/mc_array.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/graphics_methods.h"
#include "objects/gfx/mc_image.h"
#include "script/mc_runner.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;
using namespace graphics_methods;

template <auto F>
Result onImage(CMC_Image& object, Call& call) {
  return onGraphic<F>(object.getImage(), call);
}

// Showing and placing

void show(CImage& image) { image.Visible(true); }
void hide(CImage& image) { image.Visible(false); }

void moveTo(CImage& image, CXPoint position) {
  image.Invalidate();
  image.SetPosition(position);
  image.Invalidate();
}

Result setPosition(CImage& image, Call& call) {
  moveTo(image, point(call, 0));
  return {};
}

Result setResetPosition(CMC_Image& object, Call& call) {
  object.SetStartingPosition(call.integer(0), call.integer(1));
  return {};
}

Result resetPosition(CMC_Image& object, Call& /*call*/) {
  if (CImage* image = object.getImage(); image != nullptr) moveTo(*image, object.GetStartingPosition());
  return {};
}

Result setOpacity(CImage& image, Call& call) {
  image.SetOpacity(static_cast<std::uint8_t>(call.integer(0) & 0xFF));
  return {};
}

// Files and other pictures

Result load(CMC_Image& object, Call& call) {
  object.load(call.text(0), true);
  return {};
}

Result save(CImage& image, Call& call) {
  image.Save(call.text(0), _compression::none);
  return {};
}

Result link(CImage& image, Call& call) {
  const CMC_Image* other = call.named<CMC_Image>(0);
  if (other == nullptr || other->getImage() == nullptr) return {};
  image.Invalidate();  // where it was
  image.link(*other->getImage());
  image.Invalidate();
  return {};
}

Result mergeAlpha(CImage& image, Call& call) {
  image.mergeAlpha(point(call, 0), graphicsArgument(call, 2));
  return {};
}

Result mergeAlpha2(CImage& image, Call& call) {
  image.mergeAlpha2(point(call, 0), graphicsArgument(call, 2), call.boolean(3));
  return {};
}

// Questions

// The sum is halved, not the size alone.
int centerX(CImage& image) { return wrap_add(image.GetPosition().x, image.Width()) / 2; }
int centerY(CImage& image) { return wrap_add(image.GetPosition().y, image.Height()) / 2; }

Result isInside(CImage& image, Call& call) {
  return Factory::makeBool(image.isInside(call.integer(0), call.integer(1), call.boolean(2)));
}

Result isAt(CImage& image, Call& call) {
  return Factory::makeBool(image.isAt(point(call, 0), call.boolean(2)));
}

// Nothing is read: the three give an integer, and the fourth four of them.
int getColorPart(CImage& /*image*/) { return 0; }

Result getColor(CMC_Image& /*object*/, Call& call) {
  auto* array = call.named<CMC_Array>(2);
  if (array == nullptr || !array->hasRoom(4)) return {};
  CMC_Integer zero("temp", CMC_Variable::kNoPool);
  for (int i = 0; i < 4; ++i) array->add(&zero);
  return {};
}

// One side of the search for a way out of a mask: each turn also shortens the step.
struct Trial {
  double x, y;

  void turn(double angle) {
    constexpr double kShrink = 0.8333333333333334;
    const double turnedX = kShrink * (std::cos(angle) * x + std::sin(angle) * y);
    y = kShrink * (std::cos(angle) * y - std::sin(angle) * x);
    x = turnedX;
  }
  bool leaves(CImage& image, CXPoint from) const {
    return !image.isAt({wrap_add(from.x, to_int(x)), wrap_add(from.y, to_int(y))}, true);
  }
};

Trial slide(CImage& image, Trial step, CXPoint from) {
  constexpr double kAngle = 57.29577951307855;  // as it is, in radians
  constexpr int kTrials = 90;
  Trial left = step;
  Trial right = step;
  for (int i = 0; i < kTrials; ++i) {
    left.turn(kAngle);
    if (left.leaves(image, from)) return left;
    right.turn(-kAngle);
    if (right.leaves(image, from)) return right;
  }
  return left;
}

Result getSlideComps(CImage& image, Call& call) {
  auto* array = call.named<CMC_Array>(4);
  if (array == nullptr || !array->hasRoom(2)) return {};
  const Trial answer = slide(image, {call.real(0), call.real(1)}, point(call, 2));
  CMC_Double component("temp", CMC_Variable::kNoPool);
  for (const double part : {answer.x, answer.y}) {
    component.put(part);
    array->add(&component);
  }
  return {};
}

// The mouse

Result setAsButton(CMC_Image& object, Call& call) {
  object.setAsButton(true, call.boolean(1));
  return {};
}

// The name is known, and that is all.
Result setScaleFactor(CMC_Image& /*object*/, Call& /*call*/) { return {}; }

constexpr Method kMethods[] = {
    {1, "SHOW", "", method<onImage<show>>, "Shows it."},
    {2, "HIDE", "", method<onImage<hide>>, "Hides it."},
    {5, "SETPOSITION", "x:int, y:int", method<onImage<setPosition>>,
     "Puts it there, in pixels of the screen."},
    {59, "SETRESETPOSITION", "x:int, y:int", method<setResetPosition>, "The place that RESETPOSITION means."},
    {58, "RESETPOSITION", "", method<resetPosition>, "Puts it back where it started."},
    {6, "MOVE", "x:int, y:int", method<onImage<move>>, "Moves it by so many pixels."},
    {7, "LOAD", "file:file", method<load>, "Takes another file."},
    {52, "SAVE", "file:file", method<onImage<save>>, "Writes the picture."},
    {8, "CLEARCLIPPING", "", method<onImage<clearClipping>>, "Draws all of it again."},
    {9, "SETCLIPPING", "left:value, [top:int], [right:int], [bottom:int]", method<onImage<setClipping>>,
     "Draws what lies within: four numbers, or the box of a picture by its name."},
    {15, "GETPOSITIONX", "-> int", method<onImage<positionX>>, "Its left edge, in pixels."},
    {16, "GETPOSITIONY", "-> int", method<onImage<positionY>>, "Its upper edge, in pixels."},
    {17, "GETWIDTH", "-> int", method<onImage<width>>, "Its width."},
    {18, "GETHEIGHT", "-> int", method<onImage<height>>, "Its height."},
    {23, "ISNEAR", "left:value, top:int, [right:int], [bottom:int], [percent:int] -> bool",
     method<onImage<isNear>>,
     "Whether it covers a place of four numbers by so many percent, or a picture by its name and the "
     "percent."},
    {24, "ISINSIDE", "x:int, y:int, alpha:bool -> bool", method<onImage<isInside>>,
     "Whether the point lies in it; with TRUE on a pixel that is seen."},
    {26, "MONITORCOLLISION", "alpha:bool", method<monitorCollision>,
     "Watches for collisions, with TRUE pixel by pixel."},
    {27, "REMOVEMONITORCOLLISION", "", method<removeMonitorCollision>, "Watches no more."},
    {28, "SETSCALEFACTOR", "[factors:real...]", method<setScaleFactor>, "Does nothing."},
    {32, "SETPRIORITY", "priority:int", method<onImage<setPriority>>, "Higher ones lie before lower ones."},
    {33, "GETALPHA", "x:int, y:int -> int", method<onImage<getAlpha>>,
     "How opaque it is at a place of the screen."},
    {34, "GETPIXEL", "x:int, y:int -> int", method<onImage<getPixel>>, "The pixel at a place of the screen."},
    {36, "MERGEALPHA", "x:int, y:int, picture:name", method<onImage<mergeAlpha>>,
     "Lays the transparency of another picture over its own."},
    {70, "MERGEALPHA2", "x:int, y:int, picture:name, adds:bool", method<onImage<mergeAlpha2>>,
     "The same for good; with TRUE the two are added."},
    {37, "INVALIDATE", "", method<onImage<invalidate>>, "Draws it anew with the next frame."},
    {40, "GETCENTERX", "-> int", method<onImage<centerX>>, "Half of the sum of its left edge and its width."},
    {41, "GETCENTERY", "-> int", method<onImage<centerY>>,
     "Half of the sum of its upper edge and its height."},
    {48, "ISVISIBLE", "-> bool", method<onImage<isVisible>>, "Whether it is shown."},
    {49, "LINK", "image:name", method<onImage<link>>, "Shows the pixels of another IMAGE."},
    {50, "SETASBUTTON", "on:bool, cursor:bool", method<setAsButton>,
     "It hears the mouse; the second tells whether the pointer changes over it."},
    {51, "SETOPACITY", "opacity:int", method<onImage<setOpacity>>, "0 is invisible, 255 opaque."},
    {64, "GETOPACITY", "-> int", method<onImage<opacity>>, "Its opacity, 0 to 255."},
    {53, "SETANCHOR", "x:value, [y:int]", method<onImage<setAnchor>>,
     "The point that it turns and is placed by: two numbers, or a word such as CENTER."},
    {54, "FLIPH", "", method<onImage<flipH>>, "Mirrors it left to right."},
    {55, "FLIPV", "", method<onImage<flipV>>, "Mirrors it top to bottom."},
    {56, "RESETFLIPS", "", method<onImage<resetFlips>>, "Undoes the mirroring."},
    {57, "DRAWONTO", "picture:name, [priority:int]", method<onImage<drawOnto>>,
     "Makes it a part of another picture."},
    {63, "ISAT", "x:int, y:int, alpha:bool -> bool", method<onImage<isAt>>,
     "Whether the point lies in it; with TRUE on a pixel that is seen."},
    {65, "GETSLIDECOMPS", "stepX:real, stepY:real, x:int, y:int, array:name", method<onImage<getSlideComps>>,
     "Adds to an ARRAY the step by which something slides along its seen pixels."},
    {66, "GETCOLORAT", "x:int, y:int, array:name", method<getColor>, "Adds four zeros to an ARRAY."},
    {67, "GETCOLORRAT", "x:int, y:int -> int", method<onImage<getColorPart>>, "Gives 0."},
    {68, "GETCOLORGAT", "x:int, y:int -> int", method<onImage<getColorPart>>, "Gives 0."},
    {69, "GETCOLORBAT", "x:int, y:int -> int", method<onImage<getColorPart>>, "Gives 0."},
};

constexpr auto kSignals = signalTable<ImageSignal>({
    {ImageSignal::onCollision, "ONCOLLISION", "It begins to touch another picture; as ONCOLLISION^NAME."},
    {ImageSignal::onCollisionFinished, "ONCOLLISIONFINISHED",
     "It ends to touch another picture; as ONCOLLISIONFINISHED^NAME."},
    {ImageSignal::onFocusOn, "ONFOCUSON", "The pointer has come over it."},
    {ImageSignal::onFocusOff, "ONFOCUSOFF", "The pointer has left it."},
    {ImageSignal::onClick, "ONCLICK", "It was clicked; as ONCLICK^LEFT, ^MIDDLE or ^RIGHT."},
    {ImageSignal::onRelease, "ONRELEASE", "A mouse button was released over it; in the same forms."},
});

constexpr Property kProperties[] = {
    {"FILENAME", PropertyKind::file, "", "Its file."},
    {"TOCANVAS", PropertyKind::boolean, "FALSE", "TRUE puts it on the screen at once."},
    {"VISIBLE", PropertyKind::boolean, "FALSE", "TRUE shows it."},
    {"FLUSHAFTERPLAYED", PropertyKind::boolean, "FALSE", "TRUE lets the file go when it is not shown."},
    {"PRELOAD", PropertyKind::boolean, "TRUE", "TRUE reads the file at once, else when it is needed."},
    {"MONITORCOLLISION", PropertyKind::boolean, "FALSE", "TRUE watches for collisions."},
    {"MONITORCOLLISIONALPHA", PropertyKind::boolean, "FALSE", "TRUE watches for collisions pixel by pixel."},
    {"PRIORITY", PropertyKind::integer, "0", "Higher ones lie before lower ones."},
    {"ASBUTTON", PropertyKind::boolean, "FALSE", "Kept for tools: SETASBUTTON lets it hear the mouse."},
};

}  // namespace

extern constinit const ScriptType kImageType = {
    .number = type::kImage,
    .idWord = "IMAGE",
    .stringWord = "IMAGE",
    .definitionWord = "IMAGE",
    .meaning = "A still picture.",
    .pass = 5,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Image>,
    .makeBare = makeBareFrom<CMC_Image>,
};

}  // namespace footlight
