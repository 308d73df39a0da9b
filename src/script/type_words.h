#pragma once

// The rows in which a type of script object is told: its signals, the properties of its definition and its
// methods, each with a line for authors. They are plain constants; objects, the checker, the vocabulary and
// the reference read the same rows.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace footlight {

class Call;
class CMC_Object;
class Number;
class Result;
class Value;

// Rows that several types share, and some of one type's own, in this order or the other.
template <class Row, std::size_t N, std::size_t M>
consteval std::array<Row, N + M> joined(const std::array<Row, N>& first, const std::array<Row, M>& second) {
  std::array<Row, N + M> all{};
  for (std::size_t i = 0; i < N; ++i) all[i] = first[i];
  for (std::size_t i = 0; i < M; ++i) all[N + i] = second[i];
  return all;
}

// Signals

struct Signal {
  const char* name;
  const char* meaning;  // when it comes, and its longer forms: a signal ONX may come as ONX^WORD
  // A name that forms of the signal begin with in place of its own; null as a rule.
  const char* otherForm = nullptr;
};

// The places that the first signals of every type have.
inline constexpr int kOnInit = 0;
inline constexpr int kOnDone = 1;
inline constexpr int kFirstOwnSignal = 3;

inline constexpr std::array<Signal, kFirstOwnSignal> kSignalsOfAll = {{
    {"ONINIT", "The object is there, with all others of its file."},
    {"ONDONE", "The object goes."},
    {"ONSIGNAL", "SEND was called; as ONSIGNAL^WORD with the word that was sent."},
}};

// One signal of a type, named by a place in the type's enum.
template <class E>
struct SignalRow {
  E signal;
  const char* name;
  const char* meaning;
  const char* otherForm = nullptr;
};

// The signals of a type in index order, those of every type in front. The enum begins with kFirstOwnSignal
// and ends with `count`; rows in another order than the enum's, or a row too few, do not compile.
template <class E, std::size_t N>
consteval std::array<Signal, N + kFirstOwnSignal> signalTable(const SignalRow<E> (&rows)[N]) {
  std::array<Signal, N> own{};
  for (std::size_t i = 0; i < N; ++i) {
    if (static_cast<std::size_t>(rows[i].signal) != i + kFirstOwnSignal)
      throw "a signal stands at another place than in its enum";
    own[i] = {rows[i].name, rows[i].meaning, rows[i].otherForm};
  }
  if (static_cast<std::size_t>(E::count) != N + kFirstOwnSignal) throw "a signal of the enum has no row";
  return joined(kSignalsOfAll, own);
}

// The place of a signal in its type's list, from whatever type's enum.
struct SignalIndex {
  template <class E>
  requires std::is_enum_v<E>
  constexpr SignalIndex(E signal) : value(static_cast<int>(signal)) {}
  int value;
};

// Properties

// How the value of a property is read.
enum class PropertyKind : std::uint8_t {
  text,
  integer,
  real,
  boolean,
  name,       // of another object
  file,       // a file's name
  code,       // statements in braces
  rectangle,  // left, top, right, bottom
  list,       // words with commas between them
};
constexpr const char* wordOf(PropertyKind kind) {
  constexpr const char* kWords[] = {"text", "int",  "real",      "bool", "name",
                                    "file", "code", "rectangle", "list"};
  return kWords[static_cast<std::size_t>(kind)];
}

struct Property {
  const char* name;
  PropertyKind kind;
  const char* byDefault;  // what holds without the property; empty for nothing
  const char* meaning;
};

// Methods

// One argument of a method as its row tells it.
struct Argument {
  std::string_view name;
  std::string_view kind;
  bool isOptional = false;
  bool isRepeated = false;  // it may come any number of times
};

// Reads "x:int, y:int, [relative:bool], [more:text...] -> bool": the arguments in their order, in brackets
// those that may be missing, then the kind of the result if the method gives one.
class SignatureReader {
 public:
  constexpr explicit SignatureReader(std::string_view signature) : rest_(signature) {
    const std::size_t arrow = rest_.find("->");
    if (arrow == std::string_view::npos) return;
    result_ = trimmed(rest_.substr(arrow + 2));
    rest_ = trimmed(rest_.substr(0, arrow));
  }

  // Empty for none.
  constexpr std::string_view result() const { return result_; }
  // False behind the last one.
  constexpr bool next(Argument* argument) {
    if (rest_.empty()) return false;
    const std::size_t comma = rest_.find(',');
    std::string_view piece = trimmed(rest_.substr(0, comma));
    rest_ = comma == std::string_view::npos ? std::string_view() : trimmed(rest_.substr(comma + 1));
    *argument = {};
    argument->isOptional = piece.starts_with('[') && piece.ends_with(']');
    if (argument->isOptional) piece = piece.substr(1, piece.size() - 2);
    argument->isRepeated = piece.ends_with("...");
    if (argument->isRepeated) piece.remove_suffix(3);
    const std::size_t colon = piece.find(':');
    argument->name = piece.substr(0, colon);
    argument->kind = colon == std::string_view::npos ? std::string_view() : piece.substr(colon + 1);
    return true;
  }

 private:
  static constexpr std::string_view trimmed(std::string_view text) {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
  }

  std::string_view rest_;
  std::string_view result_;
};

// What an argument or a result can be.
inline constexpr std::string_view kArgumentKinds[] = {
    "int",     // a whole number
    "real",    // a number with a fraction
    "text",    //
    "bool",    // TRUE or FALSE
    "value",   // any of these four
    "name",    // of an object
    "code",    // a BEHAVIOUR, or statements in braces
    "signal",  // with what follows its "^", which is written "$" here
    "event",   // of an animation, by its name or its number
    "file",    // a file's name
    "type",    // the word of a type
};

using MethodFunction = Result (*)(CMC_Object& object, Call& call);
// The same for one number in place of all arguments, for an object that nobody need pin. False, with nothing
// done, where the usual function must be called. `result` is null where nobody looks at it.
using NumberFunction = bool (*)(CMC_Object& object, Number argument, Value* result);

// One row of a type's methods. How many arguments it takes follows from its signature.
struct Method {
  static constexpr std::uint8_t kAny = 255;  // no upper bound of arguments

  int number;
  const char* name;
  const char* signature;
  MethodFunction function;
  const char* meaning;
  NumberFunction numberFunction;  // null where there is none
  std::uint8_t least = 0;
  std::uint8_t most = 0;

  consteval Method(int itsNumber, const char* itsName, const char* itsSignature, MethodFunction itsFunction,
                   const char* itsMeaning, NumberFunction itsNumberFunction = nullptr)
      : number(itsNumber),
        name(itsName),
        signature(itsSignature),
        function(itsFunction),
        meaning(itsMeaning),
        numberFunction(itsNumberFunction) {
    SignatureReader reader(signature);
    if (!reader.result().empty()) checkKind(reader.result());
    Argument argument;
    while (reader.next(&argument)) {
      if (argument.name.empty()) throw "an argument needs a name";
      checkKind(argument.kind);
      if (most == kAny) throw "nothing follows an argument that repeats";
      if (!argument.isOptional && least != most)
        throw "an argument that must be there follows one that need not";
      if (!argument.isOptional) ++least;
      most = argument.isRepeated ? kAny : static_cast<std::uint8_t>(most + 1);
    }
  }

 private:
  static consteval void checkKind(std::string_view kind) {
    for (const std::string_view known : kArgumentKinds) {
      if (kind == known) return;
    }
    throw "no kind of argument has this word";
  }
};

}  // namespace footlight
