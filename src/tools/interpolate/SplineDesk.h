// The Interpolate dialog without its window: what its grid, its buttons and the gestures in the main window do to the
// control points, and the interpolations.
//
// Nothing is written into the waveform but by the interpolation buttons and by the presses in the main window, which
// rebuild its range as straight lines through the points; both leave an undo step.
#pragma once

#include "app/ConvUnit.h"
#include "app/EditBuffers.h"
#include "app/Messages.h"
#include "app/SplinePoints.h"
#include "app/ViewState.h"
#include "editor/PictureTool.h"
#include "files/TableFile.h"
#include "libs/sysinf32/SystemInfo.h"

#include <optional>
#include <string>

namespace calder {

class EditBuffers;
class FileCommands;
class Program;
class SystemSetup;
class ToolHost;
class WaveView;

// What the desk asks of its form.
class SplinePort {
public:
  virtual ~SplinePort() = default;
  // Points came, went or changed.
  virtual void ShowPoints() = 0;
  // The current row of the grid is another one.
  virtual void ShowRow() = 0;
  virtual void HideCellEditor() = 0;
  // A line at the foot that says why something was refused.
  virtual void ShowRefusal(const std::string& text) = 0;
};

class SplineDesk final : public PictureTool {
public:
  enum class Column { X = 1, Y = 2 };
  enum class Kind : int { Linear = 0, Spline = 1, Continuous = 2 };

  // What they refer to must outlive this object. Gives the file commands the reader and writer of tables.
  SplineDesk(Program& program, const WaveView& view, SystemSetup& setup, FileCommands& files, ToolHost& host);
  SplineDesk(const SplineDesk&) = delete;
  SplineDesk& operator=(const SplineDesk&) = delete;

  // REQUIRES: a port between Form_Load and Form_QueryUnload.
  void SetPort(SplinePort* port) { port_ = port; }
  void Form_Load();
  void Form_QueryUnload();

  // Rows count from 1; point i is row i + 1. The row after the last point is the first empty one.
  [[nodiscard]] int Rows() const { return points_.SplineCount; }
  [[nodiscard]] int CurrentRow() const { return row_; }
  void GridRowSelect(int row);
  [[nodiscard]] std::string CellText(int row, Column column) const; // empty for a row without a point
  // The last point is as the first one, so it is edited there.
  [[nodiscard]] bool CellEditable(int row) const { return row >= 1 && row < points_.SplineCount; }
  // False: refused, and the reason is in the line at the foot.
  [[nodiscard]] bool EditCell(int row, Column column, const std::string& text);

  // One point in display units; without insert it takes the place of the current row's point.
  bool Update_PointXY(double x, double y, bool insert);
  // The same in points and codes. False: refused.
  bool Spline_Update(double x, double y, bool insert);
  void Spline_AllClear();
  void InitSplineData();
  void setXmaxYmaxData();

  void Btn_Insrt_Click();
  void Btn_Delete_Click();
  void Btn_AllClear_Click();
  void Btn_Spline_Click(Kind kind);
  void Menu_FileOpen_Click();
  void Menu_FileSave_Click();
  // Points from the text of a table (two columns), added to the present ones.
  void Paste(const std::string& text);

  // The number of points in words.
  [[nodiscard]] std::string CountText() const;

  // PictureTool
  void DrawLayer(DeviceContext& picture) override;
  bool Press(const PicturePoint& at, bool withCtrl) override;
  void Move(const PicturePoint& at) override;
  void Release(const PicturePoint& at) override;
  void BackspaceKey() override;
  [[nodiscard]] Pointer PointerAt(const PicturePoint& at) const override;

private:
  enum class Mode { None, Moving, Placing };

  [[nodiscard]] std::optional<int> PointAt(const PicturePoint& at) const;
  // Finds a point there and rebuilds the range as straight lines.
  bool Change_Spline_Select(const PicturePoint& at);
  void RebuildLines();
  void Spline_Draw(DeviceContext& picture) const;
  void DrawGhost(DeviceContext& picture) const;
  [[nodiscard]] SplinePoint PlaceOf(const PicturePoint& at) const;
  // The points with the one that is being dragged in its place.
  void TakeDragged(SplinePoints& points) const;
  std::int32_t Interpolate(Kind kind, const SplinePoints& points, std::int32_t buffer) const;
  void Changed();
  void Refuse(const std::string& text) const;
  [[nodiscard]] double Size() const; // points of the waveform

  EditBuffers& buffers_;
  const ViewState& shown_;
  const ErrMsg& messages_;
  SystemInfo& settings_;
  const ConvUnit& units_;
  const Language language_;
  const WaveView& view_;
  SystemSetup& setup_;
  FileCommands& files_;
  ToolHost& host_;
  SplinePoints& points_;
  TableFile tableFile_;
  SplinePort* port_ = nullptr;
  int row_ = 1;
  Mode mode_ = Mode::None;
  int dragged_ = 0;       // the index of the point that moves, or the count for a new one
  SplinePoint place_;     // where it is now
  bool undoKept_ = false; // the waveform before the gestures is the undo step
  std::optional<Kind> lastKind_;
  bool ghostShown_ = false; // the points were changed since the last interpolation
};

} // namespace calder
