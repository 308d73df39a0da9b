#include "foundation/xobject.h"

#include "foundation/xstring.h"

namespace footlight {

CXObject::~CXObject() { dropWeakCell(); }

std::uint32_t CXObject::getHashcode() const {
  const auto address = reinterpret_cast<std::uintptr_t>(this);
  return static_cast<std::uint32_t>(address ^ (static_cast<std::uint64_t>(address) >> 32));
}

CXString CXObject::toString() const { return {}; }

void CXObject::notifyMessageReceive(CMessage* /*message*/) {}

int CXObject::processMessage(CMessage* /*message*/) { return 0; }

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
  dropWeakCell();
  if (pins_ == 0) delete this;
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
