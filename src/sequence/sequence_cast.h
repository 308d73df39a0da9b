#pragma once

// What sequences use of the scene that runs, by the names of its objects. The world of scripts implements it.

#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CAnimo6;
class CPlayable;
class CSound4;

// An animation that an object of the scene shows. Playables that use it hear of another one in its place, and
// of its end, through CPlayable::substAnimation.
class CSequenceFigure {
 public:
  // The animation, or null.
  virtual CAnimo6* getAnimo() const = 0;
  virtual void addSeq(CPlayable* sequence) = 0;
  virtual void removeSeq(const CPlayable* sequence) = 0;
  virtual CXObject* asObject() = 0;

 protected:
  ~CSequenceFigure() = default;
};

class CSequenceCast {
 public:
  // Null where no scene runs, or it has no such object of that kind.
  virtual CSequenceFigure* figure(const CXString& name) const = 0;
  virtual CSound4* sound(const CXString& name) const = 0;

 protected:
  ~CSequenceCast() = default;
};

}  // namespace footlight
