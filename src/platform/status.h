#pragma once

namespace footlight::platform {

// What a platform call came to.
enum class Status {
  ok = 0,
  lost = 1,    // the surface lost its memory: restore it and call again
  busy = 2,    // not finished yet: call again
  failed = 3,  // the machine refuses
};

}  // namespace footlight::platform
