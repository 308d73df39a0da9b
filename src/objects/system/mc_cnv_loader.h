#pragma once

// Loads further definition files into a running scene and releases them again. The objects of one file stand
// in a group that bears the file's name.

#include "script/mc_object.h"

namespace footlight {

class CMC_Groupped;
class CWindow;

namespace type {
inline constexpr int kCnvLoader = 12000;
}

class CMC_CNVLoader : public CMC_Object {
 public:
  explicit CMC_CNVLoader(CWindow* window) : CMC_Object("CNVLOADER", type::kCnvLoader), window_(window) {}
  static bool isTypeOf(int type) { return type == type::kCnvLoader; }

  void load(CMC_ObjectsContainer* scene, const CXString& fileName);
  void release(CMC_ObjectsContainer* scene, const CXString& fileName);

 private:
  void releaseMember(CMC_ObjectsContainer* scene, CMC_Groupped* group, CMC_Object* member);

  CWindow* window_;
  CXString fileName_;
};

}  // namespace footlight
