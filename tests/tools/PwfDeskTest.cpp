#include "tools/PwfFixture.h"

#include "RecordingContext.h"
#include "libs/eval32/eval32.h"

namespace calder::pwf_desk_test {

constexpr const char* kRamps = "Ramp\"a|0|1|0.1|0.5|b|-2|2|0.01|0\"c=1\"a*x*c+b\"0\r\n"
                               "Root\"p|0|1|0.1|0.5\"\"1/p*x\"1\r\n";

struct PwfDeskTest : PwfFixture {};

TEST_F(PwfDeskTest, OpeningSetsTheUnitsAndSaysSo) {
  const std::tuple<const char*, int, int, double, double, std::vector<const char*>> rows[] = {
      {"as they have to be", kXUser, kYUser, 1, -1, {}},
      {"X in seconds", kXSeconds, kYUser, 1, -1, {"The unit of an axis"}},
      {"Y in codes", kXUser, kYCodes, 1, -1, {"The unit of an axis"}},
      {"X range", kXUser, kYUser, 2, -1, {"The range of an axis"}},
      {"Y range and both units", kXPoints, kYVolts, 1, 0, {"The unit of an axis", "The range of an axis"}}};
  for (const auto& [why, xUnit, yUnit, xMax, yMin, said] : rows) {
    SystemInfo& settings = program->settings;
    settings.XUnit = static_cast<std::int16_t>(xUnit);
    settings.YUnit = static_cast<std::int16_t>(yUnit);
    settings.XUserMax = xMax;
    settings.YUserMin = yMin;
    const int before = host.waveforms;
    for (const char* text : said) desktop.boxes.Expect(text);
    desk->Form_Load();
    EXPECT_EQ(host.waveforms - before, static_cast<int>(said.size())) << why << ": the main window is drawn";
    EXPECT_TRUE(settings.XUnit == kXUser && settings.YUnit == kYUser) << why;
    EXPECT_EQ(settings.XUserMax + settings.YUserMin, 0) << why;
  }
  EXPECT_EQ(desktop.boxes.shown.back().title, "Calder");
}

TEST_F(PwfDeskTest, TypedTextsAreTakenRoundedOrRefused) {
  Open(kRamps);
  const std::tuple<const char*, const char*, double, bool> rows[] = {
      {"0.27", "0.3", 0.3, true}, {" 1e-1 ", "0.1", 0.1, true}, {"5", "1", 0.5, false},
      {"-0.1", "0", 0.5, false},  {"half", "half", 0.5, false}, {"", "", 0.5, false},
      {"0.5", "0.5", 0.5, true},  {"500m", "500m", 0.5, false}};
  for (const auto& [typed, shown, stored, accepted] : rows) {
    desk->Restore(0);
    pwfPort.previews = 0;
    EXPECT_EQ(desk->Text_Validate(0, typed), accepted) << typed;
    EXPECT_EQ(Texts(desk->ParameterText(0), desk->Function().Params[0].Value, desk->IsRefused(0), pwfPort.previews > 0),
              Texts(shown, stored, !accepted, accepted))
        << typed;
  }
  EXPECT_EQ(desk->LimitsText(0), "0 to 1");
  // What is no number stops an OK; a limit that took a refused text's place is computed with.
  desk->Text_Validate(0, "half");
  desk->Btn_OK_Click();
  EXPECT_EQ(pwfPort.closes, 0);
  desk->Text_Validate(0, "5");
  desk->Btn_OK_Click();
  EXPECT_EQ(Texts(pwfPort.closes, Code(500)), "1 16384") << "half of the scale: a is 1";
}

TEST_F(PwfDeskTest, ScrollBarsMoveTheirParameterInItsSteps) {
  Open(kRamps);
  EXPECT_EQ(desk->ScrollPosition(0), 5);
  desk->HScroll1_Change(7);
  EXPECT_EQ(desk->ParameterText(0), "0.7");
  desk->Comb_PrmSel_Click(1);
  desk->HScroll1_Change(-150);
  EXPECT_EQ(Texts(desk->ParameterText(1), Generated(0)), "-1.50 -32767");
  desk->Slider_Change(0, 10);
  EXPECT_EQ(desk->ParameterChoice(), 0) << "the slim one chooses its parameter";
  EXPECT_EQ(desk->Function().Params[0].Value, 1);
  desk->Text_Validate(1, "0");
  EXPECT_EQ(Generated(2048), 16384);
  desk->Restore(0);
  EXPECT_EQ(desk->ParameterText(0), "0.5");
  area = {0, 2000};
  desk->Btn_Cancel_Click();
  desk->Form_QueryUnload();
  EXPECT_EQ(Texts(Generated(1999), Generated(2048)), "0 8192") << "cleared over the length of Create's page";
  double value = 0;
  EXPECT_NE(program->evaluator.EvalOneL("c", 0, value), 0) << "the constants are forgotten";
}

TEST_F(PwfDeskTest, WhatCannotBeComputedBringsItsMessageAndWritesNothing) {
  Open(kRamps);
  Ramp();
  desk->Comb_Wave_Click(1);
  const std::int32_t before = Generated(4000);
  desktop.boxes.Expect("Divide by 0");
  desk->Text_Validate(0, "0");
  EXPECT_EQ(Texts(pwfPort.fault.message, Generated(4000)), Texts(104, before)) << "the preview stays";
  desktop.boxes.Expect("Divide by 0");
  desk->Btn_OK_Click();
  EXPECT_EQ(Texts(pwfPort.closes, Code(500), editor->commands.CanUndo()), "0 500 true") << "the step was recorded";
  desk->Comb_Wave_Click(2);
  EXPECT_EQ(desk->IsWaveIdx(), 1) << "there is no such function";
}

TEST_F(PwfDeskTest, AnOkWritesTheWholeWaveformWhichUndoTakesBackAndGivesAgain) {
  // kept: points before the first that is written
  const std::tuple<const char*, double, int> rows[] = {
      {"whole", 0, 0}, {"from the start of Create's page", 99.5, 100}, {"beyond the end", 5000, 1000}};
  for (const auto& [why, start, kept] : rows) {
    area = {start, start + 10};
    Open(kRamps);
    Ramp();
    desk->Text_Validate(0, "1");
    EXPECT_EQ(Code(999), 999) << "nothing before OK";
    EXPECT_EQ(desk->AreaNote().empty(), start == 0) << why;
    program->settings.TransferFormat = 1;
    desk->Btn_OK_Click();
    desk->Form_QueryUnload();
    EXPECT_EQ(program->settings.TransferFormat, 0) << "the control points are of the former waveform";
    for (int undo = 0; undo < 2; ++undo) {
      for (const int point : {0, 99, 100, 500, 999})
        EXPECT_EQ(Code(point), point < kept ? point : std::nearbyint(point * 32.767)) << why << " " << point;
      editor->Do(Command::Undo);
      EXPECT_EQ(Code(999), 999) << why;
      editor->Do(Command::Undo);
    }
  }
}

TEST_F(PwfDeskTest, FunctionTwentyReachesFullScaleAndZerosStay) {
  std::string definitions;
  for (int k = 0; k <= 20; ++k)
    definitions +=
        "F" + std::to_string(k) + "\"p|-1|1|0.1|0.5|q|0|1|1|0\"\"(p*x-q)/" + (k == 20 ? "Ypk" : "2") + "\"0\n";
  Open(definitions);
  desk->Comb_Wave_Click(19);
  EXPECT_EQ(Generated(4095), 8190);
  desk->Comb_Wave_Click(20);
  EXPECT_EQ(Texts(Generated(4095), Generated(2048)), "32767 16388") << "of the rounded codes";
  desk->Text_Validate(0, "-1");
  EXPECT_EQ(Generated(4095), -32767);
  desk->Text_Validate(0, "0");
  EXPECT_EQ(Generated(4095), 0);
  desk->Text_Validate(0, "0.4");
  desk->Btn_OK_Click();
  EXPECT_EQ(Code(999), 32767);
}

// The folders that are read have the models, but for the data folder.
struct PwfWithoutFileTest : PwfFixture {
  PwfWithoutFileTest() { std::filesystem::create_symlink(CALDER_SOURCE_DIR "/data/USBTMC.ID", folder / "USBTMC.ID"); }
  void SetUp() override {
    desktop.folders.read = {CALDER_SOURCE_DIR};
    PwfFixture::SetUp();
  }
};

TEST_F(PwfWithoutFileTest, TheListIsEmptyAndTheNoteSaysWhereItLooked) {
  desk->Form_Load();
  ASSERT_EQ(desk->Notes().size(), 1U);
  EXPECT_EQ(desk->Notes()[0], "pwf.fnc was not found in: " + folder.Path().string() + ", " CALDER_SOURCE_DIR);
  EXPECT_FALSE(desk->Function().IsDefined());
  Ramp();
  desk->Btn_OK_Click();
  EXPECT_EQ(Texts(Code(500), pwfPort.closes, pwfPort.lists), "500 0 1");
}

TEST_F(PwfDeskTest, ParameterFilesGoThroughTheFileMenu) {
  Open(kRamps);
  desk->Comb_Wave_Click(1);
  desk->Text_Validate(0, "0.8");
  desktop.dialogs.Answer(folder / "a.pwf");
  desk->Menu_FileSave_Click();
  EXPECT_EQ(program->names.LastPwfFile, folder / "a.pwf");
  desk->Form_Load();
  EXPECT_EQ(Texts(desk->IsWaveIdx(), program->functions[1].Params[0].Value), "0 0.5") << "the file's values again";
  desktop.dialogs.Answer(folder / "a.pwf");
  desk->Menu_FileOpen_Click();
  EXPECT_EQ(Texts(desk->IsWaveIdx(), desk->ParameterText(0)), "1 0.8");
  PutFile(folder / "b.pwf", "'+++++++++++++++\n'+++++++++++++++\n1\nRoot\n7\n");
  desktop.dialogs.Answer(folder / "b.pwf");
  desk->Menu_FileOpen_Click();
  EXPECT_EQ(pwfPort.box, 0) << "a value outside of the limits is shown and asked for";
  EXPECT_EQ(desk->ParameterText(0), "7.0");
  PutFile(folder / "c.pwf", "'+++++++++++++++\n'+++++++++++++++\n1\nRamp\n");
  desktop.dialogs.Answer(folder / "c.pwf");
  desktop.boxes.Expect("File Read error.");
  desk->Menu_FileOpen_Click();
}

TEST_F(PwfDeskTest, TheFormerCurveStaysUnderTheNewOne) {
  Open(kRamps);
  const auto curves = [this] {
    RecordingContext picture(100, 100);
    desk->Draw_Wave_PWF(picture);
    return std::ranges::count_if(picture.calls, [](const std::string& call) { return call.starts_with("columns"); });
  };
  EXPECT_EQ(curves(), 1);
  desk->Text_Validate(0, "1");
  EXPECT_EQ(curves(), 2);
  desk->Scroll_Pressed();
  desk->HScroll1_Change(6);
  desk->HScroll1_Change(2);
  desk->Scroll_Released();
  RecordingContext picture(100, 100);
  desk->Draw_Wave_PWF(picture);
  const auto former =
      std::ranges::find_if(picture.calls, [](const std::string& call) { return call.starts_with("columns"); });
  const std::string dragged = *former;
  desk->Text_Validate(0, "1");
  desk->Text_Validate(0, "1");
  picture.calls.clear();
  desk->Draw_Wave_PWF(picture);
  EXPECT_NE(std::ranges::find(picture.calls, dragged), picture.calls.end()) << "a drag keeps what was before it";
  desk->Comb_Wave_Click(1);
  EXPECT_EQ(curves(), 1) << "another function has none";
  EXPECT_EQ(Texts(desk->PointerText(50, 100), desk->PointerText(100, 100)), "X 500.000m, Y 1.000000 ");
}

} // namespace calder::pwf_desk_test
