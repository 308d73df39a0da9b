#pragma once

// A whole number as an object, for lists and as a key. Sums wrap in 32 bits. The codes of marked-up text will
// be told in it.

#include "foundation/arithmetic.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CInteger : public CXObject {
 public:
  explicit CInteger(int value = 0) : value_(value) {}
  explicit CInteger(const CXString& text) : value_(text.toNumber()) {}

  virtual int toInt() const { return value_; }
  std::uint32_t getHashcode() const override { return static_cast<std::uint32_t>(toInt()); }
  bool equals(const CXObject* other) const override {
    const auto* number = dynamic_cast<const CInteger*>(other);
    return number != nullptr && number->value_ == value_;
  }
  std::unique_ptr<CXObject> clone() const override { return std::make_unique<CInteger>(value_); }
  CXString toString() const override { return toString(value_); }
  static CXString toString(int value) { return CXString::toString(value); }

  void increment() { value_ = wrap_add(value_, 1); }
  void decrement() { value_ = wrap_sub(value_, 1); }
  void parse(const CXString& text) { value_ = text.toNumber(); }

 private:
  int value_;
};

}  // namespace footlight
