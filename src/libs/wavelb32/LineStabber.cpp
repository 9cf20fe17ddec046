#include "libs/wavelb32/LineStabber.h"

namespace calder::wavelb {

namespace {

// Twice the area of the triangle: above 0 when c lies to the left of (above) the line from a to b.
std::int64_t Turn(const GapEnd& a, const GapEnd& b, const GapEnd& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

} // namespace

void LineStabber::Clear() {
  taken_ = 0;
}

bool LineStabber::Add(std::int64_t x, std::int64_t lower, std::int64_t upper) {
  const GapEnd lowerEnd{x, lower};
  const GapEnd upperEnd{x, upper};
  if (taken_ == 0) {
    leastFrom_ = upperEnd;
    greatestFrom_ = lowerEnd;
    uppers_.assign(1, upperEnd);
    lowers_.assign(1, lowerEnd);
    upperStart_ = lowerStart_ = 0;
    taken_ = 1;
    return true;
  }
  if (taken_ == 1) {
    leastTo_ = lowerEnd;
    greatestTo_ = upperEnd;
    uppers_.push_back(upperEnd);
    lowers_.push_back(lowerEnd);
    taken_ = 2;
    return true;
  }
  const bool isBelowAll = Turn(leastFrom_, leastTo_, upperEnd) < 0;
  const bool isAboveAll = Turn(greatestFrom_, greatestTo_, lowerEnd) > 0;
  if (isBelowAll || isAboveAll) return false;
  if (Turn(greatestFrom_, greatestTo_, upperEnd) < 0) LowerGreatestSlope(upperEnd);
  if (Turn(leastFrom_, leastTo_, lowerEnd) > 0) RaiseLeastSlope(lowerEnd);
  return true;
}

void LineStabber::LowerGreatestSlope(const GapEnd& upperEnd) {
  std::size_t pivot = lowerStart_;
  while (pivot + 1 < lowers_.size() && Turn(lowers_[pivot], upperEnd, lowers_[pivot + 1]) >= 0) ++pivot;
  greatestFrom_ = lowers_[pivot];
  greatestTo_ = upperEnd;
  lowerStart_ = pivot;
  std::size_t size = uppers_.size();
  while (size >= upperStart_ + 2 && Turn(uppers_[size - 2], uppers_[size - 1], upperEnd) <= 0) --size;
  uppers_.resize(size);
  uppers_.push_back(upperEnd);
}

void LineStabber::RaiseLeastSlope(const GapEnd& lowerEnd) {
  std::size_t pivot = upperStart_;
  while (pivot + 1 < uppers_.size() && Turn(uppers_[pivot], lowerEnd, uppers_[pivot + 1]) <= 0) ++pivot;
  leastFrom_ = uppers_[pivot];
  leastTo_ = lowerEnd;
  upperStart_ = pivot;
  std::size_t size = lowers_.size();
  while (size >= lowerStart_ + 2 && Turn(lowers_[size - 2], lowers_[size - 1], lowerEnd) >= 0) --size;
  lowers_.resize(size);
  lowers_.push_back(lowerEnd);
}

} // namespace calder::wavelb
