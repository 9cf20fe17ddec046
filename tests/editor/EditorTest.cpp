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
  const struct {
    const char *why, *message;
    void (*spoil)(fake::FakeDesktop&);
  } rows[] = {
      {"no USBTMC.ID", "Lost the file of USBTMC.ID", [](fake::FakeDesktop& d) { d.folders.read = {fake::kNowhere}; }},
      {"the sibling runs", "The Marlow Software is running.",
       [](fake::FakeDesktop& d) {
         d.windows.captions = {"x", "Orvo Marlow for XG5530/31 <a.seq>"};
       }},
      {"no models", "No System Setup file.\r\rSystem Exit.",
       [](fake::FakeDesktop& d) { d.folders.read = {CALDER_SOURCE_DIR "/data"}; }}};
  for (const auto& row : rows) {
    fake::FakeDesktop spoilt;
    row.spoil(spoilt);
    spoilt.boxes.Expect(row.message);
    Program state(spoilt.Services());
    Editor stopped(state);
    EXPECT_FALSE(stopped.Start()) << row.why;
  }
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
  desktop.boxes.Expect("Exit Program.", BoxAnswer::No);
  EXPECT_FALSE(editor->QueryUnload(Editor::CloseReason::User));
  EXPECT_EQ(desktop.settings.Get("System", "SerialNum"), "SN42");
  EXPECT_FALSE(desktop.settings.Get("Sysinfo", "sys_no").has_value());
  program->registry.SetGpibBusy(true);
  desktop.boxes.Expect("Interface Busy. Press");
  EXPECT_FALSE(editor->QueryUnload(Editor::CloseReason::User));
  program->registry.SetGpibBusy(false);
  desktop.boxes.Expect("[CALDER] is Active!");
  EXPECT_FALSE(editor->QueryUnload(Editor::CloseReason::SessionEnds));
  desktop.boxes.Expect("Exit Program.", BoxAnswer::Yes);
  EXPECT_TRUE(editor->QueryUnload(Editor::CloseReason::User));
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
  const auto open = [&](const std::string& name) {
    desktop.dialogs.Answer(folder / name);
    editor->Do(Command::FileOpen);
  };
  const auto move = [&](int x) { editor->MouseMove(x, 50, 1024, 100, 1, true); };
  constexpr Changes kNothing;
  const struct {
    const char* what;
    Changes changes;
    std::function<void()> act;
  } rows[] = {{"save", Change::Title,
               [&] {
                 desktop.dialogs.Answer(folder / "a.wdb");
                 editor->Do(Command::FileSave);
               }},
              {"open text", kEverything, [&] { open("five.txt"); }},
              {"open .wdb", kEverything, [&] { open("a.wdb"); }},
              {"drop", kEverything, [&] { editor->FileDropped(folder / "a.wdb"); }},
              {"open, cancelled", kNothing,
               [&] {
                 desktop.dialogs.Cancel();
                 editor->Do(Command::FileOpen);
               }},
              {"open, failed", kNothing,
               [&] {
                 desktop.boxes.Expect("File Read error.");
                 open("none.wdb");
               }},
              {"cut", kEdited, [&] { editor->Do(Command::Cut); }},
              {"copy", Change::Commands, [&] { editor->Do(Command::Copy); }},
              {"undo", kEdited, [&] { editor->Do(Command::Undo); }},
              {"grid", Change::Picture | Change::Commands, [&] { editor->Do(Command::Grid); }},
              {"zoom", kViewMoved, [&] { editor->Apply(kViewMoved, [&] { editor->view.ZoomX(1); }); }},
              {"scrolled to where it is", kNothing,
               [&] { editor->Apply(kViewMoved, [&] { return editor->view.Hrizontal_Scroll(0); }); }},
              {"zoom back", kViewMoved, [&] { editor->Apply(kViewMoved, [&] { editor->view.ZoomX(0); }); }},
              {"hover", Change::Mouse, [&] { move(1023); }},
              {"press", kNothing,
               [&] {
                 editor->MousePress({1023, 50, 1024, 100}, Editor::PressKeys::None);
               }},
              {"drag", Change::Mouse | Change::Markers | Change::Readouts, [&] { move(700); }},
              {"drag on the spot", Change::Mouse, [&] { move(700); }},
              {"outside", kNothing, [&] { move(-1); }},
              {"release", Change::Picture,
               [&] {
                 editor->MouseRelease({700, 50, 1024, 100});
               }},
              {"setup's OK", kEverything, [&] { editor->setup.Accept(); }},
              {"tool", kEverything, [&] { editor->WaveformChanged(); }},
              {"tool's range", Change::Picture | Change::Readouts, [&] { editor->RangeChanged(); }},
              {"other view", kViewMoved | Change::Commands, [&] { editor->ChooseView(Editor::ViewKind::Digital); }}};
  for (const auto& row : rows) {
    port.shown.clear();
    row.act();
    EXPECT_EQ(port.shown, row.changes.None() ? std::vector<Changes>() : std::vector{row.changes}) << row.what;
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
