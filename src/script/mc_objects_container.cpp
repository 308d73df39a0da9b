#include "script/mc_objects_container.h"

#include <algorithm>

#include "foundation/depth.h"
#include "foundation/limits.h"
#include "foundation/memory_budget.h"
#include "gfx/graphics_object.h"
#include "gfx/window.h"
#include "script/mc_behaviour.h"
#include "script/mc_groupped.h"
#include "script/mc_variable.h"
#include "script/melement.h"
#include "script/name_watch.h"

namespace footlight {

CMC_ObjectsContainer::CMC_ObjectsContainer(CWindow* window, CMC_ObjectsContainer* container,
                                           const CMElement* element, int type)
    : CMC_Object(container, element, type), window_(window) {}

CMC_ObjectsContainer::CMC_ObjectsContainer(CWindow* window, CXString name, int type)
    : CMC_Object(std::move(name), type), window_(window) {}

CMC_ObjectsContainer::~CMC_ObjectsContainer() { endAll(); }

void CMC_ObjectsContainer::unlink() { endAll(); }

// The levels of a game belong to their parser; parents, which may be instances of classes, to
// their own containers.
bool CMC_ObjectsContainer::isOwnedElsewhere(const CMC_Object* object) const {
  const int type = object->getType();
  if (type == type::kApplication || type == type::kEpisode || type == type::kScene) return true;
  const CMC_ObjectsContainer* parent = parent_.get();
  return parent != nullptr && (object == parent || object == parent->parent_.get());
}

// Names

bool CMC_ObjectsContainer::removeObject(CMC_Object* object) {
  if (table_.find(object->getName()) != object) return false;
  table_.remove(object->getName());
  noteName(*object, -1);
  if (object->owner_ == this) object->owner_ = nullptr;
  takeOut(object);
  return true;
}

void CMC_ObjectsContainer::takeOut(CMC_Object* object) {
  auto place = objects_.begin() + std::min<std::ptrdiff_t>(object->place_, std::ssize(objects_));
  // What stands in more than one container is looked for.
  if (place == objects_.end() || *place != object)
    place = std::find(objects_.begin(), objects_.end(), object);
  if (place == objects_.end()) return;
  if (place + 1 == objects_.end()) {
    objects_.pop_back();
    return;
  }
  *place = nullptr;
  if (++holes_ > objects_.size() / 2) closeHoles();
}

void CMC_ObjectsContainer::closeHoles() const {
  std::erase(objects_, nullptr);
  holes_ = 0;
  for (std::size_t i = 0; i < objects_.size(); ++i) objects_[i]->place_ = static_cast<std::uint32_t>(i);
}

bool CMC_ObjectsContainer::addObject(CMC_Object* object) {
  if (object == nullptr) return false;
  // An older object's ONDONE may add another one of the name: that one goes as well.
  while (CMC_Object* older = getOwnObject(object->getName())) {
    if (older == object) return true;
    const DepthGuard depth;
    const Ref<CMC_Object> keep(older);
    removeObject(older);
    if (isOwnedElsewhere(older)) continue;
    reportReplaced(*object, *older);
    if (depth) {
      destroy(older);
    } else {
      older->dispose();
    }
  }
  const bool isFull = getElementsNo() >= limits::kObjectsInScope;
  if (isFull) limitHit("objects in a scope");
  if (isFull || !memory::hasRoom()) {
    if (!isOwnedElsewhere(object)) destroy(object);
    return false;
  }
  object->place_ = static_cast<std::uint32_t>(objects_.size());
  objects_.push_back(object);
  if (!isOwnedElsewhere(object)) object->owner_ = this;
  table_.add(object);
  noteName(*object, 1);
  return true;
}

// The same element may be built again, as when an episode is entered again: that is no mistake.
void CMC_ObjectsContainer::reportReplaced(const CMC_Object& object, const CMC_Object& older) {
  const Origin origin = object.origin();
  const bool isSame =
      origin.line != 0 && origin.line == older.origin().line && origin.file == older.origin().file;
  if ((isSame && !object.isClone()) || !diagnose::isOn()) return;
  diagnose::report(diagnose::Group::object, object.getName(), "",
                   "takes the place of another object of the name", origin);
}

// A name came into the table or left it.
void CMC_ObjectsContainer::noteName(const CMC_Object& object, int change) {
  const std::string_view name = object.getName();
  if (!object.isTemporary()) ++generation_;
  if (object.getGraphic() != nullptr) CGraphicsObject::noteUsers();
  NameWatch::note(name, object.isTemporary());
  if (!CMC_Variable::beginsLikeNumber(name)) return;
  ownNumberNames_ += change;
  numberNames_ += change;
}

void CMC_ObjectsContainer::setScene(CMC_ObjectsContainer* scene) {
  CMC_Object::setScene(scene);
  noteScopes();
}

void CMC_ObjectsContainer::noteScopes() {
  ++generation_;
  NameWatch::noteAll();
}

void CMC_ObjectsContainer::renameObject(CMC_Object* object, const CXString& name) {
  if (!removeObject(object)) return;
  object->setName(name);
  addObject(object);
}

CMC_Object* CMC_ObjectsContainer::getOwnObject(std::string_view name) const { return table_.find(name); }

CMC_Object* CMC_ObjectsContainer::getObject(int index) const {
  return index < 0 || index >= getElementsNo() ? nullptr : objects()[static_cast<std::size_t>(index)];
}

CMC_Object* CMC_ObjectsContainer::getObject(std::string_view name) const {
  if (name.size() > limits::kNameBytes) return nullptr;
  if (CMC_Object* own = getOwnObject(name)) return own;
  if (CMC_Object* found = lookUp(name)) return found;
  // Code of the levels above finds the objects of the scene that runs.
  const int type = getType();
  if (type != type::kApplication && type != type::kEpisode) return nullptr;
  const CMC_ObjectsContainer* running = getScene();
  for (; running != nullptr; name.remove_suffix(2)) {
    if (CMC_Object* found = running->getOwnObject(name)) return found;
    if (!name.ends_with("_0")) break;
  }
  return nullptr;
}

// The number 0 of a name is the object itself: each ending "_0" may go. The own scope is asked from the
// longest name to the shortest, then the parents are asked from the shortest to the longest; each pair
// is asked once.
CMC_Object* CMC_ObjectsContainer::lookUp(std::string_view name) const {
  std::string_view shortest = name;
  while (shortest.ends_with("_0")) {
    shortest.remove_suffix(2);
    if (CMC_Object* found = getOwnObject(shortest)) return found;
  }
  if (!parent_) return nullptr;
  for (std::size_t length = shortest.size(); length <= name.size(); length += 2) {
    for (const CMC_ObjectsContainer* scope = parent_.get(); scope != nullptr; scope = scope->parent_.get()) {
      if (CMC_Object* found = scope->getOwnObject(name.substr(0, length))) return found;
    }
  }
  return nullptr;
}

CMC_Object* CMC_ObjectsContainer::getVariable(std::string_view name) const {
  CMC_Object* found = getObject(name);
  const bool isValue =
      found != nullptr && found->getType() >= type::kInteger && found->getType() <= type::kDouble;
  return isValue ? found : nullptr;
}

int CMC_ObjectsContainer::getObjectId(std::string_view name) const {
  const auto& all = objects();
  const auto found = std::find_if(
      all.begin(), all.end(), [name](const CMC_Object* object) { return object->getName().view() == name; });
  return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

std::vector<CMC_Object*> CMC_ObjectsContainer::getObjectsOfType(int type) const {
  std::vector<CMC_Object*> found;
  std::copy_if(objects().begin(), objects().end(), std::back_inserter(found),
               [type](const CMC_Object* object) { return object->getType() == type; });
  return found;
}

std::vector<Ref<CMC_Object>> CMC_ObjectsContainer::snapshot() const {
  return {objects().begin(), objects().end()};
}

void CMC_ObjectsContainer::getObjects(std::string_view typeWord, CMC_Groupped* group) {
  group->removeAll();
  for (CMC_Object* object : getObjectsOfType(getTypeId(typeWord))) group->add(object);
}

void CMC_ObjectsContainer::setParent(CMC_ObjectsContainer* parent) {
  if (CMC_ObjectsContainer* old = parent_.get()) {
    removeObject(old);
    if (old->parent_) removeObject(old->parent_.get());
  }
  parent_ = WeakRef<CMC_ObjectsContainer>(parent);
  noteScopes();
  enterParents();
}

void CMC_ObjectsContainer::enterParents() {
  CMC_ObjectsContainer* parent = parent_.get();
  if (parent == nullptr) return;
  addObject(parent);
  if (parent->parent_) addObject(parent->parent_.get());
}

// Pictures

CGraphicsObject* CMC_ObjectsContainer::getGraphicsObject(const CXString& name) const {
  const int mark = name.Find('!');  // what follows names a frame of an animation
  const CMC_Object* object = getObject(mark < 0 ? name.view() : name.slice(0, mark));
  if (object == nullptr) return nullptr;
  return mark < 0 ? object->getGraphic() : object->getGraphicsFrame(name.Right(mark + 1));
}

CXString CMC_ObjectsContainer::getGraphicsObjectName(const CGraphicsObject* graphics, bool parentsToo) const {
  if (const CMC_Object* object = objectShowing(graphics)) return object->getName();
  if (parentsToo && getParent() != nullptr) return getParent()->getGraphicsObjectName(graphics, true);
  return "UNKNOWN";
}

// What was noted serves those that it knows; some objects show what no script object took.
const CMC_Object* CMC_ObjectsContainer::objectShowing(const CGraphicsObject* graphics) const {
  if (graphics == nullptr) return nullptr;
  const std::uint64_t age = CGraphicsObject::usersAge();
  if (shown_.age != age && std::exchange(shown_.askedAge, age) == age) {
    shown_.age = age;
    shown_.objects.clear();
    for (CMC_Object* object : objects()) {
      if (const CGraphicsObject* shows = object->getGraphic()) shown_.objects.try_emplace(shows, object);
    }
  }
  const auto known = shown_.age == age ? shown_.objects.find(graphics) : shown_.objects.end();
  const CMC_Object* noted = known != shown_.objects.end() ? known->second.get() : nullptr;
  if (noted != nullptr && noted->getGraphic() == graphics) return noted;
  const auto& all = objects();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const CMC_Object* object) { return object->getGraphic() == graphics; });
  return found != all.end() ? *found : nullptr;
}

CConfig* CMC_ObjectsContainer::getConfig() const { return CWindow::configOf(window_); }

// Building

CMC_Object* CMC_ObjectsContainer::resolve(const CMElement* element, CMC_Groupped* group) {
  const CXString word = element->getPropertyValue("TYPE");
  const ScriptType* type = findTypeByDefinition(word);
  if (type != nullptr && adoptExisting(element, *type)) return nullptr;
  CMC_Object* object = type != nullptr ? makeObject(this, element, *type) : resolveEx(element);
  if (object == nullptr) reportUnknown(*element);
  if (object == nullptr || group == nullptr) return object;
  for (const WeakRef<CMC_Behaviour>& behaviour : object->getTmpBehList()) {
    if (behaviour && behaviour->isBoundInline()) group->add(behaviour.get());
  }
  return object;
}

struct CMC_ObjectsContainer::Waiting {
  const CMElement* element;
  const ScriptType* type;  // null for a TYPE that nobody here knows
};

std::vector<const CMElement*> CMC_ObjectsContainer::resolveObjects(const CMElements& elements) {
  constexpr int kLastPass = 6;
  constexpr int kClasses = 4;
  std::vector<Waiting> waiting;
  waiting.reserve(static_cast<std::size_t>(elements.getSize()));
  for (const CMElement* element : elements) {
    if (const CMProperty* word = element->properties().get("TYPE")) {
      waiting.push_back({element, findTypeByDefinition(word->getValue())});
    } else if (element->getName() != getName()) {
      reportUnknown(*element);
    }
  }
  for (int pass = 1; pass <= kLastPass; ++pass) {
    buildPass(waiting, pass);
    if (pass != kClasses) continue;
    for (CMC_Object* object : getObjectsOfType(type::kBehaviour))
      static_cast<CMC_Behaviour*>(object)->resolveCondition();
  }
  std::vector<const CMElement*> left;
  for (const Waiting& waits : waiting) {
    reportUnknown(*waits.element);
    left.push_back(waits.element);
  }
  return left;
}

// Nothing was made of the element.
void CMC_ObjectsContainer::reportUnknown(const CMElement& element) {
  if (!diagnose::isOn()) return;
  const CMProperty* type = element.properties().get("TYPE");
  diagnose::report(diagnose::Group::definition, element.getName(), "",
                   type == nullptr ? "has no TYPE: no object is made of it"
                                   : "unknown TYPE " + std::string(type->getValue()),
                   type == nullptr ? element.origin() : type->origin());
}

void CMC_ObjectsContainer::buildPass(std::vector<Waiting>& waiting, int pass) {
  constexpr int kLastPass = 6;
  std::vector<Waiting> left;
  for (const auto& [element, type] : waiting) {
    CMC_Object* object = nullptr;
    if (type != nullptr && type->pass == pass) {
      if (adoptExisting(element, *type)) continue;
      object = makeObject(this, element, *type);
    } else if (type == nullptr && pass == kLastPass) {
      object = resolveEx(element);
    }
    if (object != nullptr) {
      addObject(object);
    } else {
      left.push_back({element, type});
    }
  }
  waiting = std::move(left);
}

// Some types exist once a chain: a further element adds its bindings to the object that there is.
bool CMC_ObjectsContainer::adoptExisting(const CMElement* element, const ScriptType& type) {
  CMC_Object* existing = type.isOnceAChain && adoptsExisting() ? getObject(type.idWord) : nullptr;
  if (existing == nullptr || existing->getType() != type.number) return false;
  existing->initializeBehaviours(this, element);
  return true;
}

void CMC_ObjectsContainer::initObjects() {
  for (const Ref<CMC_Object>& object : snapshot()) {
    if (!object->isDisposed() && !isOwnedElsewhere(object.get())) object->init();
  }
}

// Ending

void CMC_ObjectsContainer::onSubSceneDone(const CMC_ObjectsContainer* container) {
  for (const Ref<CMC_Object>& object : snapshot()) {
    if (!object->isDisposed()) object->onSceneDone(container);
  }
  if (parent_) parent_->onSubSceneDone(container);
}

void CMC_ObjectsContainer::finishAll() {
  const auto finish = [this](const std::vector<Ref<CMC_Object>>& objects, auto belongs) {
    for (const Ref<CMC_Object>& object : objects) {
      if (!object->isDisposed() && !isOwnedElsewhere(object.get()) && belongs(*object)) object->done(true);
    }
  };
  const auto all = snapshot();
  finish(all, [](const CMC_Object& o) { return o.getType() == type::kClass; });
  finish(all, [](const CMC_Object& o) { return o.getType() != type::kClass && o.doneFirst(); });
  finish(all, [](const CMC_Object& o) { return o.getType() != type::kClass && !o.doneFirst(); });
}

void CMC_ObjectsContainer::keepUntilUnload(CMC_Object* object) {
  std::erase_if(departed_, [](const WeakRef<CMC_Object>& gone) { return !gone; });
  if (departed_.size() < static_cast<std::size_t>(limits::kDepartedObjects)) {
    departed_.emplace_back(object);
  } else {
    guardHit("objects that left a scope");
    destroy(object);
  }
}

void CMC_ObjectsContainer::endAll() {
  const std::vector<WeakRef<CMC_Object>> departed = std::move(departed_);
  departed_.clear();
  for (const WeakRef<CMC_Object>& object : departed) destroy(object.get());
  // Handlers of ONDONE may add objects: these go in the same sweep, in a few rounds at most.
  for (int round = 0; round < limits::kUnloadRounds && getElementsNo() > 0; ++round) {
    closeHoles();
    const std::vector<CMC_Object*> dying = std::move(objects_);
    objects_.clear();
    clearNames();
    std::vector<Ref<CMC_Object>> kept;
    for (CMC_Object* object : dying) {
      if (isOwnedElsewhere(object)) continue;
      object->owner_ = nullptr;
      kept.emplace_back(object);
    }
    for (const Ref<CMC_Object>& object : kept) destroy(object.get());
  }
  if (getElementsNo() > 0) guardHit("objects added while unloading");
  for (CMC_Object* object : objects()) {
    if (isOwnedElsewhere(object)) continue;
    object->owner_ = nullptr;
    object->dispose();
  }
  objects_.clear();
  holes_ = 0;
  clearNames();
}

void CMC_ObjectsContainer::clearNames() {
  table_.clear();
  numberNames_ -= ownNumberNames_;
  ownNumberNames_ = 0;
  CGraphicsObject::noteUsers();
  noteScopes();
}

void CMC_ObjectsContainer::unload() {
  const Ref<CMC_ObjectsContainer> self(this);
  finishAll();
  endAll();
  if (isSignalBound(kOnDone)) onSignal("ONDONE");
}

}  // namespace footlight
