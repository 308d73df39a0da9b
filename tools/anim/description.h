#pragma once

// An animation in words: what stands in a description file beside the PNG files of its frames.
//
// A line is a command and its words, apart by blanks; a word with blanks stands between double quotes, where
// \" and \\ mean the character itself and \n the end of a line. A line that begins with # is a remark. Names
// are in UTF-8.
//
//   bits 16                    of a pixel, 15 or 16
//   packing lzo                none, lzo, lzo-rle, rle or jpeg
//   alpha auto                 planes where they are needed, always or never
//   fps 15                     frames a second
//   opacity 255                of the object, 0 to 255
//   random 0                   the number of frames for random play
//   flags NUMBER|WORD ...      of the animation; see kAnimationFlags
//   author TEXT, description TEXT
//   frame FILE.png [at X Y]    the frames in the order of the store, numbered from 0
//   event NAME [fps N] [opacity N] [loop FROM TO] [times N] [flags N] [WORD ...]; see kEventFlags
//   step FRAME [offset X Y] [opacity N] [name TEXT] [text TEXT] [sound FILE]
//                              the next position of the last event; FRAME is a number or a file's name
//
// A loop goes from its last position back to its first, `times` often, and for ever with 0.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "gfx/ann_format.h"
#include "image/convert.h"

namespace footlight::anim {

struct FlagWord {
  const char* word;
  std::uint32_t flag;
};
inline constexpr FlagWord kEventFlags[] = {
    {"hide-at-stop", _annEventInfo3::kHidesAtStop},        {"ping-pong", _annEventInfo3::kPingPong},
    {"uninterruptible", _annEventInfo3::kUninterruptible}, {"sound-survives", _annEventInfo3::kSoundSurvives},
    {"loop-with-sound", _annEventInfo3::kLoopsWithSound},
};
inline constexpr FlagWord kAnimationFlags[] = {
    {"uninterruptible", 0x40000},
    {"sound-survives", 0x80000},
    {"stream-sounds", 0x400000},
    {"go-on", 0x800000},
};

struct Description {
  AnnFile animation;                  // the frames have places alone, no pixels
  std::vector<std::string> pictures;  // of the frames, as named in the description
  image::Form form;
};

// Nothing, and the line's number and what is wrong with it in `why`, when a line means nothing.
std::optional<Description> parse(std::string_view text, std::string* why);
// What `parse` reads as the same description.
std::string print(const Description& description);

}  // namespace footlight::anim
