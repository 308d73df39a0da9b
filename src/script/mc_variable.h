#pragma once

// Scripts hold all data in four value objects: INTEGER, DOUBLE, BOOL and STRING. The same classes serve for
// values that exist for a moment only; those come from the pools of CMC_VariableFactory and go back when
// their last Ref goes.
//
// Expressions and structures are variables too and take part in the same operations.

#include <cstddef>
#include <span>

#include "files/archive.h"
#include "foundation/arithmetic.h"
#include "script/mc_object.h"
#include "script/number.h"

namespace footlight {

// The operations of arithmetic, by their numbers in `calculate`.
enum class Operation : int { none = 0, add = 1, subtract = 2, multiply = 3, divide = 4, modulo = 5 };

// The signals of the four values and of EXPRESSION.
enum class VariableSignal { onChanged = kFirstOwnSignal, onBrutalChanged, onNetChange, count };

class CMC_Variable : public CMC_Object {
 public:
  static constexpr int kNoPool = -1;

  CMC_Variable(CMC_ObjectsContainer* container, const CMElement* element, int type);
  CMC_Variable(CXString name, int type, int poolId = kNoPool);

  static bool isTypeOf(int type) {
    return isValueType(type) || type == type::kExpression || type == type::kStructure;
  }
  static bool isValueType(int type) { return type >= type::kInteger && type <= type::kDouble; }

  void init() override;
  // The two flags for the INI file and the network, behind the base's part.
  void serialize(CXArchive& archive) override;
  using CXObject::compare;
  using CXObject::equals;

  // Takes the value of the other, converted to the own type.
  virtual void set(CMC_Variable* other) = 0;
  virtual void clear() = 0;
  // The flip between two values: b if the value now equals a, else a.
  virtual void swap(CMC_Variable* a, CMC_Variable* b) = 0;
  virtual void inc() = 0;
  virtual void dec() = 0;
  // On the basis of the own type. False, and -1 or 1, where the other cannot be converted.
  virtual bool equals(CMC_Variable* other) = 0;
  virtual int compare(CMC_Variable* other) = 0;
  // This variable for its own type, else a pooled one; null for a type that holds no value.
  virtual Ref<CMC_Variable> convert(int type);
  // A pooled variable of the own type; this one stays as it was.
  virtual Ref<CMC_Variable> calculate(CMC_Variable* other, Operation operation) = 0;
  // Raises the signals of a change, writes the INI file and tells the network.
  virtual void onChange(bool changed);
  // The value came over the network: it is not sent back.
  virtual void onNetChange(CMC_Variable* value);
  virtual void setDefault(CMC_Variable* value) = 0;
  virtual void resetINI() = 0;
  // The flat record of network messages: 4-byte type number and the value. `netstore` fills
  // getBufferLen() bytes; `netrestore` reads what stands behind the type number and is false, with
  // nothing changed, on a short record.
  virtual int getBufferLen() const = 0;
  virtual void netstore(std::span<std::byte> buffer) const = 0;
  virtual bool netrestore(std::span<const std::byte> value) = 0;
  // Takes a value from text without raising anything.
  virtual void fromString(const CXString& text) = 0;

  // The value read as another type, by the rules of `convert`, without a temporary.
  virtual int asInteger() = 0;
  virtual double asDouble() = 0;
  virtual bool asBool() = 0;
  CXString asText() { return toString(); }

  int getId() const { return poolId_; }
  bool isPooled() const override { return poolId_ != kNoPool; }
  bool isToIni() const { return toIni_; }
  bool isNetNotify() const { return netNotify_; }

  // A minus sign or digit first: a text that is read as a number before it is looked up as a name.
  static bool beginsLikeNumber(std::string_view text) {
    return !text.empty() && (text[0] == '-' || (text[0] >= '0' && text[0] <= '9'));
  }
  // A minus sign or digit first, digits and points behind; "0" first must stand alone or before a point.
  static bool isNumber(std::string_view text);
  // A literal of the script as a pooled variable.
  static Ref<CMC_Variable> resolve(std::string_view literal);
  // To the nearest whole number, halves away from zero.
  static int round(double value);

 protected:
  CMC_Variable(const CMC_Variable& other) = default;
  // A value was written: `onChange`, where there is anybody to tell.
  void written(bool changed) {
    if (isAnySignalBound() || toIni_ || netNotify_) onChange(changed);
  }

 private:
  int poolId_ = kNoPool;
  bool toIni_ = false;
  bool netNotify_ = false;
};

// What the four value classes share: a value and the default that RESETINI brings back.
template <class Value>
class CMC_ValueVariable : public CMC_Variable {
 public:
  using CMC_Variable::CMC_Variable;

  const Value& getValue() const { return value_; }
  // Raises only the signal that asks for every writing.
  void setValue(Value value) {
    value_ = std::move(value);
    written(false);
  }
  // Writes without raising anything: for values that no script has seen yet.
  void put(Value value) { value_ = std::move(value); }

  void set(CMC_Variable* other) override {
    if (other != nullptr) {
      change(read(other));
    } else {
      written(false);
    }
  }
  // Writes and raises the signals of a change.
  void change(Value value) {
    const bool changed = !(value == value_);
    value_ = std::move(value);
    written(changed);
  }
  void clear() override { change(Value()); }
  void swap(CMC_Variable* a, CMC_Variable* b) override { change(equals(a) ? read(b) : read(a)); }
  void setDefault(CMC_Variable* value) override { defaultValue_ = read(value); }
  void serialize(CXArchive& archive) override {
    CMC_Variable::serialize(archive);
    archive.pass(value_);
    archive.pass(defaultValue_);
  }
  void resetINI() override {
    if (!isToIni()) return;
    value_ = defaultValue_;
    onChange(true);
  }

 protected:
  // The other's value in the own type.
  virtual Value read(CMC_Variable* other) const = 0;
  Value value_{};
  Value defaultValue_{};
};

class CMC_Integer : public CMC_ValueVariable<int> {
 public:
  CMC_Integer(CMC_ObjectsContainer* container, const CMElement* element);
  explicit CMC_Integer(int value) : CMC_ValueVariable("", type::kInteger) { value_ = value; }
  CMC_Integer(CXString name, int poolId) : CMC_ValueVariable(std::move(name), type::kInteger, poolId) {}
  static bool isTypeOf(int type) { return type == type::kInteger; }

  void inc() override;
  void dec() override;
  bool equals(CMC_Variable* other) override;
  int compare(CMC_Variable* other) override;
  Ref<CMC_Variable> calculate(CMC_Variable* other, Operation operation) override;
  // Wraps around; a division by zero gives 0; no operation leaves `a`.
  static int apply(int a, Operation operation, int b);
  int getBufferLen() const override { return 8; }
  void netstore(std::span<std::byte> buffer) const override;
  bool netrestore(std::span<const std::byte> value) override;
  void fromString(const CXString& text) override { value_ = text.toNumber(); }
  int asInteger() override { return value_; }
  double asDouble() override { return value_; }
  bool asBool() override { return value_ != 0; }
  CXString toString() const override { return CXString::toString(value_); }
  std::unique_ptr<CMC_Object> copy() const override {
    return std::unique_ptr<CMC_Object>(new CMC_Integer(*this));
  }

 protected:
  int read(CMC_Variable* other) const override { return other->asInteger(); }
};

inline int CMC_Integer::apply(int a, Operation operation, int b) {
  switch (operation) {
    case Operation::add:
      return wrap_add(a, b);
    case Operation::subtract:
      return wrap_sub(a, b);
    case Operation::multiply:
      return wrap_mul(a, b);
    case Operation::divide:
      return divide(a, b);
    case Operation::modulo:
      return remainder(a, b);
    case Operation::none:
      break;
  }
  return a;
}

class CMC_String : public CMC_ValueVariable<CXString> {
 public:
  CMC_String(CMC_ObjectsContainer* container, const CMElement* element);
  explicit CMC_String(CXString value) : CMC_ValueVariable("", type::kString) { value_ = std::move(value); }
  CMC_String(CXString name, int poolId) : CMC_ValueVariable(std::move(name), type::kString, poolId) {}
  static bool isTypeOf(int type) { return type == type::kString; }

  void inc() override {}
  void dec() override {}
  // Without regard to case, unlike `compare`.
  bool equals(CMC_Variable* other) override;
  int compare(CMC_Variable* other) override;
  Ref<CMC_Variable> calculate(CMC_Variable* other, Operation operation) override;
  int getBufferLen() const override { return value_.Length() + 5; }
  void netstore(std::span<std::byte> buffer) const override;
  bool netrestore(std::span<const std::byte> value) override;
  void fromString(const CXString& text) override { value_ = text; }
  int asInteger() override { return value_.toNumber(); }
  double asDouble() override { return value_.toDouble(); }
  bool asBool() override { return value_.toBool(); }
  CXString toString() const override { return value_; }
  std::unique_ptr<CMC_Object> copy() const override {
    return std::unique_ptr<CMC_Object>(new CMC_String(*this));
  }
  // The behaviour that the text stands for, where it is inline code; else null.
  virtual CMC_Behaviour* inlineBehaviour() const { return nullptr; }
  // Puts a text behind the value, as `set` with both would; a value that grew too long stays as it was.
  void append(std::string_view text);
  // Turns the value into capitals.
  virtual void upper() { change(value_.Upper()); }

 protected:
  CXString read(CMC_Variable* other) const override { return other->toString(); }
};

// The behaviour behind a value that is inline code; null for any other object.
inline CMC_Behaviour* inlineBehaviourOf(CMC_Object* value) {
  const auto* code = object_cast<CMC_String>(value);
  return code != nullptr ? code->inlineBehaviour() : nullptr;
}

class CMC_Bool : public CMC_ValueVariable<bool> {
 public:
  CMC_Bool(CMC_ObjectsContainer* container, const CMElement* element);
  explicit CMC_Bool(bool value) : CMC_ValueVariable("", type::kBool) { value_ = value; }
  CMC_Bool(CXString name, int poolId) : CMC_ValueVariable(std::move(name), type::kBool, poolId) {}
  static bool isTypeOf(int type) { return type == type::kBool; }

  // Inverts, whatever the two values are; so do `inc` and `dec`.
  void swap(CMC_Variable* a, CMC_Variable* b) override;
  void inc() override { change(!value_); }
  void dec() override { change(!value_); }
  bool equals(CMC_Variable* other) override;
  int compare(CMC_Variable* other) override;
  Ref<CMC_Variable> calculate(CMC_Variable* other, Operation operation) override;
  int getBufferLen() const override { return 5; }
  void netstore(std::span<std::byte> buffer) const override;
  bool netrestore(std::span<const std::byte> value) override;
  void fromString(const CXString& text) override { value_ = text.toBool(); }
  int asInteger() override { return value_ ? 1 : 0; }
  double asDouble() override { return value_ ? 1.0 : 0.0; }
  bool asBool() override { return value_; }
  CXString toString() const override { return CXString::toString(value_); }
  std::unique_ptr<CMC_Object> copy() const override {
    return std::unique_ptr<CMC_Object>(new CMC_Bool(*this));
  }

 protected:
  bool read(CMC_Variable* other) const override { return other->asBool(); }
};

class CMC_Double : public CMC_ValueVariable<double> {
 public:
  CMC_Double(CMC_ObjectsContainer* container, const CMElement* element);
  explicit CMC_Double(double value) : CMC_ValueVariable("", type::kDouble) { value_ = value; }
  CMC_Double(CXString name, int poolId) : CMC_ValueVariable(std::move(name), type::kDouble, poolId) {}
  static bool isTypeOf(int type) { return type == type::kDouble; }

  void inc() override;
  void dec() override;
  bool equals(CMC_Variable* other) override;
  int compare(CMC_Variable* other) override;
  Ref<CMC_Variable> calculate(CMC_Variable* other, Operation operation) override;
  // A division by zero gives 0; no operation leaves `a`.
  static double apply(double a, Operation operation, double b);
  int getBufferLen() const override { return 12; }
  void netstore(std::span<std::byte> buffer) const override;
  bool netrestore(std::span<const std::byte> value) override;
  void fromString(const CXString& text) override { value_ = text.toDouble(); }
  int asInteger() override { return round(value_); }
  double asDouble() override { return value_; }
  bool asBool() override { return value_ != 0.0; }
  CXString toString() const override { return CXString::toString(value_); }
  std::unique_ptr<CMC_Object> copy() const override {
    return std::unique_ptr<CMC_Object>(new CMC_Double(*this));
  }

 protected:
  double read(CMC_Variable* other) const override { return other->asDouble(); }
};

// Numbers by the rules of variables

// The value of an INTEGER or a DOUBLE; none for every other object and for null.
inline Number numberOf(const CMC_Object* object) {
  const int type = object != nullptr ? object->getType() : type::kExpression;
  if (type == type::kInteger) return Number(static_cast<const CMC_Integer*>(object)->getValue());
  if (type == type::kDouble) return Number(static_cast<const CMC_Double*>(object)->getValue());
  return {};
}

// A number read as another one; none is 0.
inline int asInteger(Number number) {
  return number.isReal() ? CMC_Variable::round(number.real()) : number.isWhole() ? number.whole() : 0;
}
inline double asDouble(Number number) { return number.isReal() ? number.real() : asInteger(number); }

// The kind of the first decides that of the outcome.
inline Number calculate(Number a, Operation operation, Number b) {
  return a.isWhole() ? Number(CMC_Integer::apply(a.whole(), operation, asInteger(b)))
                     : Number(CMC_Double::apply(a.real(), operation, asDouble(b)));
}

}  // namespace footlight
