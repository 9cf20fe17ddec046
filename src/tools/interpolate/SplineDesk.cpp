#include "tools/interpolate/SplineDesk.h"

#include "app/EngValB.h"
#include "app/Program.h"
#include "editor/WaveView.h"
#include "files/FileCommands.h"
#include "files/TableText.h"
#include "instrument/SystemSetup.h"
#include "libs/spline32/spline32.h"
#include "tools/frame/ToolHost.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr int kMsgEndPoints = 21;
constexpr int kMsgNoPoint = 20;
constexpr int kRowLimit = 10000; // of a selection

} // namespace

SplineDesk::SplineDesk(Program& program, const WaveView& view, SystemSetup& setup, FileCommands& files, ToolHost& host)
    : buffers_(program.buffers), shown_(program.view), messages_(program.messages), settings_(program.settings),
      units_(program.units), language_(program.language), view_(view), setup_(setup), files_(files), host_(host),
      points_(program.spline), tableFile_(program.spline, program.units, program.settings, program.messages) {
  files_.SetFormat(Kind_Table, {[this](const std::string& path) { return tableFile_.Read_Table(path); },
                                [this](const std::string& path) { return tableFile_.Write_Table(path); }});
}

double SplineDesk::Size() const {
  return settings_.MemorySize;
}

// ---- opening and closing ----

void SplineDesk::Form_Load() {
  mode_ = Mode::None;
  undoKept_ = false;
  ghostShown_ = false;
  if (points_.SplineCount == 0)
    InitSplineData();
  else if (points_.Xs().back() != Size())
    setXmaxYmaxData();
  row_ = std::min(points_.SplineCount + 1, kRowLimit);
  port_->ShowPoints();
  port_->ShowRow();
  host_.SetPictureTool(this);
  host_.PictureToolChanged();
}

void SplineDesk::Form_QueryUnload() {
  mode_ = Mode::None;
  host_.SetPictureTool(nullptr);
}

void SplineDesk::InitSplineData() {
  points_.InitSplineData(Size());
}

void SplineDesk::setXmaxYmaxData() {
  points_.Close(Size());
}

void SplineDesk::Spline_AllClear() {
  points_.Clear();
}

// ---- the grid ----

void SplineDesk::GridRowSelect(int row) {
  row = std::clamp(row, 1, kRowLimit);
  if (row == row_) return;
  row_ = row;
  port_->ShowRow();
  host_.PictureToolChanged();
}

std::string SplineDesk::CellText(int row, Column column) const {
  if (row < 1 || row > Rows()) return {};
  const bool isDragged = mode_ == Mode::Moving && row - 1 == dragged_;
  const SplinePoint point = isDragged ? place_ : points_.At(row - 1);
  return column == Column::X ? units_.PointToXText(point.x) : units_.CodeToYText(point.y);
}

bool SplineDesk::EditCell(int row, Column column, const std::string& text) {
  if (!CellEditable(row)) return false;
  if (text == CellText(row, column)) return true; // the value keeps the digits that are not shown
  const ErrMsg& messages = messages_;
  const ConvUnit& units = units_;
  const int i = row - 1;
  SplinePoint point = points_.At(i);
  double value = ParseEng(text);
  if (column == Column::X) {
    if (i == 0) {
      Refuse(messages.Pick("最初の点の X は変更できません。", "The first point stays at its X."));
      return false;
    }
    const double before = points_.At(i - 1).x;
    const double after = points_.At(i + 1).x;
    const double x = units.CheckXCurrent(value) ? units.XToPoint(value) : -1;
    if (!(x > before && x < after)) {
      const std::string least = units.PointToXText(before);
      const std::string most = units.PointToXText(after);
      Refuse(language_ == Language::English ? "X must lie between " + least + " and " + most
                                            : "X は " + least + " と " + most + " の間の値です。");
      return false;
    }
    point.x = x;
  } else {
    if (!units.CheckYCurrent(value)) {
      const std::string least = units.CodeToYText(-W_CODE_MAX);
      const std::string most = units.CodeToYText(W_CODE_MAX);
      Refuse(language_ == Language::English ? "Y must lie between " + least + " and " + most
                                            : "Y は " + least + " から " + most + " までの値です。");
      return false;
    }
    point.y = units.YToCode(value);
  }
  points_.Set(i, point);
  if (i == 0) points_.Set(Rows() - 1, {points_.At(Rows() - 1).x, point.y});
  Changed();
  return true;
}

// ---- points ----

bool SplineDesk::Update_PointXY(double x, double y, bool insert) {
  return Spline_Update(units_.XToPoint(x), units_.YToCode(y), insert);
}

bool SplineDesk::Spline_Update(double x, double y, bool insert) {
  const double size = Size();
  const int last = Rows() - 1;
  const int index = row_ - 1;
  const bool bothEnds = points_.HasBothEnds(size);
  // An end point that was moved stays at its end.
  if (!insert && bothEnds && (index == 0 || index == last)) x = index == 0 ? 0 : size;
  if (bothEnds && (x == 0 || x == size) && y != points_.At(0).y) {
    const ErrMsg& messages = messages_;
    if (messages.WarningBox(messages.MessageText(kMsgEndPoints)) != BoxAnswer::Yes) return false;
    points_.Set(0, {0, y});
    points_.Set(last, {size, y});
  } else {
    const bool replaces = !insert && index <= last && !points_.Find(x);
    if (replaces) points_.Remove(index);
    if (!points_.Insert({x, y})) {
      Refuse(messages_.Pick("制御点は 10001 点までです。", "There is room for 10001 points."));
      return false;
    }
  }
  row_ = std::min(points_.Find(x).value_or(0) + 1, kRowLimit);
  Changed();
  port_->ShowRow();
  return true;
}

void SplineDesk::Changed() {
  ghostShown_ = lastKind_.has_value();
  port_->ShowPoints();
  host_.PictureToolChanged();
}

void SplineDesk::Refuse(const std::string& text) const {
  port_->ShowRefusal(text);
}

void SplineDesk::Paste(const std::string& text) {
  const TableContent table = ParseTable(text, units_);
  if (table.points.empty()) {
    Refuse(messages_.Pick("クリップボードに X と Y の列がありません。", "The clipboard holds no columns of X and Y."));
    return;
  }
  std::vector<SplinePoint> all;
  all.reserve(static_cast<std::size_t>(Rows()) + table.points.size());
  for (int i = 0; i < Rows(); ++i) all.push_back(points_.At(i));
  if (points_.HasBothEnds(Size())) all.pop_back(); // the end follows the first point
  all.insert(all.end(), table.points.begin(), table.points.end());
  if (points_.Replace(all, Size()) < all.size())
    Refuse(messages_.Pick("制御点は 10001 点までです。", "There is room for 10001 points."));
  Changed();
}

// ---- buttons and menu ----

void SplineDesk::Btn_Insrt_Click() {
  if (row_ < 1 || row_ > Rows()) return;
  // The row above the first one is the heading, which reads as 0.
  const double above = row_ == 1 ? 0 : ParseEng(CellText(row_ - 1, Column::X));
  const double middle = (ParseEng(CellText(row_, Column::X)) + above) / 2;
  Update_PointXY(middle, 0, true);
}

void SplineDesk::Btn_Delete_Click() {
  if (row_ <= 1 || row_ >= Rows()) return;
  port_->HideCellEditor();
  points_.Remove(row_ - 1);
  Changed();
  port_->ShowRow();
}

void SplineDesk::Btn_AllClear_Click() {
  port_->HideCellEditor();
  Spline_AllClear();
  InitSplineData();
  row_ = std::min(row_, Rows() + 1);
  Changed();
  port_->ShowRow();
}

std::int32_t SplineDesk::Interpolate(Kind kind, const SplinePoints& points, std::int32_t buffer) const {
  const Scope& range = buffers_.CurrentScope();
  const std::int32_t size = settings_.MemorySize;
  const auto count = static_cast<std::int32_t>(points.SplineCount);
  const double* x = points.SplineX.data();
  const double* y = points.SplineY.data();
  if (kind == Kind::Linear) return Spline_Hokan_Line(buffer, range.Start, range.End, x, y, count, size, W_CODE_MAX);
  const bool whole = range.Start == 0 && range.End >= size;
  const std::int32_t periodic = whole ? SPLINE_PERIODIC_WHOLE : SPLINE_PERIODIC_SCOPE;
  return Spline_Hokan_Spline(kind == Kind::Spline ? SPLINE_NATURAL : periodic, buffer, range.Start, range.End, x, y,
                             count, size, W_CODE_MAX);
}

void SplineDesk::Btn_Spline_Click(Kind kind) {
  port_->HideCellEditor();
  if (points_.SplineCount < 1) {
    messages_.ErrorBox(kMsgNoPoint);
    return;
  }
  buffers_.Save_Undo();
  undoKept_ = false;
  Interpolate(kind, points_, buffers_.Current());
  setup_.ForgetControlPoints();
  lastKind_ = kind;
  ghostShown_ = false;
  host_.WaveformChanged();
}

void SplineDesk::Menu_FileOpen_Click() {
  port_->HideCellEditor();
  if (!files_.Open_File(Kind_Table)) return;
  row_ = std::min(Rows() + 1, kRowLimit);
  Changed();
  port_->ShowRow();
}

void SplineDesk::Menu_FileSave_Click() {
  files_.Save_File(Kind_Table, false);
}

std::string SplineDesk::CountText() const {
  const std::string count = std::to_string(Rows());
  const std::string most = std::to_string(SplinePoints::kMost);
  return language_ == Language::English ? count + " of " + most + " points" : count + " / " + most + " 点";
}

} // namespace calder
