#include "sound/sound_manager.h"

#include "sound/snd_stream.h"
#include "sound/sound4.h"

namespace footlight {

void CSoundManager::add(CSound4* sound) { nodes_.push_back({sound}); }

void CSoundManager::play(const CSound4* sound) {
  for (Node& node : nodes_) {
    if (node.sound.get() == sound) node.active = true;
  }
}

// Observers may add and end sounds: the list grows meanwhile, and shrinks afterwards.
void CSoundManager::domodal() {
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    const Ref<CSound4> sound = nodes_[i].sound.get();
    if (!sound || !nodes_[i].active || sound->isPaused() || sound->IsPlaying()) continue;
    nodes_[i].active = false;
    sound->OnWAVFinished();
  }
  std::erase_if(nodes_, [](const Node& node) { return !node.sound; });
  CSndStream::tellLoops();
}

void CSoundManager::pause() {
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    const Ref<CSound4> sound = nodes_[i].sound.get();
    if (sound && sound->isPlaying()) sound->pause();
  }
}

void CSoundManager::resume() {
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    const Ref<CSound4> sound = nodes_[i].sound.get();
    if (sound && sound->isPaused()) sound->resume();
  }
}

}  // namespace footlight
