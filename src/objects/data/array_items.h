#pragma once

// The elements of an ARRAY in one piece of memory, with room in front as well as behind: scripts use arrays
// as queues, and a million elements must not move for each that goes at the front.

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

  void reserve(std::size_t count) { values_.reserve(front_ + count); }
  void clear() {
    values_.clear();
    front_ = 0;
  }
  void add(ArrayValue value) { values_.push_back(std::move(value)); }
  // At an index up to the size.
  void insert(std::size_t index, ArrayValue value) {
    if (index == 0 && front_ > 0) {
      values_[--front_] = std::move(value);
    } else {
      values_.insert(begin() + static_cast<std::ptrdiff_t>(index), std::move(value));
    }
  }
  // The first one leaves its place empty, until half of the memory is empty places.
  void erase(std::size_t index) {
    if (index > 0) {
      values_.erase(begin() + static_cast<std::ptrdiff_t>(index));
      return;
    }
    values_[front_++] = Number(0);
    if (front_ <= values_.size() / 2) return;
    values_.erase(values_.begin(), begin());
    front_ = 0;
  }

 private:
  std::vector<ArrayValue> values_;
  std::size_t front_ = 0;  // empty places before the first element
};

}  // namespace footlight
