#include "app/ConvUnit.h"
#include "Testing.h"

#include "app/EngValB.h"

namespace calder::conv_unit_test {

SystemInfo Settings(int xUnit, int yUnit) {
  SystemInfo settings;
  settings.MemorySize = 524288;
  settings.Frequency = 1000;
  settings.Period = 1e-3;
  settings.Amplitude = 3.3;
  settings.Offset = 0.7;
  settings.XUnit = static_cast<std::int16_t>(xUnit);
  settings.YUnit = static_cast<std::int16_t>(yUnit);
  return settings;
}

TEST(ConvUnit, BothEndsOfEveryUnitAreExact) {
  for (const double amplitude : {1.0, 3.3, 0.1, 19.999}) {
    SystemInfo settings = Settings(1, 1);
    settings.Amplitude = amplitude;
    settings.OffsetSwitch = 1;
    const ConvUnit units(settings);
    EXPECT_EQ(units.CodeToY(32767), amplitude / 2) << "the switch is off, so there is no offset";
    settings.OffsetOn = 1;
    EXPECT_EQ(Texts(units.CodeToY(32767), units.PointToX(524288)), Texts(amplitude / 2 + 0.7, 1e-3));
  }
}

TEST(ConvUnit, APointAboveTheMemoryCountsAsTheFirstInConversionsOnly) {
  const SystemInfo settings = Settings(0, 0);
  const ConvUnit units(settings);
  EXPECT_EQ(Texts(units.PointToX(524289), units.PointToX(524288)), "0 524288");
  double x = 600000;
  EXPECT_FALSE(units.CheckX(x, 0));
  EXPECT_EQ(x, 524288);
  x = 600000;
  units.ClampX(x, 0);
  EXPECT_EQ(x, 0);
}

TEST(ConvUnit, APointThatIsPrintedAndTypedIsTheSamePoint) {
  for (const int unit : {0, 1, 2}) {
    SystemInfo settings = Settings(unit, 0);
    settings.Frequency = 1 / 0.524288;
    settings.Period = 0.524288; // a microsecond a point, which seven digits hold
    settings.XUserMin = 0.0013;
    settings.XUserMax = 0.0013 + 0.524288;
    const ConvUnit units(settings);
    for (double point = 0; point <= 524288; point += point < 3000 ? 1 : 997) {
      EXPECT_EQ(units.XToPoint(ParseEng(units.PointToXText(point))), point) << unit;
      EXPECT_EQ(units.XToPoint(units.PointToX(point)), point) << unit;
    }
  }
  SystemInfo settings = Settings(1, 0);
  const ConvUnit units(settings);
  EXPECT_EQ(Texts(units.XToPoint(-1), units.XToPoint(5)), "0 524288") << "a time beyond the period is its end";
}

TEST(ConvUnit, CodesAreLimitedButTypedOnesReachOneLower) {
  SystemInfo settings = Settings(0, 0);
  const ConvUnit units(settings);
  double y = -32768;
  EXPECT_TRUE(units.CheckY(y, 0));
  EXPECT_EQ(Texts(units.CodeToY(-32768), units.CodeToYUnclamped(-32768)), "-32767 -32768");
  y = -32769;
  EXPECT_FALSE(units.CheckY(y, 0));
  EXPECT_EQ(Texts(y, units.YToCode(40000), units.YToCodeUnclamped(40000)), "-32768 32767 40000");
}

TEST(ConvUnit, VoltsGoBothWays) {
  SystemInfo settings = Settings(0, 1);
  const ConvUnit units(settings);
  EXPECT_NEAR(units.YToCode(units.CodeToY(1234)), 1234, 1e-9);
  EXPECT_NEAR(units.YSpanToCode(units.CodeSpanToY(65534)), 65534, 1e-9);
  double high = 100;
  EXPECT_FALSE(units.CheckYCurrent(high));
  EXPECT_EQ(high, 3.3 / 2 + 0.7);
  settings.Amplitude = 0;
  EXPECT_EQ(Texts(units.YToCode(1), units.YToCodeUnclamped(1), units.YSpanToCode(1)), "65534 65534 65534");
}

TEST(ConvUnit, TextsFollowTheUnit) {
  SystemInfo settings = Settings(0, 0);
  const ConvUnit units(settings);
  EXPECT_EQ(Texts(units.PointToXText(1000), units.PointToXTextWide(1000), units.CodeToYText(-32767),
                  units.XUnitName() + units.YUnitName()),
            "1000.000 1000.000000 -32767.0 Word");
  settings.XUnit = 1;
  settings.YUnit = 1;
  EXPECT_EQ(Texts(units.PointToXText(262144), units.CodeToYText(0), units.CodeSpanToYText(65534),
                  units.XUnitName() + units.YUnitName()),
            "500.000u 700.000m 3.300000 secV");
  settings.XUnit = 2;
  settings.YUnit = 2;
  settings.XUserName = "deg     ";
  settings.YUserName = "  bar";
  EXPECT_EQ(Texts(units.PointToXText(131072), units.CodeToYText(-32767)), "250.000m -1.00000");
  EXPECT_EQ(units.XUnitName() + units.YUnitName(), "degbar");
}

} // namespace calder::conv_unit_test
