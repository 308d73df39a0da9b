#include "script/value.h"

#include "script/mc_variable_factory.h"

namespace footlight {

void Value::becomeObject() const {
  *const_cast<Value*>(this) = kind_ == Kind::whole ? CMC_VariableFactory::makeInteger(number().whole())
                                                   : CMC_VariableFactory::makeDouble(number().real());
}

}  // namespace footlight
