#pragma once

// A name of the engine made normal: whole from the drive on, without dots and doubled slashes, and with a
// form that compares without case. Every file system that stands behind FileSystem goes by it, so that what
// a name means, and which names mean nothing, is settled in one place.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace footlight::platform {

class EnginePath {
 public:
  // The root of the one drive there is.
  EnginePath() = default;

  // A name as it is written; one without a slash in front begins in `base`. ".." at the root stays there.
  // Nothing for an empty name, one with control bytes, on another drive than C, or of more than
  // limits::kNameBytes bytes before or after.
  static std::optional<EnginePath> of(std::string_view name, const EnginePath& base = {});

  static bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
  }
  static bool isSeparator(char character) { return character == '\\' || character == '/'; }

  bool isRoot() const { return parts_.empty(); }
  // From the root on, in the case that they were written in.
  const std::vector<std::string>& parts() const { return parts_; }
  // The root's is the root.
  EnginePath parent() const;

  // "C:\A\B"; "C:\" for the root.
  std::string text() const;
  // The same with a backslash at its end.
  std::string folderText() const;
  // The same text for all names of one file.
  std::string key() const;

  // "A\B" of the path that lies so below the folder, empty for the folder itself, nothing for
  // what lies elsewhere.
  std::optional<std::string> below(const EnginePath& folder) const;

 private:
  std::vector<std::string> parts_;
};

}  // namespace footlight::platform
