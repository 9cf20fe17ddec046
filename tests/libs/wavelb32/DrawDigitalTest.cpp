#include "RecordingContext.h"
#include "TestWave.h"

namespace calder::draw_digital_test {

using Calls = std::vector<std::string>;

// With 98 rows a unit is 2 rows: lane i's ground is rows 2 + 6 i to 7 + 6 i, high is row 3 + 6 i, low row 7 + 6 i.
constexpr int kHeight = 98;

Calls Pattern(const TestWave& wave, double xStart, double xSpan, int width, int bitCount, int mask, double a = 0,
              double b = 0, std::int32_t pointCount = 0) {
  RecordingContext context(width, kHeight);
  EXPECT_EQ(W_DrawDigitalPattern(context, wave.Handle(), xStart, xSpan, bitCount, mask, a, b, width, kHeight, 1, 2, 3,
                                 4, pointCount),
            W_SUCCESS);
  return context.calls;
}

TEST(DrawDigital, LanesAreHighLowOrChanging) {
  const TestWave wave(Codes{0, -32768, -32768, 1});
  const Calls calls = Pattern(wave, 0, 4, 8, 16, 0);
  ASSERT_EQ(calls.size(), 32U);
  EXPECT_EQ(calls[0], "pen 1 1");
  EXPECT_EQ(calls[1], "columns 0 7..7 7..7 3..7 3..3 3..3 3..3 3..7 7..7") << "the most significant bit is on top";
  EXPECT_EQ(calls[3], "columns 0 13..13 13..13 13..13 13..13 13..13 13..13 13..13 13..13");
  EXPECT_EQ(calls[31], "columns 0 97..97 97..97 97..97 97..97 97..97 97..97 93..97 93..93");
}

TEST(DrawDigital, ManyPointsAColumnAreABlock) {
  const TestWave wave(Codes{0, 0, -1, 0, -1, -1, -1, -1, 0, 0, 0, 0});
  EXPECT_EQ(Pattern(wave, 0, 12, 3, 16, 0)[1], "columns 0 3..7 3..7 3..7");
  EXPECT_EQ(Pattern(wave, 4, 8, 4, 16, 0)[1], "columns 0 3..3 3..3 3..7 7..7");
}

TEST(DrawDigital, SelectedLanesHaveAGroundAndTheScopeItsOwn) {
  const TestWave wave(Codes(10, 0));
  const Calls calls = Pattern(wave, 0, 10, 20, 12, 0x8001, 7, 2);
  EXPECT_EQ(Texts(calls[0], calls[1], calls[2], calls[4 + 2 * 11], calls[calls.size() - 4]),
            "fill 0 2 20 6 3 fill 4 2 10 6 4 pen 1 1 pen 2 1 fill 0 92 20 6 3")
      << "the thirteenth bit is more than the model has";
}

TEST(DrawDigital, NothingIsDrawnBesideTheWaveform) {
  const TestWave wave(Codes(4, 0));
  EXPECT_EQ(Pattern(wave, 2, 8, 8, 16, 0)[1], "columns 0 7..7 7..7 - - - - - -");
  EXPECT_EQ(Pattern(wave, 2, 2, 4, 16, 0, 0, 0, 3)[1], "columns 0 7..7 7..7 - -") << "the buffer may be longer";
  EXPECT_EQ(Pattern(wave, -2, 8, 8, 16, 0)[1], "columns 0 - - 7..7 7..7 7..7 7..7 - -");
}

TEST(DrawDigital, OnPaperOnlyTheLanesOfTheMaskAreDrawn) {
  const TestWave wave(Codes(4, -1));
  RecordingContext context(4, kHeight);
  EXPECT_EQ(W_DrawDigital(context, wave.Handle(), 0, 4, 0x4001, 4, kHeight), W_SUCCESS);
  EXPECT_EQ(context.calls, (Calls{"columns 0 9..9 9..9 9..9 9..9", "columns 0 93..93 93..93 93..93 93..93"}));
}

TEST(Digital, BitsAreMirrored) {
  EXPECT_EQ(reverse_bit(0x8000), 0x0001);
  EXPECT_EQ(reverse_bit(0x1234), 0x2C48);
}

TEST(Digital, OneBitIsCopiedOntoAnother) {
  const TestWave wave(Codes{0x0001, 0x0004, 0x0005, -1, 0x0001});
  EXPECT_EQ(W_CopyBitDigital(wave.Handle(), 1, 3, 0x0004, 0x8000), W_SUCCESS);
  EXPECT_EQ(wave.Copy(), (Codes{0x0001, static_cast<std::int16_t>(0x8004), static_cast<std::int16_t>(0x8005), -1, 1}));
  for (const std::int32_t mask : {0, 3, 0x10000, -32768, -1})
    EXPECT_EQ(W_CopyBitDigital(wave.Handle(), 0, 5, mask, 1), W_BAD_VALUE) << mask;
}

} // namespace calder::draw_digital_test
