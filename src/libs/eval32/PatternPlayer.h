// Plays a pattern into strokes, and writes strokes onto codes. Playing may find a fault and touches no code; writing
// cannot fail. Inside the evaluator only.
#pragma once

#include "libs/eval32/Pattern.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace calder::eval {

// What a number of points undergo: code & keep ^ flip, or, when `period` is not 0, the strokes from number `from` up to
// this one over and over, which are `period` points together.
struct PatternStroke {
  std::size_t points = 0;
  std::uint16_t keep = 0xFFFF;
  std::uint16_t flip = 0;
  std::size_t from = 0;
  std::size_t period = 0;
};

// The strokes' points are together at most as many as codes; what is left stays.
void WriteStrokes(std::span<const PatternStroke> strokes, std::span<std::int16_t> codes);

class PatternPlayer {
public:
  // The value of an expression at a point; false when it divides by zero there.
  using Value = std::function<bool(const Program& program, double x, double& value)>;

  // workLimit: of items played and passes of their expressions, after which it gives up.
  PatternPlayer(const Pattern& pattern, double firstPoint, std::size_t pointCount, double workLimit, Value value)
      : pattern_(pattern), firstPoint_(firstPoint), pointCount_(pointCount), workLimit_(workLimit),
        value_(std::move(value)) {}
  // The fault's code is 0 when there is none, and the strokes are worth something only then.
  [[nodiscard]] EvalFault Play();
  [[nodiscard]] std::span<const PatternStroke> Strokes() const { return strokes_; }

private:
  // A group that is being played.
  struct Level {
    std::size_t open = 0;
    std::uint32_t left = 0; // times to go after this one; toEnd: until the range is full
    bool isToEnd = false;
    bool isSecond = false;       // this is the second time, or a later one
    std::size_t startedAt = 0;   // points done when this time began
    std::size_t firstStroke = 0; // of this time
  };

  [[nodiscard]] bool PlayItem();
  void Begin(std::uint32_t count);
  void Close();
  void Write(const PatternItem& item, std::uint32_t count);
  // The count of an item at this point.
  [[nodiscard]] bool CountOf(const PatternItem& item, std::uint32_t& count);
  [[nodiscard]] bool Spend(double work, std::size_t position);

  const Pattern& pattern_;
  double firstPoint_;
  std::size_t pointCount_;
  double workLimit_;
  Value value_;
  EvalFault fault_;
  std::vector<Level> levels_;
  std::vector<PatternStroke> strokes_;
  std::size_t item_ = 0;
  std::size_t done_ = 0; // points
  std::uint16_t mask_ = 0xFFFF;
  double spent_ = 0;
};

} // namespace calder::eval
