#include "app/application.h"

#include "app/mc_application.h"
#include "app/structure_parser.h"
#include "files/config.h"
#include "files/file.h"
#include "files/path.h"
#include "files/resources_manager.h"
#include "foundation/command_line6.h"
#include "gfx/animation_manager.h"
#include "gfx/window.h"
#include "input/hot_spot.h"
#include "platform/platform.h"
#include "script/mc_runner.h"
#include "script/mc_variable_factory.h"
#include "sound/sound_codec.h"
#include "sound/sound_manager.h"

namespace footlight {

namespace {

constexpr const char* kDataFolder = "Dane";
constexpr const char* kSoundFolder = "Wavs";

}  // namespace

CApplication::CApplication(CWindow* window, const CXString& iniName, const CXString& bigFileName,
                           CCommandLine6* commandLine)
    : window_(window), commandLine_(commandLine), iniName_(iniName), bigFileName_(bigFileName) {
  animations_.reset(new CAnimationManager);
  sounds_.reset(new CSoundManager);
  CSoundCodec::init_codecs();
  if (bigFileName_.IsString()) CFile::openBigFile(bigFileName_);
  window_->SetApplicationInterface(this);
  if (iniName_.IsString()) config_ = std::make_unique<CConfig>(CWindow::getRootPath() + iniName_);
}

CApplication::~CApplication() {
  if (application_) application_->close();
  // Scenes know the application as one of their objects, so they end before it does.
  parser_.reset();
  application_.reset();
  CMC_Scene::doneDefUnit();
  config_.reset();
  resources_.reset();
  animations_.reset();
  CSoundCodec::done_codecs();
  sounds_.reset();
  CFile::closeBigFile();
  CHotSpot::done();
  CMC_RunnerFactory::done();
  CMC_VariableFactory::done();
  window_->SetApplicationInterface(nullptr);
}

void CApplication::preinitializeApplication() {
  const CXString path = commandLine_->getPath();
  resources_ = std::make_unique<CResourcesManager>(window_);
  if (path.IsString()) {
    platform::current().files().allowRoot(path);
    CFile::chDir(path);
  }
  const CPath here(window_);
  window_->setDataRoot(here.GetFullPath(""));
  window_->SetSoundFXPath(here.GetFullPath(kSoundFolder));
  CFile::chDir(kDataFolder);
  buildGame();
  if (!application_) {
    setErrorCode(kNoApplication);
  } else if (commandLine_->is2Bin()) {
    isStored_ = application_->storeBinary();
    application_->silence();
  } else {
    application_->initialize(nullptr);
  }
}

void CApplication::buildGame() {
  CMC_StructureParser::prepare();
  if (!commandLine_->isForceCNV() && CFile::canRead(CMC_Application::kBinaryFile)) {
    if (commandLine_->is2Bin())
      diagnose::report(diagnose::Group::file, CMC_Application::kBinaryFile, "",
                       "the binary form is stored from itself; -forceCNV stores it from the text");
    application_.reset(new CMC_Application(window_));
    if (!application_->isPlayable()) application_.reset();
    return;
  }
  parser_ = std::make_unique<CMC_StructureParser>(window_, "application.def");
  application_ = parser_->takeApplication();
}

bool CApplication::domodal() {
  if (application_) application_->domodal();
  if (config_) config_->tick();
  return false;
}

void CApplication::onMusicLooped() {
  CMC_Scene* level = application_ ? application_->getCurrentScene() : nullptr;
  CMC_Scene* below = level != nullptr ? level->getCurrentScene() : nullptr;
  const Ref<CMC_Scene> scene = below != nullptr ? below : level;  // a game may do without episodes
  if (scene) scene->onSignal(scene->signalName(LevelSignal::onMusicLooped));
}

void CApplication::OnWindowCommand(int id) {
  constexpr int kQuit = 40001;
  constexpr int kRedraw = 40004;
  if (id == kQuit) window_->quit();
  if (id != kRedraw) return;
  window_->Invalidate();
  window_->Redraw();
}

CXString CApplication::getWAVPath(const CXString& name) const { return window_->GetSoundFXFullPath(name); }

}  // namespace footlight
