#include "BenchFixture.h"

#include "libs/sysinf32/sysinf32.h"

namespace calder::libraries_test {

using Lines = std::vector<std::string>;

// The bench is made of the model database; the models with commands of their own come first in both.
TEST_F(BenchTest, TheBenchIsTheModelDatabase) {
  OpenNi();
  ModelDatabase database;
  ASSERT_EQ(database.SysInitDeviceInfo(CALDER_SOURCE_DIR "/models"), 0);
  std::ifstream list(CALDER_SIM_FOLDER "/bench.txt");
  int address = 0;
  std::string model;
  for (std::int32_t number = 0; number < database.SysGetDeviceCnt(); ++number) {
    ASSERT_TRUE(list >> address >> model);
    EXPECT_EQ(Texts(address, model), Texts(number + 1, database.SysGetDeviceName(number)));
    EXPECT_EQ(Ask(address, "*IDN?"), "ORVO," + model + ",1234567,1.00\n");
  }
  EXPECT_FALSE(list >> address);
}

TEST_F(BenchTest, TheControllersErrorsAreThoseOfTheStandard) {
  EXPECT_LT(ni->ibfind("gpib1"), 0);
  EXPECT_EQ(error, Ni4882::kNoBoard);
  ASSERT_EQ(ni->ibfind("gpib0"), 0);
  EXPECT_EQ(Put(1, "*IDN?"), 0x8100);
  EXPECT_EQ(error, 3); // nobody was addressed: the controller was not in charge
  ni->ibsic(0);
  EXPECT_EQ(Put(30, "*IDN?"), 0x8100);
  EXPECT_EQ(error, 2); // no listener
  EXPECT_EQ(Get(1), "");
  EXPECT_EQ(Texts(status, error), Texts(0xC100, 6));
  EXPECT_EQ(sim::Errors("XG5530"), Lines{"-420,\"Query UNTERMINATED\""});
}

// The terminators: with the end mark or without, and what stops a read.
TEST_F(BenchTest, MessagesAndAnswersEndAsTheySay) {
  OpenNi();
  ni->ibeot(0, 0);
  Put(1, "*ID");
  Put(1, "N?\n:SOUR1:FREQ?");
  EXPECT_EQ(sim::Messages("XG5530"), Lines{"*IDN?"});
  ni->ibeot(0, 1);
  Put(1, "\r\n"); // ends the second message, which forgets the first answer
  EXPECT_EQ(Get(1), "1000\n");
  EXPECT_EQ(sim::Errors("XG5530"), Lines{"-410,\"Query INTERRUPTED\""});
  ni->ibeos(0, 0x142C); // a read stops at a comma
  EXPECT_EQ(Ask(1, "*IDN?"), "ORVO,");
  EXPECT_EQ(status, 0x2100);
  EXPECT_EQ(Get(1), "XG5530,");
  ni->ibeos(0, 0);
  EXPECT_EQ(Get(1), "1234567,1.00\n");
}

TEST_F(BenchTest, TheKiLanguageIsStrict) {
  ki->_ieee_initialize(0, 0);
  const auto transmit = [&](std::string_view text) {
    return ki->_ieee_transmit(text.data(), static_cast<long>(text.size()));
  };
  EXPECT_EQ(transmit("UNT UNL TALK MTA LISTEN 14 DATA ':ARB:NAME \"a''b\"' EOI 13 10"), 0);
  EXPECT_EQ(sim::Messages("VJ6110"), Lines{":ARB:NAME \"a'b\""});
  for (const char* text : {"UNX", "LISTEN 31", "DATA 256", "'text'", "DATA 'open", "14", "unl", "LISTEN 14 DATA HELLO"})
    EXPECT_NE(transmit(text), 0) << text;
  ASSERT_EQ(transmit("UNT UNL LISTEN 14 TALK MTA DATA '*IDN' EOI DATA '?' UNT UNL LISTEN MLA TALK 14"), 0);
  std::array<char, 64> answer{};
  long received = 0;
  EXPECT_EQ(ki->_ieee_receive(answer.data(), 2, &received), KiGpib::kBufferOverflow);
  EXPECT_EQ(ki->_ieee_receive(answer.data() + 2, 62, &received), 0);
  EXPECT_EQ(std::string(answer.data()), "ORVO,VJ6110,1234567,1.00\n");
  EXPECT_EQ(transmit("LLO REN UNL LISTEN 14 GTL"), 0);
  EXPECT_EQ(sim::Setting("VJ6110", "remote") + sim::Setting("VJ6110", "lockout"), "01");
}

} // namespace calder::libraries_test
