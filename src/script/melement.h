#pragma once

// The parsed definition document: named elements, each with properties in file order and references to
// children. It has no behaviour of its own; object types read the properties that they know. Names are
// compared exactly and the first match wins. Values stay text: each typed getter parses anew.
//
// The document's list owns its elements; the list of an element's children owns nothing. Elements and
// properties remember the place in the file that they came from.

#include <memory>
#include <memory_resource>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/diagnose.h"
#include "foundation/flat_index.h"
#include "foundation/geometry.h"
#include "foundation/xobject.h"
#include "foundation/xstring.h"

namespace footlight {

class CMElement;

class CMProperty : public CXObject {
 public:
  CMProperty(CXString name, CXString value, Origin origin)
      : name_(std::move(name)), value_(std::move(value)), origin_(origin) {}

  const CXString& getName() const { return name_; }
  const CXString& getValue() const { return value_; }
  void setValue(CXString value) { value_ = std::move(value); }
  Origin origin() const { return origin_; }
  // Compares the names.
  bool equals(const CXObject* other) const override;

  int toInt() const { return value_.toNumber(); }
  bool toBool() const { return value_.toBool(); }
  double toDouble() const { return value_.toDouble(); }
  // Pieces between commas, blanks and line ends; no empty ones.
  std::vector<CXString> toList() const { return value_.toVector(); }
  CXPoint toPoint() const;  // from the first list items; missing ones are 0
  CXSize toSize() const;
  CXRect toRect() const;

 private:
  CXString name_;
  CXString value_;
  Origin origin_;
};

// Owns its properties, in file order. Long lists keep an index, so that looking a name up does not walk them.
class CMProperties : public CXObject {
 public:
  using Memory = std::pmr::memory_resource;

  // The properties live in that memory.
  explicit CMProperties(Memory* memory) : list_(memory) {}
  ~CMProperties() override { CMProperties::removeAll(); }
  CMProperties(const CMProperties&) = delete;
  CMProperties& operator=(const CMProperties&) = delete;

  CMProperty* get(std::string_view name) const;
  bool contains(std::string_view name) const { return get(name) != nullptr; }
  void add(CXString name, CXString value, Origin origin);
  void remove(std::string_view name);
  void removeAll();
  int getSize() const { return static_cast<int>(list_.size()); }
  CMProperty* getAt(int index) const { return list_[static_cast<std::size_t>(index)]; }
  auto begin() const { return list_.begin(); }
  auto end() const { return list_.end(); }

 private:
  using Index = std::unordered_map<std::string_view, CMProperty*>;

  using List = std::pmr::vector<CMProperty*>;

  void end(CMProperty* property) { List::allocator_type(list_.get_allocator()).delete_object(property); }

  List list_;
  mutable std::unique_ptr<Index> index_;  // keys point into the properties' own names
};

// A list of elements that owns them or only refers to them. Looking a name up costs one probe, however long
// the list; of several elements of one name the first is found. All that an owner makes lies in memory of its
// own, which goes at once with it.
class CMElements : public CXObject {
 public:
  explicit CMElements(bool ownsItems);
  ~CMElements() override;
  CMElements(const CMElements&) = delete;
  CMElements& operator=(const CMElements&) = delete;

  // A new element of this list; only for a list that owns its items.
  CMElement* make(std::string_view name, Origin origin);
  // The same where no element has the name yet, else null.
  CMElement* makeFirst(std::string_view name, Origin origin);
  // A reference; only for a list that does not.
  void add(CMElement* element);
  CMElement* get(std::string_view name) const;
  bool contains(std::string_view name) const { return get(name) != nullptr; }
  CMElement* getAt(int index) const { return list_[static_cast<std::size_t>(index)]; }
  int getSize() const { return static_cast<int>(list_.size()); }
  auto begin() const { return list_.begin(); }
  auto end() const { return list_.end(); }

 private:
  std::int32_t positionOf(std::string_view name, std::size_t hash) const;
  CMElement* append(std::string_view name, Origin origin);

  std::unique_ptr<std::pmr::monotonic_buffer_resource> memory_;  // of an owner
  std::vector<CMElement*> list_;
  FlatIndex index_;  // by name; of several elements of one name the first
};

class CMElement : public CXObject {
 public:
  // The properties live in `memory`.
  CMElement(CXString name, Origin origin,
            std::pmr::memory_resource* memory = std::pmr::get_default_resource())
      : name_(std::move(name)), origin_(origin), properties_(memory) {}

  const CXString& getName() const { return name_; }
  // Only for an element that is in no list: lists are keyed by the name.
  void setName(CXString name) { name_ = std::move(name); }
  Origin origin() const { return origin_; }
  void addChild(CMElement* child);
  const CMElements& getChildren() const;

  // Adds an empty property unless that name is already there.
  void addProperty(const CXString& name, Origin origin = {});
  // Always appends.
  void addProperty(CXString name, CXString value, Origin origin = {});
  // Overwrites the first of that name; nothing if there is none.
  void setProperty(std::string_view name, CXString value);
  void removeProperty(std::string_view name) { properties_.remove(name); }
  void removeAll() { properties_.removeAll(); }
  const CMProperties& properties() const { return properties_; }

  bool isPropertyAvailable(std::string_view name) const { return properties_.contains(name); }
  // Upper-cases the name first.
  bool hasProperty(const CXString& name) const { return properties_.contains(name.Upper()); }

  // The zero value of the type when the property is missing.
  CXString getPropertyValue(std::string_view name) const;
  int getPropertyIntValue(std::string_view name) const;
  bool getPropertyBoolValue(std::string_view name) const;
  double getPropertyDoubleValue(std::string_view name) const;
  std::optional<std::vector<CXString>> getPropertyListValue(std::string_view name) const;
  CXPoint getPropertyPointValue(std::string_view name) const;
  CXSize getPropertySizeValue(std::string_view name) const;
  CXRect getPropertyRectValue(std::string_view name) const;

 private:
  CXString name_;
  Origin origin_;
  CMProperties properties_;
  std::unique_ptr<CMElements> children_;  // null until there is one
};

}  // namespace footlight
