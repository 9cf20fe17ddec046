#include "comm/TransferBlock.h"
#include "Testing.h"

namespace calder::transfer_block_test {

std::vector<int> Bytes(const std::vector<std::byte>& block) {
  std::vector<int> bytes;
  for (const std::byte byte : block) bytes.push_back(static_cast<int>(byte));
  return bytes;
}

TEST(TransferBlock, EveryCodeByEveryDivisorIsRoundedToEven) {
  std::vector<std::int16_t> codes(65536);
  for (std::size_t i = 0; i < codes.size(); ++i) codes[i] = static_cast<std::int16_t>(static_cast<int>(i) - 32768);
  std::vector<std::byte> block;
  for (const std::uint32_t mask : {0xFFFFU, 0xFFFEU, 0xFFFCU, 0xFFF0U, 0xFFFDU, 0xFF38U, 0xC000U, 0x8000U, 0x0002U}) {
    const std::int32_t divisor = DivisorOfMask(mask);
    for (const bool low : {false, true}) {
      ASSERT_TRUE(BuildTransferBlock({BlockLayout::PointsAlone, low, divisor, 0, codes, {}}, block, {}));
      for (std::size_t i = 0; i < codes.size(); ++i) {
        const auto expected = static_cast<std::uint16_t>(std::lrint(static_cast<double>(codes[i]) / divisor));
        const int first = static_cast<int>(block[2 * i]);
        const int second = static_cast<int>(block[2 * i + 1]);
        ASSERT_EQ(low ? second << 8 | first : first << 8 | second, expected) << codes[i] << " / " << divisor;
      }
    }
  }
  EXPECT_EQ(Texts(DivisorOfMask(0), DivisorOfMask(0xABCDFFFC)), "1 4");
}

TEST(TransferBlock, HeadersAndControlPointsInBothOrders) {
  const std::vector<std::int16_t> codes{1, -2};
  const std::vector<std::int32_t> positions{0, 0x00012345};
  std::vector<std::byte> block;
  ASSERT_TRUE(BuildTransferBlock({BlockLayout::HeaderAndPoints, false, 1, 0x102, codes, {}}, block, {}));
  EXPECT_EQ(Bytes(block), (std::vector<int>{0, 0, 0, 0, 0, 0, 1, 2, 0, 1, 255, 254}));
  ASSERT_TRUE(BuildTransferBlock({BlockLayout::ControlPoints, true, 1, 0, codes, positions}, block, {}));
  EXPECT_EQ(Bytes(block), (std::vector<int>{1, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0x45, 0x23, 1, 0, 254, 255}));
}

TEST(TransferBlock, ProgressRisesToTheEndAndCanStop) {
  const std::vector<std::int16_t> codes(524288, 5);
  std::vector<std::byte> block;
  std::vector<int> values;
  const BlockRequest request{BlockLayout::PointsAlone, false, 1, 0, codes, {}};
  EXPECT_TRUE(BuildTransferBlock(request, block, [&](int value) {
    values.push_back(value);
    return true;
  }));
  EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
  EXPECT_EQ(values.back(), 1000);
  EXPECT_GT(values.size(), 4U);
  EXPECT_FALSE(BuildTransferBlock(request, block, [&](int value) { return value < 500; }));
}

TEST(TransferBlock, ThinningKeepsEveryNthPoint) {
  std::vector<std::byte> block(8 + 2 * 10);
  std::iota(reinterpret_cast<unsigned char*>(block.data()), reinterpret_cast<unsigned char*>(block.data()) + 28, 0);
  std::vector<std::byte> thinned = block;
  Decimate(thinned, 8, 3, 3);
  EXPECT_EQ(Bytes(thinned), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 14, 15, 20, 21}));
  thinned = block;
  Decimate(thinned, 8, 100, 4); // more than there are
  EXPECT_EQ(Bytes(thinned), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 16, 17, 24, 25}));
}

} // namespace calder::transfer_block_test
