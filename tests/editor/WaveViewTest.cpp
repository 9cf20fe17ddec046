#include "editor/WaveView.h"
#include "Testing.h"

namespace calder::wave_view_test {

struct WaveViewTest : testing::Test {
  SystemInfo settings;
  ConvUnit units{settings};
  ViewState state;
  WaveView view{settings, units, state};

  void SetUp() override { Size(524288); }
  void Size(std::int32_t points) {
    settings.MemorySize = points;
    view.Init();
  }
  using Range = std::pair<int, int>;
  [[nodiscard]] Range X() const { return {state.XStart, state.XEnd}; }
  [[nodiscard]] Range Y() const { return {state.YStart, state.YEnd}; }
};

TEST_F(WaveViewTest, XZoomShowsItsPartFromTheLeftEdge) {
  const std::tuple<int, int, int, int> rows[] = {
      {1, 16384, 16384, 262144}, {2, 8192, 24576, 131072}, {7, 256, 32512, 4096}};
  for (const auto& [index, page, maximum, end] : rows) {
    view.ZoomX(index);
    EXPECT_EQ(Texts(view.HScroll().largeChange, view.HScroll().maximum), Texts(page, maximum));
    EXPECT_EQ(X(), Range(0, end));
  }
  EXPECT_TRUE(view.Hrizontal_Scroll(32512));
  EXPECT_EQ(state.XEnd, 524288);
  EXPECT_FALSE(view.Hrizontal_Scroll(32512)) << "nothing moved";
  view.ZoomX(1);
  EXPECT_EQ(state.XEnd, 524288) << "the bar stays inside its limits";
  view.ZoomX(0);
  EXPECT_FALSE(view.HScroll().enabled);
  EXPECT_EQ(X(), Range(0, 524288));
  view.ZoomX(99);
  EXPECT_EQ(view.XZoomIndex(), 0);
}

TEST_F(WaveViewTest, YZoomCentresOnZeroFirstAndKeepsTheMiddleLater) {
  view.ZoomY(1);
  EXPECT_EQ(view.YZoomIndex(), 1);
  EXPECT_EQ(view.VScroll().value, 8192);
  EXPECT_EQ(Y(), Range(16384, 49151));
  view.Vertical_Scroll(view.VScroll().maximum);
  const int middle = (state.YStart + state.YEnd) / 2;
  view.ZoomY(3);
  EXPECT_NEAR((state.YStart + state.YEnd) / 2, middle, 2);
  view.ZoomY(0);
  EXPECT_EQ(Y(), Range(0, 65534));
}

TEST_F(WaveViewTest, SmallMemoriesHaveARangeAtEveryZoom) {
  for (const std::int32_t size : {1, 2, 5, 100, 1000, 32768, 32769, 50001}) {
    Size(size);
    for (int zoom = 0; zoom < WaveView::kXZooms; ++zoom) {
      view.ZoomX(zoom);
      for (const int value : {0, view.HScroll().maximum / 2, view.HScroll().maximum}) {
        view.Hrizontal_Scroll(value);
        EXPECT_LT(state.XStart, state.XEnd) << size << " at zoom " << zoom;
      }
    }
  }
  Size(32768);
  EXPECT_EQ(state.ScrollStep, 1);
  Size(524288);
  EXPECT_EQ(state.ScrollStep, 16);
}

TEST_F(WaveViewTest, ZoomingAtThePointerKeepsThePointUnderIt) {
  for (const double fraction : {0.0, 0.3, 0.5, 1.0}) {
    view.ZoomX(0);
    for (int zoom = 1; zoom < WaveView::kXZooms; ++zoom) {
      const double before = state.XStart + fraction * (state.XEnd - state.XStart);
      view.ZoomXAt(zoom, fraction);
      const double after = state.XStart + fraction * (state.XEnd - state.XStart);
      EXPECT_NEAR(after, before, state.ScrollStep) << fraction << " at zoom " << zoom;
    }
  }
  view.ZoomY(0);
  view.ZoomYAt(2, 0.25);
  EXPECT_NEAR(state.YStart + 0.25 * (state.YEnd - state.YStart), 0.25 * 65534, 4);
}

TEST_F(WaveViewTest, PixelsAndPositionsMatch) {
  view.ZoomX(2);
  view.Hrizontal_Scroll(8192);
  EXPECT_EQ(Texts(view.PointToPixelX(131072, 1000), view.PointToPixelX(262144, 1000)), "0 1000");
  EXPECT_DOUBLE_EQ(view.PixelXToPoint(500, 1000), 196608);
  view.ZoomY(0);
  EXPECT_EQ(Texts(view.CodeToPixelY(32767, 800), view.CodeToPixelY(0, 800)), "0 400");
  EXPECT_EQ(view.CodeToPixelY(-32767, 800), 800);
  EXPECT_NEAR(view.PixelYToCode(view.CodeToPixelYExact(-1234, 777), 777), -1234, 1e-6);
}

TEST_F(WaveViewTest, LabelsShowTheRangeWithItsUnit) {
  settings.XUnit = 0;
  settings.YUnit = 0;
  EXPECT_EQ(Texts(view.StartLabel(), view.EndLabel()), "0.000000Word 524288.0Word");
  view.ZoomY(1);
  EXPECT_EQ(Texts(view.MaxLabel(), view.MinLabel()), "16383.00 -16384.0");
  EXPECT_EQ(view.OffsetLabel(), "0.000000") << "a centre of -1 is shown as 0";
}

} // namespace calder::wave_view_test
