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

// Plain, since a document may hold hundreds of thousands: the texts live in the memory of the element.
class CMProperty {
 public:
  CMProperty(std::string_view name, std::string_view value, Origin origin)
      : name_(name), value_(value), origin_(origin) {}

  std::string_view getName() const { return name_; }
  std::string_view getValue() const { return value_; }
  Origin origin() const { return origin_; }
  // Compares the names.
  bool equals(const CMProperty& other) const { return name_ == other.name_; }

  int toInt() const { return CXString(value_).toNumber(); }
  bool toBool() const { return CXString(value_).toBool(); }
  double toDouble() const { return CXString(value_).toDouble(); }
  // Pieces between commas, blanks and line ends; no empty ones.
  std::vector<CXString> toList() const { return CXString(value_).toVector(); }
  CXPoint toPoint() const;  // from the first list items; missing ones are 0
  CXSize toSize() const;
  CXRect toRect() const;

 private:
  friend class CMProperties;

  std::string_view name_;
  std::string_view value_;
  CMProperty* next_ = nullptr;
  Origin origin_;
};

// Properties in file order, in memory that is not theirs and that they never give back: it goes with the
// document. Long lists keep an index, so that looking a name up does not walk them.
class CMProperties {
 public:
  using Memory = std::pmr::memory_resource;

  class Iterator {
   public:
    explicit Iterator(CMProperty* at) : at_(at) {}
    CMProperty* operator*() const { return at_; }
    Iterator& operator++() {
      at_ = at_->next_;
      return *this;
    }
    bool operator==(const Iterator&) const = default;

   private:
    CMProperty* at_;
  };

  CMProperties() = default;
  CMProperties(const CMProperties&) = delete;
  CMProperties& operator=(const CMProperties&) = delete;

  CMProperty* get(std::string_view name) const;
  bool contains(std::string_view name) const { return get(name) != nullptr; }
  // Copies the texts.
  void add(std::string_view name, std::string_view value, Origin origin, Memory& memory);
  void set(CMProperty& property, std::string_view value, Memory& memory);
  void remove(std::string_view name);
  void removeAll();
  int getSize() const { return count_; }
  Iterator begin() const { return Iterator(first_); }
  Iterator end() const { return Iterator(nullptr); }

 private:
  using Index = std::unordered_map<std::string_view, CMProperty*>;

  CMProperty* first_ = nullptr;
  CMProperty* last_ = nullptr;
  int count_ = 0;
  mutable std::unique_ptr<Index> index_;
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
  using Memory = std::pmr::memory_resource;

  // Texts and properties live in `memory`, which the element must not outlive.
  CMElement(std::string_view name, Origin origin, Memory* memory);
  // In memory of its own.
  CMElement(std::string_view name, Origin origin);

  std::string_view getName() const { return name_; }
  // Only for an element that is in no list: lists are keyed by the name.
  void setName(std::string_view name);
  Origin origin() const { return origin_; }
  void addChild(CMElement* child);
  const CMElements& getChildren() const;

  // Adds an empty property unless that name is already there.
  void addProperty(std::string_view name, Origin origin = {});
  // Always appends.
  void addProperty(std::string_view name, std::string_view value, Origin origin = {});
  // Overwrites the first of that name; nothing if there is none.
  void setProperty(std::string_view name, std::string_view value);
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
  std::unique_ptr<Memory> ownMemory_;  // null where another memory was given
  Memory* memory_;
  std::string_view name_;
  Origin origin_;
  CMProperties properties_;
  std::unique_ptr<CMElements> children_;  // null until there is one
};

}  // namespace footlight
