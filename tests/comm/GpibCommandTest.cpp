#include "comm/GpibCommand.h"

#include "FakeDesktop.h"

namespace calder::gpib_command_test {

struct GpibCommandTest : testing::Test {
  fake::Boxes boxes;
  clsGpibCommand command{boxes};

  // Rows as the model database gives them.
  void Fill(const std::vector<std::pair<std::string, std::string>>& rows, const std::string& defaultCommand = "") {
    CommandTable table;
    for (std::size_t i = 0; i < rows.size(); ++i) std::tie(table.Key[i], table.Value[i]) = rows[i];
    command.Fill(table, static_cast<int>(rows.size()), defaultCommand);
  }
};

TEST_F(GpibCommandTest, TemplatesTakePlaceholdersAndValues) {
  Fill({{"arbsend", "SEND $ARBNUM$$ARBNAME$#, 000"},
        {"FREQ ", "\"FREQ$CH$ , 0.00#\""},
        {"amp", "VOLT"},
        {"offset", "'OFFS, A', 0.0"},
        {"outon", "OUT ON, 0"},
        {"arbsize", "$ARBNUM$ 5$ $x$"},
        {"arbprecommand", "PRE, 00"},
        {"preset", " *CLS"}});
  command.MemoryNo = 3;
  command.MemoryName = " AB$CH$ ";
  command.Channel = 1;
  EXPECT_EQ(command.ArbSend(std::string("NAME")), "SEND 3,AB$CH$,# NAME"); // a text that is no number stays
  EXPECT_EQ(command.ArbSend(std::string("7")), "SEND 3,AB$CH$,# 007");
  EXPECT_EQ(command.ArbSend(), "SEND 3,AB$CH$,#");
  EXPECT_EQ(Texts(command.frequency(1.5), command.frequency(1234.56789)), "FREQ2 1.50 FREQ2 1234.568");
  EXPECT_EQ(command.AmplitudeLevel(5.0), "VOLT"); // no format: no value
  EXPECT_EQ(Texts(command.DcOffsetLevel(0.25), command.OutputOn(), command.Output(0)), "OFFS, A 0.2 OUT ON OUT ON");
  EXPECT_EQ(Texts(command.Output(2), command.ArbSize(), command.ArbPreCommand()), " 3, 5$ $x$ PRE 03");
  EXPECT_EQ(Texts(command.Preset(), command.AmplitudeRange(1.0)), "*CLS ");
}

TEST_F(GpibCommandTest, MasksFlagsAndFields) {
  Fill({{"arbmask", "0XFFFC"},
        {"errmask", "60"},
        {"arbbswap", "True"},
        {"model", "*IDN?, 6, 7, \"XG,31\""},
        {"arbbank", "BANK, 0, -1"},
        {"arbname", ":ARB:NAME 0x20 0x22 _$Name IS 0x22, 4"}});
  EXPECT_EQ(command.ArbBitMask(), 0xFFFCU);
  EXPECT_EQ(Texts(command.ErrorMask(), ParseCommandMask("0x1F"), command.ArbByteSwap(), command.Model().command,
                  command.Model().start, command.Model().length),
            "60 31 true *IDN? 6 7");
  EXPECT_EQ(Texts(command.Model().expected, command.Serial().command, command.ArbBank(5)), "XG,31  BANK 4");
  EXPECT_EQ(command.ArbName("LONGNAME"), ":ARB:NAME \"LONG IS\"");
}

TEST_F(GpibCommandTest, FaultyRowsAreToldAndTheRestIsLoaded) {
  boxes.Expect("Script Error\rnokey");
  Fill({{"nokey", "A"}, {"arbbswap", "maybe"}, {"amp", "B"}});
  EXPECT_EQ(command.AmplitudeLevel(), "B");
  boxes.Expect("ArbByteSwap Command Error\rmaybe");
  EXPECT_FALSE(command.ArbByteSwap());
}

TEST_F(GpibCommandTest, TheDefaultCommandServesATableWithoutOne) {
  Fill({{"amp", "A"}}, "\"PRE CMD\", 'SEND, X'");
  EXPECT_EQ(Texts(command.ArbPreCommand(), command.ArbSend()), "PRE CMD SEND, X");
  Fill({{"arbsend", "OWN"}}, "ONE");
  EXPECT_EQ(command.ArbSend(), "OWN");
  Fill({}, "ONE");
  EXPECT_EQ(Texts(command.ArbSend(), command.ArbPreCommand()), "ONE ");
}

} // namespace calder::gpib_command_test
