#pragma once

// What the engine needs of the machine, as interfaces. Nothing outside this folder calls
// the operating system.
//
// One Platform exists at a time. The host makes it (see sdl/ and headless/), installs it with `use` before it
// builds anything of the engine, and takes it away after the engine is gone. Everything here is called on the
// engine's thread unless an interface says otherwise.

#include <functional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/display.h"
#include "platform/file_system.h"
#include "platform/input_devices.h"
#include "platform/modules.h"
#include "platform/shell.h"
#include "platform/sound_device.h"
#include "platform/window_event.h"

namespace footlight::platform {

class Platform {
 public:
  virtual ~Platform() = default;

  virtual Clock& clock() = 0;
  virtual FileSystem& files() = 0;
  virtual Display& display() = 0;
  virtual InputDevices& input() = 0;
  virtual Shell& shell() = 0;
  virtual Modules& modules() = 0;
  // Null on a machine without sound.
  virtual SoundDevice* sound() { return nullptr; }
  // The system's language as four hexadecimal digits, upper case, as in "0415".
  virtual std::string locale() const = 0;
  // An estimate of the processor's speed; a machine of virtual time has a round one.
  virtual int processorMegahertz() const { return 1000; }
  // Lets the machine hand over its events: input goes to the devices, the rest is the answer, oldest first.
  // The host calls it once before each tick.
  virtual std::vector<WindowEvent> pump() { return {}; }
  // Calls `work` when the machine takes the display away and ends the process: what must be saved is saved
  // there. It must not draw. An empty function ends that.
  virtual void whenLost(std::function<void()> /*work*/) {}
};

// Installs the machine under the engine; null takes it away. The caller keeps ownership.
void use(Platform* platform);
// The installed platform; there must be one.
Platform& current();
bool isInstalled();

}  // namespace footlight::platform
