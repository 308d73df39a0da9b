// Scripts' methods of APPLICATION.

#include "app/application.h"
#include "app/level_words.h"
#include "app/mc_application.h"
#include "app/printer.h"
#include "app/script_run.h"
#include "files/language_os_ver.h"
#include "gfx/graphics_object.h"
#include "gfx/window.h"
#include "script/mc_behaviour.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

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

// The archive of the game and its update over the network are not there yet: nothing is stored
// and nothing waits.
Result nothing(CMC_Application& /*application*/, Call& /*call*/) {
  diagnose::reportCall(diagnose::Group::method, "does nothing in this build");
  return {};
}

Result needsUpgrade(CMC_Application& /*application*/, Call& /*call*/) { return Factory::makeBool(false); }

constexpr Method kMethods[] = {
    {1, "EXIT", "", method<exit>, "Ends the game."},
    {2, "RESTART", "", method<restart>, "Begins the game anew."},
    {3, "GOTO", "level:name", method<gotoScene>, "Goes to an episode or a scene."},
    {4, "SETLANGUAGE", "code:text", method<setLanguage>, "Takes a language by the four digits of its code."},
    {5, "GETLANGUAGE", "-> text", method<getLanguage>, "The folder of the language."},
    {6, "PRINT", "[left:value], [top:int], [right:int], [bottom:int]", method<print>,
     "Prints the screen, the box of a picture, or a part by four numbers."},
    {7, "ENABLEMUSIC", "", method<enableMusic>, "Music is played again."},
    {8, "DISABLEMUSIC", "", method<disableMusic>, "No music is played."},
    {9, "RUN", "object:name, method:text, [arguments:value...] -> value", method<run>,
     "Calls a method of an object of the scene that runs."},
    {10, "STOREBINARY", "", method<nothing>, "Stores the game in its binary form."},
    {11, "RUNENV", "level:name, behaviour:name", method<runEnv>,
     "Runs a BEHAVIOUR in the scope of that level."},
    {12, "EXISTSENV", "level:name, behaviour:name -> bool", method<existsEnv>,
     "Whether RUNENV would find the two."},
    {13, "UPGRADE", "[file:file]", method<nothing>, "Fetches the next version of the game."},
    {14, "NEEDSUPGRADE", "[file:file] -> bool", method<needsUpgrade>, "Whether a next version waits."},
};

constexpr auto kProperties = level_words::withProperties({
    {"EPISODES", PropertyKind::list, "", "Its episodes."},
    {"SCENES", PropertyKind::list, "", "Its scenes, where it has no episodes."},
    {"STARTWITH", PropertyKind::name, "", "Where it begins; without it with the first one."},
});

}  // namespace

extern constinit const ScriptType kApplicationType = {
    .number = type::kApplication,
    .idWord = "APPLICATION",
    .stringWord = "APPLICATION",
    .meaning = "The whole game.",
    .signals = level_words::kSignals,
    .properties = kProperties,
    .methods = kMethods,
};

}  // namespace footlight
