#pragma once

// Builds the tree of a game from its one document: first all scenes, then the episodes, which find their
// scenes among those built, then the application. The parser owns the scenes and episodes for as long as
// the game lives.

#include <memory>
#include <vector>

#include "app/mc_application.h"
#include "app/mc_scene.h"

namespace footlight {

class CWindow;

class CMC_StructureParser : public CXObject {
 public:
  // Makes the pools and the runners that every game needs.
  static void prepare();
  // The same, then reads the document; without one the parser stays empty.
  CMC_StructureParser(CWindow* window, const CXString& fileName);
  ~CMC_StructureParser() override;

  // The first built scene or episode of exactly that name, or null.
  CMC_Scene* get(const CXString& name) const;
  // The same for a name that stands in a property of an element: a missing one is reported.
  CMC_Scene* getReported(const CXString& name, const CMElement& element, const char* property) const;
  static void reportMissing(const CXString& name, const CMElement& element, const char* property);
  CMC_Application* getMCApplication() const { return application_.get(); }
  // Hands the application over; the parser keeps the rest.
  Owned<CMC_Application> takeApplication();

 private:
  void load(const CXString& fileName);

  CWindow* window_;
  std::vector<Owned<CMC_Application>> earlier_;  // the last one built is the game; scenes may know the others
  std::vector<Owned<CMC_Scene>> built_;
  Owned<CMC_Application> application_;
};

}  // namespace footlight
