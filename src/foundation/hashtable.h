#pragma once

// A table from key objects to value objects with an order that games depend on. Transfers of files will keep
// what they wait for in one.
//
// To the outside it is a table of buckets: a key's bucket is its hash code, taken as unsigned, modulo the
// size; within a bucket entries stand in the order in which they were put; when the size times the load
// factor falls below the count that a `put` leads to, the size doubles first. So `getKeys` gives all keys by
// bucket, and `remove` takes the first entry by bucket that holds the value. Equal keys may stand in the
// table more than once; `get` finds the earliest.
//
// Inside, memory follows the number of entries, whatever the size, and looking up a key or a value
// costs one probe.
//
// The table owns its keys when `owner` is true, and never its values.

#include <memory>
#include <vector>

#include "foundation/string_hash_code.h"
#include "foundation/xobject.h"

namespace footlight {

class CXVector;

class CHashtable : public CXObject {
 public:
  static constexpr int kUsualSize = 101;
  static constexpr int kSmallSize = 11;
  static constexpr int kObjectsSize = 10001;  // of names of objects, with a load factor of 1

  explicit CHashtable(int size = kUsualSize, double loadFactor = 0.75, bool owner = true);
  ~CHashtable() override;
  CHashtable(const CHashtable&) = delete;
  CHashtable& operator=(const CHashtable&) = delete;

  // The same keys and values in a table of the same size that owns neither.
  std::unique_ptr<CXObject> clone() const override;
  // Never looks whether the key is there already. A null key is ignored.
  virtual void put(CXObject* key, CXObject* value);
  void put(std::string_view name,
           CXObject* value);  // with a new CStringHashCode; only for tables that own keys
  // Null when nothing matches.
  virtual CXObject* get(const CXObject* key) const;
  CXObject* get(std::string_view name) const;
  // Takes out the first entry with this value; with `owner` its key is deleted. Nothing when there is none.
  virtual void remove(const CXObject* value);
  virtual bool contains(const CXObject* key) const;
  bool contains(std::string_view name) const;
  virtual bool containsValue(const CXObject* value) const;
  // All keys by bucket, in a new list; null when the table is empty. The keys stay the table's.
  virtual std::unique_ptr<CXVector> getKeys() const;
  // The number of entries.
  virtual int getSize() const { return live_; }
  // Takes all entries out; with `owner` their keys are deleted. The size stays.
  virtual void clear();

  // The number of buckets.
  int Capacity() const { return size_; }

 private:
  struct Entry {
    CXObject* key;  // null in an entry that was taken out
    CXObject* value;
    std::uint32_t hash;
    std::int32_t nextByKey;
    std::int32_t nextByValue;
  };

  std::size_t keyChain(const CXObject& key) const;
  std::size_t valueChain(const CXObject* value) const;
  std::uint32_t bucketOf(const Entry& entry) const { return entry.hash % static_cast<std::uint32_t>(size_); }
  const Entry* find(const CXObject* key) const;
  void link(std::int32_t index);
  void rebuild();

  int size_;
  double loadFactor_;
  bool owner_;
  int live_ = 0;
  std::vector<Entry> entries_;  // in the order in which they were put
  // Chains of entries in that order, a power of two of them, each with its first and last entry.
  struct Chain {
    std::int32_t first = -1;
    std::int32_t last = -1;
  };
  std::vector<Chain> byKey_;
  std::vector<Chain> byValue_;
};

}  // namespace footlight
