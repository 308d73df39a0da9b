#include "script/marked_expression.h"

#include <algorithm>

#include "script/mc_expression.h"

namespace footlight {

namespace {

// The value of one to nine digits without a needless zero in front.
std::optional<int> wholeNumber(std::string_view text) {
  constexpr std::size_t kSafeDigits = 9;
  if (text.empty() || text.size() > kSafeDigits || (text.size() > 1 && text[0] == '0')) return std::nullopt;
  int value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return value;
}

}  // namespace

std::unique_ptr<MarkedExpression> MarkedExpression::compile(const CXString& text) {
  if (!text.startsWith("[") || !text.endsWith("]")) return nullptr;
  auto made = std::make_unique<MarkedExpression>();
  std::string_view rest = text.slice(1, text.Length() - 1);
  Operation operation = Operation::none;
  for (;;) {
    const std::size_t end = rest.find_first_of("+-*@%");
    if (!made->addOperand(operation, rest.substr(0, end))) return nullptr;
    if (end == std::string_view::npos) return made;
    operation = CMC_Expression::resolveOp(rest.substr(end, 1));
    rest.remove_prefix(end + 1);
  }
}

bool MarkedExpression::addOperand(Operation operation, std::string_view text) {
  if (text.size() == 2 && text[0] == '$' && text[1] >= '1' && text[1] <= '9') {
    items_.push_back({operation, text[1] - '1', 0});
    return true;
  }
  const std::optional<int> value = wholeNumber(text);
  if (value) items_.push_back({operation, -1, *value});
  return value.has_value();
}

std::optional<int> MarkedExpression::calculate(const TextList* arguments) const {
  int result = 0;
  for (const Item& item : items_) {
    std::optional<int> value = item.value;
    if (item.mark >= 0) {
      const auto index = static_cast<std::size_t>(item.mark);
      const bool isThere = arguments != nullptr && index < arguments->size();
      value = isThere ? wholeNumber((*arguments)[index]) : std::nullopt;
    }
    if (!value) return std::nullopt;
    result = item.operation == Operation::none ? *value : CMC_Integer::apply(result, item.operation, *value);
  }
  return result;
}

}  // namespace footlight
