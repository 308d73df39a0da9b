#include "objects/data/mc_database.h"

#include <algorithm>

#include "files/file.h"
#include "files/text_file_reader.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "script/mc_expression.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

CMC_Database::CMC_Database(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kDatabase), modelName_(element->getPropertyValue("MODEL")) {
  initializeBehaviours(container, element);
}

CMC_Database::CMC_Database(const CMC_Database& other)
    : CMC_Object(other), modelName_(other.modelName_), model_(other.model_), position_(other.position_) {
  for (const Row& row : other.rows_) {
    Row made{row.fields, {}};
    for (const ArrayValue& cell : row.cells) made.cells.emplace_back(*cell.variable());
    rows_.push_back(std::move(made));
  }
}

std::unique_ptr<CMC_Object> CMC_Database::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Database(*this));
}

CWindow* CMC_Database::window() const { return getScene() != nullptr ? getScene()->getWindow() : nullptr; }

void CMC_Database::init() {
  const Ref<CMC_Database> self(this);
  CMC_ObjectsContainer* scope = getScene();
  model_ = scope != nullptr ? scope->find<CMC_Structure>(modelName_) : nullptr;
  if (model_) {
    auto cursor = std::make_unique<CMC_Structure>(getName() + "_CURSOR", *model_.get());
    cursor_ = cursor.get();
    scope->addObject(cursor.release());
  } else if (diagnose::isOn()) {
    diagnose::report(diagnose::Group::object, getName(), "MODEL",
                     "no STRUCT of the name " + modelName_.str());
  }
  CMC_Object::init();
}

// Rows

std::shared_ptr<const CMC_Database::Fields> CMC_Database::fieldsOf(const CMC_Structure& structure) {
  Fields names;
  for (int i = 0; i < structure.getFieldsNo(); ++i) {
    const CXString& full = structure.getField(i)->getName();
    names.push_back(full.Right(full.FindLast('_') + 1));
  }
  if (!lastFields_ || *lastFields_ != names) lastFields_ = std::make_shared<Fields>(std::move(names));
  return lastFields_;
}

CMC_Database::Row CMC_Database::rowOf(const CMC_Structure& structure) {
  Row row{fieldsOf(structure), {}};
  row.cells.reserve(static_cast<std::size_t>(structure.getFieldsNo()));
  for (int i = 0; i < structure.getFieldsNo(); ++i) row.cells.emplace_back(*structure.getField(i));
  return row;
}

bool CMC_Database::hasRoom() {
  if (size() < limits::kArrayElements) return memory::hasRoom();
  limitHit("rows of a table");
  return false;
}

void CMC_Database::insertAt(int index, const CMC_Structure& row) {
  if (index < 0 || index > size() || !hasRoom()) return;
  rows_.insert(rows_.begin() + index, rowOf(row));
}

void CMC_Database::removeAt(int index) {
  if (index >= 0 && index < size()) rows_.erase(rows_.begin() + index);
}

const ArrayValue* CMC_Database::cellOf(const Row& row, const CXString& field) {
  const auto found = std::ranges::find(*row.fields, field);
  return found != row.fields->end() ? &row.cells[static_cast<std::size_t>(found - row.fields->begin())]
                                    : nullptr;
}

void CMC_Database::remove(const CXString& field, CMC_Variable* value) {
  const EqualTo equal(value);
  std::erase_if(rows_, [&](const Row& row) {
    const ArrayValue* cell = cellOf(row, field);
    return cell != nullptr && equal(*cell);
  });
}

int CMC_Database::find(const CXString& field, CMC_Variable* value, int start) {
  const EqualTo equal(value);
  for (int i = std::max(0, start); i < size(); ++i) {
    const Row& row = rows_[static_cast<std::size_t>(i)];
    const ArrayValue* cell = cellOf(row, field);
    if (cell == nullptr || !equal(*cell)) continue;
    show(row);
    return i;
  }
  return -1;
}

// The cursor

// Handlers of the cursor's fields may change the table.
void CMC_Database::show(const Row& row) {
  const Ref<CMC_Structure> cursor(cursor_.get());
  if (!cursor) return;
  std::vector<Ref<CMC_Variable>> values;
  for (const ArrayValue& cell : row.cells) values.push_back(cell.variable());
  for (std::size_t i = 0; i < values.size(); ++i) cursor->setField(static_cast<int>(i), values[i].get());
}

void CMC_Database::select(int index) {
  if (index < 0 || index >= size()) return;
  position_ = index;
  show(rows_[static_cast<std::size_t>(index)]);
}

void CMC_Database::move(std::int64_t position) {
  const std::int64_t last = size() - 1;
  if (position > last) {
    select(position_ > last && position < position_ ? static_cast<int>(last) : 0);
  } else {
    select(static_cast<int>(position < 0 ? last : position));
  }
}

// Files

void CMC_Database::load(const CXString& name) {
  const Ref<CMC_Database> self(this);
  const Ref<CMC_Structure> model(model_.get());
  CTextFileReader reader(window(), name);
  if (!model || reader.LastError() != 0) return;
  const Owned<CMC_Structure> line(new CMC_Structure(CXString(), *model));
  while (!reader.eof() && hasRoom()) {
    const std::string_view text = reader.getLine();
    if (text.empty() || text == "\r") continue;
    line->set(model.get());
    line->fromString(text.ends_with('\r') ? text.substr(0, text.size() - 1) : text);
    rows_.push_back(rowOf(*line));
  }
  select(0);
}

void CMC_Database::save(const CXString& name) const {
  std::string text;
  for (const Row& row : rows_) {
    for (const ArrayValue& cell : row.cells) text.append(cell.variable()->asText().view()).append("|");
    text += '\n';
    if (std::ssize(text) > limits::kTextFileBytes) return limitHit("table file too long");
  }
  CFile file(window(), name, CFile::kWriteText);
  if (file.isOpen()) file.Write(text.data(), static_cast<int>(text.size()));
}

namespace {

using Factory = CMC_VariableFactory;

Result add(CMC_Database& table, Call& call) {
  if (const auto* row = call.named<CMC_Structure>(0)) table.add(*row);
  return {};
}

Result remove(CMC_Database& table, Call& call) {
  table.remove(call.text(0), asVariable(call.object(1)).get());
  return {};
}

Result load(CMC_Database& table, Call& call) {
  table.load(call.text(0));
  return {};
}

Result save(CMC_Database& table, Call& call) {
  table.save(call.text(0));
  return {};
}

Result removeAll(CMC_Database& table, Call& /*call*/) {
  table.removeAll();
  return {};
}

Result find(CMC_Database& table, Call& call) {
  const Ref<CMC_Variable> value = asVariable(call.object(1));
  return Number(table.find(call.text(0), value.get(), call.integer(2)));
}

Result select(CMC_Database& table, Call& call) {
  table.select(call.integer(0));
  return {};
}

Result next(CMC_Database& table, Call& /*call*/) {
  table.next();
  return {};
}

Result prev(CMC_Database& table, Call& /*call*/) {
  table.prev();
  return {};
}

Result getRowsNo(CMC_Database& table, Call& /*call*/) { return Number(table.size()); }

Result removeAt(CMC_Database& table, Call& call) {
  table.removeAt(call.integer(0));
  return {};
}

Result insertAt(CMC_Database& table, Call& call) {
  if (const auto* row = call.named<CMC_Structure>(1)) table.insertAt(call.integer(0), *row);
  return {};
}

Result getCursorPos(CMC_Database& table, Call& /*call*/) { return Number(table.getPosition()); }

constexpr Property kProperties[] = {
    {"MODEL", PropertyKind::name, "",
     "The STRUCT that rows are like. The row at the cursor is the STRUCT of the table's name and "
     "\"_CURSOR\"."},
};

constexpr Method kMethods[] = {
    {1, "ADD", "row:name", method<add>, "Appends a copy of the STRUCT."},
    {2, "REMOVE", "field:text, value:value", method<remove>,
     "Removes every row whose field equals the value."},
    {3, "LOAD", "name:file", method<load>,
     "Appends the rows of a text file, one a line, with | between the fields; the first row goes to the "
     "cursor."},
    {4, "SAVE", "name:file", method<save>, "Writes all rows into a text file."},
    {5, "REMOVEALL", "", method<removeAll>, "Removes all rows."},
    {6, "FIND", "field:text, value:value, start:int -> int", method<find>,
     "The first row from that one on whose field equals the value, or -1; it is copied to the cursor."},
    {7, "SELECT", "row:int", method<select>, "Moves the cursor to that row, from 0."},
    {8, "NEXT", "", method<next>, "Moves the cursor to the next row; after the last one comes the first."},
    {9, "PREV", "", method<prev>, "Moves the cursor to the row before; before the first one comes the last."},
    {10, "GETROWSNO", "-> int", method<getRowsNo>, "How many rows there are."},
    {11, "REMOVEAT", "row:int", method<removeAt>, "Removes that row."},
    {12, "INSERTAT", "row:int, structure:name", method<insertAt>,
     "Puts a copy of the STRUCT before that row."},
    {13, "GETCURSORPOS", "-> int", method<getCursorPos>, "The row of the cursor."},
};

}  // namespace

extern constinit const ScriptType kDatabaseType = {
    .number = type::kDatabase,
    .idWord = "DATABASE",
    .definitionWord = "DATABASE",
    .meaning = "A table of rows.",
    .pass = 3,
    .signals = kSignalsOfAll,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Database>,
};

}  // namespace footlight
