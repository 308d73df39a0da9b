#include "gfx/window.h"

#include "app/application.h"
#include "files/language_os_ver.h"
#include "foundation/command_line6.h"
#include "foundation/xtimer.h"
#include "gfx/animation_manager.h"
#include "gfx/collision_inspector.h"
#include "gfx/direct_draw_surface.h"
#include "gfx/refresh_screen.h"
#include "gfx/surface.h"
#include "input/cursor_clip.h"
#include "input/dx_mouse.h"
#include "input/keyboard.h"
#include "input/poller_thread.h"
#include "platform/platform.h"
#include "script/public_trash.h"
#include "sound/music_player.h"
#include "sound/sound_manager.h"

namespace footlight {

namespace {

// What the engine keeps for all of the process; the window's end resets it.
struct Statics {
  CWindow* instance = nullptr;
  CXString rootPath;
  CXString exePath;
  bool paused = false;
};

Statics& statics() {
  static Statics values;
  return values;
}

CXString asFolder(CXString path) {
  if (path.IsString() && path.lastChar() != '\\') path += '\\';
  return path;
}

}  // namespace

CWindow::CWindow(CCommandLine6* commandLine, CLanguageOSVer* language, CXSize size, CXString exePath)
    : commandLine_(commandLine),
      language_(language),
      screenSize_(size),
      videoMemory_(commandLine->isVMem()),
      windowMode_(commandLine->isWindowMode()),
      soundOn_(commandLine->isSoundEnabled()),
      musicOn_(commandLine->isMusicEnabled()),
      music_(new CMusicPlayer(this)) {
  Statics& all = statics();
  all = {this, asFolder(CXString(platform::current().files().currentDirectory())),
         asFolder(std::move(exePath)), false};
  dataRoot_ = all.rootPath;
  CFilePlaces::use(this);
  timer_ = std::make_unique<CXTimer>();
  SetCursor(platform::Cursor::main);
  keyboard_.reset(new CKeyboard(this));
  mouse_ = std::make_unique<CDXMouse>(this);
  language_->onLanguageChange = [this] { keyboard_->initLanguage(); };
  collisionInspector_.reset(new CCollisionInspector);
  publicTrash_ = std::make_unique<CPublicTrash>(timer_.get());
  if (platform::current().input().wantsPollingThread()) {
    pollerThread_ = std::make_unique<CPollerThread>(&criticalSection_, [this] { tickPollers(); });
  }
}

CWindow::~CWindow() {
  pollerThread_.reset();
  release();
  CFilePlaces::use(nullptr);
  statics() = {};
}

void CWindow::release() {
  publicTrash_.reset();
  refreshScreen_.reset();
  backSurface_.reset();
  surface_.reset();
  music_.reset();
  timer_.reset();
  if (keyboard_) language_->onLanguageChange = {};
  keyboard_.reset();
  mouse_.reset();
  keyListeners_.clear();
  mouseListeners_.clear();
}

CWindow* CWindow::getInstance() { return statics().instance; }
CXString CWindow::getRootPath() { return statics().rootPath; }
CXString CWindow::getExePath() { return statics().exePath; }
bool CWindow::isPaused() { return statics().paused; }
void CWindow::pause() { statics().paused = true; }
void CWindow::resume() { statics().paused = false; }

CXString CWindow::GetSoundFXFullPath(const CXString& name) const {
  return soundFXPath_.IsEmpty() ? name : soundFXPath_ + "\\" + name;
}

CXString CWindow::localFileName(const CXString& path) const { return language_->getLocalFileName(path); }
bool CWindow::isToCode() const { return commandLine_->isToCode(); }
bool CWindow::isToDecode() const { return commandLine_->isToDecode(); }

// The main loop

// The application
namespace {

// What a getter of the application gives; null where a link is missing.
template <auto Get>
auto askApplication(const CWindow* window) {
  CApplication* application = window != nullptr ? window->getApplication() : nullptr;
  return application != nullptr ? (application->*Get)() : nullptr;
}

}  // namespace

CAnimationManager* CWindow::animationsOf(const CWindow* window) {
  return askApplication<&CApplication::getAnimationManager>(window);
}

CSoundManager* CWindow::soundsOf(const CWindow* window) {
  return askApplication<&CApplication::getSoundManagerIfc>(window);
}

CConfig* CWindow::configOf(const CWindow* window) {
  return askApplication<&CApplication::GetConfigInterface>(window);
}

CResourcesManager* CWindow::resourcesOf(const CWindow* window) {
  return askApplication<&CApplication::getGeneralResourcesManager>(window);
}

void CWindow::onMusicLooped() {
  if (application_ != nullptr) application_->onMusicLooped();
}

bool CWindow::domodal() {
  Tick();
  const bool ended = application_ != nullptr && application_->domodal();
  return ended || quitFlag_;
}

// Frame, input, timers, animations, sounds, collisions, and last the handlers of the input: all that scripts
// do in a tick shows in the frame of the next.
void CWindow::Tick() {
  if (!active_) return;
  Redraw();
  if (pollerThread_ == nullptr) tickPollers();
  timer_->domodal();
  if (CAnimationManager* animations = animationsOf(this)) animations->domodal();
  if (CSoundManager* sounds = soundsOf(this)) sounds->domodal();
  collisionInspector_->tick();
  flushPollers();
}

int CWindow::OnCreate() {
  timer_->add(1, this);
  return 0;
}

void CWindow::Activate(bool active) {
  active_ = active;
  if (pollerThread_ != nullptr) pollerThread_->pause(!active);
}

int CWindow::OnActivateApp(bool active) {
  if (active == active_) return 0;
  Activate(active);
  if (refreshScreen_ == nullptr) return 0;
  if (active) {
    refreshScreen_->onFocusOn();
    CCursorClip::restore();
  } else {
    refreshScreen_->onFocusOff();
    CCursorClip::release(false);
  }
  return 0;
}

int CWindow::OnDestroy() {
  pollerThread_.reset();
  quit();
  return 0;
}

bool CWindow::OnExit() { return application_ == nullptr || application_->OnExit(); }

int CWindow::OnMove(int x, int y) {
  if (!windowMode_ || refreshScreen_ == nullptr) return 0;
  refreshScreen_->SetPosition(x, y);
  Invalidate();
  return 0;
}

// Music

void CWindow::StartMusic(const CXString& name, bool looped) {
  if (soundOn_ && musicOn_) music_->start(getRootPath() + name, looped);
}

void CWindow::StopMusic() { music_->stop(); }

bool CWindow::isMusicPlaying() const { return music_->isPlaying(); }

CXString CWindow::getMusicFileName() const { return isMusicPlaying() ? music_->getFileName() : CXString(); }

int CWindow::getMusicVolume() const {
  const CSndStream* stream = music_->getStream();
  return stream != nullptr ? stream->getVolume() : 0;
}

void CWindow::setMusicVolume(int volume) {
  if (CSndStream* stream = music_->getStream()) stream->setVolume(volume);
}

void CWindow::setMusicPan(int pan) {
  if (CSndStream* stream = music_->getStream()) stream->setPan(pan);
}

void CWindow::setMusicFreq(int frequency) {
  if (CSndStream* stream = music_->getStream()) stream->setFreq(frequency);
}

// Cursor and messages

void CWindow::SetCursor(platform::Cursor cursor) {
  if (!cursorLocked_ && cursor != platform::Cursor::none) platform::current().shell().setCursor(cursor);
}

void CWindow::BeginActiveCursor() {
  if (!activeCursorLocked_) SetCursor(platform::Cursor::active);
}

void CWindow::lockActiveCursor(bool locked) {
  EndActiveCursor();
  activeCursorLocked_ = locked;
}

void CWindow::ShowCursor() { platform::current().shell().showCursor(true); }
void CWindow::HideCursor() { platform::current().shell().showCursor(false); }

void CWindow::ShowError(const CXString& caption) {
  // Code page 1250: B3 is a small l with a stroke, B9 and EA a and e with a tail, BF z with a dot.
  constexpr const char* kGraphicsText =
      "Nieprawid\xB3owe dzia\xB3"
      "anie karty graficznej.";
  constexpr const char* kSoundText =
      "Nieprawid\xB3owe dzia\xB3"
      "anie karty d\x9Fwi\xEAkowej.";
  constexpr const char* kOtherText =
      "Nieznany b\xB3\xB9"
      "d krytyczny.";
  const int code = LastError();
  if (code == 0) return;
  const char* text = code == kGraphicsError ? kGraphicsText : code == kSoundError ? kSoundText : kOtherText;
  platform::current().shell().messageBox(caption, text);
}

}  // namespace footlight
