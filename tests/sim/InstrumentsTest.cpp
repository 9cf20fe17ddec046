#include "BenchFixture.h"

#include "platform/TempFolder.h"

namespace calder::instruments_test {

using Lines = std::vector<std::string>;
using namespace std::string_literals;

TEST_F(BenchTest, ErrorsGoIntoTheQueueAndSetTheirBit) {
  OpenNi();
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {":SOUR1:FREK 5;:SOUR1:FREQ 7", "32", "-113,\"Undefined header\"\n"}, // the rest of the message is not done
      {":SOUR1:FREQ 16E6;:OUTP1 ON", "16", "-222,\"Data out of range\"\n"}, // the rest is
      {":SOUR2:FREQ 5", "32", "-114,\"Header suffix out of range\"\n"},
      {":SOUR1:FREQ", "32", "-109,\"Missing parameter\"\n"},
      {":SOUR1:FREQ 1,2", "32", "-108,\"Parameter not allowed\"\n"},
      {":SOUR1:VOLT 5 VOLTS", "32", "-131,\"Invalid suffix\"\n"},
      {":SOUR1:VOLT 21PP", "16", "-222,\"Data out of range\"\n"},
      {":SOUR1:VOLT 10.5PK", "16", "-222,\"Data out of range\"\n"},
      {":SOUR1:VOLT:RANG 1;:SOUR1:VOLT 4.5PP", "16", "-222,\"Data out of range\"\n"},
      {":OUTP1:POL SQU, NORM", "16", "-221,\"Settings conflict\"\n"}, // the shape is another one
      {":SOURCE1:FREQUENCY 5;VOLT:OFFS", "32", "-113,\"Undefined header\"\n"},
      {"*CLS;:sour1:volt 3.5pp;:OUTP1:LOAD INFinity;:OUTP1:SCAL SIN, PFS", "0", "0,\"No error\"\n"}};
  for (const auto& [message, bits, entry] : cases) {
    Put(kXg5530, "*CLS\n");
    Put(kXg5530, message + "\n"s);
    EXPECT_EQ(Ask(kXg5530, "*ESR?"), bits + "\n"s) << message;
    EXPECT_EQ(Ask(kXg5530, "*ESR?"), "0\n");
    EXPECT_EQ(Ask(kXg5530, ":SYST:ERR?"), entry) << message;
  }
  EXPECT_EQ(Texts(sim::Setting("XG5530", "frequency1"), sim::Setting("XG5530", "output"),
                  sim::Setting("XG5530", "unit1") + sim::Setting("XG5530", "scale1")),
            "5 1 PPPFS");
  Put(kKz8110, "VPP 19PP\n");
  EXPECT_EQ(Ask(kKz8110, "*STB?"), "4\n");
  EXPECT_EQ(Ask(kKz8110, "ERR?"), "-222,\"Data out of range\"\n");
  EXPECT_EQ(Ask(kKz8110, "*STB?"), "0\n");
}

// The command that announces a block, the block as each family takes it, and where it ends up.
TEST_F(BenchTest, RawBlocksGoIntoTheMemories) {
  OpenNi();
  const std::tuple<int, const char*, const char*, int, int, bool, const char*> cases[] = {
      {kXj2110, "XJ2110", ":TRAC:POIN 1024;:FORM:BORD NORM;:TRAC:DATA 3,USER 1,", 3, 1024, false, "USER 1"},
      {kXj2110, "XJ2110", ":TRAC:POIN 2048;:FORM:BORD SWAP;:TRAC:DATA 4,X,", 4, 2048, true, "X"},
      {kQn1010, "QN1010", "MEM:MODE BIN;:MEM:SIZE 2048;MEM:DATA 2,", 2, 2048, true, ""},
      {10, "QN4020", ":INST:SEL 2;:ARB:SIZE 1024;:ARB:BANK 4;:ARB:STAR 0;:ARB:NAME \"A;B\";:ARB:DATA 5,", 5, 1024,
       false, "A;B"},
      {kPj7410, "PJ7410", ":TRAC:DATA ARB16,", 16, 4096, false, ""},
      {17, "VJ6210", ":INST:NSEL 2;:ARB:POIN 1024;:ARB:NAME \"M\";:ARB:DATA 8,", 8, 1024, false, "M"},
      {kKz8110, "KZ8110", "WMEM 3;WLEN 1024;WDAT", 3, 1024, false, ""},
      {22, "UB9110", "SIZE 1024;BANK 1;DATA 0,", 0, 1024, false, ""},
      {26, "UB9330", "Chan 3;Size 4096;Data 15,", 15, 4096, false, ""}};
  for (const auto& [address, model, command, memory, size, lowFirst, name] : cases) {
    std::vector<std::int16_t> codes(static_cast<std::size_t>(size));
    for (std::size_t i = 0; i < codes.size(); ++i)
      codes[i] = static_cast<std::int16_t>(static_cast<int>(i * 7 % 4096) - 2048);
    codes[5] = 0x0A0A; // a line feed ends nothing
    if (lowFirst || model == "KZ8110"s) codes[5] = 0x040A;
    Put(address, "*CLS;"s + command + "\n");
    PutBlock(address, BlockOf(codes, lowFirst));
    EXPECT_EQ(sim::Errors(model), Lines()) << command;
    const auto stored = sim::Memory(model, memory);
    ASSERT_TRUE(stored.has_value()) << command;
    EXPECT_EQ(stored->codes, codes) << command;
    EXPECT_EQ(stored->name, name);
    // One point too few: an error, and the memory keeps what it had.
    Put(address, command + "\n"s);
    PutBlock(address, BlockOf(codes, lowFirst).substr(2));
    EXPECT_EQ(sim::Errors(model), Lines{"-161,\"Invalid block data\""}) << command;
    EXPECT_EQ(sim::Memory(model, memory), stored);
  }
}

// Header and block are one message.
TEST_F(BenchTest, AnEndInsideABlockCutsIt) {
  const ViSession device = OpenVisa();
  const std::string header = ":TRAC:DATA 1,\"A\",#212";
  const std::string block = "\0\0\0\0\0\0\0\2"s + BlockOf({1, 2});
  for (const int end : {1, 0}) {
    std::uint32_t moved = 0;
    visa->viSetAttribute(device, VI_ATTR_SEND_END_EN, static_cast<std::uint64_t>(end));
    visa->viWrite(device, header.data(), static_cast<std::uint32_t>(header.size()), moved);
    visa->viSetAttribute(device, VI_ATTR_SEND_END_EN, 1);
    visa->viWrite(device, block.data(), static_cast<std::uint32_t>(block.size()), moved);
    EXPECT_EQ(sim::Memory("XG5531", 1).has_value(), end == 0);
    EXPECT_EQ(sim::Errors("XG5531"), end == 0 ? Lines() : Lines{"-161,\"Invalid block data\""});
    AskVisa(device, "*CLS;*ESR?\n");
  }
}

// USB488 sends a block in one piece without an end mark.
TEST_F(BenchTest, ABlockEndsByItsLengthToo) {
  ASSERT_EQ(usb->UsbInitialize(), 0);
  ASSERT_EQ(usb->UsbOpenDevice(kKz8110), 0);
  const std::string block = BlockOf(std::vector<std::int16_t>(1024, 0x0A0));
  usb->UsbSendTextData(kKz8110, "WMEM 2;WLEN 1024;WDAT\n", 22, 1);
  usb->UsbSendBinary(kKz8110, block.data(), static_cast<long>(block.size()), 0);
  ASSERT_EQ(usb->UsbOpenDevice(1), 0);
  usb->UsbSendBinary(1, "\0\0\0\0\0\0\0\2\0\1\0\n", 12, 0);
  usb->UsbSendTextData(1, ":SOUR1:FUNC:USER 9\n", 19, 0);
  EXPECT_EQ(sim::Memory("KZ8110", 2)->codes, std::vector<std::int16_t>(1024, 0x0A0));
  EXPECT_EQ(sim::Memory("XG5530", 9)->codes, (std::vector<std::int16_t>{1, 10}));
}

TEST_F(BenchTest, ABlockWithoutACommandIsKeptForTheNextChoice) {
  OpenNi();
  PutBlock(1, "\0\0\0\0\0\0\0\3"s + BlockOf({1, -2, 0x0A0A}));
  EXPECT_EQ(sim::Memory("XG5530", 7), std::nullopt);
  Put(1, ":SOUR1:FUNC:SHAP USER;:SOUR1:FUNC:USER 7\n");
  EXPECT_EQ(sim::Memory("XG5530", 7)->codes, (std::vector<std::int16_t>{1, -2, 0x0A0A}));
  EXPECT_EQ(Ask(1, ":TRAC:INF? 7"), "\"ARB7\",0,3\n");
  EXPECT_EQ(Ask(1, ":TRAC:INF? 8"), "\"\",0,0\n");
  // A cleared instrument forgets it.
  PutBlock(1, "\0\0\0\0\0\0\0\2"s + BlockOf({5, 6}));
  const std::array<char, 3> clear = {63, 33, 4};
  ni->ibcmd(0, clear.data(), 3);
  Put(1, ":SOUR1:FUNC:USER 7\n");
  EXPECT_EQ(sim::Memory("XG5530", 7)->codes.size(), 3U);
}

TEST_F(BenchTest, ARunningSequenceIsInTheWay) {
  OpenNi();
  ASSERT_TRUE(sim::Set("XG5530", "sequence", "1"));
  ASSERT_TRUE(sim::Store("XG5530", 1, {.name = "old", .format = 0, .codes = {1, 2}, .controls = {}}));
  EXPECT_FALSE(sim::Store("XG5530", 129, {}));
  EXPECT_EQ(Ask(1, ":SOUR1:SEQ:STAT?;:STAT:OPER:CH1:COND?"), "1;4\n");
  Put(1, ":SOUR1:FUNC:USER 1\n:SOUR1:SEQ:STAT 0\n");
  EXPECT_EQ(sim::Errors("XG5530").size(), 2U);
  Put(1, "*CLS;:TRIG1:SEL:EXEC ISTOP;:SOUR1:SEQ:STAT 0;:SOUR1:FUNC:USER 1\n");
  EXPECT_EQ(sim::Errors("XG5530"), Lines());
  EXPECT_EQ(Ask(1, ":SOUR1:SEQ:STAT?;:STAT:OPER:CH1:COND?"), "0;0\n");
}

TEST_F(BenchTest, APowerSourceSettles) {
  OpenNi();
  EXPECT_EQ(Ask(kPj7410, "MODE?"), "AC-INT\n");
  Put(kPj7410, "Outp 1\n:Mode ACDC-ADD\n");
  EXPECT_EQ(sim::Errors("PJ7410"), Lines{"-221,\"Settings conflict\""});
  Put(kPj7410, ":Outp 0;:Mode ACDC-ADD;:VOLT:RANG 200;:FUNC ARB3;:VOLT 800;:VOLT:OFFS -5;:Freq 50\n");
  EXPECT_EQ(Ask(kPj7410, "MODE?;:VOLT:RANG?"), "ACDC-EXT;200\n");
  EXPECT_EQ(Ask(kPj7410, "STAT:OPER:COND?"), "2\n");
  EXPECT_EQ(Ask(kPj7410, "STAT:OPER:COND?"), "2\n");
  EXPECT_EQ(Ask(kPj7410, "STAT:OPER:COND?"), "0\n");
  EXPECT_EQ(sim::Setting("PJ7410", "user") + sim::Setting("PJ7410", "amplitude"), "3800");
}

// The numbers that choose a memory begin after the built-in functions.
TEST_F(BenchTest, MemoriesAreChosenByTheirOwnNumbers) {
  OpenNi();
  Put(22, "FUNC 9\n");
  Put(23, "FNC 5\n");
  Put(24, "Wave 16;Outp 1\n");
  EXPECT_EQ(sim::Setting("UB9110", "user") + sim::Setting("UB9210", "user") + sim::Setting("UB9310", "user"), "7015");
  Put(22, "FUNC 1\n");
  EXPECT_EQ(sim::Setting("UB9110", "shape"), "FUNC1");
  Put(22, "FUNC 10\n");
  EXPECT_EQ(sim::Errors("UB9110"), Lines{"-222,\"Data out of range\""});
}

} // namespace calder::instruments_test
