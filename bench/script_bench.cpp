// The interpreter beside Lua 5.4. Both do the same work on the same world: named objects with a value and
// methods, found by name. Each round of a benchmark is the whole work; both sides check its outcome.

#include <benchmark/benchmark.h>

extern "C" {
#include <lauxlib.h>
#include <lua.h>
#include <lualib.h>
}

#include <cstdio>
#include <cstdlib>
#include <string>

#include "foundation/diagnose.h"
#include "objects/all_types.h"
#include "ratio_reporter.h"
#include "script/caches.h"
#include "script/mc_behaviour.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"

namespace footlight {

namespace {

struct Work {
  const char* name;
  // The engine: code of the behaviours BODY and MAIN; MAIN is run.
  const char* body;
  const char* main;
  // Lua: a chunk that is loaded once and run each round.
  const char* lua;
  // An integer variable and the value that it must hold after a round.
  const char* judged;
  int outcome;
};

constexpr const char* kLuaWorld = R"(
  Integer = {}
  Integer.__index = Integer
  function Integer:INC() self.value = self.value + 1 end
  function Integer:SET(v) self.value = v end
  function Integer:ADD(v) self.value = self.value + v end
  String = {}
  String.__index = String
  function String:SET(v) self.value = v end
  function String:ADD(v) self.value = self.value .. v end
  function String:FIND(v) return (string.find(self.value, v, 1, true) or 0) - 1 end
  local function integer(v) return setmetatable({value = v}, Integer) end
  X, A, B, C, D, F = integer(0), integer(1), integer(1), integer(3), integer(4), integer(0)
  S = setmetatable({value = ""}, String)
  objects = {}
  for i = 0, 4999 do objects["OBJ_" .. i] = integer(0) end
  function BODY(p, q) X:ADD(p + q) end
)";

constexpr Work kWorks[] = {
    {"a: a million X^INC() in a loop", "", "X^SET(0);@LOOP({X^INC();},0,1000000,1);",
     "X:SET(0) for i = 0, 999999 do X:INC() end", "X", 1000000},
    {"b: a loop with a test of two variables", "",
     "X^SET(0);@LOOP({@IF(A,\"_\",B,{X^INC();});},0,1000000,1);",
     "X:SET(0) for i = 0, 999999 do if A.value == B.value then X:INC() end end", "X", 1000000},
    {"c: an expression of four operands in a loop", "", "@LOOP({X^SET([A+B*C-D]);},0,1000000,1);",
     "for i = 0, 999999 do X:SET((A.value + B.value) * C.value - D.value) end", "X", 2},
    {"d: appending to a text and finding in it", "",
     "S^SET(\"\");@LOOP({S^ADD(\"ab\");F^SET(S^FIND(\"ba\"));},0,20000,1);",
     "S:SET('') for i = 0, 19999 do S:ADD('ab') F:SET(S:FIND('ba')) end", "F", 1},
    {"e: a behaviour called with two arguments", "X^ADD([$1+$2]);",
     "X^SET(0);@LOOP({BODY^RUN(A,C);},0,1000000,1);",
     "X:SET(0) for i = 0, 999999 do BODY(A.value, C.value) end", "X", 4000000},
    {"f: dynamic names among 5,000 objects", "OBJ_$1^INC();",
     "X^SET(0);@LOOP({BODY^RUNLOOPED(0,5000);X^INC();},0,200,1);",
     "X:SET(0) for k = 1, 200 do for i = 0, 4999 do objects['OBJ_' .. i]:INC() end X:INC() end", "X", 200},
};

[[noreturn]] void fail(const char* work, const char* what) {
  std::fprintf(stderr, "%s: %s\n", work, what);
  std::exit(1);
}

class World {
 public:
  explicit World(const Work& work) {
    CMC_VariableFactory::initialize();
    installAllTypes();
    CMC_RunnerFactory::initialize();
    scope_ = new CMC_ObjectsContainer(nullptr, "SCOPE", type::kScene);
    keep_ = Ref<CMC_ObjectsContainer>(scope_);
    for (const auto& [name, value] : {std::pair{"X", 0}, std::pair{"A", 1}, std::pair{"B", 1},
                                      std::pair{"C", 3}, std::pair{"D", 4}, std::pair{"F", 0}}) {
      add<CMC_Integer>(name, value);
    }
    add<CMC_String>("S", CXString());
    for (int i = 0; i < 5000; ++i) add<CMC_Integer>(("OBJ_" + std::to_string(i)).c_str(), 0);
    addBehaviour("BODY", work.body);
    main_ = addBehaviour("MAIN", work.main);
  }
  ~World() {
    CMC_Object::destroy(scope_);
    keep_ = nullptr;
    CMC_RunnerFactory::done();
    CMC_VariableFactory::done();
  }
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  void run() { main_->run(nullptr, nullptr, false); }
  int value(const char* name) const {
    auto* variable = scope_->find<CMC_Integer>(name);
    return variable != nullptr ? variable->getValue() : -1;
  }

 private:
  template <class T, class Value>
  void add(const char* name, Value value) {
    T* variable = new T(CXString(name), CMC_Variable::kNoPool);
    variable->put(value);
    variable->setScene(scope_);
    scope_->addObject(variable);
  }
  CMC_Behaviour* addBehaviour(const char* name, const char* code) {
    auto* behaviour = new CMC_Behaviour(scope_, name, code);
    behaviour->init();
    scope_->addObject(behaviour);
    return behaviour;
  }

  CMC_ObjectsContainer* scope_;
  Ref<CMC_ObjectsContainer> keep_;
  CMC_Behaviour* main_;
};

void runEngine(benchmark::State& state, const Work& work) {
  World world(work);
  for (auto _ : state) world.run();
  if (world.value(work.judged) != work.outcome) fail(work.name, "the engine's outcome is wrong");
}

// The reading without caches, for comparison.
void runLiteral(benchmark::State& state, const Work& work) {
  caches::enable(false);
  runEngine(state, work);
  caches::enable(true);
}

void runLua(benchmark::State& state, const Work& work) {
  lua_State* lua = luaL_newstate();
  luaL_openlibs(lua);
  if (luaL_dostring(lua, kLuaWorld) != 0 || luaL_loadstring(lua, work.lua) != 0)
    fail(work.name, lua_tostring(lua, -1));
  for (auto _ : state) {
    lua_pushvalue(lua, -1);
    if (lua_pcall(lua, 0, 0, 0) != 0) fail(work.name, lua_tostring(lua, -1));
  }
  lua_getglobal(lua, work.judged);
  lua_getfield(lua, -1, "value");
  if (lua_tointeger(lua, -1) != work.outcome) fail(work.name, "Lua's outcome is wrong");
  lua_close(lua);
}

}  // namespace

}  // namespace footlight

int main(int count, char** words) {
  using namespace footlight;
  for (const Work& work : kWorks) {
    const auto add = [&work](const char* who, void (*run)(benchmark::State&, const Work&)) {
      benchmark::RegisterBenchmark((std::string(who) + "/" + work.name).c_str(), run, work)
          ->Unit(benchmark::kMillisecond);
    };
    add("engine", runEngine);
    add("lua", runLua);
    add("literal", runLiteral);
  }
  return bench::runAll(count, words);
}
