#pragma once

// Animations between files and plain pictures.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "anim/description.h"

namespace footlight::anim {

inline constexpr const char* kDescriptionFile = "animation.txt";
inline constexpr const char* kNoPicture = "-";  // in place of a frame's file: it has no pixels

// The pixels of one frame into `animation`, in the form of the description. Empty, or why that cannot be.
std::string setFrame(Description& description, std::size_t number, const image::Picture& picture);
// The frame's pixels; nothing, and the reason in `why`, when they cannot be read.
std::optional<image::Picture> pictureOf(const AnnFile& animation, std::size_t number, std::string* why);
// The description of a file that was read, with names for its frames' pictures.
Description describe(const AnnFile& animation);
// Lines for people: sizes, events and their lengths.
std::string summaryOf(const AnnFile& animation);

}  // namespace footlight::anim
