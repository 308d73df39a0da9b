#include "objects/data/mc_vector.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "files/archive.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

namespace {

bool hasRoom(int size) {
  if (size > limits::kArrayElements) {
    limitHit("elements of a vector");
    return false;
  }
  return memory::hasRoom(std::int64_t{size} * std::int64_t{sizeof(double)});
}

}  // namespace

CMC_Vector::CMC_Vector(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kVector) {
  const int size = std::max(0, element->getPropertyIntValue("SIZE"));
  if (hasRoom(size)) values_.resize(static_cast<std::size_t>(size));
  if (const auto list = element->getPropertyListValue("VALUE")) {
    for (std::size_t i = 0; i < std::min(values_.size(), list->size()); ++i)
      values_[i] = (*list)[i].toDouble();
  }
  initializeBehaviours(container, element);
}

void CMC_Vector::set(int index, double value) {
  if (isIn(index)) values_[static_cast<std::size_t>(index)] = value;
}

void CMC_Vector::setAll(double value) { std::ranges::fill(values_, value); }

void CMC_Vector::copyFrom(const CMC_Vector& other) {
  const auto count = static_cast<std::ptrdiff_t>(std::min(values_.size(), other.values_.size()));
  std::copy_n(other.values_.begin(), count, values_.begin());
}

void CMC_Vector::add(const CMC_Vector& other, double factor) {
  if (other.size() != size()) return;
  for (std::size_t i = 0; i < values_.size(); ++i) values_[i] += other.values_[i] * factor;
}

void CMC_Vector::multiply(double factor) {
  for (double& value : values_) value *= factor;
}

double CMC_Vector::length() const { return std::sqrt(scalarProduct(*this)); }

double CMC_Vector::scalarProduct(const CMC_Vector& other) const {
  if (other.size() != size()) return 0.0;
  return std::inner_product(values_.begin(), values_.end(), other.values_.begin(), 0.0);
}

// The three may be one and the same.
void CMC_Vector::reflect(const CMC_Vector& axis, CMC_Vector& target) const {
  const double twice = 2 * scalarProduct(axis);
  const std::size_t count = std::min({values_.size(), axis.values_.size(), target.values_.size()});
  for (std::size_t i = 0; i < count; ++i) target.values_[i] = twice * axis.values_[i] - values_[i];
}

void CMC_Vector::expand(int size) {
  if (size <= this->size() || !hasRoom(size)) return;
  values_.insert(values_.begin(), static_cast<std::size_t>(size) - values_.size(), 0.0);
}

void CMC_Vector::serialize(CXArchive& archive) {
  constexpr std::size_t kElementBytes = 4;
  CMC_Object::serialize(archive);
  const int size = archive.passCount(values_.size(), kElementBytes);
  if (!archive.isStoring()) {
    if (!hasRoom(size)) archive.fail();
    values_.assign(archive.hasFailed() ? 0 : static_cast<std::size_t>(size), 0.0);
  }
  for (double& value : values_) archive.pass(value);
}

CXString CMC_Vector::toString() const {
  const char* prefix = get(0) < 1.0 ? "0." : "";
  CXString text;
  for (const double value : values_) {
    if (text.IsString()) text += ',';
    text += prefix;
    text += CXString::toString(value);
  }
  return text;
}

namespace {

using Factory = CMC_VariableFactory;

// The vector that an argument is or names.
CMC_Vector* vectorArgument(const Call& call, int index) {
  if (!call.has(index)) return nullptr;
  auto* given = object_cast<CMC_Vector>(call.object(index));
  return given != nullptr ? given : call.named<CMC_Vector>(index);
}

Result addAll(CMC_Vector& vector, const Call& call, double factor) {
  for (int i = 0; i < call.count(); ++i) {
    if (const CMC_Vector* other = vectorArgument(call, i)) vector.add(*other, factor);
  }
  return {};
}

Result add(CMC_Vector& vector, Call& call) { return addAll(vector, call, 1.0); }
Result sub(CMC_Vector& vector, Call& call) { return addAll(vector, call, -1.0); }

Result get(CMC_Vector& vector, Call& call) { return Factory::makeDouble(vector.get(call.integer(0))); }
Result getSize(CMC_Vector& vector, Call& /*call*/) { return Number(vector.size()); }
Result multiplyVectors(CMC_Vector& /*vector*/, Call& /*call*/) { return {}; }

Result scalarProduct(CMC_Vector& vector, Call& call) {
  const CMC_Vector* other = vectorArgument(call, 0);
  return Factory::makeDouble(other != nullptr ? vector.scalarProduct(*other) : 0.0);
}

Result multiply(CMC_Vector& vector, Call& call) {
  vector.multiply(call.real(0));
  return {};
}

Result length(CMC_Vector& vector, Call& /*call*/) { return Factory::makeDouble(vector.length()); }

Result normalize(CMC_Vector& vector, Call& /*call*/) {
  vector.normalize();
  return {};
}

Result reflect(CMC_Vector& vector, Call& call) {
  const CMC_Vector* axis = vectorArgument(call, 0);
  CMC_Vector* target = vectorArgument(call, 1);
  if (axis != nullptr && target != nullptr) vector.reflect(*axis, *target);
  return {};
}

Result expand(CMC_Vector& vector, Call& call) {
  vector.expand(call.integer(0));
  return {};
}

Result set(CMC_Vector& vector, Call& call) {
  if (call.has(1)) {
    vector.set(call.integer(0), call.real(1));
  } else if (call.number(0)) {
    vector.setAll(call.real(0));
  } else if (const CMC_Vector* other = vectorArgument(call, 0)) {
    vector.copyFrom(*other);
  } else {
    vector.setAll(call.real(0));
  }
  return {};
}

Result assign(CMC_Vector& vector, Call& call) {
  for (int i = 0; i < call.count(); ++i) vector.set(i, call.real(i));
  return {};
}

Result negate(CMC_Vector& vector, Call& /*call*/) {
  vector.multiply(-1.0);
  return {};
}

constexpr Property kProperties[] = {
    {"SIZE", PropertyKind::integer, "0", "How many elements it has."},
    {"VALUE", PropertyKind::list, "", "The elements at first; 0 for those that are missing."},
};

constexpr Method kMethods[] = {
    {1, "ADD", "[vector:name...]", method<add>, "Adds each vector of its size, element by element."},
    {2, "GET", "index:int -> real", method<get>, "The element at the index, from 0."},
    {3, "GETSIZE", "-> int", method<getSize>, "How many elements it has."},
    {4, "VMUL", "a:name, b:name", method<multiplyVectors>, "Has no effect."},
    {5, "SMUL", "vector:name -> real", method<scalarProduct>,
     "The scalar product; 0 for a vector of another size."},
    {6, "MUL", "factor:real", method<multiply>, "Multiplies every element."},
    {7, "LEN", "-> real", method<length>, "The square root of the sum of the squares."},
    {8, "NORMALIZE", "", method<normalize>, "Divides every element by the length."},
    {9, "REFLECT", "axis:name, target:name", method<reflect>,
     "Sets the target to this vector mirrored at the axis, which must be of length 1."},
    {10, "EXPAND", "size:int", method<expand>, "Makes it longer; the new elements stand in front and are 0."},
    {11, "SET", "index:value, [value:real]", method<set>,
     "Sets the element at the index; of one argument, copies that vector or sets every element to that "
     "number."},
    {12, "ASSIGN", "[value:real...]", method<assign>, "Sets the elements from the first one on."},
    {13, "SUB", "[vector:name...]", method<sub>, "Subtracts each vector of its size, element by element."},
    {14, "NEG", "", method<negate>, "Changes the sign of every element."},
};

}  // namespace

extern constinit const ScriptType kVectorType = {
    .number = type::kVector,
    .idWord = "VECTOR",
    .definitionWord = "VECTOR",
    .meaning = "Numbers to calculate with as one.",
    .pass = 5,
    .signals = kSignalsOfAll,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Vector>,
};

}  // namespace footlight
