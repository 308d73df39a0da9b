#pragma once

// What CXVector is made of: a growable list of pointers to things that it does not own.
//
// The capacity is a visible number with a rule of its own: when the count stands above capacity times load
// factor after an addition, the capacity doubles. A capacity of 0 never grows. Memory follows the count, and
// taking items off the front costs no shifting, so that a list may serve as a queue.

#include <algorithm>
#include <vector>

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/xobject.h"

namespace footlight {

template <class T>
class PointerArray : public CXObject {
 public:
  static constexpr int kFirstCapacity = 101;
  static constexpr float kLoadFactor = 0.75F;

  explicit PointerArray(int capacity = kFirstCapacity, float loadFactor = kLoadFactor)
      : loadFactor_(loadFactor), capacity_(capacity) {}

  virtual void add(T* item) { append(item); }
  // Puts the first occurrence of `from` aside for `to`; false when there is none.
  virtual bool replace(T* from, T* to) {
    const int index = find(from);
    setAt(index, to);
    return index >= 0;
  }
  // Ignored outside the list.
  virtual void setAt(int index, T* item) {
    if (isInside(index)) items_[place(index)] = item;
  }
  // Shifts the items from `index` on up. Behind the end, the gap is filled with nulls.
  virtual void insertAt(T* item, int index) {
    if (index < 0 || index > limits::kArrayElements) {
      guardHit("array.insert");
      return;
    }
    while (size() < index) append(nullptr);
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(place(index)), item);
    growIfFull();
  }
  // The first occurrence; false when there is none.
  virtual bool remove(T* item) {
    const int index = find(item);
    removeAt(index);
    return index >= 0;
  }
  // Gives what stood there; null outside the list.
  virtual T* removeAt(int index) {
    if (!isInside(index)) return nullptr;
    T* const item = items_[place(index)];
    if (index > 0) {
      items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(place(index)));
    } else if (++first_ * 2 > items_.size()) {
      items_.erase(items_.begin(), items_.begin() + static_cast<std::ptrdiff_t>(first_));
      first_ = 0;
    }
    return item;
  }
  // The first index, or -1.
  virtual int find(const T* item) const {
    const auto found = std::find(begin(), end(), item);
    return found == end() ? -1 : static_cast<int>(found - begin());
  }
  virtual bool contains(const T* item) const { return find(item) >= 0; }
  // Empties the list and deletes nothing; the capacity stays.
  virtual void removeAll() {
    items_.clear();
    first_ = 0;
  }
  // Null outside the list.
  virtual T* operator[](int index) const { return isInside(index) ? items_[place(index)] : nullptr; }

  int size() const { return static_cast<int>(items_.size() - first_); }
  int getSize() const { return size(); }
  bool isEmpty() const { return size() == 0; }
  int Capacity() const { return capacity_; }
  float LoadFactor() const { return loadFactor_; }
  auto begin() const { return items_.begin() + static_cast<std::ptrdiff_t>(first_); }
  auto end() const { return items_.end(); }

 protected:
  virtual void doubleSize() {
    if (capacity_ <= limits::kArrayElements) capacity_ *= 2;
  }
  void append(T* item) {
    items_.push_back(item);
    growIfFull();
  }
  void appendAll(const PointerArray& other) {
    const std::vector<T*> items(other.begin(), other.end());  // the other may be this one
    for (T* item : items) append(item);
  }

 private:
  bool isInside(int index) const { return index >= 0 && index < size(); }
  std::size_t place(int index) const { return first_ + static_cast<std::size_t>(index); }
  void growIfFull() {
    if (static_cast<float>(size()) > static_cast<float>(capacity_) * loadFactor_) doubleSize();
  }

  float loadFactor_;
  int capacity_;
  std::vector<T*> items_;
  std::size_t first_ = 0;  // items before it have been taken off the front
};

}  // namespace footlight
