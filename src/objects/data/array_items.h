#pragma once

// The elements of an ARRAY in one piece of memory, with room in front as well as behind: scripts use arrays
// as queues, and a million elements must not move for each that goes at the front.

#include <algorithm>
#include <iterator>
#include <vector>

#include "objects/data/array_value.h"

namespace footlight {

class ArrayItems {
 public:
  using Iterator = std::vector<ArrayValue>::iterator;
  using ConstIterator = std::vector<ArrayValue>::const_iterator;

  std::size_t size() const { return values_.size() - front_; }
  bool empty() const { return size() == 0; }
  ArrayValue& operator[](std::size_t index) { return values_[front_ + index]; }
  const ArrayValue& operator[](std::size_t index) const { return values_[front_ + index]; }
  Iterator begin() { return values_.begin() + front_; }
  Iterator end() { return values_.end(); }
  ConstIterator begin() const { return values_.begin() + front_; }
  ConstIterator end() const { return values_.end(); }
  const ArrayValue& front() const { return values_[front_]; }

  // The next element moves all of them to a larger place.
  bool isFull() const { return values_.size() == values_.capacity(); }
  void reserve(std::size_t count) { values_.reserve(front_ + count); }
  void clear() {
    values_.clear();
    front_ = 0;
  }
  void add(ArrayValue value) { values_.push_back(std::move(value)); }
  // At an index up to the size. Both this and `erase` move what lies on the shorter side.
  void insert(std::size_t index, ArrayValue value) {
    if (index >= (size() + 1) / 2) {
      values_.insert(begin() + static_cast<std::ptrdiff_t>(index), std::move(value));
      return;
    }
    if (front_ == 0) makeRoomInFront();
    --front_;
    std::move(begin() + 1, begin() + 1 + static_cast<std::ptrdiff_t>(index), begin());
    (*this)[index] = std::move(value);
  }
  // The first place becomes an empty one, until half of the memory is empty places.
  void erase(std::size_t index) {
    const auto place = begin() + static_cast<std::ptrdiff_t>(index);
    if (index > 0 && index >= size() / 2) {
      values_.erase(place);
      return;
    }
    std::move_backward(begin(), place, place + 1);
    values_[front_++] = Number(0);
    if (front_ <= values_.size() / 2) return;
    values_.erase(values_.begin(), begin());
    front_ = 0;
  }

 private:
  // Half as much again, so that the next ones need not move all.
  void makeRoomInFront() {
    const std::size_t room = size() / 2 + 1;
    std::vector<ArrayValue> wider;
    wider.reserve(room + size());
    for (std::size_t i = 0; i < room; ++i) wider.emplace_back(Number(0));
    std::move(begin(), end(), std::back_inserter(wider));
    values_ = std::move(wider);
    front_ = room;
  }

  std::vector<ArrayValue> values_;
  std::size_t front_ = 0;  // empty places before the first element
};

}  // namespace footlight
