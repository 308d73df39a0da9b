#include "foundation/xstring.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>

#include "foundation/diagnose.h"
#include "foundation/geometry.h"
#include "foundation/limits.h"
#include "foundation/string_tokenizer.h"

namespace footlight {

namespace {

struct LetterPair {
  unsigned char lower;
  unsigned char upper;
};
// The Polish letters of code page 1250.
constexpr LetterPair kPolishLetters[] = {{0x9C, 0x8C}, {0x9F, 0x8F}, {0xB3, 0xA3}, {0xB9, 0xA5}, {0xBF, 0xAF},
                                         {0xE6, 0xC6}, {0xEA, 0xCA}, {0xF1, 0xD1}, {0xF3, 0xD3}};

struct CaseTables {
  char upper[256];
  char lower[256];
  constexpr CaseTables() : upper(), lower() {
    for (int i = 0; i < 256; ++i) {
      upper[i] = lower[i] = static_cast<char>(i);
      if (i >= 'a' && i <= 'z') upper[i] = static_cast<char>(i - 'a' + 'A');
      if (i >= 'A' && i <= 'Z') lower[i] = static_cast<char>(i - 'A' + 'a');
    }
    for (const LetterPair pair : kPolishLetters) {
      upper[pair.lower] = static_cast<char>(pair.upper);
      lower[pair.upper] = static_cast<char>(pair.lower);
    }
  }
};
constexpr CaseTables kCase;

constexpr unsigned char byte(char character) { return static_cast<unsigned char>(character); }

constexpr int kLargestCapacity = (1 << 30) - 1;

int clampPosition(int position, int length) { return std::clamp(position, 0, length); }

int asPosition(std::size_t found) { return found == std::string_view::npos ? -1 : static_cast<int>(found); }

// The standard library's search takes the product of both lengths for texts of repeated pieces; this
// one is linear.
std::size_t findText(std::string_view text, std::string_view wanted, std::size_t start = 0) {
  if (start > text.size()) return std::string_view::npos;
  const void* found = memmem(text.data() + start, text.size() - start, wanted.data(), wanted.size());
  return found == nullptr ? std::string_view::npos
                          : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

}  // namespace

CXString::CXString(const char* text) : CXString(std::string_view(text != nullptr ? text : "")) {}

CXString::CXString(std::string_view text) {
  const int length = static_cast<int>(text.size());
  assign(text, length < kFirstCapacity ? kFirstCapacity : length + kFirstCapacity);
}

CXString::CXString(const CXString& other) { assign(other.view(), other.capacity_); }

CXString::CXString(CXString&& other) noexcept { take(other); }

CXString::CXString(int capacity) {
  assign({}, std::max(capacity, 2));
  length_ = 1;
  buffer_[0] = buffer_[1] = '\0';
}

CXString& CXString::operator=(const CXString& other) {
  if (this == &other) return *this;
  if (other.length_ < capacity_ && capacity_ == other.capacity_) {
    length_ = other.length_;
    std::memcpy(buffer_, other.buffer_, static_cast<std::size_t>(length_) + 1);
    return *this;
  }
  release();
  buffer_ = inline_;
  assign(other.view(), other.capacity_);
  return *this;
}

CXString& CXString::operator=(CXString&& other) noexcept {
  if (this == &other) return *this;
  release();
  buffer_ = inline_;
  take(other);
  return *this;
}

// Takes over another text, which becomes empty; the object holds no buffer yet.
void CXString::take(CXString& other) noexcept {
  length_ = other.length_;
  capacity_ = other.capacity_;
  if (other.buffer_ == other.inline_) {
    std::memcpy(inline_, other.inline_, static_cast<std::size_t>(length_) + 1);
  } else {
    buffer_ = other.buffer_;
    allocated_ = other.allocated_;
    other.buffer_ = other.inline_;
    other.capacity_ = kFirstCapacity;
  }
  other.length_ = 0;
  other.buffer_[0] = '\0';
}

CXString& CXString::operator=(const char* text) { return *this = CXString(text); }

CXString& CXString::operator=(int value) {
  char digits[16];
  takeDigits(digits, std::snprintf(digits, sizeof digits, "%d", value));
  return *this;
}

CXString& CXString::operator=(double value) {
  char digits[40];
  takeDigits(digits, std::snprintf(digits, sizeof digits, "%.9g", value));
  return *this;
}

void CXString::takeDigits(const char* digits, int length) {
  if (length + 1 >= capacity_) grow(length + kFirstCapacity);
  std::memcpy(buffer_, digits, static_cast<std::size_t>(length) + 1);
  length_ = length;
}

// Takes a text into a buffer of the capacity; the object holds no other buffer yet.
void CXString::assign(std::string_view text, int capacity) {
  capacity_ = capacity;
  if (capacity > kFirstCapacity) {
    buffer_ = new char[static_cast<std::size_t>(capacity) + 1];
    allocated_ = capacity;
  }
  length_ = static_cast<int>(text.size());
  if (!text.empty()) std::memcpy(buffer_, text.data(), text.size());
  buffer_[length_] = '\0';
}

void CXString::grow(std::int64_t capacity) {
  capacity_ = static_cast<int>(std::min<std::int64_t>(capacity, kLargestCapacity));
  if (capacity_ <= room()) return;
  const std::int64_t wanted = std::max<std::int64_t>(capacity_, std::int64_t{room()} * 3 / 2);
  const int allocated = static_cast<int>(std::min<std::int64_t>(wanted, kLargestCapacity));
  char* larger = new char[static_cast<std::size_t>(allocated) + 1];
  std::memcpy(larger, buffer_, static_cast<std::size_t>(length_) + 1);
  release();
  buffer_ = larger;
  allocated_ = allocated;
}

CXString& CXString::operator+=(std::string_view text) {
  if (text.empty()) return *this;
  const std::int64_t sum = length_ + static_cast<std::int64_t>(text.size());
  if (sum + kFirstCapacity > kLargestCapacity) {
    guardHit("string.length");
    return *this;
  }
  // The text may be a part of this one, which is still there after growing.
  const std::less<const char*> before;
  const bool isPart = !before(text.data(), buffer_) && before(text.data(), buffer_ + length_);
  const std::ptrdiff_t offset = isPart ? text.data() - buffer_ : 0;
  if (sum >= capacity_) grow(sum + kFirstCapacity);
  std::memmove(buffer_ + length_, isPart ? buffer_ + offset : text.data(), text.size());
  length_ = static_cast<int>(sum);
  buffer_[length_] = '\0';
  return *this;
}

CXString& CXString::operator+=(char character) {
  if (length_ >= capacity_ - 2) grow(std::int64_t{capacity_} * 2);
  if (length_ >= room()) {
    guardHit("string.length");
    return *this;
  }
  buffer_[length_++] = character;
  buffer_[length_] = '\0';
  return *this;
}

CXString& CXString::operator+=(int value) {
  if (length_ >= capacity_ - 20) grow(std::max<std::int64_t>(std::int64_t{capacity_} * 2, length_ + 21));
  char digits[16];
  return *this += std::string_view(
             digits, static_cast<std::size_t>(std::snprintf(digits, sizeof digits, "%d", value)));
}

std::string_view CXString::slice(int start, int end) const {
  start = clampPosition(start, length_);
  end = clampPosition(end, length_);
  if (end <= start) return {};
  return {buffer_ + start, static_cast<std::size_t>(end - start)};
}

CXString CXString::Mid(int start, int end) const { return CXString(slice(start, end)); }

char CXString::GetAt(int i) const {
  if (i == -1) i = length_ - 1;
  return i < 0 || i >= length_ ? '\0' : buffer_[i];
}

void CXString::SetAt(int i, char character) {
  if (i >= 0 && i < length_) buffer_[i] = character;
}

int CXString::Find(char character, int start) const {
  return asPosition(view().find(character, static_cast<std::size_t>(clampPosition(start, length_))));
}

int CXString::FindLast(char character, int start) const {
  if (start < -1) return -1;
  return asPosition(
      view().rfind(character, start == -1 ? std::string_view::npos : static_cast<std::size_t>(start)));
}

int CXString::FindSubString(std::string_view text, int start) const {
  return asPosition(findText(view(), text, static_cast<std::size_t>(clampPosition(start, length_))));
}

int CXString::findOneOf(std::string_view characters, int start) const {
  return asPosition(
      view().find_first_of(characters, static_cast<std::size_t>(clampPosition(start, length_))));
}

int CXString::getCount(char character) const {
  return static_cast<int>(std::count(buffer_, buffer_ + length_, character));
}

CXString& CXString::LTrim(char character) {
  int start = 0;
  while (start < length_ && buffer_[start] == character) ++start;
  if (start > 0) {
    length_ -= start;
    std::memmove(buffer_, buffer_ + start, static_cast<std::size_t>(length_) + 1);
  }
  return *this;
}

CXString& CXString::RTrim(char character) {
  while (length_ > 0 && buffer_[length_ - 1] == character) --length_;
  buffer_[length_] = '\0';
  return *this;
}

bool CXString::equalsIgnoreCase(std::string_view other) const {
  return std::equal(buffer_, buffer_ + length_, other.begin(), other.end(),
                    [](char a, char b) { return a == b || lower(a) == lower(b); });
}

CXString CXString::replace(std::string_view from, std::string_view to) const {
  if (from.empty()) return *this;
  std::string result;
  std::string_view rest = view();
  for (auto found = findText(rest, from); found != std::string_view::npos; found = findText(rest, from)) {
    result.append(rest, 0, found).append(to);
    rest.remove_prefix(found + from.size());
    if (to.size() > from.size() && static_cast<std::int64_t>(result.size()) > limits::kStringBytes) {
      guardHit("string.replace");
      return *this;
    }
  }
  return result.append(rest);
}

void CXString::replaceOnce(std::string_view from, std::string_view to, int start) {
  const int found = from.empty() ? -1 : FindSubString(from, start);
  if (found < 0) return;
  CXString result(slice(0, found));
  result += to;
  result += slice(found + static_cast<int>(from.size()), length_);
  *this = std::move(result);
}

void CXString::Replace(char from, char to) { std::replace(buffer_, buffer_ + length_, from, to); }

char CXString::upper(char character) { return kCase.upper[byte(character)]; }

char CXString::lower(char character) { return kCase.lower[byte(character)]; }

CXString CXString::Upper() const {
  CXString result = *this;
  std::transform(result.buffer_, result.buffer_ + length_, result.buffer_, upper);
  return result;
}

CXString CXString::Lower() const {
  CXString result = *this;
  std::transform(result.buffer_, result.buffer_ + length_, result.buffer_, lower);
  return result;
}

bool CXString::IsUpper() const {
  return length_ > 0 &&
         std::all_of(buffer_, buffer_ + length_, [](char c) { return lower(c) != c && upper(c) == c; });
}

bool CXString::IsLower() const { return !IsUpper(); }

int CXString::toNumber() const {
  const char* p = buffer_;
  while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
  const bool negative = *p == '-';
  if (*p == '-' || *p == '+') ++p;
  constexpr std::int64_t kCeiling = std::int64_t{1} << 32;
  std::int64_t value = 0;
  for (; *p >= '0' && *p <= '9'; ++p) value = std::min(value * 10 + (*p - '0'), kCeiling);
  if (negative) value = -value;
  return static_cast<int>(
      std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

double CXString::toDouble() const {
  // strtod also knows hexadecimal, infinity and not-a-number, which texts of scripts never mean.
  const char* p = buffer_;
  while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
  const char* digits = *p == '-' || *p == '+' ? p + 1 : p;
  const bool starts = (*digits >= '0' && *digits <= '9') || *digits == '.';
  if (!starts || (digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X'))) return 0.0;
  const double value = std::strtod(p, nullptr);
  return std::isfinite(value) ? value : std::copysign(std::numeric_limits<double>::max(), value);
}

bool CXString::toBool(std::string_view text) {
  constexpr std::string_view kTrue = "TRUE";
  return std::equal(text.begin(), text.end(), kTrue.begin(), kTrue.end(),
                    [](char a, char b) { return upper(a) == b; });
}

CXString CXString::toString(int value) {
  CXString result;
  char* end = std::to_chars(result.inline_, result.inline_ + kFirstCapacity - 1, value).ptr;
  *end = '\0';
  result.length_ = static_cast<int>(end - result.inline_);
  return result;
}

CXString CXString::toString(double value) {
  if (value == 0.0 || std::isnan(value)) return "0";
  char digits[352];  // the largest double has 309 digits before the point
  *std::to_chars(digits, digits + sizeof digits - 1, value, std::chars_format::fixed, 5).ptr = '\0';
  if (std::strcmp(digits, "0.00000") == 0 || std::strcmp(digits, "-0.00000") == 0) return "0";
  return digits;
}

std::vector<CXString> CXString::toVector(std::string_view separators) const {
  std::vector<CXString> pieces;
  CStringTokenizer tokenizer(*this, separators);
  while (tokenizer.hasMoreTokens()) pieces.push_back(tokenizer.nextToken());
  return pieces;
}

CXString CXString::getWord(int n) const {
  CStringTokenizer tokenizer(*this, " \n\t");
  for (; n > 0 && tokenizer.hasMoreTokens(); --n) tokenizer.nextToken();
  return n == 0 ? tokenizer.nextToken() : CXString();
}

void CXString::removeTag(std::string_view tag) {
  const std::string opening = std::string("<").append(tag);
  std::string result;
  std::string_view rest = view();
  for (auto start = findText(rest, opening); start != std::string_view::npos;
       start = findText(rest, opening)) {
    const auto end = rest.find('>', start);
    if (end == std::string_view::npos) break;
    result.append(rest, 0, start);
    rest.remove_prefix(end + 1);
  }
  *this = result.append(rest);
}

void CXString::FillWith(char character, int n) {
  *this = CXString(std::string(static_cast<std::size_t>(std::max(n, 0)), character));
}

CXString CXString::Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  va_list measured;
  va_copy(measured, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, measured);
  va_end(measured);
  std::string text(static_cast<std::size_t>(std::max(length, 0)) + 1, '\0');
  std::vsnprintf(text.data(), text.size(), format, arguments);
  va_end(arguments);
  text.pop_back();
  return CXString(text);
}

namespace {

int nextNumber(CStringTokenizer& tokenizer) { return tokenizer.nextToken().toNumber(); }

constexpr std::string_view kGeometrySeparators = ".|, ";

}  // namespace

CXPoint CXString::toPoint() const {
  CStringTokenizer tokenizer(*this, kGeometrySeparators);
  const int x = nextNumber(tokenizer);
  const int y = nextNumber(tokenizer);
  return {x, y};
}

CXRect CXString::toRect() const {
  CStringTokenizer tokenizer(*this, kGeometrySeparators);
  const int left = nextNumber(tokenizer);
  const int top = nextNumber(tokenizer);
  const int right = nextNumber(tokenizer);
  const int bottom = nextNumber(tokenizer);
  return {left, top, right, bottom};
}

bool CXString::FilterFits(std::string_view mask) const {
  if (mask == "*" || mask == "*.*") return true;
  const std::string_view pattern = view();
  for (std::size_t i = 0; i < mask.size(); ++i) {
    if (i >= pattern.size()) return false;
    if (pattern[i] == '*' && i + 1 == pattern.size()) return true;
    if (pattern[i] != '?' && pattern[i] != mask[i]) return false;
  }
  return pattern.size() == mask.size() || (pattern.size() == mask.size() + 1 && pattern.back() == '*');
}

}  // namespace footlight
