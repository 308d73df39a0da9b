#include "foundation/hashtable.h"

#include <algorithm>
#include <bit>

#include "foundation/xvector.h"

namespace footlight {

namespace {

constexpr std::size_t kFirstChains = 8;
constexpr int kLargestSize = 1 << 30;

}  // namespace

CHashtable::CHashtable(int size, double loadFactor, bool owner)
    : size_(std::max(size, 1)), loadFactor_(loadFactor), owner_(owner) {}

CHashtable::~CHashtable() { CHashtable::clear(); }

std::size_t CHashtable::keyChain(const CXObject& key) const {
  const std::size_t hash = key.lookupHash();
  return (hash ^ hash >> 16) & (byKey_.size() - 1);
}

std::size_t CHashtable::valueChain(const CXObject* value) const {
  const auto address = reinterpret_cast<std::uintptr_t>(value);
  return (address >> 4 ^ address >> 16) & (byValue_.size() - 1);
}

void CHashtable::put(CXObject* key, CXObject* value) {
  if (key == nullptr) return;
  if (size_ * loadFactor_ < live_ + 1 && size_ < kLargestSize) size_ *= 2;
  entries_.push_back({key, value, key->getHashcode(), -1, -1});
  ++live_;
  if (entries_.size() > byKey_.size()) {
    rebuild();
  } else {
    link(static_cast<std::int32_t>(entries_.size()) - 1);
  }
}

void CHashtable::put(std::string_view name, CXObject* value) { put(new CStringHashCode(name), value); }

// Puts the last entry at the ends of its chains.
void CHashtable::link(std::int32_t index) {
  Entry& entry = entries_[static_cast<std::size_t>(index)];
  const auto append = [&](Chain& chain, std::int32_t Entry::*next) {
    entry.*next = -1;
    if (chain.first < 0) {
      chain.first = index;
    } else {
      entries_[static_cast<std::size_t>(chain.last)].*next = index;
    }
    chain.last = index;
  };
  append(byKey_[keyChain(*entry.key)], &Entry::nextByKey);
  append(byValue_[valueChain(entry.value)], &Entry::nextByValue);
}

// Drops dead entries and links the others anew.
void CHashtable::rebuild() {
  std::erase_if(entries_, [](const Entry& entry) { return entry.key == nullptr; });
  const std::size_t chains = std::max(kFirstChains, std::bit_ceil(entries_.size() + entries_.size() / 2));
  byKey_.assign(chains, {});
  byValue_.assign(chains, {});
  for (std::size_t i = 0; i < entries_.size(); ++i) link(static_cast<std::int32_t>(i));
}

const CHashtable::Entry* CHashtable::find(const CXObject* key) const {
  if (key == nullptr || live_ == 0) return nullptr;
  const std::uint32_t hash = key->getHashcode();
  for (std::int32_t i = byKey_[keyChain(*key)].first; i >= 0;) {
    const Entry& entry = entries_[static_cast<std::size_t>(i)];
    if (entry.key != nullptr && entry.hash == hash && key->equals(entry.key)) return &entry;
    i = entry.nextByKey;
  }
  return nullptr;
}

CXObject* CHashtable::get(const CXObject* key) const {
  const Entry* entry = find(key);
  return entry != nullptr ? entry->value : nullptr;
}

CXObject* CHashtable::get(std::string_view name) const {
  const CStringHashCode key(name);
  return get(&key);
}

bool CHashtable::contains(const CXObject* key) const { return find(key) != nullptr; }

bool CHashtable::contains(std::string_view name) const {
  const CStringHashCode key(name);
  return contains(&key);
}

bool CHashtable::containsValue(const CXObject* value) const {
  if (live_ == 0) return false;
  for (std::int32_t i = byValue_[valueChain(value)].first; i >= 0;) {
    const Entry& entry = entries_[static_cast<std::size_t>(i)];
    if (entry.key != nullptr && entry.value == value) return true;
    i = entry.nextByValue;
  }
  return false;
}

void CHashtable::remove(const CXObject* value) {
  if (live_ == 0) return;
  Entry* first = nullptr;
  for (std::int32_t i = byValue_[valueChain(value)].first; i >= 0;) {
    Entry& entry = entries_[static_cast<std::size_t>(i)];
    i = entry.nextByValue;
    if (entry.key == nullptr || entry.value != value) continue;
    if (first == nullptr || bucketOf(entry) < bucketOf(*first)) first = &entry;
  }
  if (first == nullptr) return;
  CXObject* const key = first->key;
  first->key = nullptr;
  --live_;
  if (entries_.size() > kFirstChains && entries_.size() > 2 * static_cast<std::size_t>(live_)) rebuild();
  if (owner_) delete key;
}

std::unique_ptr<CXVector> CHashtable::getKeys() const {
  if (live_ == 0) return nullptr;
  std::vector<const Entry*> sorted;
  sorted.reserve(static_cast<std::size_t>(live_));
  for (const Entry& entry : entries_) {
    if (entry.key != nullptr) sorted.push_back(&entry);
  }
  std::stable_sort(sorted.begin(), sorted.end(),
                   [this](const Entry* a, const Entry* b) { return bucketOf(*a) < bucketOf(*b); });
  auto keys = std::make_unique<CXVector>();
  for (const Entry* entry : sorted) keys->add(entry->key);
  return keys;
}

void CHashtable::clear() {
  const std::vector<Entry> entries = std::move(entries_);
  entries_.clear();
  byKey_.clear();
  byValue_.clear();
  live_ = 0;
  if (!owner_) return;
  for (const Entry& entry : entries) delete entry.key;
}

std::unique_ptr<CXObject> CHashtable::clone() const {
  auto copy = std::make_unique<CHashtable>(size_, loadFactor_, false);
  for (const Entry& entry : entries_) {
    if (entry.key == nullptr) continue;
    copy->entries_.push_back(entry);
    ++copy->live_;
  }
  copy->rebuild();
  return copy;
}

}  // namespace footlight
