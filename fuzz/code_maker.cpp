#include "code_maker.h"

#include <algorithm>
#include <map>

#include "objects/all_types.h"

namespace footlight::fuzz {

namespace {

constexpr int kDeepest = 3;  // code, expressions and calls within each other

// The tables of all runners. The runners stay for good, so that no world has to make them.
const std::map<int, std::span<const Method>>& tables() {
  static const std::map<int, std::span<const Method>> made = [] {
    std::map<int, std::span<const Method>> result;
    installAllTypes();
    CMC_RunnerFactory::initialize();
    const auto add = [&result](int type) {
      const CMC_Runner* runner = CMC_RunnerFactory::getRunner(type);
      if (runner != nullptr) result[type] = runner->ownMethods();
    };
    add(type::kBuiltIns);
    for (const ScriptType* description : allTypes()) add(description->number);
    return result;
  }();
  return made;
}

// Statements of all kinds. A letter behind "%" stands for a piece, see kPieces.
constexpr const char* kStatements[] = {
    "%i^INC()",
    "%W",
    "%W",
    "%W",
    "%o",
    "%n^%k",
    "%i^INC()",
    "%i^SET(%a)",
    "%z^ADD(%a)",
    "@%b",
    "@IF(%t,%c)",
    "@IF(%t,%c,%c)",
    "@IF(%a,%x,%a,%c)",
    "@IF(%a,%x,%a,%c,%c)",
    "@WHILE(%q,%x,%a,%c)",
    "@LOOP(%c,%N,%N,1)",
    "@LOOP(%c,%N,%N,%N)",
    "@INT(\"LOCAL1\",%a)",
    "@STRING(\"LOCAL1\",%a)",
    "@BOOL(%a,%a)",
    "@DOUBLE(\"LOCAL1\",%a)",
    "@RUNONTIMER(%N,%N,%c)",
    "@RUNONTIMER(%N,%N,%c,%c,%a)",
    "@RETURN(%a)",
    "@BREAK()",
    "@ONEBREAK()",
    "@CONTINUE()",
    "*%z^%k",
    "*%h^%k",
    "*%e^%u",
    "THIS^%k",
    "$%d^%k",
    "%n_$%d^%k",
    "%n^$%d(%a)",
    "%R|%l^%u",
    "%R|%l^SET(%a)",
    "%P^RUN()",
    "%P^RUN(%a)",
    "%P^RUN(%a,%a)",
    "%P^RUNC(%a)",
    "%P^RUNLOOPED(%N,%N)",
    "%P^RUNLOOPED(0,3,1,%a)",
    "%P^BREAK()",
    "%a",
};

// What changes the world of objects.
constexpr const char* kActions[] = {
    "%i^INC()",
    "%i^SET(%a)",
    "%z^SET(%a)",
    "%n^ADDBEHAVIOUR(%s,%p)",
    "%n^ADDBEHAVIOUR(%s,%p,%a,%a)",
    "%n^REMOVEBEHAVIOUR(%s)",
    "%n^REMOVEBEHAVIOURFORCE(%s)",
    "%n^REMOVEALLBEHAVIOURS()",
    "%n^OVERIDESIGNALS(FALSE)",
    "%n^OVERIDESIGNALS(TRUE)",
    "%S^REMOVE(%q)",
    "%S^REMOVECLONES(%q,%N,%N)",
    "%S^RUNCLONES(%q,%N,%N,%c,%a)",
    "%n^CLONE()",
    "%n^CLONE(%N)",
    "%n^RESETCLONES()",
    "@CREATE(%w,%q)",
    "@CREATE(%w,\"NEW1\")",
    "%S^CREATEOBJECT(%w,%q)",
    "CNVLOADER^LOAD(%f)",
    "CNVLOADER^RELEASE(%f)",
    "EP1^GOTO(%g)",
    "EP1^NEXT()",
    "EP1^PREV()",
    "EP1^BACK()",
    "EP1^RESTART()",
    "GAME^GOTO(%g)",
    "GAME^RESTART()",
    "%n^SEND(\"GO\")",
    "%n^SEND(\"@ONCHANGED\")",
    "%n^SEND(\"@ONDONE\")",
    "%n^SEND(\"@ONINIT\")",
    "%n^SEND(\"@ONTICK\")",
    "%n^SEND(\"@ONCLICK\")",
    "%n^SEND(%a)",
    "%G^ADD(%q,%q)",
    "%G^ADD(%q)",
    "%n^ADDTOGROUP(\"%G\")",
    "%G^REMOVE(%q)",
    "%G^ADDCLONES(%q,%N,%N)",
    "%G^NEXT(%N)",
    "%S^GETOBJECTS(\"%G\",%w)",
    "%G^%r(%a)",
    "%G^%r()",
    "%C^NEW(\"%m\",%a)",
    "%C^NEW(\"%m\",%a,%a)",
    "%C^DELETE(\"%m\")",
    "%m^MOVE(%a)",
    "%m^MAKE(%a,%a)",
    "%m^GONE(\"%m\")",
    "%m^%k",
    "%m^ONLYBASE()",
    "%T^%y",
    "@RUNONTIMER(%N,%N,%c)",
    "@RUNONTIMER(%N,%N,%c,%c,%a)",
    "%S^PAUSE()",
    "%S^PAUSE(TRUE)",
    "%S^RESUME()",
    "%S^RESUME(FALSE)",
    "%S^RESUMEONLY(\"%G\",TRUE)",
    "GAME^RUNENV(%q,%p)",
    "GAME^RUN(%q,\"RUN\",%a)",
    "%S^RUN(%q,\"CLONE\")",
    "%I^%j",
    "%I^LOAD(%F)",
    "%I^SHOW()",
    "%I^HIDE()",
    "%K^CHECK(TRUE)",
    "%K^CHECK(FALSE)",
    "%K^BREAK()",
    "%K^ONE_BREAK()",
    "%P^RUN(%a)",
    "%P^RUNC()",
    "%P^BREAK()",
    "%P^DISABLE()",
    "%P^ENABLE()",
    "@INT(\"LOCAL1\",%a)",
    "@IF(%t,%c,%c)",
    "@LOOP(%c,0,3,1)",
    "THIS^%k",
    "%o",
    "@RETURN(%a)",
    "@BREAK()",
};

constexpr const char* kArguments[] = {"%N", "%N",  "%q",     "%n",          "%L",  "%e", "%o", "%i^GET()",
                                      "%{", "@%b", "$%d^%k", "%n^ADD($%d)", "&%n", "%F", "%v"};
constexpr const char* kValues[] = {"%N", "%n", "%L", "%i", "$%d", "%z"};
constexpr const char* kNumbers[] = {
    "0",          "1",           "2",     "3",  "5",   "7",    "-1",  "10",    "16",  "40",    "100",
    "2147483647", "-2147483648", "65535", "-5", "0.5", "-1.5", "1e9", "99999", "007", "1.2.3", "1000000"};
constexpr const char* kLiterals[] = {
    "\"\"",    "\"a\"",    "\"x y\"", "\"TRUE\"",   "\"$1\"",         "\"5\"",     "\"$1$2\"",
    "\"A|B\"", "\"N_0\"",  "\"[N]\"", "\"N'7\"",    "\"$COMMON\\X\"", "\"_I_\"",   "\"NO^SUCH\"",
    "\"{\"",   "\"ab,c\"", "\"N\"",   "\"INT1_1\"", "\"THIS\"",       "\"MADE1\"", "\"STRUCT1|A\"",
    "\"(\"",   "\"\xB9\"", "TRUE",    "FALSE"};
constexpr const char* kComparisons[] = {"_", "!_", "<>", "<", "<_", ">", ">_", "?", "=", ""};
constexpr const char* kMarks[] = {"'", "!'", "<'", ">'", "<", ">", "?", "&&", "||"};
constexpr const char* kOperators[] = {"+", "-", "*", "@", "%"};
constexpr const char* kTypeWords[] = {"INTEGER", "STRING", "BOOL", "DOUBLE", "BUTTON", "IMAGE",
                                      "ANIMO",   "SOUND",  "VGO",  "GROUP",  "TIMER"};
constexpr const char* kGroupWords[] = {"SET",  "INC",     "CLEAR", "ADD",     "CLONE", "SHOW",
                                       "HIDE", "GETNAME", "RUN",   "DISABLE", "SEND",  "REMOVEALLBEHAVIOURS"};
constexpr const char* kScenes[] = {"S1", "S2", "S3", "SOLO", "EP1", "EP2", "GAME", "NOSUCH"};
constexpr const char* kSoup[] = {"(",    ")",     "[",  "]",  "{",  "}",  ",",  ";",  "^",  "@",
                                 "*",    "&",     "$1", "$0", "|",  "\"", "_",  "'",  "!",  "<",
                                 ">",    "?",     "&&", "||", "+",  "-",  "%%", ".",  " ",  "THIS",
                                 "TRUE", "FALSE", "%n", "%n", "%k", "%k", "%N", "%b", "%o", "@%b"};

}  // namespace

std::span<const Method> methodsOf(int type) {
  const auto found = tables().find(type);
  return found == tables().end() ? std::span<const Method>() : found->second;
}

// Patterns

// clang-format off
const CodeMaker::Piece CodeMaker::kPieces[] = {
    {'n', &CodeMaker::name},            {'q', &CodeMaker::quotedName},   {'i', &CodeMaker::integer},
    {'z', &CodeMaker::textVariable},    {'P', &CodeMaker::behaviour},    {'p', &CodeMaker::quotedBehaviour},
    {'C', &CodeMaker::classes},         {'G', &CodeMaker::group},        {'T', &CodeMaker::timer},
    {'I', &CodeMaker::image},           {'S', &CodeMaker::scene},        {'R', &CodeMaker::structure},
    {'K', &CodeMaker::test},            {'m', &CodeMaker::instance},     {'h', &CodeMaker::computedName},
    {'N', &CodeMaker::number},          {'d', &CodeMaker::digit},        {'l', &CodeMaker::letter},
    {'L', &CodeMaker::literal},         {'v', &CodeMaker::value},        {'e', &CodeMaker::expression},
    {'t', &CodeMaker::condition},       {'x', &CodeMaker::comparison},   {'s', &CodeMaker::signal},
    {'w', &CodeMaker::typeWord},        {'g', &CodeMaker::sceneWord},    {'r', &CodeMaker::groupWord},
    {'f', &CodeMaker::definitionFile},  {'F', &CodeMaker::anyFile},      {'c', &CodeMaker::code},
    {'{', &CodeMaker::inlineCode},      {'a', &CodeMaker::argument},     {'o', &CodeMaker::wholeCall},
    {'k', &CodeMaker::anyCall},         {'b', &CodeMaker::builtInCall},  {'u', &CodeMaker::integerCall},
    {'j', &CodeMaker::imageCall},       {'y', &CodeMaker::timerCall},    {'W', &CodeMaker::callTwice},
};
// clang-format on

std::string CodeMaker::piece(char letter) {
  for (const Piece& piece : kPieces) {
    if (piece.letter == letter) return (this->*piece.make)();
  }
  return std::string(1, letter);
}

std::string CodeMaker::fill(std::string_view pattern) {
  std::string text;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '%' && i + 1 < pattern.size()) {
      text += piece(pattern[++i]);
    } else {
      text += pattern[i];
    }
  }
  return text;
}

// Pieces

std::string CodeMaker::nameOf(int type) {
  const std::size_t start = bytes_.below(names_.size());
  for (std::size_t i = 0; i < names_.size(); ++i) {
    const Named& candidate = names_[(start + i) % names_.size()];
    if (candidate.type == type) return candidate.name;
  }
  return "N";
}

std::string CodeMaker::number() { return bytes_.chance(96) ? bytes_.oneOf(kNumbers) : digit(); }

std::string CodeMaker::literal() { return bytes_.oneOf(kLiterals); }

std::string CodeMaker::value() { return fill(bytes_.oneOf(kValues)); }

std::string CodeMaker::comparison() { return bytes_.oneOf(kComparisons); }

std::string CodeMaker::typeWord() { return quoted(bytes_.oneOf(kTypeWords)); }

std::string CodeMaker::sceneWord() { return quoted(bytes_.oneOf(kScenes)); }

std::string CodeMaker::groupWord() { return bytes_.oneOf(kGroupWords); }

std::string CodeMaker::definitionFile() { return quoted(kFiles[bytes_.below(2)]); }

std::string CodeMaker::anyFile() { return quoted(bytes_.oneOf(kFiles)); }

std::string CodeMaker::computedName() {
  const std::string whole = name();
  const std::size_t half = whole.size() / 2;
  return "[" + quoted(whole.substr(0, half)) + "+" + quoted(whole.substr(half)) + "]";
}

std::string CodeMaker::expression() {
  std::string text = "[" + value();
  const std::size_t count = bytes_.below(4);
  for (std::size_t i = 0; i < count; ++i) {
    text += bytes_.oneOf(kOperators);
    text += bytes_.chance(48) ? argument() : value();
  }
  return text + "]";
}

std::string CodeMaker::condition() {
  std::string text = bytes_.chance(40) ? expression() : value();
  const std::size_t count = bytes_.below(3) + 1;
  for (std::size_t i = 0; i < count; ++i) {
    text += bytes_.oneOf(kMarks);
    text += bytes_.chance(40) ? argument() : value();
  }
  return bytes_.chance(200) ? quoted(text) : text;
}

std::string CodeMaker::signal() {
  const ScriptType* description = findType(named().type);
  std::string text = "ONSIGNAL";
  if (description != nullptr && !description->signals.empty()) text = bytes_.oneOf(description->signals).name;
  if (bytes_.chance(64)) text += "$" + number();
  return quoted(text);
}

std::string CodeMaker::inlineCode() {
  if (depth_ >= kDeepest) return "{N^INC();}";
  ++depth_;
  const std::string body = "{" + block(3) + "}";
  --depth_;
  return bytes_.chance(64) ? quoted(body) : body;
}

std::string CodeMaker::argument() {
  if (depth_ >= kDeepest) return value();
  ++depth_;
  const std::string text = fill(bytes_.oneOf(kArguments));
  --depth_;
  return text;
}

std::string CodeMaker::callOf(int type) {
  const auto own = methodsOf(type);
  const auto base = CMC_Runner::baseMethods();
  const std::size_t index = bytes_.below(own.size() + base.size());
  const Method& method = index < own.size() ? own[index] : base[index - own.size()];
  const std::size_t most = std::min<std::size_t>(method.most, method.least + std::size_t{3});
  std::size_t count = method.least + bytes_.below(most - method.least + 1);
  if (bytes_.chance(16)) count = bytes_.below(6);
  std::string text = method.name;
  for (std::size_t i = 0; i < count; ++i) text += (i == 0 ? "(" : ",") + argument();
  return text + (count == 0 ? "()" : ")");
}

std::string CodeMaker::wholeCall() {
  const Named& object = named();
  return object.name + "^" + callOf(object.type);
}

std::string CodeMaker::callTwice() {
  const std::string call = behaviour() + "^RUN(" + value() + ");";
  return call + action() + call;
}

// Whole

std::string CodeMaker::action() { return fill(bytes_.oneOf(kActions)) + ";"; }

std::string CodeMaker::statement() {
  return bytes_.chance(96) ? action() : fill(bytes_.oneOf(kStatements)) + ";";
}

std::string CodeMaker::block(std::size_t most) {
  const std::size_t count = bytes_.below(most) + 1;
  std::string text;
  for (std::size_t i = 0; i < count && !bytes_.isOver(); ++i) text += statement();
  return text;
}

std::string CodeMaker::soup(std::size_t most) {
  std::string text;
  while (!bytes_.isOver() && text.size() < most) text += fill(bytes_.oneOf(kSoup));
  return text + ";";
}

}  // namespace footlight::fuzz
