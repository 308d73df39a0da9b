#include "objects/data/mc_multi_array.h"

#include <algorithm>

#include "files/file.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "script/mc_expression.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/stored_value.h"

namespace footlight {

CMC_MultiArray::CMC_MultiArray(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_Object(container, element, type::kMultiArray),
      sizes_(static_cast<std::size_t>(
                 std::clamp(element->getPropertyIntValue("DIMENSIONS"), 0, kMostDimensions)),
             kFirstSize) {
  initializeBehaviours(container, element);
}

CMC_MultiArray::CMC_MultiArray(const CMC_MultiArray& other) : CMC_Object(other), sizes_(other.sizes_) {
  for (const auto& [index, value] : other.cells_) {
    cells_.emplace_hint(cells_.end(), index, ArrayValue(*value.variable()));
  }
}

std::unique_ptr<CMC_Object> CMC_MultiArray::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_MultiArray(*this));
}

CWindow* CMC_MultiArray::window() const { return getScene() != nullptr ? getScene()->getWindow() : nullptr; }

std::int64_t CMC_MultiArray::totalOf(std::span<const int> sizes) {
  std::int64_t product = 1;
  for (const int size : sizes) {
    product *= size;
    if (product > kMostCells) return 0;
  }
  return product;
}

std::int64_t CMC_MultiArray::indexOf(std::span<const int> coordinates) const {
  const std::int64_t x = coordinates.empty() ? 0 : coordinates[0];
  const std::int64_t y = coordinates.size() > 1 ? coordinates[1] : 0;
  const std::int64_t index = width() * y + x;
  return x >= 0 && y >= 0 && index < total() ? index : -1;
}

// The cells keep their coordinates.
bool CMC_MultiArray::grow(std::span<const int> coordinates) {
  std::vector<int> sizes = sizes_;
  for (std::size_t i = 0; i < std::min(sizes.size(), coordinates.size()); ++i) {
    while (sizes[i] > 0 && sizes[i] <= coordinates[i] && sizes[i] <= kMostCells) sizes[i] *= 2;
  }
  if (sizes == sizes_) return true;
  if (totalOf(sizes) == 0) {
    limitHit("cells of a grid");
    return false;
  }
  const int before = width();
  sizes_ = std::move(sizes);
  if (width() == before) return true;
  std::map<std::int64_t, ArrayValue> moved;
  for (auto& [index, value] : cells_) {
    moved.emplace_hint(moved.end(), index / before * width() + index % before, std::move(value));
  }
  cells_ = std::move(moved);
  return true;
}

void CMC_MultiArray::set(std::span<const int> coordinates, CMC_Variable& value) {
  if (!grow(coordinates) || !memory::hasRoom()) return;
  const std::int64_t index = indexOf(coordinates);
  if (index >= 0) cells_.insert_or_assign(index, ArrayValue(value));
}

const ArrayValue* CMC_MultiArray::get(std::span<const int> coordinates) const {
  const auto found = cells_.find(indexOf(coordinates));
  return found != cells_.end() ? &found->second : nullptr;
}

int CMC_MultiArray::getSize(int dimension) const {
  const bool isIn = dimension >= 0 && dimension < std::ssize(sizes_);
  return isIn ? sizes_[static_cast<std::size_t>(dimension)] : 0;
}

int CMC_MultiArray::count(CMC_Variable* value) const {
  const EqualTo equal(value);
  return static_cast<int>(
      std::ranges::count_if(cells_, [&](const auto& cell) { return equal(cell.second); }));
}

void CMC_MultiArray::load(const CXString& name) {
  cells_.clear();
  CFile file(window(), name, CFile::kReadBinary);
  const auto bytes = file.readRest(limits::kTextFileBytes);
  if (!bytes) return limitHit("grid file too long");
  if (bytes->empty()) return;
  ByteReader in(*bytes);
  const std::int32_t dimensions = in.i32();
  std::vector<int> sizes;
  for (std::int32_t i = 0; i < dimensions && i < kMostDimensions && in.ok(); ++i) sizes.push_back(in.i32());
  const bool isPossible = in.ok() && dimensions >= 0 && dimensions <= kMostDimensions &&
                          std::ranges::all_of(sizes, [](int size) { return size > 0; });
  if (!isPossible || totalOf(sizes) == 0) return;
  sizes_ = std::move(sizes);
  for (std::int64_t pairs = total(); pairs > 0 && in.left() > 0 && memory::hasRoom(); --pairs) {
    const std::int32_t index = in.i32();
    if (index < 0 || index >= total()) return;
    const Ref<CMC_Variable> value = restore(in);
    if (!value || !in.ok()) return;
    cells_.insert_or_assign(index, ArrayValue(*value));
  }
}

void CMC_MultiArray::save(const CXString& name) const {
  ByteWriter out;
  out.i32(static_cast<std::int32_t>(sizes_.size()));
  for (const int size : sizes_) out.i32(size);
  for (const auto& [index, value] : cells_) {
    out.i32(static_cast<std::int32_t>(index));
    store(out, *value.variable());
    if (static_cast<std::int64_t>(out.size()) > limits::kTextFileBytes) return limitHit("grid file too long");
  }
  out.i32(static_cast<std::int32_t>(total()));
  CFile file(window(), name, CFile::kWriteBinary);
  if (file.isOpen()) file.Write(out.written().data(), static_cast<int>(out.size()));
}

namespace {

using Factory = CMC_VariableFactory;

// All arguments but the last `others`.
std::vector<int> coordinates(const Call& call, int others) {
  std::vector<int> all;
  for (int i = 0; i < call.count() - others; ++i) all.push_back(call.integer(i));
  return all;
}

Result set(CMC_MultiArray& grid, Call& call) {
  if (const Ref<CMC_Variable> value = asVariable(call.object(call.count() - 1)))
    grid.set(coordinates(call, 1), *value);
  return {};
}

Result get(CMC_MultiArray& grid, Call& call) {
  const ArrayValue* cell = grid.get(coordinates(call, 0));
  return cell != nullptr ? cell->get() : Value(Factory::makeString("NULL"));
}

Result safeGet(CMC_MultiArray& grid, Call& call) {
  const ArrayValue* cell = grid.get(coordinates(call, 0));
  return cell != nullptr ? cell->get() : Value(Number(0));
}

Result getSize(CMC_MultiArray& grid, Call& call) { return Number(grid.getSize(call.integer(0))); }

Result count(CMC_MultiArray& grid, Call& call) {
  return Number(grid.count(asVariable(call.object(0)).get()));
}

Result load(CMC_MultiArray& grid, Call& call) {
  grid.load(call.text(0));
  return {};
}

Result save(CMC_MultiArray& grid, Call& call) {
  grid.save(call.text(0));
  return {};
}

constexpr Property kProperties[] = {
    {"DIMENSIONS", PropertyKind::integer, "0", "How many coordinates its growth follows; 2 for a grid."},
};

constexpr Method kMethods[] = {
    {1, "SET", "x:int, y:value, [more:value...]", method<set>,
     "The last argument is put in the cell of the coordinates before it; the grid grows as needed."},
    {2, "GET", "x:int, [y:int...] -> value", method<get>,
     "The value at the coordinates; \"NULL\" for an empty cell and outside of the grid."},
    {3, "GETSIZE", "dimension:int -> int", method<getSize>,
     "The size in that direction, from 0; 16 at first."},
    {4, "COUNT", "value:value -> int", method<count>, "How many cells hold that value."},
    {5, "LOAD", "name:file", method<load>, "Replaces all by what the file holds."},
    {6, "SAVE", "name:file", method<save>, "Writes sizes and values into a file."},
    {7, "SAFEGET", "x:int, [y:int...] -> value", method<safeGet>, "As GET, but 0 in place of \"NULL\"."},
};

}  // namespace

extern constinit const ScriptType kMultiArrayType = {
    .number = type::kMultiArray,
    .idWord = "MULTIARRAY",
    .definitionWord = "MULTIARRAY",
    .meaning = "A grid of values that grows as they are set.",
    .pass = 3,
    .signals = kSignalsOfAll,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_MultiArray>,
};

}  // namespace footlight
