#pragma once

// MULTIARRAY: a grid of values that grows as values are set. The first two coordinates say which cell is
// meant; further ones count for the growth alone. Sizes are 16 times a power of 2.
//
// All sizes together give at most kMostCells; an operation that would go over that does nothing.

#include <map>
#include <span>
#include <vector>

#include "objects/data/array_value.h"

namespace footlight {

class CWindow;

namespace type {
inline constexpr int kMultiArray = 3006;
}

class CMC_MultiArray : public CMC_Object {
 public:
  static constexpr std::int64_t kMostCells = std::int64_t{1} << 24;
  static constexpr int kMostDimensions = 64;

  CMC_MultiArray(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kMultiArray; }

  // Puts a copy of the value in the cell.
  void set(std::span<const int> coordinates, CMC_Variable& value);
  // Null for an empty cell and outside of the grid.
  const ArrayValue* get(std::span<const int> coordinates) const;
  // 0 for a dimension that there is not.
  int getSize(int dimension) const;
  // The cells whose value equals that one.
  int count(CMC_Variable* value) const;

  // All sizes and filled cells, in a file of the game. `load` replaces them; it takes what a damaged file
  // gives up to the damage. `save` leaves a file that cannot be written as it was.
  void load(const CXString& name);
  void save(const CXString& name) const;

  std::unique_ptr<CMC_Object> copy() const override;

 private:
  CMC_MultiArray(const CMC_MultiArray& other);
  CWindow* window() const;
  // How many cells there are; none where they were too many.
  std::int64_t total() const { return totalOf(sizes_); }
  static std::int64_t totalOf(std::span<const int> sizes);
  // Of the cell, or -1 outside of the grid.
  std::int64_t indexOf(std::span<const int> coordinates) const;
  bool grow(std::span<const int> coordinates);
  int width() const { return sizes_.empty() ? kFirstSize : sizes_[0]; }

  static constexpr int kFirstSize = 16;

  std::vector<int> sizes_;
  std::map<std::int64_t, ArrayValue> cells_;  // those that are filled, by their index
};

}  // namespace footlight
