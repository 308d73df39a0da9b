#include "app/structure_parser.h"

#include "app/mc_application.h"
#include "app/mc_episode.h"
#include "objects/all_types.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"
#include "script/melements_loader.h"

namespace footlight {

namespace {

// Elements of which nothing is made.
void reportUnknown(const CMElements& elements) {
  for (const CMElement* element : elements) {
    const CMProperty* type = element->properties().get("TYPE");
    const CXString word = element->getPropertyValue("TYPE");
    if (word == "SCENE" || word == "EPISODE" || word == "APPLICATION") continue;
    diagnose::report(diagnose::Group::definition, element->getName(), "",
                     type == nullptr ? "has no TYPE: nothing is made of it"
                                     : "no level of a game has the TYPE " + word.str(),
                     type == nullptr ? element->origin() : type->origin());
  }
}

}  // namespace

void CMC_StructureParser::prepare() {
  installAllTypes();
  CMC_VariableFactory::initialize();
  CMC_RunnerFactory::initialize();
}

CMC_StructureParser::CMC_StructureParser(CWindow* window, const CXString& fileName) : window_(window) {
  prepare();
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
  if (diagnose::isOn()) reportUnknown(*elements);
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

CMC_Scene* CMC_StructureParser::getReported(const CXString& name, const CMElement& element,
                                            const char* property) const {
  CMC_Scene* scene = get(name);
  if (scene == nullptr) reportMissing(name, element, property);
  return scene;
}

void CMC_StructureParser::reportMissing(const CXString& name, const CMElement& element,
                                        const char* property) {
  if (!diagnose::isOn()) return;
  const CMProperty* list = element.properties().get(property);
  diagnose::report(diagnose::Group::object, element.getName(), property,
                   "no episode or scene of the name " + name.str(),
                   list != nullptr ? list->origin() : Origin());
}

Owned<CMC_Application> CMC_StructureParser::takeApplication() { return std::move(application_); }

}  // namespace footlight
