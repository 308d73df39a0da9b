#include <memory>
#include <vector>

#include "script/mc_class.h"
#include "script/mc_groupped_runner.h"
#include "script/mc_runner.h"
#include "script/method_tables.h"

namespace footlight {

namespace {

struct Runners {
  int users = 0;
  std::vector<std::unique_ptr<CMC_Runner>> owned;
  std::vector<CMC_Runner*> byType;  // indexed by the type's number
};

Runners runners;

void add(std::unique_ptr<CMC_Runner> runner, std::initializer_list<int> types) {
  runner->prepareMthHashSet();
  for (const int type : types) {
    const auto index = static_cast<std::size_t>(type);
    if (runners.byType.size() <= index) runners.byType.resize(index + 1);
    runners.byType[index] = runner.get();
  }
  runners.owned.push_back(std::move(runner));
}

void add(std::span<const Method> methods, std::initializer_list<int> types) {
  add(std::make_unique<CMC_Runner>(methods), types);
}

}  // namespace

void CMC_RunnerFactory::initialize() {
  if (++runners.users > 1) return;
  add(methods::builtIns(), {type::kBuiltIns});
  add(methods::variable(), {type::kInteger, type::kString, type::kBool, type::kDouble, type::kExpression});
  add(methods::basicCondition(), {type::kCondition, type::kComplexCondition});
  add(methods::behaviour(), {type::kBehaviour});
  add(methods::random(), {type::kRandom});
  add(methods::application(), {type::kApplication});
  add(methods::episode(), {type::kEpisode});
  add(methods::scene(), {type::kScene});
  add(methods::timer(), {type::kTimer});
  add(methods::animo(), {type::kAnimo});
  add(methods::image(), {type::kImage});
  add(methods::canvasObserver(), {type::kCanvasObserver});
  add(methods::button(), {type::kButton});
  add(methods::sound(), {type::kSound});
  add(methods::joystick(), {type::kJoystick});
  add(methods::mouse(), {type::kMouse});
  add(methods::keyboard(), {type::kKeyboard});
  add(methods::array(), {type::kArray});
  add(methods::dialog(), {type::kDialog});
  add(methods::structure(), {type::kStructure});
  add(methods::system(), {type::kSystem});
  add(methods::cnvLoader(), {type::kCnvLoader});
  add(std::make_unique<CMC_Groupped_Runner>(methods::groupped()), {type::kGroup});
  add(std::make_unique<CMC_Class_Runner>(methods::scriptClass()), {type::kClass});
  // Types whose own methods are not there yet have those of every object.
  add(std::span<const Method>(), {type::kFont,
                                  type::kSequence,
                                  type::kText,
                                  type::kEditBox,
                                  type::kNetServer,
                                  type::kNetClient,
                                  type::kFilter,
                                  type::kStaticFilter,
                                  type::kVector,
                                  type::kPath,
                                  type::kFifo,
                                  type::kLifo,
                                  type::kCanvas,
                                  type::kPattern,
                                  type::kScroll,
                                  type::kMovie,
                                  type::kGrBuffer,
                                  type::kDatabase,
                                  type::kVirtualGraphicsObject,
                                  type::kMultiArray});
}

void CMC_RunnerFactory::done() {
  if (runners.users > 0 && --runners.users == 0) runners = {};
}

CMC_Runner* CMC_RunnerFactory::getRunner(int type) {
  const bool isKnown = type >= 0 && static_cast<std::size_t>(type) < runners.byType.size();
  return isKnown ? runners.byType[static_cast<std::size_t>(type)] : nullptr;
}

}  // namespace footlight
