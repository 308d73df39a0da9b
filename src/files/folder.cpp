#include "files/folder.h"

namespace footlight {

CFolder::CFolder(CWindow* window)
    : window_(window), start_(CFile::getCurrentDirectory()), current_(start_), previous_(start_) {}

CFolder::CFolder(CWindow* window, const CXString& path) : CFolder(window) { GoTo(path); }

bool CFolder::GoTo(const CXString& path) {
  if (CFile::chDir(path) != 0) return false;
  previous_ = current_;
  current_ = CFile::getCurrentDirectory();
  return true;
}

std::vector<CXString> CFolder::list(const CXString& pattern) const {
  std::vector<CXString> names;
  FileFindData data;
  const auto search = CFile::findFirst(pattern, &data);
  if (search == nullptr) return names;
  do {
    names.push_back(data.name);
  } while (CFile::findNext(*search, &data));
  return names;
}

int CFolder::GetSize(const CXString& name) const {
  return CFile::fileExists(name) ? CFile(window_, name, CFile::kReadBinary).Length() : 0;
}

CXString CFolder::GetFileName(const CXString& pattern) { return search(pattern, 0); }

CXString CFolder::GetFolderName(const CXString& pattern) { return search(pattern, FileFindData::kDirectory); }

CXString CFolder::search(const CXString& pattern, int attributes) {
  FileFindData data;
  data.attributes = attributes;
  search_ = CFile::findFirst(pattern, &data);
  return search_ != nullptr ? data.name : CXString();
}

CXString CFolder::GetNextFileName() {
  FileFindData data;
  return search_ != nullptr && CFile::findNext(*search_, &data) ? data.name : CXString();
}

}  // namespace footlight
