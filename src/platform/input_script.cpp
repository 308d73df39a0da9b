#include "platform/input_script.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>

#include "foundation/limits.h"

namespace footlight::platform {

namespace {

using Words = std::vector<std::string_view>;
using Event = decltype(InputScript::Line::event);

constexpr std::string_view kBlanks = " \t\r";

Words wordsOf(std::string_view line) {
  Words words;
  line = line.substr(0, line.find('#'));
  for (std::size_t start = line.find_first_not_of(kBlanks); start != std::string_view::npos;) {
    const std::size_t end = std::min(line.find_first_of(kBlanks, start), line.size());
    words.push_back(line.substr(start, end - start));
    start = line.find_first_not_of(kBlanks, end);
  }
  return words;
}

template <class Number>
std::optional<Number> number(std::string_view text, Number least, Number most) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < least || value > most) {
    return std::nullopt;
  }
  return value;
}

std::optional<MouseButton> buttonOf(std::string_view word) {
  if (word == "left") return MouseButton::left;
  if (word == "middle") return MouseButton::middle;
  if (word == "right") return MouseButton::right;
  return std::nullopt;
}

constexpr int kFarthest = 32767;

std::optional<Event> pointEvent(MouseEventKind kind, const Words& words) {
  const auto x = number<int>(words[2], -kFarthest, kFarthest);
  const auto y = number<int>(words[3], -kFarthest, kFarthest);
  if (!x || !y) return std::nullopt;
  return MouseEvent{kind, *x, *y};
}

std::optional<Event> buttonEvent(bool down, const Words& words) {
  const auto button = buttonOf(words[2]);
  if (!button) return std::nullopt;
  return InputScript::Button{*button, down};
}

std::optional<Event> keyEvent(bool down, bool repeated, const Words& words) {
  const auto code = number<int>(words[2], 0, InputQueue::kScanCodes - 1);
  if (!code) return std::nullopt;
  return KeyEvent{*code, down, repeated};
}

std::optional<Event> characterEvent(bool repeated, const Words& words) {
  const auto code = number<int>(words[2], 0, 255);
  if (!code) return std::nullopt;
  return CharacterEvent{static_cast<unsigned char>(*code), repeated};
}

std::optional<Event> activateEvent(const Words& words) {
  const auto active = number<int>(words[2], 0, 1);
  if (!active) return std::nullopt;
  return WindowEvent{WindowEvent::Kind::activate, *active};
}

std::optional<Event> controllerEvent(const Words& words) {
  const bool isButton = words[2] == "button";
  if (!isButton && words[2] != "axis") return std::nullopt;
  const int count = isButton ? ControllerState::kButtons : ControllerState::kAxes;
  const int most = isButton ? 1 : ControllerState::kFarthest;
  const auto which = number<int>(words[3], 0, count - 1);
  const auto value = number<int>(words[4], isButton ? 0 : -most, most);
  if (!which || !value) return std::nullopt;
  return ControllerEvent{0, isButton, *which, *value};
}

struct Verb {
  std::string_view name;
  std::size_t words;  // of the whole line
  std::optional<Event> (*read)(const Words&);
  const char* form;
};

// clang-format off
constexpr Verb kVerbs[] = {
    {"move",     4, [](const Words& w) { return pointEvent(MouseEventKind::move, w); },        "move X Y"},
    {"dblclick", 4, [](const Words& w) { return pointEvent(MouseEventKind::doubleClick, w); }, "dblclick X Y"},
    {"down",     3, [](const Words& w) { return buttonEvent(true, w); },                       "down left|middle|right"},
    {"up",       3, [](const Words& w) { return buttonEvent(false, w); },                      "up left|middle|right"},
    {"keydown",  3, [](const Words& w) { return keyEvent(true, false, w); },                   "keydown SCAN (0 to 255)"},
    {"keyup",    3, [](const Words& w) { return keyEvent(false, false, w); },                  "keyup SCAN (0 to 255)"},
    {"keyrepeat", 3, [](const Words& w) { return keyEvent(true, true, w); },                   "keyrepeat SCAN (0 to 255)"},
    {"char",     3, [](const Words& w) { return characterEvent(false, w); },                   "char CODE (0 to 255)"},
    {"charrepeat", 3, [](const Words& w) { return characterEvent(true, w); },                  "charrepeat CODE (0 to 255)"},
    {"joy",      5, [](const Words& w) { return controllerEvent(w); },                         "joy axis 0-2 -1000-1000, or joy button 0-15 0|1"},
    {"activate", 3, [](const Words& w) { return activateEvent(w); },                           "activate 0|1"},
};
// clang-format on

// Reads one line's words; the answer is empty or says what is wrong.
std::string readLine(const Words& words, std::vector<InputScript::Line>& lines) {
  const auto tick = number<std::uint32_t>(words[0], 1, 0xFFFFFFFFU);
  if (!tick) return "'" + std::string(words[0]) + "' is no tick; ticks count from 1";
  if (words.size() < 2) return "an event is missing behind the tick";
  for (const Verb& verb : kVerbs) {
    if (verb.name != words[1]) continue;
    const auto event = words.size() == verb.words ? verb.read(words) : std::nullopt;
    if (!event) return std::string("expected: TICK ") + verb.form;
    lines.push_back({*tick, *event});
    return {};
  }
  return "'" + std::string(words[1]) + "' is no event";
}

}  // namespace

std::string InputScript::parse(std::string_view text, std::string_view name) {
  lines_.clear();
  next_ = 0;
  int lineNumber = 0;
  while (!text.empty()) {
    ++lineNumber;
    const std::size_t end = std::min(text.find('\n'), text.size());
    const Words words = wordsOf(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (words.empty()) continue;
    const std::string fault = readLine(words, lines_);
    if (fault.empty()) continue;
    lines_.clear();
    return std::string(name) + ":" + std::to_string(lineNumber) + ": " + fault;
  }
  std::stable_sort(lines_.begin(), lines_.end(),
                   [](const Line& a, const Line& b) { return a.tick < b.tick; });
  return {};
}

std::string InputScript::load(const std::string& machinePath) {
  std::ifstream file(machinePath, std::ios::binary);
  std::string text;
  char piece[4096];
  while (file.read(piece, sizeof piece) || file.gcount() > 0) {
    text.append(piece, static_cast<std::size_t>(file.gcount()));
    if (std::ssize(text) > limits::kTextFileBytes) return machinePath + ": is too large";
  }
  if (!file.is_open() || file.bad()) return machinePath + ": cannot be read";
  return parse(text, machinePath);
}

bool InputScript::usesController() const {
  return std::ranges::any_of(
      lines_, [](const Line& line) { return std::holds_alternative<ControllerEvent>(line.event); });
}

bool InputScript::tellsTyping() const {
  return std::ranges::any_of(
      lines_, [](const Line& line) { return std::holds_alternative<CharacterEvent>(line.event); });
}

void InputScript::play(std::uint32_t tick, InputQueue& devices, std::vector<WindowEvent>& windowEvents) {
  for (; next_ < lines_.size() && lines_[next_].tick <= tick; ++next_) {
    const Event& event = lines_[next_].event;
    if (const auto* window = std::get_if<WindowEvent>(&event)) {
      windowEvents.push_back(*window);
    } else if (const auto* key = std::get_if<KeyEvent>(&event)) {
      devices.put(*key);
    } else if (const auto* character = std::get_if<CharacterEvent>(&event)) {
      devices.put(*character);
    } else if (const auto* mouse = std::get_if<MouseEvent>(&event)) {
      devices.put(*mouse);
    } else if (const auto* controller = std::get_if<ControllerEvent>(&event)) {
      for (const int port : kScriptedPorts)
        devices.put(ControllerEvent{port, controller->isButton, controller->number, controller->value});
    } else if (const auto* button = std::get_if<Button>(&event)) {
      const CursorPosition at = devices.cursorPosition();
      devices.put(MouseEvent{button->down ? MouseEventKind::buttonDown : MouseEventKind::buttonUp, at.x, at.y,
                             button->button});
    }
  }
}

}  // namespace footlight::platform
