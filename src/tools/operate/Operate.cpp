#include "tools/operate/Operate.h"

#include "app/ConvUnit.h"
#include "libs/file32/file32.h"
#include "platform/WaveformTheme.h"
#include "platform/WholePoint.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace calder {
namespace {

constexpr const char* kOperators[] = {"+", "-", "*", "/"};
constexpr const char* kOneAndOne[] = {"2", "0", "1", "1"};

CalcFaultCount Count(std::span<const std::uint8_t> marks) {
  return {static_cast<std::int32_t>(std::ranges::count(marks, CALC_LIMITED)),
          static_cast<std::int32_t>(std::ranges::count(marks, CALC_BY_ZERO))};
}

} // namespace

bool Operate::Open() {
  Close();
  range_ = buffers_.CurrentScope();
  first_ = static_cast<std::int32_t>(WholePoint(range_.Start));
  const auto width = static_cast<std::int32_t>(WholePoint(range_.Length()));
  // Where both are rounded up the last point may lie beyond the waveform's end.
  const std::int32_t points = std::min(width, settings_.MemorySize - first_);
  if (points < 1) {
    messages_.ErrorBoxText(messages_.Pick("選択領域に点がありません。マーカーAとBを離してください。",
                                          "The selected area holds no point. Move the markers A and B apart."));
    return false;
  }
  std::array<WaveHandle, 3> buffers{};
  if (!W_AllocTogether(width, buffers)) {
    messages_.ErrorBox(kMsgNoMemory);
    return false;
  }
  operand_ = buffers[0];
  firm_.buffer = buffers[1];
  pending_.buffer = buffers[2];
  for (Result* result : {&firm_, &pending_}) result->marks.assign(static_cast<std::size_t>(points), CALC_SOUND);
  firm_.count = {};
  operation_ = 0;
  origin_ = Origin::None;
  Compute();
  return true;
}

void Operate::Close() {
  for (WaveHandle* handle : {&operand_, &firm_.buffer, &pending_.buffer}) {
    if (*handle != 0) W_FreeMemory(*handle);
    *handle = 0;
  }
}

void Operate::Comb_Comp_Click(int operation) {
  operation_ = operation;
  Compute();
}

void Operate::Btn_Cut_Click() {
  std::int32_t placed = 0;
  const std::int32_t result = fileLibrary_.GetClipBoard(clipboard_, operand_, 0, Points(), Points(), placed);
  if (result != 0) {
    messages_.ErrorBox(result);
    return;
  }
  W_ClearMemory(operand_, placed, Points() - placed);
  origin_ = Origin::Clipboard;
  placed_ = placed;
  Compute();
}

void Operate::OperandCreated() {
  origin_ = Origin::Created;
  Compute();
}

void Operate::OperandCleared() {
  origin_ = Origin::None;
  Compute();
}

void Operate::Btn_Result_Click() {
  if (!possible_) {
    messages_.ErrorBoxText(PendingText());
    return;
  }
  W_CopyMemory(pending_.buffer, firm_.buffer, 0, 0, Points());
  firm_.marks = pending_.marks;
  firm_.count = pending_.count;
}

void Operate::Btn_OK_Click() {
  buffers_.Save_Undo();
  const double start = std::nearbyint(range_.Start); // halves to even
  W_CopyMemory(firm_.buffer, buffers_.Current(), 0, start, std::min<double>(Points(), settings_.MemorySize - start));
}

void Operate::Compute() {
  const double yMin = units_.CodeToY(-W_CODE_MAX);
  const double yMax = units_.CodeToY(W_CODE_MAX);
  const double start = range_.Start;
  const double width = range_.Length();
  const WaveHandle source = buffers_.Current();
  possible_ = W_CalcWave(source, operand_, pending_.buffer, start, width, yMin, yMax, operation_) == W_SUCCESS &&
              W_CalcFaults(source, operand_, start, width, yMin, yMax, operation_, pending_.marks) == W_SUCCESS;
  if (!possible_) std::ranges::fill(pending_.marks, CALC_SOUND);
  pending_.count = Count(pending_.marks);
}

bool Operate::Pending() const {
  const auto points = static_cast<std::size_t>(Points());
  return possible_ && !std::ranges::equal(W_Lock(firm_.buffer).first(points), W_Lock(pending_.buffer).first(points));
}

PreviewWave Operate::WaveOf(Picture picture) const {
  // All of them from their first whole point on, so that the three columns of one x belong together.
  switch (picture) {
  case Picture::Source: return {buffers_.Current(), static_cast<double>(first_), static_cast<double>(Points())};
  case Picture::Operand: return {operand_, 0, static_cast<double>(Points())};
  case Picture::Result: break;
  }
  return {firm_.buffer, 0, static_cast<double>(Points())};
}

void Operate::Draw(Picture picture, DeviceContext& context) const {
  const PreviewCurve present{WaveOf(picture), theme::kTrace};
  if (picture != Picture::Result) {
    DrawWavePreview(context, std::span(&present, 1));
    return;
  }
  const PreviewCurve coming{{pending_.buffer, 0, static_cast<double>(Points())}, theme::kTraceGhost};
  const PreviewCurve curves[] = {coming, present};
  const bool pending = Pending();
  DrawWavePreview(context, std::span(curves).subspan(pending ? 0 : 1));
  const auto points = static_cast<std::size_t>(Points());
  DrawFaultMarks(context, W_Lock(firm_.buffer).first(points), firm_.marks);
  if (pending) DrawFaultMarks(context, W_Lock(pending_.buffer).first(points), pending_.marks);
}

std::string Operate::ValueText(Picture picture, int column, int width) const {
  const PreviewWave wave = WaveOf(picture);
  const auto reading = ReadPreview(wave, column, width);
  if (!reading) return {};
  std::string text = PreviewValueText(units_, first_ + reading->point - wave.start, reading->code);
  if (picture == Picture::Result && Pending())
    text += " (= " + PreviewLevelText(units_, W_GetWaveData(pending_.buffer, reading->point, Points())) + ")";
  return text;
}

std::string Operate::CountText(const CalcFaultCount& count) const {
  return messages_.Pick("制限 ", "limited: ") + std::to_string(count.limited) +
         messages_.Pick(" 点、0による除算 ", " points, divided by 0: ") + std::to_string(count.byZero) +
         messages_.Pick(" 点", " points");
}

std::string Operate::FirmText() const {
  if (firm_.count.None()) return messages_.Pick("制限された点はありません", "no point limited");
  return CountText(firm_.count);
}

std::string Operate::PendingText() const {
  if (!possible_) {
    return messages_.Pick("この単位ではフルスケールの幅が0のため、演算できません。",
                          "In this unit the full scale has no width, so there is nothing to compute.");
  }
  if (!Pending()) return {};
  std::string text = messages_.Pick("[=]はまだ押されていません。OKは現在の演算結果を書き込みます。",
                                    "OK writes the bright curve; press = to take the new one over.");
  if (!pending_.count.None()) text += " (" + CountText(pending_.count) + ")";
  return text;
}

std::string Operate::OperandText() const {
  const std::string all = std::to_string(Points());
  switch (origin_) {
  case Origin::Clipboard: {
    const std::string placed = std::to_string(placed_);
    return messages_.GetLanguage() == Language::English ? "clipboard " + placed + " of " + all + " points"
                                                        : "ｸﾘｯﾌﾟﾎﾞｰﾄﾞ " + placed + " / " + all + " 点";
  }
  case Origin::Created:
    return messages_.Pick("生成波形 ", "created waveform, ") + all + messages_.Pick(" 点", " points");
  case Origin::None: break;
  }
  return messages_.Pick("まだ波形がありません (0)", "no waveform yet: 0");
}

std::string Operate::ScaleText() const {
  const auto operation = static_cast<std::size_t>(operation_);
  const std::string unit = units_.YUnitName();
  const std::string name = !unit.empty()                ? unit
                           : settings_.YUnit == kYCodes ? messages_.Pick("コード", "codes")
                                                        : messages_.Pick("ユーザ", "user units");
  const std::string sum =
      std::string("1 ") + kOperators[operation] + " 1 = " + kOneAndOne[operation] + (unit.empty() ? "" : " " + unit);
  return messages_.GetLanguage() == Language::English ? "in " + name + ": " + sum : name + "単位: " + sum;
}

void DrawFaultMarks(DeviceContext& picture, std::span<const std::int16_t> codes, std::span<const std::uint8_t> marks) {
  constexpr double logicalHeight = 4;
  const auto width = static_cast<std::size_t>(picture.Width());
  const int height = picture.Height();
  const int bar = std::max(2, static_cast<int>(std::lround(logicalHeight * picture.Scale())));
  struct Bars {
    std::vector<std::int16_t> tops, bottoms;
  };
  // A column has at most two: at its highest and at its lowest marked code.
  std::array<Bars, 2> bars{Bars{std::vector<std::int16_t>(width, 1), std::vector<std::int16_t>(width, 0)},
                           Bars{std::vector<std::int16_t>(width, 1), std::vector<std::int16_t>(width, 0)}};
  bool any = false;
  for (std::size_t column = 0; column < width; ++column) {
    const std::size_t first = column * marks.size() / width;
    const std::size_t end = std::max(first + 1, (column + 1) * marks.size() / width);
    int high = -W_CODE_SPAN;
    int low = W_CODE_SPAN;
    for (std::size_t i = first; i < end; ++i) {
      if (marks[i] == CALC_SOUND) continue;
      high = std::max<int>(high, codes[i]);
      low = std::min<int>(low, codes[i]);
    }
    if (high < low) continue;
    any = true;
    for (std::size_t i = 0; i < bars.size(); ++i) {
      const int row = (W_CODE_MAX - (i == 0 ? high : low)) * (height - 1) / W_CODE_SPAN;
      const int top = std::clamp(row - bar / 2, 0, std::max(0, height - bar));
      bars[i].tops[column] = static_cast<std::int16_t>(top);
      bars[i].bottoms[column] = static_cast<std::int16_t>(std::min(top + bar, height) - 1);
    }
  }
  if (!any) return;
  picture.SetPen(theme::kFault);
  for (const Bars& kind : bars) picture.Columns(0, kind.tops, kind.bottoms);
}

} // namespace calder
