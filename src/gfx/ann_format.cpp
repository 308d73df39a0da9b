#include "gfx/ann_format.h"

#include <algorithm>
#include <string_view>

#include "foundation/byte_reader.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "gfx/pixel_format.h"

namespace footlight {

namespace {

using View = std::span<const std::byte>;
using Found = std::optional<AnnFile>;

constexpr std::size_t kMagicBytes = 4;
constexpr std::size_t kNameBytes = 32;
constexpr std::size_t kEventReserved = 12;
constexpr std::size_t kPositionReserved = 5;
constexpr int kNamedChannels = 4;  // a frame header's further ones mean nothing
constexpr std::size_t kLongHeader = 52;
constexpr std::size_t kShortHeader = 32;
constexpr std::size_t kPakHeader = 407;
constexpr std::size_t kPakDescription = 134;
constexpr std::size_t kPakNumbers = 390;
constexpr std::size_t kPakEventRest = 2;
constexpr std::size_t kPakPositionRest = 6;

constexpr const char* kCutOff = "the animation's records are cut off";

bool startsWith(View file, std::string_view magic) {
  return file.size() >= kMagicBytes &&
         std::equal(magic.begin(), magic.end(), file.begin(),
                    [](char c, std::byte b) { return static_cast<std::byte>(c) == b; });
}

// Text up to its zero byte, if it has one.
CXString textOf(View bytes) {
  const std::string_view all(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return all.substr(0, all.find('\0'));
}

CXString nameOf(View field) { return textOf(field.first(std::min(field.size(), kNameBytes - 1))); }

// A length and that many bytes; a length that does not fit poisons the reader.
CXString readText(ByteReader& reader) {
  const std::int32_t length = reader.i32();
  return textOf(reader.bytes(length < 0 ? ~std::uint64_t{0} : static_cast<std::uint64_t>(length)));
}

int formatOf(int field) {
  const int bpp = field == 2 || field == 4 || field == 8 ? GetRealBpp(field) : field;
  return bpp == 15 || bpp == 24 || bpp == 32 ? bpp : 16;
}

void readFrameList(ByteReader& reader, int count, _annEventInfo3& event) {
  if (count < 0 || static_cast<std::size_t>(count) * 2 > reader.left()) {
    reader.skip(~std::uint64_t{0});
    return;
  }
  event.frames.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) event.frames.push_back(reader.i16());
}

_anmFrameInfo3 readPosition(ByteReader& reader) {
  _anmFrameInfo3 info;
  const bool hasName = reader.u32() != 0;
  const bool hasText = reader.u32() != 0;
  info.offset.x = reader.i16();
  info.offset.y = reader.i16();
  reader.skip(4);
  const bool hasSound = reader.u32() != 0;
  reader.skip(4);
  info.opacity = reader.u8();
  reader.skip(kPositionReserved);
  if (hasName) info.name = readText(reader);
  if (hasText) info.text = readText(reader);
  if (hasSound) info.soundName = readText(reader);
  return info;
}

_annEventInfo3 readEvent(ByteReader& reader) {
  _annEventInfo3 event;
  event.name = nameOf(reader.bytes(kNameBytes));
  const int count = reader.i16();
  reader.skip(4);
  event.loopFrom = reader.i16();
  event.loopTo = reader.i16();
  event.loopCount = reader.i16();
  reader.skip(2);
  event.fps = reader.i32();
  event.flags = reader.u32();
  event.opacity = reader.u8();
  reader.skip(kEventReserved);
  readFrameList(reader, count, event);
  for (int i = 0; i < event.frameCount() && reader.ok(); ++i) event.infos.push_back(readPosition(reader));
  return event;
}

struct FrameHeader {
  AnnFrame frame;
  std::int32_t colourSize = 0;
  std::int32_t alphaSize = 0;
};

FrameHeader readFrameHeader(View bytes) {
  ByteReader reader(bytes);
  FrameHeader header;
  header.frame.size.width = reader.i16();
  header.frame.size.height = reader.i16();
  header.frame.position.x = reader.i16();
  header.frame.position.y = reader.i16();
  header.frame.compression = static_cast<_compression>(reader.i16());
  header.colourSize = reader.i32();
  const int channels = reader.i16();
  reader.skip(std::uint64_t{4} * (kNamedChannels - 1));
  const std::int32_t alphaSize = reader.i32();
  header.alphaSize = channels >= kNamedChannels ? alphaSize : 0;
  return header;
}

bool isForm(_compression form) {
  const int number = static_cast<int>(form);
  return number == 0 || (number >= 2 && number <= 5);
}

const char* faultOf(const FrameHeader& header) {
  const CXSize size = header.frame.size;
  const bool isEmpty = size.width == 0 || size.height == 0;
  if (size.width < 0 || size.height < 0 || (!isEmpty && !limits::isPictureSize(size.width, size.height)))
    return "a frame's width or height is out of bounds";
  if (!isForm(header.frame.compression)) return "a frame is packed in an unknown form";
  if (header.colourSize < 0 || header.alphaSize < 0) return "a frame's planes have no size";
  return nullptr;
}

// Headers of all frames, then their planes. Gives what is wrong, or null.
const char* readFrames(ByteReader& reader, int count, std::size_t headerBytes, AnnFile& file) {
  if (count < 0 || static_cast<std::size_t>(count) > reader.left() / headerBytes) return kCutOff;
  std::vector<FrameHeader> headers;
  headers.reserve(static_cast<std::size_t>(count));
  std::int64_t pixels = 0;
  for (int i = 0; i < count; ++i) {
    headers.push_back(readFrameHeader(reader.bytes(headerBytes)));
    const FrameHeader& header = headers.back();
    if (const char* fault = faultOf(header); fault != nullptr) return fault;
    pixels += std::int64_t{header.frame.size.width} * header.frame.size.height;
    if (pixels > limits::kAnimationPixels) return "the animation's frames are too large";
  }
  constexpr int kFrameBytes = 1024;  // around the pixels of a frame, at most
  if (!memory::hasRoom(pixels * (get_pixel_size(file.bpp) + 1) + std::int64_t{count} * kFrameBytes))
    return "there is no memory for the animation's frames";
  for (FrameHeader& header : headers) {
    const auto colour = reader.atMost(static_cast<std::uint64_t>(header.colourSize));
    const auto alpha = reader.atMost(static_cast<std::uint64_t>(header.alphaSize));
    AnnFrame frame = std::move(header.frame);
    if (frame.size.width == 0 || frame.size.height == 0) frame.size = {};
    frame.colour.assign(colour.begin(), colour.end());
    frame.alpha.assign(alpha.begin(), alpha.end());
    // A plane that the header names and the file lacks is one of zeros.
    if (header.alphaSize > 0 && frame.alpha.empty()) frame.alpha.resize(1);
    file.frames.push_back(std::move(frame));
  }
  return nullptr;
}

// Numbers from the file are held against each other once all of it is known.
void checkEvents(AnnFile& file) {
  const int frames = static_cast<int>(file.frames.size());
  for (_annEventInfo3& event : file.events) {
    if (frames == 0) event.frames.clear();
    for (int& number : event.frames) {
      if (number < 0 || number >= frames) number = 0;
    }
    event.infos.resize(std::min(event.infos.size(), event.frames.size()));
    // A loop may lie behind the last position: then the event comes to a stand there, and never ends.
    event.loopFrom = std::max(0, event.loopFrom);
    event.loopTo = std::max(0, event.loopTo);
    event.loopCount = std::max(0, event.loopCount);
  }
}

Found refuse(const char** why, const char* text) {
  *why = text;
  return std::nullopt;
}

Found finish(ByteReader& reader, int frameCount, std::size_t headerBytes, AnnFile file, const char** why) {
  if (!reader.ok()) return refuse(why, kCutOff);
  if (const char* fault = readFrames(reader, frameCount, headerBytes, file); fault != nullptr)
    return refuse(why, fault);
  checkEvents(file);
  return file;
}

Found readCurrent(View bytes, const char** why) {
  const bool isPlus = startsWith(bytes, "NV+");
  ByteReader reader(bytes);
  AnnFile file;
  file.isLater = isPlus || startsWith(bytes, "NVP");
  reader.skip(kMagicBytes);
  const int frameCount = reader.i16();
  file.bpp = formatOf(reader.i16());
  const int eventCount = reader.i16();
  reader.skip(13);
  file.fps = reader.i32();
  file.flags = reader.u32();
  file.opacity = reader.u8();
  file.randomFrames = reader.i16();
  reader.skip(10);
  file.author = readText(reader);
  file.description = readText(reader);
  for (int i = 0; i < eventCount && reader.ok(); ++i) file.events.push_back(readEvent(reader));
  return finish(reader, frameCount, isPlus ? kShortHeader : kLongHeader, std::move(file), why);
}

// The layout of the "PAK" magic

_annEventInfo3 readPakEvent(ByteReader& reader) {
  _annEventInfo3 event;
  event.name = nameOf(reader.bytes(kNameBytes));
  const int count = reader.i16();
  event.loopFrom = event.loopTo = reader.i16();
  reader.skip(kPakEventRest);
  event.loopCount = reader.i16();
  readFrameList(reader, count, event);
  for (int i = 0; i < event.frameCount() && reader.ok(); ++i) {
    _anmFrameInfo3 info;
    info.offset.x = reader.i16();
    info.offset.y = reader.i16();
    reader.skip(kPakPositionRest);
    event.infos.push_back(std::move(info));
  }
  return event;
}

// A file without events has all frames forwards, twice, and backwards.
void addStandardEvents(AnnFile& file, int frameCount) {
  _annEventInfo3 event;
  event.name = "standard";
  for (int i = 0; i < frameCount; ++i) event.frames.push_back(i);
  file.events.assign(2, event);
  std::ranges::reverse(event.frames);
  file.events.push_back(std::move(event));
}

Found readPak(View bytes, const char** why) {
  ByteReader reader(bytes);
  const View header = reader.bytes(kPakHeader);
  if (!reader.ok()) return refuse(why, kCutOff);
  ByteReader numbers(header);
  numbers.skip(kMagicBytes);
  const int frameCount = numbers.i16();
  AnnFile file;
  file.isPak = true;
  file.author = textOf(header.subspan(kMagicBytes + 2, kPakDescription - kMagicBytes - 2));
  file.description = textOf(header.subspan(kPakDescription, kPakNumbers - kPakDescription));
  numbers.skip(kPakNumbers - numbers.position());
  const int bpp = numbers.i16();
  file.bpp = bpp == 0 ? 15 : formatOf(bpp);
  const int eventCount = numbers.i16();
  for (int i = 0; i < eventCount && reader.ok(); ++i) file.events.push_back(readPakEvent(reader));
  if (eventCount <= 0) addStandardEvents(file, frameCount);
  return finish(reader, frameCount, kShortHeader, std::move(file), why);
}

}  // namespace

Found readAnn(View file, const char** why) {
  if (startsWith(file, "NVP") || startsWith(file, "NV+") || startsWith(file, "NVI"))
    return readCurrent(file, why);
  if (startsWith(file, "PAK")) return readPak(file, why);
  return refuse(why, "the file is no animation of a known layout");
}

}  // namespace footlight
