#include "TestWave.h"

namespace calder::reshape_test {

TEST(CompWaveX, PutsTheSourceOnTheDestinationByStraightLines) {
  using Row = std::tuple<const char*, double, double, std::int32_t, double, double, Codes>;
  for (const auto& [what, sourceStart, sourceSpan, pointCount, start, span, result] :
       {Row{"identity", 0, 8, 8, 0, 8, {10, 20, 30, 40, 50, 60, 70, 80}},
        Row{"identity of a part", 2.5, 3.25, 8, 2.5, 3.25, {10, 20, 30, 40, 50, 60, 70, 80}},
        Row{"moved", 1, 2, 8, 4, 2, {10, 0, 0, 40, 20, 30, 70, 80}},
        Row{"moved by half a point", 1, 2, 8, 4.5, 2, {10, 0, 0, 40, 50, 25, 35, 80}},
        Row{"squeezed, the rest of the area is cleared", 0, 8, 8, 0, 4, {10, 30, 50, 70, 0, 0, 0, 0}},
        Row{"squeezed to the middle", 2, 4, 8, 3, 2, {10, 20, 0, 30, 50, 0, 70, 80}},
        Row{"stretched up to the point after", 2, 2, 8, 2, 4, {10, 20, 30, 35, 40, 45, 70, 80}},
        Row{"stretched over itself to the left", 4, 2, 8, 2, 4, {10, 20, 50, 55, 60, 65, 70, 80}},
        Row{"a file of three points", 0, 2, 8, 0, 8, {10, 12, 15, 18, 20, 22, 25, 28}},
        Row{"the last point holds", 7, 1, 8, 4, 4, {10, 20, 30, 40, 80, 80, 80, 80}},
        Row{"a single point", 3, 0, 8, 0, 3, {40, 40, 40, 40, 50, 60, 70, 80}},
        Row{"a shorter waveform in the buffer", 0, 4, 4, 0, 2, {10, 30, 0, 0, 50, 60, 70, 80}}}) {
    const TestWave wave(Codes{10, 20, 30, 40, 50, 60, 70, 80});
    EXPECT_EQ(W_CompWaveX(wave.Handle(), sourceStart, sourceSpan, pointCount, start, span), W_SUCCESS);
    EXPECT_EQ(wave.Copy(), result) << what;
  }
}

TEST(CompWaveX, SpreadsAShortFileOverTheWholeMemory) {
  constexpr std::int32_t memory = 524288;
  for (const std::int32_t points : {2, 3, 1000, memory - 1}) {
    const TestWave wave(memory);
    ASSERT_EQ(W_MakeSin(wave.Handle(), 0, points, 0, 65534, 3, 40), W_SUCCESS);
    const Codes source = wave.Copy();
    ASSERT_EQ(W_CompWaveX(wave.Handle(), 0, points - 1, memory, 0, memory), W_SUCCESS);
    int wrong = 0;
    for (std::int32_t i = 0; i < memory; ++i) {
      const double place = static_cast<double>(i) * (points - 1) / memory;
      const auto left = static_cast<std::size_t>(place);
      const double value = source[left] + (source[left + 1] - source[left]) * (place - std::floor(place));
      wrong += wave.Codes()[static_cast<std::size_t>(i)] != std::lrint(value);
    }
    EXPECT_EQ(wrong, 0) << points;
    EXPECT_EQ(wave.Codes()[0], source[0]);
  }
}

TEST(CompWaveX, BadRangesChangeNothing) {
  const TestWave wave(Codes{1, 2, 3, 4});
  const double rows[][4] = {{0, 5, 0, 4}, {0, 4, 0, 5},  {0, 4, 2, 0},           {0, 4, 3, -1},
                            {3, 2, 0, 4}, {-1, 2, 0, 4}, {0, kNotANumber, 0, 4}, {0, 4, 0, 1e300}};
  for (const auto& row : rows)
    EXPECT_EQ(W_CompWaveX(wave.Handle(), row[0], row[1], 4, row[2], row[3]), W_BAD_RANGE) << row[0] << " " << row[1];
  EXPECT_EQ(W_CompWaveX(wave.Handle(), 0, 4, 5, 0, 4), W_BAD_RANGE);
  EXPECT_EQ(wave.Copy(), (Codes{1, 2, 3, 4}));
}

TEST(CompY, RescalesBetweenTheNewExtremes) {
  using Row = std::tuple<Codes, double, double, Codes>;
  for (const auto& [before, maximum, minimum, after] :
       {Row{{-10, 0, 10, 5}, 100, -100, {-100, 0, 100, 50}}, Row{{-10, 0, 10, 5}, 10, -10, {-10, 0, 10, 5}},
        Row{{-10, 0, 10, 5}, -100, 100, {100, 0, -100, -50}}, Row{{0, 1, 2, 3}, 1, 0, {0, 0, 1, 1}},
        Row{{0, 1, 2, 4}, 2, 0, {0, 0, 1, 2}}, Row{{0, 3, 1, 3}, 0.1, 0.1, {0, 0, 0, 0}},
        Row{{-32767, 32767, 0, 1}, 65534, -65534, {-32767, 32767, 0, 2}},
        Row{{-32768, 32767, 0, 0}, 32767, -32767, {-32767, 32767, 0, 0}}, Row{{7, 7, 7, 7}, 100, 50, {75, 75, 75, 75}},
        Row{{7, 7, 7, 7}, 7, 7, {7, 7, 7, 7}}}) {
    const TestWave wave(before);
    EXPECT_EQ(W_CompYMaxMin(wave.Handle(), 0, 4, maximum, minimum), W_SUCCESS);
    EXPECT_EQ(wave.Copy(), after) << maximum << " " << minimum;
    const TestWave other(before);
    EXPECT_EQ(W_CompYAmpOff(other.Handle(), 0, 4, maximum - minimum, (maximum + minimum) / 2), W_SUCCESS);
    EXPECT_EQ(other.Copy(), after) << maximum << " " << minimum;
  }
}

TEST(CompY, ReachesTheNewExtremesExactly) {
  const TestWave wave(2000);
  ASSERT_EQ(W_InitRand(9), W_SUCCESS);
  for (int round = 0; round < 200; ++round) {
    ASSERT_EQ(W_MakeNoise(wave.Handle(), 0, 2000, round * 3, 100 + round * 211), W_SUCCESS);
    ASSERT_EQ(W_CompYMaxMin(wave.Handle(), 0, 2000, round * 97 + 0.5, round * -31 - 1.5), W_SUCCESS);
    EXPECT_EQ(W_GetMaxMin(wave.Handle(), 0, 2000, 1), std::lrint(round * 97 + 0.5));
    EXPECT_EQ(W_GetMaxMin(wave.Handle(), 0, 2000, 0), std::lrint(round * -31 - 1.5));
  }
}

TEST(CompY, BadValuesChangeNothing) {
  const TestWave wave(Codes{1, 2, 3, 4});
  EXPECT_EQ(W_CompYMaxMin(wave.Handle(), 0, 4, kNotANumber, 0), W_BAD_VALUE);
  EXPECT_EQ(W_CompYAmpOff(wave.Handle(), 0, 4, std::numeric_limits<double>::infinity(), 0), W_BAD_VALUE);
  EXPECT_EQ(W_CompYMaxMin(wave.Handle(), 0, 5, 10, 0), W_BAD_RANGE);
  EXPECT_EQ(W_CompYMaxMin(wave.Handle(), 2, 0, 10, 0), W_SUCCESS);
  EXPECT_EQ(wave.Copy(), (Codes{1, 2, 3, 4}));
}

Codes Calculated(const Codes& a, const Codes& b, double yMin, double yMax, std::int32_t operation) {
  const TestWave source(a);
  const TestWave operand(b);
  const TestWave result(static_cast<std::int32_t>(a.size()));
  EXPECT_EQ(W_CalcWave(source.Handle(), operand.Handle(), result.Handle(), 0, static_cast<double>(a.size()), yMin, yMax,
                       operation),
            W_SUCCESS);
  return result.Copy();
}

// What the comparison below passes over: values on a half, and nothing by nothing.
TEST(CalcWave, NothingByNothingIsNothingInOddUnits) {
  for (const double full : {32767.0, 0.3, 1e-9, 7.7, 3.3e6}) {
    EXPECT_EQ(Calculated({0, 1, -1}, {0, 0, 0}, -full, full, 3), (Codes{0, 32767, -32767})) << full;
    EXPECT_EQ(Calculated({123, -4567}, {0, 0}, -full, full, 0), (Codes{123, -4567})) << full;
  }
  EXPECT_EQ(Calculated({-32767, 0, 0}, {-32767, -32767, 0}, 0, 2, 3), (Codes{-32767, 32767, 0})) << "0 / 0 is 0 V";
  EXPECT_EQ(Calculated({0, 16384}, {-32767, -32767}, 0, 2, 2), (Codes{-32767, -32767}));
}

TEST(CalcWave, ReadsTheSourceFromTheStartAndMayWriteOverIt) {
  const TestWave source(Codes{9, 9, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18});
  const TestWave operand(Codes(18, 100));
  EXPECT_EQ(W_CalcWave(source.Handle(), operand.Handle(), source.Handle(), 3, 18, -32767, 32767, 0), W_SUCCESS);
  Codes expected;
  for (std::int16_t i = 101; i <= 118; ++i) expected.push_back(i);
  expected.insert(expected.end(), {16, 17, 18});
  EXPECT_EQ(source.Copy(), expected);
}

// Against the same in long double; values that stand on a half there are passed over.
TEST(CalcWave, IsExactInAnyUnitAndSaysWhatItLimits) {
  Codes a = Noise(4000);
  Codes b = Noise(4013);
  b.erase(b.begin(), b.begin() + 13);
  for (std::size_t i = 0; i < a.size(); i += 40) a[i] = b[i + 1] = 0;
  for (std::size_t i = 0; i < a.size(); i += 3) a[i] = b[i] = static_cast<std::int16_t>(b[i] / 200);
  const TestWave source(a);
  const TestWave operand(b);
  const double scales[][2] = {{-32767, 32767}, {-1, 1}, {0, 2}, {-1.9, 2.3}, {0.3, -0.7}, {0, 0.3}, {5, 5.001}};
  for (const auto& [yMin, yMax] : scales) {
    const long double half = (static_cast<long double>(yMax) - yMin) / 2;
    const long double middle = (static_cast<long double>(yMax) + yMin) / 2;
    const long double zero = 1e-12L * std::max(std::abs(yMin), std::abs(yMax));
    const auto levelOf = [&](std::int16_t code) {
      const long double y = middle + code * half / 32767;
      return std::abs(y) <= zero ? 0 : y;
    };
    for (std::int32_t operation = 0; operation < 4; ++operation) {
      const Codes got = Calculated(a, b, yMin, yMax, operation);
      std::vector<std::uint8_t> marks(a.size());
      ASSERT_EQ(W_CalcFaults(source.Handle(), operand.Handle(), 0, 4000, yMin, yMax, operation, marks), W_SUCCESS);
      int wrong = 0;
      for (std::size_t i = 0; i < a.size(); ++i) {
        const long double x = levelOf(a[i]);
        const long double y = levelOf(b[i]);
        const bool byZero = operation == 3 && y == 0;
        const long double infinity = std::numeric_limits<long double>::infinity();
        const long double quotient = !byZero ? x / y : x == 0 ? 0 : x < 0 ? -infinity : infinity;
        const long double level = operation == 0 ? x + y : operation == 1 ? x - y : operation == 2 ? x * y : quotient;
        const long double code = (level - middle) * 32767 / half;
        if (std::abs(code) < 1e6L && std::abs(code - std::floor(code) - 0.5L) < 1e-6L) continue;
        const long double rounded = std::rint(code);
        const int mark = byZero ? CALC_BY_ZERO : std::abs(rounded) > 32767 ? CALC_LIMITED : CALC_SOUND;
        wrong += got[i] != std::min(std::max(rounded, -32767.0L), 32767.0L) || marks[i] != mark ? 1 : 0;
      }
      EXPECT_EQ(wrong, 0) << yMin << " " << yMax << " operation " << operation;
    }
  }
}

TEST(CompY, CountsThePointsThatItWouldLimit) {
  const std::tuple<Codes, double, double, std::int32_t> rows[] = {
      {{0, 1, 2, 3}, 32767, -32767, 0}, {{0, 1, 2, 3}, 32767.4, 0, 0},       {{0, 1, 2, 3}, 32768, 0, 1},
      {{0, 1, 2, 3}, -60000, 60000, 2}, {{0, 1, 2, 3}, 1e9, 1e8, 4},         {{5, 5, 5, 5}, 40000, 30000, 4},
      {{5, 5, 5, 5}, 40000, -40000, 0}, {{0, 1, 2, 3}, 1e13, 0, W_BAD_VALUE}};
  for (const auto& [codes, maximum, minimum, limited] : rows) {
    const TestWave wave(codes);
    EXPECT_EQ(W_CountLimited(wave.Handle(), 0, 4, maximum, minimum), limited) << maximum;
    EXPECT_EQ(wave.Copy(), codes);
  }
  EXPECT_EQ(W_CountLimited(TestWave(4).Handle(), 0, 5, 1, 0), W_BAD_RANGE);
}

TEST(CalcWave, BadArgumentsChangeNothing) {
  const TestWave wave(Codes{1, 2, 3, 4});
  const TestWave shorter(Codes{1, 2, 3});
  const WaveHandle w = wave.Handle();
  EXPECT_EQ(W_CalcWave(w, w, w, 0, 4, 0, 0, 0), W_BAD_VALUE);
  EXPECT_EQ(W_CalcWave(w, w, w, 0, 4, 0, kNotANumber, 0), W_BAD_VALUE);
  EXPECT_EQ(W_CalcWave(w, w, w, 0, 4, -1, 1, 4), W_BAD_VALUE);
  EXPECT_EQ(W_CalcWave(w, w, w, 0, 4, -1, 1, -1), W_BAD_VALUE);
  EXPECT_EQ(W_CalcWave(w, shorter.Handle(), w, 0, 4, -1, 1, 0), W_BAD_RANGE);
  EXPECT_EQ(W_CalcWave(w, w, shorter.Handle(), 0, 4, -1, 1, 0), W_BAD_RANGE);
  EXPECT_EQ(W_CalcWave(w, w, 0, 0, 4, -1, 1, 0), W_BAD_HANDLE);
  std::vector<std::uint8_t> marks(3, 7);
  EXPECT_EQ(W_CalcFaults(w, w, 0, 4, -1, 1, 0, marks), W_BAD_RANGE);
  EXPECT_EQ(W_CalcFaults(w, w, 0, 3, 1, 1, 0, marks), W_BAD_VALUE);
  EXPECT_EQ(marks[2], 7);
  EXPECT_EQ(wave.Copy(), (Codes{1, 2, 3, 4}));
}

} // namespace calder::reshape_test
