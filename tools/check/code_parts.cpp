#include "code_parts.h"

namespace footlight::check {

bool isInlineBinding(const CMProperty& property) {
  CXString value = property.getValue();
  return property.getName().starts_with("ON") && value.AllTrim().startsWith("{");
}

void eachCodePart(const CMElements& elements, const std::function<void(const CodePart&)>& function) {
  for (const CMElement* element : elements) {
    const CXString type = element->getPropertyValue("TYPE");
    const bool hasOperands = type == "CONDITION" || type == "EXPRESSION";
    for (const CMProperty* property : element->properties()) {
      const std::string_view name = property->getName();
      const bool isOperand = hasOperands && (name == "OPERAND1" || name == "OPERAND2");
      const bool isCode = type == "BEHAVIOUR" && name == "CODE";
      if (isOperand || isCode || isInlineBinding(*property)) function({*element, *property, isOperand});
    }
  }
}

}  // namespace footlight::check
