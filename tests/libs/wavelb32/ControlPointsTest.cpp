#include "TestWave.h"
#include "libs/spline32/spline32.h"

namespace calder::control_points_test {

using Values = std::vector<double>;

class Blocks {
public:
  explicit Blocks(std::int32_t entries = W_MAX_CONTROL_POINTS)
      : positions_(W_AllocMemory32(entries)), values_(W_AllocMemory(entries)) {}
  ~Blocks() {
    static_cast<void>(W_FreeMemory32(positions_));
    static_cast<void>(W_FreeMemory(values_));
  }
  Blocks(const Blocks&) = delete;
  Blocks& operator=(const Blocks&) = delete;

  // The number of control points, after their joins have been drawn and found to be the codes; -1 when not possible.
  std::int32_t Convert(const TestWave& wave) {
    const auto points = static_cast<std::int32_t>(wave.Codes().size());
    std::int32_t count = points;
    const std::int32_t status = ConvCPdata(wave.Handle(), positions_, values_, count);
    if (status != W_SUCCESS) {
      EXPECT_EQ(Texts(status, count), Texts(W_NOT_POSSIBLE, 0));
      return -1;
    }
    Values x;
    Values y;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
      x.push_back(std::round(W_Lock32(positions_)[i] * static_cast<double>(points) / W_CONTROL_POINT_SCALE));
      y.push_back(W_Lock(values_)[i]);
    }
    EXPECT_TRUE(std::ranges::adjacent_find(x, std::greater_equal{}) == x.end()) << "positions ascend";
    EXPECT_EQ(Values({*std::ranges::min_element(x), *std::ranges::max_element(x)}), Values({0, points - 1.0}));
    const TestWave drawn(points);
    EXPECT_EQ(Spline_Hokan_Line(drawn.Handle(), 0, points, x.data(), y.data(), count, points, W_CODE_MAX), W_SUCCESS);
    EXPECT_EQ(drawn.Copy(), wave.Copy());
    return count;
  }

  WaveHandle positions_;
  WaveHandle values_;
};

// By the definition: from each point on as far as a line through it fits, with the slopes that
// do. Heights count in units of 2^-20, in which "below 1/2" is "at most 1/2 less a unit" for joins of up to 2^19
// points.
std::int32_t FewestBySlopes(const Codes& codes) {
  constexpr std::int64_t unit = std::int64_t{1} << 20;
  struct Slope {
    std::int64_t rise;
    std::int64_t run;
    bool operator<(const Slope& other) const { return rise * other.run < other.rise * run; }
  };
  const std::size_t n = codes.size();
  std::vector<std::int32_t> joins(n, W_MAX_POINTS);
  joins[0] = 0;
  for (std::size_t i = 0; i < n; ++i) {
    Slope least{-1, 0};
    Slope greatest{1, 0};
    for (std::size_t j = i + 1; j < n && !(greatest < least); ++j) {
      const std::int64_t rise = (codes[j] - codes[i]) * unit;
      const auto run = static_cast<std::int64_t>(j - i);
      const Slope slope{rise, run};
      if (!(slope < least) && !(greatest < slope)) joins[j] = std::min(joins[j], joins[i] + 1);
      const std::int64_t reach = unit / 2 - (codes[j] & 1);
      least = std::max(least, {rise - reach, run});
      greatest = std::min(greatest, {rise + reach, run});
    }
  }
  return joins.back() + 1;
}

TEST(ConvCPdata, FindsTheFewestControlPointsOfSmallWaveforms) {
  std::mt19937 random(11);
  const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
  Blocks blocks;
  for (int round = 0; round < 20000; ++round) {
    Codes codes(static_cast<std::size_t>(pick(1, round % 10 == 0 ? 200 : 40)));
    const int kind = pick(0, 6);
    double slope = pick(-30, 30) / 10.0;
    // Near simple fractions many joins stand on halves.
    if (kind == 5) slope = static_cast<double>(pick(-4, 4)) / pick(1, 8) + pick(-4, 4) / 500.0;
    const double amplitude = pick(1, 400) / 4.0;
    const double step = pick(1, 200) / 1000.0;
    double turn = pick(0, 6);
    double value = pick(-5, 5);
    for (std::int16_t& code : codes) {
      if (kind == 0) value = pick(-3, 3);
      if (kind == 1) value += pick(0, 1);
      if (kind == 2) value += pick(-1, 1);
      if (kind == 6) value = amplitude * std::sin(turn += step);
      if (kind >= 3 && kind <= 5) {
        // Lines with corners, or a slow curve.
        value += slope;
        if (kind == 3 && pick(0, 7) == 0) slope = pick(-30, 30) / 10.0;
        if (kind == 4) slope += pick(-2, 2) / 20.0;
      }
      code = static_cast<std::int16_t>(std::lrint(value));
    }
    const TestWave wave(codes);
    ASSERT_EQ(blocks.Convert(wave), FewestBySlopes(codes)) << "round " << round;
  }
}

TEST(ConvCPdata, FindsTheFewestControlPointsOfLongSmoothWaveforms) {
  constexpr std::int32_t points = 20000;
  Blocks blocks;
  std::mt19937 random(3);
  const auto pick = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
  for (int round = 0; round < 20; ++round) {
    const TestWave wave(points);
    const double amplitude = std::pow(10, pick(0, 4.8));
    const double phase = pick(0, 360);
    std::int32_t status = W_SUCCESS;
    if (round % 4 == 0) status = W_MakeSin(wave.Handle(), 0, points, 0, amplitude, pick(0.2, 2), phase);
    if (round % 4 == 1) status = W_MakeTriangle(wave.Handle(), 0, points, 0, amplitude, pick(0.5, 9), phase, 30);
    if (round % 4 == 2) status = W_MakeSquare(wave.Handle(), 0, points, 0, amplitude, pick(0.5, 9), phase, 50, 40);
    if (round % 4 == 3) {
      // A slope just off a simple fraction: joins on halves go on for very long.
      const double slope = std::floor(pick(0, 4)) / std::floor(pick(1, 9)) + pick(-4, 4) / points;
      double value = -32000;
      for (std::int32_t i = 0; i < points; ++i, value += std::min(slope, 1.5))
        wave.Codes()[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(std::lrint(value));
    }
    ASSERT_EQ(status, W_SUCCESS);
    const std::int32_t fewest = FewestBySlopes(wave.Copy());
    EXPECT_EQ(blocks.Convert(wave), fewest > W_MAX_CONTROL_POINTS ? -1 : fewest) << "round " << round;
  }
}

// A polyline of joins from random corners; how many control points it was made with.
std::pair<Codes, std::int32_t> Polyline(std::int32_t points, std::int32_t corners, unsigned seed) {
  std::mt19937 random(seed);
  Values x{0};
  Values y{0};
  for (std::int32_t i = 1; i < corners; ++i) {
    x.push_back(std::floor(static_cast<double>(points - 1) * i / (corners - 1)));
    y.push_back(std::uniform_int_distribution(-32767, 32767)(random));
  }
  const TestWave wave(points);
  EXPECT_EQ(Spline_Hokan_Line(wave.Handle(), 0, points, x.data(), y.data(), corners, points, W_CODE_MAX), W_SUCCESS);
  return {wave.Copy(), corners};
}

TEST(ConvCPdata, GoesUpToTheFullBlockAndSaysWhenItIsTooSmall) {
  Blocks blocks;
  const auto [codes, corners] = Polyline(W_MAX_POINTS, W_MAX_CONTROL_POINTS, 1);
  const std::int32_t count = blocks.Convert(TestWave(codes));
  EXPECT_GT(count, 9900);
  EXPECT_LE(count, corners);
  EXPECT_EQ(blocks.Convert(TestWave(Polyline(W_MAX_POINTS, W_MAX_CONTROL_POINTS + 50, 2).first)), -1);

  const auto [fewCodes, few] = Polyline(1000, 9, 3);
  Blocks exact(few);
  EXPECT_EQ(exact.Convert(TestWave(fewCodes)), few);
  Blocks small(few - 1);
  EXPECT_EQ(small.Convert(TestWave(fewCodes)), -1);
}

TEST(ConvCPdata, LongWaveforms) {
  Blocks blocks;
  for (const std::int32_t points : {2, 3, 1000, 524287, W_MAX_POINTS}) {
    const TestWave wave(points);
    EXPECT_EQ(blocks.Convert(wave), 2) << "constant";
    for (std::int32_t i = 0; i < points; ++i)
      wave.Codes()[static_cast<std::size_t>(i)] =
          static_cast<std::int16_t>(std::lrint(65534.0 * i / (points - 1)) - W_CODE_MAX);
    EXPECT_EQ(blocks.Convert(wave), 2) << "a ramp over " << points;
  }
  const TestWave wave(W_MAX_POINTS);
  ASSERT_EQ(W_MakeSin(wave.Handle(), 0, W_MAX_POINTS, 0, 65534, 1, 0), W_SUCCESS);
  EXPECT_GT(blocks.Convert(wave), 100);
  // Ramps whose ends lie between codes: one line passes, but not one from code to code.
  ASSERT_EQ(W_MakeTriangle(wave.Handle(), 0, W_MAX_POINTS, 0, 65534, 1, 180, 100), W_SUCCESS);
  EXPECT_EQ(blocks.Convert(wave), 6);
  ASSERT_EQ(W_MakeSquare(wave.Handle(), 0, W_MAX_POINTS, 0, 65534, 2, 0, 50, 0), W_SUCCESS);
  EXPECT_EQ(blocks.Convert(wave), 8);
  ASSERT_EQ(W_MakeNoise(wave.Handle(), 0, W_MAX_POINTS, 0, 65534), W_SUCCESS);
  EXPECT_EQ(blocks.Convert(wave), -1);
  ASSERT_EQ(W_MakeNoise(wave.Handle(), 0, W_MAX_POINTS, 0, 2), W_SUCCESS);
  EXPECT_EQ(blocks.Convert(wave), -1);
}

TEST(ConvCPdata, BadArgumentsGiveNoPoints) {
  const TestWave wave(Codes{1, 2, 3});
  const Blocks blocks;
  for (const std::int32_t points : {0, -1, 4, W_MAX_POINTS + 1}) {
    std::int32_t count = points;
    EXPECT_EQ(ConvCPdata(wave.Handle(), blocks.positions_, blocks.values_, count), W_BAD_RANGE);
    EXPECT_EQ(count, 0);
  }
  std::int32_t count = 3;
  EXPECT_EQ(ConvCPdata(wave.Handle(), blocks.values_, blocks.positions_, count), W_BAD_HANDLE);
  EXPECT_EQ(count, 0);
}

} // namespace calder::control_points_test
