#include "sound/streamed_wav.h"

#include <algorithm>

#include "platform/platform.h"

namespace footlight {

CStreamedWAV::CStreamedWAV(CWindow* window, const CXString& fileName)
    : file_(window, fileName, CFile::kReadBinary) {
  setErrorCode(file_.LastError());
  if (LastError() == 0) open();
}

bool CStreamedWAV::open() {
  platform::SoundDevice* device = platform::current().sound();
  if (device == nullptr || !wave_file::readHeader(file_)) return false;
  const int formatBytes = wave_file::findChunk(file_, "fmt ");
  if (formatBytes < 0) return false;
  format_ = wave_file::readFormat(file_, formatBytes);
  const platform::SoundFormat format = format_.soundFormat();
  dataSize_ = wave_file::findChunk(file_, "data");
  if (format_.wFormatTag != wave_file::kPcm || !format.isPlayable() || dataSize_ < 0) return false;
  dataStart_ = file_.Tell();
  if (dataSize_ == 0) dataSize_ = std::max(0, file_.Length() - dataStart_);  // whoever wrote it did not know
  const int block = format.blockBytes();
  buffer_ = device->createBuffer(
      format, static_cast<int>(std::int64_t{format.rate} * kRingMilliseconds / 1000) * block);
  return buffer_ != nullptr;
}

void CStreamedWAV::StartRead() { setPosition(0); }

void CStreamedWAV::setPosition(int offset) {
  readCount_ = std::clamp(offset, 0, dataSize_);
  file_.Seek(dataStart_ + readCount_, 0);
}

std::size_t CStreamedWAV::Read(std::span<std::byte> target) {
  const int wanted = std::min(static_cast<int>(target.size()), dataSize_ - readCount_);
  if (wanted <= 0) return 0;
  const int read = std::max(0, file_.Read(target.data(), wanted));
  readCount_ += read;
  return static_cast<std::size_t>(read);
}

}  // namespace footlight
