#include "files/config.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "foundation/code_page.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "platform/platform.h"

namespace footlight {

namespace {

constexpr std::uint32_t kPeriod = 250;  // milliseconds
constexpr std::size_t kMostRead = limits::kIniValueBytes - 1;
constexpr std::size_t kMostWaiting = 10000;
constexpr std::size_t kMostWaitingBytes = std::size_t{16} << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view trim(std::string_view text) {
  const auto start = text.find_first_not_of(" \t");
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(" \t") - start + 1);
}

// A value as it reads from a line.
std::string_view plainValue(std::string_view text) {
  text = trim(text);
  const bool isQuoted =
      text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.front() == text.back();
  return isQuoted ? text.substr(1, text.size() - 2) : text;
}

// The name in a "[section]" line.
std::optional<std::string_view> sectionName(std::string_view line) {
  line = trim(line);
  const auto end = line.find(']');
  if (line.empty() || line.front() != '[' || end == std::string_view::npos) return std::nullopt;
  return trim(line.substr(1, end - 1));
}

struct KeyLine {
  std::string_view key;
  std::string_view value;
};

std::optional<KeyLine> keyLine(std::string_view line) {
  const auto equals = line.find('=');
  const std::string_view key = trim(line.substr(0, equals));
  if (equals == std::string_view::npos || key.empty() || key.front() == ';') return std::nullopt;
  return KeyLine{key, plainValue(line.substr(equals + 1))};
}

bool isName(std::string_view name, std::string_view forbidden) {
  return !name.empty() && name.find_first_of(forbidden) == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

std::string keyOf(std::string_view section, std::string_view key) {
  return code_page::foldCase(section) + "\n" + code_page::foldCase(key);
}

}  // namespace

CConfig::CConfig(CXString fileName) : fileName_(std::move(fileName)) {}

CConfig::~CConfig() { flush(); }

bool CConfig::refresh() {
  const std::optional<platform::FileStamp> stamp = platform::current().files().stamp(fileName_);
  return (isRead_ && stamp == stamp_) || read(stamp);
}

// Two changes by others within one step of the disk's clock can leave the same stamp: where nothing may be
// lost the file is read whatever it says.
bool CConfig::read(const std::optional<platform::FileStamp>& stamp) {
  std::string content;
  if (stamp) {
    const auto bytes = platform::current().files().readWhole(fileName_, limits::kTextFileBytes);
    if (!bytes || std::ranges::count(*bytes, std::byte{'\n'}) > limits::kIniLines) {
      limitHit("config.unreadable");
      isRead_ = false;
      parse({});
      return false;
    }
    content.assign(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  }
  const bool isSame = isRead_ && std::hash<std::string>()(content) == contentHash_;
  stamp_ = stamp;
  isRead_ = true;
  if (isSame) return true;
  contentHash_ = std::hash<std::string>()(content);
  parse(content);
  return true;
}

void CConfig::parse(std::string_view content) {
  lines_.clear();
  lineEnd_ = "\n";
  const auto firstEnd = content.find('\n');
  if (firstEnd != std::string_view::npos && firstEnd > 0 && content[firstEnd - 1] == '\r') lineEnd_ = "\r\n";
  while (!content.empty()) {
    const auto end = std::min(content.find('\n'), content.size());
    std::string_view line = content.substr(0, end);
    content.remove_prefix(std::min(end + 1, content.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines_.emplace_back(line);
  }
  index();
}

void CConfig::index() {
  sections_.clear();
  keys_.clear();
  std::string section;  // folded; keys before the first section and in a repeated one are nobody's
  bool isFirst = false;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    std::string_view line = lines_[i];
    if (i == 0 && line.starts_with(kByteOrderMark)) line.remove_prefix(kByteOrderMark.size());
    if (const auto name = sectionName(line)) {
      section = code_page::foldCase(*name);
      isFirst = sections_.emplace(section, i).second;
    } else if (const auto pair = keyLine(line); pair && isFirst) {
      keys_.emplace(keyOf(section, pair->key), i);
    }
  }
}

CXString CConfig::GetString(const CXString& section, const CXString& key) {
  const std::string name = keyOf(trim(section), trim(key));
  const auto waiting = waiting_.find(name);
  if (waiting != waiting_.end()) return plainValue(waiting->second.value).substr(0, kMostRead);
  refresh();
  const auto found = keys_.find(name);
  if (found == keys_.end()) return {};
  return keyLine(lines_[found->second])->value.substr(0, kMostRead);
}

int CConfig::GetInt(const CXString& section, const CXString& key) {
  return GetString(section, key).toNumber();
}

void CConfig::PutInt(const CXString& section, const CXString& key, int value) {
  PutString(section, key, CXString::toString(value));
}

void CConfig::PutString(const CXString& section, const CXString& key, const CXString& value) {
  const std::string_view sectionText = trim(section);
  const std::string_view keyText = trim(key);
  if (!isName(sectionText, "]\r\n") || !isName(keyText, "=\r\n") || keyText.front() == ';' ||
      keyText.front() == '[') {
    limitHit("config.name");
    return;
  }
  std::string text = value.str();
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
  if (refresh() && waiting_.empty() && isInFile(sectionText, keyText, text)) return;
  if (!remember({std::string(sectionText), std::string(keyText), std::move(text)})) return;
  save();
}

bool CConfig::isInFile(std::string_view section, std::string_view key, std::string_view value) const {
  const auto found = keys_.find(keyOf(section, key));
  return found != keys_.end() && keyLine(lines_[found->second])->value == plainValue(value);
}

// False when too much waits for a disk that takes nothing.
bool CConfig::remember(Change change) {
  const std::string name = keyOf(change.section, change.key);
  const auto old = waiting_.find(name);
  const std::size_t freed = old == waiting_.end() ? 0 : old->second.value.size();
  const std::size_t added = change.value.size() + (old == waiting_.end() ? 2 * name.size() : 0);
  const std::size_t bytes = waitingBytes_ - freed + added;
  if (bytes > kMostWaitingBytes || (old == waiting_.end() && waiting_.size() >= kMostWaiting)) {
    limitHit("config.waiting");
    return false;
  }
  waitingBytes_ = bytes;
  if (old == waiting_.end()) {
    order_.push_back(name);
    waiting_.emplace(name, std::move(change));
  } else {
    old->second.value = std::move(change.value);
  }
  return true;
}

// Others may write the same file: it is locked, read again, and what waits is put into what stands there.
void CConfig::save() {
  if (waiting_.empty()) return;
  platform::FileSystem& files = platform::current().files();
  const std::unique_ptr<platform::FileLock> lock = files.lock(fileName_);
  triedAt_ = platform::current().clock().ticks();
  if (!read(files.stamp(fileName_))) return;
  bool isChanged = false;
  for (const std::string& name : order_) isChanged = apply(waiting_.at(name)) || isChanged;
  if (isChanged && !write()) return;
  waiting_.clear();
  order_.clear();
  waitingBytes_ = 0;
}

// Puts a value into the lines; false when it stands there.
bool CConfig::apply(const Change& change) {
  if (isInFile(change.section, change.key, change.value)) return false;
  const auto found = keys_.find(keyOf(change.section, change.key));
  if (found != keys_.end()) {
    std::string& line = lines_[found->second];
    line.replace(line.find('=') + 1, std::string::npos, change.value);
  } else {
    setLine(change.section, change.key, change.key + "=" + change.value);
  }
  return true;
}

// Adds a line for a new key: behind the last line of its section that is not empty.
void CConfig::setLine(const std::string& section, const std::string& key, const std::string& line) {
  const auto found = sections_.find(code_page::foldCase(section));
  if (found == sections_.end()) {
    lines_.push_back("[" + section + "]");
    lines_.push_back(line);
    sections_.emplace(code_page::foldCase(section), lines_.size() - 2);
    keys_.emplace(keyOf(section, key), lines_.size() - 1);
    return;
  }
  std::size_t place = found->second + 1;
  for (std::size_t i = place; i < lines_.size() && !sectionName(lines_[i]); ++i) {
    if (!trim(lines_[i]).empty()) place = i + 1;
  }
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place), line);
  if (place + 1 == lines_.size()) {
    keys_.emplace(keyOf(section, key), place);
  } else {
    index();
  }
}

bool CConfig::write() {
  std::string content;
  for (const std::string& line : lines_) content.append(line).append(lineEnd_);
  const bool durable = isDue(durableAt_);
  platform::FileSystem& files = platform::current().files();
  if (!files.writeWhole(fileName_, std::as_bytes(std::span(content)), durable)) {
    isRead_ = false;  // the file still says what it said
    if (diagnose::isOn()) diagnose::report(diagnose::Group::file, fileName_, "", "cannot be written");
    return false;
  }
  stamp_ = files.stamp(fileName_);
  contentHash_ = std::hash<std::string>()(content);
  isPending_ = !durable;
  if (durable) durableAt_ = platform::current().clock().ticks();
  return true;
}

// True when the disk may be waited for, or tried, again.
bool CConfig::isDue(const std::optional<std::uint32_t>& last) {
  return !last || platform::current().clock().ticks() - *last >= kPeriod;
}

void CConfig::tick() {
  if (!waiting_.empty() && isDue(triedAt_)) save();
  if (isPending_ && isDue(durableAt_)) flush();
}

void CConfig::flush() {
  if (!platform::isInstalled()) return;
  save();
  if (!isPending_) return;
  isPending_ = false;
  durableAt_.reset();
  platform::FileSystem& files = platform::current().files();
  const std::unique_ptr<platform::FileLock> lock = files.lock(fileName_);
  if (read(files.stamp(fileName_)) && stamp_) write();
}

}  // namespace footlight
