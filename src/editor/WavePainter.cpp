#include "editor/WavePainter.h"

#include <algorithm>
#include <cmath>

namespace calder {

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
  picture.SetPen(theme::kTrace, std::max(1, static_cast<int>(std::lround(picture.Scale()))));
  W_DrawWave2(picture, buffers_.Current(), view_.XStart, view_.YStart, view_.XEnd - view_.XStart,
              view_.YEnd - view_.YStart, picture.Width(), picture.Height(), settings_.MemorySize);
  if (toolLayer_) toolLayer_(picture);
  markers_.Draw_Marker(picture);
}

void WavePainter::Draw_Digital(DeviceContext& picture, std::uint16_t selectedBits) {
  Clear(picture); // also under lanes that are no longer selected
  const Scope& scope = buffers_.CurrentScope();
  W_DrawDigitalPattern(picture, buffers_.Current(), view_.XStart, view_.XEnd - view_.XStart, settings_.DataBits,
                       selectedBits, scope.Start, scope.End, picture.Width(), picture.Height(), theme::kBitTrace,
                       theme::kBitQuiet, theme::kBitSelected, theme::kBitScope, settings_.MemorySize);
  markers_.Draw_Marker(picture);
}

} // namespace calder
