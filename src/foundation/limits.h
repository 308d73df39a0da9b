#pragma once

// Every limit that guards the engine against scripts, files, peers and options. Over a limit a call does
// nothing, never half of its work.
//
// Where two numbers stand, the second is that of a fuzz build: there a few bytes of input must reach a limit,
// and what stays below it must not cost seconds.

#include <cstddef>
#include <cstdint>

namespace footlight::limits {

#ifdef FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION
inline constexpr bool kSmall = true;
#else
inline constexpr bool kSmall = false;
#endif

template <class Number>
constexpr Number usualOrSmall(Number usual, Number small) {
  return kSmall ? small : usual;
}

inline constexpr int kNestedRuns = usualOrSmall(2000, 60);     // runs, redraws and invalidations together
inline constexpr int kRefusedRuns = usualOrSmall(1000, 60);    // in one nest; from then on it only unwinds
inline constexpr int kNestedClicks = 32;                       // simulated clicks
inline constexpr int kRefusedClicks = usualOrSmall(1000, 60);  // in one nest, as with the runs
inline constexpr int kNestedEvaluations = usualOrSmall(1 << 20, 1 << 12);  // begun within one of them
inline constexpr int kBracketDepth = 200;                                  // brackets in one statement
inline constexpr int kTreeDepth = 64;                                      // trees and folders
inline constexpr int kBigFileEntries = 1000000;                // folders and files in one big file
inline constexpr int kPictureSide = usualOrSmall(16384, 256);  // pixels
inline constexpr std::int64_t kPicturePixels = usualOrSmall(std::int64_t{1} << 24, std::int64_t{4096});
inline constexpr std::int64_t kPictureFileBytes = kPicturePixels * 6;
// All frames of one animation.
inline constexpr std::int64_t kAnimationPixels = usualOrSmall(std::int64_t{1} << 28, std::int64_t{16384});
inline constexpr std::int64_t kAnimationFileBytes = std::int64_t{1} << 30;
// Pixels times scans of all JPEG pictures of one file: four for each pixel of the largest animation.
inline constexpr std::int64_t kScannedPixels = kAnimationPixels * 4;
inline constexpr int kEventsOfAnimation = usualOrSmall(65536, 64);
inline constexpr int kSoundBytes =
    usualOrSmall(64 << 20, 1 << 16);  // of one sound that is decoded as a whole
inline constexpr std::int64_t kTextFileBytes = std::int64_t{64} << 20;
inline constexpr std::int64_t kLogicalLineBytes = std::int64_t{1} << 20;
inline constexpr int kFilledTextBytes = usualOrSmall(1 << 20, 8192);  // of code with its arguments filled in
inline constexpr int kObjectsInScope = usualOrSmall(1000000, 256);
inline constexpr int kTimers = usualOrSmall(16384, 256);         // of one window
inline constexpr int kDepartedObjects = usualOrSmall(1024, 16);  // that left a scope and are still held
inline constexpr int kDefinitionProperties = 1 << 21;            // of one definition file
inline constexpr std::int64_t kStringBytes = usualOrSmall(std::int64_t{16} << 20, std::int64_t{4096});
inline constexpr int kTextBytes = usualOrSmall(1 << 20, 4096);  // of one text on the screen
inline constexpr std::size_t kBoxesOfText = usualOrSmall(std::size_t{256}, std::size_t{4});
inline constexpr int kArrayElements = usualOrSmall(1 << 20, 256);
inline constexpr int kClonesByOneCall = usualOrSmall(65536, 32);
inline constexpr int kPoolSlots = 65536;  // of one type
inline constexpr int kNameBytes = 4096;   // longer names are not found
inline constexpr int kClassFiles =
    usualOrSmall(64, 8);  // base files of one class, and classes within classes
inline constexpr int kSequenceParts = usualOrSmall(65536, 256);  // elements, places and files of a sequence
inline constexpr int kHistoryEntries = usualOrSmall(65536, 64);  // sub-scenes remembered for BACK
inline constexpr int kInputEvents = 4096;                        // queued, of one device
inline constexpr int kUnloadRounds = 3;  // sweeps for objects that ONDONE handlers add
inline constexpr int kPatternCells = usualOrSmall(1 << 20, 4096);  // of all layers
inline constexpr int kCompositesInOne = usualOrSmall(4096, 64);    // canvases and patterns in one drawing
inline constexpr int kPhotoLayers = 1024;                          // of one file
inline constexpr int kPhotoChannels = 56;                          // of one layer
inline constexpr int kDirtyRects = 65536;     // of one screen; more of them dirty all of it
inline constexpr int kIniLines = 1 << 20;     // a longer file counts as one that cannot be read
inline constexpr int kIniValueBytes = 10240;  // of one value read

// Whether a picture, a surface or a screen may be that large.
constexpr bool isPictureSize(std::int64_t width, std::int64_t height) {
  return width > 0 && height > 0 && width <= kPictureSide && height <= kPictureSide &&
         width * height <= kPicturePixels;
}

}  // namespace footlight::limits
