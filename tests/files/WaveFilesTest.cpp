#include "files/WaveFiles.h"
#include "editor/EditorFixture.h"
#include "platform/TempFolder.h"

namespace calder::wave_files_test {

struct WaveFilesTest : EditorFixture {
  void SetUp() override {
    Begin();
    Ramp();
  }
  [[nodiscard]] std::vector<std::int16_t> Points() {
    const auto points = W_Lock(program->buffers.Current());
    return {points.begin(), points.begin() + program->settings.MemorySize};
  }
  void SetMemory(std::int32_t points) {
    const auto& sizes = editor->setup.MemorySizes();
    const auto found = std::find(sizes.begin(), sizes.end(), std::to_string(points));
    ASSERT_NE(found, sizes.end()) << points;
    editor->setup.ChooseMemorySize(static_cast<int>(found - sizes.begin()));
    editor->setup.Accept();
  }
  TempFolder folder;
};

TEST_F(WaveFilesTest, AWdbFileBringsTheWaveformAndEverySettingBack) {
  SystemInfo& settings = program->settings;
  settings.Amplitude = 1.25;
  settings.Offset = -0.5;
  settings.Output = 2;
  settings.Polarity = 4;
  settings.MemoryName = "BURST 1";
  settings.XUserName = "deg";
  settings.XUnit = 2;
  settings.YUserMax = 3;
  settings.DefaultArbCommand = "PRE,SEND";
  const std::vector<std::int16_t> points = Points();
  ASSERT_TRUE(editor->waveFiles.Write_WaveFile(folder / "a.wdb"));
  const SystemInfo saved = settings;
  editor->setup.ChooseModel(1);
  settings.Amplitude = 2;
  settings.MemoryName.clear();
  program->interfaceKind = kNiGpib;
  W_ClearMemory(program->buffers.Current(), 0, W_MAX_POINTS);
  program->buffers.Save_Undo();
  ASSERT_TRUE(editor->waveFiles.Read_WaveFile(folder / "a.wdb"));
  EXPECT_EQ(Points(), points);
  EXPECT_EQ(settings, saved);
  EXPECT_EQ(program->interfaceKind, kUsbTmc);
  EXPECT_EQ(Texts(editor->setup.ModelChoice(), program->buffers.UndoDisabled(), program->names.CurrentWaveFile,
                  program->names.LastListFile),
            Texts(0, true, folder / "a.wdb", folder / "a"));
}

TEST_F(WaveFilesTest, AWdbFileCarriesTheControlPointsOfASimpleWaveform) {
  W_MakeTriangle(program->buffers.Current(), 0, 524288, 0, 60000, 3, 0, 50);
  ASSERT_TRUE(editor->waveFiles.Write_WaveFile(folder / "a.wdb"));
  EXPECT_EQ(program->settings.TransferFormat, 1);
  const auto count = static_cast<std::size_t>(program->settings.ControlPointCount);
  EXPECT_EQ(std::filesystem::file_size(folder / "a.wdb"), 352 + 1048576 + 6 * count);
  W_MakeNoise(program->buffers.Current(), 0, 524288, 0, 60000);
  ASSERT_TRUE(editor->waveFiles.Write_WaveFile(folder / "a.wdb"));
  EXPECT_EQ(program->settings.TransferFormat, 0);
  EXPECT_EQ(std::filesystem::file_size(folder / "a.wdb"), 352U + 1048576);
}

TEST_F(WaveFilesTest, OpeningAWdbFileOfAnotherSizeChangesTheMemoryAndTheView) {
  SetMemory(65536);
  ASSERT_TRUE(editor->waveFiles.Write_WaveFile(folder / "small.wdb"));
  SetMemory(524288);
  editor->view.ZoomX(3);
  program->buffers.CurrentScope() = {100000, 200000};
  desktop.dialogs.Answer(folder / "small.wdb");
  editor->Do(Command::FileOpen);
  EXPECT_EQ(Texts(program->settings.MemorySize, program->view.XEnd, program->view.ScrollStep,
                  program->buffers.CurrentScope()),
            "65536 65536 2 65536..65536");
}

TEST_F(WaveFilesTest, AFileThatIsNotOneLeavesEverythingAsItWas) {
  ASSERT_TRUE(editor->waveFiles.Write_WaveFile(folder / "good.wdb"));
  const std::string good = GetFile(folder / "good.wdb");
  std::string foreign = good;
  foreign.replace(2, 16, "ZZ0000          ");
  std::string noMemory = good;
  noMemory.replace(90, 4, std::string(4, '\0'));
  std::string nanAmplitude = good;
  nanAmplitude.replace(222, 8, std::string(8, '\xFF'));
  const std::tuple<const char*, std::string, const char*> rows[] = {
      {"empty.wdb", "", "File Read error."},
      {"short.wdb", good.substr(0, 300), "File Read error."},
      {"truncated.wdb", good.substr(0, good.size() - 1), "File Read error."},
      {"foreign.wdb", foreign, "Read in is interrupted"},
      {"nomemory.wdb", noMemory, "File Read error."},
      {"nan.wdb", nanAmplitude, "File Read error."},
      {"text.txt", "12\r\nabc\r\n", "Line 2"},
      {"empty.txt", "", "File Read error."},
      {"a.b.wdb", good, "Invalid file extension."}};
  const std::vector<std::int16_t> points = Points();
  const SystemInfo settings = program->settings;
  for (const auto& [name, content, message] : rows) {
    PutFile(folder / name, content);
    desktop.boxes.Expect(message);
    EXPECT_FALSE(editor->waveFiles.Read_WaveFile(folder / name)) << name;
    EXPECT_TRUE(Points() == points && program->settings == settings) << name;
    EXPECT_EQ(program->names.CurrentWaveFile, folder / "good.wdb") << name;
  }
}

TEST_F(WaveFilesTest, TextIsSpreadOverTheWholeMemoryAndCanBeUndone) {
  PutFile(folder / "two.txt", "-32767\r\n32767\r\n");
  ASSERT_TRUE(editor->waveFiles.Read_WaveFile(folder / "two.txt"));
  EXPECT_EQ(Texts(Code(0), Code(262144)), "-32767 0");
  EXPECT_NEAR(Code(524287), 32767, 1);
  EXPECT_TRUE(editor->commands.CanUndo());
  editor->Do(Command::Undo);
  EXPECT_EQ(Code(77), 77);
  PutFile(folder / "one.txt", "5\n");
  program->buffers.CurrentScope() = {524288, 524288};
  desktop.dialogs.Answer(folder / "one.txt");
  editor->Do(Command::FileOpen);
  EXPECT_EQ(program->buffers.CurrentScope(), (Scope{524288, 524288})) << "the right end is a range";
  EXPECT_EQ(Texts(Code(0), Code(524287)), "5 5");
}

TEST_F(WaveFilesTest, RealTextIsNormalised) {
  std::string text;
  for (int i = 0; i < 524288 / 4; ++i) text += "4\r\n-1\r\n1\r\n0.5\r\n";
  PutFile(folder / "real.txt", text);
  desktop.dialogs.Answer(folder / "real.txt", 3);
  editor->Do(Command::FileOpen);
  EXPECT_EQ(Texts(Code(0), Code(1), Code(2), Code(524287)), "32767 -8192 8192 4096");
  PutFile(folder / "zeros.txt", "0\r\n0\r\n");
  desktop.boxes.Expect("File Read error.");
  EXPECT_FALSE(editor->waveFiles.Read_RealText(folder / "zeros.txt"));
  EXPECT_EQ(Code(0), 32767);
}

TEST_F(WaveFilesTest, SavingAppliesTheChosenMemorySizeAndAFailureKeepsTheNames) {
  SetMemory(65536);
  const auto& sizes = editor->setup.MemorySizes();
  const auto large = std::find(sizes.begin(), sizes.end(), "524288");
  editor->setup.ChooseMemorySize(static_cast<int>(large - sizes.begin()));
  EXPECT_EQ(program->settings.MemorySize, 65536) << "choosing is not applying";
  ASSERT_TRUE(editor->waveFiles.Write_WaveFile(folder / "a.txt"));
  EXPECT_EQ(Texts(program->settings.MemorySize, Code(65535), Code(65536)), Texts(524288, 65535 % 30000, 0))
      << "grown points are clear";
  desktop.boxes.Expect("File Write error.");
  EXPECT_FALSE(editor->waveFiles.Write_WaveFile(std::string(fake::kNowhere) + "/b.txt"));
  EXPECT_EQ(program->names.CurrentWaveFile, folder / "a.txt");
}

} // namespace calder::wave_files_test
