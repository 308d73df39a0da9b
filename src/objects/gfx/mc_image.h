#pragma once

// IMAGE: the script's face of a still picture. It puts the picture on the screen and turns the mouse over it
// into signals. A picture that has gone is no picture, and every operation on it is left out.

#include "foundation/geometry.h"
#include "gfx/image.h"
#include "objects/gfx/mc_graphic.h"
#include "objects/shared_resource.h"

namespace footlight {

enum class ImageSignal {
  onCollision = kFirstOwnSignal,
  onCollisionFinished,
  onFocusOn,
  onFocusOff,
  onClick,
  onRelease,
  count
};

class CMC_Image : public CMC_Graphic {
 public:
  // Without a picture yet, of no name.
  explicit CMC_Image(CMC_ObjectsContainer* container);
  // Around a picture that it takes over, of no name.
  CMC_Image(CMC_ObjectsContainer* container, Owned<CImage> image);
  // Loads the picture and shows it as the definition says.
  CMC_Image(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Image() override;
  static bool isTypeOf(int type) { return type == type::kImage; }

  // The picture, or null.
  CImage* getImage() const { return image_.get(); }
  CGraphicsObject* getGraphic() const override { return getImage(); }
  CXPoint GetStartingPosition() const { return startingPosition_; }
  void SetStartingPosition(int x, int y) { startingPosition_ = {x, y}; }
  void setAsButton(bool asButton, bool changeCursor);

  // Replaces the picture, whatever its name; it keeps its place on the screen. With `preload` it is read now,
  // else its pixels come later.
  void load(const CXString& name, bool preload) override;

  bool done(bool keep) override;
  std::unique_ptr<CMC_Object> copy() const override;

  void onCollision(CGraphicsObject* a, CGraphicsObject* b) override;
  void onCollisionFinished(CGraphicsObject* a, CGraphicsObject* b) override;

  bool onMouseMove(CXPoint point) override;
  bool onClick(int button, CXPoint point) override;
  bool onRelease(int button, CXPoint point) override;
  using CMouseListener::onClick;
  using CMouseListener::onRelease;

 protected:
  void unlink() override;
  CFileResolver* file() const override { return getImage(); }
  void show(bool on) override;

 private:
  bool isHit(CXPoint point) const;
  bool hearsMouse() const;
  Owned<CImage> makeImage(const CXString& name, bool preload) const;
  void giveBack();

  SharedResource<CImage> image_;
  CXPoint startingPosition_;
};

}  // namespace footlight
