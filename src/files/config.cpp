#include "files/config.h"

#include <algorithm>
#include <utility>

#include "foundation/code_page.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "platform/platform.h"

namespace footlight {

namespace {

constexpr std::uint32_t kDurablePeriod = 250;  // milliseconds
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
  platform::FileSystem& files = platform::current().files();
  const std::optional<platform::FileStamp> stamp = files.stamp(fileName_);
  if (isRead_ && stamp == stamp_) return true;
  isRead_ = false;
  std::string content;
  if (stamp) {
    const auto bytes = files.readWhole(fileName_, limits::kTextFileBytes);
    if (!bytes) {
      limitHit("config.unreadable");
      parse({});
      return false;
    }
    content.assign(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  }
  stamp_ = stamp;
  isRead_ = true;
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
  refresh();
  const auto found = keys_.find(keyOf(trim(section), trim(key)));
  if (found == keys_.end()) return {};
  return keyLine(lines_[found->second])->value.substr(0, limits::kIniValueBytes - 1);
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
  if (!refresh()) return;
  const auto found = keys_.find(keyOf(sectionText, keyText));
  if (found != keys_.end()) {
    std::string& line = lines_[found->second];
    if (keyLine(line)->value == plainValue(text)) return;
    line.replace(line.find('=') + 1, std::string::npos, text);
  } else {
    setLine(std::string(sectionText), std::string(keyText), std::string(keyText) + "=" + text);
  }
  write();
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

void CConfig::write() {
  std::string content;
  for (const std::string& line : lines_) content.append(line).append(lineEnd_);
  const bool durable = isDue();
  platform::FileSystem& files = platform::current().files();
  if (!files.writeWhole(fileName_, std::as_bytes(std::span(content)), durable)) {
    isRead_ = false;  // the file still says what it said
    if (diagnose::isOn()) diagnose::report(diagnose::Group::file, fileName_, "", "cannot be written");
    return;
  }
  stamp_ = files.stamp(fileName_);
  isPending_ = !durable;
  if (durable) durableAt_ = platform::current().clock().ticks();
}

// True when the disk may be waited for again.
bool CConfig::isDue() const {
  return !durableAt_ || platform::current().clock().ticks() - *durableAt_ >= kDurablePeriod;
}

void CConfig::tick() {
  if (isPending_ && isDue()) flush();
}

void CConfig::flush() {
  if (!isPending_ || !platform::isInstalled()) return;
  isPending_ = false;
  durableAt_.reset();
  if (refresh() && stamp_) write();
}

}  // namespace footlight
