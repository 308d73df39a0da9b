#pragma once

// Plays a wave file of any length through a ring of 1.2 seconds, which a timer's thread refills every 50
// milliseconds with what was played meanwhile. The thread touches the ring and the file only; that a wave
// began anew is counted and told later, on the main thread.

#include <memory>
#include <mutex>
#include <vector>

#include "foundation/xobject.h"
#include "foundation/xstring.h"
#include "platform/sound_device.h"
#include "sound/streamed_wav.h"

namespace footlight {

class CWindow;

class CSndStream : public CXObject {
 public:
  static constexpr std::uint32_t kPeriod = 50;  // milliseconds

  // Opens at once; the error code is 2000 when there is no such file.
  CSndStream(CWindow* window, const CXString& fileName);
  ~CSndStream() override;
  CSndStream(const CSndStream&) = delete;
  CSndStream& operator=(const CSndStream&) = delete;

  // From the start of the ring; a looped wave begins anew at its end.
  void Play(bool looped);
  void Stop();
  // Goes on about where it was stopped.
  void Resume();
  bool IsPlaying() const;
  // Bytes.
  int GetBufferSize() const { return buffer_ ? buffer_->size() : 0; }

  // See platform::SoundBuffer; without effect on a stream that could not be opened.
  void setVolume(int volume);
  void setPan(int pan);
  void setFreq(int frequency);
  int getVolume() const { return buffer_ ? buffer_->volume() : 0; }

  // Sends ONMUSICLOOPED to the scene that runs, once for each time that a wave began anew.
  static void tellLoops();

 private:
  using Bytes = std::vector<std::byte>;

  void fillDataBuffer();
  void timeFunc();
  void refill(int cursor, int length);
  std::size_t readRound(std::span<std::byte> target, bool tellsLoops);
  std::byte silence() const { return bits_ == 8 ? std::byte{0x80} : std::byte{0}; }
  int distance(int from, int to) const;

  CWindow* window_;
  std::unique_ptr<CStreamedWAV> wav_;
  std::unique_ptr<platform::SoundBuffer> buffer_;
  int bits_ = 16;
  mutable std::mutex lock_;
  bool playing_ = false;
  bool foundEnd_ = false;     // the end of the wave is in the ring
  bool donePlaying_ = false;  // and was played
  bool looped_ = false;
  int bytesRemaining_ = 0;  // to that end
  int nextWriteOffset_ = 0;
  Bytes region_;                                    // what goes into the ring next
  std::unique_ptr<platform::PeriodicTimer> timer_;  // last, so that it ends first
};

}  // namespace footlight
