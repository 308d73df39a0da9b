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
    return found != list_.end() ? found->get() : nullptr;
  }
  if (index_ == nullptr) {
    index_ = std::make_unique<Index>();
    for (const auto& property : list_) index_->try_emplace(property->getName(), property.get());
  }
  const auto found = index_->find(name);
  return found != index_->end() ? found->second : nullptr;
}

void CMProperties::add(std::unique_ptr<CMProperty> property) {
  if (index_ != nullptr) index_->try_emplace(property->getName(), property.get());
  list_.push_back(std::move(property));
}

void CMProperties::remove(std::string_view name) {
  const auto found = std::find_if(list_.begin(), list_.end(),
                                  [&](const auto& property) { return property->getName() == name; });
  if (found == list_.end()) return;
  index_.reset();
  list_.erase(found);
}

void CMProperties::removeAll() {
  index_.reset();
  list_.clear();
}

CMElements::~CMElements() {
  if (!owns_) return;
  for (const CMElement* element : list_) delete element;
}

void CMElements::add(CMElement* element) {
  list_.push_back(element);
  index_.try_emplace(element->getName(), element);
}

CMElement* CMElements::get(std::string_view name) const {
  const auto found = index_.find(name);
  return found != index_.end() ? found->second : nullptr;
}

void CMElement::addProperty(const CXString& name, Origin origin) {
  if (!properties_.contains(name)) addProperty(name, CXString(), origin);
}

void CMElement::addProperty(CXString name, CXString value, Origin origin) {
  properties_.add(std::make_unique<CMProperty>(std::move(name), std::move(value), origin));
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
