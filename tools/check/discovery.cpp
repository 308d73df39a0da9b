#include "discovery.h"

#include <algorithm>
#include <array>

#include "code_parts.h"
#include "code_walker.h"
#include "objects/plain_types.h"
#include "objects/system/mc_cnv_loader.h"

namespace footlight::check {

namespace {

struct Declaration {
  std::string_view word;
  int type;
};
constexpr Declaration kDeclarations[] = {
    {"INT", type::kInteger}, {"STRING", type::kString}, {"BOOL", type::kBool}, {"DOUBLE", type::kDouble}};

bool isDefinitionFile(std::string_view name) {
  constexpr std::size_t kEnding = 4;
  return name.size() > kEnding && CXString(name.substr(name.size() - kEnding)).equalsIgnoreCase(".cnv");
}

class Discovery : public CodeVisitor {
 public:
  Discovery(Game& game, const SourceFile& file, Scope& scope, const CodeText& text)
      : game_(game), file_(file), scope_(scope), text_(text) {}

  void onCall(const Statement& statement) override {
    if (statement.kind == Statement::Kind::builtIn) {
      onBuiltIn(statement);
    } else {
      onMethod(statement.kind, statement.object, statement.method, statement.arguments,
               statement.text.data());
    }
  }

 private:
  void onBuiltIn(const Statement& statement) {
    if (statement.arguments.size() < 2) return;
    for (const Declaration& declaration : kDeclarations) {
      if (statement.method == declaration.word) create(statement.arguments[0], {.type = declaration.type});
    }
    if (statement.method == "CREATE") createObject(statement.arguments[0], statement.arguments[1]);
  }

  void onMethod(Statement::Kind kind, Piece object, Piece method, std::span<const Piece> arguments,
                const char* place) {
    const bool isComputed = kind != Statement::Kind::call || hasMark(object);
    const Found found = isComputed ? Found{} : game_.look(std::array{&scope_}, object);
    if (method == "CLONE" || hasMark(method)) {
      if (isComputed) game_.noteAnyClone();
      game_.noteClone(std::string(object));
    }
    if (arguments.empty()) return;
    if (method == "NEW" || hasMark(method)) makeInstance(found, arguments[0]);
    if (method == "LOAD" || hasMark(method)) load(found, arguments[0], place);
    if (method == "CREATEOBJECT" && arguments.size() > 1) createObject(arguments[0], arguments[1]);
    // A level of the game calls a method by its name.
    if (method == "RUN" && arguments.size() > 1 && isLevel(found)) {
      const bool isNamed = isQuoted(arguments[0]) && isQuoted(arguments[1]);
      onMethod(isNamed ? Statement::Kind::call : Statement::Kind::indirect, withoutQuotes(arguments[0]),
               withoutQuotes(arguments[1]), arguments.subspan(2), place);
    }
  }

  static bool isLevel(const Found& found) {
    return std::any_of(found.things.begin(), found.things.end(), [](const Thing* thing) {
      return thing->type >= type::kApplication && thing->type <= type::kScene;
    });
  }

  void create(Piece name, const Thing& thing) {
    const std::string pattern = patternOf(name);
    if (!pattern.empty()) game_.noteCreated(scope_.create(pattern, thing));
  }

  void createObject(Piece word, Piece name) {
    const int type = word == "\"VGO\"" ? type::kVirtualGraphicsObject : typeNumberOf(withoutQuotes(word));
    if (type < 0 && isQuoted(word) && !hasMark(word)) return;  // nothing is made of other words
    game_.noteUnknownMethods(type);
    create(name, {.type = type > 0 ? type : Thing::kUnknownType});
  }

  // An instance sees what is around the code that made it.
  void makeInstance(const Found& found, Piece name) {
    bool isKnown = false;
    for (const Thing* thing : found.things) {
      if (thing->type != type::kClass || thing->isInstance) continue;
      isKnown = true;
      create(name, {.type = type::kClass, .scope = thing->scope, .isInstance = true});
      if (thing->scope != nullptr) game_.noteCreated(thing->scope->addParent(&scope_));
    }
    if (isKnown || !found.things.empty()) return;
    create(name, {.type = type::kClass, .isInstance = true});
    for (const auto& [files, scope] : game_.classes()) game_.noteCreated(scope->addParent(&scope_));
  }

  void load(const Found& found, Piece argument, const char* place) {
    const bool isLoader = std::any_of(found.things.begin(), found.things.end(),
                                      [](const Thing* thing) { return thing->type == type::kCnvLoader; });
    const std::string name = patternOf(argument);
    const bool isComputed = name.find('*') != std::string::npos;
    if (!isLoader && (!found.things.empty() || !isDefinitionFile(name))) return;
    if (isComputed) {
      if (!scope_.loadsComputedFiles) game_.noteCreated(true);
      scope_.loadsComputedFiles = true;
    } else {
      game_.noteLoad(scope_, CXString(name), file_, text_.lineAt(place));
    }
  }

  // What the text of an argument may be, "*" for what only a run can tell.
  std::string patternOf(Piece argument) const {
    if (isQuoted(argument)) return marksAsStars(withoutQuotes(argument));
    if (argument.starts_with('[')) {
      const std::vector<Piece> operands = cutOperands(withoutEnds(argument));
      const bool isText = operands.size() > 1 && isQuoted(operands.front());
      return isText ? marksAsStars(withoutQuotes(operands.front())) + "*" : "*";
    }
    if (!argument.empty() && Piece("@*&{").find(argument.front()) != Piece::npos) return "*";
    if (argument.find_first_of("^|") != Piece::npos) return "*";
    if (hasMark(argument)) return marksAsStars(argument);
    const Found found = game_.look(std::array{&scope_}, argument);
    const bool isPlainName = std::all_of(found.things.begin(), found.things.end(), [](const Thing* thing) {
      return thing->type > type::kExpression && thing->type != type::kStructure;
    });
    return found.things.empty() || isPlainName ? std::string(argument) : "*";
  }

  static std::string marksAsStars(Piece text) {
    std::string pattern;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (hasMark(text.substr(i, 2))) {
        pattern += '*';
        ++i;
      } else {
        pattern += text[i];
      }
    }
    return pattern;
  }

  Game& game_;
  const SourceFile& file_;
  Scope& scope_;
  const CodeText& text_;
};

}  // namespace

void discoverIn(Game& game, const SourceFile& file, Scope& scope) {
  eachCodePart(file.elements(), [&](const CodePart& part) {
    const CodeText text = file.code(part.property);
    Discovery discovery(game, file, scope, text);
    CodeWalker walker(discovery);
    if (part.isValue) {
      walker.walkValue(text.text());
    } else {
      walker.walkCode(text.text());
    }
  });
}

}  // namespace footlight::check
