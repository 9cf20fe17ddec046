// The Interpolate dialog's points, cells, buttons, tables and gestures, on a whole editor without a window.
#include "editor/EditorFixture.h"
#include "files/TableText.h"
#include "platform/TempFolder.h"
#include "tools/interpolate/SplineDesk.h"

#include <iterator>

namespace calder::interpolate_test {

using Column = SplineDesk::Column;
using Kind = SplineDesk::Kind;

struct RecordingSplinePort final : SplinePort {
  void ShowPoints() override {}
  void ShowRow() override {}
  void HideCellEditor() override {}
  void ShowRefusal(const std::string& text) override { refusal = text; }
  std::string refusal;
};

struct InterpolateTest : EditorFixture {
  static constexpr int kWidth = 1000;
  static constexpr int kHeight = 500;

  void SetUp() override {
    Begin();
    SetPoints();
    program->settings.MemorySize = 1000;
    editor->view.Init();
    program->buffers.ResetScopes();
    desk.emplace(*program, editor->view, editor->setup, editor->fileCommands, *editor);
    desk->SetPort(&port_);
    desk->Form_Load();
  }
  // "x,y x,y ..." in points and codes.
  std::string Points() {
    std::string text;
    for (int i = 0; i < desk->Rows(); ++i) {
      const SplinePoint point = program->spline.At(i);
      if (i > 0) text += ' ';
      text += std::to_string(std::lround(point.x)) + ',' + std::to_string(std::lround(point.y));
    }
    return text;
  }
  void SetTo(const std::string& table) {
    const TableContent content = ParseTable(table, program->units);
    program->spline.Replace(content.points, 1000);
  }
  // The picture's pixel of a point and a code: a point a column.
  static PicturePoint At(double x, double code) {
    return {static_cast<int>(x), static_cast<int>(std::lround((32767 - code) * kHeight / 65534)), kWidth, kHeight, 1};
  }
  void Mouse(const PicturePoint& at) { editor->MouseMove(at.x, at.y, at.width, at.height, 1, true); }
  void Press(const PicturePoint& at, Editor::PressKeys keys = Editor::PressKeys::None) {
    Mouse(at);
    editor->MousePress(at, keys);
  }
  void Drag(const PicturePoint& from, const PicturePoint& to, Editor::PressKeys keys = Editor::PressKeys::None) {
    Press(from, keys);
    Mouse(to);
    editor->MouseRelease(to);
  }

  RecordingSplinePort port_;
  std::optional<SplineDesk> desk;
};

TEST_F(InterpolateTest, CellsRefuseWhatWouldBreakTheList) {
  const struct {
    const char* what;
    int row;
    Column column;
    const char* text;
    bool taken;
    const char* points;
  } rows[] = {{"X between its neighbours", 2, Column::X, "250", true, "0,0 250,0 1000,0"},
              {"X of a neighbour", 2, Column::X, "1000", false, "0,0 500,0 1000,0"},
              {"X below its neighbour", 2, Column::X, "0", false, "0,0 500,0 1000,0"},
              {"X beyond the end", 2, Column::X, "2k", false, "0,0 500,0 1000,0"},
              {"the first X", 1, Column::X, "5", false, "0,0 500,0 1000,0"},
              {"Y with a prefix", 2, Column::Y, "1.5k", true, "0,0 500,1500 1000,0"},
              {"Y outside", 2, Column::Y, "40000", false, "0,0 500,0 1000,0"},
              {"the first Y is the last one's too", 1, Column::Y, "7", true, "0,7 500,0 1000,7"},
              {"the last row is not edited", 3, Column::Y, "7", false, "0,0 500,0 1000,0"},
              {"nor an empty one", 4, Column::X, "7", false, "0,0 500,0 1000,0"}};
  for (const auto& row : rows) {
    desk->Btn_AllClear_Click();
    port_.refusal.clear();
    EXPECT_EQ(desk->EditCell(row.row, row.column, row.text), row.taken) << row.what;
    EXPECT_EQ(Texts(Points(), port_.refusal.empty()), Texts(row.points, row.taken || row.row >= 3)) << row.what;
  }
}

TEST_F(InterpolateTest, PointsAreAddedChangedAndRemoved) {
  desk->GridRowSelect(2);
  desk->Btn_Insrt_Click();
  EXPECT_EQ(Texts(Points(), desk->CurrentRow()), "0,0 250,0 500,0 1000,0 2");
  EXPECT_TRUE(desk->Update_PointXY(250, 99, true));
  EXPECT_EQ(Points(), "0,0 250,99 500,0 1000,0") << "the X of a point changes that point";
  EXPECT_TRUE(desk->Update_PointXY(700, 5, false)) << "in place of the selected one";
  EXPECT_EQ(Points(), "0,0 500,0 700,5 1000,0");
  desktop.boxes.Expect("same X", BoxAnswer::No);
  EXPECT_FALSE(desk->Update_PointXY(1000, 9, true));
  EXPECT_EQ(Points(), "0,0 500,0 700,5 1000,0");
  desktop.boxes.Expect("same X", BoxAnswer::Yes);
  EXPECT_TRUE(desk->Update_PointXY(0, 9, true));
  EXPECT_EQ(Points(), "0,9 500,0 700,5 1000,9");
  for (const int row : {1, 4, 5}) {
    desk->GridRowSelect(row);
    desk->Btn_Delete_Click();
    EXPECT_EQ(desk->Rows(), 4) << row;
  }
  desk->GridRowSelect(3);
  desk->Btn_Delete_Click();
  EXPECT_EQ(Points(), "0,9 500,0 1000,9");
  // A smaller memory cuts points and closes the list again at the next opening.
  program->settings.MemorySize = 400;
  desk->Form_Load();
  EXPECT_EQ(Points(), "0,9 400,9");
  program->settings.MemorySize = 524288;
  desk->Form_Load();
  for (int i = 2; desk->Rows() < SplinePoints::kMost; ++i) ASSERT_TRUE(desk->Spline_Update(i * 3, 0, true));
  EXPECT_FALSE(desk->Spline_Update(1, 0, true));
  EXPECT_EQ(port_.refusal, "There is room for 10001 points.");
}

TEST_F(InterpolateTest, InterpolatesTheRangeAndUndoBringsItBack) {
  SetTo("0 0\r\n250 1000\r\n500 0\r\n750 -1000\r\n");
  const std::tuple<Kind, Scope, double, int> rows[] = {
      {Kind::Linear, {0, 1000}, 125, 500},
      {Kind::Spline, {0, 1000}, 125, 688},     // natural: no curvature at the ends
      {Kind::Continuous, {0, 1000}, 125, 688}, // a sine has none there either
      {Kind::Continuous, {250, 750}, 260, 891}};
  for (const auto& [kind, scope, point, code] : rows) {
    Ramp();
    program->buffers.CurrentScope() = scope;
    desk->Btn_Spline_Click(kind);
    EXPECT_NEAR(Code(point), code, kind == Kind::Continuous && scope.Start > 0 ? 120 : 1);
    EXPECT_EQ(Code(100) == 100, scope.Start > 0) << "outside of the range";
    editor->Do(Command::Undo);
    EXPECT_EQ(Code(point), point);
    editor->Do(Command::Undo);
    EXPECT_NE(Code(point), point);
  }
  desk->Spline_AllClear();
  desktop.boxes.Expect("No Spline point.");
  desk->Btn_Spline_Click(Kind::Linear);
}

TEST_F(InterpolateTest, GesturesPickMoveAndPlace) {
  using Keys = Editor::PressKeys;
  Ramp();
  SetTo("0 0\r\n300 10000\r\n600 -10000\r\n");
  Drag(At(300, 10000), At(350, 20000));
  EXPECT_EQ(Texts(program->spline.At(1).x, desk->CurrentRow()), "350 2");
  EXPECT_NEAR(program->spline.At(1).y, 20000, 70);
  EXPECT_NEAR(Code(175), 10000, 70) << "straight lines through the points";
  editor->Do(Command::Undo);
  EXPECT_EQ(Code(175), 175) << "the waveform before the gesture";
  Drag(At(100, -5000), At(120, -5000), Keys::Ctrl);
  EXPECT_EQ(Texts(desk->Rows(), program->spline.At(1).x), "5 120");
  desktop.boxes.Expect("same X", BoxAnswer::No);
  Drag(At(600, -10000), {1200, 700, kWidth, kHeight, 1});
  EXPECT_EQ(desk->Rows(), 5) << "the right edge is the end point's";
  SetTo("0 0\r\n300 10000\r\n600 -10000\r\n");
  const std::string before = Points();
  Drag(At(450, 0), At(460, 1000));
  EXPECT_EQ(Texts(Points(), desk->CurrentRow()), before + " 5") << "nothing was picked: the row after the last point";
  Drag(At(300, 10000), At(320, 0), Keys::Other);
  EXPECT_EQ(Points(), before);
  EXPECT_EQ(desk->PointerAt(At(301, 10000)), PictureTool::Pointer::Hand);
  EXPECT_EQ(desk->PointerAt(At(303, 10000)), PictureTool::Pointer::Cross);
  editor->BackspaceKey();
  EXPECT_EQ(Points(), before) << "no point is selected";
  Press(At(301, 10000));
  editor->MouseRelease(At(301, 10000));
  EXPECT_EQ(Points(), before) << "a press alone moves nothing";
  editor->BackspaceKey();
  EXPECT_EQ(desk->Rows(), 3);
  // The ends keep their X and have one Y.
  desktop.boxes.Expect("same X", BoxAnswer::Yes);
  Press(At(0, 0));
  Mouse(At(200, 8000));
  EXPECT_NEAR(Code(300), -1000, 70) << "the lines follow the drag";
  editor->MouseRelease(At(200, 8000));
  EXPECT_EQ(program->spline.At(0).x, 0);
  EXPECT_NEAR(program->spline.At(0).y, 8000, 70);
  EXPECT_EQ(program->spline.At(2).y, program->spline.At(0).y);
  desk->Form_QueryUnload();
  Drag(At(600, -10000), At(500, -10000));
  EXPECT_EQ(program->spline.At(1).x, 600) << "closed";
}

TEST_F(InterpolateTest, TablesAreReadAndWritten) {
  constexpr auto kNo = BoxAnswer::No;
  const std::tuple<const char*, std::string, const char*, const char*, BoxAnswer> rows[] = {
      {"blanks", "0 0\r\n500 1.0k\r\n", "0,0 500,1000 1000,0", "", kNo},
      {"tabs, commas and blanks at once, the last line without an end", " 0 ,\t5\r500,-7", "0,5 500,-7 1000,5", "",
       kNo},
      {"a spreadsheet's byte order mark",
       "\xEF\xBB\xBF"
       "0,1\r\n1000,1\r\n",
       "0,1 1000,1", "", kNo},
      {"the ends take the first Y", "1000 9\r\n0 3\r\n", "0,3 1000,3", "", kNo},
      {"a start at 0 is added", "10 4\r\n", "0,4 10,4 1000,4", "", kNo},
      {"the later one of two on an X", "10 4\r\n10 6\r\n", "0,6 10,6 1000,6", "", kNo},
      {"limited to the ranges", "0 40000\r\n2000 1\r\n", "0,32767 1000,32767", "", kNo},
      {"words are 0", "abc def\r\n", "0,0 1000,0", "", kNo},
      {"a number without a partner", "0,0,5", "0,0 1000,0", "Line 1", kNo},
      {"no number on line 3", "0 1\r\n10 2\r\n,3\r\n20 4\r\n", "0,1 10,2 1000,1", "Line 3", kNo},
      {"line feeds alone end nothing", "0 1\n2 3\r\n", "0,12 1000,12", "Line 2", kNo},
      {"so it is asked first", "0,1\n10,2\n20,3\n", "0,1 10,2 20,3 1000,1", "end in line feeds alone", BoxAnswer::Yes},
      {"and read to the letter", "0,1\n10,2\n20,3\n", "0,110 220,3 1000,110", "end in line feeds alone", kNo},
      {"nothing", "", "", "", kNo}};
  const TempFolder folder;
  for (const auto& [what, text, points, message, answer] : rows) {
    const std::string path = folder / "t.prn";
    std::ofstream(path, std::ios::binary) << text;
    desktop.dialogs.Answer(path);
    if (*message != '\0') desktop.boxes.Expect(message, answer);
    desk->Menu_FileOpen_Click();
    EXPECT_EQ(Points(), points) << what;
  }
  desktop.dialogs.Answer(folder / "none.prn");
  desktop.boxes.Expect("File Read error.");
  SetTo("0 5\r\n500 -7\r\n");
  desk->Menu_FileOpen_Click();
  EXPECT_EQ(Points(), "0,5 500,-7 1000,5");
  for (const auto& [name, separator] : {std::pair{"t.csv", ','}, {"t.TSV", '\t'}, {"t.prn", ' '}}) {
    desktop.dialogs.Answer(folder / name);
    desk->Menu_FileSave_Click();
    std::ifstream file(folder / name, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    std::string wanted;
    for (const SplinePoint& point : {SplinePoint{0, 5}, {500, -7}, {1000, 5}})
      wanted += program->units.PointToXTextWide(point.x) + separator + program->units.CodeToYText(point.y) + "\r\n";
    EXPECT_EQ(text, wanted) << name;
  }
}

} // namespace calder::interpolate_test
