#include "files/archive.h"

#include <algorithm>

#include "files/file.h"
#include "foundation/arithmetic.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"

namespace footlight {

namespace {

constexpr std::size_t kWordBytes = 1024;
constexpr std::size_t kShortStringBytes = 127;

bool isBlank(std::byte byte) {
  constexpr std::string_view kBlanks = " \t\n\v\f\r";
  return kBlanks.find(static_cast<char>(byte)) != std::string_view::npos;
}

CXString toText(std::span<const std::byte> bytes) {
  return CXString(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

}  // namespace

CXArchive::CXArchive(CFile& file) : file_(&file), in_({}) {
  auto bytes = file.isOpen() ? file.readRest(limits::kTextFileBytes) : std::nullopt;
  if (file.isOpen() && !bytes) limitHit("archive too long");
  failed_ = !bytes;
  if (!bytes) return;
  bytes_ = std::move(*bytes);
  in_ = ByteReader(bytes_);
}

CXArchive::CXArchive(CWindow* window, CXString name)
    : window_(window), name_(std::move(name)), storing_(true), in_({}) {}

CXArchive::~CXArchive() = default;

std::int32_t CXArchive::toThousandths(double value) { return to_int(value * 1000.0); }

void CXArchive::pass(int& value) {
  if (storing_) {
    out_.i32(value);
  } else {
    value = in_.i32();
  }
}

void CXArchive::pass(std::uint32_t& value) {
  if (storing_) {
    out_.u32(value);
  } else {
    value = in_.u32();
  }
}

void CXArchive::pass(std::int64_t& value) {
  auto low = static_cast<std::uint32_t>(value);
  auto high = static_cast<std::uint32_t>(value >> 32);
  pass(low);
  pass(high);
  value = static_cast<std::int64_t>(std::uint64_t{high} << 32 | low);
}

void CXArchive::pass(bool& value) {
  if (storing_) {
    out_.u8(value ? 1 : 0);
  } else {
    value = in_.u8() != 0;
  }
}

void CXArchive::pass(double& value) {
  std::int32_t thousandths = toThousandths(value);
  pass(thousandths);
  if (!storing_) value = fromThousandths(thousandths);
}

void CXArchive::pass(CXString& text) {
  std::int32_t length = text.Length();
  pass(length);
  if (storing_) {
    out_.text(text);
  } else {
    if (length < 0) fail();
    text = toText(in_.bytes(hasFailed() ? 0 : static_cast<std::uint64_t>(length)));
  }
}

void CXArchive::pass(CXRect& rect) {
  for (int* edge : {&rect.left, &rect.top, &rect.right, &rect.bottom}) pass(*edge);
}

int CXArchive::passCount(std::size_t count, std::size_t bytesOfOne) {
  auto number = static_cast<std::int32_t>(count);
  pass(number);
  if (storing_) return number;
  const bool fits = number >= 0 && static_cast<std::uint64_t>(number) * bytesOfOne <= left();
  if (!fits) fail();
  return fits ? number : 0;
}

void CXArchive::writeShortString(std::string_view text) {
  text = text.substr(0, kShortStringBytes);
  out_.u8(static_cast<std::uint8_t>(text.size())).text(text);
}

CXString CXArchive::readShortString() {
  const auto length = static_cast<std::int8_t>(in_.u8());
  return toText(in_.bytes(length > 0 ? static_cast<std::uint64_t>(length) : 0));
}

void CXArchive::FWrite(std::string_view word) { out_.text(word); }

CXString CXArchive::FRead() {
  const auto next = [this] {
    ByteReader ahead = in_;
    const auto byte = ahead.atMost(1);
    return byte.empty() || isBlank(byte[0]) ? std::span<const std::byte>() : byte;
  };
  while (in_.left() > 0 && next().empty()) in_.skip(1);
  std::vector<std::byte> word;
  for (auto byte = next(); !byte.empty() && word.size() < kWordBytes; byte = next()) {
    word.push_back(byte[0]);
    in_.skip(1);
  }
  return toText(word);
}

bool CXArchive::CopyFileA(const CXString& name) {
  CFile file(window_, name, CFile::kReadBinary);
  const auto bytes = file.isOpen() ? file.readRest(limits::kTextFileBytes) : std::nullopt;
  if (bytes) out_.bytes(*bytes);
  return bytes.has_value();
}

bool CXArchive::Close() {
  if (!storing_) return file_ == nullptr || file_->Close() == 0;
  if (hasFailed()) return false;
  const auto bytes = out_.written();
  if (static_cast<std::int64_t>(bytes.size()) > limits::kTextFileBytes) {
    limitHit("archive too long");
    return false;
  }
  CFile file(window_, name_, CFile::kWriteBinary);
  if (!file.isOpen()) return false;
  const int count = static_cast<int>(bytes.size());
  const bool isWhole = file.Write(bytes.data(), count) == count;
  return file.Close() == 0 && isWhole;
}

}  // namespace footlight
