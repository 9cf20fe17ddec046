#include "app/UsbIds.h"
#include "Testing.h"

namespace calder::usb_ids_test {

TEST(UsbIds, LinesAreRecordsInFileOrder) {
  const auto ids = ParseUsbIds("XG5530,USB0::1::2::,left out\r\nonly a key\n\nlast,value");
  ASSERT_EQ(ids.size(), 4U);
  EXPECT_EQ(Texts(ids[0].key, ids[0].value, ids[1].key + "|" + ids[1].value, ids[2].key + ids[2].value, ids[3].value),
            "XG5530 USB0::1::2:: only a key|  value");
  EXPECT_TRUE(ParseUsbIds("").empty());
}

TEST(UsbIds, AMissingFileFails) {
  std::vector<UsbId> ids;
  EXPECT_FALSE(ReadUsbIds("", ids));
  EXPECT_FALSE(ReadUsbIds(CALDER_SOURCE_DIR "/README.md/USBTMC.ID", ids));
  EXPECT_FALSE(ReadUsbIds("/dev/null", ids));
}

} // namespace calder::usb_ids_test
