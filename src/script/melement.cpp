#include "script/melement.h"

#include <algorithm>

namespace footlight {

namespace {

constexpr int kIndexedFrom = 16;  // shorter lists are walked faster

// The number in the n-th piece of a list; 0 when there are fewer pieces.
int numberAt(const std::vector<CXString>& list, std::size_t n) {
  return n < list.size() ? list[n].toNumber() : 0;
}

// The text in that memory.
std::string_view copied(std::string_view text, CMProperties::Memory& memory) {
  if (text.empty()) return {};
  auto* bytes = static_cast<char*>(memory.allocate(text.size(), 1));
  std::copy(text.begin(), text.end(), bytes);
  return {bytes, text.size()};
}

}  // namespace

CXPoint CMProperty::toPoint() const {
  const std::vector<CXString> list = toList();
  return {numberAt(list, 0), numberAt(list, 1)};
}

CXSize CMProperty::toSize() const {
  const std::vector<CXString> list = toList();
  return {numberAt(list, 0), numberAt(list, 1)};
}

CXRect CMProperty::toRect() const {
  const std::vector<CXString> list = toList();
  return {numberAt(list, 0), numberAt(list, 1), numberAt(list, 2), numberAt(list, 3)};
}

CMProperty* CMProperties::get(std::string_view name) const {
  if (count_ <= kIndexedFrom) {
    CMProperty* property = first_;
    while (property != nullptr && property->name_ != name) property = property->next_;
    return property;
  }
  if (index_ == nullptr) {
    index_ = std::make_unique<Index>();
    for (CMProperty* property : *this) index_->try_emplace(property->name_, property);
  }
  const auto found = index_->find(name);
  return found != index_->end() ? found->second : nullptr;
}

void CMProperties::add(std::string_view name, std::string_view value, Origin origin, Memory& memory) {
  auto* property = std::pmr::polymorphic_allocator<>(&memory).new_object<CMProperty>(
      copied(name, memory), copied(value, memory), origin);
  (last_ != nullptr ? last_->next_ : first_) = property;
  last_ = property;
  ++count_;
  if (index_ != nullptr) index_->try_emplace(property->name_, property);
}

void CMProperties::set(CMProperty& property, std::string_view value, Memory& memory) {
  property.value_ = copied(value, memory);
}

void CMProperties::remove(std::string_view name) {
  CMProperty* before = nullptr;
  CMProperty* property = first_;
  for (; property != nullptr && property->name_ != name; property = property->next_) before = property;
  if (property == nullptr) return;
  (before != nullptr ? before->next_ : first_) = property->next_;
  if (last_ == property) last_ = before;
  --count_;
  index_.reset();
}

void CMProperties::removeAll() {
  first_ = last_ = nullptr;
  count_ = 0;
  index_.reset();
}

CMElements::CMElements(bool ownsItems)
    : memory_(ownsItems ? std::make_unique<std::pmr::monotonic_buffer_resource>() : nullptr) {}

CMElements::~CMElements() {
  if (!memory_) return;
  for (CMElement* element : list_) std::destroy_at(element);
}

CMElement* CMElements::append(std::string_view name, Origin origin) {
  std::pmr::polymorphic_allocator<CMElement> allocator(memory_.get());
  list_.push_back(std::construct_at(allocator.allocate(1), name, origin, memory_.get()));
  return list_.back();
}

CMElement* CMElements::make(std::string_view name, Origin origin) {
  CMElement* element = makeFirst(name, origin);
  return element != nullptr ? element : append(name, origin);
}

CMElement* CMElements::makeFirst(std::string_view name, Origin origin) {
  const std::size_t hash = std::hash<std::string_view>()(name);
  if (positionOf(name, hash) >= 0) return nullptr;
  index_.add(hash, getSize());
  return append(name, origin);
}

void CMElements::add(CMElement* element) {
  const std::string_view name = element->getName();
  const std::size_t hash = std::hash<std::string_view>()(name);
  if (positionOf(name, hash) < 0) index_.add(hash, getSize());
  list_.push_back(element);
}

std::int32_t CMElements::positionOf(std::string_view name, std::size_t hash) const {
  return index_.find(hash, [&](std::int32_t i) { return getAt(i)->getName() == name; });
}

CMElement* CMElements::get(std::string_view name) const {
  const std::int32_t position = positionOf(name, std::hash<std::string_view>()(name));
  return position >= 0 ? getAt(position) : nullptr;
}

CMElement::CMElement(std::string_view name, Origin origin, Memory* memory)
    : memory_(memory), name_(copied(name, *memory)), origin_(origin) {}

CMElement::CMElement(std::string_view name, Origin origin)
    : ownMemory_(std::make_unique<std::pmr::monotonic_buffer_resource>()),
      memory_(ownMemory_.get()),
      name_(copied(name, *memory_)),
      origin_(origin) {}

void CMElement::setName(std::string_view name) { name_ = copied(name, *memory_); }

void CMElement::addChild(CMElement* child) {
  if (!children_) children_ = std::make_unique<CMElements>(false);
  children_->add(child);
}

const CMElements& CMElement::getChildren() const {
  static const CMElements none(false);
  return children_ ? *children_ : none;
}

void CMElement::addProperty(std::string_view name, Origin origin) {
  if (!properties_.contains(name)) addProperty(name, std::string_view(), origin);
}

void CMElement::addProperty(std::string_view name, std::string_view value, Origin origin) {
  properties_.add(name, value, origin, *memory_);
}

void CMElement::setProperty(std::string_view name, std::string_view value) {
  if (CMProperty* property = properties_.get(name)) properties_.set(*property, value, *memory_);
}

CXString CMElement::getPropertyValue(std::string_view name) const {
  const CMProperty* property = properties_.get(name);
  return property != nullptr ? CXString(property->getValue()) : CXString();
}

int CMElement::getPropertyIntValue(std::string_view name) const {
  const CMProperty* property = properties_.get(name);
  return property != nullptr ? property->toInt() : 0;
}

bool CMElement::getPropertyBoolValue(std::string_view name) const {
  const CMProperty* property = properties_.get(name);
  return property != nullptr && property->toBool();
}

double CMElement::getPropertyDoubleValue(std::string_view name) const {
  const CMProperty* property = properties_.get(name);
  return property != nullptr ? property->toDouble() : 0.0;
}

std::optional<std::vector<CXString>> CMElement::getPropertyListValue(std::string_view name) const {
  const CMProperty* property = properties_.get(name);
  return property != nullptr ? std::optional(property->toList()) : std::nullopt;
}

CXPoint CMElement::getPropertyPointValue(std::string_view name) const {
  const CMProperty* property = properties_.get(name);
  return property != nullptr ? property->toPoint() : CXPoint();
}

CXSize CMElement::getPropertySizeValue(std::string_view name) const {
  const CMProperty* property = properties_.get(name);
  return property != nullptr ? property->toSize() : CXSize();
}

CXRect CMElement::getPropertyRectValue(std::string_view name) const {
  const CMProperty* property = properties_.get(name);
  return property != nullptr ? property->toRect() : CXRect();
}

}  // namespace footlight
