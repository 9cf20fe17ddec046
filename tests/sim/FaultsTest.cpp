#include "BenchFixture.h"

#include "platform/TempFolder.h"

namespace calder::faults_test {

TEST_F(BenchTest, EveryFaultMeetsItsCall) {
  OpenNi();
  ASSERT_TRUE(
      sim::Script("# a comment\nfail ibwrt 1\ntimeout ibwrt 2\nshort ibwrt 3 4\n\nshort ibrd 1 3\nunplug ibwrt 5"));
  EXPECT_EQ(Put(1, "*IDN?\n"), 0x8100);
  EXPECT_EQ(Put(1, "*IDN?\n"), 0xC100);
  EXPECT_EQ(Put(1, "*IDN?\n"), 0x0100);
  EXPECT_EQ(count, 4);
  EXPECT_EQ(sim::Messages("XG5530").size(), 0U);
  EXPECT_EQ(Put(1, "?\n"), 0x0100);
  EXPECT_EQ(Get(1), "ORV");
  EXPECT_EQ(Get(1), "O,XG5530,1234567,1.00\n");
  EXPECT_EQ(Put(1, "*IDN?\n"), 0x8100);
  EXPECT_EQ(error, Ni4882::kNoBoard);
  EXPECT_EQ(ni->ibsic(0), 0x8100); // and so does every later call
  EXPECT_EQ(usb->UsbInitialize(), Usb488::kNoDevice);
  EXPECT_EQ(ki->_ieee_board_present(), 0);
  EXPECT_EQ(sim::InjectedFaults(), 5);
}

TEST_F(BenchTest, ALateCallIsATimeoutBehindItsLimit) {
  OpenNi();
  ni->ibtmo(0, 10);                                  // 0.3 s
  ASSERT_TRUE(sim::Script("late 6 0.25\nlate 8 5")); // the calls are counted with their addressing
  EXPECT_EQ(Put(1, "*CLS\n"), 0x0100);
  EXPECT_DOUBLE_EQ(waited, 0.25);
  EXPECT_EQ(Put(1, "*CLS\n"), 0xC100);
  EXPECT_DOUBLE_EQ(waited, 0.55);
  EXPECT_EQ(sim::Messages("XG5530").size(), 1U);
}

TEST_F(BenchTest, AScriptIsTakenWholeOrNotAtAll) {
  for (const char* line :
       {"fail", "fail 0", "fail x", "fail ibwrt 1 2", "break 1", "short 1", "short ibwrt 1 x", "late 2 -1"})
    EXPECT_FALSE(sim::Script(std::string("fail 1\n") + line)) << line;
  OpenNi();
  EXPECT_EQ(sim::InjectedFaults(), 0);
}

} // namespace calder::faults_test
