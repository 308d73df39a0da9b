#pragma once

// GROUP: a list of objects to which a script can send one call. The group does not own its members and holds
// them weakly: one that has gone is no member any more. Size and marker count live members.

#include <unordered_set>
#include <vector>

#include "script/mc_object.h"

namespace footlight {

class CMC_Groupped : public CMC_Object {
 public:
  CMC_Groupped(CMC_ObjectsContainer* container, const CMElement* element);
  explicit CMC_Groupped(CXString name) : CMC_Object(std::move(name), type::kGroup) {}
  static bool isTypeOf(int type) { return type == type::kGroup; }

  // Appends; doubles are allowed. A group that holds this one, or this one itself, is refused.
  void add(CMC_Object* object);
  // Takes the first entry of the object out.
  void remove(const CMC_Object* object);
  void removeAll() { list_.clear(); }
  // Adds the objects "name_i" of the scope, from `start` up to below start + count.
  void addClones(const CMC_ObjectsContainer* scope, const CXString& name, int start, int count);
  // The live members in order.
  std::vector<CMC_Object*> getList() const;
  int getSize() const { return static_cast<int>(getList().size()); }
  CMC_Object* getAt(int index) const;
  // Moves the marker, wrapping round the size, and gives the member there; null for an empty group.
  CMC_Object* moveMarker(std::int64_t step);
  int getMarker() const { return marker_; }
  void setMarker(int position);

  // The names of the members, separated by commas.
  CXString toString() const override;
  std::unique_ptr<CMC_Object> copy() const override {
    return std::unique_ptr<CMC_Object>(new CMC_Groupped(*this));
  }

 private:
  CMC_Groupped(const CMC_Groupped& other) = default;
  // `searched` are the groups that need no further look.
  bool holds(const CMC_Object* object, int depth, std::unordered_set<const CMC_Groupped*>* searched) const;

  mutable std::vector<WeakRef<CMC_Object>> list_;
  int marker_ = -1;
};

}  // namespace footlight
