// Every form of the blitters against the formulas: the input picks the formats, the sizes, the clip, the
// place, the opacity, and with what is left the pixels and their alpha.

#include <cstdlib>

#include "input_bytes.h"
#include "support/plain_blit.h"

namespace footlight::fuzz {

namespace {

using namespace test;

void fill(InputBytes& input, std::vector<std::byte>* bytes) {
  for (std::size_t i = 0; i < bytes->size();) {
    const auto value = static_cast<std::byte>(input.next());
    for (std::size_t count = 1 + input.below(80); count > 0 && i < bytes->size(); --count)
      (*bytes)[i++] = value;
  }
}

int number(InputBytes& input, int count) {
  return static_cast<int>(input.below(static_cast<std::size_t>(count)));
}

CXRect someClip(InputBytes& input, int width, int height) {
  const int left = number(input, width);
  const int top = number(input, height);
  return {left, top, left + 1 + number(input, width - left), top + 1 + number(input, height - top)};
}

void run(InputBytes input) {
  const Case& c = input.oneOf(kCases);
  const int width = 1 + number(input, 140);
  const int height = 1 + number(input, 5);
  Picture source(width, height, c.from, c.alpha);
  Picture before(120, 7, c.to, c.kind == Kind::toCanvas);
  const CXPoint at(number(input, 119 + width) - width + 1, number(input, 6 + height) - height + 1);
  // Usually what the target shows; any other clip must be refused or stay inside.
  const CXRect shown = (CXRect(0, 0, before.width, before.height) - at).Common({0, 0, width, height});
  const CXRect own = someClip(input, width, height);
  const bool isCut = input.chance(250);
  const CXRect clip = !isCut ? own : own.Common(shown).IsEmpty() ? shown : own.Common(shown);
  const int opacity = input.next();
  fill(input, &source.data);
  fill(input, &source.alpha);
  fill(input, &before.data);
  fill(input, &before.alpha);

  const bool fits = clip.IsPartOf(shown);
  Picture expected = before;
  if (fits) drawPlain(c, source, &expected, at, clip, opacity);
  for (const auto form : {blit::Form::plain, blit::Form::sse2, blit::Form::avx2, blit::Form::avx512}) {
    if (!blit::useForm(form)) continue;
    Picture target = before;
    draw(c.kind, source.canvas(at.x, at.y, clip), target.canvas(), opacity);
    if (target.data != expected.data || target.alpha != expected.alpha) std::abort();
  }
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::run(footlight::fuzz::InputBytes({data, size}));
  return 0;
}
