#pragma once

// DIALOG: the script's face of a dialog box with a background, graphics and controls.

#include <memory>
#include <vector>

#include "script/mc_object.h"

namespace footlight {

// What the dialog is made of. Its parts belong to their own owners.
class CXDialog {
 public:
  void show() { visible_ = true; }
  void hide() { visible_ = false; }
  bool isVisible() const { return visible_; }
  void setBackground(CMC_Object* object) { background_ = WeakRef<CMC_Object>(object); }
  void addControl(CMC_Object* object) { controls_.emplace_back(object); }
  void addGraphics(CMC_Object* object) { graphics_.emplace_back(object); }

 private:
  bool visible_ = false;
  WeakRef<CMC_Object> background_;
  std::vector<WeakRef<CMC_Object>> controls_;
  std::vector<WeakRef<CMC_Object>> graphics_;
};

class CMC_Dialog : public CMC_Object {
 public:
  CMC_Dialog(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kDialog; }
  CXDialog& dialog() { return dialog_; }

 private:
  CXDialog dialog_;
};

}  // namespace footlight
