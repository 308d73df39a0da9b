#include "host/host.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <utility>

#include "app/application.h"
#include "files/big_file.h"
#include "files/config.h"
#include "files/language_os_ver.h"
#include "foundation/code_page.h"
#include "foundation/command_line6.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "foundation/random.h"
#include "gfx/direct_draw_surface.h"
#include "gfx/window.h"
#include "host/counted_memory.h"
#include "objects/all_types.h"
#include "platform/headless/headless_platform.h"
#include "platform/posix/file_system.h"
#include "platform/sdl/make_sdl_platform.h"
#include "platform/shot.h"
#include "script/caches.h"
#include "script/vocabulary.h"
#include "script/watchdog.h"

namespace footlight::host {

namespace {

constexpr const char* kCaption = "Footlight";
// A pass of the loop on a display that does not wait for its own refresh lasts at least this long.
constexpr std::uint32_t kPassMilliseconds = 8;
// Above the memory of the game, for what the engine takes beside it.
constexpr std::int64_t kReserve = std::int64_t{256} << 20;

void complain(const std::string& text) { std::fprintf(stderr, "footlight: %s\n", text.c_str()); }

CXString fromMachine(const std::string& text) { return code_page::fromUtf8(text).value_or(text); }

std::string startDirectory() {
  std::error_code error;
  return std::filesystem::current_path(error).string();
}

// "FILE:LINE: group: object^method: text", with the machine's name of the file, as editors understand it.
std::string reportLine(const diagnose::Report& report) {
  std::string place;
  if (!report.file.empty()) {
    place = platform::current().files().toMachinePath(report.file);
    if (place.empty()) place = code_page::toUtf8(report.file);
    place += ":" + std::to_string(report.line) + ": ";
  }
  std::string line = std::string(diagnose::groupName(report.group)) + ": " + report.object;
  if (!report.method.empty()) line += "^" + report.method;
  return place + code_page::toUtf8(line + ": " + report.text);
}

// The size that the command line asks for, or the usual one where no screen can have it.
CXSize screenSize(const CCommandLine6& commandLine) {
  const CXSize asked = commandLine.getResolution();
  if (limits::isPictureSize(asked.width, asked.height)) return asked;
  constexpr CXSize kUsual = CCommandLine6::kUsualResolution;
  complain("-res: no screen has " + std::to_string(asked.width) + " by " + std::to_string(asked.height) +
           " pixels; it gets " + std::to_string(kUsual.width) + " by " + std::to_string(kUsual.height));
  return kUsual;
}

}  // namespace

Host::Host(Options options) : options_(std::move(options)) {}

Host::~Host() = default;

int Host::run() {
  if (options_.vocabulary) {
    installAllTypes();
    std::puts(vocabularyJson().c_str());
    return kEnded;
  }
  caches::enable(!options_.literal);
  if (options_.timeLimit)
    deadline_ = std::chrono::steady_clock::now() + std::chrono::seconds(*options_.timeLimit);
  boundMemory();
  makePlatform();
  if (!openInput()) return kBadCommandLine;
  platform::use(platform_.get());
  startDiagnose();
  int status = runEngine();
  if (!finishRecords() && status == kEnded) status = kNotWritten;
  if (status == kEnded && isTimeUp()) {
    complain("--time-limit: the time is up");
    status = kTimeUp;
  }
  diagnose::listen({});
  devices_->recordTo(nullptr);
  platform::use(nullptr);
  return diagnosed_ && options_.diagnose == Diagnose::stop ? kDiagnosed : status;
}

// What the limits of single things and the budget let through must end somewhere. All that a game has saved
// is in its files at that moment.
void Host::boundMemory() const {
  const std::int64_t budget = std::int64_t{options_.memory} << 20;
  memory::use(memoryInUse, budget);
  refuseMemoryAbove(budget + budget / 2 + kReserve);
  std::set_new_handler([] {
    complain("the game takes more memory than --memory allows: it ends");
    std::_Exit(kOutOfMemory);
  });
}

bool Host::isTimeUp() const { return deadline_ && std::chrono::steady_clock::now() >= *deadline_; }

void Host::makePlatform() {
  const std::string start = startDirectory();
  auto files = std::make_unique<platform::PosixFileSystem>(start);
  // Packing shows nothing.
  if (options_.headless || !options_.packFolder.empty()) {
    platform::HeadlessOptions machine;
    machine.clockStart = options_.clockStart;
    machine.pacedReal = options_.pacedReal;
    machine.bpp = options_.bpp;
    machine.printFolder = start;
    machine.recordFile = options_.record;
    machine.moduleFolder = options_.modules.value_or(options_.installedModules);
    if (options_.time) machine.unixSeconds = *options_.time;
    if (!options_.locale.empty()) machine.locale = options_.locale;
    auto made = std::make_unique<platform::HeadlessPlatform>(std::move(machine), std::move(files));
    headless_ = made.get();
    devices_ = &made->input();
    platform_ = std::move(made);
  } else {
    platform::SdlOptions machine;
    machine.bpp = options_.bpp;
    machine.title = kCaption;
    machine.locale = options_.locale;
    machine.unixSeconds = options_.time;
    machine.printFolder = start;
    machine.moduleFolder = options_.modules.value_or(options_.installedModules);
    platform::SdlMachine made = platform::makeSdlPlatform(std::move(machine), std::move(files));
    devices_ = made.input;
    platform_ = std::move(made.platform);
  }
}

bool Host::openInput() {
  if (!options_.input.empty()) {
    const std::string fault = script_.load(options_.input);
    if (!fault.empty()) {
      complain("--input: " + fault);
      return false;
    }
    if (script_.usesController()) {
      for (const int port : platform::InputScript::kScriptedPorts) devices_->connectController(port);
    }
    if (script_.tellsTyping()) devices_->tellTyping();
  }
  if (headless_ != nullptr && !headless_->recordFailure().empty()) {
    complain("--record: " + options_.record + ": " + headless_->recordFailure());
    return false;
  }
  if (!options_.recordInput.empty()) {
    recorder_ = std::make_unique<platform::InputRecorder>(options_.recordInput);
    if (!recorder_->failure().empty()) {
      complain("--record-input: " + options_.recordInput + ": " + recorder_->failure());
      return false;
    }
    devices_->recordTo(recorder_.get());
  }
  return true;
}

// False when something that was asked for is not whole on the disk.
bool Host::finishRecords() {
  const std::string sound = headless_ != nullptr ? headless_->finishRecord() : std::string();
  const std::string input = recorder_ ? recorder_->failure() : std::string();
  if (!sound.empty()) complain("--record: " + options_.record + ": " + sound);
  if (!input.empty()) complain("--record-input: " + options_.recordInput + ": " + input);
  return sound.empty() && input.empty() && !isShotMissing_;
}

void Host::startDiagnose() {
  if (options_.diagnose == Diagnose::quiet) return;
  diagnose::listen([this](const diagnose::Report& report) {
    if (options_.diagnose == Diagnose::stop && diagnosed_) return;  // the first one stops
    diagnosed_ = true;
    print(reportLine(report));
  });
}

// What is wrong in code that runs every tick is told once.
void Host::print(const std::string& line) {
  constexpr std::size_t kMostRemembered = 10000;
  if (told_.contains(line)) return;
  if (told_.size() < kMostRemembered) told_.insert(line);
  std::fprintf(stderr, "%s\n", line.c_str());
}

bool Host::isRefused(const CCommandLine6& commandLine) const {
  const bool isPacking = commandLine.isCreateBigFile();
  if (isPacking != !options_.packFolder.empty() || isPacking != !options_.packFile.empty() ||
      (options_.packName && !isPacking)) {
    complain("-bigfile, --folder and --out belong together, --name goes with them");
    return true;
  }
  if (isPacking) return false;
  if (options_.bpp == 32 && !commandLine.isWindowMode()) {
    complain("--bpp: 32 needs -window: the engine takes a full screen of 32 bits for one of 24");
    return true;
  }
  return false;
}

// The root's name in the big file is the folder's as it was typed.
int Host::makeBigFile() const {
  platform::FileSystem& files = platform_->files();
  const CXString output(files.toEnginePath(options_.packFile));
  CXString folder = fromMachine(options_.packFolder);
  files.allowRoot(files.toEnginePath(options_.packFolder));
  files.allowRoot(output.Left(output.FindLast('\\') + 1));
  if (!files.directoryExists(folder)) folder = files.toEnginePath(options_.packFolder);
  if (!files.directoryExists(folder)) {
    complain("--folder: " + options_.packFolder + ": there is no such folder");
    return kBadCommandLine;
  }
  const CXString name =
      options_.packName ? fromMachine(*options_.packName) : output.Right(output.FindLast('\\') + 1);
  CBigFile bigFile(true, CXString());
  const bool made = bigFile.Create(folder, name, output);
  std::fflush(stdout);
  for (const std::string& remark : bigFile.getRemarks()) complain(code_page::toUtf8(remark));
  if (!made) complain("-bigfile: " + options_.packFile + ": " + code_page::toUtf8(bigFile.getFailure()));
  return made ? kEnded : kNoStart;
}

// The big file may lie anywhere, also where the game may not read.
CXString Host::bigFileName() const {
  if (options_.bigFile.empty()) return {};
  platform::FileSystem& files = platform_->files();
  const CXString name(files.toEnginePath(options_.bigFile));
  files.allowReading(name);
  return files.fileExists(name) ? name : fromMachine(options_.bigFile);
}

// A folder that was asked for must serve; the installed one may be missing, and an empty name means none.
bool Host::areModulesSafe() const {
  const bool isAsked = options_.modules && !options_.modules->empty();
  const std::string refusal = isAsked ? platform_->modules().refusal() : std::string();
  if (!refusal.empty()) complain("--modules: " + *options_.modules + ": " + refusal);
  return refusal.empty();
}

int Host::runEngine() {
  CCommandLine6 commandLine(fromMachine(options_.engineLine));
  if (isRefused(commandLine)) return kBadCommandLine;
  if (commandLine.isCreateBigFile()) return makeBigFile();
  platform::FileSystem& files = platform_->files();
  if (commandLine.getPath().IsString()) files.allowRoot(commandLine.getPath());
  if (!areModulesSafe()) return kBadCommandLine;
  files.clearLeftovers();
  CXRandom::seed(options_.seed.value_or(
      options_.headless ? 1 : static_cast<std::uint32_t>(platform_->clock().counter())));

  CLanguageOSVer language;
  CWindow window(&commandLine, &language, screenSize(commandLine),
                 CXString(files.toEnginePath(platform::PosixModules::programFolder().string())));
  language.setWindowIfc(&window);
  CApplication application(&window, fromMachine(options_.ini), bigFileName(), &commandLine);
  const int status = runGame(window, application, commandLine);
  platform_->whenLost({});
  return status;
}

int Host::runGame(CWindow& window, CApplication& application, const CCommandLine6& commandLine) {
  const int failure =
      commandLine.isWindowMode() ? window.CreateSurface() : window.SetDisplayMode(0, 0, options_.bpp);
  if (failure != 0) {
    window.ShowError(kCaption);
    complain("the display failed (" + std::to_string(failure) + ")");
    return kNoStart;
  }
  window.OnCreate();
  window.OnActivateApp(true);
  watchdog::use([this] { return !isCloseAsked() && !isTimeUp(); });
  const std::unique_ptr<platform::ThreadTimer> hurry = keepAsking();
  takeEvents();  // controllers that are there already
  platform_->whenLost([&application] {
    if (CConfig* config = application.GetConfigInterface()) config->flush();
    complain("the display is gone");
  });
  application.preinitializeApplication();
  if (application.LastError() != 0) {
    window.ShowError(kCaption);
    complain("no application could be built (" + std::to_string(application.LastError()) +
             "): is there a Dane/application.def?");
    return kNoStart;
  }
  if (!application.isStored()) {
    complain("the binary form of the game could not be written");
    return kNotWritten;
  }
  const std::uint32_t lastTick = commandLine.is2Bin() ? 0 : loop(window);
  for (const ShotRequest& shot : options_.shots) {
    if (shot.tick > lastTick)
      complain("--shot: " + shot.file + ": the run ended before tick " + std::to_string(shot.tick));
  }
  return kEnded;
}

// Statements may take long, so that counting them is not enough. A run that nobody and nothing can end early
// has no use for the thread.
std::unique_ptr<platform::ThreadTimer> Host::keepAsking() const {
  constexpr std::chrono::milliseconds kPeriod(20);
  if (headless_ != nullptr && !deadline_) return nullptr;
  return std::make_unique<platform::ThreadTimer>(kPeriod, watchdog::askSoon);
}

// Gives the last tick that ran.
std::uint32_t Host::loop(CWindow& window) {
  std::uint32_t tick = 0;
  while (!options_.ticks || tick < *options_.ticks) {
    ++tick;
    const std::uint32_t passStart = platform_->clock().ticks();
    beginTick(tick, window);
    const bool ended = window.domodal();
    platform_->display().present();
    takeShots(tick, window);
    if (ended || isTimeUp() || (diagnosed_ && options_.diagnose == Diagnose::stop)) break;
    waitForNextPass(passStart);
  }
  return tick;
}

// Moves the virtual clock, lets the devices have what belongs to the tick, and tells the window what
// happened to it.
void Host::beginTick(std::uint32_t tick, CWindow& window) {
  if (headless_ != nullptr) headless_->clock().advance(options_.step);
  tick_ = tick;
  if (recorder_) recorder_->setTick(tick);
  takeEvents();
  std::vector<platform::WindowEvent> events = std::exchange(waiting_, {});
  if (recorder_) {
    for (const platform::WindowEvent& event : events) recorder_->write(event);
  }
  script_.play(tick, *devices_, events);
  for (const platform::WindowEvent& event : events) handle(event, window);
}

void Host::takeEvents() {
  const std::vector<platform::WindowEvent> events = platform_->pump();
  waiting_.insert(waiting_.end(), events.begin(), events.end());
}

// Asked in the middle of long runs of scripts: what comes in waits for the next tick, but a closed
// window ends them.
bool Host::isCloseAsked() {
  if (recorder_) recorder_->setTick(tick_ + 1);
  takeEvents();
  return std::any_of(waiting_.begin(), waiting_.end(), [](const platform::WindowEvent& event) {
    return event.kind == platform::WindowEvent::Kind::close;
  });
}

void Host::handle(const platform::WindowEvent& event, CWindow& window) const {
  switch (event.kind) {
    case platform::WindowEvent::Kind::activate:
      window.OnActivateApp(event.a != 0);
      break;
    case platform::WindowEvent::Kind::move:
      window.OnMove(event.a, event.b);
      break;
    case platform::WindowEvent::Kind::close:
      if (window.OnExit()) window.OnDestroy();
      break;
  }
}

void Host::takeShots(std::uint32_t tick, CWindow& window) {
  for (const ShotRequest& shot : options_.shots) {
    if (shot.tick != tick) continue;
    CDirectDrawSurface* surface = window.getBackSurface();
    platform::Surface* memory = surface != nullptr ? surface->readyDeviceSurface() : nullptr;
    const std::string failure = memory == nullptr
                                    ? "there is no screen"
                                    : platform::writeShot({memory->pixels(), memory->pitch(), memory->width(),
                                                           memory->height(), window.GetBpp()},
                                                          shot.file);
    if (failure.empty()) continue;
    complain("--shot: " + shot.file + ": " + failure);
    isShotMissing_ = true;
  }
}

void Host::waitForNextPass(std::uint32_t passStart) {
  if (headless_ != nullptr) return;
  const std::uint32_t passed = platform_->clock().ticks() - passStart;
  if (passed < kPassMilliseconds) platform_->clock().sleep(kPassMilliseconds - passed);
}

}  // namespace footlight::host
