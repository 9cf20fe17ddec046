// The Compress/Decompress dialog's fits, boxes and ends, on a whole editor without a window.
#include "tools/elastic/Elastic.h"
#include "RecordingHost.h"
#include "editor/EditorFixture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iomanip>
#include <sstream>
#include <string>

namespace calder {
namespace {

struct ElasticTest : EditorFixture {
  static constexpr int kSize = 1000;

  void SetUp() override { Load({200, 300}); }
  // Point i holds i but for the ends of the area that are given.
  void Load(Scope range, int low = 200, int high = 299) {
    elastic.reset(); // it puts its waveform back
    Begin();
    SetPoints();
    program->settings.MemorySize = kSize;
    Ramp();
    const auto points = W_Lock(program->buffers.Current());
    points[200] = static_cast<std::int16_t>(low);
    points[299] = static_cast<std::int16_t>(high);
    before.assign(points.begin(), points.begin() + kSize);
    program->buffers.CurrentScope() = saved = range;
    host = {};
    elastic.emplace(program->buffers, program->settings, program->units, program->view, host);
    elastic->Form_Load();
  }
  // Gestures: "X0=150 Y2=100 L P A" with L, P, A the three buttons.
  void Do(const std::string& gestures) {
    for (std::size_t at = 0; at < gestures.size();) {
      const std::size_t end = std::min(gestures.find(' ', at), gestures.size());
      const std::string one = gestures.substr(at, end - at);
      at = end + 1;
      if (one == "L")
        elastic->Btn_Length_Click();
      else if (one == "P")
        elastic->Btn_Peak_Click();
      else if (one == "A")
        elastic->Btn_Ampl_Click();
      else if (one[0] == 'X')
        elastic->Text_X_LostFocus(one[1] - '0', one.substr(3));
      else
        elastic->Text_Y_LostFocus(one[1] - '0', one.substr(3));
    }
  }
  std::string Levels() const {
    const ElasticTarget& t = elastic->Target();
    std::string text;
    for (const double level : {t.NewMax, t.NewMin, t.NewAmp, t.NewOffs}) {
      std::ostringstream number;
      number << std::setprecision(10) << level << ' ';
      text += number.str();
    }
    return text;
  }
  std::string RangeText() {
    const Scope& scope = program->buffers.CurrentScope();
    return std::to_string(std::lround(scope.Start)) + ".." + std::to_string(std::lround(scope.End));
  }
  bool AsBefore() { return std::ranges::equal(before, W_Lock(program->buffers.Current()).first(kSize)); }

  RecordingHost host;
  Scope saved;
  std::vector<std::int16_t> before;
  std::optional<Elastic> elastic;
};

TEST_F(ElasticTest, GesturesReshapeTheSavedArea) {
  struct Row {
    const char *why, *gestures, *range, *levels;
    std::array<int, 4> points; // some places and the codes that they shall have
    std::array<int, 4> codes;
    int limited;
  };
  const Row rows[] = {
      {"squeezed, the rest is cleared",
       "X1=250",
       "200..250",
       "299 200 99 249.5 ",
       {200, 249, 250, 300},
       {200, 299, 0, 300},
       0},
      {"stretched over what stood there",
       "X1=400",
       "200..400",
       "299 200 99 249.5 ",
       {200, 399, 400, 199},
       {200, 299, 400, 199},
       0},
      {"moved", "X0=600 X1=700", "600..700", "299 200 99 249.5 ", {250, 600, 699, 700}, {0, 200, 299, 700}, 0},
      {"each version is made of the saved one",
       "X1=210 X1=300",
       "200..300",
       "299 200 99 249.5 ",
       {200, 250, 299, 300},
       {200, 250, 299, 300},
       0},
      {"an end before the start: X stays, the range is in order",
       "X1=100",
       "100..200",
       "299 200 99 249.5 ",
       {99, 100, 199, 250},
       {99, 200, 299, 250},
       0},
      {"over everything", "L", "0..1000", "299 200 99 249.5 ", {0, 500, 999, 998}, {200, 250, 299, 299}, 0},
      {"the maximum", "Y0=398", "200..300", "398 200 198 299 ", {200, 250, 299, 300}, {200, 300, 398, 300}, 0},
      {"the minimum", "Y1=101", "200..300", "299 101 198 200 ", {200, 250, 299, 300}, {101, 201, 299, 300}, 0},
      {"the amplitude", "Y2=198", "200..300", "348.5 150.5 198 249.5 ", {200, 299, 199, 300}, {150, 348, 199, 300}, 0},
      {"the offset", "Y3=0", "200..300", "49.5 -49.5 99 0 ", {200, 299, 199, 300}, {-50, 50, 199, 300}, 0},
      {"turned over", "Y2=-99", "200..300", "200 299 -99 249.5 ", {200, 299, 199, 300}, {299, 200, 199, 300}, 0},
      {"maximum and minimum alike: Y stays",
       "Y0=200",
       "200..300",
       "200 200 0 200 ",
       {200, 250, 299, 300},
       {200, 250, 299, 300},
       0},
      {"and the next version is flat",
       "Y0=200 X1=400",
       "200..400",
       "200 200 0 200 ",
       {200, 250, 399, 400},
       {200, 200, 200, 400},
       0},
      {"full scale", "P", "200..300", "32767 -32767 65534 0 ", {200, 299, 199, 300}, {-32767, 32767, 199, 300}, 0},
      {"full scale around the centre",
       "A",
       "200..300",
       "32767 -32268 65035 249.5 ",
       {200, 299, 199, 300},
       {-32268, 32767, 199, 300},
       0},
      {"limited",
       "Y2=100000",
       "200..300",
       "50249.5 -49750.5 100000 249.5 ",
       {200, 299, 199, 300},
       {-32767, 32767, 199, 300},
       35},
      {"no waveform has that",
       "Y3=100T",
       "200..300",
       "299 200 99 249.5 ",
       {200, 250, 299, 300},
       {200, 250, 299, 300},
       0},
      {"beyond the waveform",
       "X1=1001 X0=-1",
       "200..300",
       "299 200 99 249.5 ",
       {200, 250, 299, 300},
       {200, 250, 299, 300},
       0},
      {"its right end", "X1=1000", "200..1000", "299 200 99 249.5 ", {199, 200, 600, 999}, {199, 200, 250, 299}, 0},
  };
  for (const Row& row : rows) {
    SetUp();
    Do(row.gestures);
    EXPECT_EQ(RangeText(), row.range) << row.why;
    EXPECT_EQ(Levels(), row.levels) << row.why;
    for (std::size_t i = 0; i < row.points.size(); ++i)
      EXPECT_NEAR(Code(row.points[i]), row.codes[i], 1) << row.why << ", point " << row.points[i];
    EXPECT_EQ(elastic->Limited(), row.limited) << row.why;
    // Cancel, and the same with OK and Undo twice.
    elastic->Form_QueryUnload();
    EXPECT_TRUE(AsBefore() && program->buffers.CurrentScope() == saved) << row.why;
    EXPECT_TRUE(program->buffers.UndoDisabled()) << row.why;
    SetUp();
    Do(row.gestures);
    const std::int32_t changed = Code(row.points[0]);
    elastic->Btn_OK_Click();
    elastic->Form_QueryUnload();
    editor->Do(Command::Undo);
    EXPECT_TRUE(AsBefore() && program->buffers.CurrentScope() == saved) << row.why;
    editor->Do(Command::Undo);
    EXPECT_EQ(std::to_string(Code(row.points[0])) + RangeText(), std::to_string(changed) + row.range) << row.why;
  }
}

TEST_F(ElasticTest, FitAmplitudeTakesTheExtremeThatIsFarther) {
  const struct {
    int low, high;
    const char* levels; // of the saved area and after the button
  } rows[] = {{-1000, 500, "500 -1000 1500 -250 32267 -32767 65034 -250 "},
              {-500, 500, "500 -500 1000 0 32767 -32767 65534 0 "},
              {-501, 500, "500 -501 1001 -0.5 32766 -32767 65533 -0.5 "},
              {-32768, 500, "500 -32768 33268 -16134 499 -32767 33266 -16134 "}};
  for (const auto& row : rows) {
    Load({200, 300}, row.low, row.high);
    const std::string loaded = Levels();
    Do("A");
    EXPECT_EQ(loaded + Levels(), row.levels);
  }
}

// Nothing is rescaled there, and nothing goes wrong.
TEST_F(ElasticTest, AreasOfOnePointAndOfNone) {
  for (const Scope& range : {Scope{300, 300}, Scope{300, 301}, Scope{1000, 1000}}) {
    Load(range);
    Do("Y2=100 Y0=5 A P");
    EXPECT_TRUE(AsBefore()) << range.Start;
    Do("X0=299 X1=300.5 L X0=1000");
    elastic->Form_QueryUnload();
    EXPECT_TRUE(AsBefore()) << range.Start;
  }
}

TEST_F(ElasticTest, EndsAreDragged) {
  constexpr int width = 500;
  const struct {
    const char* why;
    int from, to;
    const char* range;
    int versions;
  } rows[] = {{"the start", 100, 50, "100..300", 1},
              {"the end", 151, 200, "200..400", 1},
              {"out of the picture", 150, 900, "200..1000", 1},
              {"beyond the start", 150, 50, "100..200", 1},
              {"nothing there", 125, 50, "200..300", 0},
              {"no way", 150, 150, "200..300", 0}};
  for (const auto& row : rows) {
    SetUp();
    EXPECT_EQ(elastic->Hover(row.from, width, 1), row.from != 125) << row.why;
    elastic->Press(row.from, width, 1);
    elastic->Move(row.to, width);
    elastic->Release();
    elastic->Move(0, width);
    EXPECT_EQ(RangeText(), row.range) << row.why;
    EXPECT_EQ(host.waveforms, row.versions) << row.why;
  }
  // One on the other: the end has room, but at the right edge the start.
  for (const double place : {500.0, 1000.0}) {
    Load({place, place});
    elastic->Press(place == 500 ? 250 : 499, width, 1);
    elastic->Move(300, width);
    EXPECT_EQ(RangeText(), place == 500 ? "500..600" : "600..1000");
  }
}

} // namespace
} // namespace calder
