#pragma once

// A picture of tiles: layers of a grid whose cells hold one graphic object each. It has no pixels of its own:
// its tiles are drawn right onto its destiny, layer by layer from 0 up, and within a layer in the order in
// which they came. A tile may be larger than its cell, and one object may fill many cells.
//
// How many columns and rows there are follows from the sizes at the beginning and stays. Objects are held
// weakly. What lies outside of the grid does not exist: the operation does nothing.

#include <map>
#include <memory>
#include <unordered_map>
#include <unordered_set>

#include "gfx/composite.h"

namespace footlight {

class CPatternEntry : public CXObject {
 public:
  int column = 0;
  int row = 0;
  CXString alias;
  WeakRef<CGraphicsObject> object;
  int value = 0;
  CXString objectName;
  bool locked = false;  // neither drawn nor found

 private:
  friend class CPattern;
  const CGraphicsObject* key = nullptr;  // the object, even if it has ended
  std::uint64_t number = 0;              // of its coming
  std::size_t layer = 0;
};

class CPattern : public CGraphicsObject {
 public:
  static constexpr int kAllLayers = -1;

  // Without cells when the grid is empty or there would be too many of them.
  CPattern(CWindow* window, CXSize size, CXSize grid, int layers);
  ~CPattern() override;

  // Replaces what the cell held. An object that would draw the pattern itself is refused.
  void add(const CXString& alias, int column, int row, int layer, CGraphicsObject* object, int value,
           const CXString& objectName);
  // The first of that name, from layer 0 up.
  void remove(const CXString& alias);
  void remove(int column, int row, int layer);
  void remove(CGraphicsObject* object, bool invalidates);
  void removeAll();
  // These two work on layer 0.
  void _switch(int column1, int row1, int column2, int row2);
  // What the cell `count` rows below held goes, all entries of that object with it.
  void moveDown(int column, int row, int count);
  // In all layers.
  void lock(int column, int row, bool locked);
  bool contains(const CGraphicsObject* object) const;

  CPatternEntry* get(int layer, int column, int row) const;
  CPatternEntry* getEntryAtCell(int column, int row, int layer) const { return get(layer, column, row); }
  CPatternEntry* getAliasEntry(const CXString& alias) const;
  // The first entry at a point of the screen, of one layer or from the top one down. Without
  // `boxOnly` the object's alpha there must be above the threshold.
  CPatternEntry* getEntryAt(int px, int py, int layer, bool includeHidden, bool boxOnly, int threshold = 0);
  CGraphicsObject* getGraphicsObject(int px, int py, bool includeHidden, bool boxOnly, int layer,
                                     int threshold);
  CXString getGraphicsObjectAlias(int px, int py, bool includeHidden, bool boxOnly);

  CXSize getGrid() const { return grid_; }
  void setGrid(CXSize grid);  // the number of cells stays
  int getLayers() const { return static_cast<int>(layers_.size()); }
  int columns() const { return columns_; }
  int rows() const { return rows_; }
  void move(int dx, int dy) { Move(dx, dy); }
  // Where the entry's cell begins, in pixels of the screen.
  CXPoint placeOf(const CPatternEntry& entry) const;

  void redraw(CGraphicsObject* destination) override;
  std::vector<CGraphicsObject*> drawnParts() const override;
  void onInvalidate(CGraphicsObject* object, CXRect* rect) override;
  void onDestroy(CGraphicsObject* object) override;

 private:
  struct Layer {
    std::map<std::uint64_t, std::unique_ptr<CPatternEntry>> entries;  // in the order of their coming
    std::vector<CPatternEntry*> cells;
  };
  struct Cells {
    std::int64_t left, top, right, bottom;
  };

  CPatternEntry** cell(int layer, int column, int row) const;
  void take(CPatternEntry* entry);
  void takeAll(const CGraphicsObject* key);
  CXRect boxInCell(CGraphicsObject& object) const;
  Cells cellsUnder(const CXRect& area) const;
  std::vector<CPatternEntry*> entriesUnder(const Layer& layer, const Cells& cells) const;
  void drawEntry(const CPatternEntry& entry, CGraphicsObject* destination);
  bool isHit(const CPatternEntry& entry, CXPoint point, bool includeHidden, bool boxOnly,
             int threshold) const;
  void showAgain(const CPatternEntry& entry, const CXRect& box);

  CXSize grid_;
  int columns_ = 0;
  int rows_ = 0;
  mutable std::vector<Layer> layers_;
  std::unordered_map<const CGraphicsObject*, std::unordered_set<CPatternEntry*>> byObject_;
  std::uint64_t added_ = 0;
  CXRect reach_;  // where an object may draw, from its cell's corner; grows only
};

}  // namespace footlight
