#pragma once

// Every limit that guards the engine against scripts, files, peers and options. Over a limit a call does
// nothing, never half of its work.

#include <cstdint>

namespace footlight::limits {

inline constexpr int kNestedRuns = 2000;    // runs, redraws and invalidations together
inline constexpr int kRefusedRuns = 1000;   // in one nest; from then on it only unwinds
inline constexpr int kNestedClicks = 32;    // simulated clicks
inline constexpr int kBracketDepth = 200;   // brackets in one statement
inline constexpr int kTreeDepth = 64;       // trees and folders
inline constexpr int kPictureSide = 16384;  // pixels
inline constexpr std::int64_t kPicturePixels = std::int64_t{1} << 24;
inline constexpr std::int64_t kPictureFileBytes = kPicturePixels * 6;
inline constexpr std::int64_t kTextFileBytes = std::int64_t{64} << 20;
inline constexpr std::int64_t kLogicalLineBytes = std::int64_t{1} << 20;
inline constexpr int kFilledTextBytes = 1 << 20;  // of code with its arguments filled in
inline constexpr int kObjectsInScope = 1000000;
inline constexpr int kDepartedObjects = 1024;          // that left a scope and are still held
inline constexpr int kDefinitionProperties = 1 << 21;  // of one definition file
inline constexpr std::int64_t kStringBytes = std::int64_t{16} << 20;
inline constexpr int kArrayElements = 1 << 20;
inline constexpr int kClonesByOneCall = 65536;
inline constexpr int kPoolSlots = 65536;       // of one type
inline constexpr int kNameBytes = 4096;        // longer names are not found
inline constexpr int kClassFiles = 64;         // base files of one class, and classes within classes
inline constexpr int kHistoryEntries = 65536;  // sub-scenes remembered for BACK
inline constexpr int kInputEvents = 4096;      // queued, of one device
inline constexpr int kUnloadRounds = 3;        // sweeps for objects that ONDONE handlers add
inline constexpr int kDirtyRects = 4096;       // of one screen; more of them dirty all of it
inline constexpr int kIniValueBytes = 10240;   // of one value read

// Whether a picture, a surface or a screen may be that large.
constexpr bool isPictureSize(std::int64_t width, std::int64_t height) {
  return width > 0 && height > 0 && width <= kPictureSide && height <= kPictureSide &&
         width * height <= kPicturePixels;
}

}  // namespace footlight::limits
