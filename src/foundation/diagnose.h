#pragma once

// Where the engine by rule ignores a mistake of an author, it says so here, for whoever listens. Off unless
// the host turns it on; it never changes a result. Callers test `diagnose::isOn()` first, so that a silent
// run pays one flag.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace footlight {

// A place in a file of the game: an interned file name and a line counted from 1. Line 0 means "unknown".
struct Origin {
  std::uint32_t file = 0;
  std::int32_t line = 0;
};

namespace diagnose {

enum class Group { file, definition, object, method, arguments, behaviour, statement, limit };

struct Report {
  Group group;
  std::string object;  // the object or name in question
  std::string method;  // empty where none is in question
  std::string text;    // what was ignored, in English
  std::string file;    // empty when unknown
  std::int32_t line;   // 0 when unknown
};

using Listener = std::function<void(const Report&)>;

inline bool listening = false;
// The statement that runs now, for reports that know no place of their own; kept only while somebody listens.
inline Origin place;
inline bool isOn() { return listening; }
// The call that runs now: its object and its method. Kept only while somebody listens.
struct CallName {
  std::string object;
  std::string method;
};
const CallName& runningCall();

// Keeps the place of a piece of work that may run other work, and gives it back in the end.
class PlaceGuard {
 public:
  PlaceGuard() : kept_(place) {}
  // Work on something that stands at `origin`; one that is not known changes nothing.
  explicit PlaceGuard(Origin origin) : kept_(place) {
    if (isOn() && origin.line != 0) place = origin;
  }
  ~PlaceGuard() { place = kept_; }
  PlaceGuard(const PlaceGuard&) = delete;
  PlaceGuard& operator=(const PlaceGuard&) = delete;

 private:
  Origin kept_;
};

// Names the running call for as long as it lives; its place is kept as well. Only while somebody listens.
class CallGuard {
 public:
  CallGuard(std::string_view object, std::string_view method);
  ~CallGuard();
  CallGuard(const CallGuard&) = delete;
  CallGuard& operator=(const CallGuard&) = delete;

 private:
  CallName outer_;
  PlaceGuard place_;
};

// Sends every report to the listener from now on; an empty one turns reporting off.
void listen(Listener listener);
void report(Group group, std::string_view object, std::string_view method, std::string_view text,
            Origin origin = {});
// The same about an argument or the whole of the call that runs now.
void reportCall(Group group, std::string_view text);
const char* groupName(Group group);

// The number that stands for a file name in an Origin.
std::uint32_t internFile(std::string_view name);
std::string_view fileName(std::uint32_t file);

}  // namespace diagnose

// Counts a guard that fired, by name, so that tests can ask whether it did.
void guardHit(const char* name);
// The same for a guard that keeps a script or a file within a limit: whoever listens hears the name too. For
// the engine's thread alone.
void limitHit(const char* name);
// How often a guard fired since `resetGuardHits`.
int guardHits(std::string_view name);
int allGuardHits();
void resetGuardHits();
// Calls the function with each name and count.
void forEachGuard(const std::function<void(std::string_view, int)>& function);

}  // namespace footlight
