#pragma once

// ARRAY: an ordered list of values of the four types. It owns its elements: whatever is added is copied, and
// what is no value is added as its text. A marker walks through the list.
//
// Indexes count from 0; one outside of the list means no element, and the operation does nothing. An array
// holds at most limits::kArrayElements; an operation that would go over that does nothing.

#include "objects/data/array_items.h"

namespace footlight {

class CWindow;

namespace type {
inline constexpr int kArray = 3001;
}

enum class ArraySignal { onChanged = kFirstOwnSignal, count };

class CMC_Array : public CMC_Object, public CMC_ValueList {
 public:
  CMC_Array(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kArray; }

  int size() const { return static_cast<int>(items_.size()); }
  bool isIn(int index) const { return index >= 0 && index < size(); }
  // The value of an element; none outside of the list.
  Value get(int index) const { return isIn(index) ? items_[place(index)].get() : Value(); }
  // The same as a pooled variable; null outside of the list.
  Ref<CMC_Variable> at(int index) const;
  const ArrayItems& items() const { return items_; }
  // True when that many more elements have room.
  bool hasRoom(std::int64_t count) const;
  // The memory that all elements take, and whether so many copies of a value would fit into the game's.
  std::int64_t bytes() const;
  static bool isInBudget(std::int64_t count, const CMC_Variable& value);

  // Append or insert a copy; false when nothing was added. `insertAt` takes the size as an index too.
  bool add(CMC_Variable* value) override;
  bool add(Number value) {
    if (!hasRoom(1) || !mayGrow()) return false;
    items_.add(value);
    return true;
  }
  bool insertAt(int index, CMC_Variable* value);
  // Puts a copy in the place of an element.
  bool changeAt(int index, CMC_Variable* value);
  // Puts the outcome of an operation in the place of an element; false outside of the list and for null.
  bool operate(int index, CMC_Variable* operand, Operation operation);
  // Puts the zero of its type there.
  void clearAt(int index);
  void removeAt(int index);
  void removeAll() { items_.clear(); }
  bool swap(int a, int b);
  // The first or the last element that equals the value; -1 for none.
  int find(CMC_Variable* value) const;
  int reverseFind(CMC_Variable* value) const;
  // By `compare` of the elements, each inserted in turn before the first greater one; equal ones stay in
  // their order, descending too.
  void sort(bool ascending);
  // Moves all elements by one place; the one that falls off comes in at the other end.
  void rotateLeft();
  void rotateRight();

  // -1 for before the first element.
  int getMarker() const { return marker_; }
  void setMarker(int marker);
  // Moves the marker, around the ends of the list, and gives the element there; none for an empty list.
  Value step(std::int64_t by);

  void setSendOnChange(bool on) { sendOnChange_ = on; }
  bool isSendOnChange() const { return sendOnChange_; }
  // Signals a change of that index, which need not be one of the list.
  void changed(int index);
  // The same for each element in turn.
  void allChanged();

  // The elements with their types, in a file of the game. `load` replaces all elements; it takes what a
  // damaged file gives up to the damage. `save` leaves a file that cannot be written as it was.
  void load(const CXString& name);
  void save(const CXString& name) const;

  CMC_ValueList* getValueList() override { return this; }
  // Whether changes are signalled; the elements come from files or scripts.
  void serialize(CXArchive& archive) override;
  // The texts of the elements with commas between; empty when that would be longer than a text may be.
  CXString toString() const override;
  std::unique_ptr<CMC_Object> copy() const override;

 private:
  CMC_Array(const CMC_Array& other);
  CWindow* window() const;
  static std::size_t place(int index) { return static_cast<std::size_t>(index); }
  // False when the next element would need more memory than there is.
  bool mayGrow() const { return !items_.isFull() || isMemoryFor(items_.size()); }
  static bool isMemoryFor(std::size_t count);
  bool insert(int index, ArrayValue value);
  // True where sorting need not insert one by one: all of one type, and each equal to itself.
  bool hasCommonOrder() const;
  void sortMixed(bool ascending);
  template <class Key>
  void sortBy(bool ascending, Key key);

  ArrayItems items_;
  int marker_ = -1;
  bool sendOnChange_ = false;
};

}  // namespace footlight
