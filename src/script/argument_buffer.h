#pragma once

// The arguments of one call while it is made ready: on the stack as a rule, since calls nest and
// most have few.

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <span>

#include "script/value.h"

namespace footlight {

class ArgumentBuffer {
 public:
  using Argument = Value;

  explicit ArgumentBuffer(std::size_t most) {
    if (most <= kInPlace) return;
    heap_ = std::make_unique<std::byte[]>(most * sizeof(Argument));
    bytes_ = heap_.get();
  }
  ~ArgumentBuffer() { std::destroy_n(begin(), count_); }
  ArgumentBuffer(const ArgumentBuffer&) = delete;
  ArgumentBuffer& operator=(const ArgumentBuffer&) = delete;

  // At most as many as were told.
  void add(Argument value) { new (bytes_ + count_++ * sizeof(Argument)) Argument(std::move(value)); }
  std::span<const Argument> all() const { return {begin(), count_}; }

 private:
  static constexpr std::size_t kInPlace = 6;

  Argument* begin() const { return std::launder(reinterpret_cast<Argument*>(bytes_)); }

  alignas(Argument) std::array<std::byte, kInPlace * sizeof(Argument)> inPlace_;
  std::unique_ptr<std::byte[]> heap_;
  std::byte* bytes_ = inPlace_.data();
  std::size_t count_ = 0;
};

}  // namespace footlight
