#pragma once

// Counts what the program takes from its allocator. Under a sanitizer, whose allocator stays in place, the
// sanitizer's own count answers.

#include <cstdint>

namespace footlight::host {

// Bytes that were taken and not given back, by all threads; up to 64 KiB a thread behind.
std::int64_t memoryInUse();
// An allocation that would take more than this fails, and so ends in std::get_new_handler; 0 for no such end.
// Does nothing under a sanitizer.
void refuseMemoryAbove(std::int64_t bytes);

}  // namespace footlight::host
