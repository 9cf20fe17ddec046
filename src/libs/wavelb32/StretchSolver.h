// The fewest valid joins from the first to the last point of a stretch, in one pass over its points. Inside the library
// only; JoinSearch.h says what a valid join is.
//
// 1. A join is primitive when its line passes through no whole point (whole x, whole value) between its ends. Every
//    valid join is one primitive join or a row of equal ones, so the fewest joins to a point follow from the primitive
//    joins that end there.
// 2. First let each code lie within 1/2 of the line, ends included ("possible" joins). Two possible primitive joins
//    v = (i to k), w = (k to j) with length(v) * rise(w) - rise(v) * length(w) = +-1 span a triangle in which only the
//    middles of the sides can lie on a half (whole x, half value): a side whose length is even and whose rise is odd, a
//    "half join". Exactly one side of the three is one. So the join i to j is possible too, unless v or w is a half
//    join whose code at the middle is on the other side of it than the triangle.
// 3. Conversely each possible primitive join from a length of 2 splits like this: a half join at the whole point next
//    to it on the side of its middle code, any other one on either side. On one of the two sides the half join comes
//    first; that split is used. So all are found, each once, from the joins that end at j and at the points k.
// 4. A possible join is valid unless it is a half join whose middle code is odd: halves round to even.
// 5. A whole join u from k to j and a row of equal half joins a to k with their middle codes on one side give the joins
//    u + t * a, t = 1 to the length of the row. Only the first and the last of them can have further splits as the
//    second part (a longer first part would pass the middle of the a before it on the wrong side). The others are kept
//    as one family: there can be as many for each point as the stretch is long.
//
// A point has about four primitive joins in the mean, whatever the waveform, so the time grows with the points only.
#pragma once

#include "libs/wavelb32/OpenPoints.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace calder::wavelb {

class StretchSolver {
public:
  // The points between the first and the last of a solution with the fewest joins, ascending; false when that takes
  // more than maximum joins. REQUIRES: 2 to 2^19 codes.
  [[nodiscard]] bool Solve(std::span<const std::int16_t> codes, std::int32_t maximum,
                           std::vector<std::int32_t>& between);

private:
  // Primitive joins by their last point. `best` is the start with the fewest joins to it, of the join itself and of
  // the row of equal joins that it ends.
  static constexpr std::int32_t kToSplit = -1;       // in place of `best`, while its last point is added
  static constexpr std::int32_t kFirstOfFamily = -2; // the same; the others of its family are known
  struct WholeJoin {
    std::int32_t length;
    std::int32_t rise;
    std::int32_t best;
  };
  struct HalfJoin {
    std::int32_t length;
    std::int32_t rise;
    std::int32_t side; // of the middle code: +1 above, -1 below
    std::int32_t best; // -1: not valid
    // The row of equal possible joins with their middle codes on the same side that it ends.
    std::int32_t row;
    std::int32_t bestOfRow;
  };
  // The whole joins u + t * a for t = 2 to end - 1.
  struct Family {
    std::int32_t length; // of u
    std::int32_t rise;
    std::int32_t stepLength; // of a
    std::int32_t stepRise;
    std::int32_t end;
  };
  // Where the joins of a point begin.
  struct Starts {
    std::int32_t whole;
    std::int32_t half;
    std::int32_t family;
  };

  void AddPoint(std::int32_t point);
  std::int32_t Split(std::int32_t point, std::size_t index);
  void SplitInFamilies(std::int32_t point, std::int32_t length, std::int32_t rise, std::int32_t& best);
  void FinishHalfJoin(std::int32_t point, HalfJoin& join) const;
  void AddFamily(std::int32_t length, std::int32_t rise, const HalfJoin& step);
  // Forgets the joins that no join to a point after this one needs: its own start and that of each of its parts are
  // open points.
  void Forget(std::int32_t point);

  [[nodiscard]] std::int32_t CodeAt(std::int32_t point) const { return codes_[static_cast<std::size_t>(point)]; }
  [[nodiscard]] std::size_t SlotOf(std::int32_t point) const {
    return static_cast<std::size_t>(slots_[static_cast<std::size_t>(point)]);
  }
  void TakeBetter(std::int32_t& best, std::int32_t start) const {
    if (joins_[static_cast<std::size_t>(start)] < joins_[static_cast<std::size_t>(best)]) best = start;
  }

  std::span<const std::int16_t> codes_;
  std::size_t room_ = 0;                  // of the next three, which are written before they are read
  std::unique_ptr<std::int32_t[]> joins_; // by point: the fewest to it
  std::unique_ptr<std::int32_t[]> from_;  // by point: the one before it
  std::unique_ptr<std::int32_t[]> slots_; // by point: its place in starts_; of closed points not valid
  std::vector<Starts> starts_;            // one more at the end
  std::vector<WholeJoin> wholes_;
  std::vector<HalfJoin> halves_;
  std::vector<Family> families_;
  std::int32_t bestOfFamilies_ = 0; // the best start of the families of the current point
  OpenPoints open_;
};

} // namespace calder::wavelb
