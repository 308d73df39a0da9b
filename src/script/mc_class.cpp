#include "script/mc_class.h"

#include "files/path.h"
#include "foundation/limits.h"
#include "script/mc_behaviour.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/melements_loader.h"

namespace footlight {

namespace {

// No chain of displaced objects is longer than the files that a class can have.
constexpr int kDeepestSuper = limits::kClassFiles * 6;
constexpr const char* kFolder = "$COMMON\\CLASSES\\";

// Stands while an instance is made or ended. One that makes two of itself would make two to the power of the
// deepest nesting: from the first refusal on nothing more is made until all of that has ended.
class Making {
 public:
  Making() { ++depth_; }
  ~Making() {
    if (--depth_ == 0) isRefused_ = false;
  }
  Making(const Making&) = delete;
  Making& operator=(const Making&) = delete;

  static bool isRefused() { return isRefused_; }
  static void refuse() {
    limitHit("classes within classes");
    isRefused_ = depth_ > 0;
  }

 private:
  static inline int depth_ = 0;
  static inline bool isRefused_ = false;
};

int classDepth(const CMC_ObjectsContainer* scope) {
  int depth = 0;
  for (; scope != nullptr; scope = scope->getParent()) depth += scope->getType() == type::kClass ? 1 : 0;
  return depth;
}

}  // namespace

CMC_Class::CMC_Class(CMC_ObjectsContainer* container, const CMElement* element)
    : CMC_ObjectsContainer(container->getWindow(), container, element, type::kClass),
      defFile_(element->getPropertyValue("DEF")),
      baseFiles_(element->getPropertyValue("BASE")) {
  initializeBehaviours(container, element);
}

CMC_Class::CMC_Class(const CMC_Class& pattern)
    : CMC_ObjectsContainer(pattern.getWindow(), pattern.getName(), type::kClass),
      defFile_(pattern.defFile_),
      baseFiles_(pattern.baseFiles_) {}

CMC_Class::CMC_Class(const CMC_Class& pattern, CXString name, CMC_ObjectsContainer* scope)
    : CMC_ObjectsContainer(scope->getWindow(), std::move(name), type::kClass),
      defFile_(pattern.defFile_),
      baseFiles_(pattern.baseFiles_),
      isInstance_(true) {
  setScene(scope);
  setParent(scope);
}

std::unique_ptr<CMC_Class> CMC_Class::newInstance(const CXString& name, CMC_ObjectsContainer* scope) const {
  if (Making::isRefused() || classDepth(scope) >= limits::kClassFiles) {
    Making::refuse();
    return nullptr;
  }
  std::unique_ptr<CMC_Class> instance(new CMC_Class(*this, name, scope));
  instance->load();
  return instance;
}

std::unique_ptr<CMC_Object> CMC_Class::copy() const {
  if (!isInstance_) return std::unique_ptr<CMC_Object>(new CMC_Class(*this));
  if (getScene() == nullptr) return nullptr;
  const Making making;
  std::unique_ptr<CMC_Class> made = newInstance(getName(), getScene());
  if (made) made->initObjects();
  return made;
}

void CMC_Class::load() {
  int files = 0;
  for (CXString& file : baseFiles_.toVector(",")) {
    if (++files > limits::kClassFiles) {
      limitHit("base files of a class");
      break;
    }
    import(file.AllTrim());
  }
  import(defFile_);
}

void CMC_Class::import(const CXString& file) {
  const CXString path = CPath::resolveFileName(getWindow(), CXString(kFolder) + file);
  if (const auto elements = CMElementsLoader::load(getWindow(), path)) resolveObjects(*elements);
}

bool CMC_Class::addObject(CMC_Object* object) {
  CMC_Object* older = object != nullptr ? getOwnObject(object->getName()) : nullptr;
  if (older != nullptr && older != object && !isOwnedElsewhere(older)) {
    // The table is keyed by the name: the older one comes out, is renamed and goes back in.
    const Ref<CMC_Object> keep(older);
    removeObject(older);
    if (older->getName().Length() < kDeepestSuper) {
      older->setName(CXString("SUPER_") + older->getName());
      addObject(older);
    } else {
      limitHit("base files of a class");
      destroy(older);
    }
  }
  if (object != nullptr) object->setClass(this);
  return CMC_ObjectsContainer::addObject(object);
}

void CMC_Class::init() {
  const Ref<CMC_Class> self(this);
  initObjects();
  CMC_Object::init();
}

void CMC_Class::destruct() {
  if (!isInstance_ || isDestructed_) return;
  isDestructed_ = true;
  const Ref<CMC_Class> self(this);
  const Making making;
  static_cast<CMC_Class_Runner*>(getRunner())->runClass(this, getScene(), ArgumentList(), "DESTRUCTOR");
  for (const Ref<CMC_Object>& object : snapshot()) {
    auto* nested = object->isDisposed() ? nullptr : object_cast<CMC_Class>(object.get());
    if (nested != nullptr && !isOwnedElsewhere(nested)) nested->destruct();
  }
}

bool CMC_Class::done(bool keep) {
  const Ref<CMC_Class> self(this);
  if (isInstance_) {
    const Making making;
    destruct();
    unload();
  }
  return CMC_Object::done(keep);
}

// Scripts' methods

namespace {

Result newInstance(CMC_Class& pattern, Call& call) {
  if (pattern.isInstance() && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::method, "an instance makes no instances");
  if (pattern.isInstance() || call.scope() == nullptr) return {};
  const Making making;
  std::unique_ptr<CMC_Class> made = pattern.newInstance(call.text(0), call.scope());
  if (!made) return {};
  const Ref<CMC_Class> instance(made.get());
  if (!call.scope()->addObject(made.release())) return {};
  instance->init();
  static_cast<CMC_Class_Runner*>(instance->getRunner())
      ->runClass(instance.get(), call.scope(), call.arguments().subspan(1), "CONSTRUCTOR");
  return {};
}

Result deleteInstance(CMC_Class& /*pattern*/, Call& call) {
  const Ref<CMC_Class> instance(call.named<CMC_Class>(0));
  if (instance && !instance->isInstance() && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::object, instance->getName().str() + " is a template, no instance");
  if (!instance || !instance->isInstance()) return {};
  const Making making;
  instance->destruct();
  if (instance->getScene() != nullptr) instance->getScene()->removeObject(instance.get());
  CMC_Object::destroy(instance.get());
  return {};
}

constexpr Method kMethods[] = {
    {1, "NEW", "name:text, [arguments:value...]", method<newInstance>,
     "Makes an instance of that name and runs its CONSTRUCTOR with the arguments as $1, $2 and so on."},
    {2, "DELETE", "instance:name", method<deleteInstance>,
     "Runs the DESTRUCTOR of an instance and ends the instance."},
};

constexpr Property kProperties[] = {
    {"DEF", PropertyKind::file, "", "The definition file of its instances, in COMMON\\CLASSES."},
    {"BASE", PropertyKind::list, "",
     "Definition files that come before it; a BEHAVIOUR that it defines anew stays callable as SUPER_NAME."},
};

}  // namespace

extern constinit const ScriptType kClassType = {
    .number = type::kClass,
    .idWord = "CLASS",
    .definitionWord = "CLASS",
    .meaning = "A pattern that makes objects with insides and methods of their own.",
    .pass = 4,
    .signals = kSignalsOfAll,
    .properties = kProperties,
    .methods = kMethods,
    .make = makeFrom<CMC_Class>,
    .makeRunner = makeRunnerOf<CMC_Class_Runner>,
};

Result CMC_Class_Runner::run(std::string_view method, CMC_Object* object, CMC_ObjectsContainer* scope,
                             const ArgumentList& arguments) {
  if (resolveMethod(method) >= 0) return CMC_Runner::run(method, object, scope, arguments);
  return runClass(object, scope, arguments, method);
}

Result CMC_Class_Runner::runClass(CMC_Object* object, CMC_ObjectsContainer* scope,
                                  const ArgumentList& arguments, std::string_view method) {
  const Ref<CMC_Class> instance(object_cast<CMC_Class>(object));
  const Ref<CMC_Behaviour> behaviour(instance ? instance->find<CMC_Behaviour>(method) : nullptr);
  if (!behaviour) {
    if (instance && diagnose::isOn() && method != "CONSTRUCTOR" && method != "DESTRUCTOR") {
      diagnose::report(diagnose::Group::method, instance->getName(), method, "no such method");
    }
    return {};
  }
  const TextList texts = Call(scope, arguments).textsFrom(0);
  behaviour->run(nullptr, &texts, false);
  return Result(
      CMC_VariableFactory::copyVariable(object_cast<CMC_Variable>(instance->getOwnObject("__RETURN__"))));
}

}  // namespace footlight
