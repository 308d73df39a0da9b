#include "files/file_name_resolver.h"

#include "foundation/string_tokenizer.h"

namespace footlight {

void CFileNameResolver::resolve() {
  directories_ = path_.toVector("\\");
  if (directories_.empty()) return;
  if (path_.GetAt(1) == ':') {
    drive_ = path_.GetAt(0);
    CXString& first = directories_.front();
    first = first.Right(2);
    if (first.IsEmpty()) directories_.erase(directories_.begin());
    if (directories_.empty()) return;
  }
  fileName_ = directories_.back();
  directories_.pop_back();
  CStringTokenizer parts(fileName_, ".");
  pureName_ = parts.nextToken();
  extension_ = parts.nextToken();
}

}  // namespace footlight
