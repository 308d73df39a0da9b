#include "sequence/multimedia_sequence_creator.h"

#include "files/file.h"
#include "files/file_name_resolver.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "sequence/sequence_parameter.h"
#include "sequence/sequence_text.h"
#include "sequence/sequenced_playable.h"
#include "sequence/tree_sequence_elements.h"

namespace footlight {

namespace {

class Reader {
 public:
  Reader(const CFile& file, CTreeSequenceElements& elements, const PlayableObserver& observer)
      : elements_(elements), observer_(observer) {
    if (diagnose::isOn()) origin_.file = diagnose::internFile(file.getFileName());
  }

  void readLine(std::string_view text) {
    ++origin_.line;
    SequenceLine line(text);
    const std::string_view first = line.next();
    if (first.empty()) return;
    if (first == kDeclaration) {
      elements_.add(line.next());
    } else if (_tse_entry* entry = elements_.find(first)) {
      readKey(*entry, line);
    } else {
      report(first, "no element of that name");
    }
  }

 private:
  void readKey(_tse_entry& entry, SequenceLine& line) {
    const std::string_view word = line.next();
    SequenceKey key{};
    if (findSequenceKey(word, &key)) {
      apply(entry, key, line);
    } else if (CXString(word).toNumber() == 0) {
      report(entry.name, "no key " + std::string(word));
    }
  }

  void apply(_tse_entry& entry, SequenceKey key, SequenceLine& line) {
    const std::string_view value = line.next();
    using Elements = CTreeSequenceElements;
    switch (key) {
      case SequenceKey::type:
        return elements_.setType(entry, value, observer_);
      case SequenceKey::fileName:
        return Elements::setFileName(entry, value);
      case SequenceKey::event:
        return Elements::setEvent(entry, value);
      case SequenceKey::show:
        return Elements::show(entry, true);
      case SequenceKey::hide:
        return Elements::show(entry, false);
      case SequenceKey::mode:
        return Elements::setMode(entry, value);
      case SequenceKey::sequenceEvent:
        return Elements::addSequenceEvent(entry, value, line.next());
      case SequenceKey::animation:
        return elements_.setAnimoFN(entry, value);
      case SequenceKey::sound:
        return elements_.setWAVFN(entry, value);
      case SequenceKey::starting:
        return Elements::setStarting(entry, value);
      case SequenceKey::ending:
        return Elements::setEnding(entry, value);
      case SequenceKey::prefix:
        return Elements::setPrefix(entry, value);
      case SequenceKey::add:
        return elements_.addTo(entry, value.empty() ? kUsualParent : value);
      case SequenceKey::sequence:
        return;
      case SequenceKey::wait:
        return Elements::setWaitMode(entry, value);
    }
  }

  void report(std::string_view element, const std::string& text) const {
    if (diagnose::isOn()) diagnose::report(diagnose::Group::definition, element, "", text, origin_);
  }

  CTreeSequenceElements& elements_;
  const PlayableObserver& observer_;
  Origin origin_;
};

}  // namespace

CPlayableTree CMultimediaSequenceCreator::load(CWindow* window, const CXString& fileName,
                                               CResourcesManager* resources, const PlayableObserver& observer,
                                               const CSequenceCast* cast) {
  CPlayableTree tree;
  CFile file(window, fileName, CFile::kRead);
  if (file.LastError() != 0) return tree;
  if (file.Length() > limits::kTextFileBytes) {
    limitHit("size of a sequence");
    return tree;
  }
  CTreeSequenceElements elements(window, resources, cast, &tree);
  Reader reader(file, elements, observer);
  while (!file.eof()) reader.readLine(file.getLine());
  const _tse_entry* root = elements.find(CFileNameResolver(fileName).getPureFileName());
  if (root == nullptr || root->live() == nullptr || !CTreeSequenceElements::isPlayable(*root)) return tree;
  // A root that is a sound or an animation keeps the name that it is loaded by.
  if (root->type == _tse_entry::kSequence) root->playable->setFilename(fileName);
  tree.setRoot(root->playable);
  return tree;
}

char CMultimediaSequenceCreator::getParameter(int place) { return sequence_parameter::encode(place); }

}  // namespace footlight
