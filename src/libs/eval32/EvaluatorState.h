// What an evaluator keeps between calls. Inside the evaluator only.
#pragma once

#include "libs/eval32/Parser.h"
#include "libs/eval32/Runner.h"

#include <vector>

namespace calder {

struct Evaluator::State {
  State(int maximumThreads, const eval::KernelTable& kernels, std::size_t chunkPoints)
      : graph(kernels), builder(kernels), runner(kernels, maximumThreads, chunkPoints) {}

  // A program from a text, or the fault.
  [[nodiscard]] std::int16_t Compile(std::string_view text, eval::Outcome outcome, double largestX);
  [[nodiscard]] std::int16_t Fail(std::int16_t code, std::size_t position, EvalReason reason);
  // The code of a check that failed.
  [[nodiscard]] std::int16_t FailCheck(std::uint32_t check);

  eval::Constants constants;
  std::int32_t seed = 0;
  EvalFault fault;
  eval::Graph graph;
  eval::ProgramBuilder builder;
  eval::Program program;
  eval::Runner runner;
  std::vector<std::int16_t> scratch;
};

} // namespace calder
