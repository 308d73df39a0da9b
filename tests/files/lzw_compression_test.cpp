#include "files/lzw_compression.h"

#include <gtest/gtest.h>
#include <random>

#include "files/lzw_compression2.h"
#include "files/rle_compression2.h"
#include "foundation/byte_writer.h"

namespace footlight {
namespace {

using Bytes = std::vector<std::byte>;

Bytes bytes(std::initializer_list<int> values) {
  Bytes out;
  for (const int value : values) out.push_back(static_cast<std::byte>(value));
  return out;
}

struct Code {
  int code;
  int width = 9;
};

// A block written by hand, code by code.
Bytes blockOf(std::size_t unpacked, const std::vector<Code>& codes) {
  Bytes stream;
  int bits = 0;
  for (const auto& [code, width] : codes) {
    for (int i = 0; i < width; ++i, ++bits) {
      if (bits % 8 == 0) stream.push_back(std::byte{0});
      stream.back() |= static_cast<std::byte>((code >> i & 1) << (bits % 8));
    }
  }
  ByteWriter block;
  block.number(static_cast<std::int64_t>(unpacked), 4).number(std::ssize(stream), 4);
  return block.number(std::ssize(codes), 4).bytes(stream).take();
}

Bytes unpacked(const Bytes& block, std::size_t size) { return CLZWCompression(block).decompress(size); }

TEST(LzwCompression, ReadsCodesWrittenByHand) {
  struct Row {
    const char* what;
    std::vector<Code> codes;
    Bytes plain;
  };
  const Row rows[] = {
      {"bytes", {{'a'}, {'b'}}, bytes({'a', 'b', 0, 0, 0, 0})},
      {"an entry", {{'a'}, {'b'}, {257}}, bytes({'a', 'b', 'a', 'b', 0, 0})},
      {"the entry yet to come", {{'a'}, {257}, {258}}, bytes({'a', 'a', 'a', 'a', 'a', 'a'})},
      {"a clear", {{'a'}, {'b'}, {256}, {'c'}, {257}}, bytes({'a', 'b', 'c', 'c', 'c', 0})},
      {"a clear at the start, and two", {{256}, {'a'}, {256}, {256}, {'b'}}, bytes({'a', 'b', 0, 0, 0, 0})},
      {"a code beyond the next", {{'a'}, {258}, {'b'}}, bytes({'a', 0, 0, 0, 0, 0})},
      {"an entry before all bytes", {{257}, {'b'}}, bytes({0, 0, 0, 0, 0, 0})},
      {"an entry behind a clear", {{'a'}, {'b'}, {256}, {257}}, bytes({'a', 'b', 0, 0, 0, 0})},
      {"more than the size", {{'a'}, {257}, {258}, {259}}, bytes({'a', 'a', 'a', 'a', 'a', 'a'})},
  };
  for (const Row& row : rows) EXPECT_EQ(unpacked(blockOf(6, row.codes), 6), row.plain) << row.what;
}

TEST(LzwCompression, BelievesNoNumberOfTheBlock) {
  const Bytes block = blockOf(3, {{'a'}, {'b'}, {'c'}});
  EXPECT_EQ(unpacked(block, 2), bytes({'a', 'b'}));
  EXPECT_EQ(unpacked(block, 5), bytes({'a', 'b', 'c', 0, 0}));
  EXPECT_EQ(unpacked(blockOf(2, {{'a'}, {'b'}, {'c'}}), 3), bytes({'a', 'b', 0}))
      << "it ends at its own size";
  for (const std::size_t field : {0, 4, 8}) {
    for (const int top : {0x7F, 0xFF}) {
      Bytes lying = block;
      lying[field + 3] = static_cast<std::byte>(top);
      EXPECT_EQ(unpacked(lying, 3), top == 0x7F ? bytes({'a', 'b', 'c'}) : bytes({0, 0, 0})) << field;
    }
  }
  for (std::size_t length = 0; length < block.size(); ++length) {
    EXPECT_EQ(CLZWCompression(std::span(block).first(length)).decompress(3).size(), 3u);
  }
}

Bytes randomBytes(std::mt19937& random, std::size_t size, unsigned values) {
  Bytes out(size);
  for (std::byte& byte : out) byte = static_cast<std::byte>(random() % values);
  return out;
}

std::size_t numberAt(const Bytes& block, std::size_t at) {
  std::size_t number = 0;
  for (std::size_t i = 4; i > 0; --i) number = number << 8 | std::to_integer<std::size_t>(block[at + i - 1]);
  return number;
}

// Every width of codes, the full table, and data that change so that the table is emptied.
TEST(LzwCompression, GivesBackWhatWentIn) {
  std::mt19937 random(3);
  std::vector<Bytes> all = {{}, bytes({9}), Bytes(100000, std::byte{7})};
  for (const std::size_t size : {2, 255, 256, 257, 1000, 5000, 20000, 300000}) {
    all.push_back(randomBytes(random, size, 2));
    all.push_back(randomBytes(random, size, 256));
  }
  Bytes changing = randomBytes(random, 60000, 2);
  for (int part = 0; part < 6; ++part) {
    const Bytes more = randomBytes(random, 60000, part % 2 == 0 ? 256 : 2);
    changing.insert(changing.end(), more.begin(), more.end());
  }
  all.push_back(changing);
  for (const Bytes& plain : all) {
    const Bytes block = CLZWCompression(plain).compress();
    EXPECT_EQ(numberAt(block, 0), plain.size());
    EXPECT_EQ(numberAt(block, 4) + 12, block.size());
    EXPECT_EQ(unpacked(block, plain.size()), plain) << plain.size();
  }
  EXPECT_LT(CLZWCompression(all[2]).compress().size(), 1000u);
}

// A table that noise has filled fits nothing else; kept, it makes these bytes more than 600,000.
TEST(LzwCompression, EmptiesATableThatNoLongerFits) {
  std::mt19937 random(4);
  Bytes plain = randomBytes(random, 100000, 256);
  const Bytes simple = randomBytes(random, 400000, 2);
  plain.insert(plain.end(), simple.begin(), simple.end());
  EXPECT_LT(CLZWCompression(plain).compress().size(), 250000u);
}

TEST(LzoBlocks, GiveBackWhatWentIn) {
  std::mt19937 random(3);
  for (const std::size_t size : {0, 1, 2, 3, 4, 17, 1000, 100000}) {
    for (const unsigned values : {1u, 2u, 256u}) {
      const Bytes plain = randomBytes(random, size, values);
      const Bytes block = CLZWCompression2(plain).compress();
      EXPECT_EQ(numberAt(block, 0), size);
      EXPECT_EQ(numberAt(block, 4) + 8, block.size());
      EXPECT_EQ(CLZWCompression2(block).decompress(size), plain);
    }
  }
}

TEST(LzoBlocks, BelieveNoNumberOfTheBlock) {
  Bytes plain;
  for (int i = 0; i < 60; ++i) plain.push_back(static_cast<std::byte>(i < 30 ? i * 7 : 1));
  const Bytes block = CLZWCompression2(plain).compress();
  const auto first = [&](std::size_t size, std::size_t all) {
    Bytes part(plain.begin(), plain.begin() + static_cast<std::ptrdiff_t>(size));
    part.resize(all);
    return part;
  };
  for (const std::size_t size : {1, 20, 59, 60, 200}) {
    const std::size_t kept = std::min<std::size_t>(size, 60);
    EXPECT_EQ(CLZWCompression2(block).decompress(size), first(kept, size)) << size;
    EXPECT_EQ(CLZWCompression2(block).decompressUpTo(size), first(kept, kept)) << size;
  }
  // The unpacked size: too small, beyond all memory, below 0. Then the packed one.
  Bytes lying = block;
  lying[0] = std::byte{30};
  EXPECT_EQ(CLZWCompression2(lying).decompress(60), first(30, 60));
  lying[3] = std::byte{0x7F};
  EXPECT_EQ(CLZWCompression2(lying).decompress(60), plain);
  EXPECT_EQ(CLZWCompression2(lying).decompress(20), first(20, 20));
  lying[3] = std::byte{0xFF};
  EXPECT_EQ(CLZWCompression2(lying).decompress(60), Bytes(60));
  EXPECT_TRUE(CLZWCompression2(lying).decompressUpTo(60).empty());
  lying = block;
  lying[7] = std::byte{0x7F};
  EXPECT_EQ(CLZWCompression2(lying).decompress(60), plain);
  lying[4] = std::byte{0};
  lying[7] = std::byte{0};
  EXPECT_EQ(CLZWCompression2(lying).decompress(60), Bytes(60));
  for (std::size_t length = 0; length < block.size(); ++length) {
    const Bytes out = CLZWCompression2(std::span(block).first(length)).decompress(60);
    ASSERT_EQ(out.size(), 60u);
    EXPECT_EQ(out.back(), std::byte{0}) << length;
  }
}

TEST(RowRunLength, ReadsEachRowFromItsOwnBytes) {
  const std::int16_t lengths[] = {2, 5, 3, -4, 2, 30};
  const Bytes packed = bytes({0x80, 5,           // 129 times, cut to the row
                              1, 6, 7, 0xFF, 8,  // two copied, two repeated
                              9, 1, 2,           // more copies than the row has bytes
                              0, 3,              // one copied
                              0xFE});            // a repeat without its byte
  const Bytes out = CRLECompression2({4, 7}, lengths, packed).Decompress();
  EXPECT_EQ(out, bytes({5, 5, 5, 5, 6, 7, 8, 8, 1, 2, 0, 0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_TRUE(CRLECompression2({-4, 3}, lengths, packed).Decompress().empty());
}

}  // namespace
}  // namespace footlight
