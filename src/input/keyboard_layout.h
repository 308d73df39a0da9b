#pragma once

// What keys mean: their characters on a plain keyboard, what languages change about them, and the names that
// scripts have for them.

#include <optional>
#include <span>
#include <string_view>

namespace footlight::keys {

inline constexpr int kTab = 15;
inline constexpr int kLeftShift = 42;
inline constexpr int kRightShift = 54;
inline constexpr int kLeftAlt = 56;
inline constexpr int kRightAlt = 184;
inline constexpr int kNoCharacter = 255;

// A language's changes to characters, which are of code page 1250.
class Layout {
 public:
  virtual ~Layout() = default;
  virtual int translate(int character, bool shifted, bool alt) const = 0;
  // Whether the character may be told at all.
  virtual bool isLetter(int character) const = 0;
  // By the number of the language.
  static const Layout& of(int language);
};

// The character of a scan code with or without shift, before a language changes it; kNoCharacter for none.
int plainCharacter(int scanCode, bool shifted);
// What shift makes of a character that is no letter; other characters as they are.
int shiftedCharacter(int character);
// The capital letter, digit or blank that the key bears on a plain layout; 0 for any other.
int tranlateToChar(int scanCode);
// The scan codes that the name of a key stands for, one of which must be down: words in any case, a letter or
// a digit. Empty for any other name.
std::span<const int> scanCodesOf(std::string_view name);

}  // namespace footlight::keys
