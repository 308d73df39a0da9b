#pragma once

// An index over a list that its owner keeps: from a hash to positions in the list. It stores numbers only, so
// a probe touches the list where the hashes agree and nowhere else.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace footlight {

class FlatIndex {
 public:
  // The position for which `isIt(position)` holds among those with the hash, -1 for none.
  template <class Predicate>
  std::int32_t find(std::size_t hash, Predicate isIt) const {
    if (cells_.empty()) return -1;
    const auto mark = static_cast<std::uint32_t>(hash);
    for (std::size_t i = first(mark);; i = (i + 1) & (cells_.size() - 1)) {
      const Cell& cell = cells_[i];
      if (cell.position < 0) return -1;
      if (cell.mark == mark && isIt(cell.position)) return cell.position;
    }
  }

  // Enters a position; one hash may have many.
  void add(std::size_t hash, std::int32_t position) {
    if (2 * (count_ + 1) > cells_.size()) grow();
    put({static_cast<std::uint32_t>(hash), position});
    ++count_;
  }

 private:
  struct Cell {
    std::uint32_t mark;
    std::int32_t position;
  };

  std::size_t first(std::uint32_t mark) const {
    return (mark ^ mark >> 15) & static_cast<std::uint32_t>(cells_.size() - 1);
  }

  void put(Cell cell) {
    std::size_t i = first(cell.mark);
    while (cells_[i].position >= 0) i = (i + 1) & (cells_.size() - 1);
    cells_[i] = cell;
  }

  void grow() {
    constexpr std::size_t kFirstCells = 16;
    const std::vector<Cell> old = std::move(cells_);
    cells_.assign(old.empty() ? kFirstCells : old.size() * 4, Cell{0, -1});
    for (const Cell& cell : old) {
      if (cell.position >= 0) put(cell);
    }
  }

  std::vector<Cell> cells_;  // a power of two of them, at most half in use
  std::size_t count_ = 0;
};

}  // namespace footlight
