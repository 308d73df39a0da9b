#pragma once

// A picture that others are drawn on, lowest priority first. With a second picture beneath them, the buffer,
// strokes stay: `draw` paints onto it, `erase` rubs out, `capture` bakes everything into it. The buffer is
// one of what the canvas draws, at priority -1.
//
// A canvas holds its objects weakly; their places are in its own coordinates. It is drawn anew whenever it is
// drawn itself, inside its clip.

#include "gfx/composite.h"
#include "gfx/validation_quene.h"

namespace footlight {

class CCanvas : public CGraphicsObject {
 public:
  // From so many invalidations between two drawings on, all of the canvas is drawn anew.
  static constexpr int maxRegions = 10;

  // An alpha plane lets what lies beneath shine through where nothing is drawn. No pixels for a size over
  // the limits.
  CCanvas(CWindow* window, CXSize size, int bpp, bool alpha, bool buffered);
  ~CCanvas() override;

  // An object that would draw the canvas itself is refused; one that it has already stays as it is.
  virtual void add(CGraphicsObject* object, int priority);
  virtual void remove(CGraphicsObject* object);
  // All but the buffer.
  virtual void removeAll();
  // To black, and transparent, inside the clip.
  virtual void clear(bool alsoBuffer);
  // These three do nothing without a buffer. `erase` takes the object's alpha off the alpha planes of buffer
  // and canvas, all of it where the object has none; a place below 0 counts as 0. `draw` paints the object
  // whatever it shows otherwise. `capture` leaves nothing but the buffer.
  virtual void capture();
  virtual void erase(CGraphicsObject* object, int x, int y);
  virtual void draw(CGraphicsObject* object, int x, int y);

  CGraphicsObject* buffer() const { return buffer_.get(); }
  const CValidationQuene& contents() const { return objects_; }

  void compose() override;
  void Redraw() override;
  std::vector<CGraphicsObject*> drawnParts() const override;
  void onInvalidate(CGraphicsObject* object, CXRect* rect) override;
  void onDestroy(CGraphicsObject* object) override;

 private:
  static void clearArea(CGraphicsObject& picture, const CXRect& area);
  void drawPart(CGraphicsObject& object);
  void showAgain(CXRect rect);
  void listBuffer();

  CValidationQuene objects_;
  Owned<CGraphicsObject> buffer_;
  int regionCount_ = 0;  // invalidations since the last drawing
};

}  // namespace footlight
