#include "libs/eval32/EvaluatorState.h"
#include "libs/eval32/PatternPlayer.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace calder {

std::int16_t Evaluator::DigitalPattern(std::string_view text, std::int32_t start, WaveHandle buffer,
                                       std::int32_t count) {
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
    const std::span<std::int16_t> target =
        codes.subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
    state.scratch.assign(target.begin(), target.end());
    const auto value = [&](const eval::Program& program, double x, double& result) {
      return state.runner.RunValue(program, x, result) == eval::kNoCheck;
    };
    state.fault = eval::PatternPlayer(pattern, start, state.scratch, value).Play();
    if (state.fault.code == EVAL_SUCCESS) std::ranges::copy(state.scratch, target.begin());
    return state.fault.code;
  } catch (const std::bad_alloc&) {
    return state.Fail(PATTERN_TOO_LONG, 0, EvalReason::NoMemory);
  }
}

} // namespace calder
