#pragma once

// What a statement's text decides is remembered after its first run: which names it found or missed, what a
// literal means, the code that a filled text became. None of it may show in a game. Without the caches every
// run reads the text literally, as if for the first time; the tests and the fuzz targets run the same code
// both ways and compare.

namespace footlight::caches {

inline bool enabled = true;

inline bool isOn() { return enabled; }
// To be called before the first code is compiled.
inline void enable(bool on) { enabled = on; }

}  // namespace footlight::caches
