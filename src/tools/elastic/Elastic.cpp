#include "tools/elastic/Elastic.h"

#include "app/ConvUnit.h"
#include "app/EngValB.h"
#include "platform/WaveformTheme.h"
#include "tools/frame/ToolHost.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

// Codes beyond which the library takes no level.
constexpr double kFarthestLevel = 1e12;

} // namespace

void Elastic::Form_Load() {
  const Scope& scope = buffers_.CurrentScope();
  const WaveHandle work = buffers_.Work();
  W_CopyMemory(buffers_.Current(), work, 0, 0, settings_.MemorySize);
  target_.NewStart = scope.Start;
  target_.NewEnd = scope.End;
  std::int32_t low = W_GetMaxMin(work, scope.Start, scope.Length(), 0);
  std::int32_t high = W_GetMaxMin(work, scope.Start, scope.Length(), 1);
  // A range without a point has the level at its place.
  if (low == W_NO_DATA) low = high = W_GetWaveData(work, scope.Start, settings_.MemorySize);
  target_.NewMin = low;
  target_.NewMax = high;
  target_.NewAmp = target_.NewMax - target_.NewMin;
  target_.NewOffs = (target_.NewMax + target_.NewMin) / 2;
  buffers_.Save_Undo();
  YFitMode_ = kFitAmplitude;
  open_ = true;
  cancelled_ = true;
  limited_ = 0;
  held_ = kNoEnd;
  host_.SetPictureTool(this);
}

void Elastic::Form_QueryUnload() {
  if (!open_) return;
  open_ = false;
  host_.SetPictureTool(nullptr);
  if (!cancelled_) return;
  W_CopyMemory(buffers_.UndoCopy(), buffers_.Current(), 0, 0, settings_.MemorySize);
  buffers_.CurrentScope() = buffers_.UndoScope();
  buffers_.Reset_Undo();
}

void Elastic::Text_X_LostFocus(int box, const std::string& text) {
  double x = ParseEng(text);
  // Before the conversion, which limits what it is given.
  if (!units_.CheckXCurrent(x)) return;
  const double point = units_.XToPoint(x);
  if (point < 0 || point > settings_.MemorySize || point == End(box)) return;
  End(box) = point;
  Apply();
}

void Elastic::Text_Y_LostFocus(int box, const std::string& text) {
  const double y = ParseEng(text);
  const double value = box == 2 ? units_.YSpanToCode(y) : units_.YToCodeUnclamped(y);
  ElasticTarget wanted = target_;
  double* const fields[] = {&wanted.NewMax, &wanted.NewMin, &wanted.NewAmp, &wanted.NewOffs};
  double& field = *fields[box];
  if (value == field) return;
  field = value;
  FitMode mode = kFitAmplitude;
  switch (box) {
  case 0:
  case 1:
    wanted.NewAmp = wanted.NewMax - wanted.NewMin;
    wanted.NewOffs = (wanted.NewMax + wanted.NewMin) / 2;
    mode = box == 0 ? kFitMaximum : kFitMinimum;
    break;
  case 2:
    wanted.NewMax = value / 2 + wanted.NewOffs;
    wanted.NewMin = wanted.NewMax - value;
    break;
  default: wanted.NewMax = wanted.NewAmp / 2 + value; wanted.NewMin = wanted.NewMax - wanted.NewAmp;
  }
  for (const double level : {wanted.NewMax, wanted.NewMin, wanted.NewAmp, wanted.NewOffs})
    if (!(std::abs(level) <= kFarthestLevel)) return;
  target_ = wanted;
  YFitMode_ = mode;
  Apply();
}

void Elastic::Btn_Length_Click() {
  target_.NewStart = 0;
  target_.NewEnd = settings_.MemorySize;
  Apply();
}

void Elastic::Btn_Peak_Click() {
  target_.NewMax = W_CODE_MAX;
  target_.NewMin = -W_CODE_MAX;
  YFitMode_ = kFitPeaks;
  Apply();
  target_.NewAmp = target_.NewMax - target_.NewMin;
  target_.NewOffs = (target_.NewMax + target_.NewMin) / 2;
}

void Elastic::Btn_Ampl_Click() {
  const Scope& scope = buffers_.CurrentScope();
  const std::int32_t low = W_GetMaxMin(buffers_.Work(), scope.Start, scope.Length(), 0);
  const std::int32_t high = W_GetMaxMin(buffers_.Work(), scope.Start, scope.Length(), 1);
  if (low == W_NO_DATA) return; // no point to fit
  if (std::abs(low) > std::abs(high)) {
    target_.NewMin = -W_CODE_MAX;
    target_.NewMax = high + (W_CODE_MAX - std::abs(low));
  } else {
    target_.NewMax = W_CODE_MAX;
    target_.NewMin = low - (W_CODE_MAX - high);
  }
  target_.NewAmp = target_.NewMax - target_.NewMin;
  YFitMode_ = kFitPeaks;
  Apply();
}

void Elastic::Apply() {
  const Scope& saved = buffers_.UndoScope();
  const WaveHandle work = buffers_.Work();
  W_CopyMemory(buffers_.UndoCopy(), work, 0, 0, settings_.MemorySize);
  const double newSpan = target_.NewEnd - target_.NewStart;
  if (saved.Length() > 0 && newSpan > 0)
    W_CompWaveX(work, saved.Start, saved.Length(), settings_.MemorySize, target_.NewStart, newSpan);
  Scope& scope = buffers_.CurrentScope();
  scope = {std::min(target_.NewStart, target_.NewEnd), std::max(target_.NewStart, target_.NewEnd)};
  limited_ = 0;
  if (scope.Length() > 1) FitY(scope.Start, scope.Length());
  YFitMode_ = kFitAmplitude;
  W_CopyMemory(work, buffers_.Current(), 0, 0, settings_.MemorySize);
  host_.WaveformChanged();
}

void Elastic::FitY(double start, double width) {
  const WaveHandle work = buffers_.Work();
  if (YFitMode_ == kFitAmplitude) {
    const double half = target_.NewAmp / 2;
    limited_ = W_CountLimited(work, start, width, target_.NewOffs + half, target_.NewOffs - half);
    W_CompYAmpOff(work, start, width, target_.NewAmp, target_.NewOffs);
  } else if (target_.NewMax != target_.NewMin) {
    limited_ = W_CountLimited(work, start, width, target_.NewMax, target_.NewMin);
    W_CompYMaxMin(work, start, width, target_.NewMax, target_.NewMin);
  }
}

std::string Elastic::XText(int box) const {
  return units_.PointToXTextWide(End(box));
}

std::string Elastic::XLevelText(int box) const {
  return units_.CodeToYText(W_GetWaveData(buffers_.Work(), End(box), settings_.MemorySize));
}

std::string Elastic::YText(int box) const {
  const double fields[] = {target_.NewMax, target_.NewMin, target_.NewAmp, target_.NewOffs};
  return box == 2 ? units_.CodeSpanToYText(fields[box]) : units_.CodeToYTextUnclamped(fields[box]);
}

int Elastic::Column(double point, int width) const {
  return std::min(static_cast<int>(std::lround(point * width / settings_.MemorySize)), width - 1);
}

void Elastic::Draw(DeviceContext& picture) const {
  constexpr double logicalFlag = 8;
  const double size = settings_.MemorySize;
  const PreviewCurve curves[] = {{{buffers_.UndoCopy(), 0, size}, theme::kTraceFormer},
                                 {{buffers_.Current(), 0, size}, theme::kTrace}};
  DrawWavePreview(picture, curves);
  const int flag = static_cast<int>(std::lround(logicalFlag * picture.Scale()));
  const int line = std::max(1, static_cast<int>(std::lround(picture.Scale())));
  picture.SetPen(theme::kBitSelected, line);
  for (const int box : {0, 1}) {
    const int column = Column(End(box), picture.Width());
    picture.Line(column, 0, column, picture.Height() - 1);
    // As the main window's markers: the start's flag to the right, the end's to the left.
    picture.FillRectangle(box == 0 ? column : column - flag, 0, flag, flag, theme::kBitSelected);
  }
}

std::string Elastic::ValueText(int column, int width) const {
  const auto reading = ReadPreview({buffers_.Current(), 0, static_cast<double>(settings_.MemorySize)}, column, width);
  return reading ? PreviewValueText(units_, reading->point, reading->code) : std::string();
}

int Elastic::EndAt(int column, int width, double scale) const {
  constexpr double logicalReach = 5;
  const int toStart = std::abs(column - Column(End(0), width));
  const int toEnd = std::abs(column - Column(End(1), width));
  if (std::min(toStart, toEnd) > logicalReach * scale) return kNoEnd;
  if (toStart != toEnd) return toStart < toEnd ? 0 : 1;
  // Both in one place: the one that has room beyond it.
  return End(1) < settings_.MemorySize ? 1 : 0;
}

bool Elastic::Move(int column, int width) {
  if (held_ == kNoEnd) return false;
  const double point = std::rint(static_cast<double>(std::clamp(column, 0, width)) * settings_.MemorySize / width);
  if (point == End(held_)) return false;
  End(held_) = point;
  Apply();
  return true;
}

void Elastic::DrawBehind(DeviceContext& picture) {
  picture.SetPen(theme::kTraceFormer, std::max(1, static_cast<int>(std::lround(picture.Scale()))));
  W_DrawWave2(picture, buffers_.UndoCopy(), view_.XStart, view_.YStart, view_.XEnd - view_.XStart,
              view_.YEnd - view_.YStart, picture.Width(), picture.Height(), settings_.MemorySize);
}

} // namespace calder
