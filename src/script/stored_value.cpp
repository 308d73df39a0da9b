#include "script/stored_value.h"

#include "files/archive.h"
#include "script/mc_variable_factory.h"

namespace footlight {

namespace {

CXString readText(ByteReader& in) {
  const std::int32_t length = in.i32();
  const auto bytes = in.bytes(length > 0 ? static_cast<std::uint64_t>(length) : 0);
  return CXString(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

}  // namespace

void store(ByteWriter& out, CMC_Variable& value) {
  if (!CMC_Variable::isValueType(value.getType())) return;
  out.i32(value.getType());
  if (value.getType() == type::kString) {
    const CXString text = value.asText();
    out.i32(text.Length()).text(text);
  } else if (value.getType() == type::kDouble) {
    out.i32(CXArchive::toThousandths(value.asDouble()));
  } else {
    out.i32(value.asInteger());
  }
}

Ref<CMC_Variable> restore(ByteReader& in) {
  switch (in.i32()) {
    case type::kInteger:
      return CMC_VariableFactory::makeInteger(in.i32());
    case type::kString:
      return CMC_VariableFactory::makeString(readText(in));
    case type::kBool:
      return CMC_VariableFactory::makeBool(in.i32() != 0);
    case type::kDouble:
      return CMC_VariableFactory::makeDouble(CXArchive::fromThousandths(in.i32()));
    default:
      return nullptr;
  }
}

}  // namespace footlight
