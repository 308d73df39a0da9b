#include "element_checks.h"

#include <algorithm>
#include <unordered_map>

#include "code_checks.h"
#include "code_parts.h"
#include "foundation/string_tokenizer.h"
#include "markup_checks.h"
#include "objects/sound/mc_sequence.h"
#include "objects/text/mc_font.h"
#include "objects/text/mc_text.h"
#include "sequence_checks.h"

namespace footlight::check {

namespace {

std::string nearestOf(std::string_view word, std::span<const char* const> names) {
  Nearest nearest(word);
  for (const char* name : names) nearest.consider(name);
  return nearest.name();
}

// Among the rows of a table, or of two.
template <class Row, class Further = std::span<const Row>>
std::string nearestRow(std::string_view word, std::span<const Row> rows, Further further = {}) {
  Nearest nearest(word);
  for (const auto& row : rows) nearest.consider(row.name);
  for (const auto& row : further) nearest.consider(row.name);
  return nearest.name();
}

// Of several properties of one name the first counts, but for signals: the last binding takes the place
// of the others.
void checkRepeated(const SourceFile& file, const CMElement& element, std::span<const Signal> signals) {
  std::unordered_map<std::string_view, int> lines;
  for (const auto& property : element.properties()) {
    const std::string_view name = property->getName();
    const int line = property->origin().line;
    const auto [first, isNew] = lines.emplace(name, line);
    if (isNew) continue;
    const bool isSignal = std::any_of(signals.begin(), signals.end(), [&name](const Signal& signal) {
      return name.starts_with(signal.name);
    });
    const std::string older = " line " + std::to_string(first->second);
    file.report(Kind::definition, line, std::string(element.getName()),
                std::string(element.getName()) + ":" + excerpt(name) +
                    (isSignal ? " takes the place of the binding of" + older
                              : " has no effect: the value of" + older + " counts"));
  }
}

// Levels of the game

// An episode starts with one of its own scenes, and an application with any.
bool isReachable(const Game& game, const CMElement& element, const Scope& level, std::string_view property) {
  const Scope* own = game.level(element.getName());
  if (property != "STARTWITH" || own == nullptr || own->level() != Scope::Level::episode) return true;
  return std::find(own->scenes.begin(), own->scenes.end(), level.name()) != own->scenes.end();
}

void checkNames(const Game& game, const SourceFile& file, const CMElement& element, const char* property) {
  const CMProperty* list = element.properties().get(property);
  if (list == nullptr) return;
  CStringTokenizer tokenizer(list->getValue(), ", ");
  while (tokenizer.hasMoreTokens()) {
    const CXString name = tokenizer.nextToken();
    const Scope* level = game.level(name.view());
    if (level != nullptr && isReachable(game, element, *level, property)) continue;
    Nearest nearest(name.view());
    for (int i = 0; i < file.elements().getSize() && !Nearest::isSpent(); ++i)
      nearest.consider(file.elements().getAt(i)->getName());
    file.report(Kind::object, list->origin().line, name.str(),
                "no episode or scene " + excerpt(name.view()) + " for " + std::string(element.getName()) +
                    ":" + property,
                nearest.name());
  }
}

void checkLevel(const Game& game, const SourceFile& file, const CMElement& element) {
  const CXString word = element.getPropertyValue("TYPE");
  const ScriptType* type = findLevelType(word);
  if (type == nullptr) {
    constexpr const char* kWords[] = {"APPLICATION", "EPISODE", "SCENE"};
    const CMProperty* property = element.properties().get("TYPE");
    const bool isMissing = property == nullptr;
    file.report(isMissing ? Kind::definition : Kind::type,
                isMissing ? element.origin().line : property->origin().line, std::string(element.getName()),
                isMissing ? std::string(element.getName()) + " has no TYPE: nothing is made of it"
                          : "no level of a game has the TYPE " + excerpt(word.view()),
                nearestOf(word, kWords));
    return;
  }
  checkRepeated(file, element, {});
  if (type->number == type::kEpisode && element.getPropertyValue("STARTWITH").IsEmpty()) {
    file.report(Kind::definition, element.origin().line, std::string(element.getName()),
                std::string(element.getName()) + " has no STARTWITH: it is entered without a scene");
  }
  for (const auto& property : element.properties()) {
    const std::string_view name = property->getName();
    if (name == "TYPE" || hasProperty(*type, name)) continue;
    const bool isSignal = findSignal(*type, name) != nullptr;
    file.report(
        Kind::property, property->origin().line, std::string(element.getName()),
        excerpt(name) +
            (isSignal ? " is not read here: signals are bound in the file of " : " is no property of ") +
            (isSignal ? std::string(element.getName()) : std::string(type->idWord)),
        isSignal ? std::string() : nearestRow(name, type->properties));
  }
  for (const char* property : {"EPISODES", "SCENES", "STARTWITH"}) checkNames(game, file, element, property);
}

// Elements

class ElementChecks {
 public:
  ElementChecks(Game& game, const SourceFile& file, const CMElement& element)
      : game_(game), file_(file), element_(element), isOwn_(file.isOwnElement(element)) {
    for (const SourceFile::Place& place : file.places()) scopes_.push_back(place.scope);
    type_ = isOwn_ ? findType(type::kScene) : findTypeByDefinition(element.getPropertyValue("TYPE"));
  }

  void run() {
    if (type_ == nullptr) return checkUnknownType();
    checkRepeated(file_, element_, type_->signals);
    for (const auto& property : element_.properties()) checkProperty(*property);
    if (isOwn_) return;
    checkCondition("CONDITION", type::kBehaviour);
    checkCondition("CONDITION1", type::kComplexCondition);
    checkCondition("CONDITION2", type::kComplexCondition);
    checkOperator();
    if (type_->number == type::kStructure) checkFields();
    if (type_->number == type::kClass) checkClassFiles();
    if (type_->number == type::kSequence) checkSequenceFile();
    if (type_->number == type::kText) checkText();
  }

 private:
  void report(Kind kind, int line, std::string text, std::string suggestion = {}) const {
    file_.report(kind, line, std::string(element_.getName()), std::move(text), std::move(suggestion));
  }

  std::string nameWith(const CXString& property) const {
    return excerpt(element_.getName()) + ":" + excerpt(property.view());
  }

  bool isAnyOpen() const {
    return std::any_of(scopes_.begin(), scopes_.end(), [](const Scope* scope) {
      return scope->isOpen || std::any_of(scope->parents().begin(), scope->parents().end(),
                                          [](const Scope* parent) { return parent->isOpen; });
    });
  }

  // Modules may make objects of types of their own.
  void checkUnknownType() const {
    const CMProperty* property = element_.properties().get("TYPE");
    if (property == nullptr) {
      report(Kind::definition, element_.origin().line,
             excerpt(element_.getName()) + " has no TYPE: no object is made of it");
    } else if (!isAnyOpen()) {
      Nearest nearest(property->getValue());
      for (const ScriptType* type : allTypes()) {
        if (type->definitionWord != nullptr) nearest.consider(type->definitionWord);
      }
      report(Kind::type, property->origin().line, "no TYPE " + excerpt(property->getValue()), nearest.name());
    }
  }

  void checkProperty(const CMProperty& property) {
    const std::string_view name = property.getName();
    const int line = property.origin().line;
    if (findSignal(*type_, name) != nullptr) return checkBinding(property);
    if (name == "TYPE" || (!isOwn_ && hasProperty(*type_, name))) return;
    const std::string near = nearestRow(name.substr(0, name.find('^')), type_->signals, type_->properties);
    // A type whose properties are not known may have one that looks like a signal.
    if (name.starts_with("ON") && (!near.empty() || !type_->properties.empty() || isOwn_)) {
      report(Kind::signal, line, nameWith(name) + ": nobody raises such a signal", near);
    } else if (isOwn_) {
      report(Kind::property, line,
             nameWith(name) + " is not read here: properties of a level stand in application.def");
    } else if (!type_->properties.empty()) {
      report(Kind::property, line, excerpt(name) + " is no property of " + type_->definitionWord,
             nearestRow(name, type_->properties, type_->signals));
    }
  }

  // Bindings

  void checkBinding(const CMProperty& property) {
    if (property.getValue().empty() || isInlineBinding(property)) return;
    CXString name = property.getValue();
    const int open = name.Find('(');
    const int close = name.Find(')');
    if ((open < 0) != (close < 0) || close < open) {
      report(Kind::brackets, property.origin().line,
             nameWith(property.getName()) + ": the round brackets are no pair: " + excerpt(name.view()));
    }
    if (open >= 0) name = name.Left(open);
    name.AllTrim();
    checkBoundBehaviour(property, name);
  }

  void checkBoundBehaviour(const CMProperty& property, const CXString& name) {
    const Found found = game_.look(scopes_, name.view());
    if (found.mayBe) return;
    bool isAnyBehaviour = false;
    for (const Thing* thing : found.things) {
      if (isOfUnknownType(*thing)) return;
      if (!isBehaviour(*thing)) continue;
      isAnyBehaviour = true;
      if (isThereInTime(*thing)) return;
    }
    const std::string behaviour = excerpt(name.view());
    const std::string why = isAnyBehaviour ? " is defined further down: here it is not there yet"
                            : found        ? " is no BEHAVIOUR"
                                           : std::string();
    report(
        Kind::behaviour, property.origin().line,
        nameWith(property.getName()) + ": " + (why.empty() ? "no behaviour " + behaviour : behaviour + why),
        isAnyBehaviour ? std::string() : nearestName(scopes_, name.view(), isBehaviour));
  }

  // Behaviours are made before all other objects, in the order of the file; a loaded file makes all its
  // objects in that order.
  bool isThereInTime(const Thing& thing) const {
    const bool isInOrder = type_->number == type::kBehaviour || file_.isUsed(SourceFile::Use::loaded);
    if (!isInOrder || thing.file != &file_) return true;
    return file_.orderOf(thing.element) < file_.orderOf(&element_);
  }

  // Values that are names

  void checkCondition(const char* name, int type) const {
    const CMProperty* property = element_.properties().get(name);
    if (type_->number != type || property == nullptr || property->getValue().empty()) return;
    const auto isCondition = [](const Thing& thing) {
      return thing.type == type::kCondition || thing.type == type::kComplexCondition;
    };
    const std::string_view wanted = property->getValue();
    const Found found = game_.look(scopes_, wanted);
    const bool isFine =
        found.mayBe || std::any_of(found.things.begin(), found.things.end(),
                                   [&](const Thing* t) { return isCondition(*t) || isOfUnknownType(*t); });
    if (isFine) return;
    report(Kind::object, property->origin().line,
           nameWith(name) +
               (found ? ": " + excerpt(wanted) + " is no CONDITION" : ": no condition " + excerpt(wanted)),
           nearestName(scopes_, wanted, isCondition));
  }

  void checkOperator() const {
    const CMProperty* property = element_.properties().get("OPERATOR");
    if (property == nullptr || isOperator(type_->number, property->getValue())) return;
    report(Kind::operation, property->origin().line,
           nameWith("OPERATOR") + ": no such operator: " + excerpt(property->getValue()));
  }

  void checkFields() const {
    const CMProperty* property = element_.properties().get("FIELDS");
    if (property == nullptr) return;
    for (CXString& field : CXString(property->getValue()).toVector(",")) {
      field.AllTrim();
      const int open = field.Find('<');
      const int close = field.Find('>', std::max(open, 0));
      CXString word = open < 0 ? CXString() : field.Mid(open + 1, close < 0 ? field.Length() : close);
      const int type = typeNumberOf(word.AllTrim());
      if (open >= 0 && close >= 0 && type >= type::kInteger && type <= type::kDouble) continue;
      constexpr const char* kWords[] = {"BOOL", "DOUBLE", "INTEGER", "STRING"};
      report(open < 0 || close < 0 ? Kind::definition : Kind::type, property->origin().line,
             "no field is made of " + excerpt(field.view()) + ": NAME<TYPE> is wanted",
             open < 0 || close < 0 ? std::string() : nearestOf(word, kWords));
    }
  }

  void checkClassFiles() const {
    for (const char* name : {"BASE", "DEF"}) {
      const CMProperty* property = element_.properties().get(name);
      if (property == nullptr) continue;
      for (CXString& file : CXString(property->getValue()).toVector(",")) {
        if (game_.hasClassFile(file.AllTrim())) continue;
        report(Kind::file, property->origin().line,
               nameWith(name) + ": there is no class file " + excerpt(file.view()));
      }
    }
  }

  void checkSequenceFile() const {
    const CMProperty* property = element_.properties().get("FILENAME");
    if (property == nullptr || property->getValue().empty()) return;
    const CXString name(property->getValue());
    if (const auto text = game_.readText(scopes_, name)) {
      checkSequence(game_, scopes_, name, *text);
    } else {
      report(Kind::file, property->origin().line,
             nameWith("FILENAME") + ": there is no file " + excerpt(name.view()));
    }
  }

  // The third word of DEF_FAMILY_STYLE_SIZE.
  static void addStyles(const CMElement& font, std::vector<std::string>& styles) {
    for (const auto& property : font.properties()) {
      const auto words = CXString(property->getName()).toVector("_");
      if (words.size() > 2 && words[0] == "DEF") styles.push_back(words[2].Upper().str());
    }
  }

  // Those of all fonts that the text may have.
  std::vector<std::string> stylesOfFont() const {
    std::vector<std::string> styles;
    const CXString name = element_.getPropertyValue("FONT");
    for (const Scope* scope : scopes_) {
      const Found found = scope->find(name);
      for (const Thing* thing : found.things) {
        if (thing->type == type::kFont && thing->element != nullptr) addStyles(*thing->element, styles);
      }
    }
    return styles;
  }

  void checkText() const {
    const CMProperty* property = element_.properties().get("TEXT");
    if (property == nullptr) return;
    checkMarkup(property->getValue(), stylesOfFont(), [&](std::string text, std::string suggestion) {
      report(Kind::markup, property->origin().line, nameWith("TEXT") + ": " + text, std::move(suggestion));
    });
  }

  Game& game_;
  const SourceFile& file_;
  const CMElement& element_;
  bool isOwn_;
  const ScriptType* type_;
  std::vector<Scope*> scopes_;
};

// The short form makes an element without a look at the names there are. In a class the older object stays
// under another name.
void checkRepeatedElements(const SourceFile& file) {
  if (file.isUsed(SourceFile::Use::classCode)) return;
  std::unordered_map<std::string_view, int> lines;
  for (const CMElement* element : file.elements()) {
    const auto [first, isNew] = lines.emplace(element->getName(), element->origin().line);
    if (isNew) continue;
    file.report(Kind::definition, element->origin().line, std::string(element->getName()),
                "another " + excerpt(element->getName()) + ": it takes the place of the one of line " +
                    std::to_string(first->second));
  }
}

}  // namespace

void checkApplication(Game& game, const SourceFile& file) {
  for (const CMElement* element : file.elements()) checkLevel(game, file, *element);
}

void checkElements(Game& game, const SourceFile& file) {
  for (const CMElement* element : file.elements()) ElementChecks(game, file, *element).run();
  checkRepeatedElements(file);
  checkCode(game, file);
}

}  // namespace footlight::check
