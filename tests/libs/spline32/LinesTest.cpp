#include "libs/spline32/spline32.h"
#include "libs/wavelb32/TestWave.h"

namespace calder::lines_test {

using Values = std::vector<double>;

using Case = std::tuple<const char*, double, double, Values, Values, std::int32_t, std::int32_t, Codes>;

TEST(HokanLine, JoinsTheControlPoints) {
  const Codes untouched(8, 7);
  const Case cases[] = {
      {"held before and after", 0, 8, {2, 5}, {10, 40}, 32767, W_SUCCESS, {10, 10, 10, 20, 30, 40, 40, 40}},
      {"only the range", 2.5, 5, {0, 8}, {0, 80}, 32767, W_SUCCESS, {7, 7, 7, 30, 40, 50, 7, 7}},
      {"halves to even", 0, 8, {0, 8}, {0, 4}, 32767, W_SUCCESS, {0, 0, 1, 2, 2, 2, 3, 4}},
      {"halves to even, below 0", 0, 8, {0, 8}, {0, -4}, 32767, W_SUCCESS, {0, 0, -1, -2, -2, -2, -3, -4}},
      {"between points", 0, 8, {0.5, 4.5}, {0.25, 40.25}, 32767, W_SUCCESS, {0, 5, 15, 25, 35, 40, 40, 40}},
      {"limited", 0, 8, {0, 7}, {-700, 700}, 500, W_SUCCESS, {-500, -500, -300, -100, 100, 300, 500, 500}},
      {"a step", 0, 8, {0, 4, 4, 8}, {0, 0, 100, 100}, 32767, W_SUCCESS, {0, 0, 0, 0, 100, 100, 100, 100}},
      {"one point", 0, 8, {3}, {5}, 32767, W_SUCCESS, Codes(8, 5)},
      {"all to the left", 0, 8, {-9, -1}, {5, 6}, 32767, W_SUCCESS, Codes(8, 6)},
      {"all to the right", 0, 8, {8, 1e9}, {5, 6}, 32767, W_SUCCESS, Codes(8, 5)},
      {"no points", 0, 8, {}, {}, 32767, W_BAD_VALUE, untouched},
      {"not ascending", 0, 8, {4, 3}, {0, 1}, 32767, W_BAD_VALUE, untouched},
      {"no number", 0, 8, {0, kNotANumber}, {0, 1}, 32767, W_BAD_VALUE, untouched},
      {"no value", 0, 8, {0, 8}, {0, kNotANumber}, 32767, W_BAD_VALUE, untouched},
      {"no limit", 0, 8, {0, 8}, {0, 1}, 32768, W_BAD_VALUE, untouched},
      {"range outside", 0, 9, {0, 8}, {0, 1}, 32767, W_BAD_RANGE, untouched},
      {"range turned round", 5, 4, {0, 8}, {0, 1}, 32767, W_BAD_RANGE, untouched}};
  for (const auto& [what, start, end, x, y, limit, status, result] : cases) {
    const TestWave wave(untouched);
    EXPECT_EQ(
        Spline_Hokan_Line(wave.Handle(), start, end, x.data(), y.data(), static_cast<std::int32_t>(x.size()), 8, limit),
        status)
        << what;
    EXPECT_EQ(wave.Copy(), result) << what;
  }
  EXPECT_EQ(Spline_Hokan_Line(0, 0, 1, Values{0, 1}.data(), Values{0, 1}.data(), 2, 8, 1), W_BAD_HANDLE);
}

TEST(HokanLine, IsExactOverTheLargestWaveform) {
  constexpr std::int32_t points = 524288;
  const TestWave wave(points);
  const Values x{0, points - 1};
  const Values y{-32767, 32766};
  ASSERT_EQ(Spline_Hokan_Line(wave.Handle(), 0, points, x.data(), y.data(), 2, points, 32767), W_SUCCESS);
  int wrong = 0;
  for (std::int64_t p = 0; p < points; ++p) {
    // The distance from the line, in units of 1 / (points - 1), must be at most a half; on a half the code is even.
    const std::int64_t code = wave.Codes()[static_cast<std::size_t>(p)];
    const std::int64_t twice = 2 * std::abs((code + 32767) * (points - 1) - p * 65533);
    wrong += twice > points - 1 || (twice == points - 1 && code % 2 != 0);
  }
  EXPECT_EQ(wrong, 0);
}

} // namespace calder::lines_test
