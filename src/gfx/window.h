#pragma once

// CWindow is the hub of the engine: the one object that every graphic object knows. The host makes it,
// brings up the display, calls `domodal` until that answers true and forwards the window's events; the
// window owns the display surfaces, the refresh screen, the timer list and the pollers, and only refers
// to everything else.
//
// One tick runs in a fixed order (see `Tick`): the frame that a tick shows is the state that the tick before
// it left. Nothing moves until the window is active.
//
// Listeners and pollers are never owned. A listener is kept with a weak reference to its object: one that has
// gone is skipped and dropped. While an event goes round, listeners may come and go freely; a new one first
// hears the next event, one that was removed hears no more.
//
// Everything here belongs to the engine's thread, but for the pollers' `tick`, which runs on the poller
// thread where the platform has one, under the one lock that `getCriticalSectionHandle` gives.

#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

#include "files/file_places.h"
#include "foundation/geometry.h"
#include "foundation/timer_notificator.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"
#include "platform/shell.h"

namespace footlight::platform {
class Surface;
}

namespace footlight {

class CApplication;
class CSoundManager;
class CResourcesManager;
class CConfig;
class CAnimationManager;
class CColor;
class CCommandLine6;
class CDirectDrawSurface;
class CGraphicsObject;
class CInputPoller;
class CKeyListener;
class CLanguageOSVer;
class CMouseListener;
class CMusicPlayer;
class CPollerThread;
class CCollisionInspector;
class CDXMouse;
class CKeyboard;
class CPublicTrash;
class CRefreshScreen;
class CScreenUnit;
class CSurface;
class CXTimer;

class CWindow : public CXObject, public CFilePlaces, public CTimerNotificator {
 public:
  static constexpr int kGraphicsError = -998;
  static constexpr int kSoundError = -997;
  static constexpr int kCaptionPriority = 1000000;  // of the listener that `setMouseCaption` put on top

  // Both parameters stay the caller's and must outlive the window. The engine's current directory becomes the
  // root path, `exePath` the folder of the host. There must be a platform, and no other window.
  CWindow(CCommandLine6* commandLine, CLanguageOSVer* language, CXSize size, CXString exePath);
  ~CWindow() override;
  CWindow(const CWindow&) = delete;
  CWindow& operator=(const CWindow&) = delete;

  // Events of the host's window, in the order of their slots.
  virtual int Redraw();  // composes and shows one frame; gives 0
  virtual int OnCreate();
  virtual int OnSize(int /*width*/, int /*height*/) { return 0; }
  virtual int OnPaint() { return 0; }
  virtual int OnActivateApp(bool active);
  virtual int OnDestroy();           // ends the polling and the main loop
  virtual bool OnExit();             // may the program end? The application decides; without one, yes
  virtual int OnMove(int x, int y);  // the client area's place on the screen

  // Start of the display in a window; gives the error code, 0 when all is well.
  int CreateSurface();
  // Start of the display on the full screen. A width or height of 0 takes the window's own. May be called
  // again: it throws away the refresh screen and with it the list of drawn objects. Gives the error code.
  int SetDisplayMode(int width, int height, int bpp);
  int SetDisplayMode(CXSize size, int bpp) { return SetDisplayMode(size.width, size.height, bpp); }

  // One pass of the main loop: a tick, then the application's step. True when the program is to end.
  bool domodal();
  void Tick();
  void onTimer(TimerId /*id*/) override {}
  void quit() { quitFlag_ = true; }
  bool isQuitting() const { return quitFlag_; }
  // Takes down all that the window owns, in a fixed order; the destructor does it too.
  void release();

  bool isActive() const { return active_; }
  void Activate(bool active);  // the flag alone: nobody is told
  // The pause flag of the scene. It does not stop ticks.
  static bool isPaused();
  static void pause();
  static void resume();

  // What the next frame must draw anew: all of the screen, a rectangle of it, the place of an object.
  void Invalidate();
  void Invalidate(CXRect* rect);
  void Invalidate(CGraphicsObject* object);
  // The picture behind everything: an object (null: none), a colour (null: the usual one), a picture file.
  void SetBackground(CGraphicsObject* object);
  void SetBackground(CColor* colour);
  void SetBackground(const CXString& fileName);

  CXSize GetScreenSize() const { return screenSize_; }
  int GetBpp() const;               // bits per pixel of the display; 0 while there is none
  std::byte* GetScreenPtr() const;  // pixels of the back surface; null while there is none
  CSurface* GetSurface() const { return surface_.get(); }
  CDirectDrawSurface* getBackSurface() const { return backSurface_.get(); }
  CRefreshScreen* getRefreshScreen() const { return refreshScreen_.get(); }
  bool isVMem() const { return videoMemory_; }
  bool isWindowMode() const { return windowMode_; }

  // The part of the scene that the refresh screen asks for its first update; null when no scene is shown. The
  // unit stays the caller's and takes itself away when it ends.
  void setScreenUnit(CScreenUnit* unit) { screenUnit_ = unit; }
  CScreenUnit* getScreenUnit() const { return screenUnit_; }

  // The one window, or null.
  static CWindow* getInstance();
  // Where the engine was started and where the host lies, both ending in a backslash; empty without a window.
  static CXString getRootPath();
  static CXString getExePath();
  // The folder that the command line's path leads to, ending in a backslash; the root path until it is set.
  void setDataRoot(CXString path) { dataRoot_ = std::move(path); }
  CXString getDataRoot() const { return dataRoot_; }
  void SetSoundFXPath(CXString path) { soundFXPath_ = std::move(path); }
  // The sound folder, a backslash and the name; the name alone while no folder is set.
  CXString GetSoundFXFullPath(const CXString& name) const;

  // What the file classes ask.
  CXString rootPath() const override { return getRootPath(); }
  CXString dataRoot() const override { return dataRoot_; }
  bool hasLanguage() const override { return language_ != nullptr; }
  CXString localFileName(const CXString& path) const override;
  bool isToCode() const override;
  bool isToDecode() const override;

  CCommandLine6* getCommandLine() const { return commandLine_; }
  CLanguageOSVer* getLanguage() const { return language_; }
  void SetApplicationInterface(CApplication* application) { application_ = application; }
  CApplication* getApplication() const { return application_; }
  // What the application holds; null while there is none, and for a null window.
  static CAnimationManager* animationsOf(const CWindow* window);
  static CSoundManager* soundsOf(const CWindow* window);
  static CConfig* configOf(const CWindow* window);
  static CResourcesManager* resourcesOf(const CWindow* window);
  // The music has begun anew; the game hears of it.
  void onMusicLooped();
  CXTimer* GetTimerInterface() const { return timer_.get(); }
  CPublicTrash* getPublicTrashInterface() const { return publicTrash_.get(); }
  CKeyboard* getKeyboardInterface() const { return keyboard_.get(); }
  CDXMouse* getDXMouseInterface() const { return mouse_.get(); }
  CCollisionInspector* getCollisionInspector() const { return collisionInspector_.get(); }

  // Two flags; music starts only while both are set.
  void SoundOn(bool on) { soundOn_ = on; }
  bool IsSoundOn() const { return soundOn_; }
  void MusicOn(bool on) { musicOn_ = on; }
  bool IsMusicOn() const { return musicOn_; }
  // The one piece of music, by a name below the root path. Asking for what plays already changes nothing.
  // Volume, panning and frequency belong to the piece that plays and are ignored without one.
  void StartMusic(const CXString& name, bool looped);
  void StopMusic();
  bool isMusicPlaying() const;
  CXString getMusicFileName() const;  // the full name of what plays, else empty
  int getMusicVolume() const;
  void setMusicVolume(int volume);
  void setMusicPan(int pan);
  void setMusicFreq(int frequency);

  // Cursors are ignored while the cursor is locked; the active one also while that is locked for itself.
  void SetCursor(platform::Cursor cursor);
  void BeginWaitCursor() { SetCursor(platform::Cursor::wait); }
  void EndWaitCursor() { SetCursor(platform::Cursor::main); }
  void BeginActiveCursor();
  void EndActiveCursor() { SetCursor(platform::Cursor::main); }
  void LockCursor() { cursorLocked_ = true; }
  void UnLockCursor() { cursorLocked_ = false; }
  void lockActiveCursor(bool locked);
  platform::Cursor GetMainCursor() const { return platform::Cursor::main; }
  void ShowCursor();
  void HideCursor();
  // Shows a message box with the caption if there is an error code; nothing else.
  void ShowError(const CXString& caption);
  // Both take what they are given and do nothing.
  void QuitOnError(CXObject* /*object*/, const CXString& /*text*/, const CXString& /*detail*/) {}
  void toLog(const CXString& /*text*/, bool /*flag*/) {}

  // Pollers: never twice in the list. A poller takes itself away when it ends.
  void addIPoller(CInputPoller* poller);
  void removeIPoller(CInputPoller* poller);
  void removeAllIPollers();
  const std::vector<CInputPoller*>& getPollers() const { return pollers_; }
  std::recursive_mutex* getCriticalSectionHandle() { return &criticalSection_; }

  // Mouse events, in pixels of the screen; nothing is heard while the mouse is disabled. Each gives 0, or
  // what a hot spot answered.
  int OnMouseMove(CXPoint point, int flags);
  int OnLButtonDown(CXPoint point, int flags);
  int OnLButtonUp(CXPoint point, int flags);
  int OnLButtonDblClk(CXPoint point, int flags);
  int OnMButtonDown(CXPoint point, int flags);
  int OnMButtonUp(CXPoint point, int flags);
  int OnRButtonDown(CXPoint point, int flags);
  int OnRButtonUp(CXPoint point, int flags);
  // Keys by scan code, characters in code page 1250.
  int OnKeyDown(int key, int flags);
  int OnKeyUp(int key, int flags);
  int OnChar(int character, int flags);
  // Stores the flag and shows the wait cursor while the mouse is disabled.
  void enableMouse(bool enabled);
  bool isMouseEnabled() const { return mouseEnabled_; }

  // A higher priority hears first; of equals the later one. A listener stands in the list once:
  // registering it again moves it to its new place. `T` is the listener and the engine object whose end
  // ends the listening.
  template <class T>
  void registerMouseListener(T* listener, int priority) {
    addMouseListener(listener, listener, priority);
  }
  void unregisterMouseListener(const CMouseListener* listener);
  void removeMouseListener(const CMouseListener* listener) { unregisterMouseListener(listener); }
  // Puts a listener on top of all others; the one that loses the place is told first.
  template <class T>
  void setMouseCaption(T* listener) {
    takeMouseCaption(listener, listener);
  }
  // Key listeners hear in the order of registration, each listed once.
  template <class T>
  void registerKeyListener(T* listener) {
    addKeyListener(listener, listener);
  }
  void unregisterKeyListener(const CKeyListener* listener);
  void removeKeyListener(const CKeyListener* listener) { unregisterKeyListener(listener); }

 private:
  template <class T>
  struct Listener {
    T* listener;
    WeakRef<CXObject> object;
    int priority = 0;
  };
  template <class T>
  using Listeners = std::vector<Listener<T>>;

  void addMouseListener(CMouseListener* listener, CXObject* object, int priority);
  void takeMouseCaption(CMouseListener* listener, CXObject* object);
  void addKeyListener(CKeyListener* listener, CXObject* object);
  template <class Event>
  void tellMouseListeners(Event event);
  template <class Event>
  void tellKeyListeners(Event event);
  template <class T, class Event>
  static void walk(const Listeners<T>& snapshot, const Listeners<T>& live, Event event);
  bool openScreen(platform::Surface* backBuffer);
  void redrawFrame();
  void showFrame();
  void tickPollers();
  void flushPollers();

  CCommandLine6* commandLine_;
  CLanguageOSVer* language_;
  CApplication* application_ = nullptr;
  CScreenUnit* screenUnit_ = nullptr;
  CXSize screenSize_;
  CXString dataRoot_;
  CXString soundFXPath_;

  bool quitFlag_ = false;
  bool active_ = false;
  bool mouseEnabled_ = true;
  bool videoMemory_;
  bool windowMode_;
  bool soundOn_;
  bool musicOn_;
  bool cursorLocked_ = false;
  bool activeCursorLocked_ = false;

  std::unique_ptr<CSurface> surface_;
  bool isRedrawing_ = false;
  Owned<CDirectDrawSurface> backSurface_;
  Owned<CRefreshScreen> refreshScreen_;
  std::unique_ptr<CXTimer> timer_;
  Owned<CCollisionInspector> collisionInspector_;
  std::unique_ptr<CPublicTrash> publicTrash_;
  Owned<CMusicPlayer> music_;

  Listeners<CMouseListener> mouseListeners_;  // ascending priority
  Listeners<CKeyListener> keyListeners_;
  std::vector<CInputPoller*> pollers_;
  Owned<CKeyboard> keyboard_;
  std::unique_ptr<CDXMouse> mouse_;
  std::recursive_mutex criticalSection_;
  std::unique_ptr<CPollerThread> pollerThread_;
};

}  // namespace footlight
