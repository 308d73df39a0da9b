#pragma once

// What a RIFF WAVE file says of its samples: chunks "fmt " and "data", found by walking forward from the
// start, in this order.

#include <cstdint>
#include <string_view>

#include "platform/sound_device.h"

namespace footlight {

class CFile;

// The first 18 bytes of a "fmt " chunk.
struct tWAVEFORMATEX {
  std::uint16_t wFormatTag = 0;
  std::uint16_t nChannels = 0;
  std::uint32_t nSamplesPerSec = 0;
  std::uint32_t nAvgBytesPerSec = 0;
  std::uint16_t nBlockAlign = 0;
  std::uint16_t wBitsPerSample = 0;
  std::uint16_t cbSize = 0;

  // What a device can play; bytes a second and the block are computed anew from it.
  platform::SoundFormat soundFormat() const;
};

namespace wave_file {

constexpr int kHeaderBytes = 12;
constexpr std::uint16_t kPcm = 1;

// Reads the 12 bytes at the file's start. False when they are not of a wave file.
bool readHeader(CFile& file);
// Walks on to the chunk and gives its size, cut to the bytes that are left; -1 when there is none.
int findChunk(CFile& file, std::string_view id);
// Reads the "fmt " chunk that the file stands at, and goes on behind it. What it lacks is 0.
tWAVEFORMATEX readFormat(CFile& file, int size);

}  // namespace wave_file
}  // namespace footlight
