#include "script/melements_loader.h"

#include <algorithm>
#include <string>

#include "files/file_places.h"
#include "files/text_coder.h"
#include "files/text_file_reader.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "foundation/string_tokenizer.h"

namespace footlight {

namespace {

constexpr int kCodeCycle = 6;

constexpr bool isSeparator(char c) { return c == ':' || c == '=' || c == '\n'; }

// Takes the next piece between separators off the front; empty when there is none.
std::string_view nextPiece(std::string_view& rest) {
  std::size_t start = 0;
  while (start < rest.size() && isSeparator(rest[start])) ++start;
  std::size_t end = start;
  while (end < rest.size() && !isSeparator(rest[end])) ++end;
  const std::string_view piece = rest.substr(start, end - start);
  rest.remove_prefix(end);
  return piece;
}

void trimBlanks(std::string& text) {
  text.erase(std::min(text.find_last_not_of(' ') + 1, text.size()));
  text.erase(0, text.find_first_not_of(' '));
}

std::string_view trimmed(std::string_view text) {
  const auto start = std::min(text.find_first_not_of(' '), text.size());
  return text.substr(start, text.find_last_not_of(' ') + 1 - start);
}

// The next logical line, at most limits::kLogicalLineBytes of it. `physical` is its first physical line.
std::string readLine(CTextCoder& coder, CXString physical, int* physicalLines) {
  std::string result;
  bool isContinued = false;
  for (;;) {
    if (physicalLines != nullptr) ++*physicalLines;
    std::string line = physical.str();
    std::erase(line, '\t');
    isContinued = line.find('/') != std::string::npos;
    if (line.size() > 2) line.pop_back();  // the line feed
    const std::size_t room = static_cast<std::size_t>(limits::kLogicalLineBytes) - result.size();
    if (line.size() > room) limitHit("definition.line");
    result.append(line, 0, room);
    trimBlanks(result);
    if (!isContinued || coder._eof()) break;
    physical = coder.getLine();
  }
  std::erase(result, '/');
  return result;
}

// The next logical line; the view holds until the next call. A line that is one physical line without tabs
// and slashes, in text that is not coded, stays where it is; others are put together in `storage`. Short
// lines keep their line feed there; as a separator it makes no difference.
std::string_view nextLine(CTextCoder& coder, std::string* storage, int* physicalLines) {
  if (coder.isCoded()) return *storage = readLine(coder, coder.getLine(), physicalLines);
  const std::string_view line = coder.plainLine();
  const bool isPlain = line.find('\t') == std::string_view::npos && line.find('/') == std::string_view::npos;
  if (!isPlain || line.size() > static_cast<std::size_t>(limits::kLogicalLineBytes))
    return *storage = readLine(coder, CXString(line) += '\n', physicalLines);
  ++*physicalLines;
  return trimmed(line);
}

// Acts on the lines of one file.
class Parser {
 public:
  Parser(CMElements& document, std::uint32_t file) : document_(document), origin_{file, 0} {}

  void parse(std::string_view line, std::int32_t number) {
    origin_.line = number;
    rest_ = line;
    for (std::string_view token = next(); !token.empty(); token = next()) {
      if (!act(token, line)) return;
    }
  }

 private:
  std::string_view next() { return nextPiece(rest_); }

  // Lines about one element mostly stand together.
  CMElement* find(std::string_view name) {
    if (latest_ == nullptr || latest_->getName() != name) latest_ = document_.get(name);
    return latest_;
  }

  // False when the rest of the line is used up or dropped.
  bool act(std::string_view token, std::string_view line) {
    if (token == "DEF") return define(line);
    if (token == "OBJECT" || token == "IMPORT") return create(token);
    CMElement* element = find(token);
    if (element == nullptr) return drop(token, "no element of this name");
    const std::string_view verb = next();
    if (verb == "ADD" || verb == "APPLY") return link(*element, verb);
    if (verb.empty()) return drop(token, "neither a property nor a verb follows the name");
    setProperty(*element, verb);
    return true;
  }

  bool create(std::string_view keyword) {
    const std::string_view name = next();
    if (name.empty()) return drop(keyword, "no name follows");
    if (isFull(name)) return false;
    if (!memory::hasRoom()) return drop(name, "there is no memory for it");
    CMElement* element = document_.makeFirst(name, origin_);
    if (element == nullptr) return drop(name, "there is an element of this name already");
    if (keyword == "IMPORT") addProperty(*element, "TYPE", "SEQUENCE");
    latest_ = element;
    return true;
  }

  bool link(CMElement& element, std::string_view verb) {
    const std::string_view name = next();
    CMElement* other = document_.get(name);
    if (other == nullptr) return drop(name, "no element of this name to add or apply");
    CMElement& parent = verb == "ADD" ? *other : element;
    parent.addChild(verb == "ADD" ? &element : other);
    return true;
  }

  void setProperty(CMElement& element, std::string_view name) {
    const std::string_view first = next();
    if (first.empty()) {
      if (!element.isPropertyAvailable(name)) addProperty(element, name, {});
      return;
    }
    std::string_view second = next();
    if (second.empty()) return addProperty(element, name, first);
    std::string value(first);
    for (; !second.empty(); second = next()) value.append(" ").append(second);
    addProperty(element, name, value);
  }

  // DEF:NAME(KEY=VALUE|KEY=VALUE); the name begins at the fifth character whatever stands before it.
  bool define(std::string_view line) {
    constexpr std::size_t kNameStart = 4;
    const auto open = line.find('(');
    const auto close = line.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open ||
        open < kNameStart) {
      return drop("DEF", "no brackets follow the name");
    }
    const std::string_view name = line.substr(kNameStart, open - kNameStart);
    if (isFull(name)) return false;
    CMElement* element = document_.make(name, origin_);
    std::string_view inside = line.substr(open + 1, close - open - 1);
    for (auto token = takeToken(inside, "|"); !token.empty(); token = takeToken(inside, "|")) {
      const auto equals = token.find('=');
      if (equals == std::string_view::npos) {
        drop(token, "no equals sign in a property of DEF");
      } else {
        addProperty(*element, trimmed(token.substr(0, equals)), trimmed(token.substr(equals + 1)));
      }
    }
    return false;
  }

  bool isFull(std::string_view name) const {
    if (document_.getSize() < limits::kObjectsInScope) return false;
    guardHit("definition.elements");
    drop(name, "too many elements");
    return true;
  }

  void addProperty(CMElement& element, std::string_view name, std::string_view value) {
    if (properties_ >= limits::kDefinitionProperties) {
      guardHit("definition.properties");
      drop(name, "too many properties");
      return;
    }
    ++properties_;
    element.addProperty(name, value, origin_);
  }

  bool drop(std::string_view name, const char* why) const {
    if (diagnose::isOn()) diagnose::report(diagnose::Group::definition, name, "", why, origin_);
    return false;
  }

  CMElements& document_;
  Origin origin_;
  std::string_view rest_;
  CMElement* latest_ = nullptr;  // the first of its name
  int properties_ = 0;
};

}  // namespace

std::unique_ptr<CMElements> CMElementsLoader::load(CWindow* window, const CXString& fileName) {
  CTextCoder coder(window, fileName, false);
  const CFilePlaces* places = CFilePlaces::current();
  if (places != nullptr && places->isToCode()) {
    CTextCoder::code(window, fileName, fileName + ".coded", kCodeCycle);
  }
  if (places != nullptr && places->isToDecode()) CTextCoder::decode(window, fileName, fileName + ".decoded");
  return coder.LastError() == 0 ? load(&coder, coder.getFileName()) : nullptr;
}

std::unique_ptr<CMElements> CMElementsLoader::load(CWindow* window, CTextFileReader* reader) {
  CTextCoder coder(window, reader, false);
  return coder.LastError() == 0 ? load(&coder, coder.getFileName()) : nullptr;
}

std::unique_ptr<CMElements> CMElementsLoader::load(CTextCoder* coder, const CXString& fileName) {
  auto document = std::make_unique<CMElements>(true);
  Parser parser(*document, diagnose::internFile(fileName));
  int physicalLines = 0;
  std::string storage;
  while (!coder->_eof()) {
    const int number = physicalLines + 1;
    const std::string_view line = nextLine(*coder, &storage, &physicalLines);
    if (line.starts_with('!')) break;
    if (!line.starts_with('#')) parser.parse(line, number);
  }
  return document;
}

CXString CMElementsLoader::getLine(CTextCoder* coder, int* physicalLines) {
  return readLine(*coder, coder->getLine(), physicalLines);
}

bool CMElementsLoader::save(const CXString& /*fileName*/, const CMElements* /*elements*/) { return true; }

}  // namespace footlight
