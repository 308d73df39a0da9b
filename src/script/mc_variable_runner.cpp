// Scripts' methods of INTEGER, STRING, BOOL, DOUBLE and EXPRESSION.

#include <algorithm>
#include <cmath>
#include <ctime>

#include "files/file.h"
#include "files/path.h"
#include "foundation/arithmetic.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "foundation/random.h"
#include "platform/platform.h"
#include "script/caches.h"
#include "script/mc_expression.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

constexpr double kDegrees = 57.29577950560105;  // radians to degrees, of ARCTAN
constexpr double kRadians = 0.0174532924;       // degrees to radians, of SINUS and COSINUS
constexpr double kHalfTurn = 180.0;
constexpr double kPi = 3.14159265358979323846;

double finite(double value) { return std::isfinite(value) ? value : 0.0; }

// Writes a result into the object and hands it on.
Result store(CMC_Variable& object, const Ref<CMC_Variable>& value) {
  object.set(value.get());
  return Result(value);
}

Result storeInteger(CMC_Variable& object, int value) { return store(object, Factory::makeInteger(value)); }

Result storeDouble(CMC_Variable& object, double value) {
  return store(object, Factory::makeDouble(finite(value)));
}

bool isNumeric(const CMC_Variable& object) {
  return object.getType() == type::kInteger || object.getType() == type::kDouble;
}

// A method that the object's type has by name alone.
Result notForType() {
  diagnose::reportCall(diagnose::Group::method, "does nothing on an object of this type");
  return {};
}

// Gives a STRING a new value, unless it is longer than a text may be.
void replaceText(CMC_String& object, CXString text) {
  if (text.Length() > limits::kStringBytes) {
    limitHit("string too long");
    return;
  }
  if (!memory::hasRoom(text.Length())) return;
  CMC_String value(std::move(text));
  object.set(&value);
}

// Arithmetic of all types

// Calculates with the value of an INTEGER or a DOUBLE and stores the outcome; none stores the number itself.
// False for an object of another type. Nobody is given the result.
template <Operation O>
bool applyNumber(CMC_Variable& object, Number number, Value* result) {
  if (result != nullptr) return false;
  if (auto* integer = object_cast<CMC_Integer>(&object)) {
    const int operand = asInteger(number);
    integer->change(O == Operation::none ? operand : CMC_Integer::apply(integer->getValue(), O, operand));
    return true;
  }
  auto* real = object_cast<CMC_Double>(&object);
  if (real == nullptr) return false;
  const double operand = asDouble(number);
  real->change(O == Operation::none ? operand : CMC_Double::apply(real->getValue(), O, operand));
  return true;
}

Result set(CMC_Variable& object, Call& call) {
  const Number number = call.number(0);
  if (number && applyNumber<Operation::none>(object, number, nullptr)) return {};
  if (const Ref<CMC_Variable> value = asVariable(call.object(0))) object.set(value.get());
  return {};
}

Result switchValues(CMC_Variable& object, Call& call) {
  const Ref<CMC_Variable> a = asVariable(call.object(0));
  const Ref<CMC_Variable> b = asVariable(call.object(1));
  if (a && b) object.swap(a.get(), b.get());
  return {};
}

Result clear(CMC_Variable& object, Call& /*call*/) {
  object.clear();
  return {};
}

Result inc(CMC_Variable& object, Call& /*call*/) {
  object.inc();
  return {};
}

Result dec(CMC_Variable& object, Call& /*call*/) {
  object.dec();
  return {};
}

template <Operation O>
void operate(CMC_Variable& object, Call& call) {
  const Number number = call.number(0);
  if (number && applyNumber<O>(object, number, nullptr)) return;
  const Ref<CMC_Variable> operand = asVariable(call.object(0));
  if (!operand) return;
  if (auto* integer = object_cast<CMC_Integer>(&object)) {
    integer->change(CMC_Integer::apply(integer->getValue(), O, operand->asInteger()));
    return;
  }
  const Ref<CMC_Variable> value = object.calculate(operand.get(), O);
  object.set(value.get());
}

// Texts grow in place.
bool appendText(CMC_Variable& object, const Call& call) {
  auto* text = object_cast<CMC_String>(&object);
  if (text == nullptr || !caches::isOn()) return false;
  const Ref<CMC_Variable> added = asVariable(call.object(0));
  if (!added || added.get() == &object) return false;
  CXString storage;
  const auto* string = object_cast<CMC_String>(added.get());
  if (string == nullptr) storage = added->asText();
  text->append(string != nullptr ? string->getValue() : storage);
  return true;
}

Result add(CMC_Variable& object, Call& call) {
  if (!appendText(object, call)) operate<Operation::add>(object, call);
  return call.isResultUsed() ? Result(Factory::copyVariable(&object)) : Result();
}

Result mul(CMC_Variable& object, Call& call) {
  operate<Operation::multiply>(object, call);
  return {};
}

Result resetIni(CMC_Variable& object, Call& /*call*/) {
  object.resetINI();
  return {};
}

Result setDefault(CMC_Variable& object, Call& call) {
  if (const Ref<CMC_Variable> value = asVariable(call.object(0))) object.setDefault(value.get());
  return {};
}

Result sub(CMC_Variable& object, Call& call) {
  auto* text = object_cast<CMC_String>(&object);
  if (text == nullptr) {
    operate<Operation::subtract>(object, call);
    return {};
  }
  // Arguments may change the text: they come first, here and below.
  const int from = call.integer(0);
  const int most = call.integer(1);
  const int length = text->getValue().Length();
  const int index = std::clamp(from, 0, length);
  const int count = std::clamp(most, 0, length - index);
  text->setValue(text->getValue().Left(index) + text->getValue().slice(index + count, length));
  return {};
}

Result div(CMC_Variable& object, Call& call) {
  operate<Operation::divide>(object, call);
  return {};
}

Result mod(CMC_Variable& object, Call& call) {
  operate<Operation::modulo>(object, call);
  return {};
}

Result abs(CMC_Variable& object, Call& call) {
  const int value = call.integer(0);
  return storeInteger(object, value < 0 ? wrap_negate(value) : value);
}

Result bitAnd(CMC_Variable& object, Call& call) {
  return storeInteger(object, object.asInteger() & call.integer(0));
}

Result bitOr(CMC_Variable& object, Call& call) {
  return storeInteger(object, object.asInteger() | call.integer(0));
}

Result bitXor(CMC_Variable& object, Call& call) {
  return storeInteger(object, object.asInteger() ^ call.integer(0));
}

Result bitNot(CMC_Variable& object, Call& /*call*/) {
  if (object.getType() == type::kInteger) return storeInteger(object, ~object.asInteger());
  auto* text = object_cast<CMC_String>(&object);
  if (text == nullptr) return notForType();
  const std::string_view value = text->getValue().view();
  return store(object, Factory::makeString(std::string(value.rbegin(), value.rend())));
}

Result power(CMC_Variable& object, Call& call) {
  return storeInteger(object, to_int(std::pow(object.asDouble(), call.integer(0))));
}

// Numbers

Result squareRoot(CMC_Variable& object, Call& /*call*/) {
  return isNumeric(object) ? storeDouble(object, std::sqrt(object.asDouble())) : notForType();
}

Result clamp(CMC_Variable& object, Call& call) {
  if (object.getType() == type::kInteger) {
    return storeInteger(object, std::max(std::min(object.asInteger(), call.integer(1)), call.integer(0)));
  }
  if (object.getType() != type::kDouble) return notForType();
  return storeDouble(object, std::max(std::min(object.asDouble(), call.real(1)), call.real(0)));
}

Result length(CMC_Variable& object, Call& call) {
  if (const auto* text = object_cast<CMC_String>(&object)) {
    return Number(text->getValue().Length());
  }
  if (!isNumeric(object) || !call.has(1)) return notForType();
  const double x = call.real(0);
  const double y = call.real(1);
  return storeDouble(object, std::sqrt(x * x + y * y));
}

Result arcTan(CMC_Variable& object, Call& call) {
  return storeDouble(object, std::atan(call.real(0)) * kDegrees);
}

Result arcTanEx(CMC_Variable& object, Call& call) {
  double angle = std::atan2(call.real(0), call.real(1)) * (kHalfTurn / kPi);
  if (angle < 0.0) angle += 2 * kHalfTurn;
  return storeDouble(object, to_int(angle + call.real(2)));
}

Result sinus(CMC_Variable& object, Call& call) {
  return storeDouble(object, std::sin(call.real(0) * kRadians));
}

Result cosinus(CMC_Variable& object, Call& call) {
  return storeDouble(object, std::cos(call.real(0) * kRadians));
}

template <class Choose>
Result extreme(CMC_Variable& object, const Call& call, Choose choose) {
  double best = call.real(0);
  for (int i = 1; i < call.count(); ++i) best = choose(best, call.real(i));
  return storeDouble(object, best);
}

Result minA(CMC_Variable& object, Call& call) {
  return extreme(object, call, [](double a, double b) { return std::min(a, b); });
}

Result maxA(CMC_Variable& object, Call& call) {
  return extreme(object, call, [](double a, double b) { return std::max(a, b); });
}

Result round(CMC_Variable& object, Call& /*call*/) {
  if (object.getType() != type::kDouble) return notForType();
  const double value = object.asDouble();
  const int whole = to_int(value);
  return Result(
      Factory::makeInteger(remainder(to_int(value * 100.0), 100) >= 50 ? wrap_add(whole, 1) : whole));
}

Result sgn(CMC_Variable& object, Call& /*call*/) {
  if (!isNumeric(object)) return notForType();
  const int whole = to_int(object.asDouble());
  return Result(Factory::makeInteger((whole > 0) - (whole < 0)));
}

Result random(CMC_Variable& object, Call& call) {
  CXRandom generator;
  int value = 0;
  if (call.count() == 1) value = generator.random(call.integer(0));
  if (call.count() > 1) value = generator.random(call.integer(0), call.integer(1));
  const Ref<CMC_Variable> result = Factory::makeInteger(value);
  if (object.getType() == type::kInteger) object.set(result.get());
  return Result(result);
}

// Texts

Result get(CMC_Variable& object, Call& call) {
  const auto* string = object_cast<CMC_String>(&object);
  if (string == nullptr || !call.has(0)) return Result(Ref<CMC_Variable>(&object));
  const CXString& text = string->getValue();
  const int index = call.integer(0);
  if (!call.has(1)) {
    const char character = text.GetAt(index);
    return Result(
        Factory::makeString(character == '\0' ? CXString() : CXString(std::string_view(&character, 1))));
  }
  const int count = call.integer(1);
  return Result(Factory::makeString(text.Mid(index, count == -1 ? text.Length() : wrap_add(index, count))));
}

Result upper(CMC_String& object, Call& /*call*/) {
  object.upper();
  return {};
}

Result find(CMC_String& object, Call& call) {
  const int start = call.integer(1);
  CXString storage;
  return Number(object.getValue().FindSubString(call.textView(0, &storage), start));
}

Result cut(CMC_String& object, Call& call) {
  const int from = call.integer(0);
  const int count = call.integer(1);
  const CXString& text = object.getValue();
  const int index = std::clamp(from, 0, text.Length());
  const bool toEnd = count <= 0 || count > text.Length() - index;
  replaceText(object, text.Mid(index, toEnd ? text.Length() : index + count));
  return {};
}

Result replaceAt(CMC_String& object, Call& call) {
  const int index = std::max(call.integer(0), 0);
  const CXString added = call.text(1);
  const CXString& text = object.getValue();
  if (index > text.Length()) return {};
  replaceText(object, text.Left(index) + added + text.slice(index + added.Length(), text.Length()));
  return {};
}

Result insertAt(CMC_String& object, Call& call) {
  const int from = call.integer(0);
  const CXString added = call.text(1);
  const std::int64_t count = call.has(2) ? std::max(call.integer(2), 0) : 1;
  const CXString& text = object.getValue();
  const int index = std::clamp(from, 0, text.Length());
  if (text.Length() + count * added.Length() > limits::kStringBytes) {
    limitHit("string too long");
    return {};
  }
  CXString result = text.Left(index);
  for (std::int64_t i = 0; i < (added.IsEmpty() ? 0 : count); ++i) result += added;
  result += text.slice(index, text.Length());
  replaceText(object, std::move(result));
  return {};
}

Result replace(CMC_String& object, Call& call) {
  const CXString from = call.text(0);
  const CXString to = call.text(1);
  const CXString& text = object.getValue();
  if (from.IsEmpty()) return {};
  const std::int64_t most = std::int64_t{text.Length()} / from.Length() * to.Length() + text.Length();
  CXString result = most > 2 * limits::kStringBytes ? text : text.replace(from, to);
  replaceText(object, std::move(result));
  return {};
}

Result isUpperLetter(CMC_Variable& object, Call& call) {
  const auto* text = object_cast<CMC_String>(&object);
  const char character = text != nullptr ? text->getValue().GetAt(call.integer(0)) : '\0';
  return Result(Factory::makeBool(character != '\0' && CXString(std::string_view(&character, 1)).IsUpper()));
}

Result copyFile(CMC_Variable& object, Call& call) {
  CWindow* window = call.scope() != nullptr ? call.scope()->getWindow() : nullptr;
  static_cast<void>(object);
  const CXString from = CPath::resolveFileName(window, call.text(0));
  const CXString to = CPath::resolveFileName(window, call.text(1));
  const bool isCopied = CFile::copy(from, to);
  if (!isCopied && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::file, from.str() + " was not copied to " + to.str());
  return Result(Factory::makeBool(isCopied));
}

constexpr Method kMethods[] = {
    {1, "SET", "value:value", method<set>, "Takes the value, turned into its own type.",
     numberMethod<applyNumber<Operation::none>>},
    {2, "SWITCH", "first:value, second:value", method<switchValues>,
     "Takes the second value if it equals the first, else the first; a BOOL just turns round."},
    {3, "CLEAR", "", method<clear>, "Becomes 0, FALSE or an empty text."},
    {4, "INC", "", method<inc>, "Adds 1; a BOOL turns round."},
    {5, "DEC", "", method<dec>, "Takes 1 away; a BOOL turns round."},
    {6, "ADD", "value:value -> value", method<add>,
     "Adds a number, or appends to a STRING; a BOOL becomes the AND of both. Gives the new value.",
     numberMethod<applyNumber<Operation::add>>},
    {7, "MUL", "value:value", method<mul>, "Multiplies; a BOOL becomes the OR of both.",
     numberMethod<applyNumber<Operation::multiply>>},
    {8, "RESETINI", "", method<resetIni>,
     "If TOINI is TRUE, takes its default again and writes that to the INI file."},
    {9, "SETDEFAULT", "value:value", method<setDefault>, "Sets the value that RESETINI brings back."},
    {10, "SUB", "value:value, [count:int]", method<sub>,
     "Subtracts; a STRING loses count characters from the index on, from 0.",
     numberMethod<applyNumber<Operation::subtract>>},
    {11, "DIV", "value:value", method<div>, "Divides, an INTEGER without the remainder; by 0 gives 0.",
     numberMethod<applyNumber<Operation::divide>>},
    {12, "MOD", "value:value", method<mod>, "Becomes the whole remainder of the division, with its own sign.",
     numberMethod<applyNumber<Operation::modulo>>},
    {13, "ABS", "value:int -> int", method<abs>, "Becomes the argument without its sign."},
    {14, "AND", "bits:int -> int", method<bitAnd>, "Keeps of its bits those that the argument has too."},
    {15, "OR", "bits:int -> int", method<bitOr>, "Sets the bits that the argument has."},
    {16, "NOT", "-> value", method<bitNot>,
     "Turns all bits of an INTEGER; reverses the characters of a STRING."},
    {17, "XOR", "bits:int -> int", method<bitXor>, "Turns the bits that the argument has."},
    {18, "POWER", "exponent:int -> int", method<power>,
     "Becomes itself raised to the power, cut to a whole number."},
    {20, "SQRT", "-> real", method<squareRoot>, "A number becomes its square root."},
    {21, "CLAMP", "low:real, high:real -> real", method<clamp>,
     "A number is brought into the range from low to high."},
    {22, "LENGTH", "[x:real], [y:real] -> real", method<length>,
     "Without arguments the number of characters of a STRING; a number becomes the length of the vector x, "
     "y."},
    {23, "ARCTAN", "slope:real -> real", method<arcTan>,
     "Becomes the arc tangent of the argument, in degrees."},
    {24, "GET", "[index:int], [count:int] -> value", method<get>,
     "Its value; of a STRING with an index, from 0, the character there, and with a count that many from "
     "there, with -1 all."},
    {25, "MINA", "first:real, [more:real...] -> real", method<minA>, "Becomes the least of the arguments."},
    {26, "MAXA", "first:real, [more:real...] -> real", method<maxA>,
     "Becomes the greatest of the arguments."},
    {27, "ARCTANEX", "y:real, x:real, [added:real] -> real", method<arcTanEx>,
     "Becomes the angle of the point, 0 to 359 whole degrees; with a third argument that many more."},
    {28, "SINUS", "degrees:real -> real", method<sinus>, "Becomes the sine of the angle in degrees."},
    {29, "COSINUS", "degrees:real -> real", method<cosinus>, "Becomes the cosine of the angle in degrees."},
    {30, "UPPER", "", method<upper>, "Turns the letters of a STRING into capitals."},
    {31, "FIND", "text:text, [start:int] -> int", method<find>,
     "The index, from 0, at which the text stands in a STRING, -1 for nowhere; searches from start, or 0, "
     "on."},
    {32, "CUT", "index:int, count:int", method<cut>,
     "A STRING keeps count characters from the index on; with 0 or less all from there."},
    {33, "REPLACEAT", "index:int, text:text", method<replaceAt>,
     "Writes the text over what stands in a STRING from the index on; the STRING grows if need be."},
    {34, "INSERTAT", "index:int, text:text, [times:int]", method<insertAt>,
     "Puts the text into a STRING at the index, that many times, once without the number."},
    {35, "REPLACE", "from:text, to:text", method<replace>,
     "Puts the second text wherever the first stands in a STRING."},
    {36, "ROUND", "-> int", method<round>,
     "A DOUBLE rounded to a whole number, half up; a negative one is cut. The object stays as it is."},
    {37, "ISUPPERLETTER", "index:int -> bool", method<isUpperLetter>,
     "Whether a capital stands at the index of a STRING."},
    {38, "SGN", "-> int", method<sgn>,
     "The sign of a number: -1, 0 or 1; 0 for all between -1 and 1. The object stays as it is."},
    {39, "COPYFILE", "from:file, to:file -> bool", method<copyFile>,
     "Copies a file within the game over the second name; TRUE when it was done."},
    {40, "RANDOM", "[low:int], [count:int] -> int", method<random>,
     "A random number: with one argument n of 0 to n - 1, with two of low to low + count - 1, without any 0; "
     "an INTEGER takes it."},
};

constexpr auto kSignals = signalTable<VariableSignal>({
    {VariableSignal::onChanged, "ONCHANGED",
     "Its value has changed; as ONCHANGED^VALUE, with the new value, if that is bound."},
    {VariableSignal::onBrutalChanged, "ONBRUTALCHANGED",
     "It was given a value, be it the same; as ONBRUTALCHANGED^VALUE, with that value, if that is bound."},
    {VariableSignal::onNetChange, "ONNETCHANGE",
     "A value for it came over the network; the new one is not set yet."},
});

constexpr Property kValueProperties[] = {
    {"VALUE", PropertyKind::text, "", "Its value at the start."},
    {"DEFAULT", PropertyKind::text, "", "What RESETINI gives back; without it the value at the start."},
    {"TOINI", PropertyKind::boolean, "FALSE",
     "TRUE keeps the value in the INI file from game to game, and sends its changes as NETNOTIFY does."},
    {"NETNOTIFY", PropertyKind::boolean, "FALSE", "TRUE sends each change to the other players."},
};
constexpr Property kExpressionProperties[] = {
    {"OPERAND1", PropertyKind::text, "",
     "The left side: a value, a variable or a call; it gives the result its type."},
    {"OPERATOR", PropertyKind::text, "", "ADD, SUB, MUL, DIV or MOD; + - * @ % as well."},
    {"OPERAND2", PropertyKind::text, "", "The right side; it is turned into the type of the left one."},
};

}  // namespace

extern constinit const ScriptType kIntegerType = {
    .number = type::kInteger,
    .idWord = "INTEGER",
    .stringWord = "INTEGER",
    .definitionWord = "INTEGER",
    .meaning = "A whole number of 32 bits.",
    .pass = 2,
    .signals = kSignals,
    .properties = kValueProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Integer>,
};

extern constinit const ScriptType kStringType = {
    .number = type::kString,
    .idWord = "STRING",
    .stringWord = "STRING",
    .definitionWord = "STRING",
    .meaning = "A text.",
    .pass = 2,
    .signals = kSignals,
    .properties = kValueProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_String>,
};

extern constinit const ScriptType kBoolType = {
    .number = type::kBool,
    .idWord = "BOOL",
    .stringWord = "BOOL",
    .definitionWord = "BOOL",
    .meaning = "TRUE or FALSE.",
    .pass = 2,
    .signals = kSignals,
    .properties = kValueProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Bool>,
};

extern constinit const ScriptType kDoubleType = {
    .number = type::kDouble,
    .idWord = "DOUBLE",
    .stringWord = "DOUBLE",
    .definitionWord = "DOUBLE",
    .meaning = "A number with a fraction; its text has five decimals.",
    .pass = 2,
    .signals = kSignals,
    .properties = kValueProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Double>,
};

// A word alone: INTEGER, STRING, BOOL and DOUBLE.
extern constinit const ScriptType kVariableType = {
    .number = type::kVariable,
    .idWord = "VARIABLE",
    .meaning = "INTEGER, STRING, BOOL or DOUBLE.",
    .isCallable = false,
};

extern constinit const ScriptType kExpressionType = {
    .number = type::kExpression,
    .idWord = "EXPRESSION",
    .stringWord = "EXPRESSION",
    .definitionWord = "EXPRESSION",
    .meaning = "Two sides and an operation; it is calculated whenever it is read.",
    .pass = 3,
    .signals = kSignals,
    .properties = kExpressionProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Expression>,
};

}  // namespace footlight
