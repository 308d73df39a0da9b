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
     "Puts its anchor there, in pixels of the screen."},
    {59, "SETRESETPOSITION", "x:int, y:int", method<setResetPosition>,
     "Sets the place to which RESETPOSITION goes, in pixels of the screen."},
    {58, "RESETPOSITION", "", method<resetPosition>,
     "Puts it back to its place at the start, or to that of SETRESETPOSITION."},
    {6, "MOVE", "dx:int, dy:int", method<onImage<move>>, "Moves it by so many pixels."},
    {7, "LOAD", "file:file", method<load>, "Takes another file in place of its own."},
    {52, "SAVE", "file:file", method<onImage<save>>, "Writes the picture to a file."},
    {8, "CLEARCLIPPING", "", method<onImage<clearClipping>>, "Draws all of it again."},
    {9, "SETCLIPPING", "left:value, [top:int], [right:int], [bottom:int]", method<onImage<setClipping>>,
     "Draws only what lies within: four numbers in pixels of the screen, or the box of a picture by its "
     "name."},
    {15, "GETPOSITIONX", "-> int", method<onImage<positionX>>, "Its left edge, in pixels of the screen."},
    {16, "GETPOSITIONY", "-> int", method<onImage<positionY>>, "Its upper edge, in pixels of the screen."},
    {17, "GETWIDTH", "-> int", method<onImage<width>>, "Its width, in pixels."},
    {18, "GETHEIGHT", "-> int", method<onImage<height>>, "Its height, in pixels."},
    {23, "ISNEAR", "left:value, top:int, [right:int], [bottom:int], [percent:int] -> bool",
     method<onImage<isNear>>,
     "Whether at least so many percent of it lie within a picture, by its name and the percent, or within a "
     "rectangle, by four numbers and the percent."},
    {24, "ISINSIDE", "x:int, y:int, alpha:bool -> bool", method<onImage<isInside>>,
     "Whether the point of the screen lies in it; with TRUE only where it is not transparent."},
    {26, "MONITORCOLLISION", "alpha:bool", method<monitorCollision>,
     "Watches for collisions: of boxes with FALSE, of pixels with TRUE."},
    {27, "REMOVEMONITORCOLLISION", "", method<removeMonitorCollision>, "Watches for collisions no more."},
    {28, "SETSCALEFACTOR", "[factors:real...]", method<setScaleFactor>, "Does nothing."},
    {32, "SETPRIORITY", "priority:int", method<onImage<setPriority>>,
     "Higher ones are drawn over lower ones."},
    {33, "GETALPHA", "x:int, y:int -> int", method<onImage<getAlpha>>,
     "Its alpha at a place of the screen, 0 outside of it: 0 to 127 as they are, 128 to 255 as -128 to -1."},
    {34, "GETPIXEL", "x:int, y:int -> int", method<onImage<getPixel>>,
     "Its pixel of 16 bits at a place of the screen, as a signed number; 0 outside of it."},
    {36, "MERGEALPHA", "x:int, y:int, picture:name", method<onImage<mergeAlpha>>,
     "Puts the alpha of another picture in the place of its own at x and y, in pixels from its corner; the "
     "next call for that picture first brings back what was there."},
    {70, "MERGEALPHA2", "x:int, y:int, picture:name, reset:bool", method<onImage<mergeAlpha2>>,
     "Takes the alpha of another picture for good at x and y, in pixels from its corner, except where its "
     "own is 0; with TRUE all of its own becomes 255 first."},
    {37, "INVALIDATE", "", method<onImage<invalidate>>, "Draws it anew with the next frame."},
    {40, "GETCENTERX", "-> int", method<onImage<centerX>>,
     "Half of the sum of its left edge and its width, in pixels: not its middle, unless it is at 0."},
    {41, "GETCENTERY", "-> int", method<onImage<centerY>>,
     "Half of the sum of its upper edge and its height, in pixels: not its middle, unless it is at 0."},
    {48, "ISVISIBLE", "-> bool", method<onImage<isVisible>>, "Whether it is shown."},
    {49, "LINK", "image:name", method<onImage<link>>,
     "Takes place, size and pixels of another IMAGE; the two share the pixels."},
    {50, "SETASBUTTON", "on:bool, cursor:bool", method<setAsButton>,
     "Lets it hear the mouse, whatever the first argument; the second tells whether the pointer changes its "
     "shape over it."},
    {51, "SETOPACITY", "opacity:int", method<onImage<setOpacity>>, "From 0, invisible, to 255, opaque."},
    {64, "GETOPACITY", "-> int", method<onImage<opacity>>, "Its opacity, 0 to 255."},
    {53, "SETANCHOR", "x:value, [y:int]", method<onImage<setAnchor>>,
     "The point that SETPOSITION places: two numbers in pixels, or a word: CENTER, LEFT, RIGHT, TOP, BOTTOM, "
     "LEFTUPPER, RIGHTUPPER, LEFTLOWER or RIGHTLOWER."},
    {54, "FLIPH", "", method<onImage<flipH>>, "Turns it upside down."},
    {55, "FLIPV", "", method<onImage<flipV>>, "Mirrors it left to right."},
    {56, "RESETFLIPS", "", method<onImage<resetFlips>>, "Undoes FLIPH and FLIPV."},
    {57, "DRAWONTO", "picture:name, [priority:int]", method<onImage<drawOnto>>,
     "Draws it as a part of another picture from now on; among its parts higher priorities lie on top, 0 "
     "without the argument."},
    {63, "ISAT", "x:int, y:int, alpha:bool -> bool", method<onImage<isAt>>,
     "Whether the point of the screen lies in it; with TRUE only where it is not transparent."},
    {65, "GETSLIDECOMPS", "stepX:real, stepY:real, x:int, y:int, array:name", method<onImage<getSlideComps>>,
     "For a point at x and y that has hit this picture with a step: adds to an ARRAY the two parts of a "
     "turned, shorter step that leads off it."},
    {66, "GETCOLORAT", "x:int, y:int, array:name", method<getColor>,
     "Adds four zeros to an ARRAY; no colour is read."},
    {67, "GETCOLORRAT", "x:int, y:int -> int", method<onImage<getColorPart>>, "Gives 0; no colour is read."},
    {68, "GETCOLORGAT", "x:int, y:int -> int", method<onImage<getColorPart>>, "Gives 0; no colour is read."},
    {69, "GETCOLORBAT", "x:int, y:int -> int", method<onImage<getColorPart>>, "Gives 0; no colour is read."},
};

constexpr auto kSignals = signalTable<ImageSignal>({
    {ImageSignal::onCollision, "ONCOLLISION",
     "It begins to touch another picture; as ONCOLLISION^NAME if that is bound, else with its name as $1 and "
     "the other's as $2."},
    {ImageSignal::onCollisionFinished, "ONCOLLISIONFINISHED",
     "It no longer touches another picture; in the same forms."},
    {ImageSignal::onFocusOn, "ONFOCUSON", "The pointer has come over it, while it acts as a button."},
    {ImageSignal::onFocusOff, "ONFOCUSOFF", "The pointer has left it, while it acts as a button."},
    {ImageSignal::onClick, "ONCLICK",
     "It was clicked, while it acts as a button; as ONCLICK^LEFT, ^MIDDLE or ^RIGHT if that is bound."},
    {ImageSignal::onRelease, "ONRELEASE",
     "A mouse button was released over it, while it acts as a button; in the same forms."},
});

constexpr auto kProperties =
    joined(kPictureProperties, std::to_array<Property>({
                                   {"ASBUTTON", PropertyKind::boolean, "FALSE",
                                    "TRUE lets it hear the mouse, where a mouse signal is bound."},
                               }));

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
