#pragma once

// An episode: a scene that holds scenes. Its own objects stay while its scenes change.

#include "app/mc_scene.h"

namespace footlight {

class CMC_StructureParser;

class CMC_Episode : public CMC_Scene {
 public:
  // Finds its scenes among those that the parser has built.
  CMC_Episode(CWindow* window, const CMElement* element, const CMC_StructureParser& built);
  static bool isTypeOf(int type) { return type == type::kEpisode; }

  // Reads the episode's definition and enters the first scene; false when there is none.
  bool initialize(CMC_Scene* previous) override;
  void unload(CMC_Scene* next) override;
  using CMC_Scene::unload;

  // The name of the last scene left.
  const CXString& getLatestScene() const { return latestScene_; }

 private:
  CMC_Scene* startWith_ = nullptr;
  CXString latestScene_;
};

}  // namespace footlight
