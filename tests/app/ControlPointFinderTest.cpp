#include "app/ControlPointFinder.h"

#include "libs/wavelb32/TestWave.h"

#include <ctime>

namespace calder::control_point_finder_test {

struct Found {
  std::int32_t status = 0;
  std::vector<std::int32_t> positions;
  Codes values;
  bool operator==(const Found&) const = default;
};

template <class Search>
Found Outcome(Search search) {
  Found found{0, std::vector<std::int32_t>(W_MAX_CONTROL_POINTS), Codes(W_MAX_CONTROL_POINTS)};
  std::int32_t count = -1;
  found.status = search(found.positions, found.values, count);
  found.positions.resize(static_cast<std::size_t>(count));
  found.values.resize(static_cast<std::size_t>(count));
  return found;
}

// Processor seconds of this thread alone.
double OwnSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

TEST(ControlPointFinder, GivesWhatASearchGivesWhateverWasPreparedBefore) {
  constexpr std::int32_t points = 100000;
  const TestWave wave(points);
  ControlPointFinder finder;
  const auto find = [&] { return Outcome([&](auto&&... out) { return finder.Find(wave.Codes(), out...); }); };
  const auto expected = [&] {
    return Outcome([&](auto&&... out) { return W_FindControlPoints(wave.Codes(), out...); });
  };
  for (int round = 0; round < 6; ++round) {
    ASSERT_EQ(W_MakeSin(wave.Handle(), 0, points, 0, 60000, 1 + round % 2, 0), W_SUCCESS);
    if (round % 3 != 0) finder.Prepare(wave.Codes());
    if (round == 4) wave.Codes()[500] = 32000; // changed after the search has begun
    if (round == 5) {
      EXPECT_EQ(W_MakeNoise(wave.Handle(), 0, points, 0, 60000), W_SUCCESS);
    }
    EXPECT_EQ(find(), expected()) << round;
    EXPECT_EQ(find(), expected()) << round;
  }
  EXPECT_EQ(Outcome([&](auto&&... out) { return finder.Find({}, out...); }).status, W_BAD_RANGE);
}

TEST(ControlPointFinder, WhatWasPreparedCostsTheCallerNothing) {
  const TestWave wave(W_MAX_POINTS);
  ASSERT_EQ(W_MakeSin(wave.Handle(), 0, W_MAX_POINTS, 0, 65534, 1, 0), W_SUCCESS);
  const auto timed = [&](ControlPointFinder& finder) {
    const double start = OwnSeconds();
    const Found found = Outcome([&](auto&&... out) { return finder.Find(wave.Codes(), out...); });
    EXPECT_GT(found.positions.size(), 100U);
    return OwnSeconds() - start;
  };
  ControlPointFinder searching;
  const double search = timed(searching);
  ControlPointFinder prepared;
  prepared.Prepare(wave.Codes());
  EXPECT_LT(timed(prepared), search / 4);
  EXPECT_LT(timed(searching), search / 4) << "what was found is kept";
}

} // namespace calder::control_point_finder_test
