#pragma once

// Values as files of scripts hold them, little-endian: the number of the type (32 bits), then for an INTEGER
// or a BOOL 32 bits, for a DOUBLE its whole thousandths in 32 bits, for a STRING its length in 32 bits
// and its characters.

#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"
#include "script/mc_variable.h"

namespace footlight {

// Nothing for what is none of the four values.
void store(ByteWriter& out, CMC_Variable& value);
// A pooled variable. Null for a number that is no type of a value, behind which nothing is read.
Ref<CMC_Variable> restore(ByteReader& in);

}  // namespace footlight
