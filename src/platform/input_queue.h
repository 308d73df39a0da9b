#pragma once

// The input devices of both back ends: bounded queues and the state that follows from what was put in. A back
// end puts events in as they come; over the bound an event is dropped, but the key state and the cursor still
// follow it. Every operation may be called on any thread.

#include <atomic>
#include <bitset>
#include <mutex>

#include "platform/input_devices.h"

namespace footlight::platform {

class InputRecorder;

class InputQueue : public InputDevices {
 public:
  static constexpr int kScanCodes = 256;
  static constexpr int kPorts = 8;

  explicit InputQueue(bool wantsPollingThread) : wantsPollingThread_(wantsPollingThread) {}

  // A scan code outside 0 to 255 is ignored.
  void put(const KeyEvent& event);
  void put(const CharacterEvent& event);
  void put(const MouseEvent& event);
  // A first event connects the controller. What no controller has is ignored.
  void put(const ControllerEvent& event);
  void connectController(int port);
  void disconnectController(int port);
  // Every event is also written there; null ends that. The recorder stays the caller's.
  void recordTo(InputRecorder* recorder);

  std::vector<MouseEvent> takeMouseEvents() override;
  std::vector<KeyEvent> takeKeyEvents() override;
  std::vector<CharacterEvent> takeCharacters() override;
  bool tellsTyping() const override { return tellsTyping_; }
  // From now on characters come by `put` alone.
  void tellTyping() { tellsTyping_ = true; }
  bool isKeyDown(int scanCode) const override;
  std::optional<ControllerState> controller(int port) const override;
  CursorPosition cursorPosition() const override;
  void moveCursor(CursorPosition position) override;
  bool wantsPollingThread() const override { return wantsPollingThread_; }

 private:
  const bool wantsPollingThread_;
  mutable std::mutex mutex_;
  std::vector<MouseEvent> mouse_;
  std::vector<KeyEvent> keys_;
  std::vector<CharacterEvent> characters_;
  std::atomic<bool> tellsTyping_ = false;
  std::bitset<kScanCodes> down_;
  std::array<std::optional<ControllerState>, kPorts> controllers_;
  CursorPosition cursor_{0, 0};
  InputRecorder* recorder_ = nullptr;
};

}  // namespace footlight::platform
