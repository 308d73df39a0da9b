#include "script/marked_expression.h"

#include <limits>
#include <optional>

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

constexpr bool isMark(std::string_view text) {
  return text.size() == 2 && text[0] == '$' && text[1] >= '1' && text[1] <= '9';
}

// The number of an argument. A minus sign leaves it one at the start of the whole only, where it takes the
// number from 0.
std::optional<int> numberOf(const ArgumentText& argument, bool isFirst) {
  if (!argument.isWhole()) return wholeNumber(argument.text());
  const bool isPlain =
      argument.whole() >= 0 || (isFirst && argument.whole() != std::numeric_limits<int>::min());
  return isPlain ? std::optional<int>(argument.whole()) : std::nullopt;
}

}  // namespace

std::unique_ptr<MarkedExpression> MarkedExpression::compile(const CXString& text) {
  const bool isBracketed = text.startsWith("[") && text.endsWith("]");
  if (!isBracketed && !isMark(text)) return nullptr;
  auto made = std::make_unique<MarkedExpression>();
  std::string_view rest = isBracketed ? text.slice(1, text.Length() - 1) : text.view();
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
  if (isMark(text)) {
    items_.push_back({operation, text[1] - '1', 0});
    return true;
  }
  const std::optional<int> value = wholeNumber(text);
  if (value) items_.push_back({operation, -1, *value});
  return value.has_value();
}

Number MarkedExpression::calculate(const TextList* arguments) const {
  int result = 0;
  for (const Item& item : items_) {
    const bool isFirst = &item == items_.data();
    int value = item.value;
    if (item.mark >= 0) {
      const auto index = static_cast<std::size_t>(item.mark);
      if (arguments == nullptr || index >= arguments->size()) return {};
      const std::optional<int> given = numberOf((*arguments)[index], isFirst);
      if (!given) return {};
      value = *given;
    }
    result = isFirst ? value : CMC_Integer::apply(result, item.operation, value);
  }
  return Number(result);
}

}  // namespace footlight
