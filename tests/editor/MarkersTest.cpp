#include "editor/Markers.h"

#include "EditorFixture.h"
#include "platform/PixelContext.h"

namespace calder::markers_test {

struct MarkersTest : EditorFixture {
  void SetUp() override {
    Begin();
    SetPoints();
    ASSERT_EQ(program->settings.MemorySize, 524288);
  }
  [[nodiscard]] Scope& TheScope() { return program->buffers.CurrentScope(); }
  void Put(double start, double end, bool track = false) {
    TheScope() = {start, end};
    editor->markers.SetTrack(track);
  }
};

TEST_F(MarkersTest, TypedPositionsAreRefusedCorrectedOrTaken) {
  enum Box { Start, End, Length };
  const std::tuple<const char*, bool, Scope, Box, const char*, Scope> rows[] = {
      {"A right of B is refused", false, {100, 200}, Start, "300", {100, 200}},
      {"A before B is taken", false, {100, 200}, Start, "150", {150, 200}},
      {"outside the waveform is refused", false, {100, 200}, Start, "-1", {100, 200}},
      {"beyond the end is refused, not taken for 0", false, {100, 200}, End, "600000", {100, 200}},
      {"B before A is refused", false, {100, 200}, End, "50", {100, 200}},
      {"prefixes work", false, {100, 200}, End, "1.5k", {100, 1500}},
      {"a pair stops at the end", true, {0, 1000}, Start, "524000", {523288, 524288}},
      {"a pair stops at the start", true, {1000, 2000}, End, "300", {0, 1000}},
      {"a pair moves", true, {1000, 2000}, Start, "5000", {5000, 6000}},
      {"B takes A along", true, {1000, 2000}, End, "5000", {4000, 5000}},
      {"a length", false, {1000, 2000}, Length, "10", {1000, 1010}},
      {"a length beyond the end", false, {524000, 524100}, Length, "1000", {524000, 524288}},
      {"a length beyond everything", false, {24288, 24388}, Length, "9M", {24288, 524288}},
      {"no number is 0", false, {1000, 2000}, Length, "abc", {1000, 1000}}};
  for (const auto& [why, track, before, box, text, after] : rows) {
    Put(before.Start, before.End, track);
    if (box == Start) editor->markers.TypeStart(text);
    if (box == End) editor->markers.TypeEnd(text);
    if (box == Length) editor->markers.TypeScope(text);
    EXPECT_EQ(Texts(TheScope().Start, TheScope().End), Texts(after.Start, after.End)) << why;
  }
}

// A picture of 1024 columns: 512 points a pixel.
TEST_F(MarkersTest, TheGrabbedMarkerIsTheOneUnderThePointer) {
  // marker: A, B or - for none
  const std::tuple<const char*, Scope, int, int, char> rows[] = {
      {"B's column", {51200, 256000}, 500, 300, 'B'},
      {"A's column", {51200, 256000}, 100, 300, 'A'},
      {"beside it", {51200, 256000}, 101, 300, '-'},
      {"right of B at the top", {51200, 256000}, 510, 9, 'B'},
      {"right of B below the top", {51200, 256000}, 510, 10, '-'},
      {"left of A at the top", {51200, 256000}, 90, 10, 'A'},
      {"A's flag itself", {51200, 256000}, 105, 5, '-'},
      {"one column in the middle: B", {256000, 256000}, 500, 300, 'B'},
      {"one column at the right edge: A", {524288, 524288}, 1023, 300, 'A'},
      {"the last column counts as the end", {0, 524288}, 1023, 300, 'B'}};
  for (const auto& [why, scope, x, y, marker] : rows) {
    Put(scope.Start, scope.End);
    editor->MouseMove(x, y, 1024, 400, 1, true);
    editor->MousePress({}, Editor::PressKeys::None);
    EXPECT_EQ(editor->markers.Grabbed(), marker != '-') << why;
    // B can only be dragged right of A, A only left of B.
    if (marker == 'A' || marker == 'B') {
      const int target = marker == 'A' ? 10 : 1000;
      editor->MouseMove(target, 300, 1024, 400, 1, true);
      const double moved = marker == 'A' ? TheScope().Start : TheScope().End;
      EXPECT_EQ(moved, target * 512.0) << why;
    }
    editor->MouseRelease({});
  }
}

TEST_F(MarkersTest, ADragStopsAtTheOtherMarkerAndTheEnds) {
  Put(51200, 256000);
  const auto move = [this](int x, int y) {
    editor->MouseMove(x, y, 1024, 400, 1, true);
    return Texts(TheScope());
  };
  move(100, 300);
  editor->MousePress({}, Editor::PressKeys::None);
  EXPECT_EQ(move(700, 300), "51200..256000") << "A does not pass B";
  for (const auto& [x, y] : {std::pair{-1, 300}, {1025, 300}, {50, -1}, {50, 401}})
    EXPECT_EQ(Texts(move(x, y), editor->MouseXText()), "51200..256000 358400.0") << "outside the picture";
  EXPECT_EQ(move(0, 400), "0..256000");
  editor->MouseRelease({});
  Put(51200, 102400, true);
  move(200, 300);
  editor->MousePress({}, Editor::PressKeys::None);
  EXPECT_EQ(move(50, 300), "51200..102400") << "B does not pass A";
  EXPECT_EQ(move(1020, 300), Texts(Scope{1020 * 512.0 - 51200, 1020 * 512.0})) << "together";
  EXPECT_EQ(move(1024, 300), "473088..524288") << "the far edge is the end";
}

struct Canvas {
  Canvas() : pixels(static_cast<std::size_t>(width) * height, 0xFF101010) {}
  [[nodiscard]] bool Inverted(int x, int y) const {
    return pixels[static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x)] == 0xFFEFEFEF;
  }
  [[nodiscard]] int CountInverted() const {
    return static_cast<int>(std::count(pixels.begin(), pixels.end(), 0xFFEFEFEFU));
  }
  static constexpr int width = 1024;
  static constexpr int height = 100;
  std::vector<std::uint32_t> pixels;
  PixelContext context{pixels, width, width, height};
};

TEST_F(MarkersTest, MovingErasesWhereTheMarkersWere) {
  Canvas canvas;
  Put(51200, 256000);
  editor->markers.Draw_Marker(canvas.context);
  EXPECT_EQ(Texts(canvas.Inverted(100, 99), canvas.Inverted(110, 10), canvas.Inverted(99, 5)), "true true false")
      << "A's flag is to its right";
  EXPECT_EQ(Texts(canvas.Inverted(490, 0), canvas.Inverted(501, 5)), "true false") << "B's flag is to its left";
  const int lit = canvas.CountInverted();
  EXPECT_EQ(lit, 2 * (100 + 10 * 11));
  Put(102400, 512000);
  editor->markers.Move_Marker(canvas.context);
  EXPECT_EQ(Texts(canvas.CountInverted(), canvas.Inverted(100, 99), canvas.Inverted(200, 99)), Texts(lit, false, true));
}

TEST_F(MarkersTest, EdgesAndCoincidingMarkersAreDrawnOnce) {
  Canvas canvas;
  Put(524288, 524288);
  editor->markers.Draw_Marker(canvas.context);
  EXPECT_EQ(Texts(canvas.Inverted(1023, 50), canvas.Inverted(1013, 5)), "true true") << "at the last column";
  Canvas zoomed;
  Put(0, 524288);
  editor->view.ZoomX(3);
  editor->view.Hrizontal_Scroll(4096);
  editor->markers.Draw_Marker(zoomed.context);
  EXPECT_EQ(zoomed.CountInverted(), 0) << "outside the view";
}

} // namespace calder::markers_test
