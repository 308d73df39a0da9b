#pragma once

// The ANN animation file. Little-endian, in two layouts that are read: "NVP", "NV+" and "NVI", of which the
// first is written, and "PAK". Older ones are refused.
//
// A file is read into plain records. Counts are held against the bytes that are left, frame numbers outside
// of the store become 0, and a loop outside of its event is cut to it. Missing pixel bytes are zero.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "foundation/geometry.h"
#include "foundation/xstring.h"
#include "gfx/packed_planes.h"

namespace footlight {

// One position of an event.
struct _anmFrameInfo3 {
  CXString name;
  CXString text;
  CXPoint offset;
  CXString soundName;
  std::uint8_t opacity = 255;  // 255: not set
};

// A named sequence of frames.
struct _annEventInfo3 {
  static constexpr std::uint32_t kHidesAtStop = 0x100;
  static constexpr std::uint32_t kPingPong = 0x20000;
  static constexpr std::uint32_t kUninterruptible = 0x40000;
  static constexpr std::uint32_t kSoundSurvives = 0x80000;
  static constexpr std::uint32_t kLoopsWithSound = 0x100000;

  CXString name;
  std::vector<int> frames;            // numbers in the store
  std::vector<_anmFrameInfo3> infos;  // one a position, or none at all
  int loopFrom = 0;
  int loopTo = 0;     // 0: no loop
  int loopCount = 0;  // 0: for ever
  int loopCounter = 0;
  int fps = 15;
  std::uint32_t flags = 0;
  std::uint8_t opacity = 255;

  int frameCount() const { return static_cast<int>(frames.size()); }
  // Null for a position without a record.
  const _anmFrameInfo3* info(int position) const {
    const auto index = static_cast<std::size_t>(position);
    return position >= 0 && index < infos.size() ? &infos[index] : nullptr;
  }
};

struct AnnFrame {
  CXSize size;
  CXPoint position;
  _compression compression = _compression::none;
  std::vector<std::byte> colour;  // as stored
  std::vector<std::byte> alpha;   // likewise; empty when there is none
};

struct AnnFile {
  int bpp = 16;
  int fps = 15;
  std::uint32_t flags = 0;  // bits 0 to 7 of the object, 8 to 23 of the animation
  std::uint8_t opacity = 255;
  int randomFrames = 0;
  bool isLater = false;  // "NVP" or "NV+"
  bool isPak = false;
  CXString author;
  CXString description;
  std::vector<_annEventInfo3> events;
  std::vector<AnnFrame> frames;
};

// Nothing when the bytes are no such file or its numbers are out of bounds; `why` then says so for a report.
std::optional<AnnFile> readAnn(std::span<const std::byte> file, const char** why);
// The "NVP" layout; what does not fit a field is cut.
std::vector<std::byte> writeAnn(const AnnFile& animation);

}  // namespace footlight
