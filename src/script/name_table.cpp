#include "script/name_table.h"

#include <cstring>

#include "script/mc_object.h"

namespace footlight {

namespace {

template <class Word>
std::uint64_t wordAt(const char* bytes) {
  Word word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// The bytes of a text of less than eight, in one word.
std::uint64_t shortWord(const char* bytes, std::size_t size) {
  if (size >= sizeof(std::uint32_t))
    return wordAt<std::uint32_t>(bytes) << 32 | wordAt<std::uint32_t>(bytes + size - sizeof(std::uint32_t));
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < size; ++i) word = word << 8 | static_cast<unsigned char>(bytes[i]);
  return word;
}

std::uint32_t hashOf(std::string_view name) {
  constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
  std::uint64_t hash = name.size();
  const auto mix = [&hash](std::uint64_t word) {
    hash = (hash ^ word) * kFactor;
    hash ^= hash >> 32;
  };
  while (name.size() >= sizeof(std::uint64_t)) {
    mix(wordAt<std::uint64_t>(name.data()));
    name.remove_prefix(sizeof(std::uint64_t));
  }
  mix(shortWord(name.data(), name.size()));
  return static_cast<std::uint32_t>(hash);
}

}  // namespace

std::size_t NameTable::place(std::string_view name, std::uint32_t hash) const {
  std::size_t at = hash & mask();
  while (cells_[at].object != nullptr &&
         (cells_[at].hash != hash || cells_[at].object->getName().view() != name)) {
    at = (at + 1) & mask();
  }
  return at;
}

CMC_Object* NameTable::find(std::string_view name) const {
  return cells_.empty() ? nullptr : cells_[place(name, hashOf(name))].object;
}

void NameTable::add(CMC_Object* object) {
  if (4 * (count_ + 1) > 3 * cells_.size()) grow();
  put({object, hashOf(object->getName())});
  ++count_;
}

void NameTable::put(Cell cell) {
  std::size_t at = cell.hash & mask();
  while (cells_[at].object != nullptr) at = (at + 1) & mask();
  cells_[at] = cell;
}

void NameTable::grow() {
  constexpr std::size_t kFirstCells = 16;
  std::vector<Cell> old(cells_.empty() ? kFirstCells : cells_.size() * 2);
  old.swap(cells_);
  for (const Cell& cell : old) {
    if (cell.object != nullptr) put(cell);
  }
}

// What stands behind the gap and would be found through it moves up.
void NameTable::remove(std::string_view name) {
  if (cells_.empty()) return;
  std::size_t gap = place(name, hashOf(name));
  if (cells_[gap].object == nullptr) return;
  --count_;
  for (std::size_t at = (gap + 1) & mask(); cells_[at].object != nullptr; at = (at + 1) & mask()) {
    const std::size_t wayToGap = (gap - cells_[at].hash) & mask();
    const std::size_t way = (at - cells_[at].hash) & mask();
    if (wayToGap > way) continue;
    cells_[gap] = cells_[at];
    gap = at;
  }
  cells_[gap] = {};
}

void NameTable::clear() {
  cells_.clear();
  count_ = 0;
}

}  // namespace footlight
