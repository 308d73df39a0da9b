#pragma once

// The base of everything that is loaded from a file and may be shared. A resources manager refers to it; one
// that ends takes itself out of every manager that still knows it.

#include <string_view>
#include <vector>

#include "foundation/xstring.h"

namespace footlight {

class CResourcesManager;

class CFileResolver {
 public:
  CFileResolver() = default;
  CFileResolver(const CFileResolver& other)
      : fileName_(other.fileName_), loaded_(other.loaded_), releaseAfterUse_(other.releaseAfterUse_) {}
  CFileResolver& operator=(const CFileResolver& other);
  virtual ~CFileResolver();

  virtual void setFilename(CXString name) { fileName_ = std::move(name); }
  virtual CXString getFileName() const { return fileName_; }
  virtual bool isLoaded() const { return loaded_; }
  // Whether its data goes when nobody needs it for the moment.
  virtual void toRelease(bool release) { releaseAfterUse_ = release; }
  virtual bool releaseAfterUse() const { return releaseAfterUse_; }

  // Called by a manager when the last user is gone, just before `destroy`: frees the data and
  // leaves the screen.
  virtual void retire() {}
  // Ends the object; classes whose objects may be on the call stack do so in two steps.
  virtual void destroy() { delete this; }

  // There is no log: the text is dropped.
  void log(std::string_view /*text*/) const {}

 protected:
  void setLoaded(bool loaded) { loaded_ = loaded; }

 private:
  friend class CResourcesManager;

  CXString fileName_;
  bool loaded_ = false;
  bool releaseAfterUse_ = false;
  std::vector<CResourcesManager*> managers_;
};

}  // namespace footlight
