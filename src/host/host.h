#pragma once

// One run of the program: builds the machine that the options ask for and the engine on it, in this order:
// command line, language, window, application; brings up the display, starts the game, runs the main loop and
// takes everything down in reverse.

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>

#include "foundation/xstring.h"
#include "host/options.h"
#include "platform/input_recorder.h"
#include "platform/input_script.h"
#include "platform/platform.h"
#include "platform/thread_timer.h"
#include "platform/window_event.h"

namespace footlight {
class CApplication;
class CCommandLine6;
class CWindow;
}  // namespace footlight

namespace footlight::platform {
class HeadlessPlatform;
}

namespace footlight::host {

enum ExitStatus : int {
  kEnded = 0,           // by the game, the player or --ticks, or a tool run that worked
  kBadCommandLine = 1,  // with a message on standard error
  kNoStart = 2,         // no application could be built or the display failed, with a message
  kDiagnosed = 3,       // something was reported and --diagnose stop asked for the end
  kOutOfMemory = 3,     // the game took far more than --memory allows, with a message
  kNotWritten = 4,      // a file that an option asked for could not be written, with a message
  kTimeUp = 5,          // --time-limit was reached, with a message
};

class Host {
 public:
  explicit Host(Options options);
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  // Runs to the end and gives the exit status.
  int run();

 private:
  void boundMemory() const;
  bool isTimeUp() const;
  void makePlatform();
  bool openInput();
  bool finishRecords();
  void startDiagnose();
  void print(const std::string& line);
  int runEngine();
  int makeBigFile() const;
  bool isRefused(const CCommandLine6& commandLine) const;
  CXString bigFileName() const;
  bool areModulesSafe() const;
  int runGame(CWindow& window, CApplication& application, const CCommandLine6& commandLine);
  std::uint32_t loop(CWindow& window);
  std::unique_ptr<platform::ThreadTimer> keepAsking() const;
  void takeEvents();
  bool isCloseAsked();
  void beginTick(std::uint32_t tick, CWindow& window);
  void handle(const platform::WindowEvent& event, CWindow& window) const;
  void takeShots(std::uint32_t tick, CWindow& window);
  void waitForNextPass(std::uint32_t passStart);

  Options options_;
  std::unique_ptr<platform::Platform> platform_;
  platform::HeadlessPlatform* headless_ = nullptr;  // the same, if it is that one
  platform::InputQueue* devices_ = nullptr;         // the platform's
  platform::InputScript script_;
  std::unique_ptr<platform::InputRecorder> recorder_;
  std::vector<platform::WindowEvent> waiting_;  // taken from the platform, not yet told to the window
  std::optional<std::chrono::steady_clock::time_point> deadline_;  // of --time-limit
  std::uint32_t tick_ = 0;
  bool diagnosed_ = false;
  bool isShotMissing_ = false;
  std::unordered_set<std::string> told_;  // the lines of reports
};

}  // namespace footlight::host
