// The Compress/Decompress dialog's fits, boxes and ends, on a whole editor without a window.
#include "tools/elastic/Elastic.h"
#include "RecordingHost.h"
#include "editor/EditorFixture.h"

namespace calder::elastic_test {

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
    std::istringstream words(gestures);
    for (std::string one; words >> one;) {
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
    return Texts(t.NewMax, t.NewMin, t.NewAmp, t.NewOffs);
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
    const char *why, *gestures, *range, *levels, *codes; // of some points
    int limited = 0;
  };
  const Row rows[] = {
      {"squeezed, the rest is cleared", "X1=250", "200..250", "299 200 99 249.5", "200:200 249:299 250:0 300:300"},
      {"stretched over what stood there", "X1=400", "200..400", "299 200 99 249.5", "200:200 399:299 400:400 199:199"},
      {"moved", "X0=600 X1=700", "600..700", "299 200 99 249.5", "250:0 600:200 699:299 700:700"},
      {"each version is made of the saved one", "X1=210 X1=300", "200..300", "299 200 99 249.5",
       "200:200 250:250 299:299 300:300"},
      {"an end before the start: X stays, the range is in order", "X1=100", "100..200", "299 200 99 249.5",
       "99:99 100:200 199:299 250:250"},
      {"over everything", "L", "0..1000", "299 200 99 249.5", "0:200 500:250 999:299 998:299"},
      {"the maximum", "Y0=398", "200..300", "398 200 198 299", "200:200 250:300 299:398 300:300"},
      {"the minimum", "Y1=101", "200..300", "299 101 198 200", "200:101 250:201 299:299 300:300"},
      {"the amplitude", "Y2=198", "200..300", "348.5 150.5 198 249.5", "200:150 299:348 199:199 300:300"},
      {"the offset", "Y3=0", "200..300", "49.5 -49.5 99 0", "200:-50 299:50 199:199 300:300"},
      {"turned over", "Y2=-99", "200..300", "200 299 -99 249.5", "200:299 299:200 199:199 300:300"},
      {"maximum and minimum alike: Y stays", "Y0=200", "200..300", "200 200 0 200", "200:200 250:250 299:299 300:300"},
      {"and the next version is flat", "Y0=200 X1=400", "200..400", "200 200 0 200", "200:200 250:200 399:200 400:400"},
      {"full scale", "P", "200..300", "32767 -32767 65534 0", "200:-32767 299:32767 199:199 300:300"},
      {"full scale around the centre", "A", "200..300", "32767 -32268 65035 249.5",
       "200:-32268 299:32767 199:199 300:300"},
      {"limited", "Y2=100000", "200..300", "50249.5 -49750.5 100000 249.5", "200:-32767 299:32767 199:199 300:300", 35},
      {"no waveform has that", "Y3=100T", "200..300", "299 200 99 249.5", "200:200 250:250 299:299 300:300"},
      {"beyond the waveform", "X1=1001 X0=-1", "200..300", "299 200 99 249.5", "200:200 250:250 299:299 300:300"},
      {"its right end", "X1=1000", "200..1000", "299 200 99 249.5", "199:199 200:200 600:250 999:299"}};
  for (const Row& row : rows) {
    SetUp();
    Do(row.gestures);
    EXPECT_EQ(Texts(RangeText(), Levels()), Texts(row.range, row.levels)) << row.why;
    std::istringstream codes(row.codes);
    int point = 0;
    int code = 0;
    for (char colon = 0; codes >> point >> colon >> code;) EXPECT_NEAR(Code(point), code, 1) << row.why << " " << point;
    EXPECT_EQ(elastic->Limited(), row.limited) << row.why;
    // Cancel, and the same with OK and Undo twice.
    elastic->Form_QueryUnload();
    EXPECT_TRUE(AsBefore() && program->buffers.CurrentScope() == saved) << row.why;
    EXPECT_TRUE(program->buffers.UndoDisabled()) << row.why;
    SetUp();
    Do(row.gestures);
    const std::int32_t changed = Code(std::stoi(row.codes));
    elastic->Btn_OK_Click();
    elastic->Form_QueryUnload();
    editor->Do(Command::Undo);
    EXPECT_TRUE(AsBefore() && program->buffers.CurrentScope() == saved) << row.why;
    editor->Do(Command::Undo);
    EXPECT_EQ(std::to_string(Code(std::stoi(row.codes))) + RangeText(), std::to_string(changed) + row.range) << row.why;
  }
}

TEST_F(ElasticTest, FitAmplitudeTakesTheExtremeThatIsFarther) {
  // levels: of the saved area and after the button
  const std::tuple<int, int, const char*> rows[] = {{-1000, 500, "500 -1000 1500 -250 32267 -32767 65034 -250"},
                                                    {-500, 500, "500 -500 1000 0 32767 -32767 65534 0"},
                                                    {-501, 500, "500 -501 1001 -0.5 32766 -32767 65533 -0.5"},
                                                    {-32768, 500, "500 -32768 33268 -16134 499 -32767 33266 -16134"}};
  for (const auto& [low, high, levels] : rows) {
    Load({200, 300}, low, high);
    const std::string loaded = Levels();
    Do("A");
    EXPECT_EQ(Texts(loaded, Levels()), levels);
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
  const std::tuple<const char*, int, int, const char*, int> rows[] = {{"the start", 100, 50, "100..300", 1},
                                                                      {"the end", 151, 200, "200..400", 1},
                                                                      {"out of the picture", 150, 900, "200..1000", 1},
                                                                      {"beyond the start", 150, 50, "100..200", 1},
                                                                      {"nothing there", 125, 50, "200..300", 0},
                                                                      {"no way", 150, 150, "200..300", 0}};
  for (const auto& [why, from, to, range, versions] : rows) {
    SetUp();
    EXPECT_EQ(elastic->Hover(from, width, 1), from != 125) << why;
    elastic->Press(from, width, 1);
    elastic->Move(to, width);
    elastic->Release();
    elastic->Move(0, width);
    EXPECT_EQ(Texts(RangeText(), host.waveforms), Texts(range, versions)) << why;
  }
  // One on the other: the end has room, but at the right edge the start.
  for (const double place : {500.0, 1000.0}) {
    Load({place, place});
    elastic->Press(place == 500 ? 250 : 499, width, 1);
    elastic->Move(300, width);
    EXPECT_EQ(RangeText(), place == 500 ? "500..600" : "600..1000");
  }
}

} // namespace calder::elastic_test
