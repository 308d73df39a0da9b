#pragma once

// The engine's tables of types and methods, asked the way a checker asks. A type whose own methods or
// properties the tables do not hold yet may have any.

#include <functional>
#include <string_view>

#include "script/mc_runner.h"
#include "script/type_registry.h"

namespace footlight::check {

// Whether there is such a method, and the fewest arguments that do.
struct Answer {
  enum class Kind { no, yes, mayBe };
  Kind kind = Kind::no;
  int least = 0;
};

// Of the type with this number; the methods of every object are among those of each type. Words that a type
// hands on (to members of a group, to code of an instance) are not known here.
Answer methodOf(int type, std::string_view name);
// Of whatever type.
Answer methodOfAny(std::string_view name);
// True when the tables hold the type's own methods.
bool hasMethods(int type);
void eachMethodOf(int type, const std::function<void(const char*)>& function);

// The description of a level of the game by the word of its TYPE; null for another word.
const ScriptType* findLevelType(std::string_view word);
// The signal of the type that a property or an argument names, with or without a suffix behind "^";
// null for none.
const char* findSignal(const ScriptType& type, std::string_view name);
bool hasProperty(const ScriptType& type, std::string_view name);
// Whether a test of types can hold for this word.
bool isTypeText(std::string_view word);

// Whether the engine takes the word between the sides of a test.
bool isComparison(std::string_view word);
// Whether it takes the word of the property OPERATOR of an element of this type. The engine itself is asked:
// it reports a word that it does not know.
bool isOperator(int type, std::string_view word);

}  // namespace footlight::check
