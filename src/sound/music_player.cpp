#include "sound/music_player.h"

namespace footlight {

void CMusicPlayer::start(const CXString& fileName, bool looped) {
  if (isPlaying() && fileName_.equalsIgnoreCase(fileName)) return;
  stop();
  Owned<CSndStream> stream(new CSndStream(window_, fileName));
  if (stream->LastError() != 0) return;
  fileName_ = fileName;
  stream_ = std::move(stream);
  stream_->Play(looped);
}

}  // namespace footlight
