#include "objects/data/mc_array.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "files/archive.h"
#include "files/file.h"
#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "objects/data/insertion_order.h"
#include "script/mc_objects_container.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/stored_value.h"

namespace footlight {

namespace {

// What an element takes, with its text if it has one.
std::int64_t bytesOf(const CXString* text) {
  const std::int64_t textBytes = text != nullptr ? std::int64_t{sizeof(CXString)} + text->Length() : 0;
  return std::int64_t{sizeof(ArrayValue)} + textBytes;
}

// Turns a list round, but for the order of neighbours that compare equal.
void reverseKeepingTies(std::vector<CMC_Variable*>& values) {
  std::reverse(values.begin(), values.end());
  for (auto run = values.begin(); run != values.end();) {
    const auto end = std::adjacent_find(run, values.end(), [](CMC_Variable* later, CMC_Variable* earlier) {
      return earlier->compare(later) != 0;
    });
    const auto next = end == values.end() ? end : end + 1;
    std::reverse(run, next);
    run = next;
  }
}

}  // namespace

CMC_Array::CMC_Array(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kArray),
      sendOnChange_(element->getPropertyBoolValue("SENDONCHANGE")) {
  initializeBehaviours(container, element);
}

CMC_Array::CMC_Array(const CMC_Array& other)
    : CMC_Object(other), marker_(other.marker_), sendOnChange_(other.sendOnChange_) {
  items_.reserve(other.items_.size());
  for (const ArrayValue& item : other.items_) items_.add(ArrayValue(*item.variable()));
}

std::unique_ptr<CMC_Object> CMC_Array::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Array(*this));
}

CWindow* CMC_Array::window() const { return getScene() != nullptr ? getScene()->getWindow() : nullptr; }

// The list

Ref<CMC_Variable> CMC_Array::at(int index) const {
  return isIn(index) ? items_[place(index)].variable() : Ref<CMC_Variable>();
}

bool CMC_Array::hasRoom(std::int64_t count) const {
  if (size() + count <= limits::kArrayElements) return true;
  limitHit("array too long");
  return false;
}

std::int64_t CMC_Array::bytes() const {
  std::int64_t sum = 0;
  for (const ArrayValue& item : items_) sum += bytesOf(item.text());
  return sum;
}

bool CMC_Array::isInBudget(std::int64_t count, const CMC_Variable& value) {
  const bool isText = value.getType() == type::kString;
  const std::int64_t each = bytesOf(isText ? &static_cast<const CMC_String&>(value).getValue() : nullptr);
  return count <= 0 || memory::hasRoom(count * each);
}

bool CMC_Array::isMemoryFor(std::size_t count) {
  return memory::hasRoom(static_cast<std::int64_t>(count * sizeof(ArrayValue)));
}

bool CMC_Array::add(CMC_Variable* value) { return insertAt(size(), value); }

bool CMC_Array::insert(int index, ArrayValue value) {
  if (index < 0 || index > size() || !hasRoom(1) || !mayGrow()) return false;
  items_.insert(place(index), std::move(value));
  return true;
}

bool CMC_Array::insertAt(int index, CMC_Variable* value) {
  return value != nullptr && isInBudget(1, *value) && insert(index, ArrayValue(*value));
}

bool CMC_Array::changeAt(int index, CMC_Variable* value) {
  if (!isIn(index) || value == nullptr || !isInBudget(1, *value)) return false;
  items_[place(index)] = ArrayValue(*value);
  return true;
}

bool CMC_Array::operate(int index, CMC_Variable* operand, Operation operation) {
  if (!isIn(index) || operand == nullptr) return false;
  ArrayValue& item = items_[place(index)];
  const Number left = item.number();
  const Number right = numberOf(operand);
  if (left && right) {
    item = calculate(left, operation, right);
  } else {
    const Ref<CMC_Variable> outcome(item.variable()->calculate(operand, operation));
    if (!isInBudget(1, *outcome)) return false;
    item = ArrayValue(*outcome);
  }
  return true;
}

void CMC_Array::clearAt(int index) {
  if (isIn(index)) items_[place(index)] = ArrayValue(*CMC_VariableFactory::make(items_[place(index)].type()));
}

void CMC_Array::removeAt(int index) {
  if (isIn(index)) items_.erase(place(index));
}

bool CMC_Array::swap(int a, int b) {
  if (!isIn(a) || !isIn(b)) return false;
  std::swap(items_[place(a)], items_[place(b)]);
  return true;
}

int CMC_Array::find(CMC_Variable* value) const {
  const auto found = std::find_if(items_.begin(), items_.end(), EqualTo(value));
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

int CMC_Array::reverseFind(CMC_Variable* value) const {
  const EqualTo isEqual(value);
  int index = size() - 1;
  while (index >= 0 && !isEqual(items_[place(index)])) --index;
  return index;
}

// Lists of one type have an order, and equal INTEGERs are the same.
void CMC_Array::sort(bool ascending) {
  const int type = items_.empty() ? type::kInteger : items_.front().type();
  if (!hasCommonOrder()) {
    sortMixed(ascending);
  } else if (type == type::kInteger) {
    std::vector<int> numbers;
    numbers.reserve(items_.size());
    for (const ArrayValue& item : items_) numbers.push_back(item.number().whole());
    std::sort(numbers.begin(), numbers.end());
    if (!ascending) std::reverse(numbers.begin(), numbers.end());
    std::transform(numbers.begin(), numbers.end(), items_.begin(), [](int n) { return Number(n); });
  } else if (type == type::kString) {
    sortBy(ascending, [](const ArrayValue& item) { return item.text()->view(); });
  } else {
    sortBy(ascending, [](const ArrayValue& item) { return item.variable()->asDouble(); });
  }
}

template <class Key>
void CMC_Array::sortBy(bool ascending, Key key) {
  std::stable_sort(items_.begin(), items_.end(), [&](const ArrayValue& a, const ArrayValue& b) {
    return ascending ? key(a) < key(b) : key(b) < key(a);
  });
}

bool CMC_Array::hasCommonOrder() const {
  return std::all_of(items_.begin(), items_.end(), [this](const ArrayValue& item) {
    return item.type() == items_.front().type() &&
           !(item.number().isReal() && std::isnan(item.number().real()));
  });
}

void CMC_Array::sortMixed(bool ascending) {
  std::vector<std::unique_ptr<CMC_Variable>> variables;
  std::vector<CMC_Variable*> order;
  for (const ArrayValue& item : items_) {
    variables.push_back(CMC_VariableFactory::makeNamed(item.type(), CXString()));
    variables.back()->set(item.variable().get());
    order.push_back(variables.back().get());
  }
  std::vector<CMC_Variable*> sorted;
  for (const int at : insertionOrder(order)) sorted.push_back(order[place(at)]);
  if (sorted.size() < order.size()) return;  // the run ends
  if (!ascending) reverseKeepingTies(sorted);
  items_.clear();
  for (CMC_Variable* variable : sorted) items_.add(ArrayValue(*variable));
}

void CMC_Array::rotateLeft() {
  if (size() > 1) std::rotate(items_.begin(), items_.begin() + 1, items_.end());
}

void CMC_Array::rotateRight() {
  if (size() > 1) std::rotate(items_.begin(), items_.end() - 1, items_.end());
}

// The marker

void CMC_Array::setMarker(int marker) { marker_ = std::max(-1, std::min(marker, size() - 1)); }

Value CMC_Array::step(std::int64_t by) {
  if (items_.empty()) return {};
  const std::int64_t place = (marker_ + by) % size();
  marker_ = static_cast<int>(place < 0 ? place + size() : place);
  return get(marker_);
}

// Signals

void CMC_Array::changed(int index) {
  if (!sendOnChange_ || !isSignalBound(ArraySignal::onChanged) || isDisposed()) return;
  const Ref<CMC_Array> self(this);
  const TextList arguments = {CXString::toString(index)};
  const CXString name = signalName(ArraySignal::onChanged);
  if (!onSignal(name + "^" + CXString::toString(index), arguments)) onSignal(name, arguments);
}

void CMC_Array::allChanged() {
  if (!sendOnChange_ || !isSignalBound(ArraySignal::onChanged)) return;
  const int count = size();  // handlers may add more
  for (int i = 0; i < count && !isDisposed(); ++i) changed(i);
}

// Files

void CMC_Array::load(const CXString& name) {
  removeAll();
  CFile file(window(), name, CFile::kReadBinary);
  const auto bytes = file.readRest(limits::kTextFileBytes);
  if (!bytes) return limitHit("array file too long");
  ByteReader reader(*bytes);
  const std::int32_t count = reader.i32();
  if (!hasRoom(count)) return;
  for (std::int32_t i = 0; i < count && reader.left() > 0; ++i) {
    const Ref<CMC_Variable> value = restore(reader);
    if (value && reader.ok()) add(value.get());
  }
}

void CMC_Array::save(const CXString& name) const {
  ByteWriter out;
  out.i32(size());
  for (const ArrayValue& item : items_) {
    store(out, *item.variable());
    if (static_cast<std::int64_t>(out.size()) > limits::kTextFileBytes)
      return limitHit("array file too long");
  }
  CFile file(window(), name, CFile::kWriteBinary);
  if (file.isOpen()) file.Write(out.written().data(), static_cast<int>(out.size()));
}

void CMC_Array::serialize(CXArchive& archive) {
  CMC_Object::serialize(archive);
  archive.pass(sendOnChange_);
}

CXString CMC_Array::toString() const {
  std::string text;
  for (const ArrayValue& item : items_) {
    if (&item != &items_.front()) text += ',';
    text += item.variable()->toString().view();
    if (static_cast<std::int64_t>(text.size()) > limits::kStringBytes) {
      limitHit("string too long");
      return {};
    }
  }
  return CXString(text);
}

}  // namespace footlight
