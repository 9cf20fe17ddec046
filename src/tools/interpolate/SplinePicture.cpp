// The control points on the main window's picture: crosses, the preview of the interpolation used last, and the
// gestures that pick, move and place points.
#include "app/Program.h"
#include "editor/WaveView.h"
#include "instrument/SystemSetup.h"
#include "libs/wavelb32/wavelb32.h"
#include "platform/DeviceContext.h"
#include "tools/frame/ToolHost.h"
#include "tools/interpolate/SplineDesk.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr Color kPointColor = 0x7FE9E9;    // palette colour 11, light cyan
constexpr Color kSelectedColor = 0xFF6F6F; // palette colour 12, light red
constexpr Color kGhostColor = 0x4A6078;
constexpr double kReach = 2; // logical pixels
constexpr int kAbove = 3;    // logical pixels of a cross above and left of its place
constexpr int kBelow = 4;

} // namespace

SplinePoint SplineDesk::PlaceOf(const PicturePoint& at) const {
  const int x = std::clamp(at.x, 0, at.width);
  const int y = std::clamp(at.y, 0, at.height);
  return {view_.PixelXToPoint(x, at.width),
          std::clamp<double>(view_.PixelYToCode(y, at.height), -W_CODE_MAX, W_CODE_MAX)};
}

std::optional<int> SplineDesk::PointAt(const PicturePoint& at) const {
  const double reach = kReach * at.scale;
  // As far as the pointer reaches in points: the others need not be looked at.
  const double x = view_.PointToPixelXExact(view_.PixelXToPoint(at.x, at.width), at.width);
  const double y = view_.CodeToPixelYExact(view_.PixelYToCode(at.y, at.height), at.height);
  for (int i = 0; i < Rows(); ++i) {
    const SplinePoint point = points_.At(i);
    if (std::fabs(view_.PointToPixelXExact(point.x, at.width) - x) >= reach) continue;
    if (std::fabs(view_.CodeToPixelYExact(point.y, at.height) - y) < reach) return i;
  }
  return std::nullopt;
}

void SplineDesk::TakeDragged(SplinePoints& points) const {
  if (mode_ == Mode::None) return;
  SplinePoint place = place_;
  if (mode_ == Mode::Moving) {
    const int last = points.SplineCount - 1;
    if (dragged_ == 0 || dragged_ == last) { // both ends have one Y and keep their X
      points.Set(0, {points.At(0).x, place.y});
      points.Set(last, {points.At(last).x, place.y});
      return;
    }
    points.Remove(dragged_);
  }
  static_cast<void>(points.Insert(place));
}

void SplineDesk::RebuildLines() {
  if (!undoKept_) buffers_.Save_Undo();
  undoKept_ = true;
  SplinePoints points = points_;
  TakeDragged(points);
  Interpolate(Kind::Linear, points, buffers_.Current());
  setup_.ForgetControlPoints();
}

bool SplineDesk::Change_Spline_Select(const PicturePoint& at) {
  mode_ = Mode::None;
  dragged_ = Rows();
  if (const std::optional<int> found = PointAt(at)) {
    mode_ = Mode::Moving;
    dragged_ = *found;
    place_ = points_.At(*found);
    GridRowSelect(*found + 1);
  }
  RebuildLines();
  return mode_ == Mode::Moving;
}

bool SplineDesk::Press(const PicturePoint& at, bool withCtrl) {
  port_->HideCellEditor();
  const bool found = Change_Spline_Select(at);
  if (!found && withCtrl) {
    mode_ = Mode::Placing;
    place_ = PlaceOf(at);
  }
  host_.WaveformChanged();
  return mode_ != Mode::None;
}

void SplineDesk::Move(const PicturePoint& at) {
  if (mode_ == Mode::None) return;
  place_ = PlaceOf(at);
  ghostShown_ = lastKind_.has_value();
  RebuildLines();
  port_->ShowPoints();
  host_.PictureToolChanged();
}

void SplineDesk::Release(const PicturePoint& at) {
  const Mode mode = mode_;
  mode_ = Mode::None;
  const SplinePoint place = PlaceOf(at);
  const double x = units_.PointToX(place.x);
  const double y = units_.CodeToY(place.y);
  if (mode == Mode::None) {
    GridRowSelect(Rows() >= SplinePoints::kMost - 1 ? Rows() : Rows() + 1);
  } else if (mode == Mode::Moving) {
    row_ = dragged_ + 1;
    const SplinePoint before = points_.At(dragged_);
    // A press that moved nothing leaves the point's digits alone.
    const bool moved = std::fabs(view_.PointToPixelXExact(before.x, at.width) - at.x) >= kReach * at.scale ||
                       std::fabs(view_.CodeToPixelYExact(before.y, at.height) - at.y) >= kReach * at.scale;
    if (moved) Update_PointXY(x, y, false);
    if (Change_Spline_Select(at)) row_ = dragged_ + 1;
    mode_ = Mode::None;
    port_->ShowRow();
  } else {
    row_ = Rows() + 1;
    Update_PointXY(x, y, false);
    RebuildLines();
  }
  host_.WaveformChanged();
}

void SplineDesk::BackspaceKey() {
  if (row_ <= Rows()) Btn_Delete_Click();
}

PictureTool::Pointer SplineDesk::PointerAt(const PicturePoint& at) const {
  return PointAt(at) ? Pointer::Hand : Pointer::Cross;
}

void SplineDesk::DrawLayer(DeviceContext& picture) {
  if (ghostShown_) DrawGhost(picture);
  Spline_Draw(picture);
}

void SplineDesk::DrawGhost(DeviceContext& picture) const {
  const WaveHandle scratch = buffers_.Work();
  W_CopyMemory(buffers_.Current(), scratch, 0, 0, Size());
  SplinePoints points = points_;
  TakeDragged(points);
  if (Interpolate(*lastKind_, points, scratch) != W_SUCCESS) return;
  const ViewState& view = shown_;
  picture.SetPen(kGhostColor, std::max(1, static_cast<int>(std::lround(picture.Scale()))));
  W_DrawWave2(picture, scratch, view.XStart, view.YStart, view.XEnd - view.XStart, view.YEnd - view.YStart,
              picture.Width(), picture.Height(), settings_.MemorySize);
}

void SplineDesk::Spline_Draw(DeviceContext& picture) const {
  const ViewState& view = shown_;
  const int width = picture.Width();
  const int height = picture.Height();
  const auto scaled = [&](int pixels) { return static_cast<int>(std::lround(pixels * picture.Scale())); };
  const DrawMode saved = picture.GetDrawMode();
  picture.SetDrawMode(DrawMode::CopyPen);
  const auto cross = [&](const SplinePoint& point, Color color) {
    const double depth = std::nearbyint(W_CODE_MAX - point.y);
    if (point.x < view.XStart || point.x > view.XEnd || depth < view.YStart || depth > view.YEnd + 1) return;
    const int x = view_.PointToPixelX(point.x, width);
    const int y = view_.CodeToPixelY(point.y, height);
    picture.SetPen(color, std::max(1, scaled(1)));
    picture.Line(x, y - scaled(kAbove), x, y + scaled(kBelow));
    picture.Line(x - scaled(kAbove), y, x + scaled(kBelow), y);
  };
  for (int i = 0; i < Rows(); ++i) {
    if (mode_ == Mode::Moving && i == dragged_) continue;
    if (i + 1 != row_) cross(points_.At(i), kPointColor);
  }
  if (mode_ != Mode::None) {
    const bool end = mode_ == Mode::Moving && (dragged_ == 0 || dragged_ == Rows() - 1);
    cross(end ? SplinePoint{points_.At(dragged_).x, place_.y} : place_, kSelectedColor);
  } else if (row_ >= 1 && row_ <= Rows()) {
    cross(points_.At(row_ - 1), kSelectedColor);
  }
  picture.SetDrawMode(saved);
}

} // namespace calder
