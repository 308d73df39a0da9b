#pragma once

// The layers of a PSD file, each a picture of its own. One of them is selected: the object shows that one,
// shares its pixels and has its size. An unknown name or a number without a layer changes nothing.

#include <vector>

#include "gfx/graphics_object.h"

namespace footlight {

class CPSD : public CGraphicsObject {
 public:
  explicit CPSD(CWindow* window) : CGraphicsObject(window) {}
  // Loads at once; the result is the error code.
  CPSD(CWindow* window, const CXString& name);

  // A file that ends early keeps the layers that were whole, and is an error.
  int Load(CFile* file) override;
  // The same, in the display's format.
  int Load(const CXString& name) override;
  void Flush() override;

  void SelectLayer(int layer);
  // The first of that name.
  void SelectLayer(const CXString& name);
  int GetSelLayer() const { return selectedLayer_; }
  CGraphicsObject* GetCurrentLayer() const;  // null without layers
  int GetLayerNo() const { return static_cast<int>(layers_.size()); }
  // Of the selected layer for a number below 0.
  CXString GetLayerName(int layer) const;
  // Of the selected layer, whatever the number.
  CXRect GetLayerRect(int layer) const;
  // Of the selected layer too. A side that is below 0 moves nothing of its rectangle.
  void SetPosition(int px, int py) override;
  using CGraphicsObject::SetPosition;

 private:
  struct Layer {
    CXRect rect;
    CXString name;
    Owned<CGraphicsObject> picture;
  };

  const Layer* at(int layer) const;
  void show();

  std::vector<Layer> layers_;
  int selectedLayer_ = 0;
};

}  // namespace footlight
