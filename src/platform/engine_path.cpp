#include "platform/engine_path.h"

#include <algorithm>

#include "foundation/code_page.h"
#include "foundation/limits.h"

namespace footlight::platform {

namespace {

constexpr std::string_view kDrive = "C:";

// Takes the drive off; false for another one.
bool takeDrive(std::string_view& name) {
  if (name.size() < kDrive.size() || name[1] != ':') return true;
  const bool isOurs = name[0] == 'C' || name[0] == 'c';
  name.remove_prefix(kDrive.size());
  return isOurs;
}

}  // namespace

std::optional<EnginePath> EnginePath::of(std::string_view name, const EnginePath& base) {
  const bool isOdd = std::any_of(name.begin(), name.end(), isControl);
  if (name.empty() || name.size() > limits::kNameBytes || isOdd || !takeDrive(name)) return std::nullopt;
  EnginePath path;
  if (name.empty() || !isSeparator(name[0])) path = base;
  while (!name.empty()) {
    const auto end = std::find_if(name.begin(), name.end(), isSeparator);
    const std::string_view part(name.data(), static_cast<std::size_t>(end - name.begin()));
    name.remove_prefix(std::min(part.size() + 1, name.size()));
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      path.parts_.emplace_back(part);
    } else if (!path.parts_.empty()) {
      path.parts_.pop_back();
    }
  }
  std::size_t size = kDrive.size();
  for (const std::string& part : path.parts_) size += 1 + part.size();
  return size <= limits::kNameBytes ? std::optional(std::move(path)) : std::nullopt;
}

EnginePath EnginePath::parent() const {
  EnginePath path = *this;
  if (!path.parts_.empty()) path.parts_.pop_back();
  return path;
}

std::string EnginePath::text() const {
  std::string text = folderText();
  if (!parts_.empty()) text.pop_back();
  return text;
}

std::string EnginePath::folderText() const {
  std::string text(kDrive);
  text += '\\';
  for (const std::string& part : parts_) text.append(part) += '\\';
  return text;
}

std::string EnginePath::key() const { return code_page::foldCase(text()); }

std::optional<std::string> EnginePath::below(const EnginePath& folder) const {
  if (parts_.size() < folder.parts_.size()) return std::nullopt;
  for (std::size_t i = 0; i < folder.parts_.size(); ++i) {
    if (code_page::foldCase(parts_[i]) != code_page::foldCase(folder.parts_[i])) return std::nullopt;
  }
  std::string rest;
  for (std::size_t i = folder.parts_.size(); i < parts_.size(); ++i) {
    if (!rest.empty()) rest += '\\';
    rest += parts_[i];
  }
  return rest;
}

}  // namespace footlight::platform
