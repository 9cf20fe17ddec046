#include "libs/eval32/EvaluatorState.h"
#include "libs/eval32/PatternPlayer.h"

#include <new>

namespace calder {

namespace {

// Items played and passes of their expressions. An expression of a dozen operations at each of the most points stays
// below the first.
constexpr double kWorkOfASecond = 1e8;
constexpr double kWorkOfAFrame = 4e5;

} // namespace

std::int16_t Evaluator::DigitalPattern(std::string_view text, std::int32_t start, WaveHandle buffer, std::int32_t count,
                                       PatternEffort effort) {
  State& state = *state_;
  state.fault = {};
  try {
    const auto compile = [&](std::string_view expression, eval::Program& program) {
      if (state.Compile(expression, eval::Outcome::Values, 0) == EVAL_SUCCESS) program = state.program;
      return state.fault;
    };
    eval::Pattern pattern;
    state.fault = eval::PatternParser(text, compile).Parse(pattern);
    if (state.fault.code != EVAL_SUCCESS) return state.fault.code;

    const std::span<std::int16_t> codes = W_Lock(buffer);
    if (codes.empty() || start < 0 || count < 0 || static_cast<std::size_t>(start) > codes.size() ||
        static_cast<std::size_t>(count) > codes.size() - static_cast<std::size_t>(start))
      return state.Fail(PATTERN_SYNTAX, 0, EvalReason::RangeOutsideBuffer);
    const auto value = [&](const eval::Program& program, double x, double& result) {
      return state.runner.RunValue(program, x, result) == eval::kNoCheck;
    };
    eval::PatternPlayer player(pattern, start, static_cast<std::size_t>(count),
                               effort == PatternEffort::Full ? kWorkOfASecond : kWorkOfAFrame, value);
    state.fault = player.Play();
    if (state.fault.code != EVAL_SUCCESS) return state.fault.code;
    eval::WriteStrokes(player.Strokes(),
                       codes.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(count)));
    return EVAL_SUCCESS;
  } catch (const std::bad_alloc&) {
    return state.Fail(PATTERN_TOO_LONG, 0, EvalReason::NoMemory);
  }
}

} // namespace calder
