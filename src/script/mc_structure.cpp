#include "script/mc_structure.h"

#include <algorithm>

#include "foundation/string_tokenizer.h"
#include "script/mc_objects_container.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

CMC_Structure::CMC_Structure(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Variable(container, element, type::kStructure) {
  for (CXString& piece : element->getPropertyValue("FIELDS").toVector(",")) {
    piece.AllTrim();
    const int open = piece.Find('<');
    const int close = piece.Find('>', std::max(open, 0));
    if (open < 0) {
      if (diagnose::isOn())
        diagnose::report(diagnose::Group::definition, getName(), "FIELDS",
                         "no field is made of " + piece.str());
      continue;
    }
    CXString name = piece.Left(open).AllTrim();
    declare(getName() + "_" + name,
            getTypeId(piece.Mid(open + 1, close < 0 ? piece.Length() : close).AllTrim()));
  }
  initializeBehaviours(container, element);
}

CMC_Structure::CMC_Structure(const CXString& name, const CMC_Structure& like)
    : CMC_Variable(name, type::kStructure) {
  const CXString prefix = like.getName() + "_";
  for (const Field& field : like.fields_) {
    const CXString& full = field->getName();
    const int own = full.startsWith(prefix) ? prefix.Length() : full.FindLast('_') + 1;
    declare(name + "_" + full.Right(own), field->getType());
    fields_.back()->set(field.get());
  }
}

CMC_Structure::~CMC_Structure() = default;

CMC_Object* CMC_Structure::findNamed(const CMC_ObjectsContainer* scope, const CXString& name) {
  if (scope == nullptr) return nullptr;
  const int bar = name.Find('|');
  if (bar < 0) return scope->getObject(name);
  const auto* structure = scope->find<CMC_Structure>(name.slice(0, bar));
  return structure != nullptr ? structure->getField(name.Right(bar + 1)) : nullptr;
}

void CMC_Structure::declare(const CXString& fullName, int type) {
  std::unique_ptr<CMC_Variable> field = CMC_VariableFactory::makeNamed(type, fullName);
  if (!field) {
    if (diagnose::isOn())
      diagnose::report(diagnose::Group::definition, getName(), "FIELDS",
                       "no such type of the field " + fullName.str());
    return;
  }
  field->setScene(getScene());
  fields_.emplace_back(field.release(), Disposer());
}

CMC_Variable* CMC_Structure::getField(int index) const {
  return index < 0 || index >= getFieldsNo() ? nullptr : fields_[static_cast<std::size_t>(index)].get();
}

CMC_Variable* CMC_Structure::getField(const CXString& name) const {
  for (const Field& field : fields_) {
    const CXString& full = field->getName();
    if (full.slice(full.FindLast('_') + 1, full.Length()) == name.view()) return field.get();
  }
  return nullptr;
}

void CMC_Structure::setField(int index, CMC_Variable* value) {
  CMC_Variable* field = getField(index);
  const Ref<CMC_Variable> keep(field);
  if (field != nullptr && value != nullptr) field->set(value);
}

void CMC_Structure::setField(const CXString& name, CMC_Variable* value) {
  CMC_Variable* field = getField(name);
  const Ref<CMC_Variable> keep(field);
  if (field != nullptr && value != nullptr) field->set(value);
}

void CMC_Structure::map(const CMC_Structure& other) {
  if (&other != this) fields_ = other.fields_;
}

void CMC_Structure::flush() { fields_.clear(); }

void CMC_Structure::set(CMC_Variable* other) {
  const Ref<CMC_Structure> source(object_cast<CMC_Structure>(other));
  if (!source) {
    if (other != nullptr) fromString(other->toString());
    return;
  }
  const Ref<CMC_Structure> self(this);
  for (int i = 0; i < getFieldsNo(); ++i) setField(i, source->getField(i));
}

void CMC_Structure::clear() {
  const auto fields = fields_;
  for (const Field& field : fields) field->clear();
}

bool CMC_Structure::equals(CMC_Variable* other) {
  const auto* structure = object_cast<CMC_Structure>(other);
  if (structure == nullptr || structure->getFieldsNo() != getFieldsNo()) return false;
  return std::equal(fields_.begin(), fields_.end(), structure->fields_.begin(),
                    [](const Field& a, const Field& b) { return a->equals(b.get()); });
}

void CMC_Structure::setDefault(CMC_Variable* value) {
  const auto* structure = object_cast<CMC_Structure>(value);
  if (structure == nullptr) return;
  for (int i = 0; i < std::min(getFieldsNo(), structure->getFieldsNo()); ++i) {
    getField(i)->setDefault(structure->getField(i));
  }
}

void CMC_Structure::resetINI() {
  const auto fields = fields_;
  for (const Field& field : fields) field->resetINI();
}

void CMC_Structure::fromString(const CXString& text) {
  CStringTokenizer tokenizer(text, "|\n");
  for (const Field& field : fields_) {
    if (!tokenizer.hasMoreTokens()) return;
    field->fromString(tokenizer.nextToken());
  }
}

CXString CMC_Structure::toString() const {
  CXString text;
  for (const Field& field : fields_) text += field->toString() + "|";
  return text;
}

}  // namespace footlight
