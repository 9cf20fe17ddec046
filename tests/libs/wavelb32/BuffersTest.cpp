#include "TestWave.h"

namespace calder::buffers_test {

Codes Counting(std::int16_t points) {
  Codes codes(static_cast<std::size_t>(points));
  std::iota(codes.begin(), codes.end(), std::int16_t{1});
  return codes;
}

TEST(Buffers, AFreedHandleStaysBadWhileItsSlotIsUsedAgain) {
  const WaveHandle old = W_AllocMemory(4);
  ASSERT_GT(old, 0);
  EXPECT_EQ(W_FreeMemory(old), W_SUCCESS);
  EXPECT_EQ(W_FreeMemory(old), W_BAD_HANDLE);
  for (int i = 0; i < 5000; ++i) {
    const WaveHandle next = W_AllocMemory(1);
    ASSERT_GT(next, 0);
    ASSERT_NE(next, old);
    ASSERT_TRUE(W_Lock(old).empty());
    ASSERT_EQ(W_FreeMemory(next), W_SUCCESS);
  }
}

TEST(Buffers, AllocationsHaveLimitsAndKinds) {
  for (const std::int32_t points : {0, -1, (1 << 26) + 1, std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_EQ(W_AllocMemory(points), 0) << points;
    EXPECT_EQ(W_AllocMemory32(points), 0) << points;
  }
  const WaveHandle values = W_AllocMemory32(3);
  EXPECT_TRUE(W_Lock(values).empty());
  EXPECT_EQ(W_FreeMemory(values), W_BAD_HANDLE);
  W_Lock32(values)[2] = 1 << 20;
  EXPECT_EQ(W_GetWaveData32(values, 2, 3), 1 << 20);
  EXPECT_EQ(W_GetWaveData(values, 2, 3), W_NO_DATA);
  EXPECT_EQ(W_FreeMemory32(values), W_SUCCESS);
  for (const WaveHandle bad : {0, -1, values, std::numeric_limits<WaveHandle>::max()})
    EXPECT_EQ(W_FreeMemory32(bad), W_BAD_HANDLE) << bad;
}

TEST(Buffers, ThousandsOfBuffersAtOnceEndInAFailureNotInACrash) {
  std::vector<WaveHandle> handles;
  for (WaveHandle handle = W_AllocMemory(1); handle != 0; handle = W_AllocMemory(1)) handles.push_back(handle);
  EXPECT_GE(handles.size(), 4000U);
  for (const WaveHandle handle : handles) ASSERT_EQ(W_FreeMemory(handle), W_SUCCESS);
  const WaveHandle again = W_AllocMemory(1);
  EXPECT_NE(again, 0);
  EXPECT_EQ(W_FreeMemory(again), W_SUCCESS);
}

// Which of ten points a range clears.
TEST(Buffers, RangesRoundUpToWholePoints) {
  using Row = std::tuple<double, double, std::int32_t, const char*>;
  for (const auto& [start, count, status, theCleared] :
       {Row{0, 10, W_SUCCESS, "xxxxxxxxxx"}, Row{2, 3, W_SUCCESS, "..xxx....."}, Row{1.2, 2.1, W_SUCCESS, "..xxx....."},
        Row{0.4, 9.6, W_SUCCESS, ".xxxxxxxxx"}, Row{1.2, 4.2 - 1.2 + 1e-9, W_SUCCESS, "..xxx....."},
        Row{2 + 1e-9, 3 - 1e-9, W_SUCCESS, "..xxx....."}, Row{1.2, 3.00001, W_SUCCESS, "..xxxx...."},
        Row{9.5, 0.5, W_SUCCESS, ".........."}, Row{10, 0, W_SUCCESS, ".........."}, Row{3, 0, W_SUCCESS, ".........."},
        Row{-0.5, 2, W_SUCCESS, "xx........"}, Row{-1, 2, W_BAD_RANGE, ".........."},
        Row{0, 11, W_BAD_RANGE, ".........."}, Row{5, 6, W_BAD_RANGE, ".........."},
        Row{5, -1, W_BAD_RANGE, ".........."}, Row{kNotANumber, 1, W_BAD_RANGE, ".........."},
        Row{0, kNotANumber, W_BAD_RANGE, ".........."}, Row{0, kInfinity, W_BAD_RANGE, ".........."},
        Row{1e300, 1, W_BAD_RANGE, ".........."}}) {
    const TestWave wave(Counting(10));
    EXPECT_EQ(W_ClearMemory(wave.Handle(), start, count), status) << start << " " << count;
    std::string cleared;
    for (const std::int16_t code : wave.Codes()) cleared += code == 0 ? 'x' : '.';
    EXPECT_EQ(cleared, theCleared) << start << " " << count;
  }
}

TEST(Buffers, CopyingMovesOverlappingRangesToo) {
  const TestWave wave(Counting(6));
  EXPECT_EQ(W_CopyMemory(wave.Handle(), wave.Handle(), 0, 2, 4), W_SUCCESS);
  EXPECT_EQ(wave.Copy(), (Codes{1, 2, 1, 2, 3, 4}));
  EXPECT_EQ(W_CopyMemory(wave.Handle(), wave.Handle(), 2, 0, 4), W_SUCCESS);
  EXPECT_EQ(wave.Copy(), (Codes{1, 2, 3, 4, 3, 4}));
  EXPECT_EQ(W_CopyMemory(wave.Handle(), wave.Handle(), 3, 0, 4), W_BAD_RANGE);
  EXPECT_EQ(W_CopyMemory(wave.Handle(), 0, 0, 0, 1), W_BAD_HANDLE);
  EXPECT_EQ(wave.Copy(), (Codes{1, 2, 3, 4, 3, 4}));
}

TEST(Buffers, DeletingClosesTheGapWithinThePointCount) {
  const TestWave wave(Counting(8));
  EXPECT_EQ(W_DeleteWave(wave.Handle(), 1, 2, 6), W_SUCCESS);
  EXPECT_EQ(wave.Copy(), (Codes{1, 4, 5, 6, 0, 0, 7, 8}));
  EXPECT_EQ(W_DeleteWave(wave.Handle(), 0, 6, 6), W_SUCCESS);
  EXPECT_EQ(wave.Copy(), (Codes{0, 0, 0, 0, 0, 0, 7, 8}));
  EXPECT_EQ(W_DeleteWave(wave.Handle(), 0, 7, 6), W_BAD_RANGE);
  EXPECT_EQ(W_DeleteWave(wave.Handle(), 0, 1, 9), W_BAD_RANGE);
}

TEST(Buffers, ReadingTheRightEndGivesTheLastPoint) {
  const TestWave wave(Counting(5));
  using Row = std::tuple<double, std::int32_t, std::int32_t>;
  for (const auto& [index, pointCount, code] :
       {Row{0, 5, 1}, Row{3.2, 5, 5}, Row{4, 5, 5}, Row{5, 5, 5}, Row{3, 3, 3}, Row{2.5, 3, 3}, Row{5.1, 5, W_NO_DATA},
        Row{-1, 5, W_NO_DATA}, Row{0, 6, W_NO_DATA}, Row{0, 0, W_NO_DATA}, Row{kNotANumber, 5, W_NO_DATA}})
    EXPECT_EQ(W_GetWaveData(wave.Handle(), index, pointCount), code) << index;
}

TEST(Buffers, ExtremesAreThoseOfTheRangeAtEveryLength) {
  constexpr std::int32_t points = 150;
  const TestWave wave(points);
  ASSERT_EQ(W_InitRand(5), W_SUCCESS);
  ASSERT_EQ(W_MakeNoise(wave.Handle(), 0, points, 0, 65534), W_SUCCESS);
  for (std::int32_t count = 1; count <= points; ++count) {
    const auto range = wave.Codes().last(static_cast<std::size_t>(count));
    EXPECT_EQ(W_GetMaxMin(wave.Handle(), points - count, count, 0), *std::ranges::min_element(range));
    EXPECT_EQ(W_GetMaxMin(wave.Handle(), points - count, count, 1), *std::ranges::max_element(range));
  }
  EXPECT_EQ(W_GetMaxMin(wave.Handle(), 0, 0, 0), W_NO_DATA);
  EXPECT_EQ(W_GetMaxMin(wave.Handle(), 0, 1, 2), W_NO_DATA);
}

} // namespace calder::buffers_test
