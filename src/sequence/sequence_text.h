#pragma once

// The lines of a sequence file. Words stand between blanks, equals signs and colons, in whatever mixture. A
// line declares an element, NAME=ELEMENT, or says something of one, ELEMENT:KEY=VALUES; all words are
// compared exactly. What begins with "#" is a comment.

#include <cstdint>
#include <string_view>

#include "foundation/string_tokenizer.h"

namespace footlight {

enum class SequenceKey : std::uint8_t {
  type,
  fileName,
  event,
  show,
  hide,
  mode,
  sequenceEvent,
  animation,
  sound,
  starting,
  ending,
  prefix,
  add,
  sequence,
  wait,
};

struct SequenceKeyWord {
  std::string_view word;
  SequenceKey key;
};

inline constexpr SequenceKeyWord kSequenceKeys[] = {
    {"TYPE", SequenceKey::type},         {"FILENAME", SequenceKey::fileName},
    {"EVENT", SequenceKey::event},       {"SHOW", SequenceKey::show},
    {"HIDE", SequenceKey::hide},         {"MODE", SequenceKey::mode},
    {"ADD", SequenceKey::add},           {"SEQEVENT", SequenceKey::sequenceEvent},
    {"WAIT", SequenceKey::wait},         {"ANIMOFN", SequenceKey::animation},
    {"WAVFN", SequenceKey::sound},       {"STARTING", SequenceKey::starting},
    {"ENDING", SequenceKey::ending},     {"PREFIX", SequenceKey::prefix},
    {"SEQUENCE", SequenceKey::sequence},
};

// The key of a word; false when none has it.
constexpr bool findSequenceKey(std::string_view word, SequenceKey* key) {
  for (const SequenceKeyWord& row : kSequenceKeys) {
    if (row.word != word) continue;
    *key = row.key;
    return true;
  }
  return false;
}

// The parent of an element that names none.
inline constexpr const char* kUsualParent = "ROOT";
// The word of the lines that declare elements.
inline constexpr std::string_view kDeclaration = "NAME";

// Gives the words of a line one by one, empty behind the last one.
class SequenceLine {
 public:
  explicit SequenceLine(std::string_view line) : rest_(line.starts_with('#') ? std::string_view() : line) {}
  std::string_view next() { return takeToken(rest_, " =\n:"); }

 private:
  std::string_view rest_;
};

}  // namespace footlight
