#pragma once

// SEQUENCE: the script's face of a sequence. Its tree is made of its file when the object is initialised, or
// when it is first used, and every element of it is heard: the root by the plain signals, the others by the
// signals with their names.

#include "script/mc_object.h"
#include "sequence/playable_tree.h"

namespace footlight {

namespace type {
inline constexpr int kSequence = 2004;
}

enum class SequenceSignal { onStarted = kFirstOwnSignal, onFinished, count };

class CMC_Sequence : public CMC_Object, public CPlayableObserver {
 public:
  // Without a file, of the name "temp".
  explicit CMC_Sequence(CMC_ObjectsContainer* container);
  CMC_Sequence(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Sequence() override;
  static bool isTypeOf(int type) { return type == type::kSequence; }

  // The root of the tree, which is made now if it is not there; null without one.
  CPlayable* getSequence();
  // The same, but nothing is made.
  CPlayable* getLoadedSequence() const { return tree_.root(); }

  // Makes the tree.
  void init() override;
  // With `ends` the tree goes; the next use makes it anew.
  bool done(bool ends) override;
  // The file's name; its tree is made by the first use.
  void serialize(CXArchive& archive) override;
  // With a tree of its own.
  std::unique_ptr<CMC_Object> copy() const override;
  bool onPlayableStarted(CPlayable* playable) override;
  bool onPlayableFinished(CPlayable* playable) override;

 protected:
  void unlink() override { tree_.end(); }

 private:
  void load();
  void signal(SequenceSignal signal, bool isPlain, const CXString& element);

  CXString fileName_;
  CPlayableTree tree_;
  bool isLoading_ = false;
};

}  // namespace footlight
