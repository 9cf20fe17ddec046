// The digital view without its window: gestures and what is seen after them.
#include "EditorFixture.h"

namespace calder::digital_lanes_test {

constexpr int kWidth = 1000; // one column a point
constexpr int kHeight = 490; // a lane is 30 rows high, the first one begins at 10

struct DigitalLanesTest : EditorFixture {
  void SetUp() override {
    Begin();
    program->settings.MemorySize = 1000;
    editor->view.Init();
    editor->ChooseView(Editor::ViewKind::Digital);
    program->buffers.Reset_Undo();
    program->buffers.CurrentScope() = {200, 800};
    for (std::int16_t& code : Points()) code = 0x1000;
  }
  [[nodiscard]] std::span<std::int16_t> Points() { return W_Lock(program->buffers.Current()).first(1000); }
  static PicturePoint At(int x, int lane, double scale = 1) { return {x, 25 + 30 * lane, kWidth, kHeight, scale}; }

  void Press(int x, int lane) { editor->LanePress(At(x, lane), Editor::PressKeys::None); }
  void Ctrl(int x, int lane) { editor->LanePress(At(x, lane), Editor::PressKeys::Ctrl); }
  void Move(int x, int lane) { editor->LaneMove(At(x, lane)); }
  void Release(int x, int lane) { editor->LaneRelease(At(x, lane)); }
  void Keys(std::initializer_list<LaneKey> keys) {
    for (const LaneKey key : keys) editor->LanePress(key);
  }
  // The selection, the codes before, in and after the range, the text of the lane, the pointer.
  std::string Seen() {
    char text[128];
    std::snprintf(text, sizeof text, "%s; %04X %04X %04X; %s; %s", editor->lanes.MaskText().c_str(),
                  static_cast<unsigned>(Points()[199]) & 0xFFFF, static_cast<unsigned>(Points()[200]) & 0xFFFF,
                  static_cast<unsigned>(Points()[800]) & 0xFFFF, editor->lanes.LaneText().c_str(),
                  editor->lanes.PointerShape() == DigitalLanes::Pointer::Lanes ? "lanes" : "arrow");
    return text;
  }
};

using K = LaneKey;

TEST_F(DigitalLanesTest, EveryGestureIsSeen) {
  const std::string same = "; 1000 1000 1000; ";
  const auto lane = [](int number, const char* value = "0") {
    const int bit = 15 - number;
    return "lane " + std::to_string(number) + "  bit " + std::to_string(bit) + "  weight " +
           std::to_string(bit == 15 ? -32768 : 1 << bit) + (*value == 0 ? "" : "  value ") + value;
  };
  const struct {
    const char* gesture;
    std::function<void()> act;
    std::string seen;
  } rows[] = {
      {"at first", [] {}, "no bit selected" + same + "; lanes"},
      {"hover", [&] { Move(300, 3); }, "no bit selected" + same + lane(3, "1") + "; lanes"},
      {"hover beside the lanes", [&] { Move(300, -1); }, "no bit selected" + same + "; lanes"},
      {"the top bit counts down", [&] { Move(300, 0); }, "no bit selected" + same + lane(0) + "; lanes"},
      // Plain presses.
      {"press", [&] { Press(300, 3); }, "bit 12 = $1000" + same + lane(3, "1") + "; lanes"},
      {"drag", [&] { Move(400, 5); }, "bit 12 = $1000" + same + "copy bit 12 to 10; lanes"},
      {"drag beyond the range", [&] { Move(801, 5); }, "bit 12 = $1000" + same + lane(5) + "; lanes"},
      {"drop there", [&] { Release(800, 5); }, "bit 12 = $1000" + same + lane(5) + "; lanes"},
      {"a release without a press", [&] { Release(400, 9); }, "bit 12 = $1000" + same + lane(5) + "; lanes"},
      {"drop on the same lane",
       [&] {
         Press(300, 3);
         Release(700, 3);
       },
       "bit 12 = $1000" + same + lane(3, "1") + "; lanes"},
      {"drop below the lanes",
       [&] {
         Press(300, 3);
         Release(300, 16);
       },
       "bit 12 = $1000" + same + lane(3, "1") + "; lanes"},
      {"no undo step so far", [&] { editor->Do(Command::Undo); }, "bit 12 = $1000" + same + lane(3, "1") + "; lanes"},
      {"drop on another lane",
       [&] {
         Press(300, 3);
         Release(201, 5);
       },
       "bit 10 = $400; 1000 1400 1000; " + lane(3, "1") + "; arrow"},
      {"undo", [&] { editor->Do(Command::Undo); }, "bit 10 = $400" + same + lane(3, "1") + "; arrow"},
      {"press ten pixels beside A", [&] { Press(190, 8); }, "bit 7 = $80" + same + lane(8) + "; lanes"},
      {"eleven", [&] { Press(189, 8); }, "no bit selected" + same + lane(8) + "; lanes"},
      {"ten beside B", [&] { Press(810, 9); }, "bit 6 = $40" + same + lane(9) + "; lanes"},
      {"eleven", [&] { Press(811, 9); }, "no bit selected" + same + lane(9) + "; lanes"},
      {"at scale 2 twice as many", [&] { editor->LanePress(At(181, 9, 2), Editor::PressKeys::None); },
       "bit 6 = $40" + same + lane(9) + "; lanes"},
      {"above the lanes", [&] { Press(300, -1); }, "no bit selected" + same + "; lanes"},
      // With Ctrl.
      {"Ctrl is the first", [&] { Ctrl(300, 0); }, "bit 15 = $8000" + same + lane(0) + "; arrow"},
      {"and a source", [&] { Move(310, 1); }, "bit 15 = $8000" + same + "copy bit 15 to 14; lanes"},
      {"Ctrl adds and is none", [&] { Ctrl(300, 4); }, "bits 15, 11 = $8800" + same + lane(4) + "; lanes"},
      {"dropped", [&] { Release(300, 7); }, "bits 15, 11 = $8800" + same + lane(4) + "; lanes"},
      {"more of them",
       [&] {
         for (const int more : {5, 6, 14, 15}) Ctrl(300, more);
       },
       "bits 15, 11-9, 1, 0 = $8E03" + same + lane(15) + "; lanes"},
      {"below the lanes nothing changes", [&] { Ctrl(300, 16); }, "bits 15, 11-9, 1, 0 = $8E03" + same + "; lanes"},
      {"Ctrl takes out", [&] { Ctrl(300, 0); }, "bits 11-9, 1, 0 = $E03" + same + lane(0) + "; lanes"},
      {"a tool on the wave keeps it",
       [&] {
         program->selectedTool = kToolSpline;
         Ctrl(100, 0);
         program->selectedTool = kToolNone;
       },
       "bits 11-9, 1, 0 = $E03" + same + lane(0) + "; lanes"},
      {"other keys do nothing", [&] { editor->LanePress(At(100, 0), Editor::PressKeys::Other); },
       "bits 11-9, 1, 0 = $E03" + same + lane(0) + "; lanes"},
      {"Ctrl on A's point", [&] { Ctrl(200, 2); }, "no bit selected" + same + lane(2) + "; lanes"},
      {"the pointer leaves", [&] { editor->LaneLeave(); }, "no bit selected" + same + "; lanes"},
      // The keyboard.
      {"down", [&] { Keys({K::Down}); }, "no bit selected" + same + lane(0, "") + "; lanes"},
      {"down and up",
       [&] {
         Keys({K::Up, K::Down, K::Down, K::Down, K::Up, K::Last, K::Down, K::First, K::Down});
       },
       "no bit selected" + same + lane(1, "") + "; lanes"},
      {"select two",
       [&] {
         Keys({K::Select, K::Down, K::Down, K::Select});
       },
       "bits 14, 12 = $5000" + same + lane(3, "") + "; lanes"},
      {"unselect", [&] { Keys({K::Select}); }, "bit 14 = $4000" + same + lane(3, "") + "; lanes"},
      {"source", [&] { Keys({K::Copy}); }, "bit 12 = $1000" + same + lane(3, "") + "; lanes"},
      {"on the way", [&] { Keys({K::Up}); }, "bit 12 = $1000" + same + "copy bit 12 to 13; lanes"},
      {"given up", [&] { Keys({K::Escape}); }, "bit 12 = $1000" + same + lane(2, "") + "; lanes"},
      {"copied",
       [&] {
         Keys({K::Down, K::Copy, K::Last, K::Copy});
       },
       "bit 0 = $1; 1000 1001 1000; " + lane(15, "") + "; lanes"},
      {"cleared", [&] { Keys({K::Escape}); }, "no bit selected; 1000 1001 1000; " + lane(15, "") + "; lanes"},
  };
  for (const auto& row : rows) {
    row.act();
    EXPECT_EQ(Seen(), row.seen) << row.gesture;
  }
  Points()[400] = 0;
  editor->view.ZoomX(0);
  editor->LaneMove({200, 115, 500, kHeight, 1}); // two points a column
  EXPECT_EQ(editor->lanes.LaneText(), lane(3, "0 and 1"));
}

TEST_F(DigitalLanesTest, EachButtonWritesTheRangeOrSaysWhyNot) {
  const std::string none = "1000 1000 1000";
  const struct {
    const char* what;
    Scope scope;
    int lane; // selected, -1: none
    const char* text;
    int button;
    const char* message; // in a box; null: none
    std::string codes;   // 199, 200, 800
    const char* note;
    bool undo;
  } rows[] = {
      {"no lane", {200, 800}, -1, "", 0, nullptr, none, "Select a lane first; Ctrl+click adds lanes.", false},
      {"no range", {200, 200}, 3, "0H", 3, nullptr, none, "There is no point between the markers.", false},
      {"no text", {200, 800}, 3, "", 3, nullptr, none, "There is no pattern in the box.", false},
      {"0", {200, 800}, 3, "", 0, nullptr, "1000 0000 1000", "", true},
      {"1", {200, 800}, 0, "", 1, nullptr, "1000 9000 1000", "", true},
      {"invert", {200, 800}, 3, "", 2, nullptr, "1000 0000 1000", "", true},
      {"invert the lowest", {200, 800}, 15, "", 2, nullptr, "1000 1001 1000", "", true},
      {"pattern", {200, 800}, -1, "Mask $F 0H", 3, nullptr, "1000 100F 1000", "", true},
      {"to the nearest, halves to even", {199.5, 799.9}, 15, "", 1, nullptr, "1000 1001 1000", "", true},
      {"to the end", {200.5, 1000}, 15, "", 1, nullptr, "1000 1001 1001", "", true},
      {"a fault",
       {200, 800},
       -1,
       "1H 3",
       3,
       "Syntax error.",
       none,
       "Syntax error.  L, H, N, X or $ expected after the count",
       true},
      {"an unbalanced one",
       {200, 800},
       -1,
       "[1H",
       3,
       "Unbalance of parenthesis.",
       none,
       "Unbalance of parenthesis.  \"[\" without \"]\"",
       true},
  };
  for (const auto& row : rows) {
    SetUp();
    program->buffers.CurrentScope() = {200, 800};
    if (row.lane >= 0) Press(400, row.lane);
    Release(400, row.lane);
    program->buffers.CurrentScope() = row.scope;
    editor->PatternTyped(row.text);
    if (row.message != nullptr) desktop.boxes.Expect(row.message);
    port.shown.clear();
    editor->PatternPress(row.button);
    char codes[32];
    std::snprintf(codes, sizeof codes, "%04X %04X %04X", static_cast<unsigned>(Points()[199]) & 0xFFFF,
                  static_cast<unsigned>(Points()[200]) & 0xFFFF, static_cast<unsigned>(Points()[800]) & 0xFFFF);
    EXPECT_EQ(codes, row.codes) << row.what;
    EXPECT_EQ(editor->patterns.Note(), row.note) << row.what;
    EXPECT_EQ(editor->commands.CanUndo(), row.undo) << row.what;
    EXPECT_EQ(port.shown, std::vector{row.undo ? kEdited : Changes(Change::Picture)}) << row.what;
    if (row.undo) editor->Do(Command::Undo);
    EXPECT_EQ(Points()[200], 0x1000) << row.what;
  }
}

TEST_F(DigitalLanesTest, ATypedPatternIsAGhostUntilItIsWritten) {
  const struct {
    const char* what;
    std::function<void()> act;
    std::string ghost; // point 200 and 250, empty: none
    int place;         // of a fault, -1: none
  } rows[] = {
      {"typed", [&] { editor->PatternTyped("Mask $F 0H"); }, "4111 4111", -1},
      {"with a fault", [&] { editor->PatternTyped("Mask $F 0H ?"); }, "", 11},
      {"mended", [&] { editor->PatternTyped("Mask $F 20H"); }, "4111 4096", -1},
      {"the range moves",
       [&] {
         program->buffers.CurrentScope().Start = 240;
         editor->RangeChanged();
       },
       "4096 4111", -1},
      {"written", [&] { editor->PatternPress(PatternDesk::kPattern); }, "", -1},
      {"elsewhere",
       [&] {
         program->buffers.CurrentScope().Start = 200;
         editor->RangeChanged();
       },
       "4111 4111", -1},
      {"the waveform changes", [&] { editor->Do(Command::Delete); }, "4111 4096", -1},
      {"emptied", [&] { editor->PatternTyped(""); }, "", -1},
  };
  for (const auto& row : rows) {
    row.act();
    const WaveHandle ghost = editor->patterns.Ghost();
    std::string seen;
    if (ghost != 0)
      seen = std::to_string(W_GetWaveData(ghost, 200, 1000)) + " " + std::to_string(W_GetWaveData(ghost, 250, 1000));
    EXPECT_EQ(seen, row.ghost) << row.what;
    const std::optional<std::size_t> place = editor->patterns.FaultPlace();
    EXPECT_EQ(place ? static_cast<int>(*place) : -1, row.place) << row.what;
    EXPECT_EQ(editor->patterns.Note().empty(), row.place < 0) << row.what << editor->patterns.Note();
  }
}

TEST_F(DigitalLanesTest, APatternThatTakesLongIsWrittenButNotShownBefore) {
  program->settings.MemorySize = 500000;
  program->buffers.CurrentScope() = {0, 500000};
  editor->PatternTyped("[{1}N]0");
  EXPECT_EQ(editor->patterns.Ghost(), 0);
  EXPECT_EQ(editor->patterns.FaultPlace(), std::nullopt);
  EXPECT_EQ(editor->patterns.Note(), "It takes too long to be shown before it is written.");
  editor->PatternPress(PatternDesk::kPattern);
  EXPECT_EQ(Code(0), ~0x1000);
}

} // namespace calder::digital_lanes_test
