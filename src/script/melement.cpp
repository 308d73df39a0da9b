#include "script/melement.h"

#include <algorithm>

namespace footlight {

namespace {

constexpr std::size_t kIndexedFrom = 16;  // shorter lists are walked faster

// The number in the n-th piece of a list; 0 when there are fewer pieces.
int numberAt(const std::vector<CXString>& list, std::size_t n) {
  return n < list.size() ? list[n].toNumber() : 0;
}

}  // namespace

bool CMProperty::equals(const CXObject* other) const {
  const auto* property = dynamic_cast<const CMProperty*>(other);
  return property != nullptr && property->name_ == name_;
}

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
  if (list_.size() <= kIndexedFrom) {
    const auto found = std::find_if(list_.begin(), list_.end(),
                                    [&](const auto& property) { return property->getName() == name; });
    return found != list_.end() ? *found : nullptr;
  }
  if (index_ == nullptr) {
    index_ = std::make_unique<Index>();
    for (CMProperty* property : list_) index_->try_emplace(property->getName(), property);
  }
  const auto found = index_->find(name);
  return found != index_->end() ? found->second : nullptr;
}

void CMProperties::add(CXString name, CXString value, Origin origin) {
  constexpr std::size_t kUsualCount = 4;
  if (list_.empty()) list_.reserve(kUsualCount);
  auto* property = List::allocator_type(list_.get_allocator())
                       .new_object<CMProperty>(std::move(name), std::move(value), origin);
  if (index_ != nullptr) index_->try_emplace(property->getName(), property);
  list_.push_back(property);
}

void CMProperties::remove(std::string_view name) {
  const auto found = std::find_if(list_.begin(), list_.end(),
                                  [&](const auto& property) { return property->getName() == name; });
  if (found == list_.end()) return;
  index_.reset();
  end(*found);
  list_.erase(found);
}

void CMProperties::removeAll() {
  index_.reset();
  for (CMProperty* property : list_) end(property);
  list_.clear();
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

void CMElement::addChild(CMElement* child) {
  if (!children_) children_ = std::make_unique<CMElements>(false);
  children_->add(child);
}

const CMElements& CMElement::getChildren() const {
  static const CMElements none(false);
  return children_ ? *children_ : none;
}

void CMElement::addProperty(const CXString& name, Origin origin) {
  if (!properties_.contains(name)) addProperty(name, CXString(), origin);
}

void CMElement::addProperty(CXString name, CXString value, Origin origin) {
  properties_.add(std::move(name), std::move(value), origin);
}

void CMElement::setProperty(std::string_view name, CXString value) {
  if (CMProperty* property = properties_.get(name)) property->setValue(std::move(value));
}

CXString CMElement::getPropertyValue(std::string_view name) const {
  const CMProperty* property = properties_.get(name);
  return property != nullptr ? property->getValue() : CXString();
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
