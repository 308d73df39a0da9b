#pragma once

// EDITBOX: the script's face of a box to type in. The unit owns the box; one that the end of a scene has
// taken is none, and every operation on it is left out.

#include "input/edit_box.h"
#include "script/mc_object.h"

namespace footlight {

namespace type {
inline constexpr int kEditBox = 2009;
}

enum class EditBoxSignal { onFocusOn = kFirstOwnSignal, onFocusOff, onChanged, onEnter, onEsc, count };

class CMC_EditBox : public CMC_Object, public CEditBoxNotifier {
 public:
  CMC_EditBox(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kEditBox; }
  // A box of its own at the same place, with the same text.
  std::unique_ptr<CMC_Object> copy() const override;
  // The name of the FONT, the area, the text as it is now, the name of the cursor.
  void serialize(CXArchive& archive) override;

  // Null when there is no window or the box has gone.
  CEditBox6* getEditBox() const { return editBox_.get(); }

  void onFocusOn(CEditBox6* /*box*/) override { raise(EditBoxSignal::onFocusOn); }
  void onFocusOff(CEditBox6* /*box*/) override { raise(EditBoxSignal::onFocusOff); }
  void onChanged(CEditBox6* /*box*/) override { raise(EditBoxSignal::onChanged); }
  void onEnter(CEditBox6* /*box*/) override { raise(EditBoxSignal::onEnter); }
  void onEsc(CEditBox6* /*box*/) override { raise(EditBoxSignal::onEsc); }

 protected:
  void unlink() override;

 private:
  CMC_EditBox(const CMC_EditBox& other);
  void makeBox(const CMC_ObjectsContainer* scope, const CXRect& rect, int priority, const CXString& text);

  WeakRef<CEditBox6> editBox_;
  CXString fontName_;
  CXString cursorName_;
  int priority_;
};

}  // namespace footlight
