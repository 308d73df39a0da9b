#include "objects/data/mc_quene.h"

#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "script/mc_expression.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight {

CMC_Quene::CMC_Quene(CMC_ObjectsContainer* container, const CMElement* element, int type)
    : CMC_Object(container, element, type) {
  initializeBehaviours(container, element);
}

CMC_Quene::CMC_Quene(const CMC_Quene& other) : CMC_Object(other) {
  items_.reserve(other.items_.size());
  for (const ArrayValue& item : other.items_) items_.add(ArrayValue(*item.variable()));
}

std::unique_ptr<CMC_Object> CMC_Quene::copy() const {
  return std::unique_ptr<CMC_Object>(new CMC_Quene(*this));
}

bool CMC_Quene::hasRoom(std::span<const Ref<CMC_Variable>> values) const {
  std::int64_t bytes = 0;
  for (const Ref<CMC_Variable>& value : values) {
    bytes += std::int64_t{sizeof(ArrayValue)};
    if (value->getType() == type::kString) bytes += value->asText().Length();
  }
  if (size() + std::ssize(values) > limits::kArrayElements) {
    limitHit("elements of a queue");
    return false;
  }
  return memory::hasRoom(bytes);
}

void CMC_Quene::push(std::span<const Ref<CMC_Variable>> values) {
  if (!hasRoom(values)) return;
  for (const Ref<CMC_Variable>& value : values) items_.add(ArrayValue(*value));
}

Value CMC_Quene::pop() {
  if (items_.empty()) {
    raise(QueneSignal::onEmpty);
    return {};
  }
  const std::size_t place = getType() == type::kFifo ? 0 : items_.size() - 1;
  Value next = items_[place].get();
  items_.erase(place);
  return next;
}

namespace {

using Factory = CMC_VariableFactory;

Result push(CMC_Quene& quene, Call& call) {
  std::vector<Ref<CMC_Variable>> values;
  for (int i = 0; i < call.count(); ++i) {
    if (Ref<CMC_Variable> value = asVariable(call.object(i))) values.push_back(std::move(value));
  }
  quene.push(values);
  return {};
}

Result pop(CMC_Quene& quene, Call& /*call*/) {
  Value next = quene.pop();
  return !next.isNone() ? next : Value(Factory::makeString("NULL"));
}

Result getSize(CMC_Quene& quene, Call& /*call*/) { return Number(quene.size()); }
Result isEmpty(CMC_Quene& quene, Call& /*call*/) { return Factory::makeBool(quene.size() == 0); }

template <int type>
CMC_Object* makeQuene(CMC_ObjectsContainer* container, const CMElement* element) {
  return new CMC_Quene(container, element, type);
}

constexpr auto kSignals = signalTable<QueneSignal>({
    {QueneSignal::onEmpty, "ONEMPTY", "POP found nothing."},
});

constexpr Method kMethods[] = {
    {1, "PUSH", "[value:value...]", method<push>, "Puts a copy of each value in, in their order."},
    {2, "POP", "-> value", method<pop>, "Takes the next value out; \"NULL\" when there is none."},
    {3, "GETSIZE", "-> int", method<getSize>, "How many values there are."},
    {4, "ISEMPTY", "-> bool", method<isEmpty>, "Whether there is none."},
};

}  // namespace

extern constinit const ScriptType kFifoType = {
    .number = type::kFifo,
    .idWord = "FIFO",
    .definitionWord = "FIFO",
    .meaning = "A queue: the value that came first goes first.",
    .pass = 6,
    .signals = kSignals,
    .methods = kMethods,
    .make = makeQuene<type::kFifo>,
};

extern constinit const ScriptType kLifoType = {
    .number = type::kLifo,
    .idWord = "LIFO",
    .definitionWord = "LIFO",
    .meaning = "A stack: the value that came last goes first.",
    .pass = 6,
    .signals = kSignals,
    .methods = kMethods,
    .make = makeQuene<type::kLifo>,
};

}  // namespace footlight
