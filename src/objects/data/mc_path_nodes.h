#pragma once

// PATH: a list of other objects, its nodes, and a density. The nodes belong to others and are held weakly:
// one that has gone is no node any more.

#include <vector>

#include "script/mc_object.h"

namespace footlight {

namespace type {
inline constexpr int kPath = 2017;
}

class CMC_PathNodes : public CMC_Object {
 public:
  CMC_PathNodes(CMC_ObjectsContainer* container, const CMElement* element);
  static bool isTypeOf(int type) { return type == type::kPath; }

  // Appends; doubles are allowed.
  void add(CMC_Object* node);
  // The live nodes in order.
  std::vector<CMC_Object*> nodes() const;
  double getDensity() const { return density_; }
  void setDensity(double density) { density_ = density; }

  // The text of each node in brackets.
  CXString toString() const override;
  // The count of the nodes, then their names, which are looked up where the path is read.
  void serialize(CXArchive& archive) override;
  std::unique_ptr<CMC_Object> copy() const override {
    return std::unique_ptr<CMC_Object>(new CMC_PathNodes(*this));
  }

 private:
  CMC_PathNodes(const CMC_PathNodes& other) = default;

  mutable std::vector<WeakRef<CMC_Object>> nodes_;
  double density_ = 1.0;
};

}  // namespace footlight
