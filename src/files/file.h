#pragma once

// CFile is the engine's only way to the disk. A name as scripts write it becomes a full path (see CPath), and
// the full path is tried in several places, the language version of each place first. A file that cannot be
// opened leaves the error code 2000, and every operation on it does nothing and gives zero.
//
// A mode is a sum of bits. "Read" alone opens an existing file; "read" and "update" opens an existing
// file for both; without "read" the file is made anew, and it takes its name when it is closed, whole or
// not at all.
//
// Text. On reading, the "text" bit drops a carriage return before a line feed; positions and the length still
// count the bytes on the disk. With neither "text" nor "binary" only the line operations do so. On writing a
// line feed stays a plain line feed.
//
// With a big file (see CBigFile) a file that no place on the disk has is read from there. The questions
// about files and folders are answered by the big file alone then: fileExists knows only what it holds,
// dirExists says yes, a search finds one name, and chDir always succeeds; it leads into folders of the disk
// and of the big file alike. What is written goes to the disk, into folders made for it where only the big
// file has them.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/xobject.h"
#include "foundation/xstring.h"
#include "platform/file_system.h"

namespace footlight {

class CBigFile;
class CWindow;

// What a folder search gives.
struct FileFindData {
  static constexpr int kDirectory = 16;  // in `attributes`

  CXString name;
  int attributes = 0;
  int size = 0;
};

// A folder search under way.
struct FileSearch {
  std::vector<FileFindData> found;
  std::size_t next = 0;
};

class CFile : public CXObject {
 public:
  static constexpr int kNotFound = 2000;
  static constexpr int kRead = 1;
  static constexpr int kWrite = 2;
  static constexpr int kUpdate = 4;
  static constexpr int kText = 8;
  static constexpr int kBinary = 16;  // counts only without kText
  static constexpr int kReadText = kRead | kText;
  static constexpr int kReadBinary = kRead | kBinary;
  static constexpr int kWriteText = kWrite | kUpdate | kText;
  static constexpr int kWriteBinary = kWrite | kUpdate | kBinary;
  static constexpr int kLineBytes = 10240;  // that one getLine reads at most

  CFile() = default;
  // Opens at once and keeps the result as the error code.
  CFile(CWindow* window, const CXString& name, int mode);
  ~CFile() override;
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;

  // 0 or 2000, which is the error code then too. Without a window no language versions are looked for.
  virtual int Open(CWindow* window, const CXString& name, int mode);
  // Bytes on the disk; at most the largest int.
  virtual int Length();
  virtual int Tell();
  // `origin` is 0 (start), 1 (current) or 2 (end). 0, or -1 when nothing moved.
  virtual int Seek(int offset, int origin);
  // The number of bytes read or written.
  virtual int Read(void* target, int count);
  virtual int Write(const void* source, int count);
  // All bytes from here to the end; nothing when there are more than `limit`, none for a file that
  // is not open.
  std::optional<std::vector<std::byte>> readRest(std::int64_t limit);
  // 0, or -1 when what was written did not reach the disk; the old file is still there then.
  virtual int Close();
  // Reads up to size - 1 bytes of one line, its end included, and a zero byte. False at the end of the file.
  virtual bool GetLine(char* target, int size);
  // Up to 10240 bytes of one line, its end included.
  virtual CXString getLine();
  // Writes the text as it is, without a line end.
  virtual void putLine(const CXString& text);
  // Nothing is left to read; also true for a file that is not open.
  virtual bool eof();

  bool isOpen() const { return handle_ != nullptr; }
  // The full path that was opened.
  const CXString& getFileName() const { return name_; }
  CWindow* getWindow() const { return window_; }

  // 0, or -1 with nothing changed.
  static int chDir(const CXString& path);
  // Ends in a backslash.
  static CXString getCurrentDirectory();
  static bool fileExists(const CXString& name);
  static bool dirExists(const CXString& name);
  // Files and folders whose names fit the mask behind the last backslash, in any case: `*` is any run, `?`
  // one character, "*.*" everything. With kDirectory in `data->attributes` all up to the first folder is
  // skipped. Null when nothing fits; else `data` is the first one.
  static std::unique_ptr<FileSearch> findFirst(const CXString& pattern, FileFindData* data);
  static bool findNext(FileSearch& search, FileFindData* data);

  // Where a file would be read from; empty when it is nowhere.
  static CXString getPath(CWindow* window, const CXString& name);
  // Moves a full path below the root path, or the data root: from "Dane" on, else from "COMMON" on, else from
  // "WAVS" in any case on. A path without these stays as it is.
  static CXString getLocalPath(const CXString& path);
  static CXString getDataRootPath(const CXString& path);
  // Is the path on a fixed disk? Without a drive letter it counts as such; the one drive there is is C.
  static bool isHdd(const CXString& path);

  // Whether a file can be opened for reading under exactly this name, on the disk or in the big file.
  static bool canRead(const CXString& name);
  // Copies a file, also one of the big file, to the disk as a whole. False for a file onto itself.
  static bool copy(const CXString& from, const CXString& to);
  // 0, or -1 when nothing moved; the position. Of the big file, for its own handle.
  static int fSeek(CFile& file, int offset, int origin);
  static int fTell(CFile& file);

  // The big file that packs the game; one that is missing or damaged means running from the disk. A name that
  // is no full path lies in the current directory.
  static void openBigFile(const CXString& name);
  static void closeBigFile();
  // Null without a big file.
  static CBigFile* getBigFileIfc();
  static CFile* getBigFileHandle();

 private:
  bool openAt(const CXString& path);
  bool openInBigFile(const CXString& path);
  bool isTranslated(bool wholeLines) const;
  bool fill();
  void dropAhead();
  int readText(char* target, int count);
  std::string readLine(int limit);

  std::unique_ptr<platform::FileHandle> handle_;
  CXString name_;
  CWindow* window_ = nullptr;
  int mode_ = 0;
  std::vector<std::byte> ahead_;  // read, but not yet asked for from aheadPosition_ on
  std::size_t aheadPosition_ = 0;
};

}  // namespace footlight
