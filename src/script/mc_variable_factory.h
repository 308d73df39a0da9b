#pragma once

// The pools of temporaries, one for each value type. A slot is in use while a Ref holds its variable;
// allocation walks round the pool to the next free slot, so a value that was given back stays readable for
// a whole round. A full pool grows; past the limit of slots a spare variable is handed out that dies with
// its last Ref.

#include <cstddef>
#include <span>

#include "foundation/limits.h"
#include "script/mc_variable.h"

namespace footlight {

class CMC_VariableFactory {
 public:
  static constexpr int kFirstSlots =
      limits::usualOrSmall(500, 16);  // of each pool; a full one grows by as many

  static void initialize();
  static void done();

  // A free variable that keeps whatever value it last had; callers set it.
  static Ref<CMC_Bool> allocBool();
  static Ref<CMC_Double> allocDouble();
  static Ref<CMC_Integer> allocInteger();
  static Ref<CMC_String> allocString();
  // The same with a value.
  static Ref<CMC_Variable> makeBool(bool value);
  static Ref<CMC_Variable> makeDouble(double value);
  static Ref<CMC_Variable> makeInteger(int value);
  static Ref<CMC_Variable> makeString(CXString value);
  // A pooled variable of one of the four value types with its zero value; null for another type.
  static Ref<CMC_Variable> make(int type);
  // A named variable that belongs to the caller, for one of the four value types; null for another type.
  static std::unique_ptr<CMC_Variable> makeNamed(int type, const CXString& name);
  // A pooled variable with the value of the given one; null for null and for other types.
  static Ref<CMC_Variable> copyVariable(CMC_Variable* variable);
  // Frame end: pools that grew go back to their first size where nothing is in use.
  static void clearPool();
  // Reads a network record: type number, then the value. Null for an unknown type or a short record.
  static Ref<CMC_Variable> netrestore(std::span<const std::byte> record);
  // Slots in use over all pools.
  static int used();
};

}  // namespace footlight
