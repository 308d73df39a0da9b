// Scripts' methods of IMAGE.

#include <cmath>

#include "foundation/byte_reader.h"
#include "foundation/diagnose.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/graphics_arguments.h"
#include "objects/mc_array.h"
#include "objects/mc_image.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

// A method on the picture; one without a picture is a silent null.
template <Result (*F)(CImage&, Call&)>
Result onImage(CMC_Image& object, Call& call) {
  const Ref<CImage> image(object.getImage());
  if (!image) diagnose::reportCall(diagnose::Group::object, "there is no picture");
  return image ? F(*image, call) : Result();
}

CRefreshScreen* screenOf(const CImage& image) {
  return image.getWindow() != nullptr ? image.getWindow()->getRefreshScreen() : nullptr;
}

CXPoint point(const Call& call, int first) { return {call.integer(first), call.integer(first + 1)}; }

// Showing and placing

Result show(CImage& image, Call& /*call*/) {
  image.Visible(true);
  return {};
}

Result hide(CImage& image, Call& /*call*/) {
  image.Visible(false);
  return {};
}

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

Result move(CImage& image, Call& call) {
  image.Move(call.integer(0), call.integer(1));
  return {};
}

Result setPriority(CImage& image, Call& call) {
  if (CRefreshScreen* screen = screenOf(image); screen != nullptr)
    screen->SetPriority(&image, call.integer(0));
  return {};
}

Result invalidate(CImage& image, Call& /*call*/) {
  image.Invalidate();
  return {};
}

struct AnchorWord {
  const char* word;
  int x, y;  // in halves of the size
};
constexpr AnchorWord kAnchors[] = {
    {"CENTER", 1, 1}, {"LEFTUPPER", 0, 0}, {"RIGHTUPPER", 2, 0}, {"LEFTLOWER", 0, 2}, {"RIGHTLOWER", 2, 2},
    {"LEFT", 0, 1},   {"RIGHT", 2, 1},     {"TOP", 1, 0},        {"BOTTOM", 1, 2},
};

int halves(int size, int count) { return count == 2 ? size : count * (size / 2); }

Result setAnchor(CImage& image, Call& call) {
  if (call.count() != 1) {
    image.setAnchor(point(call, 0));
    return {};
  }
  const CXString word = call.text(0);
  CXPoint anchor;
  bool isKnown = false;
  for (const AnchorWord& row : kAnchors) {
    if (word != row.word) continue;
    anchor = image.GetPosition() + CXPoint(halves(image.Width(), row.x), halves(image.Height(), row.y));
    isKnown = true;
  }
  if (!isKnown && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::arguments, "no anchor has the word " + word.str());
  image.setAnchor(anchor);
  return {};
}

// Clipping and opacity

Result clearClipping(CImage& image, Call& /*call*/) {
  image.SetClippingRect({});
  return {};
}

Result setClipping(CImage& image, Call& call) {
  if (call.count() == 1) {
    const CGraphicsObject* other = graphicsArgument(call, 0);
    image.SetClippingRect(other != nullptr ? other->GetBoundingBox() : CXRect());
  } else {
    image.SetClippingRect(rectangleArgument(call, 0));
  }
  return {};
}

Result setOpacity(CImage& image, Call& call) {
  image.SetOpacity(static_cast<std::uint8_t>(call.integer(0) & 0xFF));
  return {};
}

Result getOpacity(CImage& image, Call& /*call*/) { return Factory::makeInteger(image.GetOpacity()); }

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

Result drawOnto(CImage& image, Call& call) {
  CGraphicsObject* target = graphicsArgument(call, 0);
  if (target != nullptr) target->addObject(&image, call.count() == 2 ? call.integer(1) : 0);
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

Result flipH(CImage& image, Call& /*call*/) {
  image.FlipH();
  image.Invalidate();
  return {};
}

Result flipV(CImage& image, Call& /*call*/) {
  image.FlipV();
  image.Invalidate();
  return {};
}

Result resetFlips(CImage& image, Call& /*call*/) {
  image.resetFlips();
  image.Invalidate();
  return {};
}

// Questions

Result getPositionX(CImage& image, Call& /*call*/) { return Factory::makeInteger(image.GetPosition().x); }
Result getPositionY(CImage& image, Call& /*call*/) { return Factory::makeInteger(image.GetPosition().y); }
Result getWidth(CImage& image, Call& /*call*/) { return Factory::makeInteger(image.Width()); }
Result getHeight(CImage& image, Call& /*call*/) { return Factory::makeInteger(image.Height()); }

// The sum is halved, not the size alone.
Result getCenterX(CImage& image, Call& /*call*/) {
  return Factory::makeInteger(wrap_add(image.GetPosition().x, image.Width()) / 2);
}
Result getCenterY(CImage& image, Call& /*call*/) {
  return Factory::makeInteger(wrap_add(image.GetPosition().y, image.Height()) / 2);
}

Result isVisible(CImage& image, Call& /*call*/) { return Factory::makeBool(image.isVisible()); }

Result isNear(CImage& image, Call& call) {
  if (call.count() == 2) return Factory::makeBool(image.isNear(graphicsArgument(call, 0), call.integer(1)));
  return Factory::makeBool(image.isNear(rectangleArgument(call, 0), call.integer(4)));
}

Result isInside(CImage& image, Call& call) {
  return Factory::makeBool(image.isInside(call.integer(0), call.integer(1), call.boolean(2)));
}

Result isAt(CImage& image, Call& call) {
  return Factory::makeBool(image.isAt(point(call, 0), call.boolean(2)));
}

// The index of the pixel at a place of the screen; -1 outside of the picture.
std::int64_t pixelIndex(const CImage& image, CXPoint place) {
  const CXPoint position = image.GetPosition();
  const std::int64_t x = std::int64_t{place.x} - position.x;
  const std::int64_t y = std::int64_t{place.y} - position.y;
  return x < 0 || y < 0 || x >= image.Width() || y >= image.Height() ? -1 : y * image.Width() + x;
}

// Both read signed numbers, so an alpha above 127 comes out negative.
Result getAlpha(CImage& image, Call& call) {
  image.unpack();
  const std::int64_t index = pixelIndex(image, point(call, 0));
  const auto plane = image.AlphaChannel().bytes();
  const bool inside = index >= 0 && index < static_cast<std::int64_t>(plane.size());
  return Factory::makeInteger(inside ? static_cast<std::int8_t>(plane[static_cast<std::size_t>(index)]) : 0);
}

Result getPixel(CImage& image, Call& call) {
  image.unpack();
  const std::int64_t index = pixelIndex(image, point(call, 0));
  const auto data = image.pixels().bytes();
  if (index < 0 || index * 2 + 2 > static_cast<std::int64_t>(data.size())) return Factory::makeInteger(0);
  ByteReader reader(data.subspan(static_cast<std::size_t>(index * 2)));
  return Factory::makeInteger(reader.i16());
}

// Nothing is read: the three give an integer, and the fourth four of them.
Result getColorPart(CImage& /*image*/, Call& /*call*/) { return Factory::makeInteger(0); }

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

// Mouse and collisions

Result setAsButton(CMC_Image& object, Call& call) {
  object.setAsButton(true, call.boolean(1));
  return {};
}

Result monitorCollision(CMC_Image& object, Call& call) {
  object.monitorCollisions(call.boolean(0));
  if (CImage* image = object.getImage()) image->setMonitorCollisions(true);
  return {};
}

Result removeMonitorCollision(CMC_Image& object, Call& /*call*/) {
  object.removeCollisionsMonitoring();
  if (CImage* image = object.getImage()) image->setMonitorCollisions(false);
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
    {15, "GETPOSITIONX", 0, 0, method<onImage<getPositionX>>},
    {16, "GETPOSITIONY", 0, 0, method<onImage<getPositionY>>},
    {17, "GETWIDTH", 0, 0, method<onImage<getWidth>>},
    {18, "GETHEIGHT", 0, 0, method<onImage<getHeight>>},
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
    {40, "GETCENTERX", 0, 0, method<onImage<getCenterX>>},
    {41, "GETCENTERY", 0, 0, method<onImage<getCenterY>>},
    {48, "ISVISIBLE", 0, 0, method<onImage<isVisible>>},
    {49, "LINK", 1, 1, method<onImage<link>>},
    {50, "SETASBUTTON", 2, 2, method<setAsButton>},
    {51, "SETOPACITY", 1, 1, method<onImage<setOpacity>>},
    {64, "GETOPACITY", 0, 0, method<onImage<getOpacity>>},
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
