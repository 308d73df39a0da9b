// Writes animation files.

#include <algorithm>
#include <string_view>

#include "foundation/byte_writer.h"
#include "gfx/ann_format.h"

namespace footlight {

namespace {

constexpr std::size_t kNameBytes = 32;
constexpr std::size_t kFrameHeader = 52;

void putLengthAndText(ByteWriter& out, const CXString& value, bool withZero) {
  out.number(value.Length() + (withZero ? 1 : 0), 4).text(value).zeros(withZero ? 1 : 0);
}

void writePosition(ByteWriter& out, const _anmFrameInfo3& info) {
  out.number(info.name.IsString() ? 1 : 0, 4);
  out.number(info.text.IsString() ? 1 : 0, 4);
  out.number(info.offset.x, 2);
  out.number(info.offset.y, 2);
  out.number(-1, 4);
  out.number(info.soundName.IsString() ? 1 : 0, 4);
  out.number(0, 4);
  out.number(info.opacity, 1);
  out.zeros(5);
  for (const CXString* text : {&info.name, &info.text, &info.soundName}) {
    if (text->IsString()) putLengthAndText(out, *text, true);
  }
}

void writeEvent(ByteWriter& out, const _annEventInfo3& event) {
  out.field(event.name.view().substr(0, kNameBytes - 1), kNameBytes);
  out.number(event.frameCount(), 2);
  out.number(0, 4);
  for (const int field : {event.loopFrom, event.loopTo, event.loopCount, event.loopCounter})
    out.number(field, 2);
  out.number(event.fps, 4);
  out.number(event.flags, 4);
  out.number(event.opacity, 1);
  out.zeros(12);
  for (const int number : event.frames) out.number(number, 2);
  const _anmFrameInfo3 none;
  for (int i = 0; i < event.frameCount(); ++i) {
    const _anmFrameInfo3* info = event.info(i);
    writePosition(out, info != nullptr ? *info : none);
  }
}

void writeFrameHeader(ByteWriter& out, const AnnFrame& frame) {
  const std::size_t start = out.size();
  out.number(frame.size.width, 2);
  out.number(frame.size.height, 2);
  out.number(frame.position.x, 2);
  out.number(frame.position.y, 2);
  out.number(static_cast<int>(frame.compression), 2);
  out.number(static_cast<std::int64_t>(frame.colour.size()), 4);
  out.number(frame.alpha.empty() ? 0 : 4, 2);
  out.zeros(12);
  out.number(static_cast<std::int64_t>(frame.alpha.size()), 4);
  out.zeros(kFrameHeader - (out.size() - start));
}

}  // namespace

std::vector<std::byte> writeAnn(const AnnFile& animation) {
  ByteWriter out;
  out.text(std::string_view("NVP\0", 4));
  out.number(static_cast<std::int64_t>(animation.frames.size()), 2);
  out.number(animation.bpp, 2);
  out.number(static_cast<std::int64_t>(animation.events.size()), 2);
  out.zeros(13);
  out.number(animation.fps, 4);
  out.number(animation.flags, 4);
  out.number(animation.opacity, 1);
  out.number(animation.randomFrames, 2);
  out.zeros(10);
  putLengthAndText(out, animation.author, false);
  putLengthAndText(out, animation.description, false);
  for (const _annEventInfo3& event : animation.events) writeEvent(out, event);
  for (const AnnFrame& frame : animation.frames) writeFrameHeader(out, frame);
  for (const AnnFrame& frame : animation.frames) {
    out.bytes(frame.colour);
    out.bytes(frame.alpha);
  }
  return out.take();
}

}  // namespace footlight
