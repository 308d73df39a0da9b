// Scripts' methods of FONT.

#include "objects/text/mc_font.h"
#include "script/mc_runner.h"

namespace footlight {

extern constinit const ScriptType kFontType = {
    .number = type::kFont,
    .idWord = "FONT",
    .stringWord = "FONT",
    .definitionWord = "FONT",
    .meaning = "The letters of texts.",
    .pass = 5,
    .signals = kSignalsOfAll,
    .make = makeFrom<CMC_Font>,
};

}  // namespace footlight
