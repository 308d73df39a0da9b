#include "objects/gfx/graphics_methods.h"

#include "foundation/byte_reader.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/gfx/graphics_arguments.h"

namespace footlight::graphics_methods {

namespace {

using Factory = CMC_VariableFactory;

CRefreshScreen* screenOf(const CGraphicsObject& graphic) {
  return graphic.getWindow() != nullptr ? graphic.getWindow()->getRefreshScreen() : nullptr;
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

// The index of the pixel at a place of the screen; -1 outside of the graphic.
std::int64_t pixelIndex(const CGraphicsObject& graphic, CXPoint place) {
  const CXPoint position = graphic.GetPosition();
  const std::int64_t x = std::int64_t{place.x} - position.x;
  const std::int64_t y = std::int64_t{place.y} - position.y;
  const bool isInside = x >= 0 && y >= 0 && x < graphic.Width() && y < graphic.Height();
  return isInside ? y * graphic.Width() + x : -1;
}

}  // namespace

// Showing and placing

Result move(CGraphicsObject& graphic, Call& call) {
  graphic.Move(call.integer(0), call.integer(1));
  return {};
}

Result setPriority(CGraphicsObject& graphic, Call& call) {
  if (CRefreshScreen* screen = screenOf(graphic)) screen->SetPriority(&graphic, call.integer(0));
  return {};
}

int getPriority(CGraphicsObject& graphic) {
  const CRefreshScreen* screen = screenOf(graphic);
  return screen != nullptr ? screen->GetPriority(&graphic) : -1;
}

Result setAnchor(CGraphicsObject& graphic, Call& call) {
  if (call.count() != 1) {
    graphic.setAnchor(point(call, 0));
    return {};
  }
  const CXString word = call.text(0);
  CXPoint anchor;
  bool isKnown = false;
  for (const AnchorWord& row : kAnchors) {
    if (word != row.word) continue;
    anchor = graphic.GetPosition() + CXPoint(halves(graphic.Width(), row.x), halves(graphic.Height(), row.y));
    isKnown = true;
  }
  if (!isKnown && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::arguments, "no anchor has the word " + word.str());
  graphic.setAnchor(anchor);
  return {};
}

void invalidate(CGraphicsObject& graphic) { graphic.Invalidate(); }

void flipH(CGraphicsObject& graphic) {
  graphic.FlipH();
  graphic.Invalidate();
}

void flipV(CGraphicsObject& graphic) {
  graphic.FlipV();
  graphic.Invalidate();
}

void resetFlips(CGraphicsObject& graphic) {
  graphic.resetFlips();
  graphic.Invalidate();
}

Result setClipping(CGraphicsObject& graphic, Call& call) {
  if (call.count() == 1) {
    const CGraphicsObject* other = graphicsArgument(call, 0);
    graphic.SetClippingRect(other != nullptr ? other->GetBoundingBox() : CXRect());
  } else {
    graphic.SetClippingRect(rectangleArgument(call, 0));
  }
  return {};
}

void clearClipping(CGraphicsObject& graphic) { graphic.SetClippingRect({}); }

Result drawOnto(CGraphicsObject& graphic, Call& call) {
  CGraphicsObject* target = graphicsArgument(call, 0);
  if (target != nullptr) target->addObject(&graphic, call.count() == 2 ? call.integer(1) : 0);
  return {};
}

// Questions

int positionX(CGraphicsObject& graphic) { return graphic.GetPosition().x; }
int positionY(CGraphicsObject& graphic) { return graphic.GetPosition().y; }
int width(CGraphicsObject& graphic) { return graphic.Width(); }
int height(CGraphicsObject& graphic) { return graphic.Height(); }
int opacity(CGraphicsObject& graphic) { return graphic.GetOpacity(); }
bool isVisible(CGraphicsObject& graphic) { return graphic.isVisible(); }

Result isNear(CGraphicsObject& graphic, Call& call) {
  if (call.count() == 2) return Factory::makeBool(graphic.isNear(graphicsArgument(call, 0), call.integer(1)));
  return Factory::makeBool(graphic.isNear(rectangleArgument(call, 0), call.integer(4)));
}

Result getAlpha(CGraphicsObject& graphic, Call& call) {
  graphic.unpack();
  const std::int64_t index = pixelIndex(graphic, point(call, 0));
  const auto plane = graphic.AlphaChannel().bytes();
  const bool isInside = index >= 0 && index < static_cast<std::int64_t>(plane.size());
  return Factory::makeInteger(isInside ? static_cast<std::int8_t>(plane[static_cast<std::size_t>(index)])
                                       : 0);
}

Result getPixel(CGraphicsObject& graphic, Call& call) {
  graphic.unpack();
  const std::int64_t index = pixelIndex(graphic, point(call, 0));
  const auto data = graphic.pixels().bytes();
  if (index < 0 || index * 2 + 2 > static_cast<std::int64_t>(data.size())) return Factory::makeInteger(0);
  ByteReader reader(data.subspan(static_cast<std::size_t>(index * 2)));
  return Factory::makeInteger(reader.i16());
}

// Collisions

Result monitorCollision(CMC_Graphic& object, Call& call) {
  object.monitorCollisions(call.boolean(0));
  if (CGraphicsObject* graphic = object.getGraphic()) graphic->setMonitorCollisions(true);
  return {};
}

Result removeMonitorCollision(CMC_Graphic& object, Call& /*call*/) {
  object.removeCollisionsMonitoring();
  if (CGraphicsObject* graphic = object.getGraphic()) graphic->setMonitorCollisions(false);
  return {};
}

}  // namespace footlight::graphics_methods
