#include "files/text_coder.h"

#include <algorithm>

#include "files/file.h"
#include "foundation/diagnose.h"

namespace footlight {

namespace {

constexpr std::string_view kCodedMark = "{<C:";
constexpr std::string_view kDecodeMark = "{<D:";
constexpr std::string_view kLineEnd = "<E>";

}  // namespace

CTextCoder::CTextCoder(CWindow* window, const CXString& fileName, bool keepQuiet)
    : fileName_(fileName),
      owned_(std::make_unique<CTextFileReader>(window, fileName)),
      reader_(owned_.get()) {
  init(window, keepQuiet);
}

CTextCoder::CTextCoder(CWindow* window, CTextFileReader* reader, bool keepQuiet) : reader_(reader) {
  init(window, keepQuiet);
}

void CTextCoder::init(CWindow* window, bool keepQuiet) {
  setErrorCode(reader_->LastError());
  if (LastError() != 0) return;
  const std::string_view first = reader_->getLine();
  const auto end = first.find('>');
  const bool wantsCopy = first.starts_with(kDecodeMark);
  if ((wantsCopy || first.starts_with(kCodedMark)) && end != std::string_view::npos) {
    setCycle(CXString(first.substr(kCodedMark.size(), end - kCodedMark.size())).toNumber());
    coded_ = cycle_ >= 1 && cycle_ <= kMostCycle;
    if (!coded_) limitHit("text_coder.cycle");
  }
  if (!coded_) {
    setCycle(1);
    reader_->reset();
  } else if (wantsCopy && !keepQuiet && fileName_.IsString()) {
    decode(window, fileName_, fileName_ + ".decoded");
  }
}

int CTextCoder::getOffset(int index) const {
  const int half = (index + 2) / 2;
  return index % 2 == 0 ? half : -half;
}

// Shifts one byte, forward to code it and back to read it, and moves the index on.
char CTextCoder::shift(char character, int direction) {
  const int value = static_cast<unsigned char>(character) + direction * getOffset(index_);
  index_ = index_ + 1 < cycle_ ? index_ + 1 : 0;
  return static_cast<char>(static_cast<unsigned char>(value & 0xFF));
}

bool CTextCoder::_eof() const { return coded_ ? finished_ : reader_->eof(); }

CXString CTextCoder::getLine() {
  if (!coded_ || lines_ % cycle_ == 0) {
    position_ = 0;
    line_ = reader_->getLine();
  }
  if (!coded_) return CXString(line_) += '\n';
  const auto end = finished_ ? std::string_view::npos : line_.find(kLineEnd, position_);
  if (end == std::string_view::npos) {
    finished_ = true;
    return "\n";
  }
  CXString text(line_.substr(position_, end - position_));
  std::for_each(text.data(), text.data() + text.Length(), [this](char& c) { c = shift(c, -1); });
  position_ = end + kLineEnd.size();
  ++lines_;
  return text += '\n';
}

CXString CTextCoder::codeLine() {
  std::string coded;
  for (int i = 0; i < cycle_ && !reader_->eof(); ++i) {
    CXString text(reader_->getLine());
    text.AllTrim();
    for (const char character : text.view()) {
      if (character != '\t') coded += shift(character, 1);
    }
    coded += kLineEnd;
    ++lines_;
  }
  if (!coded.empty()) coded += '\n';
  return coded;
}

void CTextCoder::code(CWindow* window, const CXString& from, const CXString& to, int cycle) {
  CTextCoder source(window, from, true);
  if (source.LastError() != 0 || source.isCoded() || cycle < 1 || cycle > kMostCycle) return;
  CFile target(window, to, CFile::kWriteText);
  if (target.LastError() != 0) return;
  source.setCycle(cycle);
  target.putLine(CXString::Format("{<C:%d>}\n", cycle));
  while (!source._eof()) target.putLine(source.codeLine());
}

void CTextCoder::decode(CWindow* window, const CXString& from, const CXString& to) {
  CTextCoder source(window, from, true);
  if (source.LastError() != 0 || !source.isCoded()) return;
  CFile target(window, to, CFile::kWriteText);
  if (target.LastError() != 0) return;
  while (!source._eof()) target.putLine(source.getLine());
}

}  // namespace footlight
