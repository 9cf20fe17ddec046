#include "SplinePeers.h"

#include <gsl/gsl_spline.h>

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

std::int16_t Code(double value) {
  return static_cast<std::int16_t>(std::rint(std::clamp(value, -32767.0, 32767.0)));
}

} // namespace

void PlainCubicWalk(std::span<std::int16_t> codes, std::span<const spline::Point> points,
                    std::span<const spline::CubicPiece> pieces) {
  std::size_t piece = 0;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const auto x = static_cast<double>(i);
    while (piece + 1 < pieces.size() && x >= points[piece + 1].x) ++piece;
    const double t = x - points[piece].x;
    const spline::CubicPiece& c = pieces[piece];
    codes[i] = Code(((c.c3 * t + c.c2) * t + c.c1) * t + c.c0);
  }
}

struct GslSpline::Parts {
  gsl_interp_accel* accelerator;
  gsl_spline* spline;
};

GslSpline::GslSpline(std::span<const spline::Point> points) : parts_(new Parts) {
  std::vector<double> x;
  std::vector<double> y;
  for (const spline::Point& point : points) {
    x.push_back(point.x);
    y.push_back(point.y);
  }
  parts_->accelerator = gsl_interp_accel_alloc();
  parts_->spline = gsl_spline_alloc(gsl_interp_cspline, x.size());
  gsl_spline_init(parts_->spline, x.data(), y.data(), x.size());
}

GslSpline::~GslSpline() {
  gsl_spline_free(parts_->spline);
  gsl_interp_accel_free(parts_->accelerator);
  delete parts_;
}

void GslSpline::Walk(std::span<std::int16_t> codes) const {
  for (std::size_t i = 0; i < codes.size(); ++i)
    codes[i] = Code(gsl_spline_eval(parts_->spline, static_cast<double>(i), parts_->accelerator));
}

} // namespace calder
