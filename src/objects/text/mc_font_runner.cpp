// Scripts' methods of FONT.

#include "objects/text/color_arguments.h"
#include "objects/text/mc_font.h"
#include "script/mc_variable_factory.h"

namespace footlight {

namespace {

// A FONT that has ended has methods of no effect.
template <auto F>
Result onFont(CMC_Font& object, Call& call) {
  const Ref<CFontCollection> fonts = object.getFont();
  return fonts ? F(*fonts, call) : Result();
}

Result setColor(CFontCollection& fonts, Call& call) {
  CWindow* window = fonts.getWindow();
  fonts.setDefColor(colorArgument(call, 0, window));
  if (window != nullptr) window->Invalidate();
  return {};
}

Result setStyle(CFontCollection& fonts, Call& call) {
  fonts.setStyle(call.text(0));
  return {};
}

Result setFamily(CFontCollection& fonts, Call& call) {
  fonts.setFamily(call.text(0));
  return {};
}

Result setSize(CFontCollection& fonts, Call& call) {
  fonts.setSize(call.integer(0));
  return {};
}

Result getHeight(CFontCollection& fonts, Call& /*call*/) {
  return CMC_VariableFactory::makeInteger(fonts.Height());
}

constexpr Method kMethods[] = {
    {1, "SETCOLOR", "red:int, green:int, blue:int", method<onFont<setColor>>,
     "The colour of the texts that have none of their own; each channel from 0 to 255."},
    {2, "SETSTYLE", "style:text", method<onFont<setStyle>>,
     "The style that its texts count as having, before <B> and the like change it."},
    {3, "SETFAMILY", "family:text", method<onFont<setFamily>>,
     "The family in which <B> and the like look for a style; empty: that of the letters before."},
    {4, "SETSIZE", "size:int", method<onFont<setSize>>,
     "The size in which <B> and the like look for a style; 0: that of the letters before."},
    {5, "GETHEIGHT", "-> int", method<onFont<getHeight>>, "The height of its letters, in pixels."},
};

}  // namespace

extern constinit const ScriptType kFontType = {
    .number = type::kFont,
    .idWord = "FONT",
    .stringWord = "FONT",
    .definitionWord = "FONT",
    .meaning = "The letters of texts: each property DEF_FAMILY_STYLE_SIZE names a font file.",
    .pass = 5,
    .signals = kSignalsOfAll,
    .methods = kMethods,
    .make = makeFrom<CMC_Font>,
};

}  // namespace footlight
