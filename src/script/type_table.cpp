#include "script/type_table.h"

namespace footlight {

namespace {

#define FOOTLIGHT_THREE "ONINIT", "ONDONE", "ONSIGNAL"

constexpr const char* kThree[] = {FOOTLIGHT_THREE};
constexpr const char* kVariableSignals[] = {FOOTLIGHT_THREE, "ONCHANGED", "ONBRUTALCHANGED", "ONNETCHANGE"};
constexpr const char* kArraySignals[] = {FOOTLIGHT_THREE, "ONCHANGED"};
constexpr const char* kConditionSignals[] = {FOOTLIGHT_THREE, "ONRUNTIMESUCCESS", "ONRUNTIMEFAILED"};
constexpr const char* kAnimoSignals[] = {
    FOOTLIGHT_THREE, "ONSTARTED",           "ONFINISHED", "ONPAUSED",   "ONRESUMED", "ONFRAMECHANGED",
    "ONCOLLISION",   "ONCOLLISIONFINISHED", "ONFOCUSON",  "ONFOCUSOFF", "ONCLICK",   "ONRELEASE"};
constexpr const char* kImageSignals[] = {
    FOOTLIGHT_THREE, "ONCOLLISION", "ONCOLLISIONFINISHED", "ONFOCUSON", "ONFOCUSOFF", "ONCLICK", "ONRELEASE"};
constexpr const char* kTextSignals[] = {FOOTLIGHT_THREE, "ONCOLLISION", "ONCOLLISIONFINISHED"};
constexpr const char* kButtonSignals[] = {FOOTLIGHT_THREE, "ONFOCUSON",    "ONFOCUSOFF", "ONPAUSED",
                                          "ONCLICKED",     "ONRELEASED",   "ONACTION",   "ONSTARTDRAGGING",
                                          "ONDRAGGING",    "ONENDDRAGGING"};
constexpr const char* kCanvasSignals[] = {FOOTLIGHT_THREE, "ONFOCUSON", "ONFOCUSOFF", "ONCLICK", "ONRELEASE"};
constexpr const char* kCanvasObserverSignals[] = {FOOTLIGHT_THREE,   "ONINITIALUPDATE", "ONUPDATE",
                                                  "ONUPDATED",       "ONWINDOWFOCUSON", "ONWINDOWFOCUSOFF",
                                                  "ONINITIALUPDATED"};
constexpr const char* kEditBoxSignals[] = {FOOTLIGHT_THREE, "ONFOCUSON", "ONFOCUSOFF",
                                           "ONCHANGED",     "ONENTER",   "ONESC"};
constexpr const char* kJoystickSignals[] = {FOOTLIGHT_THREE, "ONBUTTONUP", "ONBUTTONDOWN", "ONMOVE"};
constexpr const char* kKeyboardSignals[] = {FOOTLIGHT_THREE, "ONCHAR", "ONKEYDOWN", "ONKEYUP"};
constexpr const char* kMouseSignals[] = {FOOTLIGHT_THREE, "ONMOVE", "ONCLICK", "ONRELEASE", "ONDBLCLICK"};
constexpr const char* kSceneSignals[] = {FOOTLIGHT_THREE, "ONDOMODAL",    "ONRESTART", "ONMUSICLOOPED",
                                         "ONACTIVATE",    "ONDEACTIVATE", "ONUPGRADED"};
constexpr const char* kScrollSignals[] = {FOOTLIGHT_THREE, "ONTOP", "ONBOTTOM", "ONLEFT", "ONRIGHT"};
constexpr const char* kSequenceSignals[] = {FOOTLIGHT_THREE, "ONSTARTED", "ONFINISHED"};
constexpr const char* kSoundSignals[] = {FOOTLIGHT_THREE, "ONSTARTED", "ONFINISHED", "ONRESUMED"};
constexpr const char* kTimerSignals[] = {FOOTLIGHT_THREE, "ONTICK"};
constexpr const char* kNetClientSignals[] = {FOOTLIGHT_THREE, "ONCONNECTED", "ONCOMMAND",
                                             "ONCONNECTIONCLOSED"};
constexpr const char* kNetServerSignals[] = {FOOTLIGHT_THREE, "ONNEWPLAYER", "ONDESTROYPLAYER", "ONCOMMAND",
                                             "ONTEXT"};

constexpr const char* kValueProperties[] = {"VALUE", "DEFAULT", "TOINI", "NETNOTIFY"};
constexpr const char* kBehaviourProperties[] = {"CODE", "CONDITION"};
constexpr const char* kConditionProperties[] = {"OPERAND1", "OPERATOR", "OPERAND2"};
constexpr const char* kComplexConditionProperties[] = {"CONDITION1", "OPERATOR", "CONDITION2"};
constexpr const char* kStructureProperties[] = {"FIELDS", "TOINI", "NETNOTIFY"};
constexpr const char* kArrayProperties[] = {"SENDONCHANGE"};
constexpr const char* kClassProperties[] = {"DEF", "BASE"};
constexpr const char* kTimerProperties[] = {"ELAPSE", "TICKS", "ENABLED"};
constexpr const char* kButtonProperties[] = {"ACCENT",      "GFXSTANDARD", "GFXONMOVE",  "GFXONCLICK",
                                             "SNDSTANDARD", "SNDONMOVE",   "SNDONCLICK", "DRAG",
                                             "RECT",        "ENABLE",      "DRAGGABLE",  "PRIORITY"};
constexpr const char* kSoundProperties[] = {"FILENAME", "PRELOAD", "FLUSHAFTERPLAYED"};
constexpr const char* kJoystickProperties[] = {"PORT"};
constexpr const char* kImageProperties[] = {"FILENAME",
                                            "TOCANVAS",
                                            "VISIBLE",
                                            "FLUSHAFTERPLAYED",
                                            "PRELOAD",
                                            "MONITORCOLLISION",
                                            "MONITORCOLLISIONALPHA",
                                            "PRIORITY",
                                            "ASBUTTON"};
constexpr const char* kAnimoProperties[] = {"FILENAME",
                                            "TOCANVAS",
                                            "VISIBLE",
                                            "FLUSHAFTERPLAYED",
                                            "PRELOAD",
                                            "MONITORCOLLISION",
                                            "MONITORCOLLISIONALPHA",
                                            "PRIORITY",
                                            "FPS",
                                            "ASBUTTON",
                                            "ONFIRSTFRAME"};
constexpr const char* kSceneProperties[] = {"DLLS",   "DESCRIPTION", "CREATIONTIME", "LASTMODIFYTIME",
                                            "AUTHOR", "COAUTHORS",   "PATH",         "BACKGROUND",
                                            "MUSIC",  "DEAMON",      "VERSION"};
constexpr const char* kEpisodeProperties[] = {
    "SCENES",    "STARTWITH", "DLLS",       "DESCRIPTION", "CREATIONTIME", "LASTMODIFYTIME", "AUTHOR",
    "COAUTHORS", "PATH",      "BACKGROUND", "MUSIC",       "DEAMON",       "VERSION"};
constexpr const char* kApplicationProperties[] = {
    "EPISODES", "SCENES",    "STARTWITH", "DLLS",       "DESCRIPTION", "CREATIONTIME", "LASTMODIFYTIME",
    "AUTHOR",   "COAUTHORS", "PATH",      "BACKGROUND", "MUSIC",       "DEAMON",       "VERSION"};

// clang-format off
constexpr TypeDescription kTypes[] = {
    // number, getTypeId, typeToString, TYPE, pass, signals, properties
    {type::kInteger, "INTEGER", "INTEGER", "INTEGER", 2, kVariableSignals, kValueProperties},
    {type::kString, "STRING", "STRING", "STRING", 2, kVariableSignals, kValueProperties},
    {type::kBool, "BOOL", "BOOL", "BOOL", 2, kVariableSignals, kValueProperties},
    {type::kDouble, "DOUBLE", "DOUBLE", "DOUBLE", 2, kVariableSignals, kValueProperties},
    {type::kVariable, "VARIABLE", nullptr, nullptr, 0, {}, {}},
    {type::kCondition, "CONDITION", "CONDITION", "CONDITION", 3, kConditionSignals, kConditionProperties},
    {type::kComplexCondition, "COMPLEXCONDITION", "COMPLEX CONDITION", "COMPLEXCONDITION", 3, kConditionSignals, kComplexConditionProperties},
    {type::kExpression, "EXPRESSION", "EXPRESSION", "EXPRESSION", 3, kVariableSignals, kConditionProperties},
    {type::kBehaviour, "BEHAVIOUR", "BEHAVIOUR", "BEHAVIOUR", 1, kThree, kBehaviourProperties},
    {type::kMouse, "MOUSE", "MOUSE", "MOUSE", 6, kMouseSignals, {}},
    {type::kKeyboard, "KEYBOARD", "KEYBOARD", "KEYBOARD", 6, kKeyboardSignals, {}},
    {type::kRandom, "RANDOM", "RANDOM", nullptr, 0, kThree, {}},
    {type::kCanvasObserver, "CANVASOBSERVER", "CANVAS OBSERVER", "CANVAS_OBSERVER", 6, kCanvasObserverSignals, {}},
    {type::kApplication, "APPLICATION", "APPLICATION", nullptr, 0, kSceneSignals, kApplicationProperties},
    {type::kEpisode, "EPISODE", "EPISODE", nullptr, 0, kSceneSignals, kEpisodeProperties},
    {type::kScene, "SCENE", "SCENE", nullptr, 0, kSceneSignals, kSceneProperties},
    {type::kAnimo, "ANIMO", "ANIMO", "ANIMO", 5, kAnimoSignals, kAnimoProperties},
    {type::kButton, "BUTTON", "BUTTON", "BUTTON", 6, kButtonSignals, kButtonProperties},
    {type::kFont, "FONT", "FONT", "FONT", 5, kThree, {}},
    {type::kSequence, "SEQUENCE", "SEQUENCE", "SEQUENCE", 6, kSequenceSignals, {}},
    {type::kSound, "SOUND", "SOUND", "SOUND", 5, kSoundSignals, kSoundProperties},
    {type::kText, "TEXT", "TEXT", "TEXT", 6, kTextSignals, {}},
    {type::kTimer, "TIMER", "TIMER", "TIMER", 6, kTimerSignals, kTimerProperties},
    {type::kImage, "IMAGE", "IMAGE", "IMAGE", 5, kImageSignals, kImageProperties},
    {type::kEditBox, "EDITBOX", nullptr, "EDITBOX", 6, kEditBoxSignals, {}},
    {type::kNetPeer, "NETPEER", "NETPEER", nullptr, 0, kThree, {}},
    {type::kNetServer, "NETSERVER", nullptr, nullptr, 0, kNetServerSignals, {}},
    {type::kNetClient, "NETCLIENT", nullptr, nullptr, 0, kNetClientSignals, {}},
    {type::kDialog, "DIALOG", "DIALOG", "DIALOG", 6, kThree, {}},
    {type::kFilter, "FILTER", "FILTER", "FILTER", 6, kThree, {}},
    {type::kStaticFilter, "STATICFILTER", nullptr, "STATICFILTER", 6, kThree, {}},
    {type::kVector, "VECTOR", nullptr, "VECTOR", 5, kThree, {}},
    {type::kPath, "PATH", nullptr, "PATH", 6, kThree, {}},
    {type::kFifo, "FIFO", nullptr, "FIFO", 6, kThree, {}},
    {type::kLifo, "LIFO", nullptr, "LIFO", 6, kThree, {}},
    {type::kCanvas, "CANVAS", nullptr, "CANVAS", 6, kCanvasSignals, {}},
    {type::kPattern, "PATTERN", nullptr, "PATTERN", 6, kCanvasSignals, {}},
    {type::kScroll, "SCROLL", nullptr, "SCROLL", 6, kScrollSignals, {}},
    {type::kJoystick, nullptr, nullptr, "JOYSTICK", 6, kJoystickSignals, kJoystickProperties},
    {type::kMovie, nullptr, nullptr, "MOVIE", 6, kThree, {}},
    {type::kGrBuffer, nullptr, nullptr, "GRBUFFER", 5, kThree, {}},
    {type::kGroup, "GROUP", nullptr, "GROUP", 6, kThree, {}},
    {type::kArray, "ARRAY", "ARRAY", "ARRAY", 3, kArraySignals, kArrayProperties},
    {type::kStructure, "STRUCTURE", nullptr, "STRUCT", 3, kThree, kStructureProperties},
    {type::kDatabase, "DATABASE", nullptr, "DATABASE", 3, kThree, {}},
    {type::kClass, "CLASS", nullptr, "CLASS", 4, kThree, kClassProperties},
    {type::kVirtualGraphicsObject, "VIRTUAL_GRAPHICSOBJECT", nullptr, "VIRTUALGRAPHICSOBJECT", 5, kThree, {}},
    {type::kMultiArray, "MULTIARRAY", nullptr, "MULTIARRAY", 3, kThree, {}},
    {10002, "KOLOROWANKA", nullptr, nullptr, 0, {}, {}},
    {10003, "MATRIX", nullptr, nullptr, 0, {}, {}},
    {10060, "SWF", nullptr, nullptr, 0, {}, {}},
    {type::kSystem, nullptr, nullptr, nullptr, 0, kThree, {}},
    {type::kCnvLoader, nullptr, nullptr, nullptr, 0, kThree, {}},
};
// clang-format on

template <class Predicate>
const TypeDescription* findBy(Predicate predicate) {
  for (const TypeDescription& description : kTypes) {
    if (predicate(description)) return &description;
  }
  return nullptr;
}

}  // namespace

std::span<const TypeDescription> allTypes() { return kTypes; }

const TypeDescription* findType(int number) {
  return findBy([number](const TypeDescription& d) { return d.number == number; });
}

const TypeDescription* findTypeByDefinition(std::string_view word) {
  // The canvas observer answers to its plain word too.
  if (word == "CANVASOBSERVER") word = "CANVAS_OBSERVER";
  return findBy(
      [word](const TypeDescription& d) { return d.definitionWord != nullptr && word == d.definitionWord; });
}

int typeNumberOf(std::string_view idWord) {
  const TypeDescription* found =
      findBy([idWord](const TypeDescription& d) { return d.idWord != nullptr && idWord == d.idWord; });
  return found != nullptr ? found->number : -1;
}

std::string_view plainSignal(int type, std::string_view name) {
  const std::string_view plain = name.substr(0, name.find('^'));
  return type == type::kAnimo && plain == "ONFRAMECHANGEDFRAME" ? "ONFRAMECHANGED" : plain;
}

}  // namespace footlight
