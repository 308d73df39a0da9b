#pragma once

// DATABASE: a table. Its rows are copies of structures, as a rule of one model; the row at the cursor can be
// read as the structure <name>_CURSOR, which is a copy as well.
//
// Rows count from 0; an index outside of the table does nothing. There are at most limits::kArrayElements.

#include <vector>

#include "objects/data/array_value.h"
#include "script/mc_structure.h"

namespace footlight {

class CWindow;

namespace type {
inline constexpr int kDatabase = 3003;
}

class CMC_Database : public CMC_Object {
 public:
  CMC_Database(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kDatabase; }

  // Finds the model and puts the cursor into the scope.
  void init() override;

  int size() const { return static_cast<int>(rows_.size()); }
  int getPosition() const { return position_; }
  void add(const CMC_Structure& row) { insertAt(size(), row); }
  void insertAt(int index, const CMC_Structure& row);
  void removeAt(int index);
  void removeAll() { rows_.clear(); }
  // Every row whose field equals the value.
  void remove(const CXString& field, CMC_Variable* value);
  // The first row from `start` on whose field equals the value goes to the cursor, which does not move;
  // -1 for none.
  int find(const CXString& field, CMC_Variable* value, int start);
  // The cursor moves; `next` and `prev` go on at the other end.
  void select(int index);
  void next() { move(position_ + std::int64_t{1}); }
  void prev() { move(position_ - std::int64_t{1}); }

  // The rows as lines of text, in a file of the game. `load` appends them to those that there are. `save`
  // leaves a file that cannot be written as it was.
  void load(const CXString& name);
  void save(const CXString& name) const;

  std::unique_ptr<CMC_Object> copy() const override;

 private:
  // The names of a structure's fields, behind the last "_" of each; shared by all rows that have them.
  using Fields = std::vector<CXString>;
  struct Row {
    std::shared_ptr<const Fields> fields;
    std::vector<ArrayValue> cells;
  };

  CMC_Database(const CMC_Database& other);
  CWindow* window() const;
  std::shared_ptr<const Fields> fieldsOf(const CMC_Structure& structure);
  Row rowOf(const CMC_Structure& structure);
  bool hasRoom();
  // The cell of that field; null for a row without it.
  static const ArrayValue* cellOf(const Row& row, const CXString& field);
  void show(const Row& row);
  void move(std::int64_t position);

  CXString modelName_;
  WeakRef<CMC_Structure> model_;
  WeakRef<CMC_Structure> cursor_;
  std::shared_ptr<const Fields> lastFields_;
  std::vector<Row> rows_;
  int position_ = 0;
};

}  // namespace footlight
