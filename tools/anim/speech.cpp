#include "anim/speech.h"

#include <algorithm>

#include "foundation/code_page.h"
#include "sequence/speaking_animation.h"

namespace footlight::anim {

namespace {

std::string lineOf(const char* when, const _annEventInfo3& event) {
  const int frames = event.frameCount();
  const std::string count = frames == 0   ? "no frames: nothing moves until the sound ends"
                            : frames == 1 ? "1 frame"
                                          : std::to_string(frames) + " frames";
  return std::string(when) + code_page::toUtf8(event.name.view()) + ", " + count + "\n";
}

const _annEventInfo3* find(const AnnFile& animation, const CXString& name) {
  const auto found = std::ranges::find_if(
      animation.events, [&](const _annEventInfo3& event) { return event.name.equalsIgnoreCase(name); });
  return found != animation.events.end() ? &*found : nullptr;
}

std::string reserved(const AnnFile& animation, const CXString& prefix, const char* when, const char* key,
                     std::initializer_list<const char*> words) {
  std::string names;
  for (const char* word : words) {
    const CXString name = speech::eventName(prefix, word);
    if (const _annEventInfo3* event = find(animation, name)) return lineOf(when, *event);
    names += (names.empty() ? "" : " or ") + code_page::toUtf8(name.view());
  }
  return std::string(when) + "none: there is no " + names + ", " + key + " has no effect\n";
}

}  // namespace

std::string speechOf(const AnnFile& animation, const CXString& prefix) {
  if (animation.events.empty()) return "no events: the figure speaks without pictures\n";
  std::string text = reserved(animation, prefix, "before: ", "STARTING", {speech::kStart});
  bool talks = false;
  for (const _annEventInfo3& event : animation.events) {
    if (!speech::isTalk(prefix, event.name)) continue;
    talks = true;
    text += lineOf("talks:  ", event);
  }
  if (!talks) text += "talks:  none: whatever event is drawn comes in their place\n";
  return text + reserved(animation, prefix, "after:  ", "ENDING", {speech::kEnd, speech::kStop});
}

}  // namespace footlight::anim
