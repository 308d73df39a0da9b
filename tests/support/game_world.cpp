#include "support/game_world.h"

#include "app/mc_application.h"
#include "foundation/random.h"
#include "foundation/xtimer.h"
#include "script/caches.h"
#include "script/inline_code.h"
#include "script/mc_behaviour.h"
#include "script/watchdog.h"

namespace footlight::test {

namespace {

constexpr int kPriceOfAFile = 8;  // as many as that many statements
constexpr CXSize kScreen{64, 48};

platform::HeadlessOptions machineOptions() {
  platform::HeadlessOptions options;
  return options;
}

}  // namespace

// The machine owns the disk; the reference is taken before it is handed over.
World::World(const Disk& disk, const Rules& rules)
    : files_(*new MemoryFiles(disk)),
      machine_(machineOptions(), std::unique_ptr<platform::FileSystem>(&files_)),
      budget_(rules.budget),
      generation_(CMC_ObjectsContainer::generation()) {
  platform::use(&machine_);
  caches::enable(!rules.literal);
  CXRandom::seed(1);
  CXTimer::enable(true);
  CMC_InlineCode::restartNames();
  watchdog::use([this] { return mayContinue(); });
  files_.onAccess = [this] { budget_ -= kPriceOfAFile; };
  language_ = std::make_unique<CLanguageOSVer>();
  window_ = std::make_unique<CWindow>(&commandLine_, language_.get(), kScreen, "C:\\engine");
  language_->setWindowIfc(window_.get());
  application_ = std::make_unique<CApplication>(window_.get(), kIni, "", &commandLine_);
  window_->CreateSurface();
  window_->OnCreate();
  window_->OnActivateApp(true);
  application_->preinitializeApplication();
}

World::~World() {
  close();
  watchdog::use({});
  platform::use(nullptr);
}

// Asked once in so many statements.
bool World::mayContinue() {
  const std::uint64_t generation = CMC_ObjectsContainer::generation();
  budget_ -= watchdog::kStatements + static_cast<std::int64_t>(generation - generation_);
  generation_ = generation;
  return budget_ > 0;
}

void World::close() {
  application_.reset();
  window_.reset();
  language_.reset();
  ended_ = true;
}

CMC_Scene* World::scene() const { return game() != nullptr ? game()->getInnermostScene() : nullptr; }

void World::run(CMC_ObjectsContainer* level, const std::string& name, std::string_view code) {
  if (level == nullptr) return;
  const Ref<CMC_Behaviour> behaviour(new CMC_Behaviour(level, name, CXString(code)));
  behaviour->init();
  level->addObject(behaviour.get());
  behaviour->run(nullptr, nullptr, false);
}

void World::tick() {
  if (hasEnded()) return;
  machine_.clock().advance(kTick);
  ended_ = window_->domodal();
}

}  // namespace footlight::test
