#include "foundation/hashtable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "foundation/integer.h"
#include "foundation/xvector.h"

namespace footlight {
namespace {

using testing::ElementsAre;

std::vector<std::string> keysOf(const CHashtable& table) {
  std::vector<std::string> names;
  const auto keys = table.getKeys();
  if (keys == nullptr) return names;
  for (const CXObject* key : *keys) names.push_back(key->toString().str());
  return names;
}

// A key that counts how many of its kind live.
class CountedKey : public CStringHashCode {
 public:
  explicit CountedKey(std::string_view text) : CStringHashCode(text) { ++alive; }
  ~CountedKey() override { --alive; }
  inline static int alive = 0;
};

TEST(StringHashCode, HashesByItsRule) {
  EXPECT_EQ(CStringHashCode::hashOf(""), 0u);
  EXPECT_EQ(CStringHashCode::hashOf("ab"), 296u);
  EXPECT_EQ(CStringHashCode::hashOf("\xFF"), 0u);  // 1 + 1 * -1
  EXPECT_EQ(CStringHashCode::hashOf("\x80\x80"), static_cast<std::uint32_t>(1 - 128 + 2 - 256));
  // 17 characters: the power of two begins anew at the 17th.
  EXPECT_EQ(CStringHashCode::hashOf(std::string(17, '\x01')), 65535u + 1 + 153);
  CStringHashCode key("ab");
  key.set("ba");
  EXPECT_EQ(key.getHashcode(), 1u + 98 + 2 + 2 * 97);
  EXPECT_TRUE(key.equals(&static_cast<const CXObject&>(CStringHashCode("ba"))));
  EXPECT_FALSE(key.equals(&static_cast<const CXObject&>(CStringHashCode("Ba"))));
}

TEST(Hashtable, FindsTheEarliestOfEqualKeys) {
  CInteger one(1), two(2);
  CHashtable table;
  table.put("name", &one);
  table.put("name", &two);
  EXPECT_EQ(table.getSize(), 2);
  EXPECT_EQ(table.get("name"), &one);
  EXPECT_EQ(table.get("Name"), nullptr);
  table.remove(&one);
  EXPECT_EQ(table.get("name"), &two);
  table.remove(&one);
  EXPECT_EQ(table.getSize(), 1);
  EXPECT_TRUE(table.containsValue(&two));
  EXPECT_FALSE(table.containsValue(&one));
}

TEST(Hashtable, GivesKeysByBucket) {
  CInteger value;
  CHashtable table(11, 0.75);
  // Hash codes: "a" 98, "b" 99, "l" 109; "" 0, "\xFF" 0; "\x80" -127, as unsigned 4294967169.
  for (const char* name : {"l", "b", "a", "\x80", "", "\xFF"}) table.put(name, &value);
  // Modulo 11: l 10, b 0, a 10, \x80 9, "" 0, \xFF 0.
  EXPECT_THAT(keysOf(table), ElementsAre("b", "", "\xFF", "\x80", "l", "a"));
  table.put("c", &value);  // 100 is 1; the seventh entry
  table.put("d", &value);  // 101 is 2; the eighth
  EXPECT_EQ(table.Capacity(), 11);
  EXPECT_THAT(keysOf(table), ElementsAre("b", "", "\xFF", "c", "d", "\x80", "l", "a"));
  table.put("e", &value);  // the ninth is above 8.25: 22 buckets, and 102 is 14
  EXPECT_EQ(table.Capacity(), 22);
  // Modulo 22: l 21, b 11, a 10, \x80 9, "" 0, \xFF 0, c 12, d 13, e 14.
  EXPECT_THAT(keysOf(table), ElementsAre("", "\xFF", "\x80", "a", "b", "c", "d", "e", "l"));
}

TEST(Hashtable, RemovesTheFirstEntryByBucket) {
  CInteger shared, other;
  CHashtable table(11, 0.75);
  table.put("l", &shared);  // bucket 10
  table.put("a", &shared);  // bucket 10
  table.put("d", &other);   // bucket 2
  table.put("c", &shared);  // bucket 1
  table.remove(&shared);
  EXPECT_THAT(keysOf(table), ElementsAre("d", "l", "a"));
  table.remove(&shared);
  EXPECT_THAT(keysOf(table), ElementsAre("d", "a"));
}

TEST(Hashtable, OwnsItsKeysWhenToldSo) {
  CInteger value;
  {
    CHashtable table(101, 0.75, true);
    table.put(new CountedKey("a"), &value);
    table.put(new CountedKey("b"), &value);
    table.put(nullptr, &value);
    const auto copy = table.clone();
    auto& borrowed = dynamic_cast<CHashtable&>(*copy);
    EXPECT_EQ(borrowed.get("b"), &value);
    borrowed.remove(&value);
    borrowed.clear();
    EXPECT_EQ(CountedKey::alive, 2);
    table.remove(&value);
    EXPECT_EQ(CountedKey::alive, 1);
    table.clear();
    EXPECT_EQ(CountedKey::alive, 0);
    EXPECT_EQ(table.getKeys(), nullptr);
    EXPECT_EQ(table.get("a"), nullptr);
    table.put(new CountedKey("c"), &value);
    EXPECT_EQ(table.get("c"), &value);
  }
  EXPECT_EQ(CountedKey::alive, 0);
}

TEST(Hashtable, TakesOtherKeys) {
  CInteger value;
  CHashtable table;
  table.put(new CInteger(-7), &value);
  const CInteger seven(-7), eight(8);
  EXPECT_EQ(table.get(&seven), &value);
  EXPECT_EQ(table.get(&eight), nullptr);
  EXPECT_FALSE(table.contains("-7"));
}

// The rules told plainly: buckets as lists, growing by putting all in again.
class PlainTable {
 public:
  PlainTable(std::uint32_t size, double loadFactor) : buckets_(size), loadFactor_(loadFactor) {}
  void put(const std::string& key, const void* value) {
    if (static_cast<double>(buckets_.size()) * loadFactor_ < static_cast<double>(count_ + 1)) {
      auto old = std::move(buckets_);
      buckets_.assign(old.size() * 2, {});
      for (auto& bucket : old) {
        for (auto& entry : bucket) insert(entry.first, entry.second);
      }
    }
    insert(key, value);
    ++count_;
  }
  void remove(const void* value) {
    for (auto& bucket : buckets_) {
      for (auto entry = bucket.begin(); entry != bucket.end(); ++entry) {
        if (entry->second != value) continue;
        bucket.erase(entry);
        --count_;
        return;
      }
    }
  }
  std::vector<std::string> keys() const {
    std::vector<std::string> result;
    for (const auto& bucket : buckets_) {
      for (const auto& entry : bucket) result.push_back(entry.first);
    }
    return result;
  }
  const void* get(const std::string& key) const {
    for (const auto& entry : buckets_[CStringHashCode::hashOf(key) % buckets_.size()]) {
      if (entry.first == key) return entry.second;
    }
    return nullptr;
  }

 private:
  void insert(const std::string& key, const void* value) {
    buckets_[CStringHashCode::hashOf(key) % buckets_.size()].emplace_back(key, value);
  }
  std::vector<std::vector<std::pair<std::string, const void*>>> buckets_;
  double loadFactor_;
  int count_ = 0;
};

TEST(Hashtable, BehavesAsBucketsDo) {
  std::mt19937 random(1);
  std::vector<CInteger> values(40);
  for (const auto& [size, factor] : {std::pair{1, 0.75}, {11, 0.75}, {101, 0.75}, {10001, 1.0}}) {
    CHashtable table(size, factor);
    PlainTable plain(static_cast<std::uint32_t>(size), factor);
    for (int step = 0; step < 3000; ++step) {
      CInteger& value = values[random() % values.size()];
      const std::string name = "N" + std::to_string(random() % 60);
      if (random() % 3 != 0) {
        table.put(name, &value);
        plain.put(name, &value);
      } else {
        table.remove(&value);
        plain.remove(&value);
      }
      EXPECT_EQ(table.get(name), plain.get(name));
      if (step % 100 == 0) {
        EXPECT_EQ(keysOf(table), plain.keys());
      }
    }
    EXPECT_EQ(keysOf(table), plain.keys());
  }
}

}  // namespace
}  // namespace footlight
