#pragma once

// An episode: a scene that holds scenes. Its own objects stay while its scenes change.

#include "app/mc_scene.h"

namespace footlight {

class CMC_StructureParser;

class CMC_Episode : public CMC_Scene {
 public:
  // Finds its scenes among those that the parser has built.
  CMC_Episode(CWindow* window, const CMElement* element, const CMC_StructureParser& built);
  // One of a game in its binary form, to be read from an archive.
  explicit CMC_Episode(CWindow* window) : CMC_Scene(window, type::kEpisode) {}
  static bool isTypeOf(int type) { return type == type::kEpisode; }

  // Reads the episode's definition and enters the scene that STARTWITH names, or the first one where there is
  // none of that name. Without a STARTWITH no scene is entered and the result is false.
  bool initialize(CMC_Scene* previous) override;
  void unload(CMC_Scene* next) override;
  using CMC_Scene::unload;

  // Number of its scenes and place of the first one among them, and the scenes. Reading, the scenes join
  // `scenes`; one of a name that is there already is that one. `parent` is where the scenes stand while they
  // are stored. A count of -1 means that this is no episode, and nothing follows: then the answer is false.
  bool passScenes(CXArchive& archive, CMC_Scene& parent, std::vector<Owned<CMC_Scene>>& scenes);

  // The name of the last scene left.
  const CXString& getLatestScene() const { return latestScene_; }

 private:
  void readScene(CXArchive& archive, std::vector<Owned<CMC_Scene>>& scenes);
  static void reportNoStart(const CMElement& element);

  CMC_Scene* startWith_ = nullptr;
  CXString latestScene_;
};

}  // namespace footlight
