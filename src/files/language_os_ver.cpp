#include "files/language_os_ver.h"

#include <algorithm>
#include <iterator>

#include "files/file.h"
#include "platform/platform.h"

namespace footlight {

namespace {

constexpr CLanguageOSVer::Folder kLanguages[] = {
    {"0415", 1, "POL"}, {"0405", 2, "CZE"}, {"0402", 3, "BUL"}, {"0418", 4, "ROM"},
    {"0419", 5, "RUS"}, {"040E", 6, "HUN"}, {"041B", 7, "SLO"},
};

// Null for a code that no language has.
const CLanguageOSVer::Folder* find(const CXString& code) {
  const CXString upper = code.Upper();
  const auto* const found =
      std::find_if(std::begin(kLanguages), std::end(kLanguages),
                   [&](const CLanguageOSVer::Folder& language) { return upper == language.code; });
  return found == std::end(kLanguages) ? nullptr : found;
}

}  // namespace

std::span<const CLanguageOSVer::Folder> CLanguageOSVer::folders() { return kLanguages; }

CLanguageOSVer::CLanguageOSVer() { choose(platform::current().locale()); }

bool CLanguageOSVer::isKnown(const CXString& code) { return find(code) != nullptr; }

void CLanguageOSVer::choose(const CXString& code) {
  const Folder* found = find(code);
  if (found == nullptr) return;
  language_ = found->number;
  folder_ = found->name;
}

void CLanguageOSVer::setLanguageFolder(const CXString& code) {
  choose(code);
  if (window_ != nullptr && onLanguageChange) onLanguageChange();
}

CXString CLanguageOSVer::getLocalFileName(const CXString& path) const {
  if (folder_.IsEmpty()) return path;
  const int slash = path.FindLast('\\');
  if (slash < 0) return folder_ + "\\" + path;
  CXString local = path.Left(slash + 1) + folder_ + "\\" + path.Right(slash + 1);
  return CFile::canRead(local) ? local : path;
}

}  // namespace footlight
