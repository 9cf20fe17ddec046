#include "libs/sysinf32/OutputLimits.h"
#include "libs/sysinf32/sysinf32.h"

#include "TestModel.h"
#include "platform/TempFolder.h"

namespace calder::change_test {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

class Change : public ::testing::Test {
protected:
  void SetUp() override {
    PutFile(folder_ / "index.toml", "models = [\"a.toml\"]");
    PutFile(folder_ / "a.toml", std::string(test::kModelText));
    ASSERT_EQ(database_.SysInitDeviceInfo(folder_.Path().string()), 0) << database_.SysGetSysErrorText();
    ASSERT_EQ(database_.SysGetInitDeviceInfo(0, record_), 0);
  }

  TempFolder folder_;
  ModelDatabase database_;
  SystemInfo record_;
};

// Every field in the record's order.
std::string Text(const SystemInfo& r) {
  return Texts(r.ModelName, r.ModelNo, r.Address, r.AddressMin, r.AddressMax, r.DefaultArbCommand, r.MemoryName,
               r.MemorySize, r.CodeSpan, r.Field9, r.Field10, r.DataBits, r.MemoryNoSelectable, r.MemoryNo,
               r.MemoryNoMin, r.MemoryNoMax, r.MemoryNameSelectable, r.MemorySizeNo, r.ChannelSelectable, r.Channel,
               r.Frequency, r.FrequencyMin, r.FrequencyMax, r.Field23, r.Period, r.Field25, r.Field26, r.Field27,
               r.Amplitude, r.AmplitudeMin, r.AmplitudeMax, r.Field31, r.Offset, r.OffsetMin, r.OffsetMax, r.Field35,
               r.OffsetSwitch, r.OffsetOn, r.XUnit, r.YUnit, r.XUserMin, r.XUserMax, r.YUserMin, r.YUserMax, r.Output,
               r.RangeNo, r.Field46, r.XUserName, r.YUserName, r.TransferFormat, r.ControlPointCount, r.SizeRatio,
               r.Polarity);
}

TEST_F(Change, StartUpRecordIsWholeAndDefaultsKeepWhatIsTheUsers) {
  EXPECT_EQ(Text(record_), "TM1 0 5 1 20 :PRE, :SEND WAVE 8192 65534 1 8 14 1 3 1 9 1 0 1 1 20000 0.5 2000000 0.01 "
                           "5e-05 5e-07 2 1e-09 0.5 0 11 0.0001 0 -3.3 7.7 0.0001 1 1 2 2 0 1 -1 1 1 0 1   0 0 1 4");
  record_.Address = 20;
  record_.MemorySize = 1500;
  record_.XUnit = 1;
  record_.YUserMax = 7;
  record_.XUserName = "deg";
  record_.TransferFormat = 1;
  record_.ControlPointCount = 12;
  SystemInfo defaults = record_;
  ASSERT_EQ(database_.SysGetDeviceInfo(0, defaults), 0);
  EXPECT_EQ(Text(defaults), "TM1 0 20 1 20 :PRE, :SEND WAVE 1500 65534 1 8 14 1 3 1 9 1 2 1 0 50 1 100 1e-08 0.02 0.01 "
                            "1 1e-13 0.5 0 2 0.0001 0.25 -1 1 0.0001 1 1 1 2 0 1 -1 7 0 1 2 deg  1 12 1 4");
  record_.Address = 21;
  record_.MemorySize = 4096;
  ASSERT_EQ(database_.SysGetDeviceInfo(0, record_), 0);
  EXPECT_EQ(Texts(record_.Address, record_.MemorySize, record_.MemorySizeNo), "5 8192 0");
}

TEST_F(Change, InterfaceMovesAnAddressThatItsRangeLacks) {
  using Row = std::tuple<std::int32_t, std::int16_t, std::int16_t, std::int16_t, std::int16_t>;
  for (const auto& [kind, address, min, max, moved] :
       {Row{0, 20, 1, 20, 20}, Row{0, 0, 1, 20, 1}, Row{1, 30, 0, 30, 30}, Row{2, 3, 4, 99, 4}, Row{3, 7, 0, 30, 7},
        Row{4, -1, 0, 30, 0}}) {
    record_.Address = address;
    EXPECT_EQ(database_.SysChangeInterface(0, kind, record_), 0);
    EXPECT_EQ(Texts(record_.AddressMin, record_.AddressMax, record_.Address), Texts(min, max, moved)) << kind;
  }
  EXPECT_EQ(database_.SysGetInterfaceInfo(0), SYS_INTERFACE_NI_GPIB_2 | SYS_INTERFACE_USBTMC);
}

TEST_F(Change, ChannelKeepsItsRangeOrTakesTheLastAndClamps) {
  record_.Polarity = 0;
  record_.RangeNo = 1;
  record_.Frequency = 1e6;
  record_.Amplitude = 30;
  record_.Offset = -9;
  ASSERT_EQ(database_.SysChangeChannel(0, 0, record_), 0);
  EXPECT_EQ(Texts(record_.Channel, record_.RangeNo, record_.Field46, record_.Frequency), "0 1 2 100");
  EXPECT_EQ(Texts(record_.Period, record_.Amplitude, record_.Offset), "0.01 2 0");
  ASSERT_EQ(database_.SysChangeChannel(0, 1, record_), 0);
  EXPECT_EQ(Texts(record_.RangeNo, record_.OffsetMax), "0 7.7");

  record_.Frequency = kNan;
  record_.Amplitude = kInf;
  record_.Offset = kNan;
  ASSERT_EQ(database_.SysChangeChannel(0, 0, record_), 0);
  EXPECT_EQ(Texts(record_.Frequency, record_.Amplitude, record_.Offset), "50 2 1");
}

// Every reachable pair ends inside both output conditions, and a pair inside stays as it is.
TEST_F(Change, RangeBringsAmplitudeAndOffsetInsideTheOutputLimits) {
  for (std::int32_t channel = 0; channel < 2; ++channel) {
    for (std::int32_t range = 0; range < database_.SysGetRangeCnt(0, channel); ++range) {
      for (std::int16_t polarity = 0; polarity < 6; ++polarity) {
        for (int a = -1; a < 34; ++a) {
          for (int o = -17; o < 18; ++o) {
            const double amplitude = 0.7 * a;
            const double offset = 0.7 * o;
            SystemInfo after = record_;
            after.Polarity = polarity;
            after.Amplitude = amplitude;
            after.Offset = offset;
            ASSERT_EQ(database_.SysChangeRange(0, channel, range, after), 0);
            const AmplitudeRange limits{
                "", {after.AmplitudeMin, after.AmplitudeMax}, {after.OffsetMin, after.OffsetMax}};
            ASSERT_TRUE(FitsOutput(limits, after.Amplitude, after.Offset, polarity))
                << channel << range << polarity << " " << amplitude << " " << offset;
            if (FitsOutput(limits, amplitude, offset, polarity)) {
              ASSERT_EQ(after.Amplitude, amplitude);
              ASSERT_EQ(after.Offset, offset);
            }
          }
        }
      }
    }
  }
}

TEST_F(Change, OutputConditionsFollowThePolarity) {
  const AmplitudeRange range{"", {0, 10}, {-5, 5}};
  using Row = std::tuple<double, double, std::int16_t, bool>;
  for (const auto& [amplitude, offset, polarity, fits] :
       {Row{8, 1, 0, true}, Row{8.2, 1, 0, false}, Row{8.2, 1, 3, false}, Row{4, 1, 1, true}, Row{4.1, 1, 5, false},
        Row{5, 0, 2, true}, Row{5.1, 0, 4, false}, Row{8, -1, 0, true}, Row{8.2, -1, 0, false}, Row{10.1, 0, 0, false},
        Row{kNan, 0, 0, false}, Row{1, kNan, 0, false}})
    EXPECT_EQ(FitsOutput(range, amplitude, offset, polarity), fits) << amplitude << " " << offset << " " << polarity;
}

TEST_F(Change, ValuesOutsideAreRefusedAndChangeNothing) {
  const SystemInfo before = record_;
  EXPECT_EQ(database_.SysChangeFrequency(0, 0, 100.1, record_), SYS_REFUSED);
  for (const double bad : {kNan, kInf, -kInf, -50.0}) {
    EXPECT_EQ(database_.SysChangeFrequency(0, 1, bad, record_), SYS_REFUSED);
    EXPECT_EQ(database_.SysChangeAmplitude(0, 0, 0, bad, record_), SYS_REFUSED);
    EXPECT_EQ(database_.SysChangeOffset(0, 0, 0, bad, record_), SYS_REFUSED);
  }
  EXPECT_EQ(database_.SysChangeAmplitude(0, 0, 0, 0.05, record_), SYS_REFUSED);
  EXPECT_EQ(database_.SysChangeAmplitude(0, 0, 1, 2.1, record_), SYS_REFUSED);
  EXPECT_EQ(database_.SysChangeOffset(0, 1, 0, 7.8, record_), SYS_REFUSED);
  for (const std::int32_t bad : {-1, 3, INT32_MAX, INT32_MIN}) {
    EXPECT_LT(database_.SysGetDeviceInfo(bad, record_), 0);
    EXPECT_LT(database_.SysGetInitDeviceInfo(bad, record_), 0);
    EXPECT_EQ(database_.SysChangeInterface(bad, 0, record_), SYS_REFUSED);
    EXPECT_EQ(database_.SysChangeMemorySize(0, bad, record_), SYS_REFUSED);
    EXPECT_EQ(database_.SysChangeChannel(0, bad, record_), SYS_REFUSED);
    EXPECT_EQ(database_.SysChangeRange(0, 0, bad, record_), SYS_REFUSED);
    EXPECT_EQ(database_.SysChangeRange(0, bad, 0, record_), SYS_REFUSED);
    EXPECT_EQ(database_.SysChangeFrequency(0, bad, 1000, record_), SYS_REFUSED);
    EXPECT_EQ(database_.SysChangeAmplitude(0, 0, bad, 1, record_), SYS_REFUSED);
    EXPECT_EQ(database_.SysChangeOffset(bad, 0, 0, 0, record_), SYS_REFUSED);
    EXPECT_EQ(Texts(database_.SysGetRangeCnt(0, bad), database_.SysGetRangeName(0, 0, bad)), "0 ");
    EXPECT_EQ(database_.SysGetMemorySizeName(0, bad), "");
  }
  EXPECT_EQ(database_.SysChangeInterface(0, 5, record_), SYS_REFUSED);
  EXPECT_EQ(record_, before);
}

TEST_F(Change, AcceptedValuesAreStored) {
  EXPECT_EQ(database_.SysChangeFrequency(0, 1, 2e6, record_), 0);
  EXPECT_EQ(Texts(record_.Frequency, record_.Period), Texts(2e6, 1 / 2e6));
  EXPECT_EQ(database_.SysChangeAmplitude(0, 0, 0, 0.1, record_), 0);
  EXPECT_EQ(record_.Amplitude, 0.1);
  EXPECT_EQ(database_.SysChangeOffset(0, 1, 0, -3.3, record_), 0);
  EXPECT_EQ(record_.Offset, -3.3);
  record_.SizeRatio = 8;
  EXPECT_EQ(database_.SysChangeMemorySize(0, 1, record_), 0);
  EXPECT_EQ(Texts(record_.MemorySize, record_.MemorySizeNo, record_.SizeRatio), "1024 1 1");
}

TEST_F(Change, FrequencyWarningBelongsToItsChannelRangeAndLanguage) {
  using Row = std::tuple<std::int32_t, std::int32_t, double, std::int16_t, const char*>;
  for (const auto& [channel, language, frequency, result, theWarning] :
       {Row{1, 0, 1e6, 0, "-"}, Row{1, 0, 1.1e6, 1, "速い"}, Row{1, 1033, 2e6, 1, "fast"}, Row{1, 1, 2.1e6, 0, "-"},
        Row{0, 1, 1.1e6, 0, "-"}, Row{1, 1, kNan, 0, "-"}, Row{2, 1, 1.1e6, -1, "-"}}) {
    std::string warning = "-";
    EXPECT_EQ(database_.SysCheckFrequency(0, channel, language, frequency, warning), result);
    EXPECT_EQ(warning, theWarning) << frequency;
  }
}

TEST_F(Change, CommandTablesComeInFileOrderAndABadNumberLeavesTheTable) {
  CommandTable table;
  table.Key[7] = "stale";
  ASSERT_EQ(database_.SysGetGPIBInfo(0, 3, table), 4);
  EXPECT_EQ(Texts(table.Key[0], table.Key[1], table.Value[1], table.Key[2], table.Key[3], table.Key[4], table.Key[7]),
            "arbbank arbmask 0xFFFC arbname arbsend  ");
  EXPECT_LT(database_.SysGetGPIBInfo(0, 4, table), 0);
  EXPECT_LT(database_.SysGetGPIBInfo(1, 0, table), 0);
  EXPECT_EQ(table.Key[3], "arbsend");
}

} // namespace calder::change_test
