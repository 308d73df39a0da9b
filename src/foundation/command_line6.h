#pragma once

// The engine's command line: one raw line, cut at blanks. An option is a token "-name" or "/name", matched
// exactly, with case, anywhere on the line; what is unknown is ignored. A token equal to the one before it
// ends the line: it and all behind it do not exist.

#include <vector>

#include "foundation/geometry.h"
#include "foundation/xstring.h"

namespace footlight {

class CCommandLine6 {
 public:
  static constexpr CXSize kUsualResolution{800, 600};

  explicit CCommandLine6(std::string_view commandLine);

  int getNoArgs() const { return static_cast<int>(tokens_.size()); }

  bool isMusicEnabled() const { return music_; }
  bool isSoundEnabled() const { return sound_; }
  bool isWindowMode() const { return window_; }
  bool isGFXEnabled() const { return gfx_; }  // the presence of "nogfx", whatever the name says
  bool isServer() const { return server_; }
  bool isClient() const { return client_; }
  bool isPageFlippingEnabled() const { return pageFlipping_; }
  bool isVMem() const { return videoMemory_; }
  bool isToCode() const { return code_; }
  bool isToDecode() const { return decode_; }
  bool isToRemove() const { return remove_; }
  bool isCheatMode() const { return cheat_; }
  bool is2Bin() const { return toBinary_; }
  bool isForceCNV() const { return forceCnv_; }
  bool isDebugMode() const { return debug_; }
  bool isCreateBigFile() const { return bigFile_; }
  bool isLogEnabled() const { return log_; }
  // As asked for, unchecked: a number on the line may be zero or negative. kUsualResolution by default.
  CXSize getResolution() const { return {width_, height_}; }
  // The data directory; empty by default.
  const CXString& getPath() const { return path_; }

  void setAsWindow(bool window) { window_ = window; }
  void setAsShowDbg(bool debug) { debug_ = debug; }
  void setPath(CXString path) { path_ = std::move(path); }

  // True when the line holds "-name" or "/name".
  bool findToken(std::string_view name) const;
  // The token behind the first "-name", "/name" or bare "name"; empty when there is none.
  CXString getNextToken(std::string_view name) const;

 private:
  void parse();

  std::vector<CXString> tokens_;
  int width_ = kUsualResolution.width;
  int height_ = kUsualResolution.height;
  bool music_ = true;
  bool sound_ = true;
  bool window_ = false;
  bool gfx_ = false;
  bool server_ = false;
  bool client_ = false;
  bool pageFlipping_ = false;
  bool videoMemory_ = false;
  bool code_ = false;
  bool decode_ = false;
  bool remove_ = false;
  bool cheat_ = false;
  bool toBinary_ = false;
  bool forceCnv_ = false;
  bool debug_ = false;
  bool bigFile_ = false;
  bool log_ = false;
  CXString path_;
};

}  // namespace footlight
