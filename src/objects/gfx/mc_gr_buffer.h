#pragma once

// GRBUFFER: stamps one picture onto another, and can take each stamp back. A stamp remembers which target it
// was made for: once that is another picture, or has another size or format, the stamp takes nothing back.

#include <array>
#include <memory>

#include "foundation/geometry.h"
#include "gfx/graphics_object.h"
#include "script/mc_object.h"

namespace footlight {

namespace type {
inline constexpr int kGrBuffer = 2026;
}

class CMC_GrBuffer : public CMC_Object {
 public:
  static constexpr int kNone = -1;

  CMC_GrBuffer(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kGrBuffer; }

  // Finds source and target by their names; the word BACKGROUND stands for the screen's background.
  void init() override;

  // A stamp of a part of the source, all of it for an empty rectangle, at a place of the target. Gives its
  // number; kNone when it does not lie inside the target or there is no room for it.
  int create(CXPoint place, CXRect part);
  // A number that is no stamp's does nothing.
  void draw(int number, bool invalidates);
  void undo(int number, bool invalidates);
  // Without the stamp; with `restores` what it covered comes back before.
  void flush(int number, bool restores);
  void flushAll(bool restores);
  // The first stamp at a place of the target.
  int findAt(CXPoint place) const;

 private:
  static constexpr int kSlots = 1000;

  struct Entry {
    CXPoint place;
    CXRect part;  // of the source
    WeakRef<CGraphicsObject> target;
    CXSize targetSize;
    int targetBpp;
    std::vector<std::byte> backup;  // the target's pixels under the stamp, row by row
  };

  void resolve();
  CGraphicsObject* target() const;
  Entry* at(int number) const;
  void invalidateIf(bool invalidates) const;

  CXString sourceName_;
  CXString targetName_;
  CWindow* window_;
  WeakRef<CGraphicsObject> source_;
  WeakRef<CGraphicsObject> target_;
  std::array<std::unique_ptr<Entry>, kSlots> entries_;
};

}  // namespace footlight
