#pragma once

// The objects of a scope by their names: an open table with the hashes beside, so that a probe looks at an
// object only where the hashes agree. It refers to the objects; a name must not change while it is in here.

#include <cstdint>
#include <string_view>
#include <vector>

namespace footlight {

class CMC_Object;

class NameTable {
 public:
  // Null for none.
  CMC_Object* find(std::string_view name) const;
  // For an object whose name is not in here yet.
  void add(CMC_Object* object);
  // Takes out what has the name.
  void remove(std::string_view name);
  void clear();

 private:
  struct Cell {
    CMC_Object* object = nullptr;  // null for a free cell
    std::uint32_t hash = 0;
  };

  std::size_t mask() const { return cells_.size() - 1; }
  // The cell of the name, or the free one where the search ends. Only for a table with cells.
  std::size_t place(std::string_view name, std::uint32_t hash) const;
  void put(Cell cell);
  void grow();

  std::vector<Cell> cells_;  // a power of two of them, at most three quarters in use
  std::size_t count_ = 0;
};

}  // namespace footlight
