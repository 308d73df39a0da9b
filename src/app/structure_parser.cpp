#include "app/structure_parser.h"

#include "app/mc_application.h"
#include "app/mc_episode.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/melements_loader.h"

namespace footlight {

CMC_StructureParser::CMC_StructureParser(CWindow* window, const CXString& fileName) : window_(window) {
  CMC_VariableFactory::initialize();
  CMC_RunnerFactory::initialize();
  load(fileName);
}

// Levels know each other, so all let go of their objects before the first one ends.
CMC_StructureParser::~CMC_StructureParser() {
  for (const auto& application : earlier_) application->letGo();
  for (const auto& scene : built_) scene->letGo();
}

void CMC_StructureParser::load(const CXString& fileName) {
  const std::unique_ptr<CMElements> elements = CMElementsLoader::load(window_, fileName);
  if (!elements) return;
  const auto each = [&elements](std::string_view type, auto build) {
    for (CMElement* element : *elements) {
      if (element->getPropertyValue("TYPE") == type) build(element);
    }
  };
  each("SCENE", [this](const CMElement* e) { built_.emplace_back(new CMC_Scene(window_, e)); });
  each("EPISODE", [this](const CMElement* e) { built_.emplace_back(new CMC_Episode(window_, e, *this)); });
  each("APPLICATION", [this](const CMElement* e) {
    if (application_) earlier_.push_back(std::move(application_));
    application_.reset(new CMC_Application(window_, e, *this));
  });
}

CMC_Scene* CMC_StructureParser::get(const CXString& name) const {
  for (const auto& scene : built_) {
    if (scene->getName() == name) return scene.get();
  }
  return nullptr;
}

Owned<CMC_Application> CMC_StructureParser::takeApplication() { return std::move(application_); }

}  // namespace footlight
