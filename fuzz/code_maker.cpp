#include "code_maker.h"

#include <algorithm>
#include <map>

#include "script/type_table.h"

namespace footlight::fuzz {

namespace {

constexpr int kDeepest = 3;  // code, expressions and calls within each other

// The tables of all runners. The runners stay for good, so that no world has to make them.
const std::map<int, std::span<const Method>>& tables() {
  static const std::map<int, std::span<const Method>> made = [] {
    std::map<int, std::span<const Method>> result;
    CMC_RunnerFactory::initialize();
    const auto add = [&result](int type) {
      const CMC_Runner* runner = CMC_RunnerFactory::getRunner(type);
      if (runner != nullptr) result[type] = runner->ownMethods();
    };
    add(type::kBuiltIns);
    for (const TypeDescription& description : allTypes()) add(description.number);
    return result;
  }();
  return made;
}

const Method& methodAt(InputBytes& bytes, int type) {
  const auto own = methodsOf(type);
  const auto base = CMC_Runner::baseMethods();
  const std::size_t index = bytes.below(own.size() + base.size());
  return index < own.size() ? own[index] : base[index - own.size()];
}

constexpr const char* kNumbers[] = {
    "0",          "1",           "2",     "3",  "5",   "7",    "-1",  "10",    "16",  "40",    "100",
    "2147483647", "-2147483648", "65535", "-5", "0.5", "-1.5", "1e9", "99999", "007", "1.2.3", "1000000"};
constexpr const char* kTexts[] = {"\"\"",          "\"a\"",          "\"x y\"",    "\"TRUE\"",    "\"$1\"",
                                  "\"5\"",         "\"$1$2\"",       "\"A|B\"",    "\"N_0\"",     "\"[N]\"",
                                  "\"N'7\"",       "\"$COMMON\\X\"", "\"_I_\"",    "\"NO^SUCH\"", "\"{\"",
                                  "\"ab,c\"",      "\"N\"",          "\"INT1_1\"", "\"THIS\"",    "\"MADE1\"",
                                  "\"STRUCT1|A\"", "\"(\"",          "\"\xB9\""};
constexpr const char* kComparisons[] = {"_", "!_", "<>", "<", "<_", ">", ">_", "?", "=", ""};
constexpr const char* kMarks[] = {"'", "!'", "<'", ">'", "<", ">", "?", "&&", "||"};
constexpr const char* kOperators[] = {"+", "-", "*", "@", "%"};
constexpr const char* kTypeWords[] = {"INTEGER", "STRING", "BOOL", "DOUBLE",    "BUTTON", "IMAGE",
                                      "ANIMO",   "SOUND",  "VGO",  "BEHAVIOUR", "GROUP",  "TIMER"};
constexpr const char* kGroupWords[] = {"SET",  "INC",     "CLEAR", "ADD",     "CLONE", "SHOW",
                                       "HIDE", "GETNAME", "RUN",   "DISABLE", "SEND",  "REMOVEALLBEHAVIOURS"};
constexpr const char* kScenes[] = {"\"S1\"",  "\"S2\"",  "\"S3\"",   "\"SOLO\"",
                                   "\"EP1\"", "\"EP2\"", "\"GAME\"", "\"NOSUCH\""};
constexpr const char* kPlain[] = {"(",  ")",  "[",  "]", "{",  "}", ",", ";",    "^",    "@",    "*",
                                  "&",  "$1", "$0", "|", "\"", "_", "'", "!",    "<",    ">",    "?",
                                  "&&", "||", "+",  "-", "%",  ".", " ", "THIS", "TRUE", "FALSE"};

}  // namespace

std::span<const Method> methodsOf(int type) {
  const auto found = tables().find(type);
  return found == tables().end() ? std::span<const Method>() : found->second;
}

// Pieces

std::string CodeMaker::name() { return names_[bytes_.below(names_.size())].name; }

std::string CodeMaker::nameOf(int type) {
  const std::size_t start = bytes_.below(names_.size());
  for (std::size_t i = 0; i < names_.size(); ++i) {
    const Named& named = names_[(start + i) % names_.size()];
    if (named.type == type) return named.name;
  }
  return "N";
}

std::string CodeMaker::number() {
  if (bytes_.chance(96)) return kNumbers[bytes_.below(std::size(kNumbers))];
  return std::to_string(static_cast<int>(bytes_.below(9)));
}

std::string CodeMaker::word() {
  return std::string("\"") + kTypeWords[bytes_.below(std::size(kTypeWords))] + "\"";
}

std::string CodeMaker::quoted() { return "\"" + name() + "\""; }

std::string CodeMaker::value() {
  switch (bytes_.below(6)) {
    case 0:
      return number();
    case 1:
      return name();
    case 2:
      return kTexts[bytes_.below(std::size(kTexts))];
    case 3:
      return nameOf(type::kInteger);
    case 4:
      return "$" + std::to_string(bytes_.below(10));
    default:
      return nameOf(type::kString);
  }
}

std::string CodeMaker::expression() {
  std::string text = "[" + value();
  const std::size_t count = bytes_.below(4);
  for (std::size_t i = 0; i < count; ++i) {
    text += kOperators[bytes_.below(std::size(kOperators))];
    text += depth_ < kDeepest && bytes_.chance(48) ? argument() : value();
  }
  return text + "]";
}

std::string CodeMaker::condition() {
  std::string text = bytes_.chance(40) ? expression() : value();
  const std::size_t count = bytes_.below(3) + 1;
  for (std::size_t i = 0; i < count; ++i) {
    text += kMarks[bytes_.below(std::size(kMarks))];
    text += depth_ < kDeepest && bytes_.chance(40) ? argument() : value();
  }
  return bytes_.chance(200) ? "\"" + text + "\"" : text;
}

std::string CodeMaker::signal() {
  const TypeDescription* description = findType(names_[bytes_.below(names_.size())].type);
  std::string text = "ONSIGNAL";
  if (description != nullptr && !description->signals.empty())
    text = description->signals[bytes_.below(description->signals.size())];
  if (bytes_.chance(64)) text += "$" + number();
  return "\"" + text + "\"";
}

std::string CodeMaker::inlineCode() {
  if (depth_ >= kDeepest) return "{N^INC();}";
  ++depth_;
  const std::string body = "{" + block(3) + "}";
  --depth_;
  return bytes_.chance(64) ? "\"" + body + "\"" : body;
}

// Where a statement takes code: a procedure by name or code as it stands.
std::string CodeMaker::code() {
  return bytes_.chance(96) ? "\"" + nameOf(type::kBehaviour) + "\"" : inlineCode();
}

std::string CodeMaker::argument() {
  if (depth_ >= kDeepest) return value();
  ++depth_;
  std::string text;
  switch (bytes_.below(12)) {
    case 0:
    case 1:
      text = number();
      break;
    case 2:
      text = quoted();
      break;
    case 3:
      text = name();
      break;
    case 4:
      text = kTexts[bytes_.below(std::size(kTexts))];
      break;
    case 5:
      text = expression();
      break;
    case 6:
      text = call();
      break;
    case 7:
      text = inlineCode();
      break;
    case 8:
      text = builtIn();
      break;
    case 9:
      text = "&" + name();
      break;
    case 10:
      text = "\"" + std::string(kFiles[bytes_.below(std::size(kFiles))]) + "\"";
      break;
    default:
      text = value();
  }
  --depth_;
  return text;
}

std::string CodeMaker::arguments(const Method& method) {
  const std::size_t least = method.least;
  const std::size_t most = std::min<std::size_t>(method.most, least + 3);
  std::size_t count = least + bytes_.below(most - least + 1);
  if (bytes_.chance(16)) count = bytes_.below(6);
  std::string text = "(";
  for (std::size_t i = 0; i < count; ++i) text += (i > 0 ? "," : "") + argument();
  return text + ")";
}

// Statements; without their semicolons

std::string CodeMaker::call() {
  const Named& named = names_[bytes_.below(names_.size())];
  const Method& method = methodAt(bytes_, named.type);
  return named.name + "^" + method.name + arguments(method);
}

// A method of another type.
std::string CodeMaker::strayCall() {
  const Method& method = methodAt(bytes_, names_[bytes_.below(names_.size())].type);
  return name() + "^" + method.name + arguments(method);
}

std::string CodeMaker::ifShort() {
  std::string text = "@IF(" + condition() + "," + code();
  if (bytes_.chance(128)) text += "," + code();
  return text + ")";
}

std::string CodeMaker::ifLong() {
  std::string text = "@IF(" + argument() + "," + kComparisons[bytes_.below(std::size(kComparisons))] + "," +
                     argument() + "," + code();
  if (bytes_.chance(128)) text += "," + code();
  return text + ")";
}

std::string CodeMaker::whileLoop() {
  return "@WHILE(" + quoted() + "," + kComparisons[bytes_.below(std::size(kComparisons))] + "," + argument() +
         "," + code() + ")";
}

std::string CodeMaker::loop() {
  return "@LOOP(" + code() + "," + number() + "," + number() + "," + (bytes_.chance(200) ? "1" : number()) +
         ")";
}

std::string CodeMaker::declaration() {
  constexpr const char* kWords[] = {"INT", "STRING", "BOOL", "DOUBLE"};
  const char* type = kWords[bytes_.below(std::size(kWords))];
  const std::string local = bytes_.chance(200) ? "\"LOCAL1\"" : argument();
  return std::string("@") + type + "(" + local + "," + argument() + ")";
}

std::string CodeMaker::builtIn() {
  const auto own = methodsOf(type::kBuiltIns);
  const Method& method = own[bytes_.below(own.size())];
  return std::string("@") + method.name + arguments(method);
}

std::string CodeMaker::onTimer() {
  std::string text = "@RUNONTIMER(" + number() + "," + number() + "," + code();
  if (bytes_.chance(128)) text += "," + code();
  while (bytes_.chance(64)) text += "," + argument();
  return text + ")";
}

std::string CodeMaker::indirect() {
  const Method& method = methodAt(bytes_, type::kInteger);
  return "*" + nameOf(type::kString) + "^" + method.name + arguments(method);
}

std::string CodeMaker::computed() {
  const Named& named = names_[bytes_.below(names_.size())];
  const Method& method = methodAt(bytes_, named.type);
  const std::string half = named.name.substr(0, named.name.size() / 2);
  const std::string source =
      bytes_.chance(128) ? "[\"" + half + "\"+\"" + named.name.substr(half.size()) + "\"]" : expression();
  return "*" + source + "^" + method.name + arguments(method);
}

std::string CodeMaker::ofCaller() {
  const Method& method = methodAt(bytes_, names_[bytes_.below(names_.size())].type);
  return std::string("THIS^") + method.name + arguments(method);
}

std::string CodeMaker::dynamic() {
  const Named& named = names_[bytes_.below(names_.size())];
  const Method& method = methodAt(bytes_, named.type);
  const std::string mark = "$" + std::to_string(bytes_.below(4));
  std::string text = bytes_.chance(128) ? mark : named.name + "_" + mark;
  if (bytes_.chance(32)) return text + "^" + mark + arguments(method);
  return text + "^" + method.name + arguments(method);
}

std::string CodeMaker::field() {
  const Method& method = methodAt(bytes_, type::kInteger);
  return nameOf(type::kStructure) + "|" + static_cast<char>('A' + bytes_.below(5)) + "^" + method.name +
         arguments(method);
}

std::string CodeMaker::runCode() {
  constexpr const char* kWords[] = {"RUN", "RUNC", "RUNLOOPED(0,3,1", "RUNLOOPED(1,4"};
  std::string text = nameOf(type::kBehaviour) + "^" + kWords[bytes_.below(std::size(kWords))];
  const bool isOpen = text.find('(') != std::string::npos;
  text += isOpen ? "" : "(";
  bool isFirst = !isOpen;
  while (bytes_.chance(96)) {
    text += (isFirst ? "" : ",") + argument();
    isFirst = false;
  }
  return text + ")";
}

std::string CodeMaker::stop() {
  switch (bytes_.below(5)) {
    case 0:
      return "@RETURN(" + argument() + ")";
    case 1:
      return "@BREAK()";
    case 2:
      return "@ONEBREAK()";
    case 3:
      return "@CONTINUE()";
    default:
      return nameOf(type::kBehaviour) + "^BREAK()";
  }
}

std::string CodeMaker::plain() { return argument(); }

// Actions

std::string CodeMaker::bind() {
  std::string text = name() + "^ADDBEHAVIOUR(" + signal() + ",\"" + nameOf(type::kBehaviour) + "\"";
  while (bytes_.chance(64)) text += "," + argument();
  return text + ")";
}

std::string CodeMaker::unbind() {
  switch (bytes_.below(4)) {
    case 0:
      return name() + "^REMOVEBEHAVIOUR(" + signal() + ")";
    case 1:
      return name() + "^REMOVEBEHAVIOURFORCE(" + signal() + ")";
    case 2:
      return name() + "^REMOVEALLBEHAVIOURS()";
    default:
      return name() + "^OVERIDESIGNALS(" + (bytes_.chance(128) ? "TRUE" : "FALSE") + ")";
  }
}

std::string CodeMaker::remove() { return nameOf(type::kScene) + "^REMOVE(" + quoted() + ")"; }

std::string CodeMaker::clone() {
  if (bytes_.chance(64)) return name() + "^RESETCLONES()";
  return name() + "^CLONE(" + number() + ")";
}

std::string CodeMaker::removeClones() {
  return nameOf(type::kScene) + "^REMOVECLONES(" + quoted() + "," + number() + "," + number() + ")";
}

std::string CodeMaker::runClones() {
  return nameOf(type::kScene) + "^RUNCLONES(" + quoted() + "," + number() + "," + number() + "," + code() +
         "," + argument() + ")";
}

std::string CodeMaker::load() { return "CNVLOADER^LOAD(\"" + std::string(kFiles[bytes_.below(2)]) + "\")"; }

std::string CodeMaker::release() {
  return "CNVLOADER^RELEASE(\"" + std::string(kFiles[bytes_.below(2)]) + "\")";
}

std::string CodeMaker::goTo() {
  switch (bytes_.below(5)) {
    case 0:
      return "EP1^GOTO(" + std::string(kScenes[bytes_.below(std::size(kScenes))]) + ")";
    case 1:
      return "EP1^NEXT()";
    case 2:
      return "EP1^PREV()";
    case 3:
      return "EP1^BACK()";
    default:
      return "GAME^GOTO(" + std::string(kScenes[bytes_.below(std::size(kScenes))]) + ")";
  }
}

std::string CodeMaker::restart() { return bytes_.chance(128) ? "GAME^RESTART()" : "EP1^RESTART()"; }

std::string CodeMaker::send() {
  constexpr const char* kWords[] = {"\"GO\"",      "\"@ONCHANGED\"", "\"@ONDONE\"",
                                    "\"@ONINIT\"", "\"@ONTICK\"",    "\"@ONCLICK\""};
  return name() + "^SEND(" + (bytes_.chance(180) ? kWords[bytes_.below(std::size(kWords))] : argument()) +
         ")";
}

std::string CodeMaker::group() {
  const std::string group = nameOf(type::kGroup);
  switch (bytes_.below(6)) {
    case 0:
      return group + "^ADD(" + quoted() + "," + quoted() + ")";
    case 1:
      return name() + "^ADDTOGROUP(\"" + group + "\")";
    case 2:
      return group + "^REMOVE(" + quoted() + ")";
    case 3:
      return group + "^ADDCLONES(" + quoted() + "," + number() + "," + number() + ")";
    case 4:
      return nameOf(type::kScene) + "^GETOBJECTS(\"" + group + "\"," + word() + ")";
    default:
      return group + "^NEXT(" + number() + ")";
  }
}

std::string CodeMaker::groupCall() {
  return nameOf(type::kGroup) + "^" + kGroupWords[bytes_.below(std::size(kGroupWords))] + "(" + argument() +
         ")";
}

std::string CodeMaker::newInstance() {
  std::string text = nameOf(type::kClass) + "^NEW(" + (bytes_.chance(128) ? "\"MADE1\"" : "\"MADE2\"");
  while (bytes_.chance(96)) text += "," + argument();
  return text + ")";
}

std::string CodeMaker::deleteInstance() {
  return nameOf(type::kClass) + "^DELETE(" + (bytes_.chance(128) ? "\"MADE1\"" : "\"MADE2\"") + ")";
}

std::string CodeMaker::instanceCall() {
  constexpr const char* kWords[] = {"MOVE", "MAKE", "GONE", "ONLYBASE", "NOSUCH", "DESTRUCTOR"};
  return std::string(bytes_.chance(128) ? "MADE1^" : "MADE2^") + kWords[bytes_.below(std::size(kWords))] +
         "(" + argument() + "," + argument() + ")";
}

std::string CodeMaker::timer() {
  const auto own = methodsOf(type::kTimer);
  const Method& method = own[bytes_.below(own.size())];
  return nameOf(type::kTimer) + "^" + method.name + "(" + number() + ")";
}

std::string CodeMaker::change() {
  return nameOf(type::kInteger) + (bytes_.chance(96) ? "^INC()" : "^SET(" + argument() + ")");
}

std::string CodeMaker::create() {
  const std::string made = bytes_.chance(200) ? quoted() : "\"NEW1\"";
  if (bytes_.chance(128)) return "@CREATE(" + word() + "," + made + ")";
  return nameOf(type::kScene) + "^CREATEOBJECT(" + word() + "," + made + ")";
}

std::string CodeMaker::pause() {
  constexpr const char* kWords[] = {"RESUME()", "PAUSE()", "PAUSE(TRUE)", "RESUME(FALSE)",
                                    "RESUMEONLY(\"GROUP1\",TRUE)"};
  return nameOf(type::kScene) + "^" + kWords[bytes_.below(std::size(kWords))];
}

std::string CodeMaker::environment() {
  return "GAME^RUNENV(" + quoted() + ",\"" + nameOf(type::kBehaviour) + "\")";
}

std::string CodeMaker::picture() {
  const Method& method = methodAt(bytes_, type::kImage);
  return nameOf(type::kImage) + "^" + method.name + arguments(method);
}

std::string CodeMaker::loadPicture() {
  return nameOf(type::kImage) + "^LOAD(\"" + kFiles[bytes_.below(std::size(kFiles))] + "\")";
}

std::string CodeMaker::test() {
  constexpr const char* kWords[] = {"CHECK(TRUE)", "BREAK()", "ONE_BREAK()", "CHECK(FALSE)"};
  return nameOf(bytes_.chance(128) ? type::kCondition : type::kComplexCondition) + "^" +
         kWords[bytes_.below(std::size(kWords))];
}

// Whole

std::string CodeMaker::action() {
  constexpr Rule kRules[] = {
      &CodeMaker::change,       &CodeMaker::bind,         &CodeMaker::unbind,      &CodeMaker::remove,
      &CodeMaker::clone,        &CodeMaker::removeClones, &CodeMaker::runClones,   &CodeMaker::load,
      &CodeMaker::release,      &CodeMaker::goTo,         &CodeMaker::restart,     &CodeMaker::send,
      &CodeMaker::group,        &CodeMaker::groupCall,    &CodeMaker::newInstance, &CodeMaker::deleteInstance,
      &CodeMaker::instanceCall, &CodeMaker::timer,        &CodeMaker::onTimer,     &CodeMaker::create,
      &CodeMaker::pause,        &CodeMaker::environment,  &CodeMaker::picture,     &CodeMaker::loadPicture,
      &CodeMaker::test,         &CodeMaker::runCode,      &CodeMaker::declaration, &CodeMaker::ifShort,
      &CodeMaker::loop,         &CodeMaker::ofCaller,     &CodeMaker::call,        &CodeMaker::stop};
  return (this->*kRules[bytes_.below(std::size(kRules))])() + ";";
}

std::string CodeMaker::statement() {
  constexpr Rule kRules[] = {
      &CodeMaker::call,     &CodeMaker::change,    &CodeMaker::strayCall, &CodeMaker::ifShort,
      &CodeMaker::ifLong,   &CodeMaker::whileLoop, &CodeMaker::loop,      &CodeMaker::declaration,
      &CodeMaker::builtIn,  &CodeMaker::onTimer,   &CodeMaker::indirect,  &CodeMaker::computed,
      &CodeMaker::ofCaller, &CodeMaker::dynamic,   &CodeMaker::field,     &CodeMaker::runCode,
      &CodeMaker::stop,     &CodeMaker::plain,     &CodeMaker::call,      &CodeMaker::runCode};
  const std::size_t index = bytes_.below(std::size(kRules) + 12);
  return index < std::size(kRules) ? (this->*kRules[index])() + ";" : action();
}

std::string CodeMaker::block(std::size_t most) {
  const std::size_t count = bytes_.below(most) + 1;
  std::string text;
  for (std::size_t i = 0; i < count && !bytes_.isOver(); ++i) text += statement();
  return text;
}

std::string CodeMaker::soup(std::size_t most) {
  std::string text;
  while (!bytes_.isOver() && text.size() < most) {
    const std::size_t kind = bytes_.below(16);
    if (kind < 9) {
      text += kPlain[bytes_.below(std::size(kPlain))];
    } else if (kind < 11) {
      text += name();
    } else if (kind < 13) {
      text += methodAt(bytes_, names_[bytes_.below(names_.size())].type).name;
    } else if (kind == 13) {
      text += number();
    } else if (kind == 14) {
      text += statement();
    } else {
      text += methodsOf(type::kBuiltIns)[bytes_.below(methodsOf(type::kBuiltIns).size())].name;
    }
  }
  return text + ";";
}

}  // namespace footlight::fuzz
