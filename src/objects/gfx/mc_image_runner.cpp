// Scripts' methods of IMAGE.

#include <cmath>

#include "objects/data/mc_array.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/graphics_methods.h"
#include "objects/gfx/mc_image.h"
#include "script/method_tables.h"

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
    {1, "SHOW", 0, 0, method<onImage<show>>},
    {2, "HIDE", 0, 0, method<onImage<hide>>},
    {5, "SETPOSITION", 2, 2, method<onImage<setPosition>>},
    {59, "SETRESETPOSITION", 2, 2, method<setResetPosition>},
    {58, "RESETPOSITION", 0, 0, method<resetPosition>},
    {6, "MOVE", 2, 2, method<onImage<move>>},
    {7, "LOAD", 1, 1, method<load>},
    {52, "SAVE", 1, 1, method<onImage<save>>},
    {8, "CLEARCLIPPING", 0, 0, method<onImage<clearClipping>>},
    {9, "SETCLIPPING", 1, 4, method<onImage<setClipping>>},
    {15, "GETPOSITIONX", 0, 0, method<onImage<positionX>>},
    {16, "GETPOSITIONY", 0, 0, method<onImage<positionY>>},
    {17, "GETWIDTH", 0, 0, method<onImage<width>>},
    {18, "GETHEIGHT", 0, 0, method<onImage<height>>},
    {23, "ISNEAR", 2, 5, method<onImage<isNear>>},
    {24, "ISINSIDE", 3, 3, method<onImage<isInside>>},
    {26, "MONITORCOLLISION", 1, 1, method<monitorCollision>},
    {27, "REMOVEMONITORCOLLISION", 0, 0, method<removeMonitorCollision>},
    {28, "SETSCALEFACTOR", 0, Method::kAny, method<setScaleFactor>},
    {32, "SETPRIORITY", 1, 1, method<onImage<setPriority>>},
    {33, "GETALPHA", 2, 2, method<onImage<getAlpha>>},
    {34, "GETPIXEL", 2, 2, method<onImage<getPixel>>},
    {36, "MERGEALPHA", 3, 3, method<onImage<mergeAlpha>>},
    {70, "MERGEALPHA2", 4, 4, method<onImage<mergeAlpha2>>},
    {37, "INVALIDATE", 0, 0, method<onImage<invalidate>>},
    {40, "GETCENTERX", 0, 0, method<onImage<centerX>>},
    {41, "GETCENTERY", 0, 0, method<onImage<centerY>>},
    {48, "ISVISIBLE", 0, 0, method<onImage<isVisible>>},
    {49, "LINK", 1, 1, method<onImage<link>>},
    {50, "SETASBUTTON", 2, 2, method<setAsButton>},
    {51, "SETOPACITY", 1, 1, method<onImage<setOpacity>>},
    {64, "GETOPACITY", 0, 0, method<onImage<opacity>>},
    {53, "SETANCHOR", 1, 2, method<onImage<setAnchor>>},
    {54, "FLIPH", 0, 0, method<onImage<flipH>>},
    {55, "FLIPV", 0, 0, method<onImage<flipV>>},
    {56, "RESETFLIPS", 0, 0, method<onImage<resetFlips>>},
    {57, "DRAWONTO", 1, 2, method<onImage<drawOnto>>},
    {63, "ISAT", 3, 3, method<onImage<isAt>>},
    {65, "GETSLIDECOMPS", 5, 5, method<onImage<getSlideComps>>},
    {66, "GETCOLORAT", 3, 3, method<getColor>},
    {67, "GETCOLORRAT", 2, 2, method<onImage<getColorPart>>},
    {68, "GETCOLORGAT", 2, 2, method<onImage<getColorPart>>},
    {69, "GETCOLORBAT", 2, 2, method<onImage<getColorPart>>},
};

}  // namespace

std::span<const Method> methods::image() { return kMethods; }

}  // namespace footlight
