#pragma once

// JOYSTICK: a game controller, as signals and states. PORT says which one, 0 being the first; without that
// controller it is still.
//
// The controller is asked where the pollers are, on their thread; what changed waits in a queue and is told
// on the engine's thread.

#include <array>
#include <mutex>
#include <vector>

#include "input/input_poller.h"
#include "platform/input_devices.h"
#include "script/mc_object.h"

namespace footlight {

class CWindow;

namespace type {
inline constexpr int kJoystick = 2023;
}

enum class JoystickSignal { onButtonUp = kFirstOwnSignal, onButtonDown, onMove, count };

class CMC_Joystick : public CMC_Object, public CInputPoller {
 public:
  static constexpr int kUsualPort = 1;
  static constexpr int kNoPosition = -1;

  CMC_Joystick(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Joystick() override;
  static bool isTypeOf(int type) { return type == type::kJoystick; }
  // Asks the same controller, from rest.
  std::unique_ptr<CMC_Object> copy() const override;

  int getPort() const { return port_; }
  // False for a button that is not there.
  bool getButtonState(int button) const;
  // X and Y are 0 and 1, -1000 to 1000; kNoPosition for any other.
  int getAxis(int axis) const;

  void tick() override;
  void flushSignals(bool deliver) override;

 protected:
  void unlink() override;

 private:
  enum class Kind { buttonDown, buttonUp, move };
  struct Record {
    Kind kind;
    int button;
    const char* direction;
    const char* axis;
  };
  struct Axis {
    const char* name;
    const char* low;
    const char* high;
    int threshold;  // between readings that count as different
    int readings;   // in a row that it takes
    int edge;       // up to it the direction is the low one
  };

  CMC_Joystick(const CMC_Joystick& other);
  void start();
  void readButtons(const platform::ControllerState& state);
  void readAxis(const Axis& axis, std::size_t number, int value);
  void queue(const Record& record);
  void tell(const Record& record);

  CWindow* window_;
  int port_ = kUsualPort;
  // The poller's thread writes the state, scripts read it at any time.
  mutable std::mutex stateMutex_;
  platform::ControllerState last_;
  // The rest is touched under the window's lock alone.
  std::array<int, platform::ControllerState::kAxes> counts_{};
  std::vector<Record> queue_;
};

}  // namespace footlight
