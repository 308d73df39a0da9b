#include "foundation/xobject.h"

#include <string>
#include <unordered_map>

#include "foundation/xstring.h"
#include "platform/platform.h"

namespace footlight {

CXObject::~CXObject() { dropWeakCell(); }

std::uint32_t CXObject::getHashcode() const {
  const auto address = reinterpret_cast<std::uintptr_t>(this);
  return static_cast<std::uint32_t>(address ^ (static_cast<std::uint64_t>(address) >> 32));
}

CXString CXObject::toString() const { return {}; }

void CXObject::notifyMessageReceive(CMessage* /*message*/) {}

int CXObject::processMessage(CMessage* /*message*/) { return 0; }

void CXObject::profile(std::string_view text, bool starts) {
  static std::unordered_map<std::string, std::uint32_t> startedAt;
  const std::uint32_t now = platform::current().clock().ticks();
  const std::string name(text);
  if (starts) {
    startedAt[name] = now;
    return;
  }
  const auto found = startedAt.find(name);
  if (found == startedAt.end()) return;
  const auto passed = static_cast<int>(now - found->second);
  startedAt.erase(found);
  platform::current().shell().debugText(CXString::Format("Time spend in %s: %d ms.\n", name.c_str(), passed));
}

std::int16_t CXObject::swap_word(std::int16_t value) {
  const auto bits = static_cast<std::uint16_t>(value);
  return static_cast<std::int16_t>(static_cast<std::uint16_t>((bits << 8) | (bits >> 8)));
}

std::int32_t CXObject::swap_dword(std::int32_t value) {
  return static_cast<std::int32_t>(__builtin_bswap32(static_cast<std::uint32_t>(value)));
}

void CXObject::dispose() {
  if (disposed_) return;
  disposed_ = true;
  endsUnpinned_ = true;
  dropWeakCell();
  if (pins_ == 0) destroyNow();
}

CXObject::WeakCell* CXObject::weakCell() const {
  if (weakCell_ == nullptr) weakCell_ = new WeakCell{const_cast<CXObject*>(this), 1};
  return weakCell_;
}

void CXObject::dropWeakCell() const {
  if (weakCell_ == nullptr) return;
  weakCell_->object = nullptr;
  if (--weakCell_->users == 0) delete weakCell_;
  weakCell_ = nullptr;
}

}  // namespace footlight
