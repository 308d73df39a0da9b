#pragma once

// A sound that is decoded as a whole. It is a playable: its start, its going on and its end are told to
// observers; the sound manager watches for the end. A sound without a device, or without a file that can be
// decoded, is silent and tells nothing.

#include <memory>
#include <vector>

#include "foundation/xobject.h"
#include "gfx/playable.h"
#include "platform/sound_device.h"

namespace footlight {

class CWindow;

class CSound4 : public CXObject, public CPlayable {
 public:
  static constexpr int kType = 1;

  // Empty, and unknown to the manager.
  explicit CSound4(CWindow* window);
  // A full name. Without `preload` the first Play loads it.
  CSound4(CWindow* window, const CXString& fileName, bool flushAfterPlayed, bool preload);
  ~CSound4() override;
  CSound4(const CSound4&) = delete;
  CSound4& operator=(const CSound4&) = delete;

  CXObject* asObject() override { return this; }
  void retire() override;
  void destroy() override { dispose(); }

  // Another file in place of this one; false when it cannot be decoded.
  bool Load(const CXString& fileName);
  bool load();
  // Lets the samples go.
  void Flush() { buffer_.reset(); }

  void play() override;
  using CPlayable::play;
  void stop(bool notifies) override;
  void pause() override;
  void resume() override;
  void seek(int place) override { SetPosition(place); }
  bool isPlaying() const override { return IsPlaying(); }
  void setVolume(int volume) override;        // hundredths of a decibel
  void setPanning(int panning) override;      // hundredths of a decibel
  void setFrequency(int frequency) override;  // samples a second

  // Once, or round and round; the manager is not told, so there is no end to hear of.
  virtual void Play(bool loops);
  // From where it was paused, else from the start.
  virtual void Play();
  virtual void Stop();
  virtual bool IsPlaying() const;
  // The manager has found the end.
  virtual void OnWAVFinished();
  // Bytes.
  void SetPosition(int place);

 protected:
  CWindow* window() const { return window_; }

 private:
  CWindow* window_;
  std::unique_ptr<platform::SoundBuffer> buffer_;
  bool flushAfterPlayed_ = false;
  bool notifyFinished_ = true;
  int pausePosition_ = 0;
};

// One name for several sounds: each start takes one of them by chance.
class CRandomSound final : public CSound4 {
 public:
  // Names apart by ";"; one without ":" is looked for in the sound folder.
  CRandomSound(CWindow* window, const CXString& list, bool flushAfterPlayed, bool preload);

  void setVolume(int volume) override;
  void setPanning(int panning) override;
  void setFrequency(int frequency) override;
  void Play(bool loops) override;
  void Play() override;
  void Stop() override;
  bool IsPlaying() const override;

 private:
  CSound4* choose();

  std::vector<Owned<CSound4>> variants_;
  CSound4* current_ = nullptr;  // one of them, the last that was started
};

}  // namespace footlight
