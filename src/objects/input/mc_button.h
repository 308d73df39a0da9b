#pragma once

// BUTTON: the script's face of a button. It reads the properties, hands the control the pictures and sounds
// of other script objects, and turns what it tells into signals.

#include "input/button.h"
#include "script/mc_object.h"

namespace footlight {

namespace type {
inline constexpr int kButton = 2001;
}

enum class ButtonSignal {
  onFocusOn = kFirstOwnSignal,
  onFocusOff,
  onPaused,
  onClicked,
  onReleased,
  onAction,
  onStartDragging,
  onDragging,
  onEndDragging,
  count
};

class CMC_Button : public CMC_Object, public CControlNotifier {
 public:
  // Around a ready control that it takes over, with empty properties.
  CMC_Button(CMC_ObjectsContainer* container, Owned<CButton> button, CXString name);
  CMC_Button(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Button() override;
  static bool isTypeOf(int type) { return type == type::kButton; }

  // A control with an empty rectangle on the scene's unit.
  static std::unique_ptr<CMC_Button> makeBare(CMC_ObjectsContainer* container, CXString name);

  // Null when there is no window.
  CButton* getButton() const { return button_.get(); }
  std::unique_ptr<CMC_Object> copy() const override;
  // The texts of the properties, then ENABLE, DRAGGABLE and PRIORITY; what the control is about is not kept.
  void serialize(CXArchive& archive) override;

  void onControlFocusOn(CControl* control, CXPoint point) override;
  void onControlFocusOff(CControl* control, CXPoint point) override;
  void onControlClicked(CControl* control, CXPoint point) override;
  void onControlReleased(CControl* control, CXPoint point) override;
  void onControlAction(CControl* control, CXPoint point) override;
  void onStartDragging(CControl* control, CXPoint point) override;
  void onDragging(CControl* control, CXPoint point) override;
  void onEndDragging(CControl* control, CXPoint point) override;

 protected:
  void unlink() override;

 private:
  void createButton();
  CXRect area();
  void setPictures();
  CSound4* sound(const CXString& name) const;
  CGraphicsObject* picture(const CXString& name) const;
  void setDraggedName(const CXString& name) const;
  void signal(ButtonSignal signal);

  CXString accent_, gfxStandard_, gfxOnMove_, gfxOnClick_;
  CXString sndStandard_, sndOnMove_, sndOnClick_;
  CXString drag_, rect_;
  bool enable_ = false;
  bool draggable_ = false;
  bool isDragged_ = false;
  int priority_ = 0;
  Owned<CButton> button_;
};

}  // namespace footlight
