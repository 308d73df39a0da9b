#pragma once

// The FileSystem on POSIX systems. The machine's root is the drive C:, other drives do not exist.
//
// Looking a name up costs one status call: each directory on the way is remembered with its listing, and a
// listing is read again when the directory's time stamp has moved, after a write of our own, or when it was
// read so soon after the last change that the stamp cannot tell. Of several names that differ in case only,
// the one written exactly wins, then the first in the order of bytes.
//
// Names on the disk are UTF-8. A name that code page 1250 cannot hold is invisible, unless it stands in
// a path that the host handed in: then an alias of the form "~U1" stands for it, so that a game may lie
// in any folder.
//
// Everything is checked against the fence by the canonical path, links followed. Files that are no plain
// files (pipes, devices) do not exist for the engine, and a file is not written through a link.

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/engine_path.h"
#include "platform/file_system.h"

namespace footlight::platform {

class PosixFileSystem : public FileSystem {
 public:
  // The machine's name of the start directory: it becomes the current directory and the first allowed root.
  explicit PosixFileSystem(std::string_view startDirectory);
  ~PosixFileSystem() override;

  std::unique_ptr<FileHandle> open(std::string_view path, OpenMode mode) override;
  bool fileExists(std::string_view path) override;
  std::optional<FileStamp> stamp(std::string_view path) override;
  bool directoryExists(std::string_view path) override;
  std::vector<DirectoryEntry> list(std::string_view path) override;
  bool writeWhole(std::string_view path, std::span<const std::byte> content, bool durable) override;
  std::optional<std::vector<std::byte>> readWhole(std::string_view path, std::int64_t limit) override;
  std::unique_ptr<FileLock> lock(std::string_view path) override;
  bool copy(std::string_view from, std::string_view to) override;
  bool remove(std::string_view path) override;
  bool makeDirectory(std::string_view path) override;
  std::string currentDirectory() const override;
  bool changeDirectory(std::string_view path) override;
  void allowRoot(std::string_view path) override;
  void allowReading(std::string_view path) override;
  void clearLeftovers() override;
  bool mayWrite(std::string_view machineFolder) const override;
  std::string toEnginePath(std::string_view machinePath) const override;
  std::string toMachinePath(std::string_view enginePath) const override;

 private:
  class Handle;
  struct Directory;

  // Where a name leads: an entry of a directory that exists.
  struct Place {
    std::string directory;  // canonical, on the machine
    std::string name;       // on the machine; empty for the machine's root
    bool exists = false;
    std::string path() const { return directory == "/" ? "/" + name : directory + "/" + name; }
  };

  std::string diskName(const std::string& component) const;
  std::string engineName(const std::string& diskName) const;

  std::optional<Place> find(std::string_view path) const;
  // The canonical path of something that exists, wherever it lies.
  std::optional<std::string> findAnywhere(std::string_view path) const;
  // The same inside the fence, or among the files that may be read outside it.
  std::optional<std::string> findReadable(std::string_view path) const;
  // The canonical path of something that exists inside the fence.
  std::optional<std::string> findExisting(std::string_view path) const;
  std::optional<std::string> findDirectory(std::string_view path) const;
  // The canonical path where a file may be written, whether it exists or not.
  std::optional<std::string> findTarget(std::string_view path) const;
  bool isAllowed(std::string_view canonicalPath) const;

  Directory* enter(const EnginePath& path) const;
  Directory* enterMachine(const std::string& canonicalPath) const;
  std::optional<std::string> lookUp(Directory& directory, const std::string& component) const;
  void forget(const std::string& path) const;

  std::unique_ptr<Handle> openForWriting(const std::string& target, bool durable) const;

  std::string start_;  // canonical, on the machine
  EnginePath current_;
  std::vector<std::string> roots_;     // canonical, on the machine
  std::vector<std::string> readable_;  // files outside them, likewise

  // Caches; the answers do not depend on them.
  mutable std::unordered_map<std::string, std::string> aliases_;  // alias to name on the disk
  mutable std::unordered_map<std::string, std::string> known_;    // folded engine path to canonical path
  mutable std::unordered_map<std::string, std::unique_ptr<Directory>> directories_;
};

}  // namespace footlight::platform
