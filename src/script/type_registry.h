#pragma once

// All types of script objects by number and by word. Each type is told by one constant, a ScriptType, at
// the end of its own source; the program installs the list of them once, before the first game.
// Everything that depends on a type's kind reads its constant: the objects, `footlight --vocabulary`, the
// checker for authors.

#include <memory>
#include <span>
#include <string_view>

#include "script/type_words.h"

namespace footlight {

class CMC_ObjectsContainer;
class CMC_Runner;
class CMElement;
class CXString;

// The numbers of the types that the core itself knows. Every other type's number stands beside its class.
namespace type {

inline constexpr int kBuiltIns = 0;  // the statements behind "@"
inline constexpr int kInteger = 1;
inline constexpr int kString = 2;
inline constexpr int kBool = 3;
inline constexpr int kDouble = 4;
inline constexpr int kVariable = 5;  // the generic word for the four above
inline constexpr int kCondition = 10;
inline constexpr int kComplexCondition = 11;
inline constexpr int kExpression = 12;
inline constexpr int kBehaviour = 13;
inline constexpr int kApplication = 1000;
inline constexpr int kEpisode = 1001;
inline constexpr int kScene = 1002;
inline constexpr int kGroup = 3000;
inline constexpr int kStructure = 3002;
inline constexpr int kClass = 3004;

}  // namespace type

struct ScriptType {
  // Makes an object of the type from its element, or bare, of that name; the caller owns it.
  using Maker = CMC_Object* (*)(CMC_ObjectsContainer* container, const CMElement* element);
  using BareMaker = CMC_Object* (*)(CMC_ObjectsContainer* container, const CXString& name);
  using RunnerMaker = std::unique_ptr<CMC_Runner> (*)(std::span<const Method> methods);

  int number;
  const char* idWord = nullptr;          // for getTypeId; null where there is none
  const char* stringWord = nullptr;      // for typeToString; null where the digits of the number stand
  const char* definitionWord = nullptr;  // of the property TYPE; null where no element makes such an object
  const char* otherWord = nullptr;       // a second word of that kind
  const char* meaning = "";              // one line for authors
  int pass = 0;                          // 1 to 6 of the build; 0 where no element makes such an object
  bool isOnceAChain = false;             // a further element binds its signals to the object that there is
  bool isCallable = true;                // scripts can call its objects
  std::span<const Signal> signals = {};
  std::span<const Property> properties =
      {};                                // beside TYPE and the signals; of an empty list any may be meant
  std::span<const Method> methods = {};  // beside those of every object
  Maker make = nullptr;                  // null: a CMC_PlainObject
  BareMaker makeBare = nullptr;          // null where scripts make no bare object of it
  RunnerMaker makeRunner = nullptr;      // null: a CMC_Runner
};

// The list of the whole program; it replaces the one before. The types stay the caller's and must live on.
void installTypes(std::span<const ScriptType* const> types);

std::span<const ScriptType* const> allTypes();
// Null for a number that no type has.
const ScriptType* findType(int number);
// By a word of the property TYPE, compared exactly; null for an unknown word.
const ScriptType* findTypeByDefinition(std::string_view word);
// By an exact getTypeId word; null for an unknown one.
const ScriptType* findTypeByWord(std::string_view idWord);
// The number of an exact getTypeId word, -1 for an unknown one.
int typeNumberOf(std::string_view idWord);
// The name in the type's list of which this one is a form: what stands before "^", but for signals
// with another form.
std::string_view plainSignal(int type, std::string_view name);

// The object for an element of a type that definitions can name. The caller owns it.
CMC_Object* makeObject(CMC_ObjectsContainer* container, const CMElement* element, const ScriptType& type);
// A bare object of that name, or null where the type has none (reported). The caller owns it.
CMC_Object* makeBareObject(CMC_ObjectsContainer* container, const CXString& word, const CXString& name);

// What a ScriptType names as `make` for a class whose objects are made like this.
template <class T>
CMC_Object* makeFrom(CMC_ObjectsContainer* container, const CMElement* element) {
  return new T(container, element);
}
template <class T>
CMC_Object* makeBareFrom(CMC_ObjectsContainer* container, const CXString& name) {
  auto made = std::make_unique<T>(container);
  made->setName(name);
  return made.release();
}
template <class T>
std::unique_ptr<CMC_Runner> makeRunnerOf(std::span<const Method> methods) {
  return std::make_unique<T>(methods);
}

}  // namespace footlight
