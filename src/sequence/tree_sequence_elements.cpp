#include "sequence/tree_sequence_elements.h"

#include "files/file_name_resolver.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/window.h"
#include "sequence/animo_sequence_element.h"
#include "sequence/sequenced_playable.h"
#include "sequence/speaking_animation.h"

namespace footlight {

namespace {

struct Word {
  std::string_view word;
  int value;
};

constexpr Word kTypes[] = {{"SIMPLE", _tse_entry::kSimple},
                           {"SEQUENCE", _tse_entry::kSequence},
                           {"SPEAKING", _tse_entry::kSpeaking}};
constexpr Word kModes[] = {{"SEQUENCE", CSequencedPlayable::kInOrder},
                           {"RANDOM", CSequencedPlayable::kByChance},
                           {"PARAMETER", CSequencedPlayable::kByParameter}};
constexpr Word kTruth[] = {{"FALSE", 0}, {"TRUE", 1}};

template <std::size_t N>
constexpr const int* valueOf(const Word (&words)[N], std::string_view word) {
  for (const Word& row : words) {
    if (row.word == word) return &row.value;
  }
  return nullptr;
}

CSpeakingAnimation* speakerOf(const _tse_entry& entry) {
  return dynamic_cast<CSpeakingAnimation*>(entry.live());
}

}  // namespace

CTreeSequenceElements::CTreeSequenceElements(CWindow* window, CResourcesManager* resources,
                                             const CSequenceCast* cast, CPlayableTree* tree)
    : window_(window), resources_(resources), cast_(cast), tree_(tree) {}

// Counts what takes memory or time; false when the file has had its share.
bool CTreeSequenceElements::spend() {
  if (spent_ < limits::kSequenceParts * 2) {
    ++spent_;
    return true;
  }
  limitHit("parts of a sequence");
  return false;
}

void CTreeSequenceElements::add(std::string_view name) {
  if (name.empty() || contains(name)) return;
  if (entries_.size() >= static_cast<std::size_t>(limits::kSequenceParts)) {
    limitHit("elements of a sequence");
    return;
  }
  _tse_entry& entry = entries_.emplace_back();
  entry.name = CXString(name);
  byName_.emplace(entry.name.view(), &entry);
}

_tse_entry* CTreeSequenceElements::find(std::string_view name) {
  const auto found = byName_.find(name);
  return found != byName_.end() ? found->second : nullptr;
}

// Playables

template <class T>
void CTreeSequenceElements::take(_tse_entry& entry, T* playable) {
  entry.playable = playable;
  entry.object = playable;
}

void CTreeSequenceElements::setType(_tse_entry& entry, std::string_view word,
                                    const PlayableObserver& observer) {
  const int* type = valueOf(kTypes, word);
  if (type == nullptr || !spend()) return;
  entry.type = *type;
  entry.playable = nullptr;
  entry.object = nullptr;
  entry.node = shape_.add();
  if (*type == _tse_entry::kSimple) makeSimple(entry);
  if (*type == _tse_entry::kSequence)
    take(entry, tree_->keep(Owned<CSequencedPlayable>(new CSequencedPlayable(window_))));
  if (*type == _tse_entry::kSpeaking)
    take(entry, tree_->keep(Owned<CSpeakingAnimation>(new CSpeakingAnimation(window_, resources_, cast_))));
  CPlayable* playable = entry.live();
  if (playable == nullptr) return;
  playable->setGenericNotifier(observer);
  playable->setName(entry.name);
}

void CTreeSequenceElements::makeSimple(_tse_entry& entry) {
  CSequenceFigure* figure = cast_ != nullptr ? cast_->figure(entry.fileName) : nullptr;
  if (figure != nullptr) {
    auto* element = tree_->keep(Owned<CAnimoSequenceElement>(new CAnimoSequenceElement(window_)));
    element->take(figure, entry.event);
    return take(entry, element);
  }
  const CXString ending = CFileNameResolver(entry.fileName).getExtension();
  if (ending.equalsIgnoreCase("ANN")) makeAnimation(entry);
  if (ending.equalsIgnoreCase("WAV")) makeSound(entry);
}

void CTreeSequenceElements::makeAnimation(_tse_entry& entry) {
  auto* element = tree_->keep(Owned<CAnimoSequenceElement>(new CAnimoSequenceElement(window_)));
  element->takeFile(window_, resources_, entry.fileName, entry.event);
  take(entry, element);
}

void CTreeSequenceElements::makeSound(_tse_entry& entry) {
  const CXString path = window_ != nullptr ? window_->GetSoundFXFullPath(entry.fileName) : entry.fileName;
  CFileResolver* known = resources_ != nullptr ? resources_->get(path) : nullptr;
  if (auto* shared = dynamic_cast<CSound4*>(known)) return take(entry, shared);
  if (known != nullptr) resources_->remove(known);  // the file is something else to others
  Owned<CSound4> sound(new CSound4(window_, path, true, false));
  if (resources_ == nullptr) return take(entry, tree_->keep(std::move(sound)));
  take(entry, sound.get());
  resources_->add(sound.release());
}

// What is said of a playable

void CTreeSequenceElements::show(const _tse_entry& entry, bool visible) {
  CPlayable* playable = entry.live();
  if (playable == nullptr || entry.type == _tse_entry::kSequence) return;
  if (visible) {
    playable->show();
  } else {
    playable->hide();
  }
}

void CTreeSequenceElements::setMode(const _tse_entry& entry, std::string_view word) {
  const int* mode = valueOf(kModes, word);
  if (mode != nullptr && entry.live() != nullptr) entry.playable->setMode(*mode);
}

void CTreeSequenceElements::setWaitMode(const _tse_entry& entry, std::string_view word) {
  const int* on = valueOf(kTruth, word);
  if (on != nullptr && entry.live() != nullptr) entry.playable->setWaitMode(*on != 0);
}

void CTreeSequenceElements::addSequenceEvent(const _tse_entry& entry, std::string_view event,
                                             std::string_view parameter) {
  if (entry.live() != nullptr) entry.playable->addEvent(CXString(event), CXString(parameter));
}

void CTreeSequenceElements::setAnimoFN(const _tse_entry& entry, std::string_view name) {
  CSpeakingAnimation* speaker = speakerOf(entry);
  if (speaker != nullptr && spend()) speaker->setAnimation(CXString(name));
}

void CTreeSequenceElements::setWAVFN(const _tse_entry& entry, std::string_view name) {
  CSpeakingAnimation* speaker = speakerOf(entry);
  if (speaker == nullptr || !spend()) return;
  const CXString text(name);
  const _tse_entry* element = find(name);
  CSound4* own = cast_ != nullptr ? cast_->sound(text) : nullptr;
  if (element != nullptr) {
    speaker->apply(element->live());
  } else if (own != nullptr) {
    speaker->apply(own);
  } else {
    speaker->apply(window_ != nullptr ? window_->GetSoundFXFullPath(text) : text);
  }
}

void CTreeSequenceElements::setStarting(const _tse_entry& entry, std::string_view word) {
  const int* on = valueOf(kTruth, word);
  if (CSpeakingAnimation* speaker = speakerOf(entry); speaker != nullptr && on != nullptr)
    speaker->setStarting(*on != 0);
}

void CTreeSequenceElements::setEnding(const _tse_entry& entry, std::string_view word) {
  const int* on = valueOf(kTruth, word);
  if (CSpeakingAnimation* speaker = speakerOf(entry); speaker != nullptr && on != nullptr)
    speaker->setEnding(*on != 0);
}

void CTreeSequenceElements::setPrefix(const _tse_entry& entry, std::string_view prefix) {
  if (CSpeakingAnimation* speaker = speakerOf(entry)) speaker->setPrefix(CXString(prefix));
}

void CTreeSequenceElements::addTo(const _tse_entry& entry, std::string_view parent) {
  const _tse_entry* above = find(parent);
  auto* node = above != nullptr ? dynamic_cast<CSequencedPlayable*>(above->live()) : nullptr;
  if (node == nullptr || entry.live() == nullptr || !spend()) return;
  if (shape_.join(above->node, entry.node)) {
    node->addChild(entry.playable);
  } else {
    limitHit("depth of a sequence");
  }
}

bool CTreeSequenceElements::isPlayable(const _tse_entry& root) {
  if (root.node == nullptr || TreeShape::countPlaces(root.node) <= limits::kSequenceParts) return true;
  limitHit("places in a sequence");
  return false;
}

}  // namespace footlight
