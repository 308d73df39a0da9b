#include "pack/contents.h"

#include <algorithm>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <unordered_set>
#include <vector>

#include "files/path.h"
#include "foundation/code_page.h"
#include "platform/platform.h"

namespace footlight::pack {

namespace {

bool isControl(char character) { return static_cast<unsigned char>(character) < 0x20 || character == 0x7F; }

void visitEntry(const BigFileEntry& entry, const std::string& path,
                const std::function<void(const std::string&, const BigFileRecord&)>& visit) {
  for (const BigFileEntry& folder : entry.folders) visitEntry(folder, path + folder.name + "\\", visit);
  for (const BigFileRecord& file : entry.files) visit(path + file.name, file);
}

int countFolders(const BigFileEntry& entry) {
  int count = 0;
  for (const BigFileEntry& folder : entry.folders) count += 1 + countFolders(folder);
  return count;
}

class Extraction {
 public:
  Extraction(const CBigFile& bigFile, CXString folder, std::int64_t most, Outcome& outcome)
      : bigFile_(bigFile), folder_(std::move(folder)), bytesLeft_(most), outcome_(outcome) {}

  // A name within one entry: what leads elsewhere or means a folder of the machine is none.
  static bool isPlain(const std::string& part) {
    const auto isOdd = [](char c) { return isControl(c) || c == '/' || c == '\\' || c == ':'; };
    return !part.empty() && part != "." && part != ".." && std::none_of(part.begin(), part.end(), isOdd);
  }

  void visit(const BigFileEntry& entry, const std::string& path) {
    for (const BigFileEntry& folder : entry.folders) {
      const std::string name = path + folder.name;
      if (!isPlain(folder.name) || !makeFolder(name)) {
        leaveOut(name, "no such folder can be made; nothing in it is unpacked");
      } else {
        visit(folder, name + "\\");
      }
    }
    for (const BigFileRecord& file : entry.files) {
      if (const char* why = save(path + file.name, file)) leaveOut(path + file.name, why);
    }
  }

  int saved() const { return saved_; }

 private:
  CXString target(const std::string& name) const { return CPath::getFullPath(folder_, CXString(name)); }

  void leaveOut(const std::string& name, const char* why) {
    outcome_.remarks.push_back(shownName(name) + ": left out: " + why);
  }

  bool makeFolder(const std::string& name) const {
    platform::FileSystem& files = platform::current().files();
    return files.directoryExists(target(name)) || files.makeDirectory(target(name));
  }

  // Null, or why not.
  const char* save(const std::string& name, const BigFileRecord& file) {
    if (!isPlain(file.name)) return "no file can have this name";
    if (!seen_.insert(code_page::foldCase(name)).second) return "another file of this name comes before it";
    if (file.isDamaged) return "it reaches beyond the end of the big file";
    if (file.size > bytesLeft_) return "the files tell of more bytes than the big file has";
    const auto content = bigFile_.openEntry(file);
    if (content == nullptr) return "the big file has changed meanwhile";
    std::vector<std::byte> bytes(static_cast<std::size_t>(file.size));
    if (content->read(bytes) != bytes.size()) return "it cannot be read";
    if (!platform::current().files().writeWhole(target(name), bytes, false)) return "it cannot be written";
    bytesLeft_ -= file.size;
    ++saved_;
    return nullptr;
  }

  const CBigFile& bigFile_;
  CXString folder_;
  std::int64_t bytesLeft_;
  Outcome& outcome_;
  std::unordered_set<std::string> seen_;
  int saved_ = 0;
};

}  // namespace

std::string shownName(const std::string& name) {
  std::string shown = name;
  std::replace(shown.begin(), shown.end(), '\\', '/');
  std::replace_if(shown.begin(), shown.end(), isControl, '?');
  return code_page::toUtf8(shown);
}

void forEachFile(const BigFileTable& table,
                 const std::function<void(const std::string& name, const BigFileRecord& record)>& visit) {
  visitEntry(table.root, "", visit);
}

void list(const CBigFile& bigFile, Outcome& outcome) {
  const BigFileTable& table = bigFile.getTable();
  std::int64_t total = 0;
  forEachFile(table, [&](const std::string& name, const BigFileRecord& file) {
    char size[16];
    std::snprintf(size, sizeof size, "%10d", file.size);
    outcome.lines.push_back(std::string(size) + "  " + shownName(name));
    if (file.isDamaged)
      outcome.remarks.push_back(shownName(name) + ": reaches beyond the end of the big file");
    total += file.size;
  });
  outcome.summary = std::to_string(outcome.lines.size()) + " files in " +
                    std::to_string(countFolders(table.root)) + " folders, " + std::to_string(total) +
                    " bytes; its name is \"" + shownName(table.name) + "\"";
}

void extract(const CBigFile& bigFile, const CXString& folder, Outcome& outcome) {
  Extraction extraction(bigFile, folder, bigFile.getLength(), outcome);
  extraction.visit(bigFile.getTable().root, "");
  outcome.summary = std::to_string(extraction.saved()) + " files unpacked";
}

}  // namespace footlight::pack
