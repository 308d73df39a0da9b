#include "text/text6.h"

#include <algorithm>

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "gfx/refresh_screen.h"
#include "gfx/window.h"
#include "text/font_collection.h"
#include "text/text_painter.h"

namespace footlight {

namespace {

constexpr std::int64_t kBytesPerLetter = 64;  // that a layout takes at most

}  // namespace

CText6::CText6(CWindow* window, bool hypertext, CEditBoxMaker* unit)
    : CGraphicsObject(window),
      hypertext_(hypertext),
      unit_(unit),
      unitObject_(unit != nullptr ? unit->asObject() : nullptr) {}

CText6::~CText6() = default;

// The text and its place

void CText6::setFont(CSimpleFont6* font) {
  font_ = font;
  relayOut();
}

void CText6::setText(const CXString& text) {
  CXString raw = convTab(text);
  if (raw.Length() > limits::kTextBytes) {
    limitHit("text length");
    return;
  }
  if (!memory::hasRoom(raw.Length() * kBytesPerLetter)) return;
  rawText_ = std::move(raw);
  relayOut();
}

void CText6::relayOut() {
  Invalidate();
  editBoxes_.clear();
  const CSimpleFont6* font = font_.get();
  layout_ = font != nullptr ? layOut(*font) : TextLayout();
  setSize({layout_.width, layout_.height});
  setJustify(rect_, hJustify_, vJustify_);
  makeBoxes();
}

void CText6::takeLook(const CText6& other) {
  font_ = other.font_;
  rawText_ = other.rawText_;
  rect_ = other.rect_;
  hJustify_ = other.hJustify_;
  vJustify_ = other.vJustify_;
  hasColor_ = other.hasColor_;
  firstColor_ = other.firstColor_;
  defColor_ = other.defColor_;
  layout_ = other.layout_;
  setSize(other.Size());
  placeAt(other.GetPosition());
  clippingRect_ = other.clippingRect_;
  opacity_ = other.opacity_;
  visible_ = other.visible_;
}

TextLayout CText6::layOut(const CSimpleFont6& font) const {
  const int width = rect_.Width() > 0 ? rect_.Width() : limits::kPictureSide;
  return layOutLine(font, rawText_, width, bitsPerPixel());
}

int CText6::bitsPerPixel() const { return window_ != nullptr ? window_->GetBpp() : 16; }

void CText6::setJustify(CXRect rect, _justify h, _justify v) {
  Invalidate();
  rect_ = rect;
  hJustify_ = h;
  vJustify_ = v;
  placeAt({alignedX(width_), alignedY()});
  for (TextLayout::Line& line : layout_.lines) line.x = wrap_sub(alignedX(line.width), GetPosition().x);
  placeBoxes();
  reportMove();
  Invalidate();
}

int CText6::alignedX(int width) const {
  if (hJustify_ == _justify::right) return wrap_sub(rect_.right, width);
  return hJustify_ == _justify::center ? wrap_add(wrap_sub(rect_.Width(), width) / 2, rect_.left)
                                       : rect_.left;
}

int CText6::alignedY() const {
  if (vJustify_ == _justify::bottom) return wrap_sub(rect_.bottom, height_);
  return vJustify_ == _justify::center ? wrap_add(wrap_sub(rect_.Height(), height_) / 2, rect_.top)
                                       : rect_.top;
}

void CText6::SetPosition(int px, int py) {
  Invalidate();
  CGraphicsObject::SetPosition(px, py);
  placeBoxes();
  Invalidate();
}

void CText6::Move(int dx, int dy) {
  CGraphicsObject::Move(dx, dy);
  placeBoxes();
}

int CText6::getLength(const CSimpleFont6* font, std::string_view text) {
  return font != nullptr ? lengthOf(*font, text) : 0;
}

// Colours

CXString CText6::getColoruredText(const CXString& text, int color) const {
  CXString plain = text;
  plain.removeTag("COLOR");
  return "<COLOR" + CXString::toString(color) + ">" + plain + "<COLOR>";
}

void CText6::setColor(int color) {
  hasColor_ = true;
  defColor_ = color & 0xFFFF;
  if (CSimpleFont6* font = font_.get()) font->setColor(color);
  Invalidate();
}

int CText6::colorOf(const CSimpleFont6& font, int color) const {
  if (color >= 0) return color;
  if (!hasColor_ && font.hasDefColor()) return font.getDefColor();
  return hasColor_ || color == TextLayout::kColorEnded ? defColor_ : firstColor_;
}

// Drawing

void CText6::redraw(CGraphicsObject* destination) {
  const Ref<CSimpleFont6> font = font_.get();
  if (!font || destination == nullptr) return;
  CXRect clip(0, 0, destination->Width(), destination->Height());
  if (!clippingRect_.IsEmpty()) clip = clip.Common(clippingRect_ + GetPosition());
  if (clip.IsEmpty()) return;
  TextPainter painter(*destination, clip, opacity_ != 255 ? opacity_ : font->GetOpacity());
  for (std::size_t i = 0; i < layout_.lines.size(); ++i) {
    const std::int64_t top = std::int64_t{GetPosition().y} + layout_.lines[i].y;
    if (top < clip.bottom && top + layout_.reach > clip.top) drawLine(painter, *font, i);
  }
}

void CText6::drawLine(TextPainter& painter, CSimpleFont6& font, std::size_t line) const {
  const CXPoint place = GetPosition() + CXPoint(layout_.lines[line].x, layout_.lines[line].y);
  const auto words = hypertext_ ? layout_.wordsOf(line) : std::span<const ht_Word>();
  for (const TextLayout::Run& run : layout_.runsOf(line)) {
    CSimpleFont6* used =
        run.font == TextLayout::kPlainFont ? &font : static_cast<const CFontCollection&>(font).at(run.font);
    if (used != nullptr) drawRun(painter, *used, run, place, words);
  }
}

void CText6::drawRun(TextPainter& painter, CSimpleFont6& font, const TextLayout::Run& run, CXPoint place,
                     std::span<const ht_Word> words) const {
  const int color = colorOf(*font_.get(), run.color);
  const int gap = run.font == TextLayout::kPlainFont ? CSimpleFont6::kLetterGap : 0;
  auto word = std::ranges::lower_bound(words, run.begin, {}, &ht_Word::begin);
  std::int64_t x = std::int64_t{place.x} + run.x;
  char previous = 0;
  for (std::uint32_t i = run.begin; i < run.end; ++i) {
    if (word != words.end() && i >= word->end) ++word;
    const bool isColored = word != words.end() && i >= word->begin && word->color != ht_Word::kFontsOwn;
    const char letter = layout_.letters[i];
    x += painter.draw(font, isColored ? word->color : color, x, place.y, previous, letter) + gap;
    previous = letter;
  }
}

// Words

const ht_Word* CText6::wordAt(int word) const {
  return word >= 0 && word < count_words() ? &layout_.words[static_cast<std::size_t>(word)] : nullptr;
}

std::size_t CText6::lineOfWord(std::size_t word) const {
  const auto behind = std::ranges::upper_bound(layout_.lines, word, {}, &TextLayout::Line::firstWord);
  return static_cast<std::size_t>(behind - layout_.lines.begin()) - 1;
}

int CText6::wordInLine(std::size_t line, int x) const {
  const auto words = layout_.wordsOf(line);
  const auto found =
      std::ranges::find_if(words, [&](const ht_Word& word) { return word.left <= x && x <= word.right; });
  return found != words.end() ? static_cast<int>(&*found - layout_.words.data()) : -1;
}

int CText6::getWordAtXY(CXPoint point) const {
  if (!hypertext_ || layout_.lines.empty()) return -1;
  return wordInLine(0, wrap_sub(point.x, wrap_add(GetPosition().x, layout_.lines[0].x)));
}

CXString CText6::getWordAt(int word) const {
  const ht_Word* found = wordAt(word);
  if (found == nullptr) return {};
  return std::string_view(layout_.letters).substr(found->begin, found->end - found->begin);
}

CXPoint CText6::getWordPosition(int word) const {
  const ht_Word* found = hypertext_ ? wordAt(word) : nullptr;
  if (found == nullptr) return {-1, -1};
  const TextLayout::Line& line = layout_.lines[lineOfWord(static_cast<std::size_t>(word))];
  return {wrap_add(GetPosition().x, wrap_add(line.x, found->left)), -1};
}

int CText6::getWordWidth(int word) const {
  const ht_Word* found = hypertext_ ? wordAt(word) : nullptr;
  return found != nullptr ? found->right - found->left : 0;
}

int CText6::search(const CXString& text, int from) const {
  for (int i = std::max(0, from); i < count_words(); ++i) {
    const ht_Word& word = layout_.words[static_cast<std::size_t>(i)];
    if (text == std::string_view(layout_.letters).substr(word.begin, word.end - word.begin)) return i;
  }
  return -1;
}

void CText6::setWordColor(int word, int color) {
  if (!hypertext_ || wordAt(word) == nullptr) return;
  layout_.words[static_cast<std::size_t>(word)].color =
      color == ht_Word::kFontsOwn ? ht_Word::kFontsOwn : color & 0xFFFF;
  Invalidate();
}

ht_Line CText6::get_ht_lines_info(int line) const {
  if (!hypertext_ || line < 0 || static_cast<std::size_t>(line) >= layout_.lines.size()) return {};
  const auto index = static_cast<std::size_t>(line);
  const TextLayout::Line& found = layout_.lines[index];
  return {found.y, wrap_add(found.y, found.height), layout_.wordsOf(index)};
}

// Boxes

void CText6::makeBoxes() {
  if (unit_ == nullptr || !unitObject_ || layout_.boxes.empty()) return;
  const CRefreshScreen* screen = getRefreshOwner();
  const int priority = screen != nullptr ? std::max(0, screen->GetPriority(this)) : 0;
  for (const TextLayout::Box& box : layout_.boxes)
    editBoxes_.push_back(unit_->makeTextBox(font_.get(), boxRect(box), priority, box.text));
}

CXRect CText6::boxRect(const TextLayout::Box& box) const {
  const TextLayout::Line& line = layout_.lines[box.line];
  const CXPoint at = GetPosition() + CXPoint(wrap_add(line.x, box.x), line.y);
  return CXRect(0, 0, box.width, line.height) + at;
}

void CText6::placeBoxes() {
  for (std::size_t i = 0; i < editBoxes_.size(); ++i) {
    if (editBoxes_[i] != nullptr) editBoxes_[i]->setPosition(boxRect(layout_.boxes[i]).LeftTop());
  }
}

}  // namespace footlight
