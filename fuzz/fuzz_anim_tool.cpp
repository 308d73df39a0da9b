// What the tool for animations reads: a description in words, and an animation file, which it takes apart and
// puts together again. A description that was printed reads as the same one.

#include "anim/frames.h"
#include "demand.h"

namespace footlight::fuzz {

namespace {

void playWords(std::string_view text) {
  std::string why;
  const auto description = anim::parse(text, &why);
  demand(description.has_value() == why.empty());
  if (!description) return;
  const std::string printed = anim::print(*description);
  const auto again = anim::parse(printed, &why);
  demand(again && anim::print(*again) == printed);
}

void playFile(std::span<const std::uint8_t> data) {
  const char* fault = nullptr;
  const auto animation = readAnn(std::as_bytes(data), &fault);
  if (!animation) return;
  anim::summaryOf(*animation);
  anim::Description description = anim::describe(*animation);
  playWords(anim::print(description));
  std::string why;
  for (std::size_t i = 0; i < animation->frames.size(); ++i) {
    const auto picture = anim::pictureOf(*animation, i, &why);
    if (picture) anim::setFrame(description, i, *picture);
  }
  demand(readAnn(writeAnn(*animation), &fault).has_value());
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::playWords(footlight::fuzz::textOf({data, size}));
  footlight::fuzz::playFile({data, size});
  return 0;
}
