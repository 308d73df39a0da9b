#pragma once

// The statements of one text. Whoever runs or keeps them holds a Ref; the last one ends them and
// their inline behaviours.

#include <memory>
#include <vector>

#include "script/mc_behaviour_entry.h"
#include "script/name_watch.h"

namespace footlight {

class CodeLines : public CXObject {
 public:
  // Watched lines can tell whether compiling their text anew would come to the same.
  static Ref<const CodeLines> make(CMC_Behaviour* behaviour, CXString text, bool isWatched = false);
  // For `make`.
  CodeLines(CMC_Behaviour* behaviour, CXString text);

  const CXString& text() const { return text_; }
  const std::vector<std::unique_ptr<CMC_Behaviour_Entry>>& entries() const { return entries_; }
  void releaseTempBeh(bool owns) const;
  // True where compiling the text anew would come to the same; lines that are not watched cannot tell.
  bool isCurrent() const;
  void tellNames(NameUses& uses) const;

 private:
  CXString text_;
  std::vector<std::unique_ptr<CMC_Behaviour_Entry>> entries_;
  mutable std::uint64_t generation_;  // of names, when the lines were last known to be current
  std::unique_ptr<NameUses> uses_;
};

}  // namespace footlight
