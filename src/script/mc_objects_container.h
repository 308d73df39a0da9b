#pragma once

// A scope: it owns named script objects, finds them by name through a chain of parents, builds them from a
// definition document and unloads them. The application, its episodes and scenes, and the instances of
// classes are containers.
//
// A container owns what was added to it, except containers of the three levels of a game, which their owners
// keep. Names are unique in a container: a new object of a name ends the old one.

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "script/mc_object.h"
#include "script/name_table.h"

namespace footlight {

class CConfig;
class CGraphicsObject;
class CMC_Groupped;
class CMElements;
class CWindow;

class CMC_ObjectsContainer : public CMC_Object {
 public:
  CMC_ObjectsContainer(CWindow* window, CMC_ObjectsContainer* container, const CMElement* element, int type);
  CMC_ObjectsContainer(CWindow* window, CXString name, int type);
  ~CMC_ObjectsContainer() override;

  static bool isTypeOf(int type) {
    return type == type::kApplication || type == type::kEpisode || type == type::kScene ||
           type == type::kClass;
  }

  // Takes an object out without ending it, and out of the ownership; false if it is not here under its name.
  virtual bool removeObject(CMC_Object* object);
  // Takes an object over. One of the same name is removed and ended first. Over the limit of objects in a
  // scope the object is ended instead and the answer is false.
  virtual bool addObject(CMC_Object* object);
  // Empties the group, then fills it with all objects of the type whose word is given.
  virtual void getObjects(std::string_view typeWord, CMC_Groupped* group);
  virtual void onSubSceneDone(const CMC_ObjectsContainer* container);
  // Ends all objects without finishing them.
  void letGo() { endAll(); }
  // Finishes and ends all objects; the container can be filled again.
  virtual void unload();

  // Looks in this container, then without each ending "_0", then in the parents; null if nothing
  // has the name.
  CMC_Object* getObject(std::string_view name) const;
  CMC_Object* getObject(int index) const;
  // The object of class T, null for none or one of another class.
  template <class T>
  T* find(std::string_view name) const {
    return object_cast<T>(getObject(name));
  }
  // Like getObject, but null for anything that is no INTEGER, STRING, BOOL or DOUBLE.
  CMC_Object* getVariable(std::string_view name) const;
  // In this container alone.
  CMC_Object* getOwnObject(std::string_view name) const;
  int getObjectId(std::string_view name) const;
  std::vector<CMC_Object*> getObjectsOfType(int type) const;
  int getElementsNo() const { return static_cast<int>(objects_.size() - holes_); }
  // A snapshot that outlives whatever its users do to the container. What ends while it is walked is disposed
  // of and to be left alone.
  std::vector<Ref<CMC_Object>> snapshot() const;

  // Also makes the parent and the parent's parent reachable by name in this container.
  void setParent(CMC_ObjectsContainer* parent);
  CMC_ObjectsContainer* getParent() const { return parent_.get(); }
  // Puts the entries of the parents back where `unload` emptied the table.
  void enterParents();

  // The picture behind an object name, "NAME!FRAME" for a frame of an animation; null if there is none.
  CGraphicsObject* getGraphicsObject(const CXString& name) const;
  // The reverse, with `parentsToo` for the parents' objects; "UNKNOWN" if none matches.
  CXString getGraphicsObjectName(const CGraphicsObject* graphics, bool parentsToo) const;

  // One object from one element, not yet initialised or added; null for a type that nobody knows. If there is
  // a group, the inline behaviours bound to the object join it.
  CMC_Object* resolve(const CMElement* element, CMC_Groupped* group);
  // All objects of a document, in six passes. Gives the elements that nobody knew what to make of.
  std::vector<const CMElement*> resolveObjects(const CMElements& elements);

  // An object of another module's making for an element of a type that nobody here knows; null as a rule.
  virtual CMC_Object* resolveEx(const CMElement* /*element*/) { return nullptr; }

  // Renames an object of this container; an object that has the new name already is treated as by addObject.
  void renameObject(CMC_Object* object, const CXString& name);

  CWindow* getWindow() const { return window_; }
  // The INI file of the game, or null when there is none.
  CConfig* getConfig() const;

  // An object that left the container by its own will, but that bindings and lines may still hold: it ends
  // with the others.
  void keepUntilUnload(CMC_Object* object);

  // Grows whenever some name but a local's comes or goes in any container, or scopes are joined or parted.
  static std::uint64_t generation() { return generation_; }
  // Never given to another container.
  std::uint64_t serial() const { return serial_; }
  // Whether an object anywhere has a name that begins like a number.
  static bool areNumbersNames() { return numberNames_ > 0; }

  void setScene(CMC_ObjectsContainer* scene) override;

 protected:
  void unlink() override;
  // Runs `init` of every object on a snapshot.
  void initObjects();
  const std::vector<CMC_Object*>& objects() const {
    if (holes_ > 0) closeHoles();
    return objects_;
  }
  // True for what stands here by name only.
  bool isOwnedElsewhere(const CMC_Object* object) const;
  // Whether an element of a type that is there once a chain binds its signals to the object that there is.
  virtual bool adoptsExisting() const { return true; }

 private:
  CMC_Object* lookUp(std::string_view name) const;
  bool adoptExisting(const CMElement* element, const ScriptType& type);
  static void reportReplaced(const CMC_Object& object, const CMC_Object& older);
  static void reportUnknown(const CMElement& element);
  struct Waiting;  // an element of which nothing is made yet
  void buildPass(std::vector<Waiting>& waiting, int pass);
  void finishAll();
  void endAll();
  void clearNames();
  void takeOut(CMC_Object* object);
  void closeHoles() const;

  // The first object whose picture it is; null for none.
  const CMC_Object* objectShowing(const CGraphicsObject* graphics) const;

  void noteName(const CMC_Object& object, int change);
  static void noteScopes();

  static inline std::uint64_t generation_ = 0;
  static inline std::uint64_t serials_ = 0;
  static inline int numberNames_ = 0;

  // In the order of their coming. What goes leaves a null, so that it takes no time to go in any order;
  // whoever reads the list closes the holes first.
  mutable std::vector<CMC_Object*> objects_;
  mutable std::size_t holes_ = 0;
  NameTable table_;
  // The objects by their pictures, as they were at an age of CGraphicsObject::usersAge; made when an age is
  // asked a second time.
  struct Shown {
    std::unordered_map<const CGraphicsObject*, WeakRef<CMC_Object>> objects;
    std::uint64_t age = 0;
    std::uint64_t askedAge = 0;
  };
  mutable Shown shown_;
  std::vector<WeakRef<CMC_Object>> departed_;
  WeakRef<CMC_ObjectsContainer> parent_;
  CWindow* window_;
  std::uint64_t serial_ = ++serials_;
  int ownNumberNames_ = 0;
};

inline CMC_ObjectsContainer* CMC_Object::scene() const { return scene_.get(); }

}  // namespace footlight
