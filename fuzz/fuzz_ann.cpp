// An animation file of either layout: played forwards and backwards, stepped, cloned, edited, saved and read
// again. One that loads keeps its indices in bounds; its saved form loads too.

#include <cstdlib>

#include "files/file.h"
#include "gfx/animo6.h"
#include "input_bytes.h"
#include "platform/headless/headless_platform.h"
#include "support/memory_files.h"

namespace footlight::fuzz {

namespace {

constexpr int kMostEvents = 8;
constexpr int kMostSteps = 24;

void demand(bool holds) {
  if (!holds) std::abort();
}

void checkPlace(const CAnimo6& animation) {
  demand(animation.GetFrameNo() >= -1 && animation.GetFrameNo() < std::max(1, animation.GetNOF()));
  demand(animation.GetNOE() == 0 || animation.GetCurrentEvent() < animation.GetNOE());
}

void step(CAnimo6& animation, InputBytes& input) {
  for (int i = 0; i < kMostSteps; ++i) {
    const std::uint8_t act = input.next();
    if (act % 3 == 0) {
      animation.Prev();
    } else {
      animation.Next();
    }
    if (act % 16 == 5) animation.Pause();
    if (act % 16 == 6) animation.Resume();
    if (act % 16 == 7) animation.Continue();
    if (act % 16 == 8) animation.SetEventFrame(act / 4 - 8, act / 8 - 4);
    animation.testHit(animation.GetPosition());
    checkPlace(animation);
  }
}

void checkPlaying(CAnimo6& animation, InputBytes& input) {
  for (int event = 0; event < std::min(animation.GetNOE(), kMostEvents); ++event) {
    animation.Play(event, static_cast<int>(input.next()) - 2, 0);
    step(animation, input);
    animation.playReverse(animation.GetEventName(event), static_cast<int>(input.next()) - 2);
    step(animation, input);
    animation.Stop();
  }
}

void checkAnimation(std::span<const std::uint8_t> data) {
  constexpr std::size_t kActBytes = 64;
  InputBytes input(data.first(std::min(data.size(), kActBytes)));
  const auto bytes = std::as_bytes(data.subspan(std::min(data.size(), kActBytes)));
  const test::Disk disk = {
      {"C:\\GAME\\a.ann", std::make_shared<const std::vector<std::byte>>(bytes.begin(), bytes.end())}};
  platform::HeadlessPlatform machine({}, std::make_unique<test::MemoryFiles>(disk));
  platform::use(&machine);
  {
    const Owned<CAnimo6> animation(new CAnimo6(nullptr));
    const int error = animation->Load(CXString("a.ann"));
    demand(error == 0 || error == CFile::kNotFound);
    demand(error == 0 || animation->GetNOF() == 0);
    checkPlaying(*animation, input);
    const Owned<CAnimo6> copy(static_cast<CAnimo6*>(animation->clone().release()));
    copy->FlipH();
    checkPlaying(*copy, input);
    animation->hide();
    checkPlaying(*animation, input);
    if (error == 0) {
      demand(copy->Save(CXString("b.ann"), _compression::rle) == 0);
      demand(animation->Load(CXString("b.ann")) == 0 && animation->GetNOF() == copy->GetNOF());
    }
  }
  platform::use(nullptr);
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::checkAnimation({data, size});
  return 0;
}
