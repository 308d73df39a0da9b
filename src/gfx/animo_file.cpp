// Animations from files and to files, and the store of their frames.

#include <algorithm>

#include "files/file.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/animo.h"
#include "gfx/jpeg.h"
#include "gfx/pixel_format.h"
#include "gfx/window.h"

namespace footlight {

int CAnimo::Load(const CXString& name) {
  CAnimo::Flush();
  if (window_ != nullptr) window_->toLog("Loading file " + name + "...", false);
  CFile file(window_, name, CFile::kReadBinary);
  setErrorCode(file.LastError());
  if (LastError() == 0) Load(&file);
  if (window_ != nullptr) window_->toLog(LastError() == 0 ? " - Succesfull.\n" : " - Failed.\n", false);
  if (LastError() != 0) return LastError();
  setFilename(name);
  CGraphicsObject::fileName_ = name;
  setLoaded(true);
  Visible(true);
  frameInEvent_ = 0;
  setCurrentEvent(getFirstEvent());
  SetEventFrame(currentEvent_, 0);
  return LastError();
}

int CAnimo::Load(CFile* file) {
  CAnimo::Flush();
  const char* why = "the animation file is too long";
  const auto bytes = file->readRest(limits::kAnimationFileBytes);
  std::optional<AnnFile> animation = bytes ? readAnn(*bytes, &why) : std::nullopt;
  setErrorCode(animation ? 0 : CFile::kNotFound);
  if (animation) {
    take(std::move(*animation));
  } else {
    diagnose::report(diagnose::Group::file, file->getFileName(), "", why);
  }
  return LastError();
}

void CAnimo::take(AnnFile file) {
  bpp_ = file.bpp;
  SetFlags(static_cast<int>(file.flags & 0xFF));
  animoFlags_ = (file.flags & 0xFFFF00) | (file.isLater ? kLaterFile : 0);
  opacity_ = file.opacity;
  fps_ = file.fps;
  randomFramesNumber_ = file.randomFrames;
  author_ = std::move(file.author);
  description_ = std::move(file.description);
  events_ = std::move(file.events);
  JpegAllowance allowance;
  for (AnnFrame& stored : file.frames) {
    auto& frame = *frames_->emplace_back(new CFrame(window_));
    PixelBlock alpha = stored.alpha.empty() ? PixelBlock() : PixelBlock(std::move(stored.alpha), 8);
    if (stored.compression == _compression::none) {
      const auto pixels = static_cast<std::size_t>(std::int64_t{stored.size.width} * stored.size.height);
      stored.colour.resize(pixels * static_cast<std::size_t>(get_pixel_size(file.bpp)));
      if (alpha) {
        std::vector<std::byte> plane(alpha.bytes().begin(), alpha.bytes().end());
        plane.resize(pixels);
        alpha = PixelBlock(std::move(plane), 8);
      }
    }
    frame.setPlanes(stored.size, file.bpp, stored.compression, PixelBlock(std::move(stored.colour), file.bpp),
                    std::move(alpha));
    frame.SetPosition(stored.position);
    frame.decompressWithin(allowance);
    if (file.isPak && stored.compression == _compression::none && window_ != nullptr &&
        window_->GetSurface() != nullptr)
      frame.Convert(window_->GetBpp());
    framePositions_.push_back(stored.position);
  }
  preloadSounds();
}

void CAnimo::Flush() {
  StopNoNotify();
  status_ = _astatus::stopped;
  setStatus(kStopped);
  ++course_;
  if (isVisible()) Invalidate();
  CGraphicsObject::Flush();
  setSize({});
  frames_ = std::make_shared<Frames>();
  lastRefreshed_ = nullptr;
  framePositions_.clear();
  events_.clear();
  sounds_.clear();
  streamedSound_.reset();
  currentSound_.reset();
  frameInEvent_ = 0;
  currentFrame_ = -1;
  currentEvent_ = lastEvent_ = 0;
  position_ = {};
  setLoaded(false);
}

void CAnimo::clearLastRefreshed() {
  if (CFrame* frame = lastRefreshed_.get()) frame->bringBackCompressed();
  lastRefreshed_ = nullptr;
  takePixels();
}

// Frames that nobody shares, before their pixels change.
void CAnimo::ownFrames() {
  clearLastRefreshed();
  if (frames_.use_count() == 1) return;
  auto own = std::make_shared<Frames>();
  for (const auto& frame : *frames_) {
    own->emplace_back(new CFrame(window_, *frame));
    own->back()->unshare();
  }
  frames_ = std::move(own);
}

int CAnimo::Save(CFile* file, _compression compression) {
  clearLastRefreshed();
  AnnFile out;
  out.bpp = getBpp();
  out.fps = fps_;
  out.flags = (animoFlags_ & 0xFFFF00) | (static_cast<std::uint32_t>(GetFlags()) & 0xFF);
  out.opacity = opacity_;
  out.randomFrames = randomFramesNumber_;
  out.author = author_;
  out.description = description_;
  out.events = events_;
  for (int i = 0; i < GetNOF(); ++i) {
    CFrame& frame = *GetFrame(i);
    frame.Compress(compression);
    const auto bytes = [](const PixelBlock& block) {
      return std::vector<std::byte>(block.bytes().begin(), block.bytes().end());
    };
    out.frames.push_back({frame.Size(), framePlace(i), frame.getCompression(), bytes(frame.pixels()),
                          bytes(frame.AlphaChannel())});
  }
  takePixels();
  const std::vector<std::byte> bytes = writeAnn(out);
  const int count = static_cast<int>(bytes.size());
  setErrorCode(file->Write(bytes.data(), count) == count ? 0 : CFile::kNotFound);
  return LastError();
}

}  // namespace footlight
