#include "EditorFixture.h"

#include "platform/TempFolder.h"

namespace calder::editor_test {

struct EditorTest : EditorFixture {};

TEST_F(EditorTest, StartsWithAnEmptyWaveformInUserUnits) {
  Begin();
  EXPECT_EQ(Texts(program->settings.XUnit, program->settings.YUnit, program->settings.XUserMax,
                  program->settings.YUserMin, program->buffers.CurrentScope(), editor->commands.CanUndo()),
            "2 2 1 -1 0..524288 false");
  EXPECT_EQ(Texts(program->registry.GetGpibBoard(), program->settings.ModelNo), "3 0");
}

TEST_F(EditorTest, StartUpStopsWithTheRightMessage) {
  const auto refuses = [](const char* message, const auto& spoil) {
    fake::FakeDesktop spoilt;
    spoil(spoilt);
    spoilt.boxes.Expect(message);
    Program state(spoilt.Services());
    return !Editor(state).Start();
  };
  const std::vector<std::string> sibling = {"x", "Orvo Marlow for XG5530/31 <a.seq>"};
  EXPECT_TRUE(refuses("Lost the file of USBTMC.ID", [](auto& d) { d.folders.read = {fake::kNowhere}; }));
  EXPECT_TRUE(refuses("The Marlow Software is running.", [&](auto& d) { d.windows.captions = sibling; }));
  EXPECT_TRUE(
      refuses("No System Setup file.\r\rSystem Exit.", [](auto& d) { d.folders.read = {CALDER_SOURCE_DIR "/data"}; }));
}

TEST_F(EditorTest, TheLastModelAddressAndMemorySizeComeBackUnlessTheyAreNonsense) {
  desktop.windows.captions = {"Orvo Calder for XG5530/31 <Untitled>"}; // a second copy is no sibling
  desktop.copies.others = true;
  desktop.settings.Set("Sysinfo", "sys_no", "1");
  desktop.settings.Set("Sysinfo", "Gpib_Address", "7");
  desktop.settings.Set("Sysinfo", "memory_width_no", "1");
  Begin();
  EXPECT_EQ(Texts(program->settings.ModelName, program->settings.Address), "XG5531 7");
  EXPECT_EQ(program->settings.MemorySizeNo, 1);
  EXPECT_EQ(std::to_string(program->settings.MemorySize), editor->setup.MemorySizes()[1]);
  EXPECT_EQ(program->view.XEnd, program->settings.MemorySize);
  desktop.settings.Set("Sysinfo", "sys_no", "9999");
  desktop.settings.Set("Sysinfo", "memory_width_no", "500");
  Begin();
  EXPECT_EQ(program->settings.ModelNo, 0);
  EXPECT_EQ(program->settings.MemorySizeNo, 500) << "kept although the list is shorter";
  EXPECT_GT(program->settings.MemorySize, 0);
}

TEST_F(EditorTest, CutPasteDeleteAndUndoMoveExactlyTheRange) {
  Begin();
  Ramp();
  program->buffers.CurrentScope() = {10.4, 109.6}; // points 11 to 110
  editor->Do(Command::Cut);
  EXPECT_EQ(Texts(Code(10), Code(11), Code(524288 - 100), program->buffers.CurrentScope()), "10 111 0 10.4..109.6");
  program->buffers.CurrentScope() = {1000, 1010};
  editor->Do(Command::Paste);
  EXPECT_EQ(program->buffers.CurrentScope(), (Scope{1000, 1100})) << "what was pasted is selected";
  EXPECT_EQ(Texts(Code(1000), Code(1099), Code(1100)), "11 110 1200");
  editor->Do(Command::Undo);
  EXPECT_EQ(Texts(Code(1000), program->buffers.CurrentScope(), editor->commands.UndoCaption()),
            "1100 1000..1010 &Redo");
  editor->Do(Command::Undo);
  EXPECT_EQ(Texts(Code(1000), program->buffers.CurrentScope(), editor->commands.UndoCaption()), "11 1000..1100 &Redo")
      << "until the next edit";
  editor->Do(Command::Delete);
  EXPECT_EQ(Texts(Code(1000), editor->commands.UndoCaption()), "1200 &Undo");
}

TEST_F(EditorTest, ARangeFromBetweenTwoPointsToTheEndEndsThere) {
  Begin();
  for (const std::int32_t size : {W_MAX_POINTS, 16384}) {
    program->settings.MemorySize = size;
    Ramp();
    program->buffers.CurrentScope() = {size - 9.6, static_cast<double>(size)};
    editor->Do(Command::Copy);
    program->buffers.CurrentScope() = {0, 0};
    editor->Do(Command::Paste);
    EXPECT_EQ(Texts(program->buffers.CurrentScope(), Code(0)), Texts((Scope{0, 9}), (size - 9) % 30000));
    // 32.2 - 12.2 is more than 20.
    program->buffers.CurrentScope() = {12.2, 32.2};
    editor->Do(Command::Copy);
    program->buffers.CurrentScope() = {100, 100};
    editor->Do(Command::Paste);
    EXPECT_EQ(program->buffers.CurrentScope(), (Scope{100, 120}));
  }
}

TEST_F(EditorTest, AClipboardThatFailsLosesNothing) {
  Begin();
  Ramp();
  program->buffers.CurrentScope() = {0, 100};
  desktop.clipboard.available = false;
  desktop.boxes.Expect("ClipBoard");
  editor->Do(Command::Cut);
  EXPECT_EQ(Code(50), 50) << "what could not be copied is not cut away";
  desktop.boxes.Expect("ClipBoard");
  editor->Do(Command::Paste);
  EXPECT_EQ(Code(50), 50);
}

TEST_F(EditorTest, ClosingAsksAndRefusesWhileATransferRuns) {
  Begin();
  program->serialNumber = "SN42";
  const auto close = [this](const char* message, BoxAnswer answer, Editor::CloseReason reason) {
    desktop.boxes.Expect(message, answer);
    return editor->QueryUnload(reason);
  };
  EXPECT_FALSE(close("Exit Program.", BoxAnswer::No, Editor::CloseReason::User));
  EXPECT_EQ(desktop.settings.Get("System", "SerialNum"), "SN42");
  EXPECT_FALSE(desktop.settings.Get("Sysinfo", "sys_no").has_value());
  program->registry.SetGpibBusy(true);
  EXPECT_FALSE(close("Interface Busy. Press", BoxAnswer::Ok, Editor::CloseReason::User));
  program->registry.SetGpibBusy(false);
  EXPECT_FALSE(close("[CALDER] is Active!", BoxAnswer::Ok, Editor::CloseReason::SessionEnds));
  EXPECT_TRUE(close("Exit Program.", BoxAnswer::Yes, Editor::CloseReason::User));
  EXPECT_EQ(desktop.settings.Get("Sysinfo", "sys_no"), "0");
}

TEST_F(EditorTest, NewStartsAnotherCopyAndTouchesNothingHere) {
  Begin();
  Ramp();
  editor->Do(Command::FileNew);
  EXPECT_EQ(Texts(desktop.copies.started, Code(77)), "1 77");
  desktop.copies.canStart = false;
  desktop.boxes.Expect("Another copy of CALDER could not be started.");
  editor->Do(Command::FileNew);
}

// What the window would draw and fill: once an action, and only what the action changed.
TEST_F(EditorTest, EveryActionShowsOnceWhatItChanged) {
  const TempFolder folder;
  PutFile(folder / "five.txt", "5\r\n");
  Begin();
  const auto answer = [&](const std::string& name, Command command) {
    desktop.dialogs.Answer(folder / name);
    editor->Do(command);
  };
  const auto fail = [&](Command command) {
    desktop.boxes.Expect("File Read error.");
    answer("none.wdb", command);
  };
  const auto cancel = [&](Command command) {
    desktop.dialogs.Cancel();
    editor->Do(command);
  };
  const auto view = [&](auto change) { editor->Apply(kViewMoved, change); };
  const auto move = [&](int x) { editor->MouseMove(x, 50, 1024, 100, 1, true); };
  const auto press = [&](const PicturePoint& at) { editor->MousePress(at, Editor::PressKeys::None); };
  const auto release = [&](const PicturePoint& at) { editor->MouseRelease(at); };
  constexpr Changes kNothing;
  using Row = std::tuple<const char*, Changes, std::function<void()>>;
  const Row rows[] = {
      {"save", Change::Title, [&] { answer("a.wdb", Command::FileSave); }},
      {"open text", kEverything, [&] { answer("five.txt", Command::FileOpen); }},
      {"open .wdb", kEverything, [&] { answer("a.wdb", Command::FileOpen); }},
      {"drop", kEverything, [&] { editor->FileDropped(folder / "a.wdb"); }},
      {"open, cancelled", kNothing, [&] { cancel(Command::FileOpen); }},
      {"open, failed", kNothing, [&] { fail(Command::FileOpen); }},
      {"cut", kEdited, [&] { editor->Do(Command::Cut); }},
      {"copy", Change::Commands, [&] { editor->Do(Command::Copy); }},
      {"undo", kEdited, [&] { editor->Do(Command::Undo); }},
      {"grid", Change::Picture | Change::Commands, [&] { editor->Do(Command::Grid); }},
      {"zoom", kViewMoved, [&] { view([&] { editor->view.ZoomX(1); }); }},
      {"scrolled on the spot", kNothing, [&] { view([&] { return editor->view.Hrizontal_Scroll(0); }); }},
      {"zoom back", kViewMoved, [&] { view([&] { editor->view.ZoomX(0); }); }},
      {"hover", Change::Mouse, [&] { move(1023); }},
      {"press", kNothing,
       [&] {
         press({1023, 50, 1024, 100});
       }},
      {"drag", Change::Mouse | Change::Markers | Change::Readouts, [&] { move(700); }},
      {"drag on the spot", Change::Mouse, [&] { move(700); }},
      {"outside", kNothing, [&] { move(-1); }},
      {"release", Change::Picture,
       [&] {
         release({700, 50, 1024, 100});
       }},
      {"setup's OK", kEverything, [&] { editor->setup.Accept(); }},
      {"tool", kEverything, [&] { editor->WaveformChanged(); }},
      {"tool's range", Change::Picture | Change::Readouts, [&] { editor->RangeChanged(); }},
      {"other view", kViewMoved | Change::Commands, [&] { editor->ChooseView(Editor::ViewKind::Digital); }}};
  for (const auto& [what, changes, act] : rows) {
    port.shown.clear();
    act();
    EXPECT_EQ(port.shown, changes.None() ? std::vector<Changes>() : std::vector{changes}) << what;
  }
}

TEST_F(EditorTest, OnlyAFileThatWasReadIsShownWhole) {
  const TempFolder folder;
  PutFile(folder / "five.txt", "5\r\n");
  const std::tuple<const char*, std::optional<std::string>, bool, const char*, bool> rows[] = {
      {"cancelled", std::nullopt, false, nullptr, false},
      {"cannot be read", folder / "none.txt", false, "File Read error.", false},
      {"dropped, cannot be read", folder / "none.txt", true, "File Read error.", false},
      {"dropped, no waveform", folder / "five.dat", true, "Invalid file extension.", false},
      {"read", folder / "five.txt", false, nullptr, true},
      {"dropped, read", folder / "five.txt", true, nullptr, true}};
  Begin();
  for (const auto& [why, chosen, drop, message, read] : rows) {
    editor->view.ZoomX(2);
    editor->view.ZoomY(1);
    editor->view.Hrizontal_Scroll(4096);
    if (message != nullptr) desktop.boxes.Expect(message);
    if (!drop) desktop.dialogs.answers.push_back(chosen ? std::optional(FileDialogAnswer{*chosen, 1}) : std::nullopt);
    drop ? editor->FileDropped(*chosen) : editor->Do(Command::FileOpen);
    EXPECT_EQ(Texts(program->view.XZoom, program->view.YZoom, program->view.XStart),
              Texts(read ? 1 : 4, read ? 1 : 2, read ? 0 : 65536))
        << why;
  }
}

TEST_F(EditorTest, AFileOnTheCommandLineThatCannotBeOpenedIsToldAndLeavesAnEmptyEditor) {
  Begin();
  desktop.boxes.Expect("File Read error.");
  editor->OpenCommandLine(std::string(fake::kNowhere) + "/a.wdb");
  EXPECT_EQ(editor->Title(), "Orvo Calder for XG5530/31 <Untitled>");
  desktop.boxes.Expect("Invalid file extension.");
  editor->OpenCommandLine(std::string(fake::kNowhere) + "/a.dat");
  EXPECT_EQ(Code(0), 0);
}

} // namespace calder::editor_test
