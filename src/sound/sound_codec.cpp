#include "sound/sound_codec.h"

#include <algorithm>
#include <array>

#include "files/file.h"
#include "foundation/byte_writer.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "platform/platform.h"

namespace footlight {

namespace {

std::array<std::unique_ptr<CSoundCodec>, 3>& codecs() {
  static std::array<std::unique_ptr<CSoundCodec>, 3> table;
  return table;
}

}  // namespace

void CSoundCodec::init_codecs() {
  codecs()[1] = std::make_unique<CSoundCodec_PCM>();
  codecs()[2] = std::make_unique<CSoundCodec_ADPCM>();
}

void CSoundCodec::done_codecs() { codecs() = {}; }

CSoundCodec* CSoundCodec::getCodec(int tag) {
  const auto index = static_cast<std::size_t>(tag);
  return tag >= 0 && index < codecs().size() ? codecs()[index].get() : nullptr;
}

void CSoundCodec_PCM::decode(CFile* file) {
  flush();
  if (!wave_file::readHeader(*file)) return;
  const int formatBytes = wave_file::findChunk(*file, "fmt ");
  if (formatBytes < 0) return;
  format_ = wave_file::readFormat(*file, formatBytes);
  const int size = wave_file::findChunk(*file, "data");
  if (size <= 0 || size > limits::kSoundBytes || !memory::hasRoom(size)) return;
  buffer_.resize(static_cast<std::size_t>(size));
  buffer_.resize(static_cast<std::size_t>(std::max(0, file->Read(buffer_.data(), size))));
}

void CSoundCodec_ADPCM::decode(CFile* file) {
  flush();
  SF_INFO info{};
  const std::string path = platform::current().files().toMachinePath(file->getFileName());
  SNDFILE* sound = sf_open(path.c_str(), SFM_READ, &info);
  if (sound == nullptr) return;
  constexpr int kSampleBytes = 2;
  const sf_count_t most = limits::kSoundBytes / (kSampleBytes * std::max(1, info.channels));
  format_ = {.wFormatTag = wave_file::kPcm,
             .nChannels = static_cast<std::uint16_t>(std::clamp(info.channels, 0, 0xFFFF)),
             .nSamplesPerSec = static_cast<std::uint32_t>(std::max(0, info.samplerate)),
             .wBitsPerSample = 8 * kSampleBytes};
  format_.nBlockAlign = static_cast<std::uint16_t>(kSampleBytes * format_.nChannels);
  format_.nAvgBytesPerSec = format_.nBlockAlign * format_.nSamplesPerSec;
  const sf_count_t needed = std::clamp<sf_count_t>(info.frames, 0, most) * info.channels * (2 * kSampleBytes);
  if (format_.soundFormat().isPlayable() && info.frames > 0 && info.frames <= most &&
      memory::hasRoom(needed)) {
    std::vector<short> samples(static_cast<std::size_t>(info.frames * info.channels));
    const sf_count_t read = std::max<sf_count_t>(0, sf_readf_short(sound, samples.data(), info.frames));
    samples.resize(static_cast<std::size_t>(read * info.channels));
    ByteWriter bytes;
    bytes.reserve(samples.size() * kSampleBytes);
    for (const short sample : samples) bytes.i16(sample);
    buffer_ = bytes.take();
  }
  sf_close(sound);
}

}  // namespace footlight
