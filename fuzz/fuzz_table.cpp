// Any bytes as a table of control points: what is read is a closed list inside the waveform, and what is written of it
// comes back. The first byte chooses the units, the second the separator.
#include "app/ConvUnit.h"
#include "files/TableText.h"
#include "libs/sysinf32/SystemInfo.h"

#include <cmath>
#include <cstdlib>
#include <memory>

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void RequireSound(const calder::SplinePoints& points, double size) {
  if (points.SplineCount == 0) return;
  Require(points.SplineCount <= calder::SplinePoints::kMost);
  Require(points.SplineX[0] == 0 && points.Xs().back() == size && points.Ys().back() == points.SplineY[0]);
  for (int i = 0; i < points.SplineCount; ++i) {
    Require(std::fabs(points.At(i).y) <= 32767);
    Require(i == 0 || points.At(i).x > points.At(i - 1).x);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  if (size < 2) return 0;
  SystemInfo settings;
  settings.Amplitude = 5;
  settings.XUnit = static_cast<std::int16_t>(data[0] % 3);
  settings.YUnit = static_cast<std::int16_t>(data[0] / 3 % 3);
  const ConvUnit units(settings);
  const double points = settings.MemorySize;
  const auto list = std::make_unique<SplinePoints>();
  const TableContent content = ParseTable({reinterpret_cast<const char*>(data) + 2, size - 2}, units);
  Require(list->Replace(content.points, points) <= content.points.size());
  RequireSound(*list, points);
  const std::string text = ComposeTable(*list, units, " \t,"[data[1] % 3]);
  const TableContent again = ParseTable(text, units);
  Require(again.faultLine == 0 && again.points.size() == static_cast<std::size_t>(list->SplineCount));
  list->Replace(again.points, points);
  RequireSound(*list, points);
  return 0;
}
