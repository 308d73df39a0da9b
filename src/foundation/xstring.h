#pragma once

// CXString is the engine's text: 8-bit, code page 1250, zero-ended, owned, passed by value.
//
// Texts below 32 characters live inside the object, so that the short texts of scripts never allocate. The
// visible capacity follows the class's growth rule (see each operation); the memory behind it grows by
// halves, so that building a long text piece by piece stays cheap. A text may hold zero bytes only where its
// length was given. Positions outside a text are clamped to it; a range that ends before it starts is empty.

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace footlight {

class CXPoint;
class CXRect;

class CXString {
 public:
  static constexpr int kFirstCapacity = 32;

  CXString() { inline_[0] = '\0'; }
  CXString(const char* text);  // null gives the empty text
  CXString(std::string_view text);
  CXString(const std::string& text) : CXString(std::string_view(text)) {}
  CXString(const CXString& other);
  CXString(CXString&& other) noexcept;
  // A text of length 1 with the given capacity; the caller writes the character.
  explicit CXString(int capacity);
  ~CXString() { release(); }

  CXString& operator=(const CXString& other);
  CXString& operator=(CXString&& other) noexcept;
  CXString& operator=(const char* text);
  CXString& operator=(int value);     // decimal digits
  CXString& operator=(double value);  // up to 9 significant digits; Number formatting for scripts is toString

  const char* c_str() const { return buffer_; }
  char* data() { return buffer_; }
  int Length() const { return length_; }
  int Capacity() const { return capacity_; }
  bool IsString() const { return length_ > 0; }
  bool IsEmpty() const { return length_ == 0; }
  std::string_view view() const { return {buffer_, static_cast<std::size_t>(length_)}; }
  operator std::string_view() const { return view(); }
  std::string str() const { return std::string(view()); }

  // Appending fits while the lengths together stay below the capacity; else the capacity becomes the
  // sum + 32.
  CXString& operator+=(std::string_view text);
  CXString& operator+=(const CXString& text) { return *this += text.view(); }
  CXString& operator+=(const std::string& text) { return *this += std::string_view(text); }
  CXString& operator+=(const char* text) { return *this += std::string_view(text != nullptr ? text : ""); }
  // Fits while the length is below capacity - 2; else the capacity doubles.
  CXString& operator+=(char character);
  // Appends decimal digits; fits while the length is below capacity - 20; else the capacity doubles.
  CXString& operator+=(int value);

  // The first n characters.
  CXString Left(int n) const { return Mid(0, n); }
  // From position `start` up to position `end`.
  CXString Mid(int start, int end) const;
  // The tail from position `start`.
  CXString Right(int start) const { return Mid(start, length_); }
  // In place, or into `target`.
  void left(int n) { *this = Left(n); }
  void mid(int start, int end) { *this = Mid(start, end); }
  void right(int start) { *this = Right(start); }
  void left(int n, CXString* target) const { *target = Left(n); }
  void mid(int start, int end, CXString* target) const { *target = Mid(start, end); }
  void right(int start, CXString* target) const { *target = Right(start); }
  std::string_view slice(int start, int end) const;  // Mid without a copy

  // The character at i; -1 is the last one; 0 outside the text.
  char GetAt(int i) const;
  char lastChar() const { return GetAt(-1); }
  void SetAt(int i, char character);  // ignored outside the text

  // First position of the character at or behind `start`, or -1.
  int Find(char character, int start = 0) const;
  // Last position at or before `start` (-1: the end), or -1.
  int FindLast(char character, int start = -1) const;
  int FindSubString(std::string_view text, int start = 0) const;
  int indexOf(std::string_view text, int start) const { return FindSubString(text, start); }
  int findOneOf(std::string_view characters, int start) const;
  int getCount(char character) const;

  // In place: strip the character from both ends, the left, the right.
  CXString& AllTrim(char character = ' ') { return RTrim(character).LTrim(character); }
  CXString& LTrim(char character = ' ');
  CXString& RTrim(char character = ' ');

  friend bool operator==(const CXString& a, const CXString& b) { return a.view() == b.view(); }
  friend bool operator==(const CXString& a, std::string_view b) { return a.view() == b; }
  friend bool operator==(const CXString& a, const std::string& b) { return a.view() == b; }
  friend bool operator==(const CXString& a, const char* b) { return a.view() == std::string_view(b); }
  friend std::strong_ordering operator<=>(const CXString& a, const CXString& b) {
    return a.view() <=> b.view();
  }
  bool equals(std::string_view other) const { return view() == other; }
  bool equalsIgnoreCase(std::string_view other) const;  // letters of code page 1250
  bool startsWith(std::string_view prefix) const { return view().starts_with(prefix); }
  bool endsWith(std::string_view suffix) const { return view().ends_with(suffix); }

  // Every occurrence, into a new text. An empty `from` changes nothing.
  CXString replace(std::string_view from, std::string_view to) const;
  // The first occurrence from `start`, in place.
  void replaceOnce(std::string_view from, std::string_view to, int start = 0);
  void Replace(char from, char to);

  // A to Z and the nine Polish letters of code page 1250.
  CXString Upper() const;
  CXString Lower() const;
  bool IsUpper() const;  // every letter of the text is upper case
  bool IsLower() const;  // the opposite; an empty text counts as lower
  static char upper(char character);
  static char lower(char character);

  int toNumber() const;  // leading number, else 0; saturates
  double toDouble() const;
  bool isNumber() const { return toNumber() != 0; }  // so "0" is none
  bool toBool() const { return toBool(*this); }      // the word TRUE in any case
  static bool toBool(std::string_view text);
  static CXString toString(bool value) { return value ? "TRUE" : "FALSE"; }
  static CXString toString(int value);
  // Five decimals always; "0" for zero and for what rounds to no digits.
  static CXString toString(double value);

  // Pieces between separators, without empty ones.
  std::vector<CXString> toVector(std::string_view separators = ", \n\r") const;
  // The n-th word, from 0, between blanks, newlines and tabs; empty when there are fewer.
  CXString getWord(int n) const;
  // Removes each span from a `<` directly followed by `tag` through the next `>`.
  void removeTag(std::string_view tag);
  void FillWith(char character, int n);
  static CXString Format(const char* format, ...) __attribute__((format(printf, 1, 2)));

  // Numbers between points, bars, commas and blanks: x and y; left, top, right and bottom.
  CXPoint toPoint() const;
  CXRect toRect() const;

  // The file-name test of folder searches: this text holds the pattern, the argument is walked against it.
  // "*" and "*.*" pass everything; `?` passes one character, a closing `*` the rest.
  bool FilterFits(std::string_view mask) const;

 private:
  void release() {
    if (buffer_ != inline_) delete[] buffer_;
  }
  void assign(std::string_view text, int capacity);
  void grow(std::int64_t capacity);
  void take(CXString& other) noexcept;
  void takeDigits(const char* digits, int length);
  // The characters that fit into the memory there is.
  int room() const { return buffer_ == inline_ ? kFirstCapacity - 1 : allocated_; }

  char* buffer_ = inline_;
  int length_ = 0;
  int capacity_ = kFirstCapacity;
  int allocated_ = 0;  // of a buffer of its own, without the closing zero
  char inline_[kFirstCapacity];
};

inline CXString operator+(CXString a, std::string_view b) { return a += b; }
inline CXString operator+(CXString a, const CXString& b) { return a += b; }
inline CXString operator+(CXString a, const std::string& b) { return a += b; }
inline CXString operator+(CXString a, const char* b) { return a += b; }
inline CXString operator+(const char* a, const CXString& b) { return CXString(a) += b; }

}  // namespace footlight
