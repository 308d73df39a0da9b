// Scripts' methods of ANIMO.

#include "app/mc_scene.h"
#include "app/unit6.h"
#include "foundation/arithmetic.h"
#include "foundation/byte_reader.h"
#include "foundation/diagnose.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/graphics_arguments.h"
#include "objects/mc_animo.h"
#include "objects/mc_array.h"
#include "script/mc_variable.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

// A method on the animation; an object without one is a silent null.
template <Result (*F)(CAnimo6&, Call&)>
Result onAnimo(CMC_Animo& object, Call& call) {
  const Ref<CAnimo6> animo(object.getAnimo());
  if (!animo) diagnose::reportCall(diagnose::Group::object, "there is no animation");
  return animo ? F(*animo, call) : Result();
}

// A method that only does something, by a function of the animation without arguments.
template <auto F>
Result act(CMC_Animo& object, Call& /*call*/) {
  const Ref<CAnimo6> animo(object.getAnimo());
  if (animo) F(*animo);
  return {};
}

// A method that asks the animation for a number.
template <auto F>
Result number(CMC_Animo& object, Call& /*call*/) {
  const Ref<CAnimo6> animo(object.getAnimo());
  return animo ? Factory::makeInteger(F(*animo)) : Result();
}

CRefreshScreen* screenOf(const CAnimo6& animo) {
  return animo.getWindow() != nullptr ? animo.getWindow()->getRefreshScreen() : nullptr;
}

CXPoint point(const Call& call, int first) { return {call.integer(first), call.integer(first + 1)}; }

bool isInteger(const Call& call, int index) {
  const Ref<CMC_Variable> value = call.variable(index);
  return value && value->getType() == type::kInteger;
}

// The event of an argument: a number, -1 for the current one, or a name.
int eventArgument(const CAnimo6& animo, const Call& call, int index) {
  return isInteger(call, index) ? animo.GetEventNo(call.integer(index)) : animo.GetEventNo(call.text(index));
}

// Showing and placing

Result setPosition(CAnimo6& animo, Call& call) {
  animo.Invalidate();
  animo.setPosition(point(call, 0));
  animo.Invalidate();
  return {};
}

Result move(CAnimo6& animo, Call& call) {
  animo.Move(call.integer(0), call.integer(1));
  return {};
}

Result setPriority(CAnimo6& animo, Call& call) {
  if (CRefreshScreen* screen = screenOf(animo)) screen->SetPriority(&animo, call.integer(0));
  return {};
}

int getPriority(CAnimo6& animo) {
  const CRefreshScreen* screen = screenOf(animo);
  return screen != nullptr ? screen->GetPriority(&animo) : -1;
}

int halves(int size, int count) { return count == 2 ? size : count * (size / 2); }

struct AnchorWord {
  const char* word;
  int x, y;  // in halves of the size
};
constexpr AnchorWord kAnchors[] = {
    {"CENTER", 1, 1}, {"LEFTUPPER", 0, 0}, {"RIGHTUPPER", 2, 0}, {"LEFTLOWER", 0, 2}, {"RIGHTLOWER", 2, 2},
    {"LEFT", 0, 1},   {"RIGHT", 2, 1},     {"TOP", 1, 0},        {"BOTTOM", 1, 2},
};

Result setAnchor(CAnimo6& animo, Call& call) {
  if (call.count() != 1) {
    animo.setAnchor(point(call, 0));
    return {};
  }
  const CXString word = call.text(0);
  CXPoint anchor;
  bool isKnown = false;
  for (const AnchorWord& row : kAnchors) {
    if (word != row.word) continue;
    anchor = animo.GetPosition() + CXPoint(halves(animo.Width(), row.x), halves(animo.Height(), row.y));
    isKnown = true;
  }
  if (!isKnown && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::arguments, "no anchor has the word " + word.str());
  animo.setAnchor(anchor);
  return {};
}

Result getAnchor(CAnimo6& animo, Call& call) {
  auto* array = call.named<CMC_Array>(0);
  if (array == nullptr) return {};
  CMC_Integer x(animo.getAnchor().x);
  CMC_Integer y(animo.getAnchor().y);
  array->add(&x);
  array->add(&y);
  return {};
}

// Clipping, opacity and pixels

Result setClipping(CAnimo6& animo, Call& call) {
  if (call.count() == 1) {
    const CGraphicsObject* other = graphicsArgument(call, 0);
    animo.SetClippingRect(other != nullptr ? other->GetBoundingBox() : CXRect());
  } else {
    animo.SetClippingRect(rectangleArgument(call, 0));
  }
  return {};
}

Result setOpacity(CAnimo6& animo, Call& call) {
  animo.SetOpacity(static_cast<std::uint8_t>(call.integer(0) % 257 & 0xFF));
  return {};
}

Result drawOnto(CAnimo6& animo, Call& call) {
  CGraphicsObject* target = graphicsArgument(call, 0);
  if (target != nullptr) target->addObject(&animo, call.count() == 2 ? call.integer(1) : 0);
  return {};
}

Result mergeAlpha(CAnimo6& animo, Call& call) {
  CGraphicsObject* other = graphicsArgument(call, 2);
  if (other == nullptr) return {};
  animo.mergeAlpha(point(call, 0), other);
  animo.Invalidate();
  return {};
}

// The index of the pixel at a place of the screen; -1 outside of the animation.
std::int64_t pixelIndex(const CAnimo6& animo, CXPoint place) {
  const CXPoint position = animo.GetPosition();
  const std::int64_t x = std::int64_t{place.x} - position.x;
  const std::int64_t y = std::int64_t{place.y} - position.y;
  return x < 0 || y < 0 || x >= animo.Width() || y >= animo.Height() ? -1 : y * animo.Width() + x;
}

// Both read signed numbers, so an alpha above 127 comes out negative.
Result getAlpha(CAnimo6& animo, Call& call) {
  animo.unpack();
  const std::int64_t index = pixelIndex(animo, point(call, 0));
  const auto plane = animo.AlphaChannel().bytes();
  const bool inside = index >= 0 && index < static_cast<std::int64_t>(plane.size());
  return Factory::makeInteger(inside ? static_cast<std::int8_t>(plane[static_cast<std::size_t>(index)]) : 0);
}

Result getPixel(CAnimo6& animo, Call& call) {
  animo.unpack();
  const std::int64_t index = pixelIndex(animo, point(call, 0));
  const auto data = animo.pixels().bytes();
  if (index < 0 || index * 2 + 2 > static_cast<std::int64_t>(data.size())) return Factory::makeInteger(0);
  ByteReader reader(data.subspan(static_cast<std::size_t>(index * 2)));
  return Factory::makeInteger(reader.i16());
}

Result isNear(CAnimo6& animo, Call& call) {
  if (call.count() == 2) return Factory::makeBool(animo.isNear(graphicsArgument(call, 0), call.integer(1)));
  return Factory::makeBool(animo.isNear(rectangleArgument(call, 0), call.integer(4)));
}

Result isAt(CAnimo6& animo, Call& call) {
  return Factory::makeBool(animo.isAt(point(call, 0), call.boolean(2)));
}

// Playing

Result load(CMC_Animo& object, Call& call) {
  object.load(call.text(0), true);
  return {};
}

Result play(CMC_Animo& object, Call& call) {
  const Ref<CAnimo6> animo(object.getAnimo());
  if (!animo) return {};
  if (call.has(0)) {
    animo->addNotifier(&object);
    animo->Play(call.text(0), 0, CAnimo::kUsualFps);
  } else {
    animo->play();
  }
  return {};
}

Result stop(CAnimo6& animo, Call& call) {
  animo.stop(!call.has(0) || call.boolean(0));
  return {};
}

Result isPlaying(CAnimo6& animo, Call& call) {
  if (!call.has(0)) return Factory::makeBool(animo.isPlaying());
  const CXString name = isInteger(call, 0) ? animo.GetEventName(eventArgument(animo, call, 0)) : call.text(0);
  return Factory::makeBool(animo.isPlaying(name));
}

Result playReverse(CAnimo6& animo, Call& call) {
  const Ref<CMC_Variable> event = call.variable(0);
  const int kind = event ? event->getType() : 0;
  if (kind != type::kInteger && kind != type::kString) return {};
  const CXString name =
      kind == type::kInteger ? animo.GetEventName(eventArgument(animo, call, 0)) : call.text(0);
  animo.playReverse(name, call.has(1) ? call.integer(1) : CAnimo::kCurrent);
  return {};
}

Result nPlay(CAnimo6& animo, Call& call) {
  const CXString name = animo.GetEventName(animo.GetEventNo(call.integer(0)));
  animo.Play(name, call.has(1) ? call.integer(1) : CAnimo::kCurrent, 0);
  return {};
}

Result playRand(CAnimo6& animo, Call& call) {
  CUnit6* unit = CMC_Scene::getDefUnit();
  if (unit != nullptr) unit->addRandomPlayable(&animo, call.integer(1), call.integer(2), call.text(0));
  return {};
}

Result setFps(CAnimo6& animo, Call& call) {
  animo.SetFPS(call.integer(0));
  return {};
}

// Frames and events

Result setFrame(CAnimo6& animo, Call& call) {
  if (call.count() < 2) {
    animo.SetFrame(call.integer(0));
    return {};
  }
  const int event = eventArgument(animo, call, 0);
  if (isInteger(call, 1)) {
    animo.SetEventFrame(event, call.integer(1));
  } else {
    animo.SetEventFrame(event, call.text(1));
  }
  return {};
}

Result getFrameName(CAnimo6& animo, Call& call) {
  const int event = call.has(0) ? eventArgument(animo, call, 0) : animo.GetCurrentEvent();
  const int position = call.has(1) ? call.integer(1) : CAnimo::kCurrent;
  return Factory::makeString(event < 0 ? CXString() : animo.getFrameName(event, position));
}

Result setFrameName(CAnimo6& animo, Call& call) {
  const int event = eventArgument(animo, call, 0);
  if (event >= 0) animo.setFrameName(event, call.integer(1), call.text(2));
  return {};
}

Result getFrameNo(CAnimo6& animo, Call& call) {
  if (call.count() < 2) return Factory::makeInteger(animo.GetFrameNo());
  const int event = eventArgument(animo, call, 0);
  if (event < 0) return Factory::makeInteger(-1);
  return Factory::makeInteger(isInteger(call, 1) ? animo.GetFrameNo(event, call.integer(1))
                                                 : animo.GetFrameNo(event, call.text(1)));
}

Result getEventName(CAnimo6& animo, Call& call) {
  const int event = call.has(0) ? animo.GetEventNo(call.integer(0)) : animo.GetCurrentEvent();
  return Factory::makeString(animo.GetEventName(event));
}

Result getNofInEvent(CAnimo6& animo, Call& call) {
  return Factory::makeInteger(call.has(0) ? animo.GetNOFInEvent(eventArgument(animo, call, 0)) : 0);
}

// Sound

constexpr int kSilent = -10000;  // hundredths of a decibel
constexpr int kLeast = -3100;

Result setVolume(CAnimo6& animo, Call& call) {
  const int volume = wrap_mul(wrap_sub(call.integer(0), 800), 4);
  animo.setVolume(volume <= kLeast ? kSilent : volume);
  return {};
}

Result setPan(CAnimo6& animo, Call& call) {
  int pan = wrap_mul(wrap_sub(call.integer(0), 400), 2);
  if (pan <= kLeast) pan = kSilent;
  if (pan >= -kLeast) pan = -kSilent;
  animo.setPanning(pan);
  return {};
}

Result setFreq(CAnimo6& animo, Call& call) {
  animo.setFrequency(call.integer(0));
  return {};
}

// Mouse and collisions

Result setAsButton(CMC_Animo& object, Call& call) {
  object.setAsButton(call.boolean(0), call.boolean(1));
  return {};
}

Result setOnFirstFrame(CMC_Animo& object, Call& call) {
  object.setOnFirstFrame(!call.has(0) || call.boolean(0));
  return {};
}

Result monitorCollision(CMC_Animo& object, Call& call) {
  object.monitorCollisions(call.boolean(0));
  if (CAnimo6* animo = object.getAnimo()) animo->setMonitorCollisions(true);
  return {};
}

Result removeMonitorCollision(CMC_Animo& object, Call& /*call*/) {
  object.removeCollisionsMonitoring();
  if (CAnimo6* animo = object.getAnimo()) animo->setMonitorCollisions(false);
  return {};
}

// One line each

void show(CAnimo6& a) { a.show(); }
void hide(CAnimo6& a) { a.hide(); }
void pause(CAnimo6& a) { a.pause(); }
void resume(CAnimo6& a) { a.resume(); }
void clearClipping(CAnimo6& a) { a.SetClippingRect({}); }
void setForward(CAnimo6& a) { a.setDirection(_direction::forward); }
void setBackward(CAnimo6& a) { a.setDirection(_direction::backward); }
void nextFrame(CAnimo6& a) { a.Next(); }
void prevFrame(CAnimo6& a) { a.Prev(); }
void invalidate(CAnimo6& a) { a.Invalidate(); }
void flipH(CAnimo6& a) {
  a.FlipH();
  a.Invalidate();
}
void flipV(CAnimo6& a) {
  a.FlipV();
  a.Invalidate();
}
void resetFlips(CAnimo6& a) {
  a.resetFlips();
  a.Invalidate();
}

int positionX(CAnimo6& a) { return a.GetPosition().x; }
int positionY(CAnimo6& a) { return a.GetPosition().y; }
int width(CAnimo6& a) { return a.Width(); }
int height(CAnimo6& a) { return a.Height(); }
int current(CAnimo6& a) { return a.Current(); }
int eventNumber(CAnimo6& a) { return a.GetCurrentEvent(); }
int fps(CAnimo6& a) { return a.getFPS(); }
int framePositionX(CAnimo6& a) { return a.getCurrFramePosition().x; }
int framePositionY(CAnimo6& a) { return a.getCurrFramePosition().y; }
int centerX(CAnimo6& a) { return wrap_add(a.GetPosition().x, a.Width() / 2); }
int centerY(CAnimo6& a) { return wrap_add(a.GetPosition().y, a.Height() / 2); }
int numberOfEvents(CAnimo6& a) { return a.GetNOE(); }
int numberOfFrames(CAnimo6& a) { return a.GetNOF(); }
int maxWidth(CAnimo6& a) { return a.GetMaxWidth(); }
int maxHeight(CAnimo6& a) { return a.GetMaxHeight(); }
int frameInEvent(CAnimo6& a) { return a.GetCurrentFrameInSequence(); }
int opacity(CAnimo6& a) { return a.GetOpacity(); }

Result isVisible(CAnimo6& animo, Call& /*call*/) { return Factory::makeBool(animo.isVisible()); }

constexpr Method kMethods[] = {
    {1, "SHOW", 0, 0, method<act<show>>},
    {2, "HIDE", 0, 0, method<act<hide>>},
    {3, "PAUSE", 0, 0, method<act<pause>>},
    {4, "RESUME", 0, 0, method<act<resume>>},
    {5, "SETPOSITION", 2, 2, method<onAnimo<setPosition>>},
    {6, "MOVE", 2, 2, method<onAnimo<move>>},
    {7, "LOAD", 1, 1, method<load>},
    {8, "CLEARCLIPPING", 0, 0, method<act<clearClipping>>},
    {9, "SETCLIPPING", 1, 4, method<onAnimo<setClipping>>},
    {10, "PLAY", 0, 1, method<play>},
    {11, "SETFRAME", 0, 2, method<onAnimo<setFrame>>},
    {12, "STOP", 0, 1, method<onAnimo<stop>>},
    {13, "ISPLAYING", 0, 1, method<onAnimo<isPlaying>>},
    {15, "GETPOSITIONX", 0, 1, method<number<positionX>>},
    {16, "GETPOSITIONY", 0, 1, method<number<positionY>>},
    {17, "GETWIDTH", 0, 0, method<number<width>>},
    {18, "GETHEIGHT", 0, 0, method<number<height>>},
    {19, "GETFRAME", 0, 0, method<number<current>>},
    {20, "GETFRAMENAME", 0, 2, method<onAnimo<getFrameName>>},
    {56, "SETFRAMENAME", 3, 3, method<onAnimo<setFrameName>>},
    {21, "GETFRAMENO", 0, 2, method<onAnimo<getFrameNo>>},
    {22, "GETEVENTNAME", 0, 1, method<onAnimo<getEventName>>},
    {67, "GETEVENTNUMBER", 0, 1, method<number<eventNumber>>},
    {23, "ISNEAR", 2, 5, method<onAnimo<isNear>>},
    {24, "ISINSIDE", 3, 3, method<onAnimo<isAt>>},
    {25, "PLAYRAND", 3, 3, method<onAnimo<playRand>>},
    {26, "MONITORCOLLISION", 1, 1, method<monitorCollision>},
    {27, "REMOVEMONITORCOLLISION", 0, 0, method<removeMonitorCollision>},
    {28, "SETFORWARD", 0, 0, method<act<setForward>>},
    {29, "SETBACKWARD", 0, 0, method<act<setBackward>>},
    {30, "NEXTFRAME", 0, 0, method<act<nextFrame>>},
    {31, "PREVFRAME", 0, 0, method<act<prevFrame>>},
    {32, "SETPRIORITY", 1, 1, method<onAnimo<setPriority>>},
    {57, "GETPRIORITY", 0, 0, method<number<getPriority>>},
    {33, "GETALPHA", 2, 2, method<onAnimo<getAlpha>>},
    {34, "GETPIXEL", 2, 2, method<onAnimo<getPixel>>},
    {35, "SETFPS", 1, 1, method<onAnimo<setFps>>},
    {68, "GETFPS", 0, 0, method<number<fps>>},
    {36, "MERGEALPHA", 3, 3, method<onAnimo<mergeAlpha>>},
    {37, "INVALIDATE", 0, 0, method<act<invalidate>>},
    {38, "GETCURRFRAMEPOSX", 0, 0, method<number<framePositionX>>},
    {39, "GETCURRFRAMEPOSY", 0, 0, method<number<framePositionY>>},
    {40, "GETCENTERX", 0, 0, method<number<centerX>>},
    {41, "GETCENTERY", 0, 0, method<number<centerY>>},
    {42, "GETNOE", 0, 0, method<number<numberOfEvents>>},
    {43, "GETNOF", 0, 0, method<number<numberOfFrames>>},
    {44, "GETNOFINEVENT", 0, 1, method<onAnimo<getNofInEvent>>},
    {45, "GETMAXWIDTH", 0, 0, method<number<maxWidth>>},
    {46, "GETMAXHEIGHT", 0, 0, method<number<maxHeight>>},
    {47, "ISVISIBLE", 0, 0, method<onAnimo<isVisible>>},
    {48, "GETCFRAMEINEVENT", 0, 0, method<number<frameInEvent>>},
    {49, "SETASBUTTON", 2, 2, method<setAsButton>},
    {50, "SETONFF", 0, 1, method<setOnFirstFrame>},
    {51, "SETOPACITY", 1, 1, method<onAnimo<setOpacity>>},
    {65, "GETOPACITY", 0, 0, method<number<opacity>>},
    {52, "SETVOLUME", 1, 1, method<onAnimo<setVolume>>},
    {53, "SETPAN", 1, 1, method<onAnimo<setPan>>},
    {54, "SETFREQ", 1, 1, method<onAnimo<setFreq>>},
    {55, "SETANCHOR", 1, 2, method<onAnimo<setAnchor>>},
    {66, "GETANCHOR", 1, 1, method<onAnimo<getAnchor>>},
    {58, "FLIPH", 0, 0, method<act<flipH>>},
    {59, "FLIPV", 0, 0, method<act<flipV>>},
    {60, "RESETFLIPS", 0, 0, method<act<resetFlips>>},
    {61, "DRAWONTO", 1, 2, method<onAnimo<drawOnto>>},
    {62, "PLAYREVERSE", 1, 2, method<onAnimo<playReverse>>},
    {63, "NPLAY", 1, 2, method<onAnimo<nPlay>>},
    {64, "ISAT", 3, 3, method<onAnimo<isAt>>},
};

}  // namespace

std::span<const Method> methods::animo() { return kMethods; }

}  // namespace footlight
