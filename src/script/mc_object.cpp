#include "script/mc_object.h"

#include <algorithm>

#include "files/archive.h"
#include "foundation/limits.h"
#include "script/mc_behaviour.h"
#include "script/mc_class.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/melement.h"
#include "script/watchdog.h"

namespace footlight {

CMC_Object::CMC_Object(CMC_ObjectsContainer* container, const CMElement* element, int type)
    : name_(element->getName()), type_(type), origin_(element->origin()), scene_(container) {}

CMC_Object::CMC_Object(CXString name, int type) : name_(std::move(name)), type_(type) {}

CMC_Object::CMC_Object(const CMC_Object& other)
    : CXObject(other), name_(other.name_), type_(other.type_), origin_(other.origin_) {}

CMC_Object::~CMC_Object() = default;

void CMC_Object::init() {
  if (isSignalBound(kOnInit)) onSignal("ONINIT");
}

bool CMC_Object::done(bool /*keep*/) {
  if (isSignalBound(kOnDone)) onSignal("ONDONE");
  return true;
}

void CMC_Object::setScene(CMC_ObjectsContainer* scene) { scene_ = WeakRef<CMC_ObjectsContainer>(scene); }

CMC_ObjectsContainer* CMC_Object::getScene() const { return scene_.get(); }

CMC_Class* CMC_Object::getClass() const { return ownerClass_.get(); }

void CMC_Object::setClass(CMC_Class* ownerClass) { ownerClass_ = WeakRef<CMC_Class>(ownerClass); }

int CMC_Object::getCloneIdx() const {
  const int bar = name_.FindLast('_');
  return bar <= 0 || bar == name_.Length() - 1 ? 0 : name_.Right(bar + 1).toNumber();
}

CXString CMC_Object::getCloneName() {
  ++clonesNo_;
  CXString name = name_ + "_";
  name += clonesNo_;
  return name;
}

void CMC_Object::clone(int count) {
  if (count > limits::kClonesByOneCall) {
    limitHit("clones by one call");
    return;
  }
  const Ref<CMC_Object> self(this);
  for (int i = 0; i < count && !isDisposed() && watchdog::mayContinue(); ++i) {
    std::unique_ptr<CMC_Object> target = copy();
    if (!target) {
      if (diagnose::isOn()) diagnose::reportCall(diagnose::Group::object, name_.str() + " cannot be cloned");
      return;
    }
    clone(std::move(target));
  }
}

void CMC_Object::clone(std::unique_ptr<CMC_Object> target) {
  target->isClone_ = true;
  target->scene_ = scene_;
  target->name_ = getCloneName();
  target->signalFlags_ = signalFlags_;
  if (bindings_ != nullptr) {
    for (const auto& [signal, list] : *bindings_) {
      if (signal == "ONINIT") continue;
      if (!target->bindings_) target->bindings_ = std::make_unique<BindingTable>();
      BindingList& copied = (*target->bindings_)[signal];
      for (const auto& binding : list) copied.push_back(std::make_shared<SignalBinding>(*binding));
    }
  }
  if (CMC_ObjectsContainer* scene = getScene()) scene->addObject(target.release());
}

int CMC_Object::getBehaviourIndex(std::string_view name) const {
  const auto signals = getBehavioursList();
  const auto found = std::find_if(signals.begin(), signals.end(),
                                  [name](const Signal& s) { return name.starts_with(s.name); });
  return found == signals.end() ? -1 : static_cast<int>(found - signals.begin());
}

int CMC_Object::getSignalIndex(std::string_view name) const {
  name = name.substr(0, name.find('^'));
  const auto signals = getBehavioursList();
  const auto found =
      std::find_if(signals.begin(), signals.end(), [name](const Signal& s) { return name == s.name; });
  return found == signals.end() ? -1 : static_cast<int>(found - signals.begin());
}

std::span<const Signal> CMC_Object::getBehavioursList() const {
  const ScriptType* type = findType(type_);
  return type != nullptr ? type->signals : std::span<const Signal>();
}

CMC_Runner* CMC_Object::getRunner() const { return CMC_RunnerFactory::getRunner(type_); }

bool CMC_Object::verifyBehaviour(const CXString& /*signal*/) { return true; }

CXString CMC_Object::typeToString(int type) {
  const ScriptType* found = findType(type);
  return found != nullptr && found->stringWord != nullptr ? CXString(found->stringWord)
                                                          : CXString::toString(type);
}

void CMC_Object::initializeBehaviours(CMC_ObjectsContainer* container, const CMElement* element) {
  tmpBehList_.clear();
  const auto signals = getBehavioursList();
  if (signals.empty()) return;
  if (element == nullptr) {
    rebind(container);
    return;
  }
  if (container == nullptr) return;
  for (const CMProperty* property : element->properties()) {
    const std::string_view name = property->getName();
    if (property->getValue().empty()) continue;
    for (std::size_t i = 0; i < signals.size(); ++i) {
      if (!name.starts_with(signals[i].name)) continue;
      if (bindProperty(container, name, property->getValue(), property->origin()))
        setSignalFlag(static_cast<int>(i));
    }
  }
}

void CMC_Object::setFlagsOf(std::string_view property) {
  const auto signals = getBehavioursList();
  for (std::size_t i = 0; i < signals.size(); ++i) {
    if (property.starts_with(signals[i].name)) setSignalFlag(static_cast<int>(i));
  }
}

bool CMC_Object::bindProperty(CMC_ObjectsContainer* container, const CXString& property, CXString value,
                              Origin origin) {
  value.AllTrim();
  if (value.startsWith("{")) {
    const Ref<CMC_Behaviour> made = makeInlineBehaviour(container, property, value, origin);
    if (made->isDisposed()) return false;  // the container is full
    addBehaviour(property, made.get(), nullptr, container);
    return true;
  }
  CXString name = value;
  std::shared_ptr<const TextList> arguments;
  if (const int open = value.Find('('); open >= 0) {
    name = value.Left(open).AllTrim();
    const int close = value.Find(')');
    CXString inside = value.Mid(open + 1, close < 0 ? value.Length() : close).AllTrim();
    const std::vector<CXString> pieces = inside.toVector();
    arguments = std::make_shared<TextList>(pieces.begin(), pieces.end());
  }
  CMC_Behaviour* behaviour = container->find<CMC_Behaviour>(name);
  if (behaviour != nullptr) {
    addBehaviour(property, behaviour, std::move(arguments), container);
  } else if (diagnose::isOn()) {
    const bool isOther = container->getObject(name) != nullptr;
    diagnose::report(diagnose::Group::behaviour, name_, property,
                     isOther ? name.str() + " is no BEHAVIOUR" : "no behaviour of the name " + name.str(),
                     origin);
  }
  return behaviour != nullptr;
}

Ref<CMC_Behaviour> CMC_Object::makeInlineBehaviour(CMC_ObjectsContainer* container, const CXString& property,
                                                   const CXString& code, Origin origin) {
  CXString name = CMC_Behaviour::kInlinePrefix;
  if (container->getType() == type::kClass) name += container->getName() + "_";
  name += name_ + "_" + property;
  Ref<CMC_Behaviour> made(new CMC_Behaviour(container, name, code, origin));
  made->init();
  tmpBehList_.emplace_back(made.get());
  container->addObject(made.get());
  return made;
}

void CMC_Object::rebind(CMC_ObjectsContainer* container) {
  if (bindings_ == nullptr || container == nullptr) return;
  for (auto& [signal, list] : *bindings_) {
    for (const auto& binding : list) {
      CMC_Behaviour* bound = binding->behaviour.get();
      CMC_Behaviour* found = bound != nullptr ? container->find<CMC_Behaviour>(bound->getName()) : nullptr;
      const int index = getBehaviourIndex(signal);
      if (index < 0 || found == nullptr) continue;
      binding->behaviour = WeakRef<CMC_Behaviour>(found);
      setSignalFlag(index);
    }
  }
}

void CMC_Object::addBehaviour(const CXString& signal, CMC_Behaviour* behaviour,
                              std::shared_ptr<const TextList> arguments, CMC_ObjectsContainer* container) {
  if (behaviour == nullptr || !verifyBehaviour(signal)) return;
  if (diagnose::isOn() && getSignalIndex(plainSignal(type_, signal)) < 0 && !signal.startsWith("@"))
    diagnose::report(diagnose::Group::behaviour, name_, signal, "nobody raises such a signal");
  if (bindings_ == nullptr) bindings_ = std::make_unique<BindingTable>();
  if (overrideSignals_) removeBehaviourForce(signal);
  setSignalFlag(getSignalIndex(signal));
  auto binding = std::make_shared<SignalBinding>();
  binding->behaviour = WeakRef<CMC_Behaviour>(behaviour);
  binding->arguments = std::move(arguments);
  binding->container = WeakRef<CMC_ObjectsContainer>(container);
  (*bindings_)[signal.str()].push_back(std::move(binding));
}

template <class Predicate>
void CMC_Object::removeBindings(std::string_view signal, Predicate goes) {
  if (bindings_ == nullptr) return;
  const auto found = bindings_->find(signal);
  if (found == bindings_->end()) return;
  std::erase_if(found->second, [&](const std::shared_ptr<SignalBinding>& binding) {
    binding->removed = goes(*binding);
    return binding->removed;
  });
  if (found->second.empty()) bindings_->erase(found);
}

void CMC_Object::removeBehaviour(const CXString& signal, const CMC_ObjectsContainer* container) {
  removeBindings(signal, [container](const SignalBinding& b) { return b.container.get() == container; });
}

void CMC_Object::removeBehaviourForce(const CXString& signal) {
  removeBindings(signal, [](const SignalBinding&) { return true; });
}

void CMC_Object::removeAllBehaviours() {
  if (bindings_ == nullptr) return;
  for (auto& [signal, list] : *bindings_) {
    for (const auto& binding : list) binding->removed = true;
  }
  bindings_.reset();
}

const BindingList* CMC_Object::getBehaviour(std::string_view signal) const {
  if (bindings_ == nullptr) return nullptr;
  const auto found = bindings_->find(signal);
  return found == bindings_->end() ? nullptr : &found->second;
}

std::vector<std::string_view> CMC_Object::boundSignals() const {
  std::vector<std::string_view> names;
  if (bindings_ == nullptr) return names;
  for (const auto& [signal, list] : *bindings_) names.emplace_back(signal);
  std::sort(names.begin(), names.end());
  return names;
}

std::shared_ptr<SignalBinding> CMC_Object::getSingleBehaviour(std::string_view signal, int index) const {
  const BindingList* list = getBehaviour(signal);
  return list == nullptr || index < 0 || index >= static_cast<int>(list->size())
             ? nullptr
             : (*list)[static_cast<std::size_t>(index)];
}

bool CMC_Object::onSignal(const CXString& name, const TextList& arguments) {
  return deliver(name, &arguments);
}

bool CMC_Object::onSignal(const CXString& name) { return deliver(name, nullptr); }

const char* CMC_Object::signalName(SignalIndex signal) const {
  return getBehavioursList()[static_cast<std::size_t>(signal.value)].name;
}

bool CMC_Object::raise(SignalIndex signal) { return isSignalBound(signal) && onSignal(signalName(signal)); }

bool CMC_Object::raise(SignalIndex signal, const CXString& detail) {
  if (!isSignalBound(signal)) return false;
  const Ref<CMC_Object> self(this);
  const CXString name = signalName(signal);
  return onSignal(name + "^" + detail) || onSignal(name);
}

// Delivers from a snapshot, so that handlers may change the bindings: one that is removed in the pass
// no longer runs.
bool CMC_Object::deliver(const CXString& name, const TextList* arguments) {
  const BindingList* bound = isDisposed() ? nullptr : getBehaviour(name);
  if (bound == nullptr) return false;
  const Ref<CMC_Object> self(this);
  BindingList snapshot = *bound;
  std::erase_if(snapshot, [](const auto& binding) { return !binding->behaviour; });
  if (snapshot.empty()) return false;  // a behaviour that has gone is no binding
  const auto runOne = [this](const SignalBinding& binding, const TextList* given) {
    const Ref<CMC_Behaviour> behaviour(binding.removed || isDisposed() ? nullptr : binding.behaviour.get());
    if (behaviour) behaviour->run(this, given, true);
  };
  if (arguments == nullptr) {
    for (const auto& binding : snapshot) runOne(*binding, binding->arguments.get());
    return true;
  }
  for (const auto& replaced : snapshot) {
    for (const auto& binding : snapshot) {
      runOne(*binding, binding == replaced ? arguments : binding->arguments.get());
    }
  }
  return true;
}

void CMC_Object::onSceneDone(const CMC_ObjectsContainer* container) {
  if (bindings_ == nullptr) return;
  for (auto entry = bindings_->begin(); entry != bindings_->end();) {
    std::erase_if(entry->second, [container](const std::shared_ptr<SignalBinding>& binding) {
      binding->removed = binding->container.get() == container;
      return binding->removed;
    });
    entry = entry->second.empty() ? bindings_->erase(entry) : std::next(entry);
  }
}

// The binary form

void CMC_Object::serialize(CXArchive& archive) {
  archive.pass(name_);
  StoredBindings bindings;
  if (archive.isStoring()) bindings = storedBindings();
  passBindings(archive, bindings);
  if (archive.isStoring() || archive.hasFailed()) return;
  for (const StoredBinding& binding : bindings) standIn(binding, archive);
}

StoredBindings CMC_Object::storedBindings() const {
  StoredBindings all;
  for (const std::string_view signal : boundSignals()) {
    for (const auto& binding : *getBehaviour(signal)) {
      const CMC_Behaviour* behaviour = binding->behaviour.get();
      if (behaviour == nullptr) continue;
      StoredBinding& stored = all.emplace_back(StoredBinding{signal, behaviour->getName(), {}});
      if (binding->arguments == nullptr) continue;
      stored.arguments.assign(binding->arguments->begin(), binding->arguments->end());
    }
  }
  return all;
}

void CMC_Object::bindStored(const StoredBindings& bindings, CMC_ObjectsContainer* container) {
  for (const auto& [signal, name, texts] : bindings) {
    CMC_Behaviour* behaviour = container->find<CMC_Behaviour>(name);
    if (behaviour == nullptr) continue;
    std::shared_ptr<const TextList> arguments;
    if (!texts.empty()) arguments = std::make_shared<TextList>(texts.begin(), texts.end());
    addBehaviour(signal, behaviour, std::move(arguments), container);
    setFlagsOf(signal);
  }
}

// Binds a behaviour of that name that does nothing, until the right one can be found.
void CMC_Object::standIn(const StoredBinding& stored, CXArchive& archive) {
  if (!verifyBehaviour(stored.signal)) return;
  Owned<CMC_Behaviour> placeholder(new CMC_Behaviour(getScene(), stored.behaviour, CXString()));
  auto binding = std::make_shared<SignalBinding>();
  binding->behaviour = WeakRef<CMC_Behaviour>(placeholder.get());
  if (!stored.arguments.empty())
    binding->arguments = std::make_shared<TextList>(stored.arguments.begin(), stored.arguments.end());
  binding->container = WeakRef<CMC_ObjectsContainer>(getScene());
  if (bindings_ == nullptr) bindings_ = std::make_unique<BindingTable>();
  (*bindings_)[stored.signal.str()].push_back(std::move(binding));
  setFlagsOf(stored.signal);
  archive.keep(std::move(placeholder));
}

void CMC_Object::destroy(CMC_Object* object) {
  if (object == nullptr || object->isDisposed()) return;
  {
    const Ref<CMC_Object> keep(object);
    if (object->isSignalBound(kOnDone)) object->onSignal("ONDONE");
    if (object->isDisposed()) return;  // its own handler ended it
    object->unlink();
    // Whoever ends an object need not know which container holds it.
    if (object->owner_ != nullptr) object->owner_->removeObject(object);
    object->dispose();
  }
}

}  // namespace footlight
