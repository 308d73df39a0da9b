#include "platform/input_recorder.h"

namespace footlight::platform {

InputRecorder::InputRecorder(const std::string& machinePath) : file_(machinePath) { file_.publish(); }

void InputRecorder::line(const std::string& event) {
  const std::string text = std::to_string(tick_) + " " + event + "\n";
  file_.write(std::as_bytes(std::span(text)));
  file_.flush();
}

void InputRecorder::write(const MouseEvent& event) {
  constexpr const char* kButtons[] = {"left", "middle", "right"};
  const CursorPosition at{event.x, event.y};
  const std::string place = std::to_string(at.x) + " " + std::to_string(at.y);
  const std::string button = kButtons[static_cast<std::size_t>(event.button)];
  const bool isButton = event.kind == MouseEventKind::buttonDown || event.kind == MouseEventKind::buttonUp;
  // A scripted button acts where the cursor is, so the cursor goes there first.
  if (event.kind == MouseEventKind::move || (isButton && cursor_ != at)) line("move " + place);
  cursor_ = at;
  if (event.kind == MouseEventKind::doubleClick) line("dblclick " + place);
  if (isButton) line((event.kind == MouseEventKind::buttonDown ? "down " : "up ") + button);
}

void InputRecorder::write(const KeyEvent& event) {
  const char* verb = event.repeated ? "keyrepeat " : event.down ? "keydown " : "keyup ";
  line(verb + std::to_string(event.scanCode));
}

void InputRecorder::write(const CharacterEvent& event) {
  line((event.repeated ? "charrepeat " : "char ") + std::to_string(event.character));
}

void InputRecorder::write(const ControllerEvent& event) {
  line((event.isButton ? "joy button " : "joy axis ") + std::to_string(event.number) + " " +
       std::to_string(event.value));
}

void InputRecorder::write(const WindowEvent& event) {
  if (event.kind == WindowEvent::Kind::activate) line("activate " + std::to_string(event.a));
}

}  // namespace footlight::platform
