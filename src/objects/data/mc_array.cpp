#include "objects/data/mc_array.h"

#include <algorithm>
#include <string>

#include "files/file.h"
#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"
#include "foundation/limits.h"
#include "script/mc_objects_container.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

namespace {

constexpr int kOnChanged = 3;
constexpr double kThousand = 1000.0;  // files hold whole thousandths of a DOUBLE
constexpr double kThousandth = 0.001;

Owned<CMC_Variable> copyOf(CMC_Variable& value) {
  const bool isValue = CMC_Variable::isValueType(value.getType());
  auto copy = CMC_VariableFactory::makeNamed(isValue ? value.getType() : type::kString, value.getName());
  copy->set(&value);
  return Owned<CMC_Variable>(copy.release());
}

void putValue(ByteWriter& out, CMC_Variable& value) {
  out.i32(value.getType());
  if (value.getType() == type::kString) {
    const CXString text = value.asText();
    out.i32(text.Length()).text(text);
  } else if (value.getType() == type::kDouble) {
    out.i32(to_int(value.asDouble() * kThousand));
  } else {
    out.i32(value.asInteger());
  }
}

CXString readText(ByteReader& reader) {
  const std::int32_t length = reader.i32();
  const auto bytes = reader.bytes(length > 0 ? static_cast<std::uint64_t>(length) : 0);
  return CXString(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

// Null for a number that is no type of a value; nothing behind it is read then.
Ref<CMC_Variable> readValue(ByteReader& reader) {
  switch (reader.i32()) {
    case type::kInteger:
      return CMC_VariableFactory::makeInteger(reader.i32());
    case type::kString:
      return CMC_VariableFactory::makeString(readText(reader));
    case type::kBool:
      return CMC_VariableFactory::makeBool(reader.i32() != 0);
    case type::kDouble:
      return CMC_VariableFactory::makeDouble(reader.i32() * kThousandth);
    default:
      return nullptr;
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
  for (const auto& item : other.items_) items_.push_back(copyOf(*item));
}

std::unique_ptr<CMC_Object> CMC_Array::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Array(*this));
}

CWindow* CMC_Array::window() const { return getScene() != nullptr ? getScene()->getWindow() : nullptr; }

// The list

CMC_Variable* CMC_Array::at(int index) const {
  return index >= 0 && index < size() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

bool CMC_Array::hasRoom(std::int64_t count) const {
  if (size() + count <= limits::kArrayElements) return true;
  limitHit("array too long");
  return false;
}

bool CMC_Array::add(CMC_Variable* value) { return insertAt(size(), value); }

bool CMC_Array::insertAt(int index, CMC_Variable* value) {
  if (value == nullptr || index < 0 || index > size() || !hasRoom(1)) return false;
  items_.insert(items_.begin() + index, copyOf(*value));
  return true;
}

bool CMC_Array::changeAt(int index, CMC_Variable* value) {
  if (at(index) == nullptr || value == nullptr) return false;
  items_[static_cast<std::size_t>(index)] = copyOf(*value);
  return true;
}

void CMC_Array::removeAt(int index) {
  if (at(index) != nullptr) items_.erase(items_.begin() + index);
}

bool CMC_Array::swap(int a, int b) {
  if (at(a) == nullptr || at(b) == nullptr) return false;
  std::swap(items_[static_cast<std::size_t>(a)], items_[static_cast<std::size_t>(b)]);
  return true;
}

int CMC_Array::find(CMC_Variable* value) const {
  const auto found =
      std::find_if(items_.begin(), items_.end(), [value](const auto& item) { return item->equals(value); });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

int CMC_Array::reverseFind(CMC_Variable* value) const {
  const auto found =
      std::find_if(items_.rbegin(), items_.rend(), [value](const auto& item) { return item->equals(value); });
  return static_cast<int>(items_.rend() - found) - 1;
}

void CMC_Array::sort(bool ascending) {
  std::stable_sort(items_.begin(), items_.end(), [ascending](const auto& a, const auto& b) {
    return ascending ? b->compare(a.get()) > 0 : a->compare(b.get()) > 0;
  });
}

void CMC_Array::rotateLeft() {
  if (size() > 1) std::rotate(items_.begin(), items_.begin() + 1, items_.end());
}

void CMC_Array::rotateRight() {
  if (size() > 1) std::rotate(items_.begin(), items_.end() - 1, items_.end());
}

// The marker

void CMC_Array::setMarker(int marker) { marker_ = std::max(-1, std::min(marker, size() - 1)); }

CMC_Variable* CMC_Array::step(std::int64_t by) {
  if (items_.empty()) return nullptr;
  const std::int64_t place = (marker_ + by) % size();
  marker_ = static_cast<int>(place < 0 ? place + size() : place);
  return at(marker_);
}

// Signals

void CMC_Array::changed(int index) {
  if (!sendOnChange_ || !isSignalBound(kOnChanged) || isDisposed()) return;
  const Ref<CMC_Array> self(this);
  const TextList arguments = {CXString::toString(index)};
  if (!onSignal("ONCHANGED^" + CXString::toString(index), arguments)) onSignal("ONCHANGED", arguments);
}

void CMC_Array::allChanged() {
  if (!sendOnChange_ || !isSignalBound(kOnChanged)) return;
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
    const Ref<CMC_Variable> value = readValue(reader);
    if (value && reader.ok()) add(value.get());
  }
}

void CMC_Array::save(const CXString& name) const {
  ByteWriter out;
  out.i32(size());
  for (const auto& item : items_) {
    putValue(out, *item);
    if (static_cast<std::int64_t>(out.size()) > limits::kTextFileBytes)
      return limitHit("array file too long");
  }
  CFile file(window(), name, CFile::kWriteBinary);
  if (file.isOpen()) file.Write(out.written().data(), static_cast<int>(out.size()));
}

CXString CMC_Array::toString() const {
  std::string text;
  for (const auto& item : items_) {
    if (item != items_.front()) text += ',';
    text += item->toString().view();
    if (static_cast<std::int64_t>(text.size()) > limits::kStringBytes) {
      limitHit("string too long");
      return {};
    }
  }
  return CXString(text);
}

}  // namespace footlight
