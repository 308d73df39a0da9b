#include "sequence_checks.h"

#include <algorithm>
#include <array>
#include <optional>

#include "files/file_name_resolver.h"
#include "gfx/ann_format.h"
#include "nearest.h"
#include "objects/gfx/mc_animo.h"
#include "objects/sound/mc_sound.h"
#include "sequence/sequence_text.h"
#include "sequence/speaking_animation.h"

namespace footlight::check {

namespace {

struct Element {
  int line = 0;      // of its declaration
  int typeLine = 0;  // 0 without a type
  std::string type{};
  std::string fileName{};
  std::string event{"0"};
  int eventLine = 0;
  std::string animation{};
  int animationLine = 0;
  std::string prefix{};
  bool starts = false;
  bool ends = false;
};

constexpr std::string_view kTypes[] = {"SIMPLE", "SEQUENCE", "SPEAKING"};
constexpr std::string_view kModes[] = {"SEQUENCE", "RANDOM", "PARAMETER"};
constexpr std::string_view kTruth[] = {"TRUE", "FALSE"};

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

class SequenceChecks {
 public:
  SequenceChecks(Game& game, std::span<Scope* const> scopes, const Game::TextFile& file)
      : game_(game), scopes_(scopes), file_(file) {}

  void run(const CXString& fileName) {
    std::string_view rest = file_.text;
    for (line_ = 1; !rest.empty(); ++line_) {
      const auto end = std::min(rest.find('\n'), rest.size());
      std::string_view line = rest.substr(0, end);
      if (line.ends_with('\r')) line.remove_suffix(1);
      readLine(line);
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    checkRoot(CFileNameResolver(fileName).getPureFileName().str());
    for (const auto& [name, element] : elements_) checkElement(name, element);
  }

 private:
  void report(Kind kind, int line, std::string_view object, std::string text,
              std::string suggestion = {}) const {
    game_.report({file_.shown, line, kind, std::string(object), std::move(text), std::move(suggestion)});
  }

  std::string nearestElement(std::string_view word) const {
    Nearest nearest(word);
    for (const auto& [name, element] : elements_) nearest.consider(name);
    return nearest.name();
  }

  // Lines

  void readLine(std::string_view text) {
    SequenceLine line(text);
    const std::string_view first = line.next();
    if (first.empty()) return;
    if (first == kDeclaration) return declare(line.next());
    const auto found = elements_.find(first);
    if (found == elements_.end()) {
      const std::string near = first == "name" ? std::string(kDeclaration) : nearestElement(first);
      return report(Kind::definition, line_, first, excerpt(first) + ": no element of this name", near);
    }
    readKey(found->first, found->second, line);
  }

  void declare(std::string_view name) {
    if (name.empty()) return report(Kind::definition, line_, "", "NAME without a name");
    const auto [element, isNew] = elements_.try_emplace(std::string(name));
    if (isNew) {
      element->second.line = line_;
    } else {
      report(Kind::definition, line_, name, excerpt(name) + ": there is an element of this name already");
    }
  }

  void readKey(const std::string& name, Element& element, SequenceLine& line) {
    const std::string_view word = line.next();
    SequenceKey key{};
    if (findSequenceKey(word, &key)) {
      checkOrder(name, element, key, word);
      readValue(name, element, key, line);
    } else if (!isNumber(word)) {
      Nearest nearest(word);
      for (const SequenceKeyWord& row : kSequenceKeys) nearest.consider(row.word);
      report(Kind::property, line_, name, excerpt(name) + ": no key " + excerpt(word), nearest.name());
    }
  }

  // Files and events are taken when the type is told, everything else is told of what the type made.
  void checkOrder(const std::string& name, const Element& element, SequenceKey key,
                  std::string_view word) const {
    const bool isBefore = key == SequenceKey::fileName || key == SequenceKey::event;
    const bool isTyped = element.typeLine != 0;
    if (key == SequenceKey::type || key == SequenceKey::sequence || isBefore != isTyped) return;
    report(Kind::definition, line_, name,
           excerpt(name) + ":" + std::string(word) + " has no effect: it must stand " +
               (isBefore ? "before" : "behind") + " the TYPE");
  }

  void readValue(const std::string& name, Element& element, SequenceKey key, SequenceLine& line) {
    const std::string_view value = line.next();
    switch (key) {
      case SequenceKey::type:
        if (!isOneOf(name, value, kTypes)) return;
        element.type = value;
        element.typeLine = line_;
        return;
      case SequenceKey::fileName:
        if (element.typeLine == 0) element.fileName = value;
        return;
      case SequenceKey::event:
        if (element.typeLine != 0) return;
        element.event = value;
        element.eventLine = line_;
        return;
      case SequenceKey::mode:
        isOneOf(name, value, kModes);
        return;
      case SequenceKey::wait:
        isOneOf(name, value, kTruth);
        return;
      case SequenceKey::starting:
        element.starts = isOneOf(name, value, kTruth) && value == "TRUE";
        return;
      case SequenceKey::ending:
        element.ends = isOneOf(name, value, kTruth) && value == "TRUE";
        return;
      case SequenceKey::animation:
        element.animation = value;
        element.animationLine = line_;
        return;
      case SequenceKey::sound:
        return checkSound(name, value);
      case SequenceKey::prefix:
        element.prefix = value;
        return;
      case SequenceKey::add:
        return checkParent(name, value.empty() ? kUsualParent : value);
      default:
        return;
    }
  }

  template <std::size_t N>
  bool isOneOf(const std::string& name, std::string_view value, const std::string_view (&words)[N]) const {
    if (std::find(std::begin(words), std::end(words), value) != std::end(words)) return true;
    Nearest nearest(value);
    for (const std::string_view word : words) nearest.consider(word);
    report(Kind::property, line_, name, excerpt(name) + ": the value " + excerpt(value) + " has no effect",
           nearest.name());
    return false;
  }

  // Names

  void checkParent(const std::string& name, std::string_view parent) const {
    const auto found = elements_.find(parent);
    if (found == elements_.end()) {
      report(Kind::object, line_, parent, excerpt(name) + ":ADD: no element " + excerpt(parent) + " yet",
             nearestElement(parent));
    } else if (found->second.type != "SEQUENCE") {
      report(Kind::object, line_, parent,
             excerpt(name) + ":ADD: " + excerpt(parent) + " is no SEQUENCE and has no children");
    }
  }

  void checkRoot(const std::string& root) const {
    const auto found = elements_.find(root);
    if (found == elements_.end()) {
      report(Kind::definition, 1, root,
             "nothing plays: there is no element " + excerpt(root) + ", the file's name",
             nearestElement(root));
    } else if (found->second.typeLine == 0) {
      report(Kind::definition, found->second.line, root, "nothing plays: " + excerpt(root) + " has no TYPE");
    }
  }

  // The object of that name and type; nothing with `mayBe` where only a run can tell.
  const Thing* object(std::string_view name, int type, bool* mayBe) const {
    const Found found = game_.look(scopes_, name);
    *mayBe = found.mayBe;
    for (const Thing* thing : found.things) {
      if (thing->type == type) return thing;
      *mayBe = *mayBe || thing->type == Thing::kUnknownType;
    }
    return nullptr;
  }

  void checkSound(const std::string& name, std::string_view sound) const {
    bool mayBe = false;
    if (elements_.contains(sound) || object(sound, type::kSound, &mayBe) != nullptr || mayBe) return;
    if (!game_.hasSound(CXString(sound)))
      report(Kind::file, line_, name, excerpt(name) + ":WAVFN: there is no sound " + excerpt(sound));
  }

  // The animation of a file, or that of an object with one; `isKnown` is false where none can be read, which
  // is reported.
  std::optional<AnnFile> animation(const std::string& name, std::string_view figure, int line) const {
    bool mayBe = false;
    CXString file(figure);
    if (const Thing* thing = object(figure, type::kAnimo, &mayBe)) {
      if (thing->element == nullptr) return std::nullopt;
      file = thing->element->getPropertyValue("FILENAME");
      if (file.IsEmpty()) return std::nullopt;
    } else if (mayBe) {
      return std::nullopt;
    }
    const std::optional<std::vector<std::byte>> bytes = game_.readBytes(scopes_, file);
    if (!bytes) {
      report(Kind::file, line, name, excerpt(name) + ": there is no animation " + excerpt(file.view()));
      return std::nullopt;
    }
    const char* why = nullptr;
    auto read = readAnn(*bytes, &why);
    if (!read)
      report(Kind::file, line, name, excerpt(name) + ": " + excerpt(file.view()) + " cannot be read: " + why);
    return read;
  }

  // Elements

  void checkElement(const std::string& name, const Element& element) const {
    if (element.typeLine == 0) {
      report(Kind::definition, element.line, name, excerpt(name) + " has no TYPE: nothing is made of it");
    } else if (element.type == "SIMPLE") {
      checkSimple(name, element);
    } else if (element.type == "SPEAKING") {
      checkSpeaker(name, element);
    }
  }

  void checkSimple(const std::string& name, const Element& element) const {
    bool mayBe = false;
    const CXString ending = CFileNameResolver(CXString(element.fileName)).getExtension();
    const bool isObject = object(element.fileName, type::kAnimo, &mayBe) != nullptr;
    if (!isObject && ending.equalsIgnoreCase("WAV")) {
      if (!game_.hasSound(CXString(element.fileName)))
        report(Kind::file, element.typeLine, name,
               excerpt(name) + ": there is no sound " + excerpt(element.fileName));
    } else if (isObject || ending.equalsIgnoreCase("ANN")) {
      const auto read = animation(name, element.fileName, element.typeLine);
      if (read) checkEvent(name, element, *read);
    } else if (!mayBe) {
      report(Kind::object, element.typeLine, element.fileName,
             excerpt(name) + ": " + excerpt(element.fileName) + " is no ANIMO, and no ANN or WAV file");
    }
  }

  void checkEvent(const std::string& name, const Element& element, const AnnFile& read) const {
    const auto isNamed = [&](const _annEventInfo3& event) {
      return event.name.equalsIgnoreCase(CXString(element.event));
    };
    const bool isPlace = isNumber(element.event) && element.event.size() < 9 &&
                         static_cast<std::size_t>(std::stol(element.event)) < read.events.size();
    if (isPlace || std::any_of(read.events.begin(), read.events.end(), isNamed)) return;
    Nearest nearest(element.event);
    for (const _annEventInfo3& event : read.events) nearest.consider(event.name);
    report(Kind::event, element.eventLine != 0 ? element.eventLine : element.typeLine, element.event,
           excerpt(name) + ": " + excerpt(element.fileName) + " has no event " + excerpt(element.event),
           nearest.name());
  }

  void checkSpeaker(const std::string& name, const Element& element) const {
    if (element.animationLine == 0) return;
    const auto read = animation(name, element.animation, element.animationLine);
    if (!read || read->events.empty()) return;
    const CXString prefix(element.prefix);
    const auto has = [&](const char* word) {
      return std::any_of(read->events.begin(), read->events.end(), [&](const _annEventInfo3& event) {
        return event.name.equalsIgnoreCase(speech::eventName(prefix, word));
      });
    };
    const bool talks =
        std::any_of(read->events.begin(), read->events.end(),
                    [&](const _annEventInfo3& event) { return speech::isTalk(prefix, event.name); });
    const auto lacks = [&](const std::string& what) {
      report(Kind::event, element.animationLine, name,
             excerpt(name) + ": " + excerpt(element.animation) + what);
    };
    if (!talks) {
      lacks(element.prefix.empty()
                ? " has no event to talk with, whose name begins with a digit"
                : " has no event to talk with, whose name begins with " + excerpt(element.prefix + "_"));
    }
    if (element.starts && !has(speech::kStart)) lacks(" has no event " + startName(prefix) + " for STARTING");
    if (element.ends && !has(speech::kEnd) && !has(speech::kStop))
      lacks(" has no event " + endName(prefix) + " for ENDING");
  }

  static std::string startName(const CXString& prefix) {
    return excerpt(speech::eventName(prefix, speech::kStart).view());
  }
  static std::string endName(const CXString& prefix) {
    return excerpt(speech::eventName(prefix, speech::kEnd).view());
  }

  Game& game_;
  std::span<Scope* const> scopes_;
  const Game::TextFile& file_;
  int line_ = 0;
  std::map<std::string, Element, std::less<>> elements_;
};

}  // namespace

void checkSequence(Game& game, std::span<Scope* const> scopes, const CXString& fileName,
                   const Game::TextFile& file) {
  SequenceChecks(game, scopes, file).run(fileName);
}

}  // namespace footlight::check
