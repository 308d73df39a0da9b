#pragma once

// What a statement gives and what a call takes: nothing, an object (as a rule a variable), or a number that
// becomes a variable only where somebody asks for one.

#include <cstdint>
#include <utility>

#include "foundation/xobject.h"
#include "script/mc_object.h"
#include "script/number.h"

namespace footlight {

class Value {
 public:
  Value() = default;
  Value(Number number) {
    if (number.isWhole()) {
      kind_ = Kind::whole;
      content_.whole = number.whole();
    } else if (number.isReal()) {
      kind_ = Kind::real;
      content_.real = number.real();
    }
  }
  template <class T>
  Value(const Ref<T>& object) : Value(static_cast<CMC_Object*>(object.get())) {}
  // Pins the object; null is none.
  explicit Value(CMC_Object* object) {
    if (object == nullptr) return;
    object->pin();
    kind_ = Kind::object;
    content_.object = object;
  }
  Value(const Value& other) : content_(other.content_), kind_(other.kind_) {
    if (kind_ == Kind::object) content_.object->pin();
  }
  Value(Value&& other) noexcept : content_(other.content_), kind_(std::exchange(other.kind_, Kind::none)) {}
  Value& operator=(Value other) noexcept {
    std::swap(kind_, other.kind_);
    std::swap(content_, other.content_);
    return *this;
  }
  ~Value() {
    if (kind_ == Kind::object) content_.object->unpin();
  }

  bool isNone() const { return kind_ == Kind::none; }
  // None where there is an object.
  Number number() const {
    if (kind_ == Kind::whole) return Number(content_.whole);
    return kind_ == Kind::real ? Number(content_.real) : Number();
  }
  // Null where there is only a number.
  CMC_Object* present() const { return kind_ == Kind::object ? content_.object : nullptr; }
  // The object; for a number a pooled variable, which is the same at each call. Null for none.
  CMC_Object* object() const {
    if (kind_ >= Kind::whole) becomeObject();
    return present();
  }
  Ref<CMC_Object> take() const { return Ref<CMC_Object>(object()); }

 private:
  enum class Kind : std::uint8_t { none, object, whole, real };

  union Content {
    CMC_Object* object = nullptr;
    int whole;
    double real;
  };

  void becomeObject() const;

  mutable Content content_;
  mutable Kind kind_ = Kind::none;
};

}  // namespace footlight
