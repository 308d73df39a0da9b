#pragma once

// Base of everything that holds pixels or draws them: a place, a size, pixels in one of the formats of
// pixel_format.h, an alpha plane beside them, an opacity.
//
// Pixels and alpha lie in blocks that objects may share (pixel_block.h). An object with `compression` other
// than none holds packed bytes; whatever needs plain pixels unpacks them first.
//
// An object that changes says so with `Invalidate`: its place goes to the refresh screen that lists it, if
// any, and to its observers. It leaves the screen and its observers when it ends. Nothing here keeps a plain
// pointer to another object: where it is drawn (`destiny`), who lists it and who observes it are held weakly.
//
// Positions are pixels of the destination. Clipping rectangles are in the object's own coordinates.

#include <array>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "foundation/geometry.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"
#include "gfx/color.h"
#include "gfx/invalidate_observer.h"
#include "gfx/packed_planes.h"
#include "gfx/pixel_block.h"

namespace footlight {

class CFile;
class CRefreshScreen;
class CValidationQuene;
class CWindow;
class JpegAllowance;

enum class _channel { alpha = -1, red = 0, green = 1, blue = 2 };

// A piece of a row that a flood fill painted, in pixels of the picture.
struct _floodfill {
  std::int16_t x;
  std::int16_t y;
  std::int16_t length;
};

class CGraphicsObject : public CXObject, public CInvalidateObserver {
 public:
  // No pixels. The window may be null; then nothing is ever shown.
  explicit CGraphicsObject(CWindow* window);
  // Black pixels and no alpha plane; no pixels when the size is over the limits.
  CGraphicsObject(CWindow* window, CXSize size, int bpp);
  // Takes these pixels.
  CGraphicsObject(CWindow* window, CXSize size, PixelBlock pixels);
  // Shares the source's pixels and copies its place, opacity, clipping and packing. It is shown, has no
  // anchor and counts its own flips; it stands on no screen and has no observers.
  CGraphicsObject(CWindow* window, const CGraphicsObject& source);
  ~CGraphicsObject() override;
  CGraphicsObject(const CGraphicsObject&) = delete;
  CGraphicsObject& operator=(const CGraphicsObject&) = delete;

  // Shares the pixels.
  std::unique_ptr<CXObject> clone() const override;

  // From packed to plain and back, keeping the packed form at hand. See graphics_pack.cpp.
  virtual void pack(bool freePlain);
  virtual void unpack();
  virtual int getGfxType() const { return 0; }  // 2 for animations
  virtual void setMonitorCollisions(bool monitor) { monitorCollisions_ = monitor; }
  virtual bool getMonitorCollisionsFlag() const { return monitorCollisions_; }
  virtual void SetOpacity(std::uint8_t opacity);  // redraws the object
  // From block packing and JPEG to plain or, out of a block around it, run-length bytes. JPEG data that
  // cannot be read leave the object empty with the error code 2000.
  virtual void DeCompress();
  // The same as one of several pictures of a file.
  void decompressWithin(JpegAllowance& allowance);
  virtual void DeCompressRLE2();
  virtual void bringBackCompressed();
  // The pixels as they stand now; empty when there are none. Valid until the next call that changes them.
  virtual std::span<std::byte> GetDataPtr() { return data_.bytes(); }
  // Is the point, in pixels of the screen, on the object? Transparent pixels are not.
  virtual bool testHit(CXPoint point);
  virtual CXPoint getCenterPoint() const { return {width_ / 2, height_ / 2}; }  // in object coordinates

  virtual void setPosition(int px, int py) { SetPosition(px, py); }
  virtual void setPosition(CXPoint point) { setPosition(point.x, point.y); }
  virtual void SetPosition(CXPoint point) { SetPosition(point.x, point.y); }
  // Puts the anchor there. Redraws nothing by itself.
  virtual void SetPosition(int px, int py);
  virtual void Move(CXPoint distance) { Move(distance.x, distance.y); }
  // Redraws where the object was and where it is.
  virtual void Move(int dx, int dy);
  virtual void setAnchor(int ax, int ay) { anchor_ = {ax, ay}; }
  virtual void setAnchor(CXPoint anchor) { anchor_ = anchor; }
  virtual CXPoint getAnchor() const { return anchor_; }
  // Shows or hides, and redraws.
  virtual void Visible(bool visible);
  // Frees all pixels; size and place stay.
  virtual void Flush();

  virtual int GetPixelSize() const;
  // One plane's value at a place of the object; 0 outside.
  virtual int GetPixel(_channel channel, CXPoint point);
  virtual CColor GetPixel(CXPoint point) { return GetPixel(point.x, point.y); }
  virtual CColor GetPixel(int px, int py);              // black outside and while packed
  void SetPixel(int px, int py, const CColor& colour);  // 15 and 16 bits per pixel

  // Turns upside down, left to right, and back; pixels of 2 and 3 bytes. See graphics_edit.cpp.
  virtual void FlipH();
  virtual void FlipV();
  virtual void resetFlips();
  virtual void Fill(CColor* colour);               // 15, 16 and 32 bits per pixel
  virtual void Fill(CXRect rect, CColor* colour);  // 15 and 16; a rectangle that is not inside is ignored
  // To the mean of the three channels; 15 and 16 bits per pixel. The first pixel keeps its colour.
  void ToGrayScale();
  // Each channel to its opposite; 15 bits per pixel. The first pixel keeps its colour.
  void InvertColors();

  // Effects on plain 2-byte pixels and the alpha plane; see graphics_effects.cpp. Each gives the object new
  // planes, so that others who share the old ones keep theirs.
  void crop(CXRect rect);  // to the part that lies inside; nothing when there is none
  // To trunc(size * factor), each pixel from the nearest one; nothing for a size over the limits.
  void Scale(double sx, double sy);
  void Scale2x();  // to half the size, despite its name
  // `map` holds a distance for each pixel, row by row: where its new colour comes from. What comes
  // from outside is black. With `alphaToo` the alpha plane moves likewise, and keeps its value where
  // that is outside.
  void displacementFilter(std::span<const CXPoint> map, bool alphaToo);
  // Paints a frame of that many pixels inward, opaque; only with an alpha plane.
  void outline(std::uint16_t colour, int thickness);

  // Fills from a point all that is connected, has a mask value other than 0 and another colour; gives the
  // bounding box. The mask has the layout of the pixels. The spans stay with the object.
  CXRect PrepareFloodFill(CXPoint point, const CColor& colour, std::span<const std::uint16_t> mask);
  // Paints the spans of the last fill anew.
  void FloodFill(const CColor& colour);
  int getFFEnterances() const { return static_cast<int>(floodSpans_.size()); }
  std::span<const _floodfill> getFFArray() const { return floodSpans_; }

  // Cuts 3-byte pixels into three planes, the first byte of each being blue, and back; a missing plane gives
  // 0.
  void Split();
  void JoinChannels();
  // 4 bytes a pixel, the last one of the alpha plane; and the cut back of so many pixels.
  std::vector<std::byte> Join2Channels() const;
  void SplitOn2(std::span<const std::byte> joined, int pixels);
  const PixelBlock& channelPlane(_channel channel) const;
  void setChannelPlane(_channel channel, PixelBlock plane);

  // The picture as 0x00RRGGBB, row by row without padding; low bits that the format lacks are zero.
  std::vector<std::uint32_t> toRgb() const;

  // Sub-objects are drawn onto this object's picture at each `Redraw`, lowest priority first, over the
  // picture as it was when the first one came. See graphics_children.cpp.
  void addObject(CGraphicsObject* object, int priority);
  void removeObject(const CGraphicsObject* object);
  void removeAllObjects();

  // Puts the other's alpha plane into this one's at a place of this object. The first form remembers what it
  // covers and gives that back at the next call; the second only changes pixels that are not transparent, and
  // with `reset` makes all of this plane opaque first.
  void mergeAlpha(CXPoint point, CGraphicsObject* other);
  void mergeAlpha2(CXPoint point, CGraphicsObject* other, bool reset);
  // Gives back what the other covers.
  void restoreAlpha(CGraphicsObject* other);

  // Draws the object onto another one; the one place that picks a blitter.
  virtual void redraw(CGraphicsObject* destination);
  // Draws the object onto its destiny.
  virtual void Redraw();
  // Brings the pixels up to date with what else is drawn onto them.
  virtual void compose() { drawChildren(); }
  // The others that this one draws whenever it is drawn; see composite.h.
  virtual std::vector<CGraphicsObject*> drawnParts() const { return {}; }

  // Each gives the object's error code. The base converts what a subclass loaded to the display's format.
  virtual int Load(const CXString& name);
  virtual int Load(CFile* file);
  // Writes the picture file form with this number in its header; the bytes go out as they stand, cut to the
  // clipping rectangle. Gives the error code, 2000 when the file cannot be written.
  virtual int Save(const CXString& name, _compression compression);
  virtual int Save(CFile* file, _compression compression);

  virtual int Width() const { return width_; }
  virtual int Height() const { return height_; }
  virtual CXSize Size() const { return {width_, height_}; }
  virtual void setSize(CXSize size);
  virtual CXPoint getPosition() const { return GetPosition(); }
  virtual CXPoint GetPosition() const { return position_; }
  virtual CXRect getRect() const {
    return {position_.x, position_.y, wrap_add(position_.x, width_), wrap_add(position_.y, height_)};
  }
  // Where the object stands on the screen, cut to the clipping rectangle; the first also to the destiny.
  virtual CXRect GetBoundingBox() const;
  virtual CXRect GetAbsoluteBoundingBox() const;
  // Does the other rectangle cover at least so many hundredths of this object's bounding box?
  virtual bool isNear(CXRect rect, int percent) const;
  virtual bool isNear(CGraphicsObject* object, int percent) const;
  virtual CXPoint ClientCoords(CXPoint point) const { return point - GetPosition(); }
  virtual void SetClippingRect(CXRect rect) { clippingRect_ = rect; }

  // The object's place, or the part of it in a rectangle of the screen, must be drawn anew.
  virtual void Invalidate(CXRect* rect);
  virtual void Invalidate();
  // `T` is the observer and the engine object whose end ends the observing. Nobody observes twice.
  template <class T>
  void addInvalidateObserver(T* observer) {
    addObserver(observer, observer);
  }
  virtual void removeInvalidateObserver(const CInvalidateObserver* observer);
  virtual void notifyInvalidate(CXRect* rect);
  // What is really on view: the object itself, or an animation's current frame.
  virtual CGraphicsObject* getDrawn() { return this; }

  void onInvalidate(CGraphicsObject* object, CXRect* rect) override;
  void onDestroy(CGraphicsObject* object) override;

  void Show() { Visible(true); }
  void Hide() { Visible(false); }
  bool isVisible() const { return visible_; }
  // Was the object invalidated since the last call?
  bool isInvalidated() { return std::exchange(invalidated_, false); }
  void setInvalidated(bool invalidated) { invalidated_ = invalidated; }
  // The point in pixels of the screen, within the bounding box; with `useAlpha` on a pixel that
  // is not transparent.
  bool isAt(CXPoint point, bool useAlpha);
  bool isInside(int px, int py, bool useAlpha);
  // Centres the object.
  void FitRect(const CXRect& rect);
  void FitObject(const CGraphicsObject& object) { FitRect(object.GetBoundingBox()); }
  // The plain place, without anchor and reports.
  void placeAt(CXPoint position) { position_ = position; }
  // What `setPosition` changes, without anchor and reports, to draw the object elsewhere for a moment. Gives
  // what was there.
  virtual CXPoint exchangePlace(CXPoint place) { return std::exchange(position_, place); }
  CXPoint toLocalAxis(CXPoint point) const { return point - position_; }
  CXRect toLocalAxis(CXRect rect) const { return rect - position_; }

  // New black pixels and an alpha plane, all transparent.
  void alloc(CXSize size, int bpp);
  // New black pixels of the present size and format.
  void Alloc();
  // To another format, in place; see blit::convert_bpp. Objects that share the pixels change with this one.
  void Convert(int toBpp);
  void Compress(_compression method);

  CWindow* getWindow() const { return window_; }
  CXString getObjectFileName() const { return fileName_; }
  void SetFlags(int flags) { flags_ = flags; }
  int GetFlags() const { return flags_; }
  void setAutoClip(bool autoClip) { autoClip_ = autoClip; }
  CXRect GetClippingRect() const { return clippingRect_; }
  void SetViewport(const CXRect& rect) { viewport_ = rect; }
  int getBpp() const { return data_ ? data_.bpp() : bpp_; }
  int getPitch() const { return pitch_; }
  std::uint8_t GetOpacity() const { return opacity_; }
  void AddOpacity(int delta);
  _compression getCompression() const { return compression_; }
  void setAlphaAsMask(bool mask) { alphaAsMask_ = mask; }
  // The planes, for those who share them. Null blocks stand for no pixels and no alpha plane.
  const PixelBlock& pixels() const { return data_; }
  void setPixels(PixelBlock pixels) { data_ = std::move(pixels); }
  const PixelBlock& AlphaChannel() const { return alpha_; }
  void AlphaChannel(PixelBlock alpha) { alpha_ = std::move(alpha); }
  bool hasAlpha() const { return static_cast<bool>(alpha_); }
  // Takes another object's place, size, pixels and alpha plane; both share them from then on.
  void link(const CGraphicsObject& other);

  void SetDestiny(CGraphicsObject* destiny) { destiny_ = destiny; }
  CGraphicsObject* getDestiny() const { return destiny_.get(); }
  // Grows whenever a script object takes a graphic as its own or gives one up, so that who noted which object
  // shows which graphic knows when to look again.
  static std::uint64_t usersAge() { return usersAge_; }
  static void noteUsers() { ++usersAge_; }

  void setRefreshOwner(CRefreshScreen* owner);
  CRefreshScreen* getRefreshOwner() const;

 protected:
  // The pixels for a shallow copy: the shared block, or a copy of memory that cannot be shared.
  virtual PixelBlock shareablePixels() const { return data_; }
  // Bytes of the alpha plane if it covers the picture, else none.
  std::span<std::byte> plainAlpha() const;
  // Tells the collision inspector, if the object is under watch.
  void reportMove();
  bool hasPlainPixels() const { return data_ && compression_ == _compression::none; }
  std::size_t pixelCount() const {
    return static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
  }

  CXString fileName_;
  CWindow* window_;
  CXPoint position_;
  int width_ = 0;  // never below 0
  int height_ = 0;
  int pitch_ = 0;
  int bpp_ = 0;  // while there are no pixels
  PixelBlock data_;
  PixelBlock alpha_;
  _compression compression_ = _compression::none;
  CXRect clippingRect_;
  CXPoint anchor_;
  std::uint8_t opacity_ = 255;
  bool visible_ = true;
  bool invalidated_ = false;

 private:
  static inline std::uint64_t usersAge_ = 0;

  struct Observer {
    CInvalidateObserver* observer;
    WeakRef<CXObject> object;
  };

  void addObserver(CInvalidateObserver* observer, CXObject* object);
  template <class Call>
  void tellObservers(Call call);
  bool clipTo(CXSize destination);
  bool canEdit() const;
  bool canFlip() const;
  bool decodeJpeg(JpegAllowance& allowance);
  bool unpackToEdit();
  void replacePlanes(CXSize size, PixelBlock pixels, PixelBlock alpha);
  template <class From>
  void remap(CXSize size, From from);
  bool isOpen(int px, int py, std::uint16_t pixel, std::span<const std::uint16_t> mask) const;
  _floodfill paintSpan(int px, int py, std::uint16_t pixel, std::span<const std::uint16_t> mask);
  void dropPacked();
  void drawChildren();
  void dropChildrenIfNone();

  WeakRef<CXObject> refreshOwner_;  // a CRefreshScreen
  WeakRef<CGraphicsObject> destiny_;
  std::vector<Observer> observers_;
  int flags_ = 0;
  bool autoClip_ = true;
  CXRect viewport_;
  bool flippedH_ = false;
  bool flippedV_ = false;
  bool alphaAsMask_ = false;
  bool monitorCollisions_ = false;

  bool unpacked_ = false;
  PixelBlock packedData_;
  PixelBlock packedAlpha_;

  std::array<PixelBlock, 3> channels_;  // red, green, blue; not in use during play
  std::vector<_floodfill> floodSpans_;  // of the last fill

  std::unique_ptr<CValidationQuene> children_;
  PixelBlock backup_;  // the picture without sub-objects
  CXRect mergeRect_;   // what this object covers of another's alpha plane, in the other's coordinates
  std::vector<std::byte> mergeSaved_;  // and the bytes that were there, row after row
};

}  // namespace footlight
