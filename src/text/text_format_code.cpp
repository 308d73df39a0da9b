#include "text/text_format_code.h"

namespace footlight {

namespace {

CXString pieceAt(const std::vector<CXString>& pieces, std::size_t index) {
  return index < pieces.size() ? pieces[index] : CXString();
}

}  // namespace

CTextFormatCode::CTextFormatCode(_formatCode type, int bitsPerPixel, const CXString& code) : type_(type) {
  const std::vector<CXString> pieces = code.toVector(",");
  if (type == _formatCode::editBox) {
    width_ = pieceAt(pieces, 1).toNumber();
    name_ = pieceAt(pieces, 2);
    text_ = pieceAt(pieces, 3);
    return;
  }
  text_ = code;
  if (type != _formatCode::color) return;
  color_ = code.Find(',') < 0 ? code.toNumber() & kPixelBits
                              : packColor(bitsPerPixel, pieceAt(pieces, 0).toNumber(),
                                          pieceAt(pieces, 1).toNumber(), pieceAt(pieces, 2).toNumber());
}

}  // namespace footlight
