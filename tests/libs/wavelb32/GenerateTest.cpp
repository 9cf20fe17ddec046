#include "TestWave.h"

namespace calder::generate_test {

struct Wanted {
  std::int32_t points;
  double start;
  double count;
  double offset;
  double amplitude;
  double period;
  double phase;
};

std::int16_t Rounded(double value) {
  return static_cast<std::int16_t>(std::lrint(std::clamp(value, -32767.0, 32767.0)));
}

TEST(Generate, SineIsTheLibrarySineRounded) {
  const Wanted rows[] = {{524288, 0, 524288, 0, 65534, 1, 0},      {524288, 0, 524288, 100, 40000, 12345.678, 17},
                         {1000, 10.25, 777.5, -3.5, 65534, 3, 90}, {1000, 0, 1000, 20000, 65534, -2.5, -360},
                         {65536, 1, 65535, 0, -65534, 0.01, 1e-3}, {4096, 0, 4096, 0.25, 7, 4000, 123.4}};
  for (const Wanted& row : rows) {
    const TestWave wave(row.points);
    ASSERT_EQ(W_MakeSin(wave.Handle(), row.start, row.count, row.offset, row.amplitude, row.period, row.phase),
              W_SUCCESS);
    int wrong = 0;
    for (int p = static_cast<int>(std::ceil(row.start)); p < row.start + row.count; ++p) {
      const double turn = row.period * (p - row.start) / row.count + row.phase / 360;
      const double exact = row.offset + row.amplitude / 2 * std::sin(2 * std::numbers::pi * (turn - std::rint(turn)));
      // A value that stands on a half to the last place may go either way.
      const bool isHalf = std::abs(std::abs(exact - std::rint(exact)) - 0.5) < 1e-9;
      const auto code = wave.Codes()[static_cast<std::size_t>(p)];
      wrong += isHalf ? std::abs(code - exact) > 0.51 && std::abs(exact) < 32767 : code != Rounded(exact);
    }
    EXPECT_EQ(wrong, 0) << row.period;
  }
}

Codes Made(std::int32_t points, auto make) {
  const TestWave wave(points);
  EXPECT_EQ(make(wave.Handle()), W_SUCCESS);
  return wave.Copy();
}

// As the formulas are documented, one point at a time.
double TriangleAt(double turn, double rise) {
  const double u = turn + rise / 2 - std::floor(turn + rise / 2);
  return u < rise ? -1 + 2 * u / rise : 1 - 2 * (u - rise) / (1 - rise);
}

double SquareAt(double turn, double duty, double edge) {
  if (edge == 0) return turn - std::floor(turn) < duty ? 1 : -1;
  const double away = std::abs(turn - duty / 2 - std::rint(turn - duty / 2));
  return std::clamp((duty / 2 - away) / (edge / 2), -1.0, 1.0);
}

TEST(Generate, LongRunsAndShortPeriodsHaveTheCodesOfTheFormulas) {
  const Wanted rows[] = {{65536, 0, 65536, 0, 65534, 1.01, 33},      {60000, 7.5, 59000.25, 1000, 65534, 12.37, -77.7},
                         {60000, 0, 60000, -5, 3000, 116.9, 12.3},   {60000, 0, 60000, 0, 65534, -3.03, 5},
                         {65536, 0, 65536, 0, 65534, 7000.123, 1.5}, {40000, 0, 40000, 12, 90000, 1e-7, 100},
                         {40000, 0, 40000, 12, -65534, 2.3, 359.9}};
  for (const Wanted& row : rows) {
    const TestWave triangle(row.points);
    const TestWave sharp(row.points);
    const TestWave sloped(row.points);
    for (const double part : {0.0, 0.3, 0.5, 0.97, 1.0}) {
      const double edge = std::min({0.1, part, 1 - part});
      const auto make = [&](const TestWave& wave, auto generator, auto... shape) {
        ASSERT_EQ(generator(wave.Handle(), row.start, row.count, row.offset, row.amplitude, row.period, row.phase,
                            shape * 100 ...),
                  W_SUCCESS);
      };
      make(triangle, W_MakeTriangle, part);
      make(sharp, W_MakeSquare, part, 0.0);
      make(sloped, W_MakeSquare, part, 0.1);
      int wrong = 0;
      for (int p = static_cast<int>(std::ceil(row.start)); p < row.start + row.count; ++p) {
        const double turn = row.period * (p - row.start) / row.count + row.phase / 360;
        const auto differs = [&](const TestWave& wave, double unit) {
          const double exact = std::clamp(row.offset + row.amplitude / 2 * unit, -32767.0, 32767.0);
          return std::abs(wave.Codes()[static_cast<std::size_t>(p)] - exact) > 0.5 + 1e-6;
        };
        wrong += differs(triangle, TriangleAt(turn, part)) || differs(sharp, SquareAt(turn, part, 0)) ||
                 differs(sloped, SquareAt(turn, part, edge));
      }
      EXPECT_EQ(wrong, 0) << row.period << " " << part;
    }
  }
}

TEST(Generate, ShapesStayInsideTheirPeriod) {
  const auto square = [](double duty, double transition) {
    return Made(10, [&](WaveHandle h) { return W_MakeSquare(h, 0, 10, 0, 200, 1, 0, duty, transition); });
  };
  EXPECT_EQ(square(50, 20), (Codes{0, 100, 100, 100, 100, 0, -100, -100, -100, -100})) << "edges centred on the jumps";
  EXPECT_EQ(square(50, 100), (Codes{0, 40, 80, 80, 40, 0, -40, -80, -80, -40})) << "no longer than the shorter part";
  EXPECT_EQ(square(20, 100), square(20, 20));
  const auto triangle = [](double symmetry) {
    return Made(8, [&](WaveHandle h) { return W_MakeTriangle(h, 0, 8, 0, 800, 1, 0, symmetry); });
  };
  EXPECT_EQ(triangle(250), (Codes{0, 100, 200, 300, -400, -300, -200, -100})) << "a symmetry beyond 100 is 100";
}

TEST(Generate, JumpsStandOnTheirPointsInEveryPeriod) {
  // 0.1 is no binary fraction: without care single points would fall on the wrong side.
  for (const double periods : {1.0, 7.0, 100.0, 9999.0}) {
    const auto points = static_cast<std::int32_t>(periods * 10);
    for (const int duty : {10, 30, 70, 90}) {
      const Codes codes =
          Made(points, [&](WaveHandle h) { return W_MakeSquare(h, 0, points, 0, 2, periods, 0, duty, 0); });
      int wrong = 0;
      for (std::size_t i = 0; i < codes.size(); ++i) wrong += (codes[i] > 0) != (static_cast<int>(i % 10) < duty / 10);
      EXPECT_EQ(wrong, 0) << periods << " " << duty;
    }
  }
}

TEST(Generate, NoiseIsUniformRepeatableAndIndependentOfSplits) {
  constexpr std::int32_t points = 200000;
  const auto noise = [](std::int32_t seed, std::vector<double> parts) {
    return Made(points, [&](WaveHandle h) {
      EXPECT_EQ(W_InitRand(seed), W_SUCCESS);
      double start = 0;
      for (const double part : parts) {
        EXPECT_EQ(W_MakeNoise(h, start, part, 1000, 2000), W_SUCCESS);
        start += part;
      }
      return W_SUCCESS;
    });
  };
  const Codes whole = noise(1, {points});
  EXPECT_EQ(whole, noise(1, {12345, points - 12345}));
  EXPECT_NE(whole, noise(2, {points}));
  EXPECT_GE(*std::ranges::min_element(whole), 0);
  EXPECT_LE(*std::ranges::max_element(whole), 2000);
  std::vector<int> bins(20);
  for (const std::int16_t code : whole) ++bins[std::min<std::size_t>(static_cast<std::size_t>(code) / 100, 19)];
  for (const int bin : bins) EXPECT_NEAR(bin, points / 20, 600); // six standard deviations
  double product = 0;
  for (std::size_t i = 1; i < whole.size(); ++i) product += (whole[i] - 1000.0) * (whole[i - 1] - 1000.0);
  EXPECT_NEAR(product / points, 0, 333333.0 * 6 / std::sqrt(points)); // neighbours are not correlated
}

TEST(Generate, ValuesAreRoundedToEvenAndLimited) {
  const auto level = [](double offset) { return Made(1, [&](WaveHandle h) { return W_MakeDC(h, 0, 1, offset); }); };
  const std::pair<double, int> rows[] = {{0.5, 0},   {1.5, 2},         {2.5, 2},     {-0.5, 0},
                                         {-1.5, -2}, {32766.5, 32766}, {1e9, 32767}, {-40000, -32767}};
  for (const auto& [offset, code] : rows) EXPECT_EQ(level(offset), Codes(1, static_cast<std::int16_t>(code))) << offset;
}

TEST(Generate, OnlyTheRangeIsTouchedAndBadValuesTouchNothing) {
  constexpr double bad[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e300};
  const TestWave wave(Codes(20, 7));
  for (const double value : bad) {
    EXPECT_EQ(W_MakeSin(wave.Handle(), 0, 20, value, 100, 1, 0), W_BAD_VALUE);
    EXPECT_EQ(W_MakeSin(wave.Handle(), 0, 20, 0, 100, 1, value), W_BAD_VALUE);
    EXPECT_EQ(W_MakeTriangle(wave.Handle(), 0, 20, 0, 100, 1, 0, value), W_BAD_VALUE);
    EXPECT_EQ(W_MakeSquare(wave.Handle(), 0, 20, 0, 100, value, 0, 50, 0), W_BAD_VALUE);
    EXPECT_EQ(W_MakeNoise(wave.Handle(), 0, 20, 0, value), W_BAD_VALUE);
    EXPECT_EQ(W_MakeDC(wave.Handle(), 0, 20, value), W_BAD_VALUE);
  }
  EXPECT_EQ(W_MakeDC(wave.Handle(), 15, 6, 1), W_BAD_RANGE);
  EXPECT_EQ(wave.Copy(), Codes(20, 7));
  EXPECT_EQ(W_MakeSquare(wave.Handle(), 4.5, 10, 100, 0, 1, 0, 50, 0), W_SUCCESS);
  Codes expected(20, 7);
  std::fill_n(expected.begin() + 5, 10, std::int16_t{100});
  EXPECT_EQ(wave.Copy(), expected);
}

} // namespace calder::generate_test
