#include "script/mc_variable_factory.h"

#include <algorithm>
#include <vector>

#include "foundation/byte_reader.h"
#include "foundation/limits.h"

namespace footlight {

namespace {

template <class T>
class Pool {
 public:
  void initialize() { grow(); }
  void done() { slots_.clear(); }

  Ref<T> alloc() {
    for (std::size_t tries = slots_.size(); tries > 0; --tries) {
      if (++cursor_ >= slots_.size()) cursor_ = 0;
      if (slots_[cursor_]->pins() == 0) return Ref<T>(slots_[cursor_].get());
    }
    return allocFromFull();
  }

  void clear() {
    while (slots_.size() > CMC_VariableFactory::kFirstSlots && slots_.back()->pins() == 0) slots_.pop_back();
  }

  int used() const {
    return static_cast<int>(
        std::count_if(slots_.begin(), slots_.end(), [](const auto& s) { return s->pins() > 0; }));
  }

 private:
  Ref<T> allocFromFull() {
    if (slots_.size() + CMC_VariableFactory::kFirstSlots <= limits::kPoolSlots) {
      cursor_ = slots_.size();
      grow();
      return Ref<T>(slots_[cursor_].get());
    }
    limitHit("pool of temporaries full");
    return makeRef<T>(CXString("f"), 0);
  }

  void grow() {
    const int first = static_cast<int>(slots_.size());
    for (int id = first; id < first + CMC_VariableFactory::kFirstSlots; ++id) {
      slots_.emplace_back(new T(CXString("f"), id));
    }
  }

  std::vector<Owned<T>> slots_;
  std::size_t cursor_ = 0;
};

struct Pools {
  Pool<CMC_Bool> bools;
  Pool<CMC_Double> doubles;
  Pool<CMC_Integer> integers;
  Pool<CMC_String> strings;
};

Pools pools;

template <class T, class Value>
Ref<CMC_Variable> filled(Ref<T> variable, Value value) {
  variable->put(std::move(value));
  return variable;
}

}  // namespace

void CMC_VariableFactory::initialize() {
  done();
  pools.bools.initialize();
  pools.doubles.initialize();
  pools.integers.initialize();
  pools.strings.initialize();
}

void CMC_VariableFactory::done() {
  pools.bools.done();
  pools.doubles.done();
  pools.integers.done();
  pools.strings.done();
}

Ref<CMC_Bool> CMC_VariableFactory::allocBool() { return pools.bools.alloc(); }
Ref<CMC_Double> CMC_VariableFactory::allocDouble() { return pools.doubles.alloc(); }
Ref<CMC_Integer> CMC_VariableFactory::allocInteger() { return pools.integers.alloc(); }
Ref<CMC_String> CMC_VariableFactory::allocString() { return pools.strings.alloc(); }

Ref<CMC_Variable> CMC_VariableFactory::makeBool(bool value) { return filled(allocBool(), value); }
Ref<CMC_Variable> CMC_VariableFactory::makeDouble(double value) { return filled(allocDouble(), value); }
Ref<CMC_Variable> CMC_VariableFactory::makeInteger(int value) { return filled(allocInteger(), value); }
Ref<CMC_Variable> CMC_VariableFactory::makeString(CXString value) {
  return filled(allocString(), std::move(value));
}

Ref<CMC_Variable> CMC_VariableFactory::make(int type) {
  switch (type) {
    case type::kInteger:
      return makeInteger(0);
    case type::kString:
      return makeString({});
    case type::kBool:
      return makeBool(false);
    case type::kDouble:
      return makeDouble(0.0);
    default:
      return nullptr;
  }
}

std::unique_ptr<CMC_Variable> CMC_VariableFactory::makeNamed(int type, const CXString& name) {
  switch (type) {
    case type::kInteger:
      return std::make_unique<CMC_Integer>(name, CMC_Variable::kNoPool);
    case type::kString:
      return std::make_unique<CMC_String>(name, CMC_Variable::kNoPool);
    case type::kBool:
      return std::make_unique<CMC_Bool>(name, CMC_Variable::kNoPool);
    case type::kDouble:
      return std::make_unique<CMC_Double>(name, CMC_Variable::kNoPool);
    default:
      return nullptr;
  }
}

Ref<CMC_Variable> CMC_VariableFactory::copyVariable(CMC_Variable* variable) {
  Ref<CMC_Variable> copy = variable != nullptr ? make(variable->getType()) : Ref<CMC_Variable>();
  if (copy) copy->set(variable);
  return copy;
}

void CMC_VariableFactory::clearPool() {
  pools.bools.clear();
  pools.doubles.clear();
  pools.integers.clear();
  pools.strings.clear();
}

Ref<CMC_Variable> CMC_VariableFactory::netrestore(std::span<const std::byte> record) {
  ByteReader reader(record);
  const std::int32_t type = reader.i32();
  Ref<CMC_Variable> variable = reader.ok() ? make(type) : Ref<CMC_Variable>();
  if (variable && !variable->netrestore(record.subspan(reader.position()))) return nullptr;
  return variable;
}

int CMC_VariableFactory::used() {
  return pools.bools.used() + pools.doubles.used() + pools.integers.used() + pools.strings.used();
}

}  // namespace footlight
