#pragma once

// VECTOR: a fixed number of DOUBLEs to calculate with as one. An index outside of it does nothing or gives 0.

#include <vector>

#include "script/mc_object.h"

namespace footlight {

namespace type {
inline constexpr int kVector = 2016;
}

class CMC_Vector : public CMC_Object {
 public:
  CMC_Vector(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kVector; }

  int size() const { return static_cast<int>(values_.size()); }
  double get(int index) const { return isIn(index) ? values_[static_cast<std::size_t>(index)] : 0.0; }
  void set(int index, double value);
  void setAll(double value);
  // The elements that both have.
  void copyFrom(const CMC_Vector& other);
  // Adds the other one so many times; one of another size changes nothing.
  void add(const CMC_Vector& other, double factor);
  void multiply(double factor);
  // Of zeros it leaves what is no number.
  void normalize() { multiply(1.0 / length()); }
  double length() const;
  // 0 for one of another size.
  double scalarProduct(const CMC_Vector& other) const;
  // `target` becomes this one mirrored at `axis`.
  void reflect(const CMC_Vector& axis, CMC_Vector& target) const;
  // More elements, in front, of 0. Nothing for a size that is not above the present one or over the limit.
  void expand(int size);

  // The elements with commas between; "0." stands before each where the first is below 1.
  CXString toString() const override;
  // The size, then the elements.
  void serialize(CXArchive& archive) override;
  std::unique_ptr<CMC_Object> copy() const override {
    return std::unique_ptr<CMC_Object>(new CMC_Vector(*this));
  }

 private:
  CMC_Vector(const CMC_Vector& other) = default;
  bool isIn(int index) const { return index >= 0 && index < size(); }

  std::vector<double> values_;
};

}  // namespace footlight
