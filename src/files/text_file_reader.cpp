#include "files/text_file_reader.h"

#include <algorithm>

#include "files/file.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"

namespace footlight {

CTextFileReader::CTextFileReader(CWindow* window, const CXString& name) {
  load(window, name);
  text_ = content_;
}

CTextFileReader::CTextFileReader(CWindow* /*window*/, const char* data, int length) {
  if (data != nullptr && length > 0) text_ = {data, static_cast<std::size_t>(length)};
}

void CTextFileReader::load(CWindow* window, const CXString& name) {
  CFile file(window, name, CFile::kReadText);
  setErrorCode(file.LastError());
  if (file.LastError() != 0) return;
  fileName_ = file.getFileName();
  if (file.Length() > limits::kTextFileBytes) {
    guardHit("text_file.size");
    if (diagnose::isOn()) diagnose::report(diagnose::Group::limit, name, "", "the text file is too large");
    setErrorCode(CFile::kNotFound);
    return;
  }
  content_.resize(static_cast<std::size_t>(file.Length()));
  content_.resize(static_cast<std::size_t>(file.Read(content_.data(), static_cast<int>(content_.size()))));
}

std::string_view CTextFileReader::getLine() {
  const auto end = std::min(text_.find('\n', position_), text_.size());
  const std::string_view line = text_.substr(position_, end - position_);
  position_ = std::min(end + 1, text_.size());
  return line;
}

}  // namespace footlight
