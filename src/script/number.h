#pragma once

// A whole or a real number on its way between operands, sides of a test and arguments, so that no object need
// be made for it. It follows the rules of INTEGER and DOUBLE.

#include <cstdint>

namespace footlight {

class Number {
 public:
  constexpr Number() = default;  // none
  constexpr explicit Number(int whole) : kind_(Kind::whole), whole_(whole) {}
  constexpr explicit Number(double real) : kind_(Kind::real), real_(real) {}

  constexpr explicit operator bool() const { return kind_ != Kind::none; }
  constexpr bool isWhole() const { return kind_ == Kind::whole; }
  constexpr bool isReal() const { return kind_ == Kind::real; }
  // Only of a number of that kind.
  constexpr int whole() const { return whole_; }
  constexpr double real() const { return real_; }

 private:
  enum class Kind : std::uint8_t { none, whole, real };

  Kind kind_ = Kind::none;
  union {
    int whole_ = 0;
    double real_;
  };
};

}  // namespace footlight
