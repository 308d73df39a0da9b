#include "objects/gfx/mc_pattern.h"

#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "objects/data/mc_array.h"
#include "objects/gfx/graphics_arguments.h"
#include "objects/gfx/graphics_methods.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable.h"
#include "script/melement.h"

namespace footlight {

CMC_Pattern::CMC_Pattern(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Surface(container, element, type::kPattern),
      pattern_(new CPattern(container->getWindow(),
                            {element->getPropertyIntValue("WIDTH"), element->getPropertyIntValue("HEIGHT")},
                            {element->getPropertyIntValue("GRIDX"), element->getPropertyIntValue("GRIDY")},
                            element->getPropertyIntValue("LAYERS"))) {
  pattern_->Visible(element->getPropertyBoolValue("VISIBLE"));
  if (element->getPropertyBoolValue("TOCANVAS") && screen() != nullptr)
    screen()->put(pattern_.get(), element->getPropertyIntValue("PRIORITY"));
  initializeBehaviours(container, element);
}

CMC_Pattern::~CMC_Pattern() { CMC_Pattern::unlink(); }

void CMC_Pattern::unlink() {
  if (pattern_ == nullptr) return;
  leaveScreen();
  pattern_.reset();
}

// Scripts' methods

namespace {

using Factory = CMC_VariableFactory;
using namespace graphics_methods;

template <auto F>
Result onPattern(CMC_Pattern& object, Call& call) {
  return onGraphic<F>(object.getPattern(), call);
}

Result add(CPattern& pattern, Call& call) {
  pattern.add(call.text(0), call.integer(1), call.integer(2), call.integer(4), graphicsArgument(call, 3),
              call.integer(5), call.text(3));
  return {};
}

Result setGrid(CPattern& pattern, Call& call) {
  pattern.setGrid({call.integer(0), call.integer(1)});
  return {};
}

Result setPosition(CPattern& pattern, Call& call) {
  pattern.SetPosition(point(call, 0));
  return {};
}

int layerArgument(const Call& call, int index, int otherwise) {
  return call.has(index) ? call.integer(index) : otherwise;
}

Result getGraphicsAt(CPattern& pattern, Call& call) {
  const CGraphicsObject* found =
      pattern.getGraphicsObject(call.integer(0), call.integer(1), false, call.boolean(2),
                                layerArgument(call, 3, CPattern::kAllLayers), call.integer(4));
  if (found == nullptr || call.scope() == nullptr) return Factory::makeString("NULL");
  return Factory::makeString(call.scope()->getGraphicsObjectName(found, true));
}

// A whole number in front asks for a cell, everything else is an alias.
Result remove(CPattern& pattern, Call& call) {
  const Ref<CMC_Variable> first = call.variable(0);
  if (first && first->getType() == type::kInteger) {
    pattern.remove(call.integer(0), call.integer(1), call.integer(2));
  } else {
    pattern.remove(call.text(0));
  }
  return {};
}

Result aliasOf(const CPatternEntry* entry) {
  return Factory::makeString(entry != nullptr ? entry->alias : CXString("NULL"));
}

Result getAliasAt(CPattern& pattern, Call& call) {
  return aliasOf(
      pattern.getEntryAt(call.integer(0), call.integer(1), CPattern::kAllLayers, false, call.boolean(2)));
}

Result getAliasAtCell(CPattern& pattern, Call& call) {
  return aliasOf(pattern.getEntryAtCell(call.integer(0), call.integer(1), call.integer(2)));
}

void addNumber(CMC_Array& array, int number) {
  CMC_Integer value("temp", CMC_Variable::kNoPool);
  value.put(number);
  array.add(&value);
}

// Alias, column, row, the size of what lies there and its middle on the screen.
void addInfo(const CPattern& pattern, const CPatternEntry* entry, CMC_Array* array) {
  constexpr int kCount = 7;
  if (entry == nullptr || array == nullptr || !array->hasRoom(kCount)) return;
  const CGraphicsObject* object = entry->object.get();
  const CXSize size = object != nullptr ? object->Size() : CXSize();
  const CXPoint middle = pattern.placeOf(*entry) + CXPoint(size.width / 2, size.height / 2);
  const Ref<CMC_Variable> alias = Factory::makeString(entry->alias);
  array->add(alias.get());
  for (const int number : {entry->column, entry->row, size.width, size.height, middle.x, middle.y})
    addNumber(*array, number);
}

// The array is the last argument; with five of them the layer stands before it.
Result getInfoAt(CPattern& pattern, Call& call) {
  const int layer = call.count() > 4 ? call.integer(3) : CPattern::kAllLayers;
  const CPatternEntry* entry =
      pattern.getEntryAt(call.integer(0), call.integer(1), layer, false, call.boolean(2));
  addInfo(pattern, entry, call.named<CMC_Array>(call.count() - 1));
  return {};
}

Result getAliasInfo(CPattern& pattern, Call& call) {
  addInfo(pattern, pattern.getAliasEntry(call.text(0)), call.named<CMC_Array>(1));
  return {};
}

Result getCellCord(CPattern& pattern, Call& call) {
  const CXPoint place = point(call, 0);
  const bool isInside = pattern.getRect().IsInRect(place);
  auto* array = call.find<CMC_Array>(call.text(2));
  if (array == nullptr) array = call.named<CMC_Array>(call.count() - 1);
  if (isInside && array != nullptr && array->hasRoom(2)) {
    const CXPoint own = place - pattern.GetPosition();
    addNumber(*array, divide(own.x, pattern.getGrid().width));
    addNumber(*array, divide(own.y, pattern.getGrid().height));
  }
  return Factory::makeBool(isInside);
}

constexpr Method kMethods[] = {
    {1, "ADD", "alias:text, column:int, row:int, picture:name, layer:int, [value:int]",
     method<onPattern<add>>,
     "Puts a picture into a cell, in place of what was there. The alias names the tile, the value is kept "
     "with it."},
    {2, "SETGRID", "width:int, height:int", method<onPattern<setGrid>>,
     "Sets the size of a cell, in pixels; how many columns and rows there are stays."},
    {3, "MOVE", "dx:int, dy:int", method<onPattern<move>>, "Moves it by so many pixels."},
    {4, "GETGRAPHICSAT", "x:int, y:int, box:bool, [layer:int], [threshold:int] -> text",
     method<onPattern<getGraphicsAt>>,
     "The name of the shown picture at a place of the screen, \"NULL\" for none. With TRUE its box counts, "
     "with FALSE only where its alpha is above the threshold, 0 without the argument. Without a layer, or "
     "with one below 0, all are asked from the uppermost one on."},
    {5, "REMOVE", "aliasOrColumn:value, [row:int], [layer:int]", method<onPattern<remove>>,
     "Takes away the tile of an alias, or what is in a cell: with a whole number in front by column, row and "
     "layer, 0 without the argument."},
    {6, "GETALIASAT", "x:int, y:int, box:bool -> text", method<onPattern<getAliasAt>>,
     "The alias of the shown tile at a place of the screen, \"NULL\" for none; box as with GETGRAPHICSAT."},
    {7, "GETINFOAT", "x:int, y:int, box:bool, layerOrArray:value, [array:name]", method<onPattern<getInfoAt>>,
     "Adds to an ARRAY, the last argument, what GETALIASINFO tells of the tile at a place of the screen."},
    {8, "GETALIASINFO", "alias:text, array:name", method<onPattern<getAliasInfo>>,
     "Adds seven values to an ARRAY: the alias, column and row, width and height of the picture, and its "
     "middle in pixels of the screen."},
    {9, "GETCELLCORD", "x:int, y:int, array:value, [layer:int] -> bool", method<onPattern<getCellCord>>,
     "Whether a place of the screen lies in it; then column and row of the cell there are added to an "
     "ARRAY."},
    {10, "GETALIASATCELL", "column:int, row:int, [layer:int] -> text", method<onPattern<getAliasAtCell>>,
     "The alias of the tile in a cell, \"NULL\" for none; layer 0 without the argument."},
    {11, "SETPOSITION", "x:int, y:int", method<onPattern<setPosition>>,
     "Puts its left upper corner there, in pixels of the screen; it is seen with the next drawing."},
};

constexpr auto kProperties = std::to_array<Property>({
    {"TOCANVAS", PropertyKind::boolean, "FALSE", "TRUE puts it on the screen at the start."},
    {"VISIBLE", PropertyKind::boolean, "FALSE", "TRUE shows it at the start."},
    {"LAYERS", PropertyKind::integer, "0", "How many layers of cells it has."},
    {"PRIORITY", PropertyKind::integer, "0", "Higher ones are drawn over lower ones."},
    {"WIDTH", PropertyKind::integer, "0", "Its width, in pixels."},
    {"HEIGHT", PropertyKind::integer, "0", "Its height, in pixels."},
    {"GRIDX", PropertyKind::integer, "0", "The width of a cell, in pixels."},
    {"GRIDY", PropertyKind::integer, "0", "The height of a cell, in pixels."},
});

}  // namespace

extern constinit const ScriptType kPatternType = {
    .number = type::kPattern,
    .idWord = "PATTERN",
    .definitionWord = "PATTERN",
    .meaning = "A surface of tiles.",
    .pass = 6,
    .signals = kSurfaceSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Pattern>,
};

}  // namespace footlight
