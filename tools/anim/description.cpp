#include "anim/description.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

#include "foundation/code_page.h"

namespace footlight::anim {

namespace {

constexpr std::int64_t kMostCount = std::numeric_limits<std::int16_t>::max();
constexpr std::int64_t kLeastPlace = std::numeric_limits<std::int16_t>::min();
constexpr std::size_t kMostNameBytes = 31;
constexpr FlagWord kAlphas[] = {{"auto", static_cast<std::uint32_t>(image::AlphaPlane::asNeeded)},
                                {"always", static_cast<std::uint32_t>(image::AlphaPlane::always)},
                                {"never", static_cast<std::uint32_t>(image::AlphaPlane::never)}};

template <class Rows>
std::string choicesOf(const Rows& rows) {
  std::string words;
  for (const auto& row : rows) words += (words.empty() ? "" : ", ") + std::string(row.word);
  return words;
}

template <class Rows>
const auto* rowOf(const Rows& rows, std::string_view word) {
  const auto* row = std::ranges::find_if(rows, [&](const auto& each) { return word == each.word; });
  return row == std::end(rows) ? nullptr : row;
}

// The words of one line, taken one after the other. The first thing that is wrong is kept.
class Line {
 public:
  explicit Line(std::string_view text) : rest_(text) { skipBlanks(); }

  bool isOver() const { return rest_.empty() || isFaulty(); }
  bool isFaulty() const { return !fault_.empty(); }
  const std::string& fault() const { return fault_; }
  void fail(std::string fault) {
    if (!isFaulty()) fault_ = std::move(fault);
  }

  std::string word(const char* what) {
    if (rest_.empty()) fail(std::string(what) + " is missing");
    const std::string word = rest_.starts_with('"') ? quoted() : plain();
    skipBlanks();
    return word;
  }

  std::int64_t number(const char* what, std::int64_t least, std::int64_t most) {
    const std::string typed = word(what);
    const auto value = numberOf(typed);
    if (value && *value >= least && *value <= most) return *value;
    fail(std::string(what) + " must be a number from " + std::to_string(least) + " to " +
         std::to_string(most) + ", not \"" + typed + "\"");
    return least;
  }

  // Decimal, or hexadecimal after 0x.
  static std::optional<std::int64_t> numberOf(std::string_view typed) {
    const bool isHex = typed.starts_with("0x");
    if (isHex) typed.remove_prefix(2);
    std::int64_t value = 0;
    const auto [end, error] =
        std::from_chars(typed.data(), typed.data() + typed.size(), value, isHex ? 16 : 10);
    if (typed.empty() || error != std::errc() || end != typed.data() + typed.size()) return std::nullopt;
    return value;
  }

  CXString text(const char* what) {
    const auto text = code_page::fromUtf8(word(what));
    if (!text) fail(std::string(what) + " has characters that code page 1250 lacks");
    return CXString(text.value_or(""));
  }

 private:
  static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

  void skipBlanks() {
    while (!rest_.empty() && isBlank(rest_.front())) rest_.remove_prefix(1);
  }

  std::string plain() {
    const auto* end = std::find_if(rest_.begin(), rest_.end(), isBlank);
    const std::string word(rest_.begin(), end);
    rest_.remove_prefix(word.size());
    return word;
  }

  std::string quoted() {
    std::string word;
    std::size_t i = 1;
    for (; i < rest_.size() && rest_[i] != '"'; ++i) {
      const bool isEscaped = rest_[i] == '\\' && i + 1 < rest_.size();
      if (isEscaped) ++i;
      word += isEscaped && rest_[i] == 'n' ? '\n' : rest_[i];
    }
    if (i >= rest_.size()) fail("a double quote is missing at the end");
    rest_.remove_prefix(std::min(rest_.size(), i + 1));
    return word;
  }

  std::string_view rest_;
  std::string fault_;
};

class Parser {
 public:
  bool takeLine(std::string_view text) {
    Line line(text);
    if (line.isOver() || text[text.find_first_not_of(" \t")] == '#') return true;
    const std::string command = line.word("a command");
    struct Row {
      const char* word;
      void (Parser::*take)(Line&);
    };
    static constexpr Row kRows[] = {
        {"bits", &Parser::takeBits},
        {"packing", &Parser::takePacking},
        {"alpha", &Parser::takeAlpha},
        {"fps", &Parser::takeFps},
        {"opacity", &Parser::takeOpacity},
        {"random", &Parser::takeRandom},
        {"flags", &Parser::takeFlags},
        {"author", &Parser::takeAuthor},
        {"description", &Parser::takeDescription},
        {"frame", &Parser::takeFrame},
        {"event", &Parser::takeEvent},
        {"step", &Parser::takeStep},
    };
    const Row* row = rowOf(kRows, command);
    if (row == nullptr) {
      line.fail("\"" + command + "\" is no command; there are " + choicesOf(kRows));
    } else {
      (this->*row->take)(line);
    }
    if (!line.isOver()) line.fail("\"" + line.word("") + "\" is too much here");
    fault_ = line.fault();
    return fault_.empty();
  }

  const std::string& fault() const { return fault_; }
  Description take() { return std::move(made_); }

 private:
  AnnFile& animation() { return made_.animation; }

  void takeBits(Line& line) {
    animation().bpp = made_.form.bpp = static_cast<int>(line.number("the bits", 15, 16));
  }
  void takePacking(Line& line) {
    const std::string word = line.word("the packing");
    const image::PackingWord* row = rowOf(image::kPackings, word);
    if (row != nullptr) made_.form.packing = row->packing;
    if (row == nullptr) line.fail("\"" + word + "\" is no packing; there are " + choicesOf(image::kPackings));
  }
  void takeAlpha(Line& line) {
    const std::string word = line.word("the alpha");
    const FlagWord* row = rowOf(kAlphas, word);
    if (row != nullptr) made_.form.alpha = static_cast<image::AlphaPlane>(row->flag);
    if (row == nullptr) line.fail("\"" + word + "\" is none of " + choicesOf(kAlphas));
  }
  void takeFps(Line& line) { animation().fps = fpsOf(line); }
  void takeOpacity(Line& line) { animation().opacity = opacityOf(line); }
  void takeRandom(Line& line) {
    animation().randomFrames = static_cast<int>(line.number("the number of frames", 0, kMostCount));
  }
  void takeFlags(Line& line) {
    while (!line.isOver()) {
      const std::string word = line.word("a flag");
      if (!addFlag(kAnimationFlags, word, animation().flags))
        line.fail("\"" + word + "\" is no flag; there are numbers and " + choicesOf(kAnimationFlags));
    }
  }
  void takeAuthor(Line& line) { animation().author = line.text("the author"); }
  void takeDescription(Line& line) { animation().description = line.text("the description"); }

  void takeFrame(Line& line) {
    made_.pictures.push_back(line.word("the frame's PNG file"));
    AnnFrame frame;
    while (!line.isOver()) {
      const std::string word = line.word("");
      if (word == "at") {
        frame.position = placeOf(line);
      } else {
        line.fail("\"" + word + "\" means nothing here; there is only at X Y");
      }
    }
    animation().frames.push_back(std::move(frame));
    if (static_cast<std::int64_t>(animation().frames.size()) > kMostCount) line.fail("too many frames");
  }

  void takeEvent(Line& line) {
    _annEventInfo3 event;
    event.name = line.text("the event's name");
    if (static_cast<std::size_t>(event.name.Length()) > kMostNameBytes)
      line.fail("an event's name has at most 31 bytes");
    while (!line.isOver()) takeEventWord(line, line.word(""), event);
    animation().events.push_back(std::move(event));
    if (static_cast<std::int64_t>(animation().events.size()) > kMostCount) line.fail("too many events");
  }

  static void takeEventWord(Line& line, const std::string& word, _annEventInfo3& event) {
    if (word == "fps") {
      event.fps = fpsOf(line);
    } else if (word == "opacity") {
      event.opacity = opacityOf(line);
    } else if (word == "loop") {
      event.loopFrom = static_cast<int>(line.number("the loop's first position", 0, kMostCount));
      event.loopTo = static_cast<int>(line.number("the loop's last position", 0, kMostCount));
    } else if (word == "times") {
      event.loopCount = static_cast<int>(line.number("the times", 0, kMostCount));
    } else if (word == "flags") {
      event.flags |= static_cast<std::uint32_t>(line.number("the flags", 0, 0xFFFFFFFF));
    } else if (!addFlag(kEventFlags, word, event.flags)) {
      line.fail("\"" + word + "\" means nothing here; there are fps, opacity, loop, times, flags, " +
                choicesOf(kEventFlags));
    }
  }

  void takeStep(Line& line) {
    if (animation().events.empty()) {
      line.fail("a step needs an event before it");
      return;
    }
    _annEventInfo3& event = animation().events.back();
    event.frames.push_back(frameOf(line));
    if (event.frameCount() > kMostCount) line.fail("too many steps");
    _anmFrameInfo3 info;
    while (!line.isOver()) takeStepWord(line, line.word(""), info);
    event.infos.push_back(std::move(info));
  }

  static void takeStepWord(Line& line, const std::string& word, _anmFrameInfo3& info) {
    if (word == "offset") {
      info.offset = placeOf(line);
    } else if (word == "opacity") {
      info.opacity = opacityOf(line);
    } else if (word == "name") {
      info.name = line.text("the name");
    } else if (word == "text") {
      info.text = line.text("the text");
    } else if (word == "sound") {
      info.soundName = line.text("the sound");
    } else {
      line.fail("\"" + word + "\" means nothing here; there are offset, opacity, name, text, sound");
    }
  }

  int frameOf(Line& line) {
    const std::string word = line.word("the step's frame");
    const auto named = std::ranges::find(made_.pictures, word);
    if (named != made_.pictures.end()) return static_cast<int>(named - made_.pictures.begin());
    const auto number = Line::numberOf(word);
    const auto count = static_cast<std::int64_t>(made_.pictures.size());
    if (number && *number >= 0 && *number < count) return static_cast<int>(*number);
    line.fail("no frame before this line is \"" + word + "\"");
    return 0;
  }

  static CXPoint placeOf(Line& line) {
    const auto x = line.number("X", kLeastPlace, kMostCount);
    return {static_cast<int>(x), static_cast<int>(line.number("Y", kLeastPlace, kMostCount))};
  }
  static int fpsOf(Line& line) { return static_cast<int>(line.number("the frames a second", 0, 1000)); }
  static std::uint8_t opacityOf(Line& line) {
    return static_cast<std::uint8_t>(line.number("the opacity", 0, 255));
  }
  template <class Rows>
  static bool addFlag(const Rows& rows, const std::string& word, std::uint32_t& flags) {
    const FlagWord* row = rowOf(rows, word);
    const auto number = Line::numberOf(word);
    if (row != nullptr) flags |= row->flag;
    if (number && *number >= 0) flags |= static_cast<std::uint32_t>(*number);
    return row != nullptr || (number && *number >= 0);
  }

  Description made_;
  std::string fault_;
};

// And back

// A word as it stands in a line; it is UTF-8, as names of files are.
std::string wordOf(std::string_view shown) {
  const bool isPlain = !shown.empty() && shown.find_first_of(" \t\"\\\n\r") == std::string::npos;
  if (isPlain) return std::string(shown);
  std::string out = "\"";
  for (const char c : shown) {
    if (c == '"' || c == '\\') out += '\\';
    if (c == '\n') out += "\\n";
    if (c != '\n') out += c;
  }
  return out + "\"";
}

// The same for a text of the engine.
std::string quotedOf(std::string_view text) { return wordOf(code_page::toUtf8(text)); }

template <class Rows>
std::string flagsOf(const Rows& rows, std::uint32_t flags, const char* beforeNumber) {
  std::string words;
  for (const FlagWord& row : rows) {
    if ((flags & row.flag) != 0) words += std::string(" ") + row.word;
    flags &= ~row.flag;
  }
  if (flags != 0) words += beforeNumber + std::to_string(flags);
  return words;
}

std::string placeText(const char* word, CXPoint place) {
  return std::string(" ") + word + " " + std::to_string(place.x) + " " + std::to_string(place.y);
}

std::string wordAndNumber(const char* word, int number, int usual) {
  return number == usual ? "" : std::string(" ") + word + " " + std::to_string(number);
}

std::string stepLine(const std::string& picture, const _anmFrameInfo3& info) {
  std::string line = "step " + wordOf(picture);
  if (info.offset != CXPoint()) line += placeText("offset", info.offset);
  line += wordAndNumber("opacity", info.opacity, 255);
  if (info.name.IsString()) line += " name " + quotedOf(info.name.view());
  if (info.text.IsString()) line += " text " + quotedOf(info.text.view());
  if (info.soundName.IsString()) line += " sound " + quotedOf(info.soundName.view());
  return line + "\n";
}

std::string eventLines(const Description& description, const _annEventInfo3& event) {
  std::string lines = "\nevent " + quotedOf(event.name.view()) + " fps " + std::to_string(event.fps) +
                      wordAndNumber("opacity", event.opacity, 255);
  if (event.loopTo != 0 || event.loopFrom != 0)
    lines += " loop " + std::to_string(event.loopFrom) + " " + std::to_string(event.loopTo);
  lines += wordAndNumber("times", event.loopCount, 0) + flagsOf(kEventFlags, event.flags, " flags ") + "\n";
  const _anmFrameInfo3 none;
  for (int i = 0; i < event.frameCount(); ++i) {
    const auto number = static_cast<std::size_t>(event.frames[static_cast<std::size_t>(i)]);
    const _anmFrameInfo3* info = event.info(i);
    lines += stepLine(description.pictures[number], info != nullptr ? *info : none);
  }
  return lines;
}

}  // namespace

std::optional<Description> parse(std::string_view text, std::string* why) {
  Parser parser;
  for (int number = 1; !text.empty(); ++number) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    if (!parser.takeLine(line)) {
      *why = "line " + std::to_string(number) + ": " + parser.fault();
      return std::nullopt;
    }
  }
  return parser.take();
}

std::string print(const Description& description) {
  const AnnFile& animation = description.animation;
  std::string text = "bits " + std::to_string(animation.bpp) + "\n";
  for (const image::PackingWord& row : image::kPackings) {
    if (row.packing == description.form.packing) text += std::string("packing ") + row.word + "\n";
  }
  text += "fps " + std::to_string(animation.fps) + "\nopacity " + std::to_string(animation.opacity) +
          "\nrandom " + std::to_string(animation.randomFrames) + "\n";
  if (animation.flags != 0) text += "flags" + flagsOf(kAnimationFlags, animation.flags, " ") + "\n";
  text += "author " + quotedOf(animation.author.view()) + "\ndescription " +
          quotedOf(animation.description.view()) + "\n\n";
  for (std::size_t i = 0; i < animation.frames.size(); ++i)
    text += "frame " + wordOf(description.pictures[i]) + placeText("at", animation.frames[i].position) + "\n";
  for (const _annEventInfo3& event : animation.events) text += eventLines(description, event);
  return text;
}

}  // namespace footlight::anim
