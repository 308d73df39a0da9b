#pragma once

// What the blitters are measured beside: the plain form with a table of products, one entry for each
// difference and weight, as a machine without fast multiplication wants it.

#include <cstdint>

namespace footlight::bench {

// A rectangle of whole rows without padding, at 5-6-5.
struct PlainJob {
  const std::uint16_t* source;
  const std::uint8_t* alpha;
  void* target;
  int width;
  int height;
  int targetStride;
  int opacity;
};

namespace table {

void copy(const PlainJob& job);
void alpha(const PlainJob& job);
void blend(const PlainJob& job);
void alphaBlend(const PlainJob& job);
void copy32(const PlainJob& job);
void alpha32(const PlainJob& job);

}  // namespace table

}  // namespace footlight::bench
