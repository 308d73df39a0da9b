#pragma once

// The one gate to the disk. Names come in the engine's form: code page 1250, backslashes, a drive letter "C:"
// that stands for the machine's root, letter case without meaning. The FileSystem keeps the engine's current
// directory itself and never changes the process's.
//
// The fence: after making a name canonical (backslashes, dots, case, links) reading is allowed below the
// allowed roots only, and so is writing. A refused name behaves like a file that cannot be opened. Names with
// control bytes and over-long names are refused. A name that does not exist yet is created in the letter case
// that it is given in.

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace footlight::platform {

// An open file; closing is the destructor's work. Positions are bytes from the start.
class FileHandle {
 public:
  virtual ~FileHandle() = default;
  virtual std::size_t read(std::span<std::byte> target) = 0;         // bytes read; short at the end
  virtual std::size_t write(std::span<const std::byte> source) = 0;  // bytes written
  virtual bool seek(std::int64_t position) = 0;
  virtual std::int64_t tell() const = 0;
  virtual std::int64_t length() const = 0;
  // Ends a writing handle: everything reaches the target name as a whole, or the old file stays. True when it
  // did. Without this call the destructor does the same and the result is lost.
  virtual bool commit() = 0;
};

enum class OpenMode {
  read,    // an existing file
  write,   // a new or emptied file; it takes the target's name at commit
  update,  // an existing file, or a new one, read and written in place
};

struct DirectoryEntry {
  std::string name;  // code page 1250, as on the disk
  bool isDirectory = false;
  std::int64_t size = 0;
  bool isLink = false;  // the rest tells of what it leads to
};

// What tells one state of a file from another without reading it.
struct FileStamp {
  std::int64_t size = 0;
  std::int64_t modified = 0;   // nanoseconds of the machine's clock
  std::uint64_t identity = 0;  // another one when the name was given to another file
  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

// Held while a file is read, changed and written anew.
class FileLock {
 public:
  virtual ~FileLock() = default;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // Null when the name does not resolve, is refused by the fence, or the machine refuses.
  virtual std::unique_ptr<FileHandle> open(std::string_view path, OpenMode mode) = 0;
  // True when there is a file that can be opened for reading.
  virtual bool fileExists(std::string_view path) = 0;
  // Nothing when there is no such file. Cheap: no content is read.
  virtual std::optional<FileStamp> stamp(std::string_view path) = 0;
  virtual bool directoryExists(std::string_view path) = 0;
  // Names in the directory, in the order of their upper-case forms; "." and ".." are left out; names that
  // code page 1250 cannot hold are left out.
  virtual std::vector<DirectoryEntry> list(std::string_view path) = 0;
  // Atomic: temporary file beside the target, write, rename. `durable` also waits for the disk.
  virtual bool writeWhole(std::string_view path, std::span<const std::byte> content, bool durable) = 0;
  // The whole content, or nothing when it cannot be read or is longer than `limit` bytes.
  virtual std::optional<std::vector<std::byte>> readWhole(std::string_view path, std::int64_t limit) = 0;
  // Makes other programs that ask for the same file wait as long as the answer lives. Waits for them up to a
  // second. Null when that has passed or the disk knows no locks: then one has to go on without.
  virtual std::unique_ptr<FileLock> lock(std::string_view /*path*/) { return nullptr; }
  // Overwrites the target, as a whole. False for a file onto itself.
  virtual bool copy(std::string_view from, std::string_view to) = 0;
  // Removes a file, never a directory.
  virtual bool remove(std::string_view path) = 0;
  // False when the name is taken or its parent does not exist.
  virtual bool makeDirectory(std::string_view path) = 0;

  // The engine's current directory in the engine's form, ending in a backslash. Its letter case is the one
  // that `changeDirectory` was called with, not the disk's.
  virtual std::string currentDirectory() const = 0;
  // False, with nothing changed, when there is no such directory inside the fence.
  virtual bool changeDirectory(std::string_view path) = 0;

  // Adds a directory below which reading and writing is allowed.
  virtual void allowRoot(std::string_view path) = 0;
  // Lets one file be read that lies elsewhere.
  virtual void allowReading(std::string_view /*path*/) {}
  // Removes what earlier runs that were killed left half written in the allowed roots.
  virtual void clearLeftovers() {}
  // Whether a file that is made below this folder of the machine may be the game's work, links followed. Yes
  // where that cannot be told.
  virtual bool mayWrite(std::string_view /*machineFolder*/) const { return true; }
  // An engine name for a name of the machine, as for command-line paths.
  virtual std::string toEnginePath(std::string_view machinePath) const = 0;
  // The machine's name for a name of the engine, for messages; empty when it does not resolve.
  virtual std::string toMachinePath(std::string_view enginePath) const = 0;
};

}  // namespace footlight::platform
