#pragma once

// The key of every look-up by name: a text and its hash. The hash decides the order of keys in a CHashtable,
// and so the order in which the engine walks named things; it must stay as it is.

#include <functional>

#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CStringHashCode : public CXObject {
 public:
  CStringHashCode() = default;
  explicit CStringHashCode(std::string_view text) { set(text); }

  // Takes another text; the memory is used again where it suffices.
  void set(std::string_view text) {
    text_.assign(text);
    hash_ = hashOf(text);
  }
  std::string_view getString() const { return text_; }

  std::uint32_t getHashcode() const override { return hash_; }
  std::size_t lookupHash() const override { return std::hash<std::string_view>()(text_); }
  // Exactly the same text.
  bool equals(const CXObject* other) const override {
    const auto* key = dynamic_cast<const CStringHashCode*>(other);
    return key != nullptr && hash_ == key->hash_ && text_ == key->text_;
  }
  CXString toString() const override { return text_; }

  // For each character at position i: 2 to the power of i mod 16, plus i + 1 times the character as
  // a signed value.
  static std::uint32_t hashOf(std::string_view text) {
    std::uint32_t hash = 0;
    for (std::uint32_t i = 0; i < text.size(); ++i) {
      const auto byte = static_cast<unsigned char>(text[i]);
      const std::uint32_t value = byte < 0x80 ? byte : byte - 0x100U;
      hash += (1U << (i % 16)) + (i + 1) * value;
    }
    return hash;
  }

 private:
  std::string text_;
  std::uint32_t hash_ = 0;
};

}  // namespace footlight
