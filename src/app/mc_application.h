#pragma once

// The root of a game: holds the episodes and scenes, the objects that every scene sees, and drives the
// running scene one step at a time.

#include "app/mc_scene.h"

namespace footlight {

class CCommandLine6;
class CMC_StructureParser;

class CMC_Application : public CMC_Scene {
 public:
  // Finds its episodes and scenes among those that the parser has built, and reads its own definition file.
  // An application of the name "DEMO" is called "GAME".
  CMC_Application(CWindow* window, const CMElement* element, const CMC_StructureParser& built);
  ~CMC_Application() override;
  static bool isTypeOf(int type) { return type == type::kApplication; }

  // Makes the built-in objects and enters the first sub-scene; false when there is none.
  bool initialize(CMC_Scene* previous) override;
  void domodal() override;
  // Restarts the first sub-scene if it runs; else marks its entry for the next step.
  void restart() override;
  void unload(CMC_Scene* next) override;
  using CMC_Scene::unload;
  virtual void exit();
  // Ends the game: ONDONE, the scene that runs, the objects. Nothing of the scripts runs afterwards.
  void close();

 private:
  CMC_Scene* startWith_ = nullptr;
};

}  // namespace footlight
