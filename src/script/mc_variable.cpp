#include "script/mc_variable.h"

#include <algorithm>
#include <cmath>

#include "files/config.h"
#include "foundation/arithmetic.h"
#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"
#include "foundation/limits.h"
#include "script/mc_objects_container.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

namespace {

template <class T>
int sign(const T& a, const T& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

void copyRecord(const ByteWriter& record, std::span<std::byte> buffer) {
  const std::size_t count = std::min(record.size(), buffer.size());
  std::copy_n(record.written().begin(), count, buffer.begin());
}

// VALUE, and DEFAULT where it is not empty, through the typed getter of the element.
template <class Value, class Getter>
void readValues(const CMElement* element, Getter getter, Value* value, Value* defaultValue) {
  *value = (element->*getter)("VALUE");
  *defaultValue = element->getPropertyValue("DEFAULT").IsEmpty() ? *value : (element->*getter)("DEFAULT");
}

}  // namespace

CMC_Variable::CMC_Variable(CMC_ObjectsContainer* container, const CMElement* element, int type)
    : CMC_Object(container, element, type),
      toIni_(element->getPropertyBoolValue("TOINI")),
      netNotify_(toIni_ || element->getPropertyBoolValue("NETNOTIFY")) {}

CMC_Variable::CMC_Variable(CXString name, int type, int poolId)
    : CMC_Object(std::move(name), type), poolId_(poolId) {}

void CMC_Variable::init() {
  const Ref<CMC_Variable> self(this);
  CConfig* config = toIni_ && getScene() != nullptr ? getScene()->getConfig() : nullptr;
  if (config != nullptr) {
    const CXString section = getScene()->getName();
    const CXString stored = config->GetString(section, getName());
    if (stored.IsString()) {
      CMC_String text(stored);
      set(&text);
    } else {
      config->PutString(section, getName(), toString());
    }
  }
  if (!isDisposed()) CMC_Object::init();
}

void CMC_Variable::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  archive.pass(toIni_);
  archive.pass(netNotify_);
}

void CMC_Variable::onChange(bool changed) {
  const bool brutal = isSignalBound(VariableSignal::onBrutalChanged);
  const bool plain = changed && isSignalBound(VariableSignal::onChanged);
  if (!brutal && !plain && !(changed && (toIni_ || netNotify_))) return;

  const Ref<CMC_Variable> self(this);
  if (brutal) raise(VariableSignal::onBrutalChanged, toString());
  if (plain) raise(VariableSignal::onChanged, toString());
  if (!changed || !toIni_ || isDisposed() || getScene() == nullptr) return;
  if (CConfig* config = getScene()->getConfig())
    config->PutString(getScene()->getName(), getName(), toString());
}

void CMC_Variable::onNetChange(CMC_Variable* value) {
  const Ref<CMC_Variable> self(this);
  const Ref<CMC_Variable> keep(value);
  raise(VariableSignal::onNetChange);
  const bool notify = netNotify_;
  netNotify_ = false;
  set(value);
  netNotify_ = notify;
}

Ref<CMC_Variable> CMC_Variable::convert(int type) {
  if (type == getType()) return Ref<CMC_Variable>(this);
  switch (type) {
    case type::kInteger:
      return CMC_VariableFactory::makeInteger(asInteger());
    case type::kString:
      return CMC_VariableFactory::makeString(toString());
    case type::kBool:
      return CMC_VariableFactory::makeBool(asBool());
    case type::kDouble:
      return CMC_VariableFactory::makeDouble(asDouble());
    default:
      return nullptr;
  }
}

bool CMC_Variable::isNumber(std::string_view text) {
  if (!beginsLikeNumber(text)) return false;
  if (text.size() >= 2 && text[0] == '0' && text[1] != '.') return false;
  return std::all_of(text.begin() + 1, text.end(), [](char c) { return c == '.' || (c >= '0' && c <= '9'); });
}

Ref<CMC_Variable> CMC_Variable::resolve(std::string_view literal) {
  if (literal.starts_with('"')) {
    literal.remove_prefix(1);
    if (literal.ends_with('"')) literal.remove_suffix(1);
    return CMC_VariableFactory::makeString(literal);
  }
  if (isNumber(literal)) {
    const CXString number(literal);
    if (number.Find('.') >= 0) return CMC_VariableFactory::makeDouble(number.toDouble());
    return CMC_VariableFactory::makeInteger(number.toNumber());
  }
  if (literal == "TRUE" || literal == "FALSE") return CMC_VariableFactory::makeBool(literal == "TRUE");
  return CMC_VariableFactory::makeString(literal);
}

int CMC_Variable::round(double value) {
  const double whole = std::trunc(value);
  if (std::fabs(value - whole) < 0.5) return to_int(whole);
  return to_int(value < 0 ? whole - 1.0 : whole + 1.0);
}

// INTEGER

CMC_Integer::CMC_Integer(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_ValueVariable(container, element, type::kInteger) {
  readValues(element, &CMElement::getPropertyIntValue, &value_, &defaultValue_);
  initializeBehaviours(container, element);
}

void CMC_Integer::inc() {
  value_ = wrap_add(value_, 1);
  written(true);
}

void CMC_Integer::dec() {
  value_ = wrap_sub(value_, 1);
  written(true);
}

bool CMC_Integer::equals(CMC_Variable* other) { return other != nullptr && value_ == other->asInteger(); }

int CMC_Integer::compare(CMC_Variable* other) {
  return other == nullptr ? 1 : sign(value_, other->asInteger());
}

Ref<CMC_Variable> CMC_Integer::calculate(CMC_Variable* other, Operation operation) {
  return CMC_VariableFactory::makeInteger(
      apply(value_, operation, other != nullptr ? other->asInteger() : 0));
}

void CMC_Integer::netstore(std::span<std::byte> buffer) const {
  copyRecord(ByteWriter().i32(type::kInteger).i32(value_), buffer);
}

bool CMC_Integer::netrestore(std::span<const std::byte> value) {
  ByteReader reader(value);
  const std::int32_t number = reader.i32();
  if (reader.ok()) value_ = number;
  return reader.ok();
}

// STRING

CMC_String::CMC_String(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_ValueVariable(container, element, type::kString) {
  readValues(element, &CMElement::getPropertyValue, &value_, &defaultValue_);
  initializeBehaviours(container, element);
}

bool CMC_String::equals(CMC_Variable* other) {
  return other != nullptr && value_.equalsIgnoreCase(other->toString());
}

int CMC_String::compare(CMC_Variable* other) {
  return other == nullptr ? 1 : sign(value_.view(), other->toString().view());
}

void CMC_String::append(std::string_view text) {
  if (std::int64_t{value_.Length()} + static_cast<std::int64_t>(text.size()) > limits::kStringBytes) {
    limitHit("string too long");
    written(false);
    return;
  }
  value_ += text;
  written(!text.empty());
}

Ref<CMC_Variable> CMC_String::calculate(CMC_Variable* other, Operation operation) {
  CXString text = value_;
  if (operation == Operation::add && other != nullptr) {
    const CXString added = other->toString();
    if (std::int64_t{text.Length()} + added.Length() <= limits::kStringBytes) {
      text += added;
    } else {
      limitHit("string too long");
    }
  }
  return CMC_VariableFactory::makeString(std::move(text));
}

void CMC_String::netstore(std::span<std::byte> buffer) const {
  ByteWriter record;
  record.reserve(buffer.size());
  copyRecord(record.i32(type::kString).text(value_).zeros(1), buffer);
}

bool CMC_String::netrestore(std::span<const std::byte> value) {
  const auto end = std::find(value.begin(), value.end(), std::byte{0});
  if (end == value.end()) return false;
  value_ = CXString(std::string_view(reinterpret_cast<const char*>(value.data()),
                                     static_cast<std::size_t>(end - value.begin())));
  return true;
}

// BOOL

CMC_Bool::CMC_Bool(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_ValueVariable(container, element, type::kBool) {
  readValues(element, &CMElement::getPropertyBoolValue, &value_, &defaultValue_);
  initializeBehaviours(container, element);
}

void CMC_Bool::swap(CMC_Variable* /*a*/, CMC_Variable* /*b*/) { change(!value_); }

bool CMC_Bool::equals(CMC_Variable* other) { return other != nullptr && value_ == other->asBool(); }

int CMC_Bool::compare(CMC_Variable* other) { return other == nullptr ? -1 : sign(value_, other->asBool()); }

Ref<CMC_Variable> CMC_Bool::calculate(CMC_Variable* other, Operation operation) {
  const bool b = other != nullptr && other->asBool();
  if (operation == Operation::add) return CMC_VariableFactory::makeBool(value_ && b);
  if (operation == Operation::multiply) return CMC_VariableFactory::makeBool(value_ || b);
  return CMC_VariableFactory::makeBool(value_);
}

void CMC_Bool::netstore(std::span<std::byte> buffer) const {
  copyRecord(ByteWriter().i32(type::kBool).u8(value_ ? 1 : 0), buffer);
}

bool CMC_Bool::netrestore(std::span<const std::byte> value) {
  if (value.empty()) return false;
  value_ = value[0] != std::byte{0};
  return true;
}

// DOUBLE

CMC_Double::CMC_Double(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_ValueVariable(container, element, type::kDouble) {
  readValues(element, &CMElement::getPropertyDoubleValue, &value_, &defaultValue_);
  initializeBehaviours(container, element);
}

void CMC_Double::inc() {
  value_ += 1.0;
  written(true);
}

void CMC_Double::dec() {
  value_ -= 1.0;
  written(true);
}

bool CMC_Double::equals(CMC_Variable* other) { return other != nullptr && value_ == other->asDouble(); }

int CMC_Double::compare(CMC_Variable* other) {
  return other == nullptr ? -1 : sign(value_, other->asDouble());
}

double CMC_Double::apply(double a, Operation operation, double b) {
  switch (operation) {
    case Operation::add:
      return a + b;
    case Operation::subtract:
      return a - b;
    case Operation::multiply:
      return a * b;
    case Operation::divide:
      return b == 0.0 ? 0.0 : a / b;
    case Operation::modulo:
      return remainder(to_int(a), to_int(b));
    case Operation::none:
      break;
  }
  return a;
}

Ref<CMC_Variable> CMC_Double::calculate(CMC_Variable* other, Operation operation) {
  return CMC_VariableFactory::makeDouble(
      apply(value_, operation, other != nullptr ? other->asDouble() : 0.0));
}

void CMC_Double::netstore(std::span<std::byte> buffer) const {
  copyRecord(ByteWriter().i32(type::kDouble).f64(value_), buffer);
}

bool CMC_Double::netrestore(std::span<const std::byte> value) {
  ByteReader reader(value);
  const double number = reader.f64();
  if (reader.ok()) value_ = number;
  return reader.ok();
}

}  // namespace footlight
