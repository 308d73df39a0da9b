#pragma once

// The sound of an animation's frame, as an animation sees it. Builds without a sound engine have silent ones:
// they take every call and never play.

#include <memory>

#include "foundation/xstring.h"

namespace footlight {

class CWindow;

class CFrameSound {
 public:
  virtual ~CFrameSound() = default;
  virtual void play() {}
  virtual void stop() {}
  virtual bool isPlaying() const { return false; }
  virtual void setVolume(int /*volume*/) {}        // hundredths of a decibel
  virtual void setPanning(int /*panning*/) {}      // hundredths of a decibel
  virtual void setFrequency(int /*frequency*/) {}  // samples a second
};

// The sound of a file by its full name, read now or, `streamed`, while it plays. A name with ";" is a choice
// of several. Never null.
inline std::unique_ptr<CFrameSound> makeFrameSound(CWindow* /*window*/, const CXString& /*name*/,
                                                   bool /*streamed*/) {
  return std::make_unique<CFrameSound>();
}

}  // namespace footlight
