#include "libs/wavelb32/StraightPieces.h"

#include "libs/wavelb32/State.h"
#include "platform/VectorClones.h"

#include <algorithm>
#include <cmath>

namespace calder::wavelb {

namespace {

// Jumps have this width, in turns, before them in which a point already counts as after: the rounding of a turn must
// not decide on which side of a jump a point stands that is meant to be on it.
constexpr double kJumpTolerance = 1e-9;

// Runs are worth looking for when a period has at least so many points, and worth filling at once when they have so
// many.
constexpr double kPointsOfLongPeriod = 512;
constexpr std::int32_t kShortestRun = 64;

// What the loops need of a task, in registers. A limited one may leave the code range.
struct Line {
  double whole; // whole periods before the piece
  double from;
  double level;
  double slope;
};

template <bool hasStep>
[[gnu::always_inline]] inline double Moved(const Turns& turns, double step, double shift, std::int32_t i) {
  if constexpr (hasStep) return step * (turns.first + i) + turns.phase + shift;
  return turns.period * (turns.first + i) / turns.count + turns.phase + shift;
}

template <bool limited>
[[gnu::always_inline]] inline std::int16_t CodeOf(double value) {
  if constexpr (limited) return ToCode(value);
  return static_cast<std::int16_t>(static_cast<std::int32_t>(std::rint(value)));
}

template <int count, bool hasStep, bool limited>
[[gnu::always_inline]] inline void AnyLoop(std::int16_t* codes, std::int32_t begin, std::int32_t end,
                                           const Turns& turns, const StraightPieces& pieces) {
  const double step = turns.period / turns.count;
  for (std::int32_t i = begin; i < end; ++i) {
    const double moved = Moved<hasStep>(turns, step, pieces.shift, i);
    const double part = moved - std::floor(moved);
    const double place = part < 1 - kJumpTolerance ? part : 0;
    double from = pieces.from[0];
    double level = pieces.level[0];
    double slope = pieces.slope[0];
    for (std::size_t k = 1; k < count; ++k) {
      from = place < pieces.from[k] ? from : pieces.from[k];
      level = place < pieces.from[k] ? level : pieces.level[k];
      slope = place < pieces.from[k] ? slope : pieces.slope[k];
    }
    codes[i] = CodeOf<limited>(level + slope * (place - from));
  }
}

// Points of any pieces.
CALDER_VECTOR void TwoPieces(std::int16_t* codes, std::int32_t begin, std::int32_t end, Turns turns,
                             StraightPieces pieces) {
  if (HasStep(turns)) return AnyLoop<2, true, true>(codes, begin, end, turns, pieces);
  AnyLoop<2, false, true>(codes, begin, end, turns, pieces);
}

CALDER_VECTOR void FourPieces(std::int16_t* codes, std::int32_t begin, std::int32_t end, Turns turns,
                              StraightPieces pieces) {
  if (HasStep(turns)) return AnyLoop<4, true, true>(codes, begin, end, turns, pieces);
  AnyLoop<4, false, true>(codes, begin, end, turns, pieces);
}

template <bool hasStep, bool limited>
[[gnu::always_inline]] inline void LineLoop(std::int16_t* codes, std::int32_t begin, std::int32_t end,
                                            const Turns& turns, double shift, const Line& line) {
  const double step = turns.period / turns.count;
  for (std::int32_t i = begin; i < end; ++i) {
    const double place = Moved<hasStep>(turns, step, shift, i) - line.whole;
    codes[i] = CodeOf<limited>(line.level + line.slope * (place - line.from));
  }
}

// Points of one piece in one period: the same operations as above, without the choices.
CALDER_VECTOR void OneLine(std::int16_t* codes, std::int32_t begin, std::int32_t end, Turns turns, double shift,
                           Line line, bool limited) {
  if (HasStep(turns)) {
    if (limited) return LineLoop<true, true>(codes, begin, end, turns, shift, line);
    return LineLoop<true, false>(codes, begin, end, turns, shift, line);
  }
  LineLoop<false, true>(codes, begin, end, turns, shift, line);
}

class Filler {
public:
  Filler(std::span<std::int16_t> codes, const Turns& turns, const StraightPieces& pieces)
      : codes_(codes), turns_(turns), pieces_(pieces), step_(turns.period / turns.count) {
    for (std::size_t k = 0; k < Count(); ++k) {
      const double length = (k + 1 < Count() ? pieces.from[k + 1] : 1) - pieces.from[k];
      const double last = pieces.level[k] + pieces.slope[k] * length;
      limited_ = limited_ || std::max(std::abs(pieces.level[k]), std::abs(last)) > W_CODE_MAX;
    }
  }

  void Fill() {
    const auto end = static_cast<std::int32_t>(codes_.size());
    if (!(step_ > 0) || 1 / step_ < kPointsOfLongPeriod) return Mixed(0, end);
    for (std::int32_t i = 0; i < end;) {
      const std::int32_t run = Run(i, end);
      const std::int32_t rest = std::min(run + kShortestRun, end);
      Mixed(run, rest);
      i = rest;
    }
  }

private:
  [[nodiscard]] std::size_t Count() const { return static_cast<std::size_t>(pieces_.count); }

  void Mixed(std::int32_t begin, std::int32_t end) {
    if (pieces_.count <= 2)
      TwoPieces(codes_.data(), begin, end, turns_, pieces_);
    else
      FourPieces(codes_.data(), begin, end, turns_, pieces_);
  }

  // Fills from i on what surely belongs to i's piece in i's period, and gives where that ends. Turns never fall from
  // point to point; where exactly a piece ends, up to rounding and tolerance, is for Mixed to say.
  std::int32_t Run(std::int32_t i, std::int32_t end) {
    const double margin = 2 + kJumpTolerance / step_;
    const double moved = turns_.period * (turns_.first + i) / turns_.count + turns_.phase + pieces_.shift;
    const double whole = std::floor(moved);
    const double place = moved - whole;
    std::size_t k = Count() - 1;
    while (k > 0 && place < pieces_.from[k]) --k;
    const double next = k + 1 < Count() ? pieces_.from[k + 1] : 1;
    if ((place - pieces_.from[k]) / step_ < margin) return i; // too near its begin to be sure
    const double points = (next - place) / step_ - margin;
    if (!(points >= kShortestRun)) return i;
    const std::int32_t stop = points < end - i ? i + static_cast<std::int32_t>(points) : end;
    const Line line{whole, pieces_.from[k], pieces_.level[k], pieces_.slope[k]};
    if (line.slope == 0)
      std::fill(codes_.begin() + i, codes_.begin() + stop, ToCode(line.level));
    else
      OneLine(codes_.data(), i, stop, turns_, pieces_.shift, line, limited_);
    return stop;
  }

  std::span<std::int16_t> codes_;
  Turns turns_;
  StraightPieces pieces_;
  double step_;
  bool limited_ = false;
};

} // namespace

StraightPieces TrianglePieces(const Level& level, double rise) {
  const double low = level.offset - level.half;
  const double high = level.offset + level.half;
  const double height = 2 * level.half;
  // A period begins in the middle of the rise.
  return {2, rise / 2, {0, rise}, {low, high}, {rise > 0 ? height / rise : 0, rise < 1 ? -height / (1 - rise) : 0}};
}

StraightPieces SquarePieces(const Level& level, double high, double edge) {
  const double low = level.offset - level.half;
  const double top = level.offset + level.half;
  // An edge so short that no point can stand on it is a jump.
  if (!(edge > kJumpTolerance)) return {2, 0, {0, high < 1 ? high - kJumpTolerance : 1}, {top, low}, {0, 0}};
  const double slope = 2 * level.half / edge;
  return {4, edge / 2, {0, edge, high, high + edge}, {low, top, top, low}, {slope, 0, -slope, 0}};
}

void FillPieces(std::span<std::int16_t> codes, const Turns& turns, const StraightPieces& pieces) {
  if (!codes.empty()) Filler(codes, turns, pieces).Fill();
}

} // namespace calder::wavelb
