#include "files/rle_compression.h"

#include <algorithm>
#include <cstring>

namespace footlight {

namespace {

constexpr std::size_t kLongestRecord = 127;
constexpr std::size_t kShortestRepeat = 4;
constexpr std::uint8_t kRepeatBit = 0x80;

// Units of `Width` bytes each, compared and copied as bytes.
template <std::size_t Width>
class Encoder {
 public:
  explicit Encoder(std::span<const std::byte> source) : source_(source), count_(source.size() / Width) {}

  std::vector<std::byte> run() {
    std::size_t at = 0;
    while (at < count_) at += equalsNext(at) ? takeRun(at) : takeLiteral(at);
    flushLiterals(count_);
    return std::move(out_);
  }

 private:
  bool equalsNext(std::size_t at) const {
    return at + 1 < count_ && std::memcmp(unit(at), unit(at + 1), Width) == 0;
  }
  const std::byte* unit(std::size_t at) const { return source_.data() + at * Width; }

  std::size_t takeLiteral(std::size_t at) {
    if (literals_ == 0) literalStart_ = at;
    if (++literals_ == kLongestRecord) flushLiterals(at + 1);
    return 1;
  }

  std::size_t takeRun(std::size_t at) {
    flushLiterals(at);
    std::size_t length = 1;
    while (length < kLongestRecord && equalsNext(at + length - 1)) ++length;
    const bool repeat = length >= kShortestRepeat;
    out_.push_back(static_cast<std::byte>(repeat ? length | kRepeatBit : length));
    append(at, repeat ? 1 : length);
    return length;
  }

  void flushLiterals(std::size_t end) {
    if (literals_ == 0) return;
    out_.push_back(static_cast<std::byte>(literals_));
    append(literalStart_, end - literalStart_);
    literals_ = 0;
  }

  void append(std::size_t at, std::size_t units) {
    out_.insert(out_.end(), unit(at), unit(at) + units * Width);
  }

  std::span<const std::byte> source_;
  std::size_t count_;
  std::size_t literals_ = 0;
  std::size_t literalStart_ = 0;
  std::vector<std::byte> out_;
};

template <std::size_t Width>
void repeat(std::span<const std::byte> unit, std::span<std::byte> out) {
  for (std::size_t i = 0; i + Width <= out.size(); i += Width)
    std::memcpy(out.data() + i, unit.data(), Width);
  std::copy_n(unit.begin(), out.size() % Width, out.end() - static_cast<std::ptrdiff_t>(out.size() % Width));
}

template <std::size_t Width>
std::vector<std::byte> decode(std::span<const std::byte> packed, std::size_t unpackedSize) {
  std::vector<std::byte> out(unpackedSize);
  std::span<std::byte> room(out);
  while (!room.empty() && !packed.empty()) {
    const auto control = std::to_integer<std::uint8_t>(packed.front());
    packed = packed.subspan(1);
    const std::size_t bytes = (control & kLongestRecord) * Width;
    const bool isRepeat = (control & kRepeatBit) != 0;
    const std::size_t stored = isRepeat ? Width : std::min(bytes, packed.size());
    if (stored > packed.size()) break;
    const std::size_t wanted = std::min(isRepeat ? bytes : stored, room.size());
    if (isRepeat) {
      repeat<Width>(packed, room.first(wanted));
    } else {
      std::copy_n(packed.begin(), wanted, room.begin());
    }
    room = room.subspan(wanted);
    packed = packed.subspan(stored);
  }
  return out;
}

}  // namespace

std::vector<std::byte> CRLECompression::compress(std::span<const std::byte> words) {
  return Encoder<2>(words).run();
}

std::vector<std::byte> CRLECompression::compresschar(std::span<const std::byte> bytes) {
  return Encoder<1>(bytes).run();
}

std::vector<std::byte> CRLECompression::decompress(std::span<const std::byte> packed,
                                                   std::size_t unpackedSize) {
  return decode<2>(packed, unpackedSize);
}

std::vector<std::byte> CRLECompression::decompresschar(std::span<const std::byte> packed,
                                                       std::size_t unpackedSize) {
  return decode<1>(packed, unpackedSize);
}

}  // namespace footlight
