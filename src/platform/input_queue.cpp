#include "platform/input_queue.h"

#include <algorithm>
#include <utility>

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "platform/input_recorder.h"

namespace footlight::platform {

namespace {

template <class Event>
void append(std::vector<Event>& queue, const Event& event) {
  if (queue.size() >= static_cast<std::size_t>(limits::kInputEvents)) {
    guardHit("input-queue");
    return;
  }
  queue.push_back(event);
}

bool isScanCode(int code) { return code >= 0 && code < InputQueue::kScanCodes; }

}  // namespace

void InputQueue::put(const KeyEvent& event) {
  if (!isScanCode(event.scanCode)) return;
  const std::lock_guard lock(mutex_);
  down_.set(static_cast<std::size_t>(event.scanCode), event.down);
  append(keys_, event);
  if (recorder_ != nullptr) recorder_->write(event);
}

void InputQueue::put(const CharacterEvent& event) {
  const std::lock_guard lock(mutex_);
  append(characters_, event);
  if (recorder_ != nullptr) recorder_->write(event);
}

void InputQueue::put(const MouseEvent& event) {
  const std::lock_guard lock(mutex_);
  cursor_ = {event.x, event.y};
  append(mouse_, event);
  if (recorder_ != nullptr) recorder_->write(event);
}

void InputQueue::put(const ControllerEvent& event) {
  const int count = event.isButton ? ControllerState::kButtons : ControllerState::kAxes;
  if (event.port < 0 || event.port >= kPorts || event.number < 0 || event.number >= count) return;
  const std::lock_guard lock(mutex_);
  auto& state = controllers_[static_cast<std::size_t>(event.port)];
  if (!state) state.emplace();
  const auto number = static_cast<std::size_t>(event.number);
  if (event.isButton) {
    state->buttons[number] = event.value != 0;
  } else {
    state->axes[number] = std::clamp(event.value, -ControllerState::kFarthest, ControllerState::kFarthest);
  }
  if (recorder_ != nullptr && event.port == 0) recorder_->write(event);
}

void InputQueue::connectController(int port) {
  const std::lock_guard lock(mutex_);
  if (port >= 0 && port < kPorts) controllers_[static_cast<std::size_t>(port)].emplace();
}

void InputQueue::disconnectController(int port) {
  const std::lock_guard lock(mutex_);
  if (port >= 0 && port < kPorts) controllers_[static_cast<std::size_t>(port)].reset();
}

std::optional<ControllerState> InputQueue::controller(int port) const {
  const std::lock_guard lock(mutex_);
  return port >= 0 && port < kPorts ? controllers_[static_cast<std::size_t>(port)] : std::nullopt;
}

void InputQueue::recordTo(InputRecorder* recorder) {
  const std::lock_guard lock(mutex_);
  recorder_ = recorder;
  if (recorder_ != nullptr && tellsTyping_) recorder_->beginTyping();
}

std::vector<MouseEvent> InputQueue::takeMouseEvents() {
  const std::lock_guard lock(mutex_);
  return std::exchange(mouse_, {});
}

std::vector<KeyEvent> InputQueue::takeKeyEvents() {
  const std::lock_guard lock(mutex_);
  return std::exchange(keys_, {});
}

std::vector<CharacterEvent> InputQueue::takeCharacters() {
  const std::lock_guard lock(mutex_);
  return std::exchange(characters_, {});
}

bool InputQueue::isKeyDown(int scanCode) const {
  if (!isScanCode(scanCode)) return false;
  const std::lock_guard lock(mutex_);
  return down_.test(static_cast<std::size_t>(scanCode));
}

CursorPosition InputQueue::cursorPosition() const {
  const std::lock_guard lock(mutex_);
  return cursor_;
}

void InputQueue::moveCursor(CursorPosition position) {
  const std::lock_guard lock(mutex_);
  cursor_ = position;
}

}  // namespace footlight::platform
