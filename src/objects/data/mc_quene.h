#pragma once

// FIFO and LIFO: a queue and a stack of values. They own their elements: whatever is pushed is copied, and
// what is no value is pushed as its text. They hold at most limits::kArrayElements; a push that would go over
// that does nothing.

#include "objects/data/array_items.h"

namespace footlight {

namespace type {
inline constexpr int kFifo = 2018;
inline constexpr int kLifo = 2019;
}  // namespace type

enum class QueneSignal { onEmpty = kFirstOwnSignal, count };

class CMC_Quene : public CMC_Object {
 public:
  // Empty; the type says at which end `pop` takes.
  CMC_Quene(CMC_ObjectsContainer* container, const CMElement* element, int type);
  static bool isTypeOf(int type) { return type == type::kFifo || type == type::kLifo; }

  int size() const { return static_cast<int>(items_.size()); }
  // Copies of all of them, or of none where there is no room.
  void push(std::span<const Ref<CMC_Variable>> values);
  // The next value; on an empty queue ONEMPTY is raised and there is none.
  Value pop();

  // With copies of the elements.
  std::unique_ptr<CMC_Object> copy() const override;

 private:
  CMC_Quene(const CMC_Quene& other);
  bool hasRoom(std::span<const Ref<CMC_Variable>> values) const;

  ArrayItems items_;
};

}  // namespace footlight
