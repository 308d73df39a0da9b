#pragma once

// STRUCT: a record of typed fields, each a variable named "STRUCT_FIELD". The structure owns its fields,
// unless it is mapped onto another one: then it shares that one's fields.

#include <vector>

#include "script/mc_variable.h"

namespace footlight {

class CMC_Structure : public CMC_Variable {
 public:
  CMC_Structure(CMC_ObjectsContainer* container, const CMElement* element);
  // With fields of the same names and types as the other's, and their values.
  CMC_Structure(const CXString& name, const CMC_Structure& like);
  ~CMC_Structure() override;
  static bool isTypeOf(int type) { return type == type::kStructure; }

  // What a name in code means: an object of the scope, or for STRUCT|FIELD that field. Null for none, and
  // for no scope.
  static CMC_Object* findNamed(const CMC_ObjectsContainer* scope, const CXString& name);

  // Appends a field of one of the four value types; other types are ignored.
  void declare(const CXString& fullName, int type);
  int getFieldsNo() const { return static_cast<int>(fields_.size()); }
  CMC_Variable* getField(int index) const;
  // By the text behind the last "_" of the fields' names; the first match.
  CMC_Variable* getField(const CXString& name) const;
  void setField(int index, CMC_Variable* value);
  void setField(const CXString& name, CMC_Variable* value);
  // Makes the fields those of the other structure.
  void map(const CMC_Structure& other);
  // Ends the fields, unless they are mapped.
  void flush();

  void set(CMC_Variable* other) override;
  void clear() override;
  void swap(CMC_Variable* /*a*/, CMC_Variable* /*b*/) override {}
  void inc() override {}
  void dec() override {}
  bool equals(CMC_Variable* other) override;
  int compare(CMC_Variable* other) override { return equals(other) ? 0 : 1; }
  Ref<CMC_Variable> calculate(CMC_Variable* /*other*/, Operation /*operation*/) override { return nullptr; }
  void setDefault(CMC_Variable* value) override;
  void resetINI() override;
  int getBufferLen() const override { return 0; }
  void netstore(std::span<std::byte> /*buffer*/) const override {}
  bool netrestore(std::span<const std::byte> /*value*/) override { return false; }
  // The fields' texts, cut at bars and newlines, in order.
  void fromString(const CXString& text) override;
  int asInteger() override { return 0; }
  double asDouble() override { return 0.0; }
  bool asBool() override { return false; }
  // The texts of all fields, each followed by a bar.
  CXString toString() const override;

 private:
  // Shared fields: a mapped structure keeps those of the other alive.
  using Field = std::shared_ptr<CMC_Variable>;

  std::vector<Field> fields_;
};

}  // namespace footlight
