#pragma once

// The sound of an animation's frame, as an animation sees it. The sound engine makes it.

#include <memory>

#include "foundation/xstring.h"

namespace footlight {

class CWindow;

class CFrameSound {
 public:
  virtual ~CFrameSound() = default;
  virtual void play() = 0;
  virtual void stop() = 0;
  virtual bool isPlaying() const = 0;
  virtual void setVolume(int volume) = 0;        // hundredths of a decibel
  virtual void setPanning(int panning) = 0;      // hundredths of a decibel
  virtual void setFrequency(int frequency) = 0;  // samples a second
};

// The sound of a file by its full name, read now or, `streamed`, while it plays. A name with ";" is a choice
// of several. Never null.
std::unique_ptr<CFrameSound> makeFrameSound(CWindow* window, const CXString& name, bool streamed);

}  // namespace footlight
