#include "app/UsbIds.h"
#include "Testing.h"

namespace calder {
namespace {

TEST(UsbIds, LinesAreRecordsInFileOrder) {
  const auto ids = ParseUsbIds("XG5530,USB0::1::2::,left out\r\nonly a key\n\nlast,value");
  ASSERT_EQ(ids.size(), 4U);
  EXPECT_EQ(ids[0].key, "XG5530");
  EXPECT_EQ(ids[0].value, "USB0::1::2::");
  EXPECT_EQ(ids[1].key + "|" + ids[1].value, "only a key|");
  EXPECT_EQ(ids[2].key + ids[2].value, "");
  EXPECT_EQ(ids[3].value, "value");
  EXPECT_TRUE(ParseUsbIds("").empty());
}

TEST(UsbIds, AMissingFileFails) {
  std::vector<UsbId> ids;
  EXPECT_FALSE(ReadUsbIds("", ids));
  EXPECT_FALSE(ReadUsbIds(CALDER_SOURCE_DIR "/README.md/USBTMC.ID", ids));
  EXPECT_FALSE(ReadUsbIds("/dev/null", ids));
}

} // namespace
} // namespace calder
