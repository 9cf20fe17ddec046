#include "RecordingContext.h"
#include "TestWave.h"
#include "platform/PixelContext.h"

namespace calder::draw_test {

using Calls = std::vector<std::string>;

struct View {
  double xStart, yStart, xSpan, ySpan;
  int width, height;
};

Calls Drawn(const TestWave& wave, const View& view, double scale = 1, std::int32_t pointCount = 0) {
  RecordingContext context(view.width, view.height, scale);
  EXPECT_EQ(W_DrawWave2(context, wave.Handle(), view.xStart, view.yStart, view.xSpan, view.ySpan, view.width,
                        view.height, pointCount),
            W_SUCCESS);
  return context.calls;
}

TEST(DrawWave, TheLowestCodeStandsInTheLastRow) {
  EXPECT_EQ(Drawn(TestWave(Codes(4, -32767)), {0, 0, 4, 65534, 2, 100}), (Calls{"columns 0 99..99 99..99"}));
}

TEST(DrawWave, ZoomedViewsCutColumnsAtTheirEdges) {
  const TestWave wave(Codes{32767, -32767, 32767, 32767, -32767, -32767, 0, 0});
  // 256 depths around code 0 on 100 rows: full scale would be row -12799, far outside of the picture.
  EXPECT_EQ(Drawn(wave, {0, 32639, 8, 256, 4, 100}), (Calls{"columns 0 0..99 - 0..99 50..99"}));
  // A fraction of a depth over the whole picture: rows beyond any 16-bit number.
  EXPECT_EQ(Drawn(wave, {0, 32766.875, 8, 0.25, 4, 1000}), (Calls{"columns 0 0..999 - 0..999 500..999"}));
}

TEST(DrawWave, SparseViewsAreALineThroughEveryPointAndDotsWhenWide) {
  const TestWave wave(Codes{32767, 0, -32767, 0, 32767, 0});
  EXPECT_EQ(Drawn(wave, {0, 0, 6, 65534, 30, 100}), (Calls{"polyline dot 0 0,0 5,50 10,99 15,50 20,0 25,50 30,50"}));
  EXPECT_EQ(Drawn(wave, {1, 0, 2, 65534, 16, 100}), (Calls{"polyline dot 0 8,99 16,50", "polyline dot 3 0,50 8,99"}));
  EXPECT_EQ(Drawn(wave, {1.5, 0, 2, 65534, 16, 100}),
            (Calls{"polyline dot 0 -4,50 4,99", "polyline dot 0 12,50 20,0", "polyline dot 3 4,99 12,50"}));
  EXPECT_EQ(Drawn(wave, {1, 0, 2, 65534, 16, 100}, 2), (Calls{"polyline dot 0 0,50 8,99 16,50"}))
      << "8 device pixels are 4 logical ones on this surface";
  EXPECT_EQ(Drawn(wave, {0, 0, 6, 65534, 30, 100}, 1, 3), (Calls{"polyline dot 0 0,0 5,50 10,99 15,99"}))
      << "the last point's code holds, what lies after the waveform is not looked at";
}

TEST(DrawWave, AWiderTraceOnDenseSurfacesIsWiderBothWays) {
  const TestWave wave(Codes{0, 0, 0, 0, 32767, 32767, 0, 0, 0, 0});
  EXPECT_EQ(Drawn(wave, {0, 0, 10, 65534, 5, 100}, 2), (Calls{"columns 0 50..51 50..51 0..51 0..51 0..51"}));
}

TEST(DrawWave, BadArgumentsDrawNothing) {
  const TestWave wave(4);
  RecordingContext context(10, 10);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const View views[] = {{nan, 0, 4, 65534, 10, 10}, {0, nan, 4, 65534, 10, 10},   {0, 0, 0, 65534, 10, 10},
                        {0, 0, 4, -1, 10, 10},      {0, 0, 1e300, 65534, 10, 10}, {0, 0, 4, 65534, 0, 10},
                        {0, 0, 4, 65534, 10, -1},   {0, 0, 4, 65534, 32768, 10}};
  for (const View& v : views)
    EXPECT_EQ(W_DrawWave2(context, wave.Handle(), v.xStart, v.yStart, v.xSpan, v.ySpan, v.width, v.height),
              W_BAD_VALUE);
  EXPECT_EQ(W_DrawWave2(context, 0, 0, 0, 4, 65534, 10, 10), W_BAD_HANDLE);
  EXPECT_EQ(W_DrawWave2(context, wave.Handle(), 0, 0, 4, 65534, 10, 10, 5), W_BAD_RANGE);
  EXPECT_EQ(context.calls, Calls{});
}

// The picture of a random waveform must have, in each column, exactly the rows from its highest to its lowest point and
// none between it and its left neighbour missing, at every zoom and scroll.
TEST(DrawWave, RandomViewsAgreeWithAPointByPointDrawing) {
  constexpr std::int32_t points = 3000;
  const TestWave wave(points);
  ASSERT_EQ(W_InitRand(3), W_SUCCESS);
  ASSERT_EQ(W_MakeNoise(wave.Handle(), 0, points, 0, 65534), W_SUCCESS);
  std::mt19937 random(1);
  const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
  for (int round = 0; round < 200; ++round) {
    const View v{static_cast<double>(pick(0, 2500)),
                 static_cast<double>(pick(-100, 65000)),
                 static_cast<double>(pick(100, 3000)),
                 static_cast<double>(pick(1, 65534)),
                 pick(20, 99),
                 pick(5, 90)};
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(v.width) * static_cast<std::size_t>(v.height), 0);
    PixelContext context(pixels, static_cast<std::size_t>(v.width), v.width, v.height);
    context.SetPen(0xFFFFFF);
    ASSERT_EQ(W_DrawWave2(context, wave.Handle(), v.xStart, v.yStart, v.xSpan, v.ySpan, v.width, v.height), W_SUCCESS);
    struct Column {
      int low = INT16_MAX;
      int high = INT16_MIN;
    };
    std::vector<Column> columns(static_cast<std::size_t>(v.width));
    for (int p = 0; p < points; ++p) {
      const double x = std::floor((p - v.xStart) * v.width / v.xSpan);
      if (x < 0 || x >= v.width) continue;
      Column& column = columns[static_cast<std::size_t>(x)];
      const int code = wave.Codes()[static_cast<std::size_t>(p)];
      column.low = std::min(column.low, code);
      column.high = std::max(column.high, code);
    }
    for (int x = 0; x < v.width; ++x) {
      Column column = columns[static_cast<std::size_t>(x)];
      if (x > 0 && columns[static_cast<std::size_t>(x) - 1].low <= columns[static_cast<std::size_t>(x) - 1].high &&
          column.low <= column.high) {
        column.low = std::min(column.low, columns[static_cast<std::size_t>(x) - 1].high);
        column.high = std::max(column.high, columns[static_cast<std::size_t>(x) - 1].low);
      }
      const double top = std::floor((32767 - column.high - v.yStart) * v.height / v.ySpan);
      double bottom = std::floor((32767 - column.low - v.yStart) * v.height / v.ySpan);
      if (32767 - column.low - v.yStart == v.ySpan) bottom = v.height - 1;
      for (int y = 0; y < v.height; ++y) {
        const bool expected = column.low <= column.high && top <= y && y <= bottom;
        const bool found =
            pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(v.width) + static_cast<std::size_t>(x)] != 0;
        ASSERT_EQ(found, expected) << "round " << round << " at " << x << "," << y;
      }
    }
  }
}

TEST(DrawGrid, HasTenColumnsEightRowsAndTheZeroLineOnTop) {
  RecordingContext context(100, 80);
  EXPECT_EQ(W_DrawGrid(context, 100, 80), W_SUCCESS);
  ASSERT_EQ(context.calls.size(), 7U + 9U + 3U);
  EXPECT_EQ(Texts(context.calls[1], context.calls[8], context.calls.back()),
            "line 0 10 99 10 line 10 0 10 79 line 0 40 99 40");
}

TEST(DrawGrid, TheZeroLineIsDrawnOnlyInsideTheView) {
  using Row = std::tuple<double, double, Calls>;
  for (const auto& [yStart, ySpan, calls] :
       {Row{0, 65534, {"line 0 50 19 50"}}, Row{32767, 100, {"line 0 0 19 0"}}, Row{32667, 100, {"line 0 99 19 99"}},
        Row{32768, 100, {}}, Row{0, 100, {}}}) {
    RecordingContext context(20, 100);
    EXPECT_EQ(W_DrawGrid2(context, yStart, ySpan, 20, 100), W_SUCCESS);
    EXPECT_EQ(context.calls, calls) << yStart;
  }
}

} // namespace calder::draw_test
