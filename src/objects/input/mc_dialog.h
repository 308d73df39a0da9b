#pragma once

// DIALOG: the script's face of a dialog with a background, pictures and buttons of other script objects.

#include "input/dialog.h"
#include "script/mc_object.h"

namespace footlight {

namespace type {
inline constexpr int kDialog = 2013;
}

class CMC_Dialog : public CMC_Object {
 public:
  CMC_Dialog(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kDialog; }
  // A dialog of the same parts.
  std::unique_ptr<CMC_Object> copy() const override;

  // Null when there is no window.
  CXDialog* getDialog() const { return dialog_.get(); }

 protected:
  void unlink() override { dialog_.reset(); }

 private:
  CMC_Dialog(const CMC_Dialog& other);

  Owned<CXDialog> dialog_;
};

}  // namespace footlight
