#include "text/simple_font.h"

#include <algorithm>

#include "files/file.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/animo.h"
#include "gfx/window.h"
#include "text/fnt_format.h"
#include "text/font_maker.h"
#include "text/text_painter.h"

namespace footlight {

namespace {

constexpr int kFileColor = -1;  // of a cell that nobody has coloured
constexpr char kBlankGlyph = 'l';
constexpr int kTildeWidth = 1;
constexpr std::int64_t kFileBytes = limits::kPictureFileBytes + (1 << 18);

// What stands in the font for a letter of a text.
constexpr char glyphLetter(char letter) {
  switch (letter) {
    case '@':
      return '<';
    case '$':
      return '>';
    default:
      return letter;
  }
}

}  // namespace

CSimpleFont6::CSimpleFont6(CWindow* window) : CGraphicsObject(window) { index_.fill(kNoLetter); }

CSimpleFont6::CSimpleFont6(CWindow* window, const CXString& fileName) : CSimpleFont6(window) {
  CSimpleFont6::Load(fileName);
}

CSimpleFont6::CSimpleFont6(CWindow* window, const CXString& fileName, CXString family, CXString style,
                           int size)
    : CSimpleFont6(window, fileName) {
  family_ = std::move(family);
  style_ = std::move(style);
  size_ = size;
}

// Files

int CSimpleFont6::Load(const CXString& name) {
  flush();
  CFile file(window_, name, CFile::kReadBinary);
  setErrorCode(file.LastError());
  if (LastError() == 0) CSimpleFont6::Load(&file);
  return LastError();
}

int CSimpleFont6::Load(CFile* file) {
  const char* why = "the font file is too long";
  const auto bytes = file->readRest(kFileBytes);
  std::optional<FntFont> font = bytes ? readFnt(*bytes, &why) : std::nullopt;
  setErrorCode(font ? 0 : CFile::kNotFound);
  if (font) {
    take(std::move(*font));
  } else {
    flush();
    diagnose::report(diagnose::Group::file, file->getFileName(), "", why);
  }
  return LastError();
}

void CSimpleFont6::take(FntFont font) {
  flush();
  setSize(font.size);
  data_ = PixelBlock(std::move(font.colour), font.bpp);
  alpha_ = PixelBlock(std::move(font.alpha), 8);
  if (window_ != nullptr && window_->GetBpp() != 0) Convert(window_->GetBpp());
  kerning_ = std::move(font.kerning);
  left_ = std::move(font.left);
  letterCount_ = static_cast<int>(font.letters.size());
  if (letterCount_ == 0) return;
  cell_ = width_ / letterCount_;
  cellColors_.assign(font.letters.size(), kFileColor);
  rows_.assign(font.letters.size(), {0, static_cast<std::int16_t>(height_)});
  for (std::size_t i = 0; i < font.letters.size(); ++i) {
    widths_.push_back(static_cast<std::int16_t>(std::max(0, cell_ - left_[i] - font.right[i])));
    std::int16_t& index = index_[font.letters[i]];
    if (index == kNoLetter) index = static_cast<std::int16_t>(i);  // of equal letters the first counts
    findRows(static_cast<int>(i));
  }
}

namespace {

FontLetter letterOf(CFrame& frame, char letter) {
  constexpr int kBpp = 16;
  frame.expand();
  frame.Convert(kBpp);
  FontLetter taken{static_cast<std::uint8_t>(letter), frame.Size(), {}, {}};
  const auto count = static_cast<std::size_t>(frame.Width()) * static_cast<std::size_t>(frame.Height());
  const auto colour = frame.GetDataPtr();
  const auto alpha = frame.AlphaChannel().bytes();
  for (std::size_t i = 0; i < std::min(count, colour.size() / 2); ++i)
    taken.pixels.push_back(reinterpret_cast<const std::uint16_t*>(colour.data())[i]);
  for (std::size_t i = 0; i < count; ++i)
    taken.alpha.push_back(alpha.empty()      ? 255
                          : i < alpha.size() ? std::to_integer<std::uint8_t>(alpha[i])
                                             : 0);
  return taken;
}

int writeFile(CWindow* window, const CXString& name, std::span<const std::byte> bytes) {
  CFile file(window, name, CFile::kWriteBinary);
  const int size = static_cast<int>(bytes.size());
  const bool isWritten = file.Write(bytes.data(), size) == size && file.Close() == 0;
  return isWritten ? 0 : CFile::kNotFound;
}

}  // namespace

int CSimpleFont6::create(const CXString& animationFile, const CXString& fontFile) {
  const Owned<CAnimo> animo(new CAnimo(window_, animationFile));
  if (animo->LastError() != 0) return animo->LastError();
  std::vector<FontLetter> letters;
  for (int i = 0; i < std::min(animo->GetNOF(), FntFont::kMostLetters + 1); ++i)
    letters.push_back(letterOf(*animo->GetFrame(i), animo->getFrameName(0, i).GetAt(0)));
  const std::optional<FntFont> font = makeFont(std::move(letters));
  return font ? writeFile(window_, fontFile, writeFnt(*font)) : CFile::kNotFound;
}

void CSimpleFont6::flush() {
  Flush();
  setSize(CXSize());
  kerning_.clear();
  left_.clear();
  widths_.clear();
  rows_.clear();
  cellColors_.clear();
  index_.fill(kNoLetter);
  letterCount_ = 0;
  cell_ = 0;
}

// The rows between which all of a letter lies.
void CSimpleFont6::findRows(int index) {
  const CXRect columns = glyphColumns(index);
  const auto isClear = [&](int row) {
    const std::byte* alpha = alpha_.bytes().data() + std::ptrdiff_t{row} * width_;
    return std::all_of(alpha + columns.left, alpha + columns.right,
                       [](std::byte a) { return a == std::byte{0}; });
  };
  auto& [top, bottom] = rows_[static_cast<std::size_t>(index)];
  while (top < bottom && isClear(top)) ++top;
  while (bottom > top && isClear(bottom - 1)) --bottom;
}

// Letters

int CSimpleFont6::indexOf(char letter) const {
  return index_[static_cast<unsigned char>(glyphLetter(letter))];
}

CXRect CSimpleFont6::glyphColumns(int index) const {
  const auto at = static_cast<std::size_t>(index);
  const int cell = index * cell_;
  const int left = std::clamp(glyphX(index), cell, cell + cell_);
  return {left, rows_[at].top, std::clamp(glyphX(index) + widths_[at], left, cell + cell_), rows_[at].bottom};
}

int CSimpleFont6::kerningOf(char previous, int index) const {
  const int before = previous == 0 || previous == ' ' ? kNoLetter : indexOf(previous);
  return getKerning(before, index);
}

int CSimpleFont6::getKerning(int first, int second) const {
  const bool areLetters = first >= 0 && first < letterCount_ && second >= 0 && second < letterCount_;
  return areLetters
             ? kerning_[static_cast<std::size_t>(first) * left_.size() + static_cast<std::size_t>(second)]
             : 0;
}

CSimpleFont6::Place CSimpleFont6::placeOf(char previous, char letter) const {
  const auto widthOf = [&](int index) {
    return index != kNoLetter ? widths_[static_cast<std::size_t>(index)] : 0;
  };
  if (letter == ' ') return {kNoLetter, 0, widthOf(indexOf(kBlankGlyph)) + kLetterGap};
  if (letter == '~') return {kNoLetter, 0, kTildeWidth + kLetterGap};
  const int index = letter != 0 ? indexOf(letter) : kNoLetter;
  const int kerning = kerningOf(previous, index);
  return {index, kerning, widthOf(index) - kerning + kLetterGap};
}

int CSimpleFont6::getRealLetterWidth(char letter) const { return CSimpleFont6::getLetterWidth(0, letter); }

int CSimpleFont6::getLetterWidth(char previous, char letter) const {
  return placeOf(previous, letter).advance - kLetterGap;
}

// Drawing

int CSimpleFont6::drawLetter(int x, int y, char previous, char letter) {
  const Place place = placeOf(previous, letter);
  CGraphicsObject* target = getDestiny();
  if (target == nullptr || place.index == kNoLetter) return place.advance;
  const CXPoint strip(wrap_sub(wrap_sub(x, place.kerning), glyphX(place.index)), y);
  const CXRect all(0, 0, target->Width(), target->Height());
  TextPainter painter(*target, clippingRect_.IsEmpty() ? all : clippingRect_ + strip, opacity_);
  return painter.draw(*this, TextPainter::kFontsColors, x, y, previous, letter);
}

void CSimpleFont6::SetClippingRect(char letter, CXRect rect) {
  const int index = indexOf(letter);
  const bool isShifted = !rect.IsEmpty() && index != kNoLetter;
  SetClippingRect(isShifted ? rect + CXPoint(glyphX(index), 0) : rect);
}

void CSimpleFont6::setColor(int colour) {
  color_ = colour & 0xFFFF;
  isColored_ = true;
}

void CSimpleFont6::setDefColor(int colour) {
  defColor_ = colour & 0xFFFF;
  hasDefColor_ = true;
}

std::span<std::byte> CSimpleFont6::GetDataPtr() {
  for (int i = 0; i < letterCount_; ++i) colorCell(i);
  return CGraphicsObject::GetDataPtr();
}

// Cells take the colour when it is needed, so that changing it costs nothing.
void CSimpleFont6::colorCell(int index) {
  int& held = cellColors_[static_cast<std::size_t>(index)];
  if (!isColored_ || held == color_) return;
  held = color_;
  auto* pixels = reinterpret_cast<std::uint16_t*>(data_.bytes().data()) + std::ptrdiff_t{index} * cell_;
  for (int row = 0; row < height_; ++row)
    std::fill_n(pixels + std::ptrdiff_t{row} * width_, cell_, static_cast<std::uint16_t>(color_));
}

void CSimpleFont6::convertFor(int bpp) {
  const int before = getBpp();
  Convert(bpp);
  if (getBpp() != before) std::ranges::fill(cellColors_, kFileColor);  // their colour was changed too
}

}  // namespace footlight
