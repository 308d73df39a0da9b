// Scripts' methods of ARRAY.

#include <algorithm>

#include "files/config.h"
#include "files/folder.h"
#include "files/path.h"
#include "foundation/limits.h"
#include "foundation/random.h"
#include "foundation/string_tokenizer.h"
#include "objects/data/mc_array.h"
#include "script/mc_expression.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

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
  for (std::int64_t i = from; i <= to; ++i) {
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
  array.removeAll();
  for (int i = 0; i < count; ++i) array.add(filling.get());
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
  for (int argument = 1; argument < call.count(); ++argument) {
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
  if (target == nullptr || !target->hasRoom(count)) return {};
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
  if (!folder.GoTo(path)) return {};
  const std::vector<CXString> names = folder.list(pattern);
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
  for (int i = 0; i < count; ++i) {
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
    {1, "ADD", 1, Method::kAny, method<add>, numberMethod<addNumber>},
    {2, "GETSIZE", 0, 0, method<getSize>},
    {3, "INSERTAT", 2, 2, method<insertAt>},
    {4, "REMOVEAT", 1, 1, method<removeAt>},
    {5, "CHANGEAT", 2, 2, method<changeAt>},
    {6, "REMOVEALL", 0, 0, method<removeAll>},
    {7, "GET", 1, 1, method<get>, numberMethod<getByNumber>},
    {8, "REMOVE", 1, 1, method<remove>},
    {9, "FIND", 1, 1, method<find>},
    {39, "REVERSEFIND", 1, 1, method<reverseFind>},
    {54, "FINDALL", 2, Method::kAny, method<findAll>},
    {10, "CONTAINS", 1, 1, method<contains>},
    {11, "SAVEINI", 0, 0, method<saveIni>},
    {12, "LOADINI", 0, 0, method<loadIni>},
    {13, "PREV", 0, 1, method<prev>},
    {14, "NEXT", 0, 1, method<next>},
    {15, "ADDCLONES", 3, 3, method<addClones>},
    {16, "RESETMARKER", 0, 0, method<resetMarker>},
    {17, "GETMARKERPOS", 0, 0, method<getMarkerPos>},
    {18, "SETMARKERPOS", 1, 1, method<setMarkerPos>},
    {19, "SUM", 1, 1, method<onAll<Operation::add>>},
    {21, "SUB", 1, 1, method<onAll<Operation::subtract>>},
    {23, "MUL", 1, 1, method<onAll<Operation::multiply>>},
    {25, "DIV", 1, 1, method<onAll<Operation::divide>>},
    {20, "SUMA", 1, 3, method<onRange<Operation::add>>},
    {22, "SUBA", 1, 3, method<onRange<Operation::subtract>>},
    {24, "MULA", 1, 3, method<onRange<Operation::multiply>>},
    {32, "DIVA", 1, 3, method<onRange<Operation::divide>>},
    {33, "MIN", 0, 0, method<min>},
    {34, "MAX", 0, 0, method<max>},
    {57, "MIND", 0, 0, method<minDouble>},
    {56, "MAXD", 0, 0, method<maxDouble>},
    {35, "GETSUMVALUE", 0, 0, method<getSumValue>},
    {36, "SORT", 1, 1, method<sort>},
    {55, "SORTMANY", 0, Method::kAny, method<sortMany>},
    {37, "LOAD", 1, 1, method<load>},
    {38, "SAVE", 1, 1, method<save>},
    {42, "ADDAT", 2, 2, method<onOne<Operation::add>>},
    {43, "SUBAT", 2, 2, method<onOne<Operation::subtract>>},
    {40, "MULAT", 2, 2, method<onOne<Operation::multiply>>},
    {41, "DIVAT", 2, 2, method<onOne<Operation::divide>>},
    {44, "MODAT", 2, 2, method<onOne<Operation::modulo>>},
    {45, "CLAMPAT", 3, 3, method<clampAt>},
    {46, "DIR", 2, 2, method<dir>},
    {47, "COMPARE", 1, 1, method<compare>},
    {58, "COPYTO", 1, 1, method<copyTo>},
    {53, "SWAP", 2, 2, method<swap>},
    {48, "SENDONCHANGE", 0, 1, method<sendOnChange>},
    {49, "SHIFTLEFT", 0, 0, method<shiftLeft>},
    {50, "SHIFTRIGHT", 0, 0, method<shiftRight>},
    {51, "ROTATELEFT", 0, 0, method<rotateLeft>},
    {52, "ROTATERIGHT", 0, 0, method<rotateRight>},
    {59, "FILL", 2, 2, method<fill>},
    {60, "RANDOMFILL", 4, 4, method<randomFill>},
};

}  // namespace

std::span<const Method> methods::array() { return kMethods; }

}  // namespace footlight
