#include "editor/Grid.h"

#include <cmath>

namespace calder {
namespace {

int At(int length, int part, int parts) {
  return static_cast<int>(std::nearbyint(static_cast<double>(length) * part / parts));
}

} // namespace

void Grid::Drow(DeviceContext& picture) const {
  const int width = picture.Width();
  const int height = picture.Height();
  const auto row = [&](int y, Color color, double strength) {
    picture.SetPen(theme::OnGround(color, strength));
    picture.Line(0, y, width - 1, y);
  };
  const auto column = [&](int x, Color color, double strength) {
    picture.SetPen(theme::OnGround(color, strength));
    picture.Line(x, 0, x, height - 1);
  };
  for (int i = 1; i < YCount; ++i) row(At(height, i, YCount), YLineColor, theme::kGridStrength);
  if (YCount % 2 == 0) row(At(height, 1, 2), YCenterColor, theme::kCentreStrength);
  for (int i = 1; i < XCount; ++i) column(At(width, i, XCount), XLineColor, theme::kGridStrength);
  if (XCount % 2 == 0) column(At(width, 1, 2), XCenterColor, theme::kCentreStrength);
}

} // namespace calder
