#pragma once

// The dirty part of a screen: rectangles that do not overlap, or everything. Neighbours are not merged.
//
// A grid over the screen knows which rectangles touch each of its cells, so that neither adding nor asking
// goes through all of them.

#include <cstdint>
#include <vector>

#include "foundation/geometry.h"
#include "foundation/xobject.h"

namespace footlight {

class CRefreshRegion : public CXObject {
 public:
  explicit CRefreshRegion(bool full) : full_(full) {}

  // Null, or the rectangle (0, 0, 800, 600), makes the region full; a full region takes nothing more.
  // Otherwise the parts of the rectangle that are not yet in the region are added. Too many rectangles make
  // it full as well.
  void add(const CXRect* rect);
  void clear();
  bool isFull() const { return full_; }
  bool isEmpty() const { return !full_ && living_ == 0; }
  // The rectangles in the order of adding; none when the region is full. Good until the region changes.
  const std::vector<CXRect>& rects() const;

  // A walk over the rectangles that share something with `area`, in the order of adding: the place of the
  // next one from `place` on, or -1. The walk sees what is added meanwhile; places are good until `compact`.
  int findFrom(int place, const CXRect& area) const;
  const CXRect& at(int place) const { return slots_[static_cast<std::size_t>(place)].rect; }
  // Closes the gaps that rectangles left which gave way to larger ones.
  void compact();

 private:
  struct Slot {
    CXRect rect;
    bool isLiving;
  };
  // What is still to add of a rectangle. Nothing in front of the place overlaps it.
  struct Piece {
    CXRect rect;
    int place;
  };
  struct CellRange {
    int left, top, right, bottom;  // cells, borders included
  };
  static constexpr int kCellShift = 5;
  static constexpr int kCells = 64;  // each way; the last ones take all that lies beyond

  static std::size_t cellIndex(int x, int y) {
    return static_cast<std::size_t>(y) * kCells + static_cast<std::size_t>(x);
  }
  static CellRange cellsOf(const CXRect& rect);
  template <class Function>
  void forEachCell(const CXRect& rect, Function function);
  int findIn(const std::vector<int>& places, int place, const CXRect& area) const;
  void addPiece(std::vector<Piece>* pending);
  void append(const CXRect& rect);
  void remove(int place);

  bool full_;
  int living_ = 0;
  std::vector<Slot> slots_;             // in the order of adding
  std::vector<std::vector<int>> grid_;  // places in `slots_`, rising; empty until the first rectangle
  mutable std::vector<CXRect> list_;    // those that live; not good when `isListGood_` is not set
  mutable bool isListGood_ = true;
};

}  // namespace footlight
