#pragma once

// Every type of script object in one table: its number, its words, the word that a definition writes in TYPE
// and the pass of the build in which such an element is made, its signals in index order and its definition
// properties. Objects, documentation, the checker for authors and the tests of completeness all read this
// table.

#include <span>
#include <string_view>

namespace footlight {

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
inline constexpr int kMouse = 100;
inline constexpr int kKeyboard = 101;
inline constexpr int kRandom = 102;
inline constexpr int kCanvasObserver = 103;
inline constexpr int kApplication = 1000;
inline constexpr int kEpisode = 1001;
inline constexpr int kScene = 1002;
inline constexpr int kAnimo = 2000;
inline constexpr int kButton = 2001;
inline constexpr int kFont = 2002;
inline constexpr int kSequence = 2004;
inline constexpr int kSound = 2005;
inline constexpr int kText = 2006;
inline constexpr int kTimer = 2007;
inline constexpr int kImage = 2008;
inline constexpr int kEditBox = 2009;
inline constexpr int kNetPeer = 2010;
inline constexpr int kNetServer = 2011;
inline constexpr int kNetClient = 2012;
inline constexpr int kDialog = 2013;
inline constexpr int kFilter = 2014;
inline constexpr int kStaticFilter = 2015;
inline constexpr int kVector = 2016;
inline constexpr int kPath = 2017;
inline constexpr int kFifo = 2018;
inline constexpr int kLifo = 2019;
inline constexpr int kCanvas = 2020;
inline constexpr int kPattern = 2021;
inline constexpr int kScroll = 2022;
inline constexpr int kJoystick = 2023;
inline constexpr int kMovie = 2024;
inline constexpr int kGrBuffer = 2026;
inline constexpr int kGroup = 3000;
inline constexpr int kArray = 3001;
inline constexpr int kStructure = 3002;
inline constexpr int kDatabase = 3003;
inline constexpr int kClass = 3004;
inline constexpr int kVirtualGraphicsObject = 3005;
inline constexpr int kMultiArray = 3006;
inline constexpr int kSystem = 11000;
inline constexpr int kCnvLoader = 12000;

}  // namespace type

struct TypeDescription {
  int number;
  const char* idWord;          // for getTypeId; null where there is none
  const char* stringWord;      // for typeToString; null where the digits of the number stand
  const char* definitionWord;  // of the property TYPE; null where no element makes such an object
  int pass;                    // 1 to 6 of the build; 0 where no element makes such an object
  std::span<const char* const> signals;
  std::span<const char* const> properties;  // beside TYPE and the signals
};

std::span<const TypeDescription> allTypes();
// Null for a number that no type has.
const TypeDescription* findType(int number);
// By the word of the property TYPE, compared exactly; null for an unknown word.
const TypeDescription* findTypeByDefinition(std::string_view word);
// The name in the type's list of which this one is a form: what stands before "^", with one exception.
std::string_view plainSignal(int type, std::string_view name);
// The number of an exact getTypeId word, -1 for an unknown one.
int typeNumberOf(std::string_view idWord);

}  // namespace footlight
