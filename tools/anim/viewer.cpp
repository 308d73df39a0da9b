#include "anim/viewer.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <dirent.h>
#include <filesystem>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "foundation/code_page.h"
#include "foundation/geometry.h"
#include "host/host.h"
#include "host/options.h"
#include "platform/large_stack.h"
#include "platform/posix/atomic_file.h"

namespace footlight::anim {

namespace {

namespace fs = std::filesystem;

constexpr int kMargin = 20;
constexpr CXSize kLeastWindow = {320, 240};
constexpr CXSize kMostWindow = {1600, 1200};

constexpr const char* kApplication = R"(OBJECT=VIEWER
VIEWER:TYPE=APPLICATION
VIEWER:SCENES=MAIN

OBJECT=MAIN
MAIN:TYPE=SCENE
MAIN:PATH=MAIN
)";

// The arrows choose the event, the blank bar halts, R turns round, a click goes on to the next event.
constexpr const char* kScene = R"(DEF:EVENT(TYPE=INTEGER|VALUE=%EVENT%)
DEF:EVENTS(TYPE=INTEGER|VALUE=%EVENTS%)
DEF:HALTED(TYPE=BOOL|VALUE=FALSE)
DEF:SHOWN(TYPE=ANIMO|FILENAME=shown.ann|TOCANVAS=TRUE|VISIBLE=TRUE|PRIORITY=1)
DEF:POINTER(TYPE=MOUSE|ONCLICK^LEFT=FORTH|ONCLICK^RIGHT=BACK)
DEF:KEYS(TYPE=KEYBOARD)
KEYS:ONKEYDOWN^RIGHT=FORTH
KEYS:ONKEYDOWN^LEFT=BACK
KEYS:ONKEYDOWN^SPACE=HALT
KEYS:ONKEYDOWN^R=TURN
SHOWN:ONFINISHED=AGAIN
DEF:AGAIN(TYPE=BEHAVIOUR|CODE={SHOWN^NPLAY(EVENT);})
DEF:FORTH(TYPE=BEHAVIOUR|CODE={EVENT^INC();@IF("EVENT","_","EVENTS","FIRST","");AGAIN^RUN();})
DEF:BACK(TYPE=BEHAVIOUR|CODE={@IF("EVENT","_","0","LAST","");EVENT^DEC();AGAIN^RUN();})
DEF:FIRST(TYPE=BEHAVIOUR|CODE={EVENT^SET(0);})
DEF:LAST(TYPE=BEHAVIOUR|CODE={EVENT^SET(EVENTS);})
DEF:HALT(TYPE=BEHAVIOUR|CODE={@IF("HALTED","_","TRUE","GOON","STAY");HALTED^SWITCH(TRUE,FALSE);})
DEF:STAY(TYPE=BEHAVIOUR|CODE={SHOWN^PAUSE();})
DEF:GOON(TYPE=BEHAVIOUR|CODE={SHOWN^RESUME();})
DEF:TURN(TYPE=BEHAVIOUR|CODE={SHOWN^PLAYREVERSE(EVENT);})

OBJECT=__INIT__
__INIT__:TYPE=BEHAVIOUR
__INIT__:CODE={SHOWN^MOVE(%X%,%Y%);SHOWN^NPLAY(EVENT);}
)";

// What all frames cover at all places that the events give them.
CXRect extentOf(const AnnFile& animation) {
  CXRect extent;
  const auto add = [&](const AnnFrame& frame, CXPoint offset) {
    const CXPoint at(frame.position.x + offset.x, frame.position.y + offset.y);
    const CXRect covered(at.x, at.y, at.x + frame.size.width, at.y + frame.size.height);
    extent = extent.IsEmpty()
                 ? covered
                 : CXRect(std::min(extent.left, covered.left), std::min(extent.top, covered.top),
                          std::max(extent.right, covered.right), std::max(extent.bottom, covered.bottom));
  };
  for (const AnnFrame& frame : animation.frames) add(frame, {});
  for (const _annEventInfo3& event : animation.events) {
    for (int i = 0; i < event.frameCount(); ++i) {
      const auto number = static_cast<std::size_t>(event.frames[static_cast<std::size_t>(i)]);
      const _anmFrameInfo3* info = event.info(i);
      if (number < animation.frames.size() && info != nullptr) add(animation.frames[number], info->offset);
    }
  }
  return extent;
}

constexpr const char* kFolderName = "footlight-anim-";

// A folder that its process holds by a lock as long as this lives.
using FolderLock = std::unique_ptr<DIR, decltype([](DIR* folder) { ::closedir(folder); })>;

// Null where another process holds it, or it is not this user's.
FolderLock lockFolder(const fs::path& path) {
  struct stat status {};
  const bool isOwn =
      ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
  FolderLock folder(isOwn ? ::opendir(path.c_str()) : nullptr);
  if (folder != nullptr && ::flock(::dirfd(folder.get()), LOCK_EX | LOCK_NB) != 0) folder.reset();
  return folder;
}

// What viewers left that were killed. The newest may be one that is just being made.
void clearLeftovers(const fs::path& parent) {
  constexpr auto kAge = std::chrono::minutes(1);
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(parent, error)) {
    if (!entry.path().filename().string().starts_with(kFolderName)) continue;
    if (entry.last_write_time(error) > fs::file_time_type::clock::now() - kAge) continue;
    if (const FolderLock lock = lockFolder(entry.path())) fs::remove_all(entry.path(), error);
  }
}

// A folder of its own that goes with the object, or with the next one when the process is killed.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    const fs::path parent = fs::temp_directory_path();
    clearLeftovers(parent);
    std::string pattern = (parent / kFolderName).string() + "XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) return;
    path_ = pattern;
    lock_ = lockFolder(path_);
  }
  ~TemporaryFolder() {
    std::error_code error;
    if (!path_.empty()) fs::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
  FolderLock lock_;
};

std::string filled(std::string text, std::initializer_list<std::pair<const char*, int>> values) {
  for (const auto& [word, value] : values) {
    const std::string mark = std::string("%") + word + "%";
    for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos;)
      text.replace(at, mark.size(), std::to_string(value));
  }
  return text;
}

bool write(const fs::path& file, const std::string& text) {
  return platform::writeAtomically(file.string(), std::as_bytes(std::span(text))).empty();
}

bool makeGame(const fs::path& folder, const AnnFile& animation, int event, CXPoint move) {
  const fs::path scene = folder / "Dane" / "MAIN";
  std::error_code error;
  fs::create_directories(scene, error);
  const std::string code = filled(kScene, {{"EVENTS", static_cast<int>(animation.events.size())},
                                           {"EVENT", event},
                                           {"X", move.x},
                                           {"Y", move.y}});
  return write(folder / "Dane" / "application.def", kApplication) && write(scene / "MAIN.cnv", code) &&
         platform::writeAtomically((scene / "shown.ann").string(), writeAnn(animation)).empty();
}

int numberOf(const AnnFile& animation, const std::string& name) {
  const std::string folded = code_page::foldCase(code_page::fromUtf8(name).value_or(name));
  for (std::size_t i = 0; i < animation.events.size(); ++i) {
    if (code_page::foldCase(animation.events[i].name.view()) == folded) return static_cast<int>(i);
  }
  return -1;
}

std::string play(const std::vector<std::string>& words) {
  std::vector<const char*> pointers;
  for (const std::string& word : words) pointers.push_back(word.c_str());
  host::Parsed parsed = host::parseOptions(pointers);
  if (!parsed.options) return parsed.message;
  int status = host::kNoStart;
  const bool started =
      platform::runOnLargeStack([&] { status = host::Host(std::move(*parsed.options)).run(); });
  if (!started) return "the machine gives no stack for the engine";
  return status == host::kEnded ? "" : "it could not be shown";
}

}  // namespace

std::string view(const AnnFile& animation, const Words& words) {
  if (animation.events.empty()) return "it has no events to play";
  const int event = words.event.empty() ? 0 : numberOf(animation, words.event);
  if (event < 0) return "it has no event \"" + words.event + "\"";
  const CXRect extent = extentOf(animation);
  const CXSize window(
      std::clamp(extent.right - extent.left + 2 * kMargin, kLeastWindow.width, kMostWindow.width),
      std::clamp(extent.bottom - extent.top + 2 * kMargin, kLeastWindow.height, kMostWindow.height));
  const CXPoint move((window.width - extent.right - extent.left) / 2,
                     (window.height - extent.bottom - extent.top) / 2);
  const TemporaryFolder folder;
  if (folder.path().empty() || !makeGame(folder.path(), animation, event, move))
    return "the machine gives no room for temporary files";
  std::vector<std::string> line = {"-window", "-res", std::to_string(window.width),
                                   std::to_string(window.height)};
  std::error_code error;
  const fs::path before = fs::current_path(error);
  fs::current_path(folder.path(), error);  // where the host looks for its game
  line.insert(line.end(), words.hostWords.begin(), words.hostWords.end());
  std::string why = play(line);
  fs::current_path(before, error);
  return why;
}

}  // namespace footlight::anim
