#include "foundation/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace footlight::code_page {

namespace {

// The characters of the bytes 0x80 to 0xFF.
constexpr std::array<char16_t, 128> kUpperHalf = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021, 0x0088, 0x2030, 0x0160, 0x2039, 0x015A,
    0x0164, 0x017D, 0x0179, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B, 0x00B0, 0x00B1, 0x02DB, 0x0142,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C, 0x0154,
    0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD,
    0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA,
    0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4,
    0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9};

using Back = std::pair<char16_t, unsigned char>;

std::array<Back, 128> makeBackTable() {
  std::array<Back, 128> table{};
  for (std::size_t i = 0; i < table.size(); ++i)
    table[i] = {kUpperHalf[i], static_cast<unsigned char>(0x80 + i)};
  std::sort(table.begin(), table.end());
  return table;
}

std::optional<char> byteOf(char32_t character) {
  static const std::array<Back, 128> table = makeBackTable();
  if (character < 0x80) return static_cast<char>(character);
  const auto found =
      std::lower_bound(table.begin(), table.end(), character,
                       [](const Back& entry, char32_t wanted) { return entry.first < wanted; });
  if (found == table.end() || found->first != character) return std::nullopt;
  return static_cast<char>(found->second);
}

// Takes one character of one to three bytes off the text; longer ones are in no table of ours.
std::optional<char32_t> takeCharacter(std::string_view& text) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byteAt(0);
  const std::size_t length = first < 0x80                    ? 1
                             : first >= 0xC2 && first < 0xE0 ? 2
                             : (first & 0xF0) == 0xE0        ? 3
                                                             : 0;
  if (length == 0 || text.size() < length) return std::nullopt;
  char32_t character = length == 1 ? first : length == 2 ? first & 0x1F : first & 0x0F;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0) != 0x80) return std::nullopt;
    character = character << 6 | (byteAt(i) & 0x3F);
  }
  if (length == 3 && character < 0x800) return std::nullopt;
  text.remove_prefix(length);
  return character;
}

struct FoldTable {
  std::array<char, 256> upper{};
  constexpr FoldTable() {
    for (int i = 0; i < 256; ++i) upper[static_cast<std::size_t>(i)] = static_cast<char>(i);
    const auto pair = [this](int lowerByte, int upperByte) {
      upper[static_cast<std::size_t>(lowerByte)] = static_cast<char>(upperByte);
    };
    for (int i = 'a'; i <= 'z'; ++i) pair(i, i - 0x20);
    for (const int i : {0x9A, 0x9C, 0x9D, 0x9E, 0x9F, 0xB3, 0xBA, 0xBF}) pair(i, i - 0x10);
    pair(0xB9, 0xA5);
    pair(0xBE, 0xBC);
    for (int i = 0xE0; i <= 0xFE; ++i) {
      if (i != 0xF7) pair(i, i - 0x20);
    }
  }
};
constexpr FoldTable kFold;

}  // namespace

std::string toUtf8(std::string_view text) {
  std::string result;
  result.reserve(text.size() + text.size() / 4);
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    const char32_t code = byte < 0x80 ? byte : kUpperHalf[byte - 0x80U];
    if (code < 0x80) {
      result += character;
      continue;
    }
    if (code < 0x800) {
      result += static_cast<char>(0xC0 | code >> 6);
    } else {
      result += static_cast<char>(0xE0 | code >> 12);
      result += static_cast<char>(0x80 | (code >> 6 & 0x3F));
    }
    result += static_cast<char>(0x80 | (code & 0x3F));
  }
  return result;
}

std::optional<std::string> fromUtf8(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const std::optional<char32_t> character = takeCharacter(text);
    const std::optional<char> byte = character ? byteOf(*character) : std::nullopt;
    if (!byte) return std::nullopt;
    result += *byte;
  }
  return result;
}

char foldCase(char character) { return kFold.upper[static_cast<unsigned char>(character)]; }

std::string foldCase(std::string_view text) {
  std::string result(text);
  for (char& character : result) character = foldCase(character);
  return result;
}

}  // namespace footlight::code_page
