// The interpreter beside Lua 5.4. Both do the same work on the same world. Lua has it in two forms: "objects"
// are tables with a value and methods, as the engine's are, and "plain" are the globals and tables that one
// would write in Lua. Each round of a benchmark is the whole work; all sides check its outcome.

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
#include "objects/data/mc_array.h"
#include "ratio_reporter.h"
#include "script/caches.h"
#include "script/mc_behaviour.h"
#include "script/mc_objects_container.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "script/melement.h"

namespace footlight {

namespace {

struct Work {
  const char* name;
  // The engine: code of the behaviours BODY and MAIN; MAIN is run.
  const char* body;
  const char* main;
  // Lua: chunks that are loaded once and run each round; null for none.
  const char* objects;
  const char* plain;
  // An integer variable and the value that it must hold after a round.
  const char* judged;
  int outcome;
};

constexpr const char* kObjectsWorld = R"(
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
  Array = {}
  Array.__index = Array
  function Array:ADD(v) self[#self + 1] = v end
  function Array:GET(i) return self[i + 1] end
  function Array:SORT() table.sort(self) end
  local function integer(v) return setmetatable({value = v}, Integer) end
  X, A, B, C, D, F = integer(0), integer(1), integer(1), integer(3), integer(4), integer(0)
  S = setmetatable({value = ""}, String)
  L, K = setmetatable({}, Array), setmetatable({}, Array)
  for i = 0, 999 do K:ADD(i) end
  R = setmetatable({}, Array)
  for i = 0, 99999 do R:ADD(i * 7919 % 100000) end
  objects = {}
  for i = 0, 4999 do objects["OBJ_" .. i] = integer(0) end
  function BODY(p, q) X:ADD(p + q) end
)";

constexpr const char* kPlainWorld = R"(
  X, A, B, C, D, F = 0, 1, 1, 3, 4, 0
  S = ""
  L, K = {}, {}
  for i = 0, 999 do K[#K + 1] = i end
  R = {}
  for i = 0, 99999 do R[#R + 1] = i * 7919 % 100000 end
  objects = {}
  for i = 0, 4999 do objects["OBJ_" .. i] = 0 end
  function BODY(p, q) X = X + p + q end
)";

constexpr Work kWorks[] = {
    {"a: a million X^INC() in a loop", "", "X^SET(0);@LOOP({X^INC();},0,1000000,1);",
     "X:SET(0) for i = 0, 999999 do X:INC() end", "X = 0 for i = 0, 999999 do X = X + 1 end", "X", 1000000},
    {"b: a loop with a test of two variables", "",
     "X^SET(0);@LOOP({@IF(A,\"_\",B,{X^INC();});},0,1000000,1);",
     "X:SET(0) for i = 0, 999999 do if A.value == B.value then X:INC() end end",
     "X = 0 for i = 0, 999999 do if A == B then X = X + 1 end end", "X", 1000000},
    {"b: if and else in turn", "", "X^SET(0);@LOOP({@IF(X,\"<\",C,{X^INC();},{X^SET(0);});},0,1000000,1);",
     "X:SET(0) for i = 0, 999999 do if X.value < C.value then X:INC() else X:SET(0) end end",
     "X = 0 for i = 0, 999999 do if X < C then X = X + 1 else X = 0 end end", "X", 0},
    {"c: an expression of four operands in a loop", "", "@LOOP({X^SET([A+B*C-D]);},0,1000000,1);",
     "for i = 0, 999999 do X:SET((A.value + B.value) * C.value - D.value) end",
     "for i = 0, 999999 do X = (A + B) * C - D end", "X", 2},
    {"d: appending to a text and finding in it", "",
     "S^SET(\"\");@LOOP({S^ADD(\"ab\");F^SET(S^FIND(\"ba\"));},0,20000,1);",
     "S:SET('') for i = 0, 19999 do S:ADD('ab') F:SET(S:FIND('ba')) end",
     "S = '' for i = 0, 19999 do S = S .. 'ab' F = (string.find(S, 'ba', 1, true) or 0) - 1 end", "F", 1},
    {"d: appending to a short text and finding in it", "",
     "@LOOP({S^SET(\"x\");S^ADD(\"ab\");F^SET(S^FIND(\"b\"));},0,100000,1);",
     "for i = 0, 99999 do S:SET('x') S:ADD('ab') F:SET(S:FIND('b')) end",
     "for i = 0, 99999 do S = 'x' S = S .. 'ab' F = (string.find(S, 'b', 1, true) or 0) - 1 end", "F", 2},
    {"e: a behaviour called with two arguments", "X^ADD([$1+$2]);",
     "X^SET(0);@LOOP({BODY^RUN(A,C);},0,1000000,1);",
     "X:SET(0) for i = 0, 999999 do BODY(A.value, C.value) end", "X = 0 for i = 0, 999999 do BODY(A, C) end",
     "X", 4000000},
    {"f: dynamic names among 5,000 objects", "OBJ_$1^INC();",
     "X^SET(0);@LOOP({BODY^RUNLOOPED(0,5000);X^INC();},0,200,1);",
     "X:SET(0) for k = 1, 200 do for i = 0, 4999 do objects['OBJ_' .. i]:INC() end X:INC() end",
     "X = 0 for k = 1, 200 do for i = 0, 4999 do local n = 'OBJ_' .. i objects[n] = objects[n] + 1 end "
     "X = X + 1 end",
     "X", 200},
    {"g: a million added to an array", "",
     "L^REMOVEALL();@LOOP({L^ADD(_I_);},0,1000000,1);X^SET(L^GETSIZE());",
     "L = setmetatable({}, Array) for i = 0, 999999 do L:ADD(i) end X:SET(#L)",
     "L = {} for i = 0, 999999 do L[#L + 1] = i end X = #L", "X", 1000000},
    {"h: a million read from an array", "", "@LOOP({X^SET(K^GET(C));},0,1000000,1);",
     "for i = 0, 999999 do X:SET(K:GET(C.value)) end", "for i = 0, 999999 do X = K[C + 1] end", "X", 3},
    {"i: an array of 100,000 sorted", "", "L^REMOVEALL();R^COPYTO(\"L\");L^SORT(TRUE);X^SET(L^GET(5));",
     "L = setmetatable(table.move(R, 1, #R, 1, {}), Array) L:SORT() X:SET(L:GET(5))",
     "L = table.move(R, 1, #R, 1, {}) table.sort(L) X = L[6]", "X", 5},
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
    addArray("L", 0, 0);
    addArray("K", 1000, 1);
    addArray("R", 100000, 7919);  // one after the other, but in no order
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
  void addArray(const char* name, int count, int step) {
    const CMElement element(name, Origin());
    auto* array = new CMC_Array(scope_, &element);
    for (int i = 0; i < count; ++i)
      array->add(CMC_VariableFactory::makeInteger(static_cast<int>(std::int64_t{i} * step % count)).get());
    scope_->addObject(array);
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

void runLua(benchmark::State& state, const Work& work, const char* world, const char* chunk) {
  lua_State* lua = luaL_newstate();
  luaL_openlibs(lua);
  if (luaL_dostring(lua, world) != 0 || luaL_loadstring(lua, chunk) != 0)
    fail(work.name, lua_tostring(lua, -1));
  for (auto _ : state) {
    lua_pushvalue(lua, -1);
    if (lua_pcall(lua, 0, 0, 0) != 0) fail(work.name, lua_tostring(lua, -1));
  }
  lua_getglobal(lua, work.judged);
  if (lua_istable(lua, -1)) lua_getfield(lua, -1, "value");
  if (lua_tointeger(lua, -1) != work.outcome) fail(work.name, "Lua's outcome is wrong");
  lua_close(lua);
}

void runObjects(benchmark::State& state, const Work& work) {
  runLua(state, work, kObjectsWorld, work.objects);
}

void runPlain(benchmark::State& state, const Work& work) { runLua(state, work, kPlainWorld, work.plain); }

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
    add("Lua, objects", runObjects);
    add("Lua, plain", runPlain);
    add("literal", runLiteral);
  }
  return bench::runAll(count, words);
}
