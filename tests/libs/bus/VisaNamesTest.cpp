#include "libs/bus/VisaNames.h"
#include "Testing.h"

namespace calder::visa_names_test {

TEST(VisaNames, NamesAreReadAndWritten) {
  // written: null: it is no name
  using Row = std::tuple<const char*, const char*>;
  for (const auto& [theName, written] :
       {Row{"USB0::0x1209::0x5530::1234567::INSTR", "USB0::0x1209::0x5530::1234567::INSTR"},
        Row{"usb::4617::0x5530::a-1::2::instr", "USB0::0x1209::0x5530::a-1::2::INSTR"},
        Row{"USB0::0x1209::0x5530::1234567", "USB0::0x1209::0x5530::1234567::INSTR"},
        Row{"USB1::0x1209::0x5530::1::0", "USB1::0x1209::0x5530::1::INSTR"},
        Row{"USB0::0x1209::0x5530::::INSTR", nullptr}, Row{"USB0::0x1209::0x5530::INSTR", nullptr},
        Row{"USB0::0x11209::0x5530::1::INSTR", nullptr}, Row{"USB0::0x1209::0x::1::INSTR", nullptr},
        Row{"USB0::0x1209::0x5530::1::x::INSTR", nullptr}, Row{"USBX::0x1209::0x5530::1::INSTR", nullptr},
        Row{"GPIB0::0x1209::0x5530::1::INSTR", nullptr}, Row{"US", nullptr}, Row{"", nullptr}}) {
    const auto name = ParseUsbName(theName);
    ASSERT_EQ(name.has_value(), written != nullptr) << theName;
    if (name) {
      EXPECT_EQ(FormatUsbName(*name), written);
    }
  }
}

TEST(VisaNames, ExpressionsFindNames) {
  constexpr const char* kName = "USB0::0x1209::0x5530::A*7::INSTR";
  for (const char* fits : {"USB0::0x1209::0x5530::?*INSTR", "?*", "usb?::0X1209?*instr",
                           "USB0::0x1209::0x5530::A\\*7::INSTR", "U*SB0::0x12*09?*R*"})
    EXPECT_TRUE(MatchesVisaExpression(fits, kName)) << fits;
  for (const char* fails : {"USB0::0x1209::0x5531::?*INSTR", "USB0", "?", "", "USB0?*INSTR?", "\\?SB0?*"})
    EXPECT_FALSE(MatchesVisaExpression(fails, kName)) << fails;
  EXPECT_TRUE(IsVisaExpression("USB?*INSTR"));
  for (const char* wrong : {"", "*", "?**", "USB\\"}) EXPECT_FALSE(IsVisaExpression(wrong)) << wrong;
}

} // namespace calder::visa_names_test
