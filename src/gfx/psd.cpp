#include "gfx/psd.h"

#include <algorithm>

#include "files/file.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/psd_format.h"
#include "gfx/targa.h"
#include "gfx/window.h"

namespace footlight {

namespace {

// The picture of a layer, of three bytes a pixel; without pixels where its rectangle is none.
Owned<CGraphicsObject> pictureOf(CWindow* window, PsdLayer& layer) {
  const CXSize size = isPictureSize(std::int64_t{layer.rect.right} - layer.rect.left,
                                    std::int64_t{layer.rect.bottom} - layer.rect.top)
                          ? layer.rect.Size()
                          : CXSize();
  Owned<CGraphicsObject> picture(new CGraphicsObject(window));
  picture->setSize(size);
  for (PsdChannel& channel : layer.channels) {
    const bool isKnown = channel.id >= -1 && channel.id <= 2 && !channel.plane.empty();
    if (isKnown)
      picture->setChannelPlane(static_cast<_channel>(channel.id), PixelBlock(std::move(channel.plane), 8));
  }
  picture->JoinChannels();
  for (const _channel channel : {_channel::red, _channel::green, _channel::blue})
    picture->setChannelPlane(channel, {});
  picture->placeAt(layer.rect.LeftTop());
  return picture;
}

}  // namespace

CPSD::CPSD(CWindow* window, const CXString& name) : CGraphicsObject(window) { CPSD::Load(name); }

void CPSD::Flush() {
  CGraphicsObject::Flush();
  layers_.clear();
  selectedLayer_ = 0;
}

int CPSD::Load(CFile* file) {
  CPSD::Flush();
  setSize({});
  const auto bytes = file->readRest(limits::kPictureFileBytes);
  PsdPicture picture;
  if (bytes) picture = readPsd(*bytes);
  const char* why = bytes ? picture.why : "the PSD file is too long";
  if (why != nullptr) diagnose::report(diagnose::Group::file, file->getFileName(), "", why);
  setErrorCode(why != nullptr ? CFile::kNotFound : 0);
  for (PsdLayer& layer : picture.layers) {
    Owned<CGraphicsObject> shown = pictureOf(window_, layer);
    layers_.push_back({layer.rect, CXString(layer.name), std::move(shown)});
  }
  show();
  return CGraphicsObject::Load(file);
}

int CPSD::Load(const CXString& name) {
  Flush();
  CFile file(window_, name, CFile::kReadBinary);
  setErrorCode(file.LastError());
  if (LastError() == 0) {
    fileName_ = name;
    Load(&file);
    Visible(true);
  }
  if (window_ != nullptr && window_->GetSurface() != nullptr) {
    for (const Layer& layer : layers_) convertFrom24(*layer.picture, pictureBpp(window_));
    show();
  }
  return CGraphicsObject::Load(name);
}

const CPSD::Layer* CPSD::at(int layer) const {
  return layer >= 0 && layer < GetLayerNo() ? &layers_[static_cast<std::size_t>(layer)] : nullptr;
}

CGraphicsObject* CPSD::GetCurrentLayer() const {
  const Layer* layer = at(selectedLayer_);
  return layer != nullptr ? layer->picture.get() : nullptr;
}

// What the object is drawn as.
void CPSD::show() {
  if (const CGraphicsObject* layer = GetCurrentLayer(); layer != nullptr) link(*layer);
}

void CPSD::SelectLayer(int layer) {
  if (at(layer) == nullptr) return;
  selectedLayer_ = layer;
  show();
}

void CPSD::SelectLayer(const CXString& name) {
  const auto found = std::ranges::find(layers_, name, &Layer::name);
  if (found != layers_.end()) SelectLayer(static_cast<int>(found - layers_.begin()));
}

CXString CPSD::GetLayerName(int layer) const {
  const Layer* found = at(layer < 0 ? selectedLayer_ : layer);
  return found != nullptr ? found->name : CXString();
}

CXRect CPSD::GetLayerRect(int /*layer*/) const {
  const Layer* layer = at(selectedLayer_);
  return layer != nullptr ? layer->rect : CXRect();
}

void CPSD::SetPosition(int px, int py) {
  CGraphicsObject::SetPosition(px, py);
  if (at(selectedLayer_) == nullptr) return;
  Layer& layer = layers_[static_cast<std::size_t>(selectedLayer_)];
  layer.picture->SetPosition(px, py);
  CXRect& rect = layer.rect;
  if (px >= 0) {
    rect.right = wrap_add(rect.left, px);
    rect.left = px;
  }
  if (py >= 0) {
    rect.bottom = wrap_add(rect.top, py);
    rect.top = py;
  }
}

}  // namespace footlight
