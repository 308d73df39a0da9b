#pragma once

// The elements of a sequence by their names, while its file is read. An element gets its playable with its
// type; what is said of it before that counts for files and events alone, what is said later goes to the
// playable. The playables belong to the tree, or to the resources manager.

#include <deque>
#include <string_view>
#include <unordered_map>

#include "sequence/playable_tree.h"
#include "sequence/sequence_cast.h"
#include "sequence/tree_shape.h"

namespace footlight {

class CResourcesManager;
class CSpeakingAnimation;
class CWindow;

struct _tse_entry {
  static constexpr int kSimple = 1;
  static constexpr int kSequence = 2;
  static constexpr int kSpeaking = 3;

  CXString name;
  int type = 0;
  CXString fileName;
  CXString event = "0";
  CPlayable* playable = nullptr;
  WeakRef<CXObject> object;  // that the playable is part of
  TreeShape::Node* node = nullptr;

  // Null before its type is known, and when it has gone.
  CPlayable* live() const { return object ? playable : nullptr; }
};

class CTreeSequenceElements : public CXObject {
 public:
  // The manager and the cast may be null.
  CTreeSequenceElements(CWindow* window, CResourcesManager* resources, const CSequenceCast* cast,
                        CPlayableTree* tree);
  CTreeSequenceElements(const CTreeSequenceElements&) = delete;
  CTreeSequenceElements& operator=(const CTreeSequenceElements&) = delete;

  // A name that is there already is ignored.
  void add(std::string_view name);
  // Null for an unknown name.
  _tse_entry* find(std::string_view name);
  bool contains(std::string_view name) const { return byName_.contains(name); }

  // Each changes one element; words that mean nothing there change nothing.
  void setType(_tse_entry& entry, std::string_view word, const PlayableObserver& observer);
  static void setFileName(_tse_entry& entry, std::string_view name) { entry.fileName = CXString(name); }
  static void setEvent(_tse_entry& entry, std::string_view event) { entry.event = CXString(event); }
  static void show(const _tse_entry& entry, bool visible);
  static void setMode(const _tse_entry& entry, std::string_view word);
  static void setWaitMode(const _tse_entry& entry, std::string_view word);
  static void addSequenceEvent(const _tse_entry& entry, std::string_view event, std::string_view parameter);
  void setAnimoFN(const _tse_entry& entry, std::string_view name);
  void setWAVFN(const _tse_entry& entry, std::string_view name);
  static void setStarting(const _tse_entry& entry, std::string_view word);
  static void setEnding(const _tse_entry& entry, std::string_view word);
  static void setPrefix(const _tse_entry& entry, std::string_view prefix);
  // Makes the element a child of another one. One that would stand below itself, or too deep, is left out.
  void addTo(const _tse_entry& entry, std::string_view parent);
  // Whether a sequence with this root may be played: it does not hold too much.
  static bool isPlayable(const _tse_entry& root);

 private:
  bool spend();
  Ref<CXObject> make(_tse_entry& entry);
  void makeSimple(_tse_entry& entry);
  void makeAnimation(_tse_entry& entry);
  void makeSound(_tse_entry& entry);
  template <class T>
  void take(_tse_entry& entry, T* playable);

  CWindow* window_;
  CResourcesManager* resources_;
  const CSequenceCast* cast_;
  CPlayableTree* tree_;
  std::deque<_tse_entry> entries_;
  std::unordered_map<std::string_view, _tse_entry*> byName_;
  TreeShape shape_;
  int spent_ = 0;
};

}  // namespace footlight
