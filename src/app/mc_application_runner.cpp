// Scripts' methods of APPLICATION.

#include "app/application.h"
#include "app/mc_application.h"
#include "app/printer.h"
#include "app/script_run.h"
#include "files/language_os_ver.h"
#include "gfx/graphics_object.h"
#include "gfx/window.h"
#include "script/mc_behaviour.h"
#include "script/mc_variable_factory.h"
#include "script/method_tables.h"

namespace footlight {

namespace {

using Factory = CMC_VariableFactory;

Result exit(CMC_Application& application, Call& /*call*/) {
  application.exit();
  return {};
}

Result restart(CMC_Application& application, Call& /*call*/) {
  application.restart();
  return {};
}

Result gotoScene(CMC_Application& application, Call& call) {
  application.setPending(application.findReported(call.text(0)));
  return {};
}

Result setLanguage(CMC_Application& application, Call& call) {
  CLanguageOSVer* language = application.getWindow()->getLanguage();
  if (language == nullptr) return {};
  const CXString code = call.text(0);
  if (!CLanguageOSVer::isKnown(code) && diagnose::isOn())
    diagnose::reportCall(diagnose::Group::arguments, "no language has the code " + code.str());
  language->setLanguageFolder(code);
  return {};
}

Result getLanguage(CMC_Application& application, Call& /*call*/) {
  const CLanguageOSVer* language = application.getWindow()->getLanguage();
  return Factory::makeString(language != nullptr ? language->getLanguageFolder() : CXString());
}

Result print(CMC_Application& application, Call& call) {
  CXRect rect;
  if (call.count() == 1) {
    const auto* scope = call.scope();
    const CXString name = call.text(0);
    const CGraphicsObject* graphics = scope != nullptr ? scope->getGraphicsObject(name) : nullptr;
    if (graphics != nullptr) {
      rect = graphics->getRect();
    } else if (diagnose::isOn()) {
      diagnose::reportCall(diagnose::Group::object, "no picture of the name " + name.str());
    }
  } else if (call.count() == 4) {
    rect.Set(call.integer(0), call.integer(1), call.integer(2), call.integer(3));
  }
  const CPrinter printer(application.getWindow(), rect);
  application.getWindow()->Invalidate();
  application.getWindow()->Redraw();
  return {};
}

Result enableMusic(CMC_Application& application, Call& /*call*/) {
  application.getWindow()->MusicOn(true);
  return {};
}

Result disableMusic(CMC_Application& application, Call& /*call*/) {
  application.getWindow()->MusicOn(false);
  return {};
}

Result run(CMC_Application& application, Call& call) {
  return runByName(application.getInnermostScene(), call, RunWords::anyCase);
}

struct Environment {
  CMC_ObjectsContainer* container = nullptr;
  CMC_Behaviour* behaviour = nullptr;
};

Environment findEnvironment(const Call& call) {
  Environment found;
  found.container = call.find<CMC_ObjectsContainer>(call.text(0));
  if (found.container != nullptr) found.behaviour = found.container->find<CMC_Behaviour>(call.text(1));
  return found;
}

Result runEnv(CMC_Application& /*application*/, Call& call) {
  const Environment found = findEnvironment(call);
  if (found.behaviour == nullptr) {
    if (diagnose::isOn()) {
      diagnose::reportCall(diagnose::Group::behaviour,
                           found.container == nullptr
                               ? "no such container"
                               : "no such behaviour in " + found.container->getName().str());
    }
    return {};
  }
  const Ref<CMC_Behaviour> behaviour(found.behaviour);
  const Ref<CMC_ObjectsContainer> own(behaviour->getScene());
  behaviour->setScene(found.container);
  behaviour->run(nullptr, nullptr, false);
  behaviour->setScene(own.get());
  return {};
}

Result existsEnv(CMC_Application& /*application*/, Call& call) {
  return Factory::makeBool(findEnvironment(call).behaviour != nullptr);
}

// The archive of the game and its update over the network are not there yet: nothing is stored and nothing
// waits.
Result nothing(CMC_Application& /*application*/, Call& /*call*/) {
  diagnose::reportCall(diagnose::Group::method, "does nothing in this build");
  return {};
}

Result needsUpgrade(CMC_Application& /*application*/, Call& /*call*/) { return Factory::makeBool(false); }

constexpr Method kMethods[] = {
    {1, "EXIT", 0, 0, method<exit>},
    {2, "RESTART", 0, 0, method<restart>},
    {3, "GOTO", 1, 1, method<gotoScene>},
    {4, "SETLANGUAGE", 1, 1, method<setLanguage>},
    {5, "GETLANGUAGE", 0, 0, method<getLanguage>},
    {6, "PRINT", 0, 4, method<print>},
    {7, "ENABLEMUSIC", 0, 0, method<enableMusic>},
    {8, "DISABLEMUSIC", 0, 0, method<disableMusic>},
    {9, "RUN", 2, Method::kAny, method<run>},
    {10, "STOREBINARY", 0, 0, method<nothing>},
    {11, "RUNENV", 2, 2, method<runEnv>},
    {12, "EXISTSENV", 2, 2, method<existsEnv>},
    {13, "UPGRADE", 0, 1, method<nothing>},
    {14, "NEEDSUPGRADE", 0, 1, method<needsUpgrade>},
};

}  // namespace

std::span<const Method> methods::application() { return kMethods; }

}  // namespace footlight
