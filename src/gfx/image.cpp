#include "gfx/image.h"

#include <algorithm>
#include <array>
#include <utility>

#include "files/file.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/img_format.h"
#include "gfx/jpeg.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"

namespace footlight {

CImage::CImage(CWindow* window, const CXString& name) : CGraphicsObject(window) { CImage::Load(name, true); }

std::unique_ptr<CXObject> CImage::clone() const { return std::make_unique<CImage>(window_, *this); }

int CImage::Load(const CXString& name, bool convert) {
  Invalidate();
  flush();
  setErrorCode(0);
  const CXString before = std::exchange(CGraphicsObject::fileName_, name);  // reports name the file
  readByName(name);
  if (LastError() != 0) {
    CGraphicsObject::fileName_ = before;
    Visible(false);
    return LastError();
  }
  Visible(true);
  setFilename(name);
  setLoaded(true);
  Invalidate();
  if (convert) CGraphicsObject::Load(name);
  return LastError();
}

void CImage::readByName(const CXString& name) {
  if (!name.Lower().endsWith(".img")) {
    load(name);
    return;
  }
  CFile file(window_, name, CFile::kReadBinary);
  setErrorCode(file.LastError());
  if (LastError() != 0 || Load(&file) != 0) return;
  DeCompress();
  unpack();
}

int CImage::load(const CXString& name) {
  const CXString path = CFile::getPath(window_, name);
  if (path.IsEmpty()) {
    setErrorCode(CFile::kNotFound);
    return LastError();
  }
  JPEG picture(window_, path);
  const int bpp = window_ != nullptr && window_->GetBpp() == 15 ? 15 : 16;
  const CXSize size(picture.getWidth(), picture.getHeight());
  std::vector<std::byte> pixels = picture.decompress(bpp);
  setErrorCode(picture.LastError());
  if (LastError() != 0) {
    diagnose::report(diagnose::Group::file, name, "", picture.why());
    return LastError();
  }
  setSize(size);
  bpp_ = bpp;
  compression_ = _compression::none;
  data_ = PixelBlock(std::move(pixels), bpp);
  alpha_.reset();
  return 0;
}

int CImage::Load(CFile* file) {
  std::array<std::byte, 4> magic{};
  const int count = file->Read(magic.data(), static_cast<int>(magic.size()));
  file->Seek(-count, 1);
  if (isOlderImg(magic)) return Load3(file);
  if (read(file) == 0) DeCompress();
  return LastError();
}

int CImage::Load3(CFile* file) { return read(file); }

int CImage::read(CFile* file) {
  const char* why = "the picture file is too long";
  const auto bytes = file->readRest(limits::kPictureFileBytes);
  std::optional<ImgPicture> picture = bytes ? readImg(*bytes, &why) : std::nullopt;
  Flush();
  if (!picture) {
    diagnose::report(diagnose::Group::file, file->getFileName(), "", why);
    setErrorCode(CFile::kNotFound);
    return LastError();
  }
  setSize(picture->size);
  bpp_ = picture->bpp;
  compression_ = picture->compression;
  placeAt(picture->position);
  data_ = PixelBlock(std::move(picture->colour), picture->bpp);
  if (picture->hasAlpha) alpha_ = PixelBlock(std::move(picture->alpha), 8);
  setErrorCode(0);
  return 0;
}

void CImage::flush() {  // NOLINT(bugprone-virtual-near-miss)
  Flush();
  setLoaded(false);
}

void CImage::show() {
  if (!isLoaded() && getFileName().IsString()) Load(getFileName(), true);
  Visible(true);
}

void CImage::hide() {
  if (releaseAfterUse()) flush();
  Visible(false);
}

void CImage::retire() {
  Visible(false);
  if (CRefreshScreen* owner = getRefreshOwner(); owner != nullptr) *owner >> this;
  flush();
}

}  // namespace footlight
