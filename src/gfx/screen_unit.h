#pragma once

namespace footlight {

// What the refresh screen must know of the scene that is shown. The scene's side installs its unit with
// `CWindow::setScreenUnit` and takes it away, or lets its destructor do so.
class CScreenUnit {
 public:
  CScreenUnit() = default;
  CScreenUnit(const CScreenUnit&) = delete;
  CScreenUnit& operator=(const CScreenUnit&) = delete;
  virtual ~CScreenUnit();

  // False until the first frame after the scene was entered.
  virtual bool wasInitiallyUpdated() const = 0;
  // Called once, before that frame; it must make `wasInitiallyUpdated` true for the frame to be drawn.
  virtual void onInitialUpdate() = 0;
  // Called before every later frame.
  virtual void onUpdate() {}
};

}  // namespace footlight
