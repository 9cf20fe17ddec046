// The Compress/Decompress dialog without its window: the selected area laid between two new ends and between two new
// levels, live in the current buffer.
//
// 1. From Form_Load to Form_QueryUnload the undo copy holds the waveform and the range as they were, and the current
//    buffer the last version.
// 2. Every version is made of the saved waveform, never of the version before.
#pragma once

#include "app/EditBuffers.h"
#include "app/ViewState.h"
#include "editor/PictureTool.h"
#include "tools/frame/WavePreview.h"

#include <cstdint>
#include <string>

namespace calder {

class ToolHost;

// Where the saved area is to lie: X in points, Y in codes.
struct ElasticTarget {
  double NewStart = 0;
  double NewEnd = 0;
  double NewMax = 0;
  double NewMin = 0;
  double NewAmp = 0;  // NewMax - NewMin
  double NewOffs = 0; // their middle
};

class Elastic final : private PictureTool {
public:
  // What they refer to must outlive this object. view: of the main window's picture.
  Elastic(EditBuffers& buffers, const SystemInfo& settings, const ConvUnit& units, const ViewState& view,
          ToolHost& host)
      : buffers_(buffers), settings_(settings), units_(units), view_(view), host_(host) {}
  // As Form_QueryUnload when that has not come, because the program ends.
  ~Elastic() override { Form_QueryUnload(); }
  Elastic(const Elastic&) = delete;
  Elastic& operator=(const Elastic&) = delete;

  void Form_Load();
  // Unless an OK came before, the waveform and its range are again as they were and no undo step is left.
  void Form_QueryUnload();

  // Text_X: 0 the start, 1 the end. A position outside of the waveform is taken back. An end before the start is taken:
  // then X stays as it was and the range is the one between the two.
  void Text_X_LostFocus(int box, const std::string& text);
  // Text_Y: 0 maximum, 1 minimum, 2 amplitude, 3 offset. Only what no waveform can be scaled to is taken back.
  void Text_Y_LostFocus(int box, const std::string& text);
  void Btn_Length_Click();
  void Btn_Peak_Click();
  void Btn_Ampl_Click();
  void Btn_OK_Click() { cancelled_ = false; }

  [[nodiscard]] std::string XText(int box) const;
  [[nodiscard]] std::string XLevelText(int box) const; // the waveform's Y there
  [[nodiscard]] std::string YText(int box) const;
  [[nodiscard]] const ElasticTarget& Target() const { return target_; }
  // Points of the last version that lie at full scale because their level is beyond it.
  [[nodiscard]] std::int32_t Limited() const { return limited_; }

  // The small picture of the whole waveform, in device pixels: the saved one dim, the present one, both ends.
  void Draw(DeviceContext& picture) const;
  [[nodiscard]] std::string WholeStartText() const { return PreviewPositionText(units_, 0); }
  [[nodiscard]] std::string WholeEndText() const { return PreviewPositionText(units_, settings_.MemorySize); }
  // X and Y at a column; empty outside.
  [[nodiscard]] std::string ValueText(int column, int width) const;
  // An end can be dragged from there.
  [[nodiscard]] bool Hover(int column, int width, double scale) const { return EndAt(column, width, scale) != kNoEnd; }
  void Press(int column, int width, double scale) { held_ = EndAt(column, width, scale); }
  // True: an end is held and the waveform was changed.
  bool Move(int column, int width);
  void Release() { held_ = kNoEnd; }

private:
  static constexpr int kNoEnd = -1;
  // Which of the two fits of Y the next version takes.
  enum FitMode : std::int16_t { kFitAmplitude = 0, kFitPeaks = 2, kFitMinimum = 3, kFitMaximum = 4 };

  [[nodiscard]] double& End(int box) { return box == 0 ? target_.NewStart : target_.NewEnd; }
  [[nodiscard]] double End(int box) const { return box == 0 ? target_.NewStart : target_.NewEnd; }
  [[nodiscard]] int Column(double point, int width) const;
  [[nodiscard]] int EndAt(int column, int width, double scale) const;
  void Apply();
  void FitY(double start, double width);

  // PictureTool: the saved waveform on the main window's picture. The window waits meanwhile, so there are no gestures.
  void DrawBehind(DeviceContext& picture) override;
  void DrawLayer(DeviceContext& /*picture*/) override {}
  bool Press(const PicturePoint& /*at*/, bool /*withCtrl*/) override { return false; }
  void Move(const PicturePoint& /*at*/) override {}
  void Release(const PicturePoint& /*at*/) override {}
  void BackspaceKey() override {}
  [[nodiscard]] Pointer PointerAt(const PicturePoint& /*at*/) const override { return Pointer::Cross; }

  EditBuffers& buffers_;
  const SystemInfo& settings_;
  const ConvUnit& units_;
  const ViewState& view_;
  ToolHost& host_;
  ElasticTarget target_;
  FitMode YFitMode_ = kFitAmplitude;
  bool open_ = false;
  bool cancelled_ = true;
  std::int32_t limited_ = 0;
  int held_ = kNoEnd;
};

} // namespace calder
