#pragma once

// CMC_Object is the base of everything that a script can name: a name, a type number, a place in a container,
// signals with behaviours bound to them, and clones. The engine talks to an object through `onSignal`,
// scripts talk to it through the runner of its type.
//
// Ownership: the container that an object was added to owns it and ends it with `CMC_Object::destroy`,
// which raises ONDONE, unlinks the object from all that would still call or show it, and lets the memory go
// when no call of the object is left on the stack. Bindings hold behaviours weakly: a behaviour that has
// gone is no binding.

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "foundation/diagnose.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"
#include "script/argument_text.h"
#include "script/stored_binding.h"
#include "script/type_registry.h"

namespace footlight {

class CGraphicsObject;
class CMC_Behaviour;
class CMC_Class;
class CMC_ObjectsContainer;
class CMC_Runner;
class CMC_Variable;
class CMElement;
class CXArchive;

// One behaviour bound to one signal.
struct SignalBinding {
  WeakRef<CMC_Behaviour> behaviour;
  std::shared_ptr<const TextList> arguments;  // as written in the definition, or null
  WeakRef<CMC_ObjectsContainer> container;    // in which the binding was made
  bool removed = false;                       // taken out while a delivery may still hold it
};
using BindingList = std::vector<std::shared_ptr<SignalBinding>>;

// A list of values that other objects add to.
class CMC_ValueList {
 public:
  // Takes a copy in at the end; false where there is no room for it.
  virtual bool add(CMC_Variable* value) = 0;

 protected:
  ~CMC_ValueList() = default;
};

// Lets maps keyed by text be asked with a view of one.
struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

class CMC_Object : public CXObject {
  friend class CMC_ObjectsContainer;

 public:
  // Takes the name from the element and stores the container; neither is owned.
  CMC_Object(CMC_ObjectsContainer* container, const CMElement* element, int type);
  // In no container yet.
  CMC_Object(CXString name, int type);
  ~CMC_Object() override;
  CMC_Object& operator=(const CMC_Object&) = delete;

  // Raises ONINIT if it is bound.
  virtual void init();
  // True for types that are finished before the behaviours, whose code their ONDONE may still need.
  virtual bool doneFirst() const { return true; }
  // Raises ONDONE if it is bound. True when done.
  virtual bool done(bool keep);
  virtual void setScene(CMC_ObjectsContainer* scene);
  virtual CMC_ObjectsContainer* getScene() const;
  virtual int getClonesNo() const { return clonesNo_; }
  // The number behind the last "_" of the name; 0 when it stands at an end or is missing.
  virtual int getCloneIdx() const;
  // Counts one more clone and gives its name.
  virtual CXString getCloneName();
  // Makes `target`, a copy that the caller hands over, a clone of this object in this object's scene.
  virtual void clone(std::unique_ptr<CMC_Object> target);
  // Makes that many clones; none when the type cannot be copied or the count is over the limit.
  virtual void clone(int count);
  virtual void resetClones() { clonesNo_ = 0; }
  // The index of the first signal of the type with which the name begins; -1 if none.
  virtual int getBehaviourIndex(std::string_view name) const;
  // Binds the signals that the element's properties name. A null element finds the bound behaviours
  // anew by name.
  virtual void initializeBehaviours(CMC_ObjectsContainer* container, const CMElement* element);
  // The type's signals in index order.
  virtual std::span<const Signal> getBehavioursList() const;
  // The type's runner; null for types that scripts cannot call.
  virtual CMC_Runner* getRunner() const;
  // False refuses a binding.
  virtual bool verifyBehaviour(const CXString& signal);
  virtual void addBehaviour(const CXString& signal, CMC_Behaviour* behaviour,
                            std::shared_ptr<const TextList> arguments, CMC_ObjectsContainer* container);
  // Removes the bindings of the signal that were made in the container; the forced form removes all
  // of the signal.
  virtual void removeBehaviour(const CXString& signal, const CMC_ObjectsContainer* container);
  virtual void removeBehaviourForce(const CXString& signal);
  virtual void removeAllBehaviours();
  // The bindings under exactly that key, or null.
  virtual const BindingList* getBehaviour(std::string_view signal) const;
  // One of them, shared; null for none at that index.
  virtual std::shared_ptr<SignalBinding> getSingleBehaviour(std::string_view signal, int index) const;
  // The names of all signals with bindings, in their order as text.
  std::vector<std::string_view> boundSignals() const;
  // Behaviours made by this object for inline code.
  virtual const std::vector<WeakRef<CMC_Behaviour>>& getTmpBehList() const { return tmpBehList_; }
  virtual CMC_Class* getClass() const;
  virtual void setClass(CMC_Class* ownerClass);
  // Runs what is bound to exactly that name. True if anything was bound. With run-time arguments each binding
  // in turn gets them in place of its own while all bindings of the name run.
  virtual bool onSignal(const CXString& name, const TextList& arguments);
  virtual bool onSignal(const CXString& name);
  // The name of a signal of the type.
  const char* signalName(SignalIndex signal) const;
  // Runs what is bound to the signal, as SIGNAL^DETAIL if anything is bound to that. True if anything was.
  bool raise(SignalIndex signal);
  bool raise(SignalIndex signal, const CXString& detail);
  // The container is being unloaded: bindings made in it go.
  virtual void onSceneDone(const CMC_ObjectsContainer* container);

  // A copy of the object for `clone(target)`, in no container; null for types that cannot be copied.
  virtual std::unique_ptr<CMC_Object> copy() const { return nullptr; }
  std::unique_ptr<CXObject> clone() const override { return copy(); }
  CXString toString() const override { return name_; }

  const CXString& getName() const { return name_; }
  // Only for an object that is in no container: containers are keyed by the name.
  void setName(CXString name) { name_ = std::move(name); }
  int getType() const { return type_; }
  bool isClone() const { return isClone_; }
  void setAsTemporary() { temporary_ = true; }
  bool isTemporary() const { return temporary_; }
  // While on, a new binding first removes all older bindings of that exact signal name.
  void overideSignals(bool on) { overrideSignals_ = on; }
  bool overridesSignals() const { return overrideSignals_; }
  // Cuts the name at its first "^" and looks the rest up exactly; -1 if it is not there.
  int getSignalIndex(std::string_view name) const;
  // Whether a signal of the type, in whatever form, was ever bound.
  bool isSignalBound(SignalIndex signal) const { return isSignalBound(signal.value); }
  bool isSignalBound(int index) const {
    return index >= 0 && index < 32 && (signalFlags_ >> index & 1U) != 0;
  }
  // The place in a definition file that the object came from.
  Origin origin() const { return origin_; }
  void setOrigin(Origin origin) { origin_ = origin; }

  // What shows on the screen behind the object's name; null for none. With the name of a frame, that frame
  // of an animation.
  virtual CGraphicsObject* getGraphic() const { return nullptr; }
  virtual CGraphicsObject* getGraphicsFrame(const CXString& /*frame*/) const { return getGraphic(); }
  // The list behind the object that values can be added to; null for none.
  virtual CMC_ValueList* getValueList() { return nullptr; }

  // Writes the object into the archive, or reads what such a writing left into a new object that is in no
  // container yet. Every type begins with its base's. The behaviours that are read as bound are found later,
  // by `initializeBehaviours` with a null element, while the archive still is there.
  virtual void serialize(CXArchive& archive);
  // The bindings by names, in the order of the signals as text.
  StoredBindings storedBindings() const;
  // Binds what the container finds of such names.
  void bindStored(const StoredBindings& bindings, CMC_ObjectsContainer* container);

  static int getTypeId(std::string_view word) { return typeNumberOf(word); }
  static CXString typeToString(int type);

  // Ends an object that its container no longer holds: ONDONE, unlink, dispose. Null is ignored.
  static void destroy(CMC_Object* object);

  // True for a variable that sits in a pool of temporaries.
  virtual bool isPooled() const { return false; }

 protected:
  CMC_Object(const CMC_Object& other);  // the copy has a new identity: no bindings, no clones, no scene

  // Takes the object out of everything that would still call it or show it. Called once, before the
  // memory may go.
  virtual void unlink() {}
  void setSignalFlag(int index) {
    if (index >= 0 && index < 32) signalFlags_ |= 1U << index;
  }
  bool hasBindings() const { return bindings_ != nullptr; }
  // What `getScene` gives, at once.
  CMC_ObjectsContainer* scene() const;
  // Whether the container has the object under its name.
  bool isOwnedBy(const CMC_ObjectsContainer& container) const { return owner_ == &container; }
  // Whether any signal of the type was ever bound.
  bool isAnySignalBound() const { return signalFlags_ != 0; }

 private:
  using BindingTable = std::unordered_map<std::string, BindingList, TextHash, std::equal_to<>>;

  void setFlagsOf(std::string_view property);
  void standIn(const StoredBinding& stored, CXArchive& archive);
  // True when a behaviour was found or made.
  bool bindProperty(CMC_ObjectsContainer* container, const CXString& property, CXString value, Origin origin);
  Ref<CMC_Behaviour> makeInlineBehaviour(CMC_ObjectsContainer* container, const CXString& property,
                                         const CXString& code, Origin origin);
  void rebind(CMC_ObjectsContainer* container);
  bool deliver(const CXString& name, const TextList* arguments);
  template <class Predicate>
  void removeBindings(std::string_view signal, Predicate goes);

  CXString name_;
  int type_;
  int clonesNo_ = 0;
  std::uint32_t signalFlags_ = 0;
  bool isClone_ = false;
  bool temporary_ = false;
  bool overrideSignals_ = true;
  Origin origin_;
  WeakRef<CMC_ObjectsContainer> scene_;
  WeakRef<CMC_Class> ownerClass_;
  std::uint32_t place_ = 0;                // where the container that took it last looks for it first
  CMC_ObjectsContainer* owner_ = nullptr;  // holds the object in its table; kept by the container
  std::unique_ptr<BindingTable> bindings_;
  std::vector<WeakRef<CMC_Behaviour>> tmpBehList_;
};

// The one downcast of a looked-up object: null unless the object is of class T. Each class names
// its own types.
template <class T>
T* object_cast(CMC_Object* object) {
  return object != nullptr && T::isTypeOf(object->getType()) ? static_cast<T*>(object) : nullptr;
}

}  // namespace footlight
