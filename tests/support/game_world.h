#pragma once

// One whole engine for one run of an input: the headless machine with a disk in memory, the window, the
// application. Nothing of a run is left when the world is gone, so the next run starts from the same state.
//
// A budget bounds the cost: once it is used up, every further run ends at its first statement, and the game
// goes on no longer. Statements count, and what they make and the files that they use.

#include <memory>
#include <string>

#include "app/application.h"
#include "files/language_os_ver.h"
#include "foundation/command_line6.h"
#include "gfx/window.h"
#include "platform/headless/headless_platform.h"
#include "support/memory_files.h"

namespace footlight {

class CMC_Application;
class CMC_ObjectsContainer;
class CMC_Scene;

}  // namespace footlight

namespace footlight::test {

struct Rules {
  bool literal = false;  // read every statement anew, without caches
  int budget = 1 << 16;
};

class World {
 public:
  static constexpr std::uint32_t kTick = 16;  // milliseconds
  static constexpr const char* kIni = "game.ini";

  // Brings the game on the disk up to its first scene. The disk must outlive the world.
  World(const Disk& disk, const Rules& rules);
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  platform::HeadlessPlatform& machine() { return machine_; }
  const MemoryFiles& files() const { return files_; }
  CWindow& window() { return *window_; }
  // Null when the disk holds no game.
  CMC_Application* game() const { return application_->getMCApplicationIfc(); }
  // The innermost level that runs, the application itself if none does; null without a game.
  CMC_Scene* scene() const;
  // The game is over, or it would go on without running code.
  bool hasEnded() const { return ended_ || isBudgetUsedUp(); }
  bool isBudgetUsedUp() const { return budget_ <= 0; }

  // Runs code as a behaviour of a level of its own name, which replaces an earlier one.
  void run(CMC_ObjectsContainer* level, const std::string& name, std::string_view code);
  // One pass of the main loop; nothing once the game has ended.
  void tick();
  // Ends the game; only the disk is left.
  void close();

 private:
  MemoryFiles& files_;
  platform::HeadlessPlatform machine_;
  CCommandLine6 commandLine_{"-window"};
  std::unique_ptr<CLanguageOSVer> language_;
  std::unique_ptr<CWindow> window_;
  std::unique_ptr<CApplication> application_;
  bool mayContinue();

  std::int64_t budget_;
  std::uint64_t generation_;
  bool ended_ = false;
};

}  // namespace footlight::test
