#pragma once

// CANVAS: the script's face of a picture that others are drawn on. It stands on the screen from its start to
// its end. TEXTs and IMAGEs that were put on it belong to it: a capture can end them.

#include "gfx/off_screen_canvas.h"
#include "objects/gfx/mc_surface.h"

namespace footlight {

namespace type {
inline constexpr int kCanvas = 2020;
}

class CMC_Canvas : public CMC_Surface {
 public:
  CMC_Canvas(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Canvas() override;
  static bool isTypeOf(int type) { return type == type::kCanvas; }

  // Null only once the object has ended.
  CCanvas* getCanvas() const { return canvas_.get(); }
  CGraphicsObject* getGraphic() const override { return getCanvas(); }

  void add(CGraphicsObject* graphic, CMC_Object* object, int priority);
  // Bakes all into the second picture; with `endsObjects` its TEXTs and IMAGEs go.
  void capture(bool endsObjects);

 protected:
  void unlink() override;

 private:
  Owned<CCanvas> canvas_;
  std::vector<WeakRef<CMC_Object>> belongings_;
};

}  // namespace footlight
