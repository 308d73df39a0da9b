#include "code_checks.h"

#include <algorithm>
#include <cctype>

#include "code_parts.h"
#include "code_walker.h"

namespace footlight::check {

namespace {

bool isOneOf(const Found& found, bool (*test)(const Thing&)) {
  return std::any_of(found.things.begin(), found.things.end(),
                     [test](const Thing* thing) { return test(*thing); });
}

// Something whose text is its value and not its name.
bool hasValue(const Thing& thing) {
  return (thing.type >= type::kInteger && thing.type <= type::kVariable) || thing.type == type::kExpression ||
         thing.type == type::kStructure;
}

bool isStructure(const Thing& thing) { return thing.type == type::kStructure && thing.element != nullptr; }

bool isLevelWithScenes(const Thing& thing) {
  return (thing.type == type::kApplication || thing.type == type::kEpisode) && thing.scope != nullptr;
}

bool isIdentifier(Piece text) {
  const auto isLetter = [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; };
  const auto isWordCharacter = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
  };
  return std::any_of(text.begin(), text.end(), isLetter) &&
         std::isdigit(static_cast<unsigned char>(text.front())) == 0 &&
         std::all_of(text.begin(), text.end(), isWordCharacter);
}

struct Field {
  CXString name;
  int type;
};

std::vector<Field> fieldsOf(const Thing& structure) {
  std::vector<Field> fields;
  for (CXString& piece : structure.element->getPropertyValue("FIELDS").toVector(",")) {
    piece.AllTrim();
    const int open = piece.Find('<');
    const int close = piece.Find('>', std::max(open, 0));
    if (open < 0) continue;
    CXString name = piece.Left(open);
    CXString word = piece.Mid(open + 1, close < 0 ? piece.Length() : close);
    fields.push_back({name.AllTrim(), typeNumberOf(word.AllTrim())});
  }
  return fields;
}

// "COUNT (INTEGER)", or the name alone where the type has no word.
std::string withType(Piece name, const Thing& thing) {
  const ScriptType* description = findType(thing.type);
  const char* word = description == nullptr                   ? nullptr
                     : description->definitionWord != nullptr ? description->definitionWord
                                                              : description->idWord;
  return excerpt(name) + (word != nullptr ? " (" + std::string(word) + ")" : std::string());
}

class CodeChecks : public CodeVisitor {
 public:
  CodeChecks(Game& game, const SourceFile& file, std::span<Scope* const> scopes, const CodeText& text)
      : game_(game), file_(file), scopes_(scopes), text_(text) {}

  void onCall(const Statement& statement) override {
    switch (statement.kind) {
      case Statement::Kind::builtIn:
        return checkBuiltIn(statement);
      case Statement::Kind::caller:
        return checkCaller(statement);
      case Statement::Kind::indirect:
        return checkIndirect(statement);
      default:
        return checkObjectCall(statement);
    }
  }

  void onValue(Piece value) override {
    const auto bar = value.find('|');
    if (bar == Piece::npos || value.starts_with('"') || hasMark(value)) return;
    const Found structure = game_.look(scopes_, value.substr(0, bar));
    // Only what begins with the name of a structure is a field; the rest is text.
    if (isOneOf(structure, isStructure)) findField(structure, value, value.substr(bar + 1));
  }

  void onReference(Piece name) override {
    if (!isIdentifier(name) || game_.look(scopes_, name)) return;
    report(Kind::object, name, name, "no object " + excerpt(name) + " to refer to", nearest(name));
  }

  // A number or a sign is the author's way to say "nothing".
  void onCodeName(Piece name) override {
    if (!isIdentifier(name)) return;
    const Found found = game_.look(scopes_, name);
    const bool isFine = found.mayBe || isOneOf(found, isBehaviour) || isOneOf(found, isOfUnknownType) ||
                        isOneOf(found, hasValue);
    if (isFine) return;
    report(Kind::behaviour, name, name,
           found ? excerpt(name) + " is no BEHAVIOUR" : "no behaviour " + excerpt(name),
           nearestName(scopes_, name, isBehaviour));
  }

  void onComparison(Piece word) override {
    if (isComparison(word) || isOneOf(game_.look(scopes_, word), hasValue)) return;
    report(Kind::operation, word, word, "no such comparison: " + excerpt(word));
  }

  void onTypeTest(Piece object, Piece word) override {
    if (hasMark(object) || hasMark(word) || isTypeText(word)) return;
    if (isOneOf(game_.look(scopes_, word), hasValue)) return;
    Nearest nearest(word);
    for (const ScriptType* type : allTypes()) {
      // Blanks do not reach code.
      const std::string_view text = type->stringWord != nullptr ? type->stringWord : "";
      if (text.find(' ') == std::string_view::npos) nearest.consider(text);
    }
    const ScriptType* type = findTypeByDefinition(word);
    const bool isNumbered = type != nullptr && type->stringWord == nullptr;
    report(Kind::type, word, word, "no type reads " + excerpt(word) + ": the test never holds",
           isNumbered ? std::to_string(type->number) : nearest.name());
  }

  void onFault(Kind kind, Piece at, const std::string& text) override { report(kind, at, {}, text); }

 private:
  void report(Kind kind, Piece at, Piece object, std::string text, std::string suggestion = {}) const {
    file_.report(kind, text_.lineAt(at.data()), std::string(object), std::move(text), std::move(suggestion));
  }

  std::string nearest(Piece name) const {
    return nearestName(scopes_, name, [](const Thing&) { return true; });
  }

  // Statements

  void checkBuiltIn(const Statement& statement) {
    if (hasMark(statement.method)) return;
    const Answer answer = methodOf(type::kBuiltIns, statement.method);
    if (answer.kind != Answer::Kind::no) return checkCount(statement, answer);
    Nearest nearest(statement.method);
    eachMethodOf(type::kBuiltIns, [&](const char* name) { nearest.consider(name); });
    report(Kind::method, statement.text, statement.method, "no statement @" + excerpt(statement.method),
           nearest.name());
  }

  void checkCaller(const Statement& statement) {
    if (!statement.text.starts_with("THIS^")) {
      report(Kind::statement, statement.text, statement.object,
             "begins with THIS and so calls the sender, whatever follows: " + excerpt(statement.text));
      return;
    }
    const bool isInClass = std::all_of(scopes_.begin(), scopes_.end(), [](const Scope* scope) {
      return scope->level() == Scope::Level::classCode;
    });
    if (!isInClass) return checkMethodOfWhatever(statement);
    std::vector<Thing> instances;
    for (Scope* scope : scopes_)
      instances.push_back({.type = type::kClass, .scope = scope, .isInstance = true});
    Found found;
    for (const Thing& instance : instances) found.things.push_back(&instance);
    checkMethod(statement, found);
  }

  void checkIndirect(const Statement& statement) {
    if (!statement.object.starts_with('[') && !hasMark(statement.object)) checkObject(statement);
    checkMethodOfWhatever(statement);
  }

  void checkObjectCall(const Statement& statement) {
    if (hasMark(statement.object)) return checkMethodOfWhatever(statement);
    if (const auto bar = statement.object.find('|'); bar != Piece::npos)
      return checkFieldCall(statement, statement.object.substr(0, bar), statement.object.substr(bar + 1));
    const Found found = checkObject(statement);
    if (!found) return;
    checkMethod(statement, found);
    if (statement.method == "GOTO") checkGoto(statement, found);
    if (statement.method == "ADDBEHAVIOUR") checkAddBehaviour(statement, found);
  }

  Found checkObject(const Statement& statement) {
    Found found = game_.look(scopes_, statement.object);
    if (!found) {
      const bool isNamed = !statement.object.empty();
      report(Kind::object, statement.text, statement.object,
             isNamed ? "no object " + excerpt(statement.object) : "no name stands before the ^",
             nearest(statement.object));
    }
    return found;
  }

  void checkFieldCall(const Statement& statement, Piece object, Piece field) {
    const Found structure = game_.look(scopes_, object);
    if (structure.mayBe || isOneOf(structure, isOfUnknownType)) return;
    if (!isOneOf(structure, isStructure)) {
      report(Kind::object, statement.text, object,
             structure ? excerpt(object) + " is no STRUCT" : "no object " + excerpt(object),
             nearestName(scopes_, object, isStructure));
      return;
    }
    const int type = findField(structure, statement.text, field);
    if (type < 0) return;
    const Thing variable{.type = type};
    checkMethod(statement, Found{{&variable}});
  }

  // The type of the field; -1, and a finding, when no structure of the name has it.
  int findField(const Found& structure, Piece at, Piece name) {
    Nearest nearest(name);
    for (const Thing* thing : structure.things) {
      if (!isStructure(*thing)) continue;
      for (const Field& field : fieldsOf(*thing)) {
        // A name is compared with what follows the last "_" of a field's full name.
        if (field.name.slice(field.name.FindLast('_') + 1, field.name.Length()) == name) return field.type;
        nearest.consider(field.name.view());
      }
    }
    report(Kind::object, at, name, "the structure has no field " + excerpt(name), nearest.name());
    return -1;
  }

  // Methods

  Answer answerOf(const Thing& thing, Piece method) const {
    if (thing.type == Thing::kUnknownType) return {Answer::Kind::mayBe};
    const Answer own = methodOf(thing.type, method);
    if (own.kind != Answer::Kind::no) return own;
    if (thing.type == type::kGroup) return game_.methodOfWhatever(method);
    if (thing.type != type::kClass || !thing.isInstance) return own;
    if (thing.scope == nullptr) return {game_.isClassMethod(method) ? Answer::Kind::yes : Answer::Kind::no};
    const Found found = thing.scope->find(method);
    if (isOneOf(found, isBehaviour)) return {Answer::Kind::yes};
    return {found.mayBe || isOneOf(found, isOfUnknownType) ? Answer::Kind::mayBe : Answer::Kind::no};
  }

  void checkMethod(const Statement& statement, const Found& found) {
    if (found.mayBe || hasMark(statement.method)) return;
    Answer best;
    for (const Thing* thing : found.things) {
      const Answer answer = answerOf(*thing, statement.method);
      if (answer.kind == Answer::Kind::mayBe) return;
      if (answer.kind == Answer::Kind::no) continue;
      best = {Answer::Kind::yes,
              best.kind == Answer::Kind::yes ? std::min(best.least, answer.least) : answer.least};
    }
    if (best.kind == Answer::Kind::yes) return checkCount(statement, best);
    report(Kind::method, statement.text, statement.object,
           withType(statement.object, *found.things.front()) + " has no method " + excerpt(statement.method),
           nearestMethod(statement.method, found));
  }

  static std::string nearestMethod(Piece method, const Found& found) {
    Nearest nearest(method);
    for (const Thing* thing : found.things) {
      eachMethodOf(thing->type, [&](const char* name) { nearest.consider(name); });
      if (!thing->isInstance || thing->scope == nullptr) continue;
      thing->scope->eachName([&](const std::string& name, const Thing& named) {
        if (isBehaviour(named)) nearest.consider(name);
      });
    }
    return nearest.name();
  }

  void checkMethodOfWhatever(const Statement& statement) {
    if (hasMark(statement.method) || statement.method.empty()) return;
    const Answer answer = game_.methodOfWhatever(statement.method);
    if (answer.kind == Answer::Kind::yes) return checkCount(statement, answer);
    if (answer.kind == Answer::Kind::mayBe) return;
    Nearest nearest(statement.method);
    for (const ScriptType* type : allTypes())
      eachMethodOf(type->number, [&](const char* name) { nearest.consider(name); });
    report(Kind::method, statement.text, statement.object,
           "no type has a method " + excerpt(statement.method), nearest.name());
  }

  // Marks may become several arguments.
  void checkCount(const Statement& statement, const Answer& answer) {
    const int count = static_cast<int>(statement.arguments.size());
    const bool isMarked = std::any_of(statement.arguments.begin(), statement.arguments.end(), hasMark);
    if (count >= answer.least || isMarked || statement.brackets != Statement::Brackets::closed) return;
    const std::string name = statement.kind == Statement::Kind::builtIn
                                 ? "@" + excerpt(statement.method)
                                 : excerpt(statement.object) + "^" + excerpt(statement.method);
    report(Kind::arguments, statement.text, statement.object,
           name + " needs at least " + std::to_string(answer.least) +
               (answer.least == 1 ? " argument, not " : " arguments, not ") + std::to_string(count));
  }

  // Arguments that are names

  // The text of an argument that is no code, no name of a variable and the same in each run.
  Piece literal(Piece argument) const {
    if (isQuoted(argument)) return hasMark(argument) ? Piece() : withoutQuotes(argument);
    if (!isIdentifier(argument)) return {};
    const Found found = game_.look(scopes_, argument);
    return found.mayBe || isOneOf(found, hasValue) ? Piece() : argument;
  }

  void checkGoto(const Statement& statement, const Found& found) {
    if (statement.arguments.empty() || !isOneOf(found, isLevelWithScenes)) return;
    const Piece wanted = literal(statement.arguments.front());
    if (wanted.empty()) return;
    Nearest nearest(wanted);
    for (const Thing* thing : found.things) {
      if (!isLevelWithScenes(*thing)) return;
      for (const std::string& name : thing->scope->scenes) {
        if (name == wanted) return;
        nearest.consider(name);
      }
    }
    report(Kind::object, statement.text, wanted,
           excerpt(statement.object) + " has no " + excerpt(wanted) + " to go to", nearest.name());
  }

  void checkAddBehaviour(const Statement& statement, const Found& found) {
    if (statement.arguments.size() < 2) return;
    const Piece behaviour = literal(statement.arguments[1]);
    if (!behaviour.empty() && !behaviour.starts_with('{')) onCodeName(behaviour);
    if (!isQuoted(statement.arguments[0])) return;
    const Piece signal = withoutQuotes(statement.arguments[0]);
    const Piece plain = signal.substr(0, signal.find_first_of("$^"));
    if (plain.empty() || signal.starts_with('@')) return;
    Nearest nearest(plain);
    for (const Thing* thing : found.things) {
      const ScriptType* type = findType(thing->type);
      if (type == nullptr || type->signals.empty() || findSignal(*type, plain) != nullptr) return;
      for (const Signal& row : type->signals) {
        // Behind a mark may come the rest of the name.
        if (hasMark(signal) && std::string_view(row.name).starts_with(plain)) return;
        nearest.consider(row.name);
      }
    }
    report(Kind::signal, statement.text, signal, "nobody raises a signal " + excerpt(signal), nearest.name());
  }

  Game& game_;
  const SourceFile& file_;
  std::span<Scope* const> scopes_;
  const CodeText& text_;
};

}  // namespace

bool isBehaviour(const Thing& thing) { return thing.type == type::kBehaviour; }

bool isOfUnknownType(const Thing& thing) { return thing.type == Thing::kUnknownType; }

std::string nearestName(std::span<Scope* const> scopes, std::string_view word,
                        const std::function<bool(const Thing&)>& filter) {
  Nearest nearest(word);
  for (const Scope* scope : scopes) {
    if (Nearest::isSpent()) break;
    scope->eachName([&](const std::string& name, const Thing& thing) {
      if (filter(thing)) nearest.consider(name);
    });
  }
  return nearest.name();
}

void checkCode(Game& game, const SourceFile& file) {
  std::vector<Scope*> scopes;
  for (const SourceFile::Place& place : file.places()) scopes.push_back(place.scope);
  eachCodePart(file.elements(), [&](const CodePart& part) {
    const CodeText text = file.code(part.property);
    CodeChecks checks(game, file, scopes, text);
    CodeWalker walker(checks);
    if (part.isValue) {
      walker.walkValue(text.text());
    } else {
      walker.walkCode(text.text());
    }
  });
}

}  // namespace footlight::check
