// The Operate dialog's operand, results and lines, on a whole editor without a window.
#include "tools/operate/Operate.h"
#include "editor/EditorFixture.h"
#include "libs/file32/file32.h"
#include "platform/PixelContext.h"
#include "platform/WaveformTheme.h"

namespace calder::operate_test {

struct OperateTest : EditorFixture {
  static constexpr int kSize = 1000;

  void SetUp() override {
    Begin();
    SetPoints();
    program->settings.MemorySize = kSize;
    program->buffers.CurrentScope() = {100, 110};
  }
  // The selected area's codes are `code`, those of the clipboard as many as given.
  void Fill(int code, const std::vector<std::int16_t>& clipboard) {
    const auto points = W_Lock(program->buffers.Current()).first(kSize);
    std::ranges::copy(clipboard, points.begin());
    if (!clipboard.empty()) {
      ASSERT_EQ(program->fileLibrary.SetClipBoard(program->desktop.clipboard, program->buffers.Current(), 0,
                                                  static_cast<std::int32_t>(clipboard.size())),
                0);
    }
    std::ranges::fill(points, static_cast<std::int16_t>(code));
  }
  bool Open() {
    operate.emplace(program->buffers, program->settings, program->units, program->fileLibrary,
                    program->desktop.clipboard, program->messages);
    return operate->Open();
  }
  // The waveform's codes from point `first` on.
  std::string Written(int first, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += std::to_string(Code(first + i)) + " ";
    return text;
  }
  std::optional<Operate> operate;
};

TEST_F(OperateTest, TheFirmResultIsWritten) {
  // gestures: c clipboard, + - * / the operator, = the button
  using Row = std::tuple<const char*, std::vector<std::int16_t>, std::string, const char*, const char*, const char*>;
  const Row rows[] = {
      {"zeros before the first press", {7, 8, 9}, "c", "0 0 0 0 ", "no point limited", "OK writes the bright"},
      {"the clipboard is shorter: 0 after it", {7, 8, 9}, "c=", "107 108 109 100 ", "no point limited", ""},
      {"a later operator is not firm",
       {7, 8, 9},
       "c=-",
       "107 108 109 100 ",
       "no point limited",
       "OK writes the bright"},
      {"until it is pressed", {7, 8, 9}, "c=-=", "93 92 91 100 ", "no point limited", ""},
      {"the way back needs no press", {7, 8, 9}, "c=-+", "107 108 109 100 ", "no point limited", ""},
      {"limited", {400, -400, 3, 0}, "c*=", "32767 -32767 300 0 ", "limited: 2 points, divided by 0: 0 points", ""},
      {"by 0", {50, 0, -50, 1}, "c/=", "2 32767 -2 100 ", "limited: 0 points, divided by 0: 7 points", ""},
      {"the new one is limited", {400, 0, 0, 0}, "c=*", "500 100 100 100 ", "no point limited", "(limited: 1 points"},
      {"longer than the area", std::vector<std::int16_t>(50, 1), "c=", "101 101 101 101 ", "no point limited", ""}};
  for (const auto& [why, clipboard, gestures, written, firm, thePending] : rows) {
    SetUp();
    Fill(100, clipboard);
    ASSERT_TRUE(Open());
    for (const char gesture : gestures) {
      if (gesture == 'c')
        operate->Btn_Cut_Click();
      else if (gesture == '=')
        operate->Btn_Result_Click();
      else
        operate->Comb_Comp_Click(static_cast<int>(std::string("+-*/").find(gesture)));
    }
    EXPECT_EQ(operate->FirmText(), firm) << why;
    const std::string pending = thePending;
    EXPECT_TRUE(pending.empty() ? operate->PendingText().empty()
                                : operate->PendingText().find(pending) != std::string::npos)
        << why << ": " << operate->PendingText();
    operate->Btn_OK_Click();
    EXPECT_EQ(Written(100, 4), written) << why;
    EXPECT_EQ(Written(99, 1) + Written(110, 1), "100 100 ") << why << ": outside of the area";
    const std::string after = Written(0, kSize);
    editor->Do(Command::Undo);
    EXPECT_EQ(Written(100, 4), "100 100 100 100 ") << why;
    editor->Do(Command::Undo);
    EXPECT_EQ(Written(0, kSize), after) << why;
  }
}

// The area begins at the next whole point, the result is written from the nearest one.
TEST_F(OperateTest, FractionsOfPoints) {
  // first, count: what is written
  const std::tuple<double, double, int, int> rows[] = {{10.5, 14.5, 10, 4},   {11.5, 14.5, 12, 3}, {10.4, 12.4, 10, 2},
                                                       {10.6, 1000, 11, 989}, {999, 1000, 999, 1}, {0, 1000, 0, 1000},
                                                       {10.2, 10.3, 10, 1}};
  for (const auto& [start, end, first, count] : rows) {
    Fill(100, {});
    program->buffers.CurrentScope() = {start, end};
    ASSERT_TRUE(Open());
    operate->Btn_OK_Click();
    std::string expected;
    for (int i = 0; i < kSize; ++i) expected += i >= first && i < first + count ? "0 " : "100 ";
    EXPECT_EQ(Written(0, kSize), expected) << start << " " << end;
  }
  for (const Scope& none : {Scope{500, 500}, Scope{1000, 1000}, Scope{999.5, 1000}}) {
    program->buffers.CurrentScope() = none;
    desktop.boxes.Expect("The selected area holds no point.");
    EXPECT_FALSE(Open()) << none.Start;
  }
}

TEST_F(OperateTest, TheUnitIsTheScale) {
  const std::tuple<std::int16_t, double, double, const char*, const char*> rows[] = {
      {kYCodes, 1, 0, "in codes: 1 * 1 = 1", "20000 "},
      {kYUser, 1, 0, "in user units: 1 * 1 = 1", "1 "},
      {kYVolts, 2, 0, "in V: 1 * 1 = 1 V", "1 "},
      {kYVolts, 20, 0, "in V: 1 * 1 = 1 V", "6 "}};
  for (const auto& [unit, amplitude, offset, scale, product] : rows) {
    Fill(100, std::vector<std::int16_t>(10, 200));
    program->settings.YUnit = unit;
    program->settings.Amplitude = amplitude;
    program->settings.YUserName = "        ";
    ASSERT_TRUE(Open());
    operate->Btn_Cut_Click();
    operate->Comb_Comp_Click(2);
    operate->Btn_Result_Click();
    EXPECT_EQ(operate->ScaleText(), scale);
    operate->Btn_OK_Click();
    EXPECT_EQ(Written(100, 1), product) << scale << " " << amplitude;
  }
  program->settings.Amplitude = 0;
  program->settings.YUnit = kYVolts;
  ASSERT_TRUE(Open());
  EXPECT_TRUE(operate->PendingText().starts_with("In this unit the full scale has no width"));
  desktop.boxes.Expect("In this unit the full scale has no width");
  operate->Btn_Result_Click();
}

TEST_F(OperateTest, AFailedPasteLeavesTheOperand) {
  Fill(100, {5, 5});
  ASSERT_TRUE(Open());
  operate->Btn_Cut_Click();
  EXPECT_EQ(operate->OperandText(), "clipboard 2 of 10 points");
  const auto copied = std::exchange(desktop.clipboard.source, nullptr);
  desktop.boxes.Expect("ClipBoard");
  operate->Btn_Cut_Click();
  EXPECT_EQ(W_GetWaveData(operate->Operand(), 1, 10), 5);
  std::ranges::fill(W_Lock(operate->Operand()), std::int16_t{30});
  operate->OperandCreated();
  EXPECT_EQ(operate->OperandText(), "created waveform, 10 points");
  EXPECT_EQ(operate->ValueText(Operate::Picture::Operand, 50, 100), "X 105.0000, Y 30.00000");
  EXPECT_EQ(operate->ValueText(Operate::Picture::Source, 99, 100), "X 109.0000, Y 100.0000");
  EXPECT_EQ(operate->ValueText(Operate::Picture::Result, 0, 100), "X 100.0000, Y 0.000000 (= 130.0000)");
  EXPECT_EQ(operate->ValueText(Operate::Picture::Result, 100, 100), "");
  desktop.clipboard.source = copied;
  operate->Btn_Cut_Click();
  EXPECT_EQ(W_GetWaveData(operate->Operand(), 2, 10), 0) << "nothing of the created waveform is left";
}

// Where the result stands, red; elsewhere not.
TEST_F(OperateTest, MarksStandAtTheirCodes) {
  constexpr int width = 40;
  constexpr int height = 100;
  std::vector<std::uint32_t> pixels(width * height, 0);
  PixelContext picture(pixels, width, width, height);
  std::vector<std::int16_t> codes(400, 0);
  std::vector<std::uint8_t> marks(400, CALC_SOUND);
  const std::tuple<int, int, CalcMark> faults[] = {
      {15, 32767, CALC_LIMITED}, {17, -32767, CALC_LIMITED}, {399, 0, CALC_BY_ZERO}, {200, 32767, CALC_SOUND}};
  for (const auto& [point, code, mark] : faults) {
    codes[static_cast<std::size_t>(point)] = static_cast<std::int16_t>(code);
    marks[static_cast<std::size_t>(point)] = mark;
  }
  DrawFaultMarks(picture, codes, marks);
  std::string red;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      if ((pixels[static_cast<std::size_t>(y * width + x)] & 0xFFFFFF) == theme::kFault)
        red += std::to_string(x) + "," + std::to_string(y) + " ";
  EXPECT_EQ(red, "1,0 1,1 1,2 1,3 39,47 39,48 39,49 39,50 1,96 1,97 1,98 1,99 ");
}

} // namespace calder::operate_test
