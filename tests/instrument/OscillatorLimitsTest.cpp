#include "instrument/OscillatorLimits.h"

#include "FakeDesktop.h"
#include "app/Program.h"
#include "instrument/Initialise.h"
#include "instrument/SystemSetup.h"

namespace calder::oscillator_limits_test {

// The XG5530: 20 Vp-p with an offset of -10 to 10 V, 1e-8 to 15e6 Hz, a warning above 5 MHz.
struct Limits : testing::Test {
  fake::FakeDesktop desktop;
  Program program{desktop.Services()};
  SystemSetup setup{program};
  OscillatorLimits limits{program.settings, program.models, program.messages};
  SystemInfo& settings = program.settings;

  Limits() { EXPECT_TRUE(InitialiseSystem(program, setup)); }
};

TEST(RoundVoltsTest, KeepsTheFourthDecimalOnlyWhenItRoundsUp) {
  const std::pair<double, double> values[] = {{1.2341, 1.234}, {1.2346, 1.2346},  {1.23449, 1.234},
                                              {0.0004, 0},     {-1.2346, -1.235}, {5, 5}};
  for (const auto& [value, rounded] : values) EXPECT_EQ(RoundVolts(value), rounded) << value;
}

TEST_F(Limits, FrequencyAndPeriodFollowEachOther) {
  EXPECT_TRUE(limits.EnterFrequency("2.5k"));
  EXPECT_EQ(Texts(settings.Frequency, settings.Period, limits.FrequencyText(), limits.PeriodText()),
            Texts(2500, 1 / 2500.0, "2.5k", "400u"));
  EXPECT_TRUE(limits.EnterPeriod("10m"));
  EXPECT_EQ(settings.Frequency, 100);
  for (const char* refused : {"16M", "1n", "0", "-5", "abc"}) EXPECT_FALSE(limits.EnterFrequency(refused)) << refused;
  EXPECT_FALSE(limits.EnterPeriod("0"));
  EXPECT_FALSE(limits.EnterFrequency("100")); // it is that already
  EXPECT_EQ(settings.Frequency, 100);
}

TEST_F(Limits, AWarningIsAskedAndNoKeepsTheFrequency) {
  desktop.boxes.Expect("Above 5 MHz", BoxAnswer::No);
  EXPECT_FALSE(limits.EnterFrequency("6M"));
  EXPECT_EQ(settings.Frequency, 1000);
  desktop.boxes.Expect("Above 5 MHz", BoxAnswer::Yes);
  EXPECT_TRUE(limits.EnterFrequency("6M"));
  EXPECT_EQ(settings.Frequency, 6e6);
}

TEST_F(Limits, AmplitudeAndOffsetStayInsideTogether) {
  EXPECT_TRUE(limits.EnterOffset("6"));
  EXPECT_TRUE(limits.EnterAmplitude("8")); // 6 + 4
  EXPECT_FALSE(limits.EnterAmplitude("8.2"));
  EXPECT_FALSE(limits.EnterOffset("6.1"));
  EXPECT_FALSE(limits.EnterAmplitude("-1"));
  EXPECT_TRUE(limits.EnterOffset("-6"));
  EXPECT_FALSE(limits.EnterOffset("-6.1"));
  EXPECT_TRUE(limits.EnterOffset("5.3"));
  EXPECT_TRUE(limits.EnterAmplitude("9.4")); // sums of decimals that are not exact in binary
  EXPECT_EQ(limits.AmplitudeText(), "9.4");
}

TEST_F(Limits, AOneSidedPolarityCountsThePeak) {
  EXPECT_TRUE(limits.EnterAmplitude("5.001"));
  limits.ChoosePolarity(1);
  EXPECT_EQ(settings.Amplitude, 2.5);
  EXPECT_STREQ(limits.AmplitudeUnit(), "Vpk");
  limits.ChoosePolarity(5);
  EXPECT_EQ(settings.Amplitude, 2.5);
  EXPECT_FALSE(limits.EnterAmplitude("11")); // over half of the largest
  EXPECT_TRUE(limits.EnterAmplitude("10"));
  EXPECT_FALSE(limits.EnterOffset("0.1"));
  limits.ChoosePolarity(3);
  EXPECT_EQ(settings.Amplitude, 20);
  EXPECT_STREQ(limits.AmplitudeUnit(), "Vp-p");
  limits.ChoosePolarity(6);
  EXPECT_EQ(settings.Polarity, 3);
}

} // namespace calder::oscillator_limits_test
