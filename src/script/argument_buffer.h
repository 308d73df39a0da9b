#pragma once

// The arguments of one call while it is made ready: on the stack as a rule, since calls nest and most have
// few.

#include <array>
#include <span>
#include <vector>

#include "foundation/xobject.h"
#include "script/mc_object.h"

namespace footlight {

class ArgumentBuffer {
 public:
  explicit ArgumentBuffer(std::size_t count) {
    if (count > kInPlace) more_.reserve(count);
    isInPlace_ = count <= kInPlace;
  }

  // At most as many as were told.
  void add(Ref<CMC_Object> value) {
    if (isInPlace_) {
      inPlace_[count_++] = std::move(value);
    } else {
      more_.push_back(std::move(value));
    }
  }
  std::span<const Ref<CMC_Object>> all() const {
    return isInPlace_ ? std::span<const Ref<CMC_Object>>(inPlace_.data(), count_)
                      : std::span<const Ref<CMC_Object>>(more_);
  }

 private:
  static constexpr std::size_t kInPlace = 5;

  std::array<Ref<CMC_Object>, kInPlace> inPlace_;
  std::vector<Ref<CMC_Object>> more_;
  std::size_t count_ = 0;
  bool isInPlace_;
};

}  // namespace footlight
