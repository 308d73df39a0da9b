#pragma once

// PATTERN: the script's face of a picture of tiles.

#include "gfx/pattern.h"
#include "objects/gfx/mc_surface.h"

namespace footlight {

namespace type {
inline constexpr int kPattern = 2021;
}

class CMC_Pattern : public CMC_Surface {
 public:
  CMC_Pattern(CMC_ObjectsContainer* container, const CMElement* element);
  ~CMC_Pattern() override;
  static bool isTypeOf(int type) { return type == type::kPattern; }

  // Null only once the object has ended.
  CPattern* getPattern() const { return pattern_.get(); }
  CGraphicsObject* getGraphic() const override { return getPattern(); }

 protected:
  void unlink() override;

 private:
  Owned<CPattern> pattern_;
};

}  // namespace footlight
