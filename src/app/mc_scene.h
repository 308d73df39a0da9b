#pragma once

// CMC_Scene is the unit of a game: a named folder of assets with a definition file of objects, shown one at a
// time. An episode is a scene that holds scenes, the application one that holds episodes and scenes.
//
// A scene object lives as long as the application; only its contents come and go. GOTO and its kin only set a
// pending slot, which the next step looks at, so a scene is never torn down while its own code runs.
// Sub-scenes belong to the parser that built them.

#include <memory>
#include <vector>

#include "gfx/collision_inspector.h"
#include "script/mc_objects_container.h"

namespace footlight {

class CLevelCopy;
class CMC_Application;
class CMC_DLLExModuleInterface;
class CUnit6;

// The signals of the three levels of a game.
enum class LevelSignal {
  onDoModal = kFirstOwnSignal,
  onRestart,
  onMusicLooped,
  onActivate,
  onDeactivate,
  onUpgraded,
  count
};

class CMC_Scene : public CMC_ObjectsContainer {
  friend class CLevelCopy;

 public:
  CMC_Scene(CWindow* window, const CMElement* element, int type = type::kScene);
  // One of a game in its binary form, to be read from an archive.
  explicit CMC_Scene(CWindow* window, int type = type::kScene);
  ~CMC_Scene() override;
  static bool isTypeOf(int type) {
    return type == type::kScene || type == type::kEpisode || type == type::kApplication;
  }

  // Enters: reads the definition, builds and initialises the objects. `previous` is the sub-scene
  // before, or null.
  virtual bool initialize(CMC_Scene* previous);
  // One step: a pending change of the sub-scene, then the sub-scene's own step.
  virtual void domodal();
  virtual void restart();
  // Leaves: ends the objects. `next` is what comes after, or null.
  virtual void unload(CMC_Scene* next);
  using CMC_ObjectsContainer::unload;

  // The object's own handling first; if nothing took the signal, an object named "__" + name + "__" runs. The
  // answer tells whether the own handling took it.
  bool onSignal(const CXString& name) override;
  bool onSignal(const CXString& name, const TextList& arguments) override {
    return CMC_Object::onSignal(name, arguments);
  }

  // A sub-scene by its exact name, or null.
  CMC_Scene* find(const CXString& name) const;
  // The same for the scene that the running call wants: a missing one is reported.
  CMC_Scene* findReported(const CXString& name) const;
  using CMC_ObjectsContainer::find;
  // This object if the name is its own, else whatever in the subtree has it.
  CMC_Scene* getScene(const CXString& name);
  using CMC_Object::getScene;
  CMC_Scene* getCurrentScene() const { return currentSubScene_; }
  // The innermost scene that runs below this one; this one itself if none does.
  CMC_Scene* getInnermostScene();
  int getSubId(const CMC_Scene* scene) const;
  const std::vector<CMC_Scene*>& getSubScenes() const { return subScenes_; }
  void setPending(CMC_Scene* scene) { pendingSubScene_ = scene; }
  CMC_Scene* getPending() const { return pendingSubScene_; }
  const std::vector<CMC_Scene*>& getHistory() const { return history_; }
  // The sub-scene behind and before the current one; null at the ends.
  CMC_Scene* getNextScene() const;
  CMC_Scene* getPreviousScene() const;
  // Marks the last but one of the history as pending and drops the last entry.
  void back();

  const CXString& getPath() const { return path_; }
  const CXString& getDesc() const { return description_; }
  bool isDeamon() const { return deamon_; }
  CUnit6* getUnit() const { return unit_; }
  void setDraggedName(CXString name) { draggedName_ = std::move(name); }
  const CXString& getDraggedName() const { return draggedName_; }

  // Watches the collisions of an object of this scene, and ends that; watched anew it keeps
  // its first `useAlpha`.
  template <class T>
  void monitorCollisions(CGraphicsObject* object, bool useAlpha, T* observer) {
    if (CCollisionInspector* inspector = startMonitoring(object, useAlpha)) inspector->addNotifier(observer);
  }
  void removeMonitorCollisions(CGraphicsObject* object, const CCollisionObserver* observer);

  bool shouldMusicBeStarted() const { return shouldStartMusic_; }
  // The own music, else the parent's.
  CXString getMusicFilename() const;
  void startMusic(const char* name, bool force);
  void stopMusic();

  // Behind the base's part the folder. Storing also writes the level's own file, which holds its properties
  // and objects; reading leaves that file to `readHead` and to each entry.
  void serialize(CXArchive& archive) override;
  // True for a level of a game in its binary form.
  bool isBinary() const { return binary_; }
  // A copy was made to be stored: it shares nothing with the level that may run.
  bool isCopy() const { return isCopy_; }
  // Takes name, properties and stored bindings of another level.
  void takeLevel(const CMC_Scene& other);
  // Takes all bindings off the level and its objects: nothing of the scripts runs at their end.
  void silence();
  // The properties of a level in its binary form, before it is first entered.
  void readHead();

  CMC_Object* resolveEx(const CMElement* element) override;
  // The same for an object of that type that lies next in the archive.
  CMC_Object* serializeEx(CXArchive& archive, int type);
  // Makes a BUTTON or a VGO; other words do nothing.
  void createObject(const CXString& word, const CXString& name);
  // Ends an object of this scene; parents and sub-scenes stay.
  void removeAndDestroy(CMC_Object* object);

  // The one unit of the process; made by the first scene.
  static CUnit6* getDefUnit();
  // The level around a container; a class instance stands in its own scope within one. Null when
  // there is none.
  static CMC_Scene* around(CMC_ObjectsContainer* container);
  static void doneDefUnit();

 protected:
  // Changes the sub-scene.
  void _goto(CMC_Scene* target, CMC_Scene* previous);
  // Reads the definition file of this level, or its binary form, if there is one in the current directory.
  void loadCnv();
  // Makes the folder of the level's definition the current one.
  void enterDefinitionFolder() const;
  // Says where a binary form ceases to fit, and what to do where the text form is there.
  static void reportMisfit(const CXString& binary, std::size_t offset, const CXString& text);
  bool adoptsExisting() const override { return !isCopy_; }
  // Runs `init` of every object, then the object __INIT__ with this container.
  void initContents();
  void addSubScene(CMC_Scene* scene);
  // Makes the folder of an application or episode the current one: "Dane" below the data root, then the
  // level's own folder in it. Where the second is missing the first stays.
  void enterLevelFolder() const;
  void reportMissingFile() const;
  void unloadSubScene(CMC_Scene* next);
  void clearCurrentScene() { currentSubScene_ = nullptr; }
  void makeCurrent(CMC_Scene* scene) { currentSubScene_ = scene; }

 private:
  struct Adopted {
    WeakRef<CMC_Object> object;
    StoredBindings bindings;
  };

  CXString definitionName() const { return getName() + (binary_ ? ".bin" : ".cnv"); }
  void passHead(CXArchive& archive);
  bool storeFile();
  void loadBinary();
  bool readObject(CXArchive& archive, std::vector<Adopted>& adopted, Origin place);
  CMC_Object* makeNext(CXArchive& archive, int type, Origin place);
  void bindRead(const std::vector<Adopted>& adopted);
  void endQuietly();
  // The scene's folder as it is written below a root.
  CXString folder() const;
  // Each makes it the current one: below the root path, false where there is none, or below the data root.
  bool enterOwnFolder() const;
  void enterDataFolder() const;
  void enterScene(CMC_Scene* previous);
  void resolveDLLs(const CXString& list);
  void doneDLLs();
  void saveStats();
  // The inspector for an object that this scene did not watch yet; else null.
  CCollisionInspector* startMonitoring(CGraphicsObject* object, bool useAlpha);

  CXString dlls_;
  CXString description_;
  CXString path_;
  CXString background_;
  CXString music_;
  bool deamon_;
  CUnit6* unit_ = nullptr;
  std::vector<CMC_Scene*> subScenes_;
  CMC_Scene* currentSubScene_ = nullptr;
  CMC_Scene* pendingSubScene_ = nullptr;
  std::vector<CMC_Scene*> history_;
  std::vector<std::unique_ptr<CMC_DLLExModuleInterface>> modules_;
  std::vector<WeakRef<CGraphicsObject>> monitored_;
  CXString previousUnitName_;
  CXString draggedName_;
  bool shouldStartMusic_ = true;
  bool binary_ = false;
  bool isHeadRead_ = false;  // the properties of the binary form are known
  bool isCopy_ = false;
  StoredBindings bound_;  // the level's own, in the binary form
  int enteredAt_ = 0;     // seconds of the clock; 0 when not running
};

}  // namespace footlight
