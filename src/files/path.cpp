#include "files/path.h"

#include "files/file.h"
#include "files/file_places.h"

namespace footlight {

namespace {

CXString resolve(const CXString& name, const CXString& root) {
  const bool isRooted = name.GetAt(0) == '$' || name.GetAt(0) == '&';
  CXString result = isRooted ? root + name.Right(1) : name;
  if (result.Find('?') < 0) return result;
  CXString below = CFile::getCurrentDirectory();
  bool isFirst = true;
  for (const CXString& part : result.toVector("?")) {
    if (!isFirst) below += '\\';
    below += part;
    isFirst = false;
  }
  return below;
}

}  // namespace

CPath::CPath(CWindow* window) : window_(window), path_(CFile::getCurrentDirectory()) {}

CPath::CPath(CWindow* window, CXString path) : window_(window), path_(std::move(path)) {
  const int point = path_.FindLast('.');
  if (point > path_.FindLast('\\')) SetExtension(path_.Right(point + 1));
}

CXString CPath::getFullPath(const CXString& dir, const CXString& name) {
  return dir.lastChar() == '\\' ? dir + name : dir + "\\" + name;
}

CXString CPath::getFullPath(const CXString& dir, const CXString& folder, const CXString& name) {
  CXString result = dir + "\\";
  if (folder.IsString()) result += folder + "\\";
  return result + name;
}

CXString CPath::resolveFileName(CWindow* /*window*/, const CXString& name) {
  const CFilePlaces* places = CFilePlaces::current();
  return resolve(name, places != nullptr ? places->dataRoot() : CXString());
}

CXString CPath::resolveFileNameEx(CWindow* /*window*/, const CXString& name) {
  const CFilePlaces* places = CFilePlaces::current();
  return resolve(name, places != nullptr ? places->rootPath() : CXString());
}

}  // namespace footlight
