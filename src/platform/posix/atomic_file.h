#pragma once

// The one way in which files of the machine are written. The bytes go to a new file beside the target, which
// takes the target's name at the end: a target is the old file or the new one, whole, whatever happens.
//
// Links are neither followed nor replaced, and so are devices, pipes and folders left alone: a target is a
// plain file or not there yet. Links in the folders on the way are the caller's affair.

#include <cstddef>
#include <cstdio>
#include <span>
#include <string>

namespace footlight::platform {

class AtomicFile {
 public:
  // `target` is the machine's name; its folder must be there. Of a durable file the disk is waited for when
  // it takes its name.
  explicit AtomicFile(const std::string& target, bool durable = true);
  // Without `commit` or `publish` the target stays as it was.
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  // For reading and writing until `commit`; null when the target is refused or its folder takes no file.
  std::FILE* stream() const { return stream_; }
  // False when not all was taken; `commit` fails then.
  bool write(std::span<const std::byte> bytes);

  // Hands what was written to the machine. False when it did not take all; `commit` fails then.
  bool flush();

  // Gives the new file its name now; what is written from then on reaches it as it comes. For records of a
  // run that must survive its crash.
  bool publish();
  // Ends the writing. True when all has reached the target.
  bool commit();

  // What went wrong, as a text to put behind the target's name; empty so far.
  const std::string& failure() const { return failure_; }

 private:
  bool openFolder(const std::string& path);
  bool isPlainTarget();
  void openTemporary();
  bool takeName();
  bool fail(std::string why);
  bool failByError();

  int folder_ = -1;
  std::string target_;     // a name in the folder
  std::string temporary_;  // likewise; empty once it has the target's
  unsigned oldMode_ = 0;   // the target's permissions where there is one
  bool durable_;
  std::FILE* stream_ = nullptr;
  std::string failure_;
};

// Writes a whole file. Empty, or what went wrong.
std::string writeAtomically(const std::string& target, std::span<const std::byte> bytes, bool durable = true);

}  // namespace footlight::platform
