#pragma once

// The file side of a stream: a wave file of its own or of the big file, with a position that
// nobody else moves.

#include <cstddef>
#include <memory>
#include <span>

#include "files/file.h"
#include "platform/sound_device.h"
#include "sound/wave_file.h"

namespace footlight {

class CStreamedWAV : public CXObject {
 public:
  static constexpr int kRingMilliseconds = 1200;

  // Opens at once. The error code is 2000 when there is no such file; `getBuffer` is null when it
  // cannot be played.
  CStreamedWAV(CWindow* window, const CXString& fileName);

  // A device's buffer for 1.2 seconds.
  std::unique_ptr<platform::SoundBuffer> takeBuffer() { return std::move(buffer_); }
  const tWAVEFORMATEX& getFormat() const { return format_; }
  // Back to the first sample.
  void StartRead();
  // Bytes that were read, fewer at the end.
  std::size_t Read(std::span<std::byte> target);
  // Bytes from the first sample on.
  int Tell() const { return readCount_; }
  void setPosition(int offset);

 private:
  bool open();

  CFile file_;
  tWAVEFORMATEX format_;
  std::unique_ptr<platform::SoundBuffer> buffer_;
  int dataStart_ = 0;
  int dataSize_ = 0;
  int readCount_ = 0;
};

}  // namespace footlight
