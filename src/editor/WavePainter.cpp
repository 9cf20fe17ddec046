#include "editor/WavePainter.h"

#include <algorithm>
#include <cmath>

namespace calder {

void WavePainter::Clear(DeviceContext& picture) const {
  picture.FillRectangle(0, 0, picture.Width(), picture.Height(), theme::kGround);
}

void WavePainter::Draw_Grid_Wave(DeviceContext& picture) const {
  if (gridShown_) grid_.Drow(picture);
  const ViewState& view = program_.view;
  const int height = picture.Height();
  const double row = static_cast<double>(W_CODE_MAX - view.YStart) * height / (view.YEnd - view.YStart);
  if (row < 0 || row > height) return;
  picture.SetPen(theme::OnGround(theme::kZeroLine, theme::kZeroStrength));
  W_DrawGrid2(picture, view.YStart, view.YEnd - view.YStart, picture.Width(), height);
}

void WavePainter::Draw_Wave(DeviceContext& picture) {
  Clear(picture);
  Draw_Grid_Wave(picture);
  const ViewState& view = program_.view;
  picture.SetDrawMode(DrawMode::CopyPen);
  picture.SetPen(theme::kTrace, std::max(1, static_cast<int>(std::lround(picture.Scale()))));
  W_DrawWave2(picture, program_.buffers.Current(), view.XStart, view.YStart, view.XEnd - view.XStart,
              view.YEnd - view.YStart, picture.Width(), picture.Height(), program_.settings.MemorySize);
  if (toolLayer_ && program_.selectedTool == kToolSpline) toolLayer_(picture);
  markers_.Draw_Marker(picture);
}

void WavePainter::Draw_Digital(DeviceContext& picture, std::uint16_t selectedBits) {
  Clear(picture); // also under lanes that are no longer selected
  const ViewState& view = program_.view;
  const Scope& scope = program_.buffers.CurrentScope();
  W_DrawDigitalPattern(picture, program_.buffers.Current(), view.XStart, view.XEnd - view.XStart,
                       program_.settings.DataBits, selectedBits, scope.Start, scope.End, picture.Width(),
                       picture.Height(), theme::kBitTrace, theme::kBitQuiet, theme::kBitSelected, theme::kBitScope,
                       program_.settings.MemorySize);
  markers_.Draw_Marker(picture);
}

} // namespace calder
