#include "foundation/diagnose.h"

#include <deque>
#include <map>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace footlight {

namespace diagnose {

namespace {

struct FileNames {
  std::deque<std::string> names{""};
  std::unordered_map<std::string, std::uint32_t> numbers;
};

FileNames& fileNames() {
  static FileNames names;
  return names;
}

Listener& currentListener() {
  static Listener listener;
  return listener;
}

CallName& currentCall() {
  static CallName call;
  return call;
}

}  // namespace

void listen(Listener listener) {
  currentListener() = std::move(listener);
  listening = static_cast<bool>(currentListener());
}

void report(Group group, std::string_view object, std::string_view method, std::string_view text,
            Origin origin) {
  if (!listening) return;
  if (origin.line == 0) origin = place;
  currentListener()({group, std::string(object), std::string(method), std::string(text),
                     std::string(fileName(origin.file)), origin.line});
}

void reportCall(Group group, std::string_view text) {
  if (listening) report(group, runningCall().object, runningCall().method, text);
}

const CallName& runningCall() { return currentCall(); }

CallGuard::CallGuard(std::string_view object, std::string_view method)
    : outer_(std::exchange(currentCall(), CallName{std::string(object), std::string(method)})) {}

CallGuard::~CallGuard() { currentCall() = std::move(outer_); }

const char* groupName(Group group) {
  constexpr const char* kNames[] = {"file",      "definition", "object",    "method",
                                    "arguments", "behaviour",  "statement", "limit"};
  return kNames[static_cast<std::size_t>(group)];
}

std::uint32_t internFile(std::string_view name) {
  FileNames& files = fileNames();
  const auto [entry, isNew] =
      files.numbers.try_emplace(std::string(name), static_cast<std::uint32_t>(files.names.size()));
  if (isNew) files.names.emplace_back(name);
  return entry->second;
}

std::string_view fileName(std::uint32_t file) {
  const FileNames& files = fileNames();
  return file < files.names.size() ? std::string_view(files.names[file]) : std::string_view();
}

}  // namespace diagnose

namespace {

// Guards may fire on the threads that fill queues, so their table is locked.
struct Guards {
  std::mutex mutex;
  std::map<std::string, int, std::less<>> hits;
};

Guards& guards() {
  static Guards table;
  return table;
}

}  // namespace

void guardHit(const char* name) {
  const std::lock_guard lock(guards().mutex);
  ++guards().hits[name];
}

void limitHit(const char* name) {
  guardHit(name);
  diagnose::reportCall(diagnose::Group::limit, std::string("a limit was reached: ") + name);
}

int guardHits(std::string_view name) {
  const std::lock_guard lock(guards().mutex);
  const auto found = guards().hits.find(name);
  return found == guards().hits.end() ? 0 : found->second;
}

int allGuardHits() {
  const std::lock_guard lock(guards().mutex);
  int sum = 0;
  for (const auto& [name, count] : guards().hits) sum += count;
  return sum;
}

void resetGuardHits() {
  const std::lock_guard lock(guards().mutex);
  guards().hits.clear();
}

void forEachGuard(const std::function<void(std::string_view, int)>& function) {
  const std::lock_guard lock(guards().mutex);
  for (const auto& [name, count] : guards().hits) function(name, count);
}

}  // namespace footlight
