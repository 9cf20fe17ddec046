#include "RecordingContext.h"
#include "TestWave.h"
#include "platform/PixelContext.h"

namespace calder::draw_digital_test {

using Calls = std::vector<std::string>;

constexpr Color kTrace = 0x0000FF;
constexpr Color kGround = 0x000000;
constexpr Color kSelected = 0x00FFFF;
constexpr Color kQuiet = 0x404040;
constexpr Color kGhost = 0xFF8000;
constexpr std::uint32_t kRgb = 0xFFFFFF;

struct View {
  double xStart = 0;
  double xSpan = 0;
  int width = 0;
  int bitCount = 16;
  int mask = 0;
  double a = 0;
  double b = 0;
  std::int32_t pointCount = 0;
  double scale = 1;
};

// The picture, and what a lane shows in it, a letter a column: H high, L low, E edge, D edges without a gap, - nothing;
// small letters are the ghost's. A colour that is none of these is '?'.
struct Drawn {
  static constexpr int kHeight = 196; // a lane is 12 rows high: high is its row 2, low its row 9

  Drawn(const TestWave& wave, const View& view, WaveHandle ghost = 0)
      : width(view.width), pixels(static_cast<std::size_t>(view.width) * kHeight, 0xFF123456) {
    PixelContext context(pixels, static_cast<std::size_t>(width), width, kHeight, view.scale);
    EXPECT_EQ(W_DrawDigitalPattern(context, wave.Handle(), view.xStart, view.xSpan, view.bitCount, view.mask, view.a,
                                   view.b, width, kHeight, kTrace, kGround, kSelected, kQuiet, view.pointCount, ghost,
                                   kGhost),
              W_SUCCESS);
  }
  [[nodiscard]] Color At(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)] & kRgb; }
  [[nodiscard]] std::string Lane(int lane, Color bright = kTrace) const {
    const int top = W_RowsOfLane(lane, kHeight).top;
    std::string text;
    for (int x = 0; x < width; ++x) {
      const Color rows[] = {At(x, top + 2), At(x, top + 5), At(x, top + 9)};
      const auto all = [&](Color color) { return rows[0] == color && rows[1] == color && rows[2] == color; };
      const auto ink = [&](Color color) { return rows[0] == color ? 'H' : rows[2] == color ? 'L' : '-'; };
      char letter = ink(bright);
      if (all(bright)) letter = 'E';
      if (all(kGhost))
        letter = 'e';
      else if (ink(kGhost) != '-')
        letter = ink(kGhost) == 'H' ? 'h' : 'l';
      else if (rows[0] == rows[1] && rows[1] == rows[2] && !all(bright) && !all(kGround))
        letter = (rows[0] & 0xFF) > (rows[0] >> 16) ? 'D' : 'd';
      text += letter;
    }
    return text;
  }

  int width;
  std::vector<std::uint32_t> pixels;
};

TEST(DrawDigital, EachColumnShowsWhatItsPointsDo) {
  const std::int16_t top = -32768;
  const struct {
    const char* what;
    Codes codes;
    View view;
    int lane;
    const char* shown;
  } rows[] = {
      {"a level and an edge", {0, top, top, 0}, {0, 4, 8}, 0, "LLEHHHEL"},
      {"bit 0 is the lowest lane", {0, 1, 1, 0}, {0, 4, 8}, 15, "LLEHHHEL"},
      {"the others are quiet", {0, 1, 1, 0}, {0, 4, 8}, 14, "LLLLLLLL"},
      {"three points a column", {0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1, 1}, {0, 12, 4}, 15, "LELE"},
      {"edges without a gap", {0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0}, {0, 16, 8}, 15, "DDDDDELL"},
      {"the edge to the first column is not seen", {0, 0, 1, 1, 1, 1}, {2, 4, 4}, 15, "HHHH"},
      {"nothing beside the waveform", {1, 1, 1, 1}, {-2, 8, 8}, 15, "--HHHH--"},
      {"nor after its last point", {1, 1, 1, 0}, {2, 2, 4, 16, 0, 0, 0, 3}, 15, "HH--"},
      {"at scale 2 edges are as wide as levels are high",
       {0, 1, 1, 0},
       {0, 4, 12, 16, 0, 0, 0, 0, 2},
       15,
       "LLLEEHHHHEEL"},
      {"and half tone begins in the third column",
       {0, 1, 0, 1, 0, 1, 0, 1},
       {0, 8, 8, 16, 0, 0, 0, 0, 2},
       15,
       "LEEDDDDD"},
  };
  for (const auto& row : rows) EXPECT_EQ(Drawn(TestWave(row.codes), row.view).Lane(row.lane), row.shown) << row.what;
}

TEST(DrawDigital, OneChangedPointOfAllIsSeenAtEveryZoom) {
  constexpr int width = 1000;
  const TestWave wave(W_MAX_POINTS);
  constexpr int glitch = 300001;
  wave.Codes()[glitch] = 0x0100;
  for (int zoom = 1; zoom <= 128; zoom *= 2) {
    const double span = W_MAX_POINTS / zoom;
    const double start = std::floor(glitch / span) * span;
    std::string expected(width, 'L');
    const auto column = static_cast<std::size_t>(std::floor((glitch - start) * width / span));
    const auto after = static_cast<std::size_t>(std::floor((glitch + 1 - start) * width / span));
    expected[column] = expected[after] = 'E';
    EXPECT_EQ(Drawn(wave, {start, span, width}).Lane(7), expected) << zoom;
  }
}

TEST(DrawDigital, SelectedAndMissingBitsHaveColoursOfTheirOwnAndEveryPixelIsPainted) {
  const TestWave wave(Codes(10, 0));
  const Drawn drawn(wave, {0, 10, 20, 12, 0x8001, 7, 2});
  EXPECT_EQ(drawn.Lane(0, kSelected), std::string(20, 'L'));
  EXPECT_EQ(drawn.Lane(11), std::string(20, 'L'));
  EXPECT_EQ(drawn.Lane(12, kQuiet), std::string(20, 'L')) << "the thirteenth bit is more than the model has";
  const int row = W_RowsOfLane(0, Drawn::kHeight).top;
  EXPECT_GT(drawn.At(4, row), drawn.At(3, row)) << "between the markers, whichever is first";
  EXPECT_EQ(drawn.At(13, row), drawn.At(4, row));
  EXPECT_EQ(drawn.At(14, row), drawn.At(3, row));
  EXPECT_GT(drawn.At(3, row), kGround);
  EXPECT_EQ(drawn.At(3, W_RowsOfLane(1, Drawn::kHeight).top), kGround);
  for (const int height : {5, 100, 211}) { // without lanes, and where rows are left over
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(20 * height), 0xFF123456);
    PixelContext context(pixels, 20, 20, height);
    EXPECT_EQ(W_DrawDigitalPattern(context, wave.Handle(), 0, 10, 12, 3, 7, 2, 20, height, 1, 2, 3, 4), W_SUCCESS);
    EXPECT_EQ(std::ranges::count(pixels, 0xFF123456), 0) << height;
  }
}

TEST(DrawDigital, AGhostIsSeenWhereItDiffers) {
  const TestWave wave(Codes{0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0});
  const TestWave ghost(Codes{0, 1, 1, 0, 0, 1, 0, 1, 0, 0, 0, 0});
  EXPECT_EQ(Drawn(wave, {0, 12, 12}, ghost.Handle()).Lane(15), "LeheleddeLLL");
  EXPECT_EQ(Drawn(wave, {0, 12, 6}, ghost.Handle()).Lane(15), "ddddeL") << "several points a column";
  EXPECT_EQ(Drawn(wave, {0, 3, 9, 16, 0, 0, 0, 0, 2}, ghost.Handle()).Lane(15), "LLLeehhhh");
  EXPECT_EQ(Drawn(wave, {2, 3, 9, 16, 0, 0, 0, 0, 2}, ghost.Handle()).Lane(15), "hhheeLlll") << "as wide as others";
  EXPECT_EQ(Drawn(wave, {0, 12, 12}, wave.Handle()).Lane(15), Drawn(wave, {0, 12, 12}).Lane(15));
}

TEST(DrawDigital, LanesAreFoundWhereTheyAreDrawn) {
  for (int height = 1; height <= 600; ++height) {
    const double unit = height / 49.0;
    for (int row = -3; row < height; ++row) {
      const bool inside = row - unit >= 0 && std::floor(3 * unit) > 0;
      const int lane = inside ? static_cast<int>(std::floor(std::ceil(row - unit) / std::floor(3 * unit))) : -1;
      ASSERT_EQ(W_LaneAt(row, height), lane) << row << " of " << height;
      for (int drawn = 0; drawn < W_LANES; ++drawn) {
        const LaneRows rows = W_RowsOfLane(drawn, height);
        ASSERT_EQ(row >= rows.top && row < rows.bottom, lane == drawn) << row << " of " << height;
      }
    }
  }
}

// With 98 rows a lane's high row is 3 + 6 i, its low row 6 + 6 i.
TEST(DrawDigital, OnPaperALaneIsAStepOrARectangle) {
  const struct {
    Codes codes;
    int width;
    double scale;
    Calls calls;
  } rows[] = {
      {{-1, -1, -1, -1}, 4, 1, {"polyline dot 0 0,9 3,9", "polyline dot 0 0,93 3,93"}},
      {{0, 0, 1, 1}, 8, 1, {"polyline dot 0 0,12 7,12", "polyline dot 0 0,96 4,96 4,93 5,93 7,93"}},
      {{0, 0, 1, 0, 0, 0}, 3, 1, {"polyline dot 0 0,12 2,12", "polyline dot 0 0,96 1,96 1,93 1,96 2,96"}},
      {{0, 1, 0, 1, 0, 1, 0, 0, 0, 0},
       5,
       1,
       {"polyline dot 0 0,12 4,12", "fill 0 93 3 4 10526880", "polyline dot 0 3,93 3,96 4,96"}},
      {{0, 0, 1, 1}, 8, 2, {"polyline dot 0 0,11 7,11", "polyline dot 0 0,95 4,95 4,93 6,93 7,93"}},
  };
  for (const auto& row : rows) {
    RecordingContext context(row.width, 98, row.scale);
    const TestWave wave(row.codes);
    const auto span = static_cast<double>(row.codes.size());
    EXPECT_EQ(W_DrawDigital(context, wave.Handle(), 0, span, 0x4001, row.width, 98), W_SUCCESS);
    EXPECT_EQ(context.calls, row.calls);
  }
  const TestWave noise(Noise(W_MAX_POINTS));
  RecordingContext page(4000, 3000, 6);
  EXPECT_EQ(W_DrawDigital(page, noise.Handle(), 0, W_MAX_POINTS, 0xFFFF, 4000, 3000), W_SUCCESS);
  EXPECT_EQ(page.calls.size(), 16U) << "a rectangle a lane";
}

TEST(Digital, BitsAreMirrored) {
  EXPECT_EQ(reverse_bit(0x8000), 0x0001);
  EXPECT_EQ(reverse_bit(0x1234), 0x2C48);
}

TEST(Digital, OneBitIsCopiedOntoAnother) {
  const TestWave wave(Codes{0x0001, 0x0004, 0x0005, -1, 0x0001});
  EXPECT_EQ(W_CopyBitDigital(wave.Handle(), 1, 3, 0x0004, 0x8000), W_SUCCESS);
  EXPECT_EQ(wave.Copy(), (Codes{0x0001, static_cast<std::int16_t>(0x8004), static_cast<std::int16_t>(0x8005), -1, 1}));
  for (const std::int32_t mask : {0, 3, 0x10000, -32768, -1})
    EXPECT_EQ(W_CopyBitDigital(wave.Handle(), 0, 5, mask, 1), W_BAD_VALUE) << mask;
}

} // namespace calder::draw_digital_test
