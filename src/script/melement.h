#pragma once

// The parsed definition document: named elements, each with properties in file order and references to
// children. It has no behaviour of its own; object types read the properties that they know. Names are
// compared exactly and the first match wins. Values stay text: each typed getter parses anew.
//
// The document's list owns its elements; the list of an element's children owns nothing. Elements and
// properties remember the place in the file that they came from.

#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/diagnose.h"
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
  CMProperty* get(std::string_view name) const;
  bool contains(std::string_view name) const { return get(name) != nullptr; }
  void add(std::unique_ptr<CMProperty> property);
  void remove(std::string_view name);
  void removeAll();
  int getSize() const { return static_cast<int>(list_.size()); }
  CMProperty* getAt(int index) const { return list_[static_cast<std::size_t>(index)].get(); }
  auto begin() const { return list_.begin(); }
  auto end() const { return list_.end(); }

 private:
  using Index = std::unordered_map<std::string_view, CMProperty*>;

  std::vector<std::unique_ptr<CMProperty>> list_;
  mutable std::unique_ptr<Index> index_;  // keys point into the properties' own names
};

// A list of elements that owns them or only refers to them. Looking a name up costs one probe, however long
// the list; of several elements of one name the first is found.
class CMElements : public CXObject {
 public:
  explicit CMElements(bool ownsItems) : owns_(ownsItems) {}
  ~CMElements() override;
  CMElements(const CMElements&) = delete;
  CMElements& operator=(const CMElements&) = delete;

  void add(CMElement* element);
  CMElement* get(std::string_view name) const;
  bool contains(std::string_view name) const { return get(name) != nullptr; }
  CMElement* getAt(int index) const { return list_[static_cast<std::size_t>(index)]; }
  int getSize() const { return static_cast<int>(list_.size()); }
  auto begin() const { return list_.begin(); }
  auto end() const { return list_.end(); }

 private:
  bool owns_;
  std::vector<CMElement*> list_;
  std::unordered_map<std::string_view, CMElement*> index_;  // keys point into the elements' own names
};

class CMElement : public CXObject {
 public:
  CMElement(CXString name, Origin origin) : name_(std::move(name)), origin_(origin), children_(false) {}

  const CXString& getName() const { return name_; }
  // Only for an element that is in no list: lists are keyed by the name.
  void setName(CXString name) { name_ = std::move(name); }
  Origin origin() const { return origin_; }
  void addChild(CMElement* child) { children_.add(child); }
  const CMElements& getChildren() const { return children_; }

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
  CMElements children_;
};

}  // namespace footlight
