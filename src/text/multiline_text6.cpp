#include "text/multiline_text6.h"

namespace footlight {

void CMultilineText6::flush() { layout_ = {}; }
void CMultilineText6::setText(const CXString& text) { CText6::setText(text); }
int CMultilineText6::Load(const CXString& /*name*/) { return LastError(); }
TextLayout CMultilineText6::layOut(CFontCollection* /*fonts*/) const { return {}; }

}  // namespace footlight
