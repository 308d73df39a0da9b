#pragma once

// The root of a game: holds the episodes and scenes, the objects that every scene sees, and drives the
// running scene one step at a time.

#include "app/mc_scene.h"

namespace footlight {

class CCommandLine6;
class CMC_StructureParser;

class CMC_Application : public CMC_Scene {
 public:
  static constexpr const char* kBinaryFile = "application.bin";

  // Finds its episodes and scenes among those that the parser has built, and reads its own definition file.
  // An application of the name "DEMO" is called "GAME".
  CMC_Application(CWindow* window, const CMElement* element, const CMC_StructureParser& built);
  // Reads the binary form, "application.bin" in the current directory. What does not fit ends the reading.
  explicit CMC_Application(CWindow* window);
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
  // Its own part, then its episodes and scenes, each with its scenes. Storing also writes the files of all.
  void serialize(CXArchive& archive) override;
  // Writes the binary form of the whole game. False when a file could not be written: then the old
  // "application.bin" is still there. Runs no code of the game.
  virtual bool storeBinary();
  // False for one of which nothing but its own part could be read.
  bool isPlayable() const { return isWhole_ || !getSubScenes().empty(); }
  // Ends the game: ONDONE, the scene that runs, the objects. Nothing of the scripts runs afterwards.
  void close();

 private:
  void storeLevel(CXArchive& archive, CMC_Scene& level);
  void readLevel(CXArchive& archive);
  bool isNameTaken() const;

  CMC_Scene* startWith_ = nullptr;
  std::vector<Owned<CMC_Scene>> levels_;  // those of a binary form
  bool isWhole_ = true;
};

}  // namespace footlight
