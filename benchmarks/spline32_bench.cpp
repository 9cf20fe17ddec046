// What interpolation through the most control points costs on the largest waveform, beside peers in the same run. Ends
// with 1 when a limit is passed.
#include "FigureTable.h"
#include "SplinePeers.h"
#include "libs/spline32/spline32.h"

#include <cmath>
#include <cstdlib>
#include <random>

namespace calder {
namespace {

constexpr std::int32_t kPoints = W_MAX_POINTS;
constexpr int kControlPoints = 10000;
constexpr int kRounds = 60;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "failed: %s\n", what);
  std::exit(2);
}

int Run() {
  std::mt19937 random(3);
  std::uniform_int_distribution code(-20000, 20000);
  std::vector<spline::Point> points;
  std::vector<double> x;
  std::vector<double> y;
  for (int i = 0; i < kControlPoints; ++i) {
    x.push_back(std::floor(static_cast<double>(kPoints) * i / (kControlPoints - 1)));
    y.push_back(i + 1 == kControlPoints ? y.front() : code(random));
    points.push_back({x.back(), y.back()});
  }
  const WaveHandle wave = W_AllocMemory(kPoints);
  std::vector<std::int16_t> peer(kPoints);
  const std::vector<spline::CubicPiece> pieces = spline::NaturalPieces(points);
  const GslSpline gsl(points);
  FigureTable table;
  const auto spline = [&](std::int32_t mode) {
    Require(Spline_Hokan_Spline(mode, wave, 0, kPoints, x.data(), y.data(), kControlPoints, kPoints, W_CODE_MAX) ==
                W_SUCCESS,
            "Spline_Hokan_Spline");
  };
  table.Row(
      "natural spline, 10000 points / plain walk, same coefficients", 0.5, kRounds, [&] { spline(SPLINE_NATURAL); },
      [&] { PlainCubicWalk(peer, points, pieces); });
  table.Row(
      "natural spline / GSL's evaluator", 0.125, kRounds / 6, [&] { spline(SPLINE_NATURAL); }, [&] { gsl.Walk(peer); });
  table.Row(
      "periodic spline (a second system) / plain walk", 0.75, kRounds, [&] { spline(SPLINE_PERIODIC_WHOLE); },
      [&] { PlainCubicWalk(peer, points, pieces); });
  table.Row(
      "straight lines / hand-written vectors", 1.5, kRounds,
      [&] {
        Require(Spline_Hokan_Line(wave, 0, kPoints, x.data(), y.data(), kControlPoints, kPoints, W_CODE_MAX) ==
                    W_SUCCESS,
                "Spline_Hokan_Line");
      },
      [&] { Require(HandLineWalk(peer, points), "no AVX2"); });
  Require(W_FreeMemory(wave) == W_SUCCESS, "memory");
  return table.IsOver() ? 1 : 0;
}

} // namespace
} // namespace calder

int main() {
  return calder::Run();
}
