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

Result storeBinary(CMC_Application& application, Call& /*call*/) {
  application.storeBinary();
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
    {1, "EXIT", "", method<exit>, "Ends the game after this step."},
    {2, "RESTART", "", method<restart>, "Goes back to where the game begins."},
    {3, "GOTO", "level:name", method<gotoScene>,
     "Goes to an episode or a scene of its own with the next step."},
    {4, "SETLANGUAGE", "code:text", method<setLanguage>,
     "Sets the language by the four hexadecimal digits of its code; an unknown code changes nothing."},
    {5, "GETLANGUAGE", "-> text", method<getLanguage>,
     "The folder of the language, empty where none is known."},
    {6, "PRINT", "[left:value], [top:int], [right:int], [bottom:int]", method<print>,
     "Prints a part of the screen: the box of a picture by its name, or four numbers in pixels; all of it "
     "without arguments."},
    {7, "ENABLEMUSIC", "", method<enableMusic>, "Lets music be played again."},
    {8, "DISABLEMUSIC", "", method<disableMusic>, "Lets no music be played."},
    {9, "RUN", "object:name, method:text, [arguments:value...] -> value", method<run>,
     "Calls a method of an object by their names, as the scene that runs knows them; gives what it gives."},
    {10, "STOREBINARY", "", method<storeBinary>,
     "Writes the whole game in its binary form: this level as it is now, all others as they are defined."},
    {11, "RUNENV", "level:name, behaviour:name", method<runEnv>,
     "Runs a BEHAVIOUR of that scene or other level within it, without arguments."},
    {12, "EXISTSENV", "level:name, behaviour:name -> bool", method<existsEnv>,
     "Whether there are that level and that BEHAVIOUR in it for RUNENV."},
    {13, "UPGRADE", "[scene:name]", method<nothing>,
     "Fetches the next version of the game, or of one scene, over the network. Does nothing in this build."},
    {14, "NEEDSUPGRADE", "[scene:name] -> bool", method<needsUpgrade>,
     "Whether a next version of the game, or of one scene, waits; always FALSE in this build."},
};

constexpr auto kProperties = level_words::withProperties({
    {"EPISODES", PropertyKind::list, "", "Its episodes, in their order."},
    {"SCENES", PropertyKind::list, "", "The scenes that belong to it and to no episode."},
    {"STARTWITH", PropertyKind::name, "",
     "The episode or scene where the game begins; without it the first one."},
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
