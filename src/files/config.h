#pragma once

// One INI file: "[section]" lines followed by "key=value" lines. It keeps what games remember from
// run to run.
//
// Section and key names compare without regard to case; of several equal ones the first is meant. Values lose
// blanks at their ends and one pair of quotes around them, and are cut at what a buffer of
// limits::kIniValueBytes holds. All other lines of the file, comments among them, stay as they are.
//
// Each change reaches the file at once, as a whole new file; a value that does not change is not written.
// Waiting for the disk is dear, so it happens at most every 250 ms and at `flush`, which the destructor
// calls. A change that the disk does not take waits and is tried again as often; it reads as if it were
// written. The file may be changed by others between two calls, and programs that change it at the same time
// lose nothing. A file that exists but cannot be read is never written over.

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/xstring.h"
#include "platform/file_system.h"

namespace footlight {

class CConfig {
 public:
  // The full engine path of the file, which need not exist yet.
  explicit CConfig(CXString fileName);
  ~CConfig();
  CConfig(const CConfig&) = delete;
  CConfig& operator=(const CConfig&) = delete;

  // 0 for a missing key.
  int GetInt(const CXString& section, const CXString& key);
  // Empty for a missing key.
  CXString GetString(const CXString& section, const CXString& key);
  void PutInt(const CXString& section, const CXString& key, int value);
  // Line ends and zero bytes in the value become blanks. Names that no line can hold are not written: empty
  // ones, such with line ends, sections with "]", keys with "=" and keys that read as a comment or a section.
  void PutString(const CXString& section, const CXString& key, const CXString& value);

  // Sees to it that what was written survives a power cut.
  void flush();
  // The same when the last wait for the disk is 250 ms ago; for the main loop.
  void tick();

 private:
  struct Change {
    std::string section;
    std::string key;
    std::string value;
  };

  // Reads the file again if it has changed. False when it exists but cannot be read.
  bool refresh();
  bool read(const std::optional<platform::FileStamp>& stamp);
  void parse(std::string_view content);
  void index();
  void setLine(const std::string& section, const std::string& key, const std::string& line);
  bool isInFile(std::string_view section, std::string_view key, std::string_view value) const;
  bool remember(Change change);
  void save();
  bool apply(const Change& change);
  bool write();
  static bool isDue(const std::optional<std::uint32_t>& last);

  CXString fileName_;
  std::optional<platform::FileStamp> stamp_;  // of the file as it was last read or written
  bool isRead_ = false;
  std::size_t contentHash_ = 0;
  std::vector<std::string> lines_;  // without their ends
  std::string_view lineEnd_ = "\n";
  std::unordered_map<std::string, std::size_t> sections_;  // folded name to its line
  std::unordered_map<std::string, std::size_t> keys_;  // folded section, line feed, folded key to its line
  std::optional<std::uint32_t> durableAt_;             // ticks when the disk was last waited for
  bool isPending_ = false;                             // the last writing was not waited for

  // What the file has not taken yet, by the keys of `keys_`, and their order.
  std::unordered_map<std::string, Change> waiting_;
  std::vector<std::string> order_;
  std::size_t waitingBytes_ = 0;
  std::optional<std::uint32_t> triedAt_;  // ticks when writing it was tried last
};

}  // namespace footlight
