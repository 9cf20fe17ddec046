#include "platform/PixelContext.h"
#include "Testing.h"

namespace calder::pixel_context_test {

// A small surface with a guard of two pixels after each row; Text() shows pixels that are not black as '#'.
class Surface {
public:
  Surface(int width, int height)
      : width_(width), height_(height),
        pixels_((static_cast<std::size_t>(width) + 2) * static_cast<std::size_t>(height), 0xFF000000),
        context(pixels_, static_cast<std::size_t>(width) + 2, width, height) {
    context.SetPen(0xFFFFFF);
  }
  [[nodiscard]] std::uint32_t At(int x, int y) const {
    return pixels_[static_cast<std::size_t>(y) * (static_cast<std::size_t>(width_) + 2) + static_cast<std::size_t>(x)];
  }
  [[nodiscard]] std::vector<std::string> Text() const {
    std::vector<std::string> rows;
    for (int y = 0; y < height_; ++y) {
      std::string row;
      for (int x = 0; x < width_ + 2; ++x) row += At(x, y) == 0xFF000000 ? (x < width_ ? '.' : '|') : '#';
      rows.push_back(row);
    }
    return rows;
  }

private:
  int width_;
  int height_;
  std::vector<std::uint32_t> pixels_;

public:
  PixelContext context;
};

using Rows = std::vector<std::string>;

TEST(PixelContext, LinesHaveBothEndsAndAreCutAtTheEdges) {
  using Row = std::tuple<int, int, int, int, int, Rows>;
  constexpr int kLeast = std::numeric_limits<int>::min();
  constexpr int kMost = std::numeric_limits<int>::max();
  const Row rows[] = {{0, 0, 3, 3, 1, {"#...||", ".#..||", "..#.||", "...#||"}},
                      {3, 1, 0, 1, 1, {"....||", "####||", "....||", "....||"}},
                      {2, 2, 2, 2, 1, {"....||", "....||", "..#.||", "....||"}},
                      {-6, -6, 9, 9, 1, {"#...||", ".#..||", "..#.||", "...#||"}},
                      {0, 3, 3, 2, 1, {"....||", "....||", "..##||", "##..||"}},
                      {1, -5, 1, 50, 2, {".##.||", ".##.||", ".##.||", ".##.||"}},
                      {0, 2, 3, 2, 3, {"....||", "####||", "####||", "####||"}},
                      {kLeast, 2, kMost, 2, 1, {"....||", "....||", "####||", "....||"}},
                      {9, 0, 9, 3, 1, {"....||", "....||", "....||", "....||"}}};
  for (const auto& [x1, y1, x2, y2, pen, drawn] : rows) {
    Surface surface(4, 4);
    surface.context.SetPen(0xFF00FF, pen);
    surface.context.Line(x1, y1, x2, y2);
    EXPECT_EQ(surface.Text(), drawn) << x1 << "," << y1 << " " << x2 << "," << y2;
  }
}

TEST(PixelContext, PolylinesAndDotsSurviveAnyNumber) {
  Surface surface(6, 4);
  const DevicePoint points[] = {{1, 1}, {4, 1}};
  surface.context.Polyline(points, 3);
  EXPECT_EQ(surface.Text(), (Rows{"######||", "######||", "######||", "......||"}));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const DevicePoint wild[] = {{nan, 1e300}, {-1e300, nan}, {1e300, 3}, {0, -1e18}};
  surface.context.Polyline(wild, 1 << 30);
  surface.context.Polyline({}, 5);
}

TEST(PixelContext, InvertedDrawingTwiceRestores) {
  Surface surface(8, 8);
  surface.context.FillRectangle(0, 0, 8, 3, 0x123456);
  const Rows before = surface.Text();
  surface.context.SetDrawMode(DrawMode::Invert);
  surface.context.SetPen(0, 3);
  const std::int16_t tops[] = {0, 3, 5, -9, 2, 1, 1, 7};
  const std::int16_t bottoms[] = {3, 2, 7, 99, 2, 6, 1, 7};
  const DevicePoint points[] = {{0, 0}, {3, 7}, {5, 7}};
  for (int pass = 0; pass < 2; ++pass) {
    surface.context.Rectangle(6, 6, 1, 1);
    surface.context.Line(2, 0, 2, 7);
    surface.context.Columns(0, tops, bottoms);
    surface.context.SetPen(0, 1);
    surface.context.Polyline(points, 0);
    EXPECT_EQ(surface.Text() == before, pass == 1);
    surface.context.SetPen(0, 3);
  }
  EXPECT_EQ(surface.At(1, 1), 0xFF123456);
  surface.context.SetPen(0, 1);
  surface.context.Rectangle(1, 1, 4, 4);
  EXPECT_EQ(Texts(surface.At(1, 1), surface.At(1, 4)), Texts(0xFFEDCBA9, 0xFFFFFFFF)) << "a corner is inverted once";
}

TEST(PixelContext, ColumnsAgreeWithAPixelByPixelDrawing) {
  std::mt19937 random(7);
  const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
  for (int round = 0; round < 300; ++round) {
    const int width = pick(1, 200);
    const int height = pick(1, 40);
    const int x = pick(-50, 100);
    const auto count = static_cast<std::size_t>(pick(0, 250));
    const bool isWide = pick(0, 1) == 1; // long columns, so that whole blocks are covered
    std::vector<std::int16_t> tops(count);
    std::vector<std::int16_t> bottoms(count);
    for (std::size_t i = 0; i < count; ++i) {
      tops[i] = static_cast<std::int16_t>(isWide ? pick(-3, 5) : pick(-50, 60));
      bottoms[i] = static_cast<std::int16_t>(isWide ? pick(30, 50) : pick(-50, 60));
      if (pick(0, 40) == 0) tops[i] = INT16_MIN;
      if (pick(0, 40) == 0) bottoms[i] = INT16_MAX;
    }
    Surface surface(width, height);
    const bool inverted = pick(0, 3) == 0;
    if (inverted) surface.context.SetDrawMode(DrawMode::Invert);
    surface.context.Columns(x, tops, bottoms);
    for (int column = 0; column < width + 2; ++column) {
      const int i = column - x;
      const bool exists = column < width && i >= 0 && static_cast<std::size_t>(i) < count;
      for (int y = 0; y < height; ++y) {
        const bool covered =
            exists && tops[static_cast<std::size_t>(i)] <= y && y <= bottoms[static_cast<std::size_t>(i)];
        ASSERT_EQ(surface.At(column, y), covered ? 0xFFFFFFFF : 0xFF000000) << round << " at " << column << "," << y;
      }
    }
  }
}

TEST(PixelContext, RowsOfColoursAgreeWithRectangles) {
  const std::vector<Color> mixed = {1, 1, 2, 0xFF0000, 0xFF0000, 3, 4};
  const std::vector<Color> even(9, 0x123456);
  for (const auto* colors : {&mixed, &even}) {
    for (const auto& [top, bottom] : {std::pair{1, 4}, {-2, 1}, {3, 9}, {2, 2}, {4, 1}, {-5, 0}, {5, 8}}) {
      Surface fast(5, 5);
      Surface plain(5, 5);
      fast.context.Rows(top, bottom, *colors);
      plain.context.DeviceContext::Rows(top, bottom, *colors);
      for (int i = 0; i < 25; ++i) ASSERT_EQ(fast.At(i % 5, i / 5), plain.At(i % 5, i / 5)) << top << ".." << bottom;
    }
  }
}

TEST(PixelContext, ASurfaceThatTheMemoryDoesNotHoldIsEmpty) {
  std::vector<std::uint32_t> pixels(20, 0);
  using Row = std::tuple<std::size_t, int, int, bool>;
  for (const auto& [stride, width, height, fits] :
       {Row{5, 5, 4, true}, Row{5, 5, 5, false}, Row{4, 5, 1, false}, Row{8, 4, 3, true}, Row{5, -1, 4, false},
        Row{5, 5, 0, false}, Row{std::numeric_limits<std::size_t>::max(), 5, 2, false}}) {
    PixelContext context(pixels, stride, width, height);
    EXPECT_EQ(context.Width() > 0, fits) << stride << " " << width << " " << height;
    context.Clear(0xABCDEF);
    context.Line(-10, -10, 30, 30);
  }
}

} // namespace calder::pixel_context_test
