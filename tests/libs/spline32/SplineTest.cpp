// Splines against their definition: for each piece four unknown coefficients, for each condition (a value, a slope or a
// curvature that meets) a row, solved by elimination in long double.
#include "libs/spline32/spline32.h"
#include "libs/wavelb32/TestWave.h"

namespace calder::spline_test {

using Values = std::vector<double>;
using Row = std::vector<long double>;

std::vector<long double> Solve(std::vector<Row> a) { // the last column is the right side
  const std::size_t n = a.size();
  for (std::size_t c = 0; c < n; ++c) {
    const auto pivot = std::max_element(a.begin() + static_cast<std::ptrdiff_t>(c), a.end(),
                                        [c](auto& l, auto& r) { return std::abs(l[c]) < std::abs(r[c]); });
    std::swap(*pivot, a[c]);
    for (std::size_t r = 0; r < n; ++r) {
      if (r == c) continue;
      const long double f = a[r][c] / a[c][c];
      for (std::size_t k = c; k <= n; ++k) a[r][k] -= f * a[c][k];
    }
  }
  std::vector<long double> x;
  for (std::size_t r = 0; r < n; ++r) x.push_back(a[r][n] / a[r][r]);
  return x;
}

// The curve through the points; period 0: natural.
class Definition {
public:
  Definition(Values x, Values y, double period) : x_(std::move(x)) {
    if (period > 0) {
      x_.push_back(x_.front() + period);
      y.push_back(y.front());
    }
    const std::size_t pieces = x_.size() - 1;
    std::vector<Row> rows;
    const auto row = [&]() -> Row& { return rows.emplace_back(4 * pieces + 1, 0.0L); };
    // Adds the derivative of piece i at t, times sign.
    const auto add = [&](Row& to, std::size_t i, int derivative, long double t, long double sign) {
      for (int k = derivative; k < 4; ++k) {
        long double factor = sign;
        for (int d = 0; d < derivative; ++d) factor *= k - d;
        to[4 * i + static_cast<std::size_t>(k)] += factor * std::pow(t, static_cast<long double>(k - derivative));
      }
    };
    for (std::size_t i = 0; i < pieces; ++i) {
      const long double h = static_cast<long double>(x_[i + 1]) - x_[i];
      Row& left = row();
      add(left, i, 0, 0, 1);
      left.back() = y[i];
      Row& right = row();
      add(right, i, 0, h, 1);
      right.back() = y[i + 1];
      const bool last = i + 1 == pieces;
      if (last && period == 0) continue;
      for (const int derivative : {1, 2}) {
        Row& meets = row();
        add(meets, i, derivative, h, 1);
        add(meets, last ? 0 : i + 1, derivative, 0, -1);
      }
    }
    if (period == 0) {
      add(row(), 0, 2, 0, 1);
      add(row(), pieces - 1, 2, static_cast<long double>(x_[pieces]) - x_[pieces - 1], 1);
    }
    c_ = Solve(std::move(rows));
  }
  [[nodiscard]] long double At(double position, double period) const {
    double p = position;
    if (period > 0 && p < x_.front()) p += period;
    if (period > 0 && p >= x_.back()) p -= period;
    std::size_t i = 0;
    while (i + 2 < x_.size() && p >= x_[i + 1]) ++i;
    const long double t = static_cast<long double>(p) - x_[i];
    return ((c_[4 * i + 3] * t + c_[4 * i + 2]) * t + c_[4 * i + 1]) * t + c_[4 * i];
  }

private:
  Values x_;
  std::vector<long double> c_;
};

struct Wave : TestWave {
  static constexpr std::int16_t kFiller = 7;
  explicit Wave(std::size_t points) : TestWave(std::vector<std::int16_t>(points, kFiller)) {}
  std::int32_t Spline(std::int32_t mode, double start, double end, const Values& x, const Values& y) const {
    return Spline_Hokan_Spline(mode, Handle(), start, end, x.data(), y.data(), static_cast<std::int32_t>(x.size()),
                               static_cast<std::int32_t>(Codes().size()), 32767);
  }
  [[nodiscard]] int At(std::size_t i) const { return Codes()[i]; }
};

TEST(HokanSpline, IsTheCurveThatItsConditionsDefine) {
  constexpr int kPoints = 600;
  std::mt19937 random(7);
  std::uniform_real_distribution<double> height(-20000, 20000);
  int compared = 0;
  for (int round = 0; round < 120; ++round) {
    const std::int32_t mode = round % 3;
    const bool scope = mode == SPLINE_PERIODIC_SCOPE;
    const double start = mode == 0 ? 37.25 : scope ? 40.5 : 0;
    const double end = mode == 0 ? 512.5 : scope ? 531 : kPoints;
    Values x;
    Values y;
    double at = scope ? start + 3.5 * (round % 2) : 0;
    for (int i = 0; i < 2 + round % 11 && at < end - 1; ++i) {
      x.push_back(at);
      y.push_back(height(random));
      at += 1 + std::floor(std::abs(height(random)) / 400) + (round % 4 == 0 ? 0.375 : 0);
    }
    if (mode != SPLINE_PERIODIC_SCOPE) {
      x.push_back(kPoints);
      y.push_back(y.front());
    }
    const Wave wave(kPoints);
    ASSERT_EQ(wave.Spline(mode, start, end, x, y), W_SUCCESS);
    const double period = mode == 0 ? 0 : scope ? end - start : kPoints;
    if (mode == SPLINE_PERIODIC_WHOLE) {
      x.pop_back();
      y.pop_back();
    }
    if (mode != 0 && x.size() < 2) continue;
    const Definition definition(x, y, period);
    for (int p = 0; p < kPoints; ++p) {
      const bool inside = p >= start && p < std::ceil(start) + std::ceil(end - start);
      if (!inside) {
        ASSERT_EQ(wave.At(static_cast<std::size_t>(p)), Wave::kFiller) << round << ' ' << p;
        continue;
      }
      const long double exact = definition.At(p, period);
      if (std::abs(std::abs(exact - std::floor(exact)) - 0.5L) < 1e-6L) continue; // either code
      const auto code = static_cast<int>(std::rint(std::clamp(exact, -32767.0L, 32767.0L)));
      ASSERT_EQ(wave.At(static_cast<std::size_t>(p)), code) << "round " << round << " mode " << mode << " at " << p;
      ++compared;
    }
  }
  EXPECT_GT(compared, 40000);
}

TEST(HokanSpline, OddPointsHaveADefinedResultInsideTheCodes) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  // first, last: codes of a natural spline
  using Odd = std::tuple<const char*, Values, Values, std::int32_t, int, int>;
  for (const auto& [what, x, y, status, first, last] :
       {Odd{"one point", {3}, {55}, W_SUCCESS, 55, 55}, Odd{"two points", {0, 7}, {0, 70}, W_SUCCESS, 0, 70},
        Odd{"two points on one X: the first counts", {2, 2, 7}, {10, 99, 60}, W_SUCCESS, 10, 60},
        Odd{"all on one X", {2, 2, 2}, {10, 20, 30}, W_SUCCESS, 10, 10},
        Odd{"a nanopoint apart", {0, 1e-9, 7}, {0, 30000, 0}, W_SUCCESS, 0, 0},
        Odd{"no points", {}, {}, W_BAD_VALUE, 7, 7}, Odd{"no number", {0, nan}, {0, 0}, W_BAD_VALUE, 7, 7},
        Odd{"no value", {0, 7}, {0, nan}, W_BAD_VALUE, 7, 7}}) {
    for (std::int32_t mode = 0; mode < 3; ++mode) {
      const Wave wave(8);
      EXPECT_EQ(wave.Spline(mode, 0, 8, x, y), status) << what;
      for (const std::int16_t code : wave.Codes()) EXPECT_GE(code, -32767) << what;
      if (mode == 0 && x.size() != 3) {
        EXPECT_EQ(Texts(wave.At(0), wave.At(7)), Texts(first, last)) << what;
      }
    }
  }
  const Wave wave(8);
  EXPECT_EQ(wave.Spline(3, 0, 8, {0}, {0}), W_BAD_VALUE);
  EXPECT_EQ(wave.Spline(SPLINE_PERIODIC_SCOPE, 4, 8, {0, 1, 2}, {7, 7, 7}), W_SUCCESS) << "none in the period";
  EXPECT_EQ(wave.At(7), 7);
}

TEST(QSort, KeepsEachYWithItsX) {
  Values x{9, 3, 2, 3, 1};
  Values y{0, 1, 2, 3, 4};
  Q_Sort(x.data(), y.data(), 1, 4);
  EXPECT_EQ(x, (Values{9, 1, 2, 3, 3}));
  EXPECT_EQ(y, (Values{0, 4, 2, 1, 3}));
}

} // namespace calder::spline_test
