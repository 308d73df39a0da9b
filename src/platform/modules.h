#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace footlight::platform {

// A loaded shared library; unloading it is the destructor's work.
class Module {
 public:
  virtual ~Module() = default;
  // The address of an exported name, or null.
  virtual void* find(const char* name) const = 0;
};

class Modules {
 public:
  virtual ~Modules() = default;
  // Loads a library by its plain name (no folder in it) from the one folder of modules; null when it is not
  // there, is no library, or no module may be loaded at all. On this machine's systems an ending ".dll"
  // stands for the system's own ending.
  virtual std::unique_ptr<Module> load(std::string_view plainName) = 0;
  // Why no module may be loaded at all, as a text for people; empty when they may.
  virtual std::string refusal() const = 0;
};

}  // namespace footlight::platform
