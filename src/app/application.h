#pragma once

// CApplication ties the window, the files, the INI file and the script world together. The host makes it
// after the window, calls `preinitializeApplication`, which brings the game up to its first scene, and ends
// it before the window.

#include <memory>

#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CCommandLine6;
class CConfig;
class CMC_Application;
class CMC_StructureParser;
class CAnimationManager;
class CSoundManager;
class CResourcesManager;
class CWindow;

class CApplication : public CXObject {
 public:
  static constexpr int kNoApplication = 3000;  // the error code when no application could be built

  // Opens the INI file in the root path, if a name is given. Window and command line stay the caller's.
  CApplication(CWindow* window, const CXString& iniName, const CXString& bigFileName,
               CCommandLine6* commandLine);
  ~CApplication() override;
  CApplication(const CApplication&) = delete;
  CApplication& operator=(const CApplication&) = delete;

  // Finds the data, builds the game and enters its first scene. The error code tells whether there is one.
  // With the option 2bin its binary form is stored instead.
  virtual void preinitializeApplication();
  // False when the binary form was to be stored and a file of it could not be written.
  bool isStored() const { return isStored_; }
  // One step of the game; false.
  virtual bool domodal();
  virtual bool OnExit() { return true; }
  // The host's menu: 40001 ends the program, 40004 draws the whole window anew; other ids do nothing.
  virtual void OnWindowCommand(int id);
  virtual int OnKeyDown(int /*key*/, int /*flags*/) { return 0; }
  // The sound folder, a backslash and the name.
  virtual CXString getWAVPath(const CXString& name) const;

  // Tells the scene that runs that the music has begun anew.
  void onMusicLooped();

  CMC_Application* getMCApplicationIfc() const { return application_.get(); }
  CCommandLine6* getCommandLine() const { return commandLine_; }
  // Null when the host gave no INI name.
  CConfig* GetConfigInterface() const { return config_.get(); }
  CAnimationManager* getAnimationManager() const { return animations_.get(); }
  CSoundManager* getSoundManagerIfc() const { return sounds_.get(); }
  CResourcesManager* getGeneralResourcesManager() const { return resources_.get(); }

 private:
  void buildGame();

  CWindow* window_;
  CCommandLine6* commandLine_;
  std::unique_ptr<CConfig> config_;
  Owned<CAnimationManager> animations_;
  Owned<CSoundManager> sounds_;
  std::unique_ptr<CResourcesManager> resources_;
  CXString iniName_;
  CXString bigFileName_;
  std::unique_ptr<CMC_StructureParser> parser_;  // owns the scenes
  Owned<CMC_Application> application_;
  bool isStored_ = true;
};

}  // namespace footlight
