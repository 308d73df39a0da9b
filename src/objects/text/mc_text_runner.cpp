// Scripts' methods of TEXT.

#include <algorithm>

#include "gfx/window.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/graphics_methods.h"
#include "objects/text/color_arguments.h"
#include "objects/text/mc_font.h"
#include "objects/text/mc_text.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;
using namespace graphics_methods;

template <auto F>
Result onText(CMC_Text& object, Call& call) {
  return onGraphic<F>(object.getText(), call);
}

void show(CMultilineText6& text) { text.Visible(true); }
void hide(CMultilineText6& text) { text.Visible(false); }

Result setPosition(CMultilineText6& text, Call& call) {
  text.SetPosition(point(call, 0));
  return {};
}

Result setOpacity(CMultilineText6& text, Call& call) {
  text.SetOpacity(static_cast<std::uint8_t>(call.integer(0) & 0xFF));
  return {};
}

// What it says

Result setText(CMultilineText6& text, Call& call) {
  text.setText(call.text(0));
  return {};
}

Result load(CMultilineText6& text, Call& call) {
  text.Load(call.text(0));
  return {};
}

// With so many digits behind the point, cut and not rounded.
Result setTextDouble(CMultilineText6& text, Call& call) {
  const CXString number = call.text(0);
  const int digits = call.integer(1);
  const int point = number.Find('.');
  const bool isCut = digits >= 0 && point >= 0;
  text.setText(isCut ? number.Left(point + 1 + std::min(digits, number.Length())) : number);
  return {};
}

// Where it stands

// A name and two words, or four numbers and two words.
Result setJustify(CMultilineText6& text, Call& call) {
  const bool hasNumbers = call.count() == 6;
  const CGraphicsObject* named = hasNumbers ? nullptr : graphicsArgument(call, 0);
  const CXRect rect = hasNumbers         ? rectangleArgument(call, 0)
                      : named != nullptr ? named->GetBoundingBox()
                                         : CXRect();
  const int words = hasNumbers ? 4 : 1;
  text.setJustify(rect, CMC_Text::resolveJustify(call.text(words), _justify::left),
                  CMC_Text::resolveJustify(call.text(words + 1), _justify::top));
  return {};
}

Result setRect(CMultilineText6& text, Call& call) {
  if (call.count() == 4) {
    text.setJustify(rectangleArgument(call, 0), text.getHJustify(), text.getVJustify());
  } else if (call.count() == 1) {
    const CGraphicsObject* named = graphicsArgument(call, 0);
    if (named != nullptr) text.setJustify(named->getRect(), text.getHJustify(), text.getVJustify());
  }
  return {};
}

// How it looks

Result setColor(CMultilineText6& text, Call& call) {
  text.setColor(colorArgument(call, 0, text.getWindow()));
  return {};
}

Result setFont(CMultilineText6& text, Call& call) {
  if (const auto* font = call.named<CMC_Font>(0)) text.setFont(font->getFont());
  return {};
}

// Words

Result getWordAt(CMultilineText6& text, Call& call) {
  return Factory::makeString(text.getWordAt(call.integer(0)));
}

Result getWordAtXY(CMultilineText6& text, Call& call) {
  return Factory::makeInteger(text.getWordAtXY(point(call, 0)));
}

Result getWordPosX(CMultilineText6& text, Call& call) {
  return Factory::makeInteger(text.getWordPosition(call.integer(0)).x);
}

Result getWordPosY(CMultilineText6& text, Call& call) {
  return Factory::makeInteger(text.getWordPosition(call.integer(0)).y);
}

Result getWordWidth(CMultilineText6& text, Call& call) {
  return Factory::makeInteger(text.getWordWidth(call.integer(0)));
}

int getNumWords(CMultilineText6& text) { return text.getNumWords(); }

Result search(CMultilineText6& text, Call& call) {
  return Factory::makeInteger(text.search(call.text(0), call.integer(1)));
}

Result setWordColor(CMultilineText6& text, Call& call) {
  text.setWordColor(call.integer(0), colorArgument(call, 1, text.getWindow()));
  return {};
}

constexpr Method kMethods[] = {
    {1, "SETTEXT", "text:text", method<onText<setText>>, "Says something else."},
    {2, "SETJUSTIFY", "left:value, top:value, right:value, [bottom:int], [h:text], [v:text]",
     method<onText<setJustify>>,
     "Stands in a rectangle: the box of a picture, by its name, or four numbers, in pixels of the screen; "
     "then LEFT, RIGHT or CENTER, and TOP, BOTTOM or CENTER. Lines are wrapped anew with the next text."},
    {3, "SHOW", "", method<onText<show>>, "Shows it."},
    {4, "HIDE", "", method<onText<hide>>, "Hides it."},
    {5, "SETPOSITION", "x:int, y:int", method<onText<setPosition>>,
     "Puts its left upper corner there, in pixels of the screen, until its next text or rectangle."},
    {6, "MOVE", "dx:int, dy:int", method<onText<move>>, "Moves it by so many pixels."},
    {7, "LOAD", "file:file", method<onText<load>>, "Says what a text file says, line by line."},
    {8, "CLEARCLIPPING", "", method<onText<clearClipping>>, "Draws all of it again."},
    {9, "SETCLIPPING", "left:value, [top:int], [right:int], [bottom:int]", method<onText<setClipping>>,
     "Draws only what lies within: four numbers in pixels from its corner, or those of the box of a picture "
     "by its name."},
    {10, "GETPOSITIONX", "-> int", method<onText<positionX>>, "Its left edge, in pixels of the screen."},
    {11, "GETPOSITIONY", "-> int", method<onText<positionY>>, "Its upper edge, in pixels of the screen."},
    {12, "GETWIDTH", "-> int", method<onText<width>>, "The width of its longest line, in pixels."},
    {13, "GETHEIGHT", "-> int", method<onText<height>>, "The height of all of its lines, in pixels."},
    {14, "ISNEAR", "left:value, top:int, [right:int], [bottom:int], [percent:int] -> bool",
     method<onText<isNear>>,
     "Whether at least so many percent of it lie within a picture, by its name and the percent, or within a "
     "rectangle, by four numbers and the percent."},
    {15, "SETPRIORITY", "priority:int", method<onText<setPriority>>,
     "Higher ones are drawn over lower ones."},
    {16, "SETCOLOR", "red:int, green:int, blue:int", method<onText<setColor>>,
     "Its colour, but for what <COLOR> says; each channel from 0 to 255."},
    {17, "DRAWONTO", "picture:name, [priority:int]", method<onText<drawOnto>>,
     "Draws it as a part of another picture from now on; among its parts higher priorities lie on top, 0 "
     "without the argument."},
    {18, "SETRECT", "left:value, [top:int], [right:int], [bottom:int]", method<onText<setRect>>,
     "Stands in another rectangle in the same way: four numbers in pixels of the screen, or the place of a "
     "picture by its name. Lines are wrapped anew with the next text."},
    {19, "SETTEXTDOUBLE", "number:text, digits:int", method<onText<setTextDouble>>,
     "Says a number with so many digits behind the point, cut and not rounded; with fewer than 0, as it "
     "is."},
    {20, "SETOPACITY", "opacity:int", method<onText<setOpacity>>, "From 0, invisible, to 255, opaque."},
    {21, "SETFONT", "font:name", method<onText<setFont>>, "Takes the letters of another FONT."},
    {22, "GETWORDAT", "word:int -> text", method<onText<getWordAt>>, "The word of that number, from 0."},
    {23, "GETWORDATXY", "x:int, y:int -> int", method<onText<getWordAtXY>>,
     "The number of the word at a place of the screen, -1 for none; only with HYPERTEXT."},
    {24, "GETWORDPOSX", "word:int -> int", method<onText<getWordPosX>>,
     "The left edge of a word, in pixels of the screen, -1 for none; only with HYPERTEXT."},
    {25, "GETWORDPOSY", "word:int -> int", method<onText<getWordPosY>>,
     "The upper edge of a word, in pixels of the screen, -1 for none; only with HYPERTEXT."},
    {26, "SEARCH", "word:text, from:int -> int", method<onText<search>>,
     "The number of the first such word from that one on, -1 for none."},
    {27, "SETWORDCOLOR", "word:int, red:int, green:int, blue:int", method<onText<setWordColor>>,
     "The colour of one word until the next text; only with HYPERTEXT."},
    {28, "INVALIDATE", "", method<onText<invalidate>>, "Draws it anew with the next frame."},
    {29, "GETWORDWIDTH", "word:int -> int", method<onText<getWordWidth>>,
     "The width of a word, in pixels, 0 for none; only with HYPERTEXT."},
    {30, "GETNUMWORDS", "-> int", method<onText<getNumWords>>, "How many words it has."},
};

constexpr auto kSignals = signalTable<TextSignal>({
    {TextSignal::onCollision, "ONCOLLISION", "Nothing raises it."},
    {TextSignal::onCollisionFinished, "ONCOLLISIONFINISHED", "Nothing raises it."},
});

constexpr Property kProperties[] = {
    {"TOCANVAS", PropertyKind::boolean, "FALSE", "TRUE puts it on the screen at the start."},
    {"VISIBLE", PropertyKind::boolean, "FALSE", "TRUE shows it at the start."},
    {"TEXT", PropertyKind::text, "", "What it says."},
    {"HYPERTEXT", PropertyKind::boolean, "FALSE", "TRUE keeps where each of its words stands."},
    {"VJUSTIFY", PropertyKind::text, "TOP", "How it stands in its rectangle: TOP, BOTTOM or CENTER."},
    {"HJUSTIFY", PropertyKind::text, "LEFT", "How each line stands in it: LEFT, RIGHT or CENTER."},
    {"RECT", PropertyKind::rectangle, "",
     "Its rectangle, in pixels of the screen: left, top, right and bottom, or the name of a picture."},
    {"PRIORITY", PropertyKind::integer, "0", "Higher ones are drawn over lower ones."},
    {"FONT", PropertyKind::name, "", "The FONT of its letters."},
};

}  // namespace

extern constinit const ScriptType kTextType = {
    .number = type::kText,
    .idWord = "TEXT",
    .stringWord = "TEXT",
    .definitionWord = "TEXT",
    .meaning = "Text on the screen.",
    .pass = 6,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Text>,
};

}  // namespace footlight
