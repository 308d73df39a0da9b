#pragma once

// A disk in memory: one folder, "C:\GAME", with all below it inside the fence and nothing outside.
// Names compare without case. What a run writes goes with the object; a handful of files and bytes is
// all that fits.

#include <functional>
#include <map>
#include <memory>
#include <set>

#include "platform/file_system.h"

namespace footlight::test {

using Content = std::shared_ptr<const std::vector<std::byte>>;
// Full engine names to what stands in the files.
using Disk = std::map<std::string, Content>;

Content contentOf(std::string_view text);
// A sound of so many samples: mono, 16 bits, 22050 samples a second.
std::string waveFile(int samples);

class MemoryFiles : public platform::FileSystem {
 public:
  static constexpr const char* kRoot = "C:\\GAME";
  static constexpr std::size_t kMostFiles = 128;
  static constexpr std::size_t kMostBytes = std::size_t{1} << 20;  // of one file

  explicit MemoryFiles(const Disk& disk);

  std::unique_ptr<platform::FileHandle> open(std::string_view path, platform::OpenMode mode) override;
  bool fileExists(std::string_view path) override;
  std::optional<platform::FileStamp> stamp(std::string_view path) override;
  bool directoryExists(std::string_view path) override;
  std::vector<platform::DirectoryEntry> list(std::string_view path) override;
  bool writeWhole(std::string_view path, std::span<const std::byte> content, bool durable) override;
  std::optional<std::vector<std::byte>> readWhole(std::string_view path, std::int64_t limit) override;
  bool copy(std::string_view from, std::string_view to) override;
  bool remove(std::string_view path) override;
  bool makeDirectory(std::string_view path) override;
  std::string currentDirectory() const override { return current_ + "\\"; }
  bool changeDirectory(std::string_view path) override;
  void allowRoot(std::string_view /*path*/) override {}
  std::string toEnginePath(std::string_view machinePath) const override { return std::string(machinePath); }
  std::string toMachinePath(std::string_view enginePath) const override { return std::string(enginePath); }

  // Called at each opening and writing of a file.
  std::function<void()> onAccess;

  // The files that differ from those that the disk had at first, each with its content; null for
  // one that went.
  Disk changes() const;

 private:
  class Handle;
  struct File {
    std::string name;  // the last part, as given
    Content content;
    std::uint64_t identity = 0;
  };

  // The full name with its parts in the case given and without dots; nothing for one that is refused.
  std::optional<std::string> full(std::string_view path) const;
  // The same folded: the key of the tables.
  std::optional<std::string> key(std::string_view path) const;
  const File* find(std::string_view path) const;
  bool put(std::string_view path, Content content);

  const Disk& first_;
  std::map<std::string, File> files_;
  std::set<std::string> directories_;
  std::string current_ = kRoot;
  std::uint64_t identities_ = 0;
};

}  // namespace footlight::test
