#include "editor/WavePainter.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr double kCursorStrength = 0.6;
constexpr double kDragAside = 24; // logical pixels from the left: the line of a copy that keys ask for
constexpr double kDragDot = 9;

// One logical pixel.
int PenWidth(const DeviceContext& picture) {
  return std::max(1, static_cast<int>(std::lround(picture.Scale())));
}

} // namespace

void WavePainter::Clear(DeviceContext& picture) const {
  picture.FillRectangle(0, 0, picture.Width(), picture.Height(), theme::kGround);
}

void WavePainter::Draw_Grid_Wave(DeviceContext& picture) const {
  if (gridShown_) grid_.Drow(picture);
  const int height = picture.Height();
  const double row = static_cast<double>(W_CODE_MAX - view_.YStart) * height / (view_.YEnd - view_.YStart);
  if (row < 0 || row > height) return;
  picture.SetPen(theme::OnGround(theme::kZeroLine, theme::kZeroStrength));
  W_DrawGrid2(picture, view_.YStart, view_.YEnd - view_.YStart, picture.Width(), height);
}

void WavePainter::Draw_Wave(DeviceContext& picture) {
  Clear(picture);
  Draw_Grid_Wave(picture);
  picture.SetDrawMode(DrawMode::CopyPen);
  if (behindWave_) behindWave_(picture);
  picture.SetPen(theme::kTrace, PenWidth(picture));
  W_DrawWave2(picture, buffers_.Current(), view_.XStart, view_.YStart, view_.XEnd - view_.XStart,
              view_.YEnd - view_.YStart, picture.Width(), picture.Height(), settings_.MemorySize);
  if (toolLayer_) toolLayer_(picture);
  markers_.Draw_Marker(picture);
}

void WavePainter::Draw_Digital(DeviceContext& picture, const LanePicture& lanes) {
  const Scope& scope = buffers_.CurrentScope();
  const int width = picture.Width();
  const int height = picture.Height();
  const double span = view_.XEnd - view_.XStart;
  picture.SetDrawMode(DrawMode::CopyPen);
  W_DrawDigitalPattern(picture, buffers_.Current(), view_.XStart, span, settings_.DataBits, lanes.selectedBits,
                       scope.Start, scope.End, width, height, theme::kBitTrace, theme::kGround, theme::kBitSelected,
                       theme::kBitQuiet, settings_.MemorySize, lanes.ghost, theme::kBitGhost);
  if (const LaneRows rows = W_RowsOfLane(lanes.cursorLane, height); rows.bottom > rows.top) {
    picture.SetPen(theme::OnGround(theme::kBitSelected, kCursorStrength), PenWidth(picture));
    picture.Rectangle(0, rows.top, width - 1, rows.bottom - 1);
  }
  if (lanes.drag) DrawDrag(picture, *lanes.drag);
  markers_.Draw_Marker(picture);
}

void WavePainter::DrawDrag(DeviceContext& picture, const DigitalLanes::Drag& drag) {
  const auto middle = [&picture](int lane) {
    const LaneRows rows = W_RowsOfLane(lane, picture.Height());
    return (rows.top + rows.bottom) / 2;
  };
  const int aside = static_cast<int>(std::lround(kDragAside * picture.Scale()));
  const int dot = static_cast<int>(std::lround(kDragDot * picture.Scale()));
  const int x = drag.toX.value_or(aside);
  const int y = middle(drag.destination);
  picture.SetPen(theme::kDragLine, 2 * PenWidth(picture));
  picture.Line(drag.fromX.value_or(aside), middle(drag.source), x, y);
  picture.FillRectangle(x - dot / 2, y - dot / 2, dot, dot, theme::kDragLine);
}

} // namespace calder
