#include "gfx/pattern.h"

#include <algorithm>

#include "gfx/refresh_screen.h"

namespace footlight {

namespace {

constexpr std::size_t kFewCells = 64;  // more of one object are drawn anew with the whole pattern

std::int64_t ceilingOf(std::int64_t value, std::int64_t unit) {
  return value > 0 ? (value + unit - 1) / unit : value / unit;
}
std::int64_t floorOf(std::int64_t value, std::int64_t unit) { return -ceilingOf(-value, unit); }

}  // namespace

CPattern::CPattern(CWindow* window, CXSize size, CXSize grid, int layers)
    : CGraphicsObject(window), grid_(grid) {
  setSize(size);
  if (grid.width <= 0 || grid.height <= 0 || layers <= 0) return;
  const int columns = width_ / grid.width;
  const int rows = height_ / grid.height;
  // The product of the first two has less than 62 bits.
  const std::int64_t cells = std::int64_t{columns} * rows;
  if (cells > limits::kPatternCells || cells * layers > limits::kPatternCells) {
    limitHit("cells of a pattern");
    return;
  }
  columns_ = columns;
  rows_ = rows;
  layers_.resize(static_cast<std::size_t>(layers));
  for (Layer& layer : layers_) layer.cells.resize(static_cast<std::size_t>(cells));
}

CPattern::~CPattern() {
  for (CGraphicsObject* object : CPattern::drawnParts()) object->removeInvalidateObserver(this);
}

// Cells

CPatternEntry** CPattern::cell(int layer, int column, int row) const {
  const bool isInside =
      layer >= 0 && layer < getLayers() && column >= 0 && column < columns_ && row >= 0 && row < rows_;
  if (!isInside) return nullptr;
  auto& cells = layers_[static_cast<std::size_t>(layer)].cells;
  return &cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                static_cast<std::size_t>(column)];
}

CPatternEntry* CPattern::get(int layer, int column, int row) const {
  CPatternEntry** held = cell(layer, column, row);
  return held != nullptr ? *held : nullptr;
}

void CPattern::add(const CXString& alias, int column, int row, int layer, CGraphicsObject* object, int value,
                   const CXString& objectName) {
  CPatternEntry** place = cell(layer, column, row);
  if (place == nullptr || object == nullptr) return;
  if (closesCircle(*this, *object)) {
    limitHit("a picture that would draw itself");
    return;
  }
  if (*place != nullptr) take(*place);
  auto entry = std::make_unique<CPatternEntry>();
  entry->column = column;
  entry->row = row;
  entry->alias = alias;
  entry->object = object;
  entry->value = value;
  entry->objectName = objectName;
  entry->key = object;
  entry->number = added_++;
  entry->layer = static_cast<std::size_t>(layer);
  *place = entry.get();
  byObject_[object].insert(entry.get());
  object->setInvalidated(true);
  object->addInvalidateObserver(this);
  const CXRect box = boxInCell(*object);
  reach_ = reach_.IsEmpty() ? box : reach_.Sum(box);
  showAgain(*entry, box);
  layers_[entry->layer].entries.emplace(entry->number, std::move(entry));
}

// Out of its layer, its cell and the index; its object is watched while another entry has it.
void CPattern::take(CPatternEntry* entry) {
  if (CPatternEntry** place = cell(static_cast<int>(entry->layer), entry->column, entry->row);
      place != nullptr && *place == entry) {
    *place = nullptr;
  }
  showAgain(*entry, reach_);
  CGraphicsObject* object = entry->object.get();
  const auto known = byObject_.find(entry->key);
  known->second.erase(entry);
  if (known->second.empty()) byObject_.erase(known);
  if (object != nullptr && !contains(object)) object->removeInvalidateObserver(this);
  layers_[entry->layer].entries.erase(entry->number);
}

void CPattern::takeAll(const CGraphicsObject* key) {
  const auto known = byObject_.find(key);
  if (known == byObject_.end()) return;
  const std::vector<CPatternEntry*> entries(known->second.begin(), known->second.end());
  for (CPatternEntry* entry : entries) take(entry);
}

void CPattern::remove(const CXString& alias) {
  if (CPatternEntry* entry = getAliasEntry(alias)) take(entry);
}

void CPattern::remove(int column, int row, int layer) {
  if (CPatternEntry* entry = get(layer, column, row)) take(entry);
}

void CPattern::remove(CGraphicsObject* object, bool invalidates) {
  takeAll(object);
  if (invalidates) Invalidate();
}

void CPattern::removeAll() {
  for (CGraphicsObject* object : drawnParts()) object->removeInvalidateObserver(this);
  byObject_.clear();
  for (Layer& layer : layers_) {
    layer.entries.clear();
    std::ranges::fill(layer.cells, nullptr);
  }
  Invalidate();
}

void CPattern::_switch(int column1, int row1, int column2, int row2) {
  CPatternEntry** first = cell(0, column1, row1);
  CPatternEntry** second = cell(0, column2, row2);
  if (first == nullptr || second == nullptr) return;
  std::swap(*first, *second);
  if (*first != nullptr) {
    (*first)->column = column1;
    (*first)->row = row1;
  }
  if (*second != nullptr) {
    (*second)->column = column2;
    (*second)->row = row2;
  }
  Invalidate();
}

void CPattern::moveDown(int column, int row, int count) {
  const int below = wrap_add(row, count);
  CPatternEntry** target = cell(0, column, below);
  if (target == nullptr || cell(0, column, row) == nullptr || count == 0) return;
  if (*target != nullptr) takeAll((*target)->key);
  CPatternEntry* entry = get(0, column, row);  // it may have been of the same object
  if (entry != nullptr) {
    *cell(0, column, row) = nullptr;
    *target = entry;
    entry->row = below;
    entry->locked = true;
  }
  Invalidate();
}

void CPattern::lock(int column, int row, bool locked) {
  for (int layer = 0; layer < getLayers(); ++layer) {
    if (CPatternEntry* entry = get(layer, column, row)) entry->locked = locked;
  }
}

bool CPattern::contains(const CGraphicsObject* object) const {
  const auto known = byObject_.find(object);
  return object != nullptr && known != byObject_.end() &&
         std::ranges::any_of(known->second, [&](const auto* entry) { return entry->object.get() == object; });
}

CPatternEntry* CPattern::getAliasEntry(const CXString& alias) const {
  for (const Layer& layer : layers_) {
    for (const auto& [number, entry] : layer.entries) {
      if (entry->alias == alias) return entry.get();
    }
  }
  return nullptr;
}

void CPattern::setGrid(CXSize grid) {
  if (grid == grid_) return;
  grid_ = grid;
  Invalidate();
}

// Drawing

CXPoint CPattern::placeOf(const CPatternEntry& entry) const {
  return CXPoint(wrap_mul(entry.column, grid_.width), wrap_mul(entry.row, grid_.height)) + position_;
}

// Where the object would draw in a cell at (0, 0).
CXRect CPattern::boxInCell(CGraphicsObject& object) const {
  const DrawnElsewhere elsewhere(&object, {}, nullptr);
  return object.getRect();
}

// Columns and rows whose objects may reach into an area of the destination; 0 to the size of the grid.
CPattern::Cells CPattern::cellsUnder(const CXRect& area) const {
  if (grid_.width <= 0 || grid_.height <= 0) return {0, 0, columns_, rows_};
  const auto first = [](std::int64_t edge, std::int64_t place, std::int64_t reach, int unit, int count) {
    return std::clamp<std::int64_t>(floorOf(edge - place - reach, unit), 0, count);
  };
  const auto behind = [](std::int64_t edge, std::int64_t place, std::int64_t reach, int unit, int count) {
    return std::clamp<std::int64_t>(ceilingOf(edge - place - reach, unit), 0, count);
  };
  return {first(area.left, position_.x, reach_.right, grid_.width, columns_),
          first(area.top, position_.y, reach_.bottom, grid_.height, rows_),
          behind(area.right, position_.x, reach_.left, grid_.width, columns_),
          behind(area.bottom, position_.y, reach_.top, grid_.height, rows_)};
}

std::vector<CPatternEntry*> CPattern::entriesUnder(const Layer& layer, const Cells& cells) const {
  std::vector<CPatternEntry*> entries;
  const auto area = (cells.right - cells.left) * (cells.bottom - cells.top);
  if (area > static_cast<std::int64_t>(layer.entries.size()) * 4) {
    for (const auto& [number, entry] : layer.entries) entries.push_back(entry.get());
    return entries;
  }
  for (std::int64_t row = cells.top; row < cells.bottom; ++row) {
    for (std::int64_t column = cells.left; column < cells.right; ++column) {
      CPatternEntry* entry = layer.cells[static_cast<std::size_t>(row * columns_ + column)];
      if (entry != nullptr) entries.push_back(entry);
    }
  }
  const auto number = [](const CPatternEntry* entry) { return entry->number; };
  if (!std::ranges::is_sorted(entries, {}, number)) std::ranges::sort(entries, {}, number);
  return entries;
}

void CPattern::redraw(CGraphicsObject* destination) {
  const CompositeGuard guard;
  if (!guard || destination == nullptr) return;
  CXRect area(0, 0, destination->Width(), destination->Height());
  if (!clippingRect_.IsEmpty()) area = area.Common(clippingRect_ + position_);
  if (area.left >= area.right || area.top >= area.bottom) return;
  const Cells cells = cellsUnder(area);
  for (const Layer& layer : layers_) {
    for (const CPatternEntry* entry : entriesUnder(layer, cells)) drawEntry(*entry, destination);
  }
}

void CPattern::drawEntry(const CPatternEntry& entry, CGraphicsObject* destination) {
  const Ref<CGraphicsObject> object = entry.object.get();
  if (!object || entry.locked || !object->isVisible()) return;
  const DrawnElsewhere elsewhere(object.get(), placeOf(entry), destination);
  const CXRect rect = object->getGfxType() == 2 ? object->GetBoundingBox() : object->getRect();
  const CXRect shown = rect.Common({0, 0, destination->Width(), destination->Height()});
  if (shown.IsEmpty()) return;
  if (!clippingRect_.IsEmpty()) {
    const CXRect part = (clippingRect_ + position_).Common(rect);
    if (part.IsEmpty()) return;
    object->SetClippingRect(part - object->GetPosition());
  }
  object->Redraw();
}

std::vector<CGraphicsObject*> CPattern::drawnParts() const {
  std::vector<CGraphicsObject*> parts;
  for (const auto& [key, entries] : byObject_) {
    for (const CPatternEntry* entry : entries) {
      CGraphicsObject* object = entry->object.get();
      if (object == nullptr) continue;
      parts.push_back(object);
      break;
    }
  }
  return parts;
}

// Changes

// The place itself is drawn anew, and not the whole pattern, as one that is marked as changed would be.
void CPattern::showAgain(const CPatternEntry& entry, const CXRect& box) {
  CXRect shown = (box + placeOf(entry)).Common(getRect());
  if (shown.IsEmpty()) return;
  if (CRefreshScreen* screen = getRefreshOwner()) screen->Invalidate(&shown);
  notifyInvalidate(&shown);
}

void CPattern::onInvalidate(CGraphicsObject* object, CXRect* rect) {
  const DepthGuard depth;
  if (!depth) return;
  const auto known = byObject_.find(object);
  if (known == byObject_.end() || !contains(object)) {
    CGraphicsObject::onInvalidate(object, rect);
    return;
  }
  const CXRect box = boxInCell(*object);
  reach_.Sum(box);
  if (known->second.size() > kFewCells) {
    if (!invalidated_) Invalidate();
    return;
  }
  const std::vector<CPatternEntry*> entries(known->second.begin(), known->second.end());
  for (const CPatternEntry* entry : entries) showAgain(*entry, box);
}

void CPattern::onDestroy(CGraphicsObject* object) {
  takeAll(object);
  CGraphicsObject::onDestroy(object);
}

// Questions

bool CPattern::isHit(const CPatternEntry& entry, CXPoint point, bool includeHidden, bool boxOnly,
                     int threshold) const {
  const Ref<CGraphicsObject> object = entry.object.get();
  if (!object || entry.locked || (!includeHidden && !object->isVisible())) return false;
  const DrawnElsewhere elsewhere(object.get(), placeOf(entry), object->getDestiny());
  if (!object->GetAbsoluteBoundingBox().IsInRect(point)) return false;
  return boxOnly || object->GetPixel(_channel::alpha, object->ClientCoords(point - position_)) > threshold;
}

CPatternEntry* CPattern::getEntryAt(int px, int py, int layer, bool includeHidden, bool boxOnly,
                                    int threshold) {
  const CXPoint point(px, py);
  const Cells cells = cellsUnder({px, py, wrap_add(px, 1), wrap_add(py, 1)});
  const auto search = [&](const Layer& searched) -> CPatternEntry* {
    for (CPatternEntry* entry : entriesUnder(searched, cells)) {
      if (isHit(*entry, point, includeHidden, boxOnly, threshold)) return entry;
    }
    return nullptr;
  };
  if (layer >= 0) return layer < getLayers() ? search(layers_[static_cast<std::size_t>(layer)]) : nullptr;
  for (auto searched = layers_.rbegin(); searched != layers_.rend(); ++searched) {
    if (CPatternEntry* found = search(*searched)) return found;
  }
  return nullptr;
}

CGraphicsObject* CPattern::getGraphicsObject(int px, int py, bool includeHidden, bool boxOnly, int layer,
                                             int threshold) {
  const CPatternEntry* entry = getEntryAt(px, py, layer, includeHidden, boxOnly, threshold);
  return entry != nullptr ? entry->object.get() : nullptr;
}

CXString CPattern::getGraphicsObjectAlias(int px, int py, bool includeHidden, bool boxOnly) {
  const CPatternEntry* entry = getEntryAt(px, py, kAllLayers, includeHidden, boxOnly);
  return entry != nullptr ? entry->alias : CXString();
}

}  // namespace footlight
