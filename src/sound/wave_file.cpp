#include "sound/wave_file.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "files/file.h"
#include "foundation/byte_reader.h"

namespace footlight {

platform::SoundFormat tWAVEFORMATEX::soundFormat() const {
  const auto rate = static_cast<int>(std::min<std::uint32_t>(nSamplesPerSec, 1 << 30));
  return {.channels = nChannels, .rate = rate, .bits = wBitsPerSample};
}

namespace wave_file {

bool readHeader(CFile& file) {
  char bytes[kHeaderBytes] = {};
  file.Seek(0, 0);
  return file.Read(bytes, kHeaderBytes) == kHeaderBytes && std::memcmp(bytes, "RIFF", 4) == 0 &&
         std::memcmp(bytes + 8, "WAVE", 4) == 0;
}

int findChunk(CFile& file, std::string_view id) {
  std::array<std::byte, 8> head{};
  while (file.Read(head.data(), static_cast<int>(head.size())) == static_cast<int>(head.size())) {
    ByteReader reader{std::span<const std::byte>(head).subspan(4)};
    const std::uint32_t size = reader.u32();
    const auto left = static_cast<std::uint32_t>(std::max(0, file.Length() - file.Tell()));
    if (std::memcmp(head.data(), id.data(), id.size()) == 0) return static_cast<int>(std::min(size, left));
    if (size > left || file.Seek(static_cast<int>(size), 1) != 0) return -1;
  }
  return -1;
}

tWAVEFORMATEX readFormat(CFile& file, int size) {
  std::array<std::byte, 18> bytes{};
  const int start = file.Tell();
  file.Read(bytes.data(), std::min<int>(size, bytes.size()));
  file.Seek(start + size, 0);
  ByteReader reader(bytes);
  tWAVEFORMATEX format;
  format.wFormatTag = reader.u16();
  format.nChannels = reader.u16();
  format.nSamplesPerSec = reader.u32();
  format.nAvgBytesPerSec = reader.u32();
  format.nBlockAlign = reader.u16();
  format.wBitsPerSample = reader.u16();
  format.cbSize = reader.u16();
  return format;
}

}  // namespace wave_file
}  // namespace footlight
