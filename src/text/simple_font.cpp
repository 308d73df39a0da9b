#include "text/simple_font.h"

#include "text/fnt_format.h"

namespace footlight {

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

int CSimpleFont6::Load(const CXString& /*name*/) { return LastError(); }
int CSimpleFont6::Load(CFile* /*file*/) { return LastError(); }
void CSimpleFont6::flush() { Flush(); }
int CSimpleFont6::drawLetter(int /*x*/, int /*y*/, char /*previous*/, char /*letter*/) { return 0; }
int CSimpleFont6::getLetterWidth(char /*previous*/, char /*letter*/) const { return 0; }
int CSimpleFont6::getRealLetterWidth(char /*letter*/) const { return 0; }
void CSimpleFont6::SetClippingRect(char /*letter*/, CXRect rect) { SetClippingRect(rect); }
void CSimpleFont6::setColor(int colour) { color_ = colour; }
void CSimpleFont6::setDefColor(int colour) {
  defColor_ = colour;
  hasDefColor_ = true;
}
int CSimpleFont6::getKerning(int /*first*/, int /*second*/) const { return 0; }
std::span<std::byte> CSimpleFont6::GetDataPtr() { return CGraphicsObject::GetDataPtr(); }

}  // namespace footlight
