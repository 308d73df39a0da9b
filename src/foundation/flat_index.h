#pragma once

// An index over a list that its owner keeps: from a hash to positions in the list. It stores numbers only, so
// a probe touches the list where the hashes agree and nowhere else. A byte of each hash stands apart from the
// rest: a probe that finds nothing looks at a table that is small enough to stay near.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace footlight {

class FlatIndex {
 public:
  // The position for which `isIt(position)` holds among those with the hash, -1 for none.
  template <class Predicate>
  std::int32_t find(std::size_t hash, Predicate isIt) const {
    if (tags_.empty()) return -1;
    const Mark mark(hash);
    for (std::size_t i = mark.first();; ++i) {
      i &= tags_.size() - 1;
      if (tags_[i] == kFree) return -1;
      if (tags_[i] != mark.tag()) continue;
      const Cell& cell = cells_[i];
      if (cell.mark == mark.value && isIt(cell.position)) return cell.position;
    }
  }

  // Enters a position; one hash may have many.
  void add(std::size_t hash, std::int32_t position) {
    if (2 * (count_ + 1) > tags_.size()) grow();
    put(Mark(hash), position);
    ++count_;
  }

 private:
  static constexpr std::uint8_t kFree = 0;

  struct Mark {
    explicit Mark(std::size_t hash) : value(static_cast<std::uint32_t>(hash)) {}
    std::size_t first() const { return value ^ value >> 15; }
    std::uint8_t tag() const { return static_cast<std::uint8_t>(value >> 24 | 1); }
    std::uint32_t value;
  };
  struct Cell {
    std::uint32_t mark;
    std::int32_t position;
  };

  void put(Mark mark, std::int32_t position) {
    std::size_t i = mark.first() & (tags_.size() - 1);
    while (tags_[i] != kFree) i = (i + 1) & (tags_.size() - 1);
    tags_[i] = mark.tag();
    cells_[i] = {mark.value, position};
  }

  void grow() {
    constexpr std::size_t kFirstCells = 16;
    const std::vector<std::uint8_t> oldTags = std::move(tags_);
    const std::unique_ptr<Cell[]> oldCells = std::move(cells_);
    const std::size_t size = oldTags.empty() ? kFirstCells : oldTags.size() * 4;
    tags_.assign(size, kFree);
    cells_ = std::make_unique_for_overwrite<Cell[]>(size);
    for (std::size_t i = 0; i < oldTags.size(); ++i) {
      if (oldTags[i] != kFree) put(Mark(oldCells[i].mark), oldCells[i].position);
    }
  }

  std::vector<std::uint8_t> tags_;  // a power of two of them, at most half in use
  std::unique_ptr<Cell[]> cells_;   // as many; only those with a tag hold anything
  std::size_t count_ = 0;
};

}  // namespace footlight
