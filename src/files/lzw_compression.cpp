#include "files/lzw_compression.h"

#include <algorithm>
#include <cstdint>

#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"

namespace footlight {

namespace {

constexpr std::uint32_t kClear = 256;
constexpr std::uint32_t kFirstEntry = 257;
constexpr std::uint32_t kEntries = 65536;
constexpr int kNarrowest = 9;
constexpr int kWidest = 16;
constexpr std::uint32_t kNone = kEntries;  // no code

// Codes to bytes
class CodeReader {
 public:
  CodeReader(std::span<const std::byte> stream, std::int64_t codes) : stream_(stream), codes_(codes) {}

  // The next code, or kNone at the end of the codes or of the bytes.
  std::uint32_t next(int width) {
    if (codes_ <= 0) return kNone;
    while (bits_ < width) {
      if (at_ == stream_.size()) return kNone;
      held_ |= std::to_integer<std::uint32_t>(stream_[at_++]) << bits_;
      bits_ += 8;
    }
    const std::uint32_t code = held_ & ((1u << width) - 1);
    held_ >>= width;
    bits_ -= width;
    --codes_;
    return code;
  }

 private:
  std::span<const std::byte> stream_;
  std::int64_t codes_;  // that are left
  std::size_t at_ = 0;
  std::uint32_t held_ = 0;
  int bits_ = 0;  // in held_
};

class Decoder {
 public:
  // Fills the beginning of `out`.
  Decoder(CodeReader codes, std::span<std::byte> out)
      : codes_(codes), out_(out), table_(kEntries), stack_(kEntries) {}

  void run() {
    while (!out_.empty() && step()) continue;
  }

 private:
  // False at the end.
  bool step() {
    const std::uint32_t code = codes_.next(width_);
    if (code == kNone) return false;
    if (code == kClear) {
      clear();
      return true;
    }
    // What comes first, and first behind a clear, is a byte; nothing stands for a code that comes too early.
    if (previous_ == kNone ? code > kClear : code > next_) return false;
    emit(code);
    if (previous_ != kNone) addEntry();
    previous_ = code;
    return true;
  }

  void clear() {
    next_ = kFirstEntry;
    width_ = kNarrowest;
    previous_ = kNone;
  }

  // The string of a code; that of the entry yet to come is the previous one and its first byte. Entries only
  // refer to smaller codes, so the walk ends, and no string is longer than the table.
  void emit(std::uint32_t code) {
    std::size_t top = stack_.size();
    if (code == next_) {
      stack_[--top] = first_;
      code = previous_;
    }
    for (; code >= kFirstEntry; code = table_[code] >> 16)
      stack_[--top] = static_cast<std::byte>(table_[code]);
    stack_[--top] = first_ = static_cast<std::byte>(code);
    const std::size_t size = std::min(stack_.size() - top, out_.size());
    std::copy_n(stack_.begin() + static_cast<std::ptrdiff_t>(top), size, out_.begin());
    out_ = out_.subspan(size);
  }

  void addEntry() {
    if (next_ == kEntries) return;
    table_[next_++] = previous_ << 16 | std::to_integer<std::uint32_t>(first_);
    if (width_ < kWidest && next_ == 1u << width_) ++width_;
  }

  CodeReader codes_;
  std::span<std::byte> out_;          // what is not filled yet
  std::vector<std::uint32_t> table_;  // the previous code above, a byte below
  std::vector<std::byte> stack_;      // filled from its end
  std::uint32_t next_ = kFirstEntry;
  std::uint32_t previous_ = kNone;
  int width_ = kNarrowest;
  std::byte first_{};  // of the previous string
};

// Bytes to codes
// How much goes into so much, in hundredths; nothing written counts as one byte.
std::int64_t ratio(std::int64_t input, std::int64_t bits) {
  return input * 100 / std::max<std::int64_t>(1, bits / 8);
}

class Encoder {
 public:
  explicit Encoder(std::span<const std::byte> data) : data_(data) { clear(); }

  std::vector<std::byte> run() {
    if (!data_.empty()) {
      std::uint32_t prefix = byteAt(0);
      for (std::size_t i = 1; i < data_.size(); ++i) prefix = take(prefix, i);
      put(prefix);
    }
    if (bits_ > 0) stream_.push_back(static_cast<std::byte>(held_));
    ByteWriter block;
    block.reserve(12 + stream_.size());
    block.number(std::ssize(data_), 4).number(std::ssize(stream_), 4).number(codes_, 4);
    return block.bytes(stream_).take();
  }

 private:
  std::uint32_t byteAt(std::size_t i) const { return std::to_integer<std::uint32_t>(data_[i]); }

  // The string so far, made longer by the byte at `i`, or written and begun anew with that byte.
  std::uint32_t take(std::uint32_t prefix, std::size_t i) {
    const std::uint32_t byte = byteAt(i);
    const std::uint32_t longer = find(prefix, byte);
    if (longer != kNone) return longer;
    const auto input = static_cast<std::int64_t>(i);
    if (left_ == 2 && width_ >= 12 &&
        ratio(input, written_) > ratio(input - stretchInput_, written_ - stretchStart_)) {
      put(prefix);
      put(kClear);
      clear();
    } else {
      put(prefix);
      addEntry(prefix, byte);
    }
    if (left_ == 0) startStretch();
    if (stretchStart_ == written_) stretchInput_ = input;
    return byte;
  }

  std::uint32_t find(std::uint32_t prefix, std::uint32_t byte) const {
    std::uint32_t entry = child_[prefix];
    while (entry != kNone && bytes_[entry] != byte) entry = sibling_[entry];
    return entry;
  }

  void addEntry(std::uint32_t prefix, std::uint32_t byte) {
    if (next_ == kEntries) return;
    bytes_[next_] = static_cast<std::uint8_t>(byte);
    sibling_[next_] = child_[prefix];
    child_[prefix] = next_++;
  }

  void clear() {
    child_.assign(kEntries, kNone);
    sibling_.assign(kEntries, kNone);
    bytes_.resize(kEntries);
    next_ = kFirstEntry;
    width_ = kNarrowest;
    left_ = 256;
    stretchStart_ = written_;
  }

  void startStretch() {
    left_ = width_ < kWidest - 1 ? 1 << width_ : 1 << 11;
    width_ = std::min(width_ + 1, kWidest);
    stretchStart_ = written_;
  }

  void put(std::uint32_t code) {
    held_ |= code << bits_;
    for (bits_ += width_; bits_ >= 8; bits_ -= 8, held_ >>= 8)
      stream_.push_back(static_cast<std::byte>(held_));
    written_ += width_;
    ++codes_;
    --left_;
  }

  std::span<const std::byte> data_;
  std::vector<std::byte> stream_;       // the codes
  std::vector<std::uint32_t> child_;    // of a code: the entry added last that continues it
  std::vector<std::uint32_t> sibling_;  // of an entry: the one before with the same prefix
  std::vector<std::uint8_t> bytes_;     // of an entry: its last byte
  std::uint32_t next_ = kFirstEntry;
  std::uint32_t held_ = 0;
  int bits_ = 0;  // in held_
  int width_ = kNarrowest;
  int left_ = 0;  // codes of this stretch that are left
  std::int64_t codes_ = 0;
  std::int64_t written_ = 0;       // bits
  std::int64_t stretchStart_ = 0;  // of them, and of the input, before this stretch
  std::int64_t stretchInput_ = 0;
};

}  // namespace

std::vector<std::byte> CLZWCompression::compress() const { return Encoder(data_).run(); }

std::vector<std::byte> CLZWCompression::decompress(std::size_t unpackedSize) const {
  std::vector<std::byte> out(unpackedSize);
  ByteReader reader(data_);
  const int claimed = std::max(0, reader.i32());
  const int packed = std::max(0, reader.i32());
  const int codes = reader.i32();
  const CodeReader stream(reader.atMost(static_cast<std::uint64_t>(packed)), codes);
  Decoder(stream, std::span(out).first(std::min<std::size_t>(unpackedSize, claimed))).run();
  return out;
}

}  // namespace footlight
