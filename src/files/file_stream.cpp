#include "files/file_stream.h"

#include <algorithm>
#include <cstring>

namespace footlight {

int CFile_Stream::Open(CWindow* /*window*/, const CXString& /*name*/, int /*mode*/) { return kNotFound; }

int CFile_Stream::Write(const void* /*source*/, int /*count*/) { return 0; }

void CFile_Stream::putLine(const CXString& /*text*/) {}

int CFile_Stream::Seek(int offset, int origin) {
  const std::int64_t wanted = origin == 0 ? offset : origin == 1 ? std::int64_t{position_} + offset : length_;
  if (wanted < 0 || wanted > length_) return -1;
  position_ = static_cast<int>(wanted);
  return 0;
}

int CFile_Stream::Read(void* target, int count) {
  const int got = std::clamp(count, 0, length_ - position_);
  if (got > 0) std::memcpy(target, data_ + position_, static_cast<std::size_t>(got));
  position_ += got;
  return got;
}

std::string_view CFile_Stream::takeLine(int limit) {
  const std::string_view rest(data_ + position_,
                              static_cast<std::size_t>(std::min(length_ - position_, limit)));
  const auto end = rest.find('\n');
  const std::string_view line = rest.substr(0, end == std::string_view::npos ? end : end + 1);
  position_ += static_cast<int>(line.size());
  return line;
}

bool CFile_Stream::GetLine(char* target, int size) {
  if (size <= 0) return false;
  const std::string_view line = takeLine(size - 1);
  std::copy(line.begin(), line.end(), target);
  target[line.size()] = '\0';
  return !line.empty();
}

CXString CFile_Stream::getLine() { return takeLine(kLineBytes); }

}  // namespace footlight
