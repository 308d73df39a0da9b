#include "files/rle_compression.h"

#include <gtest/gtest.h>
#include <random>

namespace footlight {
namespace {

using Bytes = std::vector<std::byte>;

Bytes bytes(std::initializer_list<int> values) {
  Bytes out;
  for (const int value : values) out.push_back(static_cast<std::byte>(value));
  return out;
}

TEST(RleCompression, WritesTheRecordsOfTheForm) {
  EXPECT_EQ(CRLECompression::compresschar(bytes({9})), bytes({1, 9}));
  EXPECT_EQ(CRLECompression::compresschar(bytes({7, 7, 7})), bytes({3, 7, 7, 7}));
  EXPECT_EQ(CRLECompression::compresschar(bytes({7, 7, 7, 7})), bytes({0x84, 7}));
  EXPECT_EQ(CRLECompression::compresschar(bytes({1, 2, 5, 5, 5, 5, 5, 3})), bytes({2, 1, 2, 0x85, 5, 1, 3}));
  EXPECT_EQ(CRLECompression::compresschar(Bytes(200, std::byte{4})), bytes({0xFF, 4, 0x80 | 73, 4}));
  EXPECT_EQ(CRLECompression::compress(bytes({1, 2, 1, 2, 1, 2, 1, 2, 3, 4})), bytes({0x84, 1, 2, 1, 3, 4}));
  EXPECT_TRUE(CRLECompression::compress({}).empty());

  Bytes mixed;
  for (int i = 0; i < 128; ++i) mixed.push_back(static_cast<std::byte>(i));
  const Bytes packed = CRLECompression::compresschar(mixed);
  ASSERT_EQ(packed.size(), 130u);
  EXPECT_EQ(packed[0], std::byte{127});
  EXPECT_EQ(packed[128], std::byte{1});
}

TEST(RleCompression, GivesBackWhatWentIn) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    Bytes plain;
    while (plain.size() < 600) {
      plain.insert(plain.end(), 2 * (1 + random() % (round % 2 == 0 ? 4 : 300)),
                   static_cast<std::byte>(random() % 3));
    }
    EXPECT_EQ(CRLECompression::decompress(CRLECompression::compress(plain), plain.size()), plain);
    EXPECT_EQ(CRLECompression::decompresschar(CRLECompression::compresschar(plain), plain.size()), plain);
  }
}

TEST(RleCompression, StaysInsideBothEndsOfBadStreams) {
  // Runs past the end of the output, literals and repeats past the end of the input, empty records.
  EXPECT_EQ(CRLECompression::decompresschar(bytes({0xFF, 4}), 3), bytes({4, 4, 4}));
  EXPECT_EQ(CRLECompression::decompresschar(bytes({0x7F, 1, 2}), 4), bytes({1, 2, 0, 0}));
  EXPECT_EQ(CRLECompression::decompress(bytes({0x82, 1}), 4), bytes({0, 0, 0, 0}));
  EXPECT_EQ(CRLECompression::decompress(bytes({2, 1, 2, 3}), 4), bytes({1, 2, 3, 0}));
  EXPECT_EQ(CRLECompression::decompress(bytes({0x83, 1, 2}), 5), bytes({1, 2, 1, 2, 1}));
  EXPECT_EQ(CRLECompression::decompresschar(bytes({0, 0x80, 9, 1, 5}), 2), bytes({5, 0}));
  EXPECT_EQ(CRLECompression::decompresschar({}, 2), bytes({0, 0}));
  EXPECT_TRUE(CRLECompression::decompresschar(bytes({1, 1}), 0).empty());

  std::mt19937 random(6);
  for (int round = 0; round < 2000; ++round) {
    Bytes packed(random() % 40);
    for (std::byte& value : packed) value = static_cast<std::byte>(random());
    const std::size_t size = random() % 400;
    EXPECT_EQ(CRLECompression::decompress(packed, size).size(), size);
    EXPECT_EQ(CRLECompression::decompresschar(packed, size).size(), size);
  }
}

}  // namespace
}  // namespace footlight
