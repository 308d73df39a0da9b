#pragma once

// The window's one piece of music.

#include <memory>

#include "foundation/xobject.h"
#include "sound/snd_stream.h"

namespace footlight {

class CMusicPlayer : public CXObject {
 public:
  explicit CMusicPlayer(CWindow* window) : window_(window) {}

  // A full name. What plays already goes on; a file that is not there leaves silence and the old name.
  void start(const CXString& fileName, bool looped);
  void stop() { stream_.reset(); }
  bool isPlaying() const { return stream_ != nullptr && stream_->IsPlaying(); }
  // Of what runs now, or ran last.
  const CXString& getFileName() const { return fileName_; }
  // Null while it is silent.
  CSndStream* getStream() const { return stream_.get(); }

 private:
  CWindow* window_;
  Owned<CSndStream> stream_;
  CXString fileName_;
};

}  // namespace footlight
