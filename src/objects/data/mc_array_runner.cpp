// Scripts' methods of ARRAY.

#include <algorithm>

#include "files/config.h"
#include "files/folder.h"
#include "files/path.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "foundation/random.h"
#include "foundation/string_tokenizer.h"
#include "objects/data/mc_array.h"
#include "script/mc_expression.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/watchdog.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

Ref<CMC_Variable> value(const Call& call, int index) { return asVariable(call.object(index)); }

// Adding and removing

// The index that is reported lies one below that of the new element.
template <class Added>
void addAndTell(CMC_Array& array, Added added) {
  if (array.add(added)) array.changed(array.size() - 2);
}

Result add(CMC_Array& array, Call& call) {
  if (!array.hasRoom(call.count())) return {};
  for (int i = 0; i < call.count(); ++i) {
    if (const Number number = call.number(i)) {
      addAndTell(array, number);
    } else {
      addAndTell(array, value(call, i).get());
    }
  }
  return {};
}

bool addNumber(CMC_Array& array, Number number, Value* /*result*/) {
  addAndTell(array, number);
  return true;
}

Result getSize(CMC_Array& array, Call& /*call*/) { return Number(array.size()); }

Result insertAt(CMC_Array& array, Call& call) {
  const int index = call.integer(0);
  if (array.insertAt(index, value(call, 1).get())) array.changed(index);
  return {};
}

Result removeAt(CMC_Array& array, Call& call) {
  array.removeAt(call.integer(0));
  return {};
}

Result changeAt(CMC_Array& array, Call& call) {
  const int index = call.integer(0);
  if (array.changeAt(index, value(call, 1).get())) array.changed(index);
  return {};
}

Result removeAll(CMC_Array& array, Call& /*call*/) {
  array.removeAll();
  return {};
}

Value elementAt(const CMC_Array& array, int index) {
  return array.isIn(index) ? array.get(index) : Value(Factory::makeString("NULL"));
}

Result get(CMC_Array& array, Call& call) { return elementAt(array, call.integer(0)); }

bool getByNumber(CMC_Array& array, Number index, Value* result) {
  if (result != nullptr) *result = elementAt(array, asInteger(index));
  return true;
}

Result remove(CMC_Array& array, Call& call) {
  array.removeAt(array.find(value(call, 0).get()));
  return {};
}

Result addClones(CMC_Array& array, Call& call) {
  const CXString name = call.text(0);
  const std::int64_t from = call.integer(1);
  const std::int64_t to = call.integer(2);
  if (from > to || !array.hasRoom(to - from + 1)) return {};
  for (std::int64_t i = from; i <= to && watchdog::mayContinue(); ++i) {
    addAndTell(array, Factory::makeString(name + "_" + CXString::toString(static_cast<int>(i))).get());
  }
  return {};
}

Result fill(CMC_Array& array, Call& call) {
  const int count = call.integer(0);
  const Ref<CMC_Variable> filling = value(call, 1);
  if (!filling || count > limits::kArrayElements) {
    if (filling) limitHit("array too long");
    return {};
  }
  if (!array.isInBudget(count, *filling)) return {};
  array.removeAll();
  for (int i = 0; i < count && watchdog::mayContinue(); ++i) array.add(filling.get());
  return {};
}

Result randomFill(CMC_Array& array, Call& call) {
  array.removeAll();
  for (const int number :
       CXRandom::random_vector(call.integer(1), call.integer(2), call.integer(0), call.boolean(3))) {
    array.add(Number(number));
  }
  return {};
}

// Finding

Result find(CMC_Array& array, Call& call) { return Number(array.find(value(call, 0).get())); }

Result reverseFind(CMC_Array& array, Call& call) { return Number(array.reverseFind(value(call, 0).get())); }

Result contains(CMC_Array& array, Call& call) {
  return Factory::makeBool(array.find(value(call, 0).get()) >= 0);
}

Result findAll(CMC_Array& array, Call& call) {
  auto* target = call.named<CMC_Array>(0);
  const int count = array.size();  // the target may be the array itself
  int total = 0;
  for (int argument = 1; argument < call.count() && watchdog::ask(); ++argument) {
    const Ref<CMC_Variable> wanted = value(call, argument);
    for (int i = 0; i < std::min(count, array.size()); ++i) {
      if (!array.at(i)->equals(wanted.get())) continue;
      ++total;
      if (target != nullptr) target->add(Number(i));
    }
  }
  return Number(total);
}

Result compare(CMC_Array& array, Call& call) {
  const auto* other = call.named<CMC_Array>(0);
  bool same = other != nullptr && other->size() == array.size();
  for (int i = 0; same && i < array.size(); ++i) same = array.at(i)->equals(other->at(i).get());
  return Factory::makeBool(same);
}

Result copyTo(CMC_Array& array, Call& call) {
  auto* target = call.named<CMC_Array>(0);
  const int count = array.size();
  if (target == nullptr || !target->hasRoom(count) || !memory::hasRoom(array.bytes())) return {};
  for (int i = 0; i < count; ++i) target->add(array.at(i).get());
  return {};
}

// The INI file, files and folders

CConfig* configOf(const CMC_Array& array) {
  return array.getScene() != nullptr ? array.getScene()->getConfig() : nullptr;
}

Result saveIni(CMC_Array& array, Call& /*call*/) {
  if (CConfig* config = configOf(array))
    config->PutString(array.getScene()->getName(), array.getName(), array.toString());
  return {};
}

Result loadIni(CMC_Array& array, Call& /*call*/) {
  array.removeAll();
  CConfig* config = configOf(array);
  if (config == nullptr) return {};
  CStringTokenizer pieces(config->GetString(array.getScene()->getName(), array.getName()), ", ");
  while (pieces.hasMoreTokens()) array.add(Factory::makeString(pieces.nextToken()).get());
  return {};
}

Result load(CMC_Array& array, Call& call) {
  array.load(call.text(0));
  return {};
}

Result save(CMC_Array& array, Call& call) {
  array.save(call.text(0));
  return {};
}

Result dir(CMC_Array& array, Call& call) {
  CWindow* window = call.scope() != nullptr ? call.scope()->getWindow() : nullptr;
  const CXString path = CPath::resolveFileName(window, call.text(0));
  const CXString pattern = call.text(1);
  const CXString before = CFile::getCurrentDirectory();
  CFolder folder(window);
  const std::vector<CXString> names = folder.GoTo(path) ? folder.list(pattern) : std::vector<CXString>();
  CFile::chDir(before);
  if (!array.hasRoom(static_cast<std::int64_t>(names.size()))) return {};
  for (const CXString& name : names) array.add(Factory::makeString(path + name).get());
  return {};
}

// The marker

Result walk(CMC_Array& array, const Call& call, int direction) {
  const std::int64_t step = call.has(0) ? call.integer(0) : 1;
  return array.step(direction * step);
}

Result prev(CMC_Array& array, Call& call) { return walk(array, call, -1); }
Result next(CMC_Array& array, Call& call) { return walk(array, call, 1); }

Result resetMarker(CMC_Array& array, Call& /*call*/) {
  array.setMarker(-1);
  return {};
}

Result getMarkerPos(CMC_Array& array, Call& /*call*/) { return Number(array.getMarker()); }

Result setMarkerPos(CMC_Array& array, Call& call) {
  array.setMarker(call.integer(0));
  return {};
}

// Arithmetic

template <Operation O>
Result onAll(CMC_Array& array, Call& call) {
  const Ref<CMC_Variable> operand = value(call, 0);
  const int count = array.size();  // handlers may add more
  for (int i = 0; i < count && watchdog::mayContinue(); ++i) {
    if (array.operate(i, operand.get(), O)) array.changed(i);
  }
  return {};
}

template <Operation O>
Result onRange(CMC_Array& array, Call& call) {
  const Ref<CMC_Variable> operand = asVariable(call.named<CMC_Variable>(0));
  const int first = call.has(1) ? call.integer(1) : -1;
  const int last = call.has(2) ? call.integer(2) : -1;
  const int end = last == -1 ? array.size() - 1 : std::min(last, array.size() - 1);
  for (int i = std::max(first, 0); i <= end; ++i) array.operate(i, operand.get(), O);
  return {};
}

template <Operation O>
Result onOne(CMC_Array& array, Call& call) {
  const int index = call.integer(0);
  if (array.operate(index, value(call, 1).get(), O)) array.changed(index);
  return {};
}

Result clampAt(CMC_Array& array, Call& call) {
  const Ref<CMC_Variable> low = value(call, 1);
  const Ref<CMC_Variable> high = value(call, 2);
  const int index = call.integer(0);
  const Ref<CMC_Variable> element = array.at(index);
  if (!element || !low || !high || !numberOf(element.get())) return {};
  if (element->compare(low.get()) < 0) {
    element->set(low.get());
  } else if (element->compare(high.get()) > 0) {
    element->set(high.get());
  }
  array.changeAt(index, element.get());
  return {};
}

// Folds the elements that are whole numbers; the others do not count.
template <class Fold>
Number foldIntegers(const CMC_Array& array, int start, Fold fold) {
  for (const ArrayValue& item : array.items()) {
    if (item.number().isWhole()) start = fold(start, item.number().whole());
  }
  return Number(start);
}

// The same of those that are real ones.
template <class Fold>
Number foldDoubles(const CMC_Array& array, double start, Fold fold) {
  for (const ArrayValue& item : array.items()) {
    if (item.number().isReal()) start = fold(start, item.number().real());
  }
  return Number(start);
}

constexpr int kMinStart = 1000000;

Result min(CMC_Array& array, Call& /*call*/) {
  return foldIntegers(array, kMinStart, [](int a, int b) { return std::min(a, b); });
}

Result max(CMC_Array& array, Call& /*call*/) {
  return foldIntegers(array, 0, [](int a, int b) { return std::max(a, b); });
}

Result minDouble(CMC_Array& array, Call& /*call*/) {
  return foldDoubles(array, kMinStart, [](double a, double b) { return std::min(a, b); });
}

Result maxDouble(CMC_Array& array, Call& /*call*/) {
  return foldDoubles(array, 0.0, [](double a, double b) { return std::max(a, b); });
}

Result getSumValue(CMC_Array& array, Call& /*call*/) { return foldIntegers(array, 0, wrap_add); }

// Order

Result sort(CMC_Array& array, Call& call) {
  array.sort(call.boolean(0));
  return {};
}

// The name is known, and that is all.
Result sortMany(CMC_Array& /*array*/, Call& /*call*/) { return {}; }

Result swap(CMC_Array& array, Call& call) {
  const int a = call.integer(0);
  const int b = call.integer(1);
  if (!array.swap(a, b)) return {};
  array.changed(a);
  array.changed(b);
  return {};
}

Result shiftLeft(CMC_Array& array, Call& /*call*/) {
  array.rotateLeft();
  array.clearAt(array.size() - 1);
  array.allChanged();
  return {};
}

Result shiftRight(CMC_Array& array, Call& /*call*/) {
  array.rotateRight();
  array.clearAt(0);
  array.allChanged();
  return {};
}

Result rotateLeft(CMC_Array& array, Call& /*call*/) {
  array.rotateLeft();
  array.allChanged();
  return {};
}

Result rotateRight(CMC_Array& array, Call& /*call*/) {
  array.rotateRight();
  array.allChanged();
  return {};
}

Result sendOnChange(CMC_Array& array, Call& call) {
  array.setSendOnChange(!call.has(0) || call.boolean(0));
  return {};
}

constexpr Method kMethods[] = {
    {1, "ADD", "value:value, [more:value...]", method<add>, "Adds copies of the values at the end.",
     numberMethod<addNumber>},
    {2, "GETSIZE", "-> int", method<getSize>, "How many values there are."},
    {3, "INSERTAT", "index:int, value:value", method<insertAt>,
     "Puts a value before the one at the index, from 0."},
    {4, "REMOVEAT", "index:int", method<removeAt>, "Takes the value at the index, from 0, out."},
    {5, "CHANGEAT", "index:int, value:value", method<changeAt>,
     "Puts a value in the place of the one at the index, from 0."},
    {6, "REMOVEALL", "", method<removeAll>, "Takes all values out."},
    {7, "GET", "index:int -> value", method<get>,
     "The value at the index, from 0; the text NULL beyond the ends.", numberMethod<getByNumber>},
    {8, "REMOVE", "value:value", method<remove>, "Takes the first value that equals this one out."},
    {9, "FIND", "value:value -> int", method<find>,
     "The index of the first value that equals this one, -1 for none."},
    {39, "REVERSEFIND", "value:value -> int", method<reverseFind>,
     "The index of the last value that equals this one, -1 for none."},
    {54, "FINDALL", "array:name, value:value, [more:value...] -> int", method<findAll>,
     "Adds the indexes of all that equal one of the values to another ARRAY; gives how many."},
    {10, "CONTAINS", "value:value -> bool", method<contains>, "Whether a value equals this one."},
    {11, "SAVEINI", "", method<saveIni>, "Writes all values to the INI file, with commas between them."},
    {12, "LOADINI", "", method<loadIni>,
     "Takes the values of the INI file in place of its own, cut at commas and blanks, each as a text."},
    {13, "PREV", "[step:int] -> value", method<prev>,
     "Moves the marker back by the step, 1 without it, round from the start to the end; gives the value "
     "there."},
    {14, "NEXT", "[step:int] -> value", method<next>,
     "Moves the marker on by the step, 1 without it, round from the end to the start; gives the value "
     "there."},
    {15, "ADDCLONES", "object:name, from:int, to:int", method<addClones>,
     "Adds the texts OBJECT_from to OBJECT_to: the names of clones."},
    {16, "RESETMARKER", "", method<resetMarker>, "Puts the marker before the first value."},
    {17, "GETMARKERPOS", "-> int", method<getMarkerPos>,
     "The index of the marker, -1 before the first value."},
    {18, "SETMARKERPOS", "index:int", method<setMarkerPos>,
     "Puts the marker on an index, kept within -1 and the last."},
    {19, "SUM", "value:value", method<onAll<Operation::add>>, "Adds the value to each of its values."},
    {21, "SUB", "value:value", method<onAll<Operation::subtract>>,
     "Subtracts the value from each of its values."},
    {23, "MUL", "value:value", method<onAll<Operation::multiply>>,
     "Multiplies each of its values by the value."},
    {25, "DIV", "value:value", method<onAll<Operation::divide>>, "Divides each of its values by the value."},
    {20, "SUMA", "variable:name, [first:int], [last:int]", method<onRange<Operation::add>>,
     "Adds a variable's value to those of the indexes first to last; -1 or nothing is the end on that side."},
    {22, "SUBA", "variable:name, [first:int], [last:int]", method<onRange<Operation::subtract>>,
     "Subtracts a variable's value from those of the indexes first to last; -1 or nothing is the end on that "
     "side."},
    {24, "MULA", "variable:name, [first:int], [last:int]", method<onRange<Operation::multiply>>,
     "Multiplies by a variable's value those of the indexes first to last; -1 or nothing is the end on that "
     "side."},
    {32, "DIVA", "variable:name, [first:int], [last:int]", method<onRange<Operation::divide>>,
     "Divides by a variable's value those of the indexes first to last; -1 or nothing is the end on that "
     "side."},
    {33, "MIN", "-> int", method<min>,
     "The least of its INTEGERs; never above 1000000, which it also gives without any."},
    {34, "MAX", "-> int", method<max>,
     "The greatest of its INTEGERs; never below 0, which it also gives without any."},
    {57, "MIND", "-> real", method<minDouble>,
     "The least of its DOUBLEs; never above 1000000, which it also gives without any."},
    {56, "MAXD", "-> real", method<maxDouble>,
     "The greatest of its DOUBLEs; never below 0, which it also gives without any."},
    {35, "GETSUMVALUE", "-> int", method<getSumValue>, "The sum of its INTEGERs."},
    {36, "SORT", "ascending:bool", method<sort>,
     "Puts the values in order: ascending with TRUE, descending with FALSE."},
    {55, "SORTMANY", "[unused:value...]", method<sortMany>, "Does nothing."},
    {37, "LOAD", "file:file", method<load>,
     "Takes the values of a file of SAVE in place of its own; none if there is no such file."},
    {38, "SAVE", "file:file", method<save>,
     "Writes the values and their types to a file; DOUBLEs keep three decimals."},
    {42, "ADDAT", "index:int, value:value", method<onOne<Operation::add>>, "Adds to the value at the index."},
    {43, "SUBAT", "index:int, value:value", method<onOne<Operation::subtract>>,
     "Subtracts from the value at the index."},
    {40, "MULAT", "index:int, value:value", method<onOne<Operation::multiply>>,
     "Multiplies the value at the index."},
    {41, "DIVAT", "index:int, value:value", method<onOne<Operation::divide>>,
     "Divides the value at the index."},
    {44, "MODAT", "index:int, value:value", method<onOne<Operation::modulo>>,
     "Makes the value at the index the remainder of its division."},
    {45, "CLAMPAT", "index:int, low:value, high:value", method<clampAt>,
     "Brings the number at the index into the range from low to high."},
    {46, "DIR", "folder:file, pattern:text", method<dir>,
     "Adds the folder followed by the name of each file in it that fits the pattern, such as *.ann."},
    {47, "COMPARE", "array:name -> bool", method<compare>,
     "Whether another ARRAY has as many values, each equal to the one here."},
    {58, "COPYTO", "array:name", method<copyTo>, "Adds copies of all values to another ARRAY."},
    {53, "SWAP", "first:int, second:int", method<swap>, "Exchanges the values at two indexes."},
    {48, "SENDONCHANGE", "[on:bool]", method<sendOnChange>,
     "TRUE, or nothing, lets ONCHANGED come, FALSE keeps it back."},
    {49, "SHIFTLEFT", "", method<shiftLeft>,
     "Moves all values one place to the front; the last becomes 0, FALSE or an empty text."},
    {50, "SHIFTRIGHT", "", method<shiftRight>,
     "Moves all values one place to the back; the first becomes 0, FALSE or an empty text."},
    {51, "ROTATELEFT", "", method<rotateLeft>,
     "Moves all values one place to the front, the first to the end."},
    {52, "ROTATERIGHT", "", method<rotateRight>,
     "Moves all values one place to the back, the last to the front."},
    {59, "FILL", "count:int, value:value", method<fill>,
     "Takes the value count times in place of its own values."},
    {60, "RANDOMFILL", "count:int, low:int, range:int, unique:bool", method<randomFill>,
     "Takes count random numbers of low to low + range - 1 in place of its values; with TRUE none comes "
     "twice. A count of 0 means range - low."},
};

constexpr auto kSignals = signalTable<ArraySignal>({
    {ArraySignal::onChanged, "ONCHANGED",
     "A value was added or changed, while SENDONCHANGE is on; $1 is its index, after ADD one less. As "
     "ONCHANGED^INDEX if that is bound."},
});

constexpr Property kProperties[] = {
    {"SENDONCHANGE", PropertyKind::boolean, "FALSE", "TRUE lets ONCHANGED come from the start."},
};

}  // namespace

extern constinit const ScriptType kArrayType = {
    .number = type::kArray,
    .idWord = "ARRAY",
    .stringWord = "ARRAY",
    .definitionWord = "ARRAY",
    .meaning = "A list of values.",
    .pass = 3,
    .signals = kSignals,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Array>,
};

}  // namespace footlight
