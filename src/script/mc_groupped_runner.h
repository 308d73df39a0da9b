#pragma once

#include "script/mc_runner.h"

namespace footlight {

// A word outside the table goes to every member of the group.
class CMC_Groupped_Runner : public CMC_Runner {
 public:
  using CMC_Runner::CMC_Runner;
  using CMC_Runner::run;
  Result run(std::string_view method, CMC_Object* object, CMC_ObjectsContainer* scope,
             const ArgumentList& arguments) override;
  bool takesOtherWords() const override { return true; }
};

}  // namespace footlight
