// A marked-up text in a family of fonts, as one line and wrapped: what the first bytes say is done with it,
// then it is drawn whole and in halves, which must give the same picture. Lines do not go over their width
// but for single words, words stand where they are found, and laying it out again gives the same.

#include <algorithm>

#include "demand.h"
#include "input_bytes.h"
#include "support/block_fonts.h"
#include "text/multiline_text6.h"

namespace footlight::fuzz {

namespace {

constexpr CXSize kScreen(60, 40);

class Unit final : public CXObject, public CEditBoxMaker {
 public:
  std::unique_ptr<CTextBox> makeTextBox(CSimpleFont6* font, CXRect rect, int /*priority*/,
                                        const CXString& /*text*/) override {
    struct Box final : CTextBox {
      explicit Box(int& boxes) : boxes_(boxes) { ++boxes_; }
      ~Box() override { --boxes_; }
      void setPosition(CXPoint /*leftTop*/) override {}
      int& boxes_;
    };
    demand(font != nullptr && rect.Width() >= 0);
    return std::make_unique<Box>(boxes);
  }
  CXObject* asObject() override { return this; }

  int boxes = 0;
};

std::vector<std::byte> drawn(CText6& text, CXRect first, CXRect second) {
  CGraphicsObject target(nullptr, kScreen, 16);
  for (const CXRect& part : {first, second}) {
    const CXRect kept = text.GetClippingRect();
    text.SetClippingRect(part - text.GetPosition());
    if (!part.IsEmpty()) text.redraw(&target);
    text.SetClippingRect(kept);
  }
  const auto pixels = target.GetDataPtr();
  return {pixels.begin(), pixels.end()};
}

void checkDrawing(CText6& text, int at) {
  const auto whole = drawn(text, {0, 0, kScreen.width, kScreen.height}, CXRect());
  demand(whole == drawn(text, {0, 0, at, kScreen.height}, {at, 0, kScreen.width, kScreen.height}));
  demand(whole == drawn(text, {0, 0, kScreen.width, at / 2}, {0, at / 2, kScreen.width, kScreen.height}));
}

void checkWords(CText6& text) {
  const int count = text.getNumWords();
  for (int i = -1; i < std::min(count + 1, 40); ++i) {
    const CXString word = text.getWordAt(i);
    demand(word.IsString() == (i >= 0 && i < count));
    const int found = text.search(word, i);
    demand(i < 0 || i >= count || found == i);
    const CXPoint place = text.getWordPosition(i);
    text.getWordAtXY(place);
    demand(text.getWordWidth(i) == 0 || i >= 0);
    if (i % 3 == 0) text.setWordColor(i, i * 999);
  }
}

void checkText(CText6& text, CFontCollection* fonts, const CXString& says, InputBytes& input) {
  const int width = input.next() % 64 - 2;
  text.setJustify({2, 1, 2 + width, 30}, static_cast<_justify>(input.next() % 3),
                  static_cast<_justify>(2 + input.next() % 3));
  text.setFont(fonts);
  text.setText(says);
  checkWords(text);
  checkDrawing(text, 1 + input.next() % (kScreen.width - 1));
  const CXSize size = text.Size();
  text.setColor(input.next());
  text.Move(input.next() - 128, 3);
  checkDrawing(text, 20);
  text.setFont(fonts);
  demand(text.Size() == size);
  text.setText(text.getColoruredText(says, 5));
}

void checkMarkup(std::span<const std::uint8_t> data) {
  constexpr std::size_t kActBytes = 12;
  const std::size_t acts = std::min(data.size(), kActBytes);
  InputBytes input(data.first(acts));
  const CXString says(textOf(data.subspan(acts)));
  const Machine machine({});
  auto fonts = test::blockFonts();
  Unit unit;
  {
    CMultilineText6 text(nullptr, true, &unit);
    checkText(text, fonts.get(), says, input);
    CText6 line(nullptr, true, nullptr);
    checkText(line, fonts.get(), says, input);
    fonts.reset();
    text.setText("a");  // a text over the limit would leave the one before
    line.setText("a");
    demand(text.Size() == CXSize() && line.Size() == CXSize());
  }
  demand(unit.boxes == 0);
}

}  // namespace

}  // namespace footlight::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  footlight::fuzz::checkMarkup({data, size});
  return 0;
}
