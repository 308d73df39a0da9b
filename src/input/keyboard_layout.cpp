#include "input/keyboard_layout.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace footlight::keys {

namespace {

struct Key {
  int scanCode;
  char character;
};

// Letters stand in rows of neighbouring scan codes.
struct KeyRow {
  int first;
  std::string_view letters;
};
constexpr KeyRow kRows[] = {{16, "qwertyuiop"}, {30, "asdfghjkl"}, {44, "zxcvbnm"}};

constexpr Key kOthers[] = {{2, '1'},  {3, '2'},  {4, '3'},  {5, '4'},  {6, '5'},  {7, '6'},
                           {8, '7'},  {9, '8'},  {10, '9'}, {11, '0'}, {12, '-'}, {13, '='},
                           {26, '('}, {27, ')'}, {51, ','}, {52, '.'}, {53, '/'}, {57, ' '},
                           {71, '7'}, {72, '8'}, {73, '9'}, {74, '-'}, {75, '4'}, {76, '5'},
                           {77, '6'}, {78, '+'}, {79, '1'}, {80, '2'}, {81, '3'}, {82, '0'}};

struct Change {
  int from;
  int to;
};
constexpr Change kShifted[] = {{',', '<'}, {'.', '>'}, {'/', '?'}, {'1', '!'}};
// With alt, in code page 1250.
constexpr Change kPolish[] = {{'A', 165}, {'a', 185}, {'C', 198}, {'c', 230}, {'E', 202}, {'e', 234},
                              {'L', 163}, {'l', 179}, {'N', 209}, {'n', 241}, {'O', 211}, {'o', 243},
                              {'S', 140}, {'s', 156}, {'X', 143}, {'x', 159}, {'Z', 175}, {'z', 191}};
constexpr Change kGerman[] = {{'Y', 'Z'}, {'Z', 'Y'}, {'y', 'z'}, {'z', 'y'}};

int changed(std::span<const Change> table, int character) {
  const auto row = std::find_if(table.begin(), table.end(),
                                [character](const Change& change) { return change.from == character; });
  return row == table.end() ? character : row->to;
}

class PolishLayout : public Layout {
 public:
  int translate(int character, bool /*shifted*/, bool alt) const override {
    return alt ? changed(kPolish, character) : character;
  }
  bool isLetter(int /*character*/) const override { return true; }
};

class GermanLayout : public Layout {
 public:
  int translate(int character, bool /*shifted*/, bool /*alt*/) const override {
    return changed(kGerman, character);
  }
  bool isLetter(int character) const override {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
  }
};

struct NamedKey {
  std::string_view name;
  std::array<int, 2> codes;  // the second is 0 where there is one only
};
constexpr NamedKey kNamed[] = {
    {"left", {203, 0}},  {"up", {200, 0}},    {"down", {208, 0}}, {"right", {205, 0}}, {"lshift", {42, 0}},
    {"rshift", {54, 0}}, {"shift", {42, 54}}, {"lctrl", {29, 0}}, {"rctrl", {157, 0}}, {"ctrl", {29, 157}},
    {"lalt", {56, 0}},   {"ralt", {184, 0}},  {"alt", {56, 184}}, {"space", {57, 0}},
};

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
  });
}

constexpr int kScanCodes = 256;

// Each scan code stands at its own place, so that a part of it is the list of one code.
constexpr std::array<int, kScanCodes> kEveryCode = [] {
  std::array<int, kScanCodes> codes{};
  for (int i = 0; i < kScanCodes; ++i) codes[static_cast<std::size_t>(i)] = i;
  return codes;
}();

}  // namespace

const Layout& Layout::of(int language) {
  static const PolishLayout polish;
  static const GermanLayout german;
  constexpr int kGermanLanguages[] = {2, 6};
  const bool isGerman = std::ranges::find(kGermanLanguages, language) != std::end(kGermanLanguages);
  return isGerman ? static_cast<const Layout&>(german) : polish;
}

int plainCharacter(int scanCode, bool shifted) {
  for (const KeyRow& row : kRows) {
    const int place = scanCode - row.first;
    if (place < 0 || place >= static_cast<int>(row.letters.size())) continue;
    const char letter = row.letters[static_cast<std::size_t>(place)];
    return shifted ? letter - 'a' + 'A' : letter;
  }
  const auto* key =
      std::ranges::find_if(kOthers, [scanCode](const Key& other) { return other.scanCode == scanCode; });
  return key != std::end(kOthers) ? key->character : kNoCharacter;
}

int shiftedCharacter(int character) { return changed(kShifted, character); }

int tranlateToChar(int scanCode) {
  constexpr int kLastDigit = 11;
  constexpr int kBlank = 57;
  const int character = plainCharacter(scanCode, true);
  const bool isLetter = character >= 'A' && character <= 'Z';
  const bool isDigit = character >= '0' && character <= '9' && scanCode <= kLastDigit;
  return isLetter || isDigit || scanCode == kBlank ? character : 0;
}

std::span<const int> scanCodesOf(std::string_view name) {
  for (const NamedKey& key : kNamed) {
    if (equalsIgnoreCase(key.name, name)) return std::span(key.codes).first(key.codes[1] != 0 ? 2 : 1);
  }
  if (name.size() != 1 || name[0] == ' ') return {};
  const int wanted = std::toupper(static_cast<unsigned char>(name[0]));
  for (int code = 1; code < kScanCodes; ++code) {
    if (tranlateToChar(code) == wanted)
      return std::span(kEveryCode).subspan(static_cast<std::size_t>(code), 1);
  }
  return {};
}

}  // namespace footlight::keys
