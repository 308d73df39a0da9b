#pragma once

// Code that stands in an argument: a behaviour is made from it, and its name is what travels.

#include "script/mc_behaviour.h"
#include "script/mc_variable.h"

namespace footlight {

// A text with the name of the behaviour that was made from it.
class CMC_InlineCode : public CMC_String {
 public:
  CMC_InlineCode(CMC_Behaviour* behaviour, const char* name)
      : CMC_String(behaviour->getName()), behaviour_(behaviour) {
    setName(name);
  }
  CMC_Behaviour* inlineBehaviour() const override { return behaviour_.get(); }

  // Makes a behaviour from a piece of text that is inline code, and adds it to the scope. The prefix and a
  // number that is never used again are its name. Over the limit of objects it is ended at once.
  static Ref<CMC_Behaviour> makeBehaviour(CMC_ObjectsContainer* scope, const char* prefix,
                                          std::string_view piece, Origin origin);
  // Takes such a behaviour out of its scope and ends it.
  static void end(CMC_Behaviour& behaviour);
  // The numbers start anew: only while no game is there.
  static void restartNames() { number_ = 0; }

 private:
  static inline std::int64_t number_ = 0;  // the last one in a name

  WeakRef<CMC_Behaviour> behaviour_;
};

}  // namespace footlight
