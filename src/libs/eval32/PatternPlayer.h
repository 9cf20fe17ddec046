// Plays a pattern onto codes. Inside the evaluator only.
#pragma once

#include "libs/eval32/Pattern.h"

#include <functional>
#include <span>
#include <vector>

namespace calder::eval {

class PatternPlayer {
public:
  // The value of an expression at a point; false when it divides by zero there.
  using Value = std::function<bool(const Program& program, double x, double& value)>;

  PatternPlayer(const Pattern& pattern, double firstPoint, std::span<std::int16_t> codes, Value value)
      : pattern_(pattern), firstPoint_(firstPoint), codes_(codes), value_(std::move(value)) {}
  // The fault's code is 0 when there is none; the codes are half done where there is one.
  [[nodiscard]] EvalFault Play();

private:
  // A group that is being played.
  struct Level {
    std::size_t open = 0;
    std::uint32_t left = 0; // times to go after this one; toEnd: until the range is full
    bool isToEnd = false;
    std::size_t startedAt = 0; // points done when this time began
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
  std::span<std::int16_t> codes_;
  Value value_;
  EvalFault fault_;
  std::vector<Level> levels_;
  std::size_t item_ = 0;
  std::size_t done_ = 0; // points
  std::uint16_t mask_ = 0xFFFF;
  double spent_ = 0;
};

} // namespace calder::eval
