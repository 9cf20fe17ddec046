#include "libs/eval32/EvaluatorState.h"

#include "platform/WholePoint.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <new>
#include <optional>
#include <thread>

namespace calder {

namespace {

const eval::KernelTable* KernelsFor(EvalProcessor processor) {
  switch (processor) {
  case EvalProcessor::Avx512: return eval::Avx512Kernels();
  case EvalProcessor::Avx2: return eval::Avx2Kernels();
  default: return &eval::PlainKernels();
  }
}

EvalProcessor BestProcessor() {
  if (eval::Avx512Kernels() != nullptr) return EvalProcessor::Avx512;
  return eval::Avx2Kernels() != nullptr ? EvalProcessor::Avx2 : EvalProcessor::Plain;
}

int ThreadsOf(int maximumThreads) {
  return std::thread::hardware_concurrency() < 2 ? 1 : maximumThreads;
}

struct PointRange {
  std::size_t first = 0;
  std::size_t count = 0;
};

// Whole points as the waveform library takes them; none when the range is not inside 0 to size.
std::optional<PointRange> WholePoints(double start, double count, std::size_t size) {
  const auto end = static_cast<double>(size);
  if (!(start >= 0 && count >= 0 && start + count <= end)) return std::nullopt;
  const double first = WholePoint(start);
  const double points = std::min(WholePoint(count), std::max(0.0, end - first));
  return PointRange{static_cast<std::size_t>(first), static_cast<std::size_t>(points)};
}

} // namespace

Evaluator::Evaluator(int maximumThreads) : Evaluator(ThreadsOf(maximumThreads), BestProcessor()) {}

Evaluator::Evaluator(int maximumThreads, EvalProcessor processor, std::size_t chunkPoints)
    : state_(std::make_unique<State>(maximumThreads, *KernelsFor(processor), chunkPoints)) {}

Evaluator::~Evaluator() = default;

bool Evaluator::IsUsable(EvalProcessor processor) {
  return KernelsFor(processor) != nullptr;
}

std::int16_t Evaluator::State::Fail(std::int16_t code, std::size_t position, EvalReason reason) {
  fault = {code, position, reason, {}};
  return code;
}

std::int16_t Evaluator::State::FailCheck(std::uint32_t check) {
  return Fail(EVAL_DIVIDE_BY_ZERO, graph.Checks()[check].position, EvalReason::DivisionByZero);
}

std::int16_t Evaluator::State::Compile(std::string_view text, eval::Outcome outcome, double largestX) {
  graph.Clear();
  eval::Parser parser(text, graph, seed);
  const eval::NodeId root = parser.Parse(constants);
  if (root == eval::kNoNode) {
    fault = parser.Fault();
    return fault.code;
  }
  builder.Build(graph, root, outcome, seed, largestX, program);
  return EVAL_SUCCESS;
}

std::int16_t Evaluator::EvalArray1(double start, double count, WaveHandle buffer, std::string_view text) {
  State& state = *state_;
  state.fault = {};
  try {
    const std::int16_t code = state.Compile(text, eval::Outcome::Codes, std::max(0.0, start) + std::max(0.0, count));
    if (code != EVAL_SUCCESS) return code;
    const std::span<std::int16_t> codes = W_Lock(buffer);
    const std::optional<PointRange> range = WholePoints(start, count, codes.size());
    if (codes.empty() || !range) return state.Fail(EVAL_BUFFER, 0, EvalReason::RangeOutsideBuffer);
    const std::span<std::int16_t> target = codes.subspan(range->first, range->count);
    const auto first = static_cast<double>(range->first);
    if (state.graph.Checks().empty()) {
      static_cast<void>(state.runner.RunCodes(state.program, first, target));
      return EVAL_SUCCESS;
    }
    // A division by zero may show at the last point, so the buffer waits until all are computed.
    if (state.scratch.size() < target.size()) state.scratch.resize(target.size());
    const std::span<std::int16_t> scratch(state.scratch.data(), target.size());
    const std::uint32_t failed = state.runner.RunCodes(state.program, first, scratch);
    if (failed != eval::kNoCheck) return state.FailCheck(failed);
    std::ranges::copy(scratch, target.begin());
    return EVAL_SUCCESS;
  } catch (const std::bad_alloc&) {
    return state.Fail(EVAL_NO_MEMORY, 0, EvalReason::NoMemory);
  }
}

std::int16_t Evaluator::EvalOneL(std::string_view text, std::int32_t x, double& result) {
  State& state = *state_;
  state.fault = {};
  try {
    const std::int16_t code = state.Compile(text, eval::Outcome::Values, std::abs(static_cast<double>(x)));
    if (code != EVAL_SUCCESS) return code;
    const std::uint32_t failed = state.runner.RunValue(state.program, x, result);
    return failed == eval::kNoCheck ? EVAL_SUCCESS : state.FailCheck(failed);
  } catch (const std::bad_alloc&) {
    return state.Fail(EVAL_NO_MEMORY, 0, EvalReason::NoMemory);
  }
}

void Evaluator::ClearConstant() {
  state_->constants.clear();
}

void Evaluator::TakeConstants(const Evaluator& other) {
  state_->constants = other.state_->constants;
}

void Evaluator::EvalInitRandom(std::int32_t seed) {
  state_->seed = seed;
}

const Evaluator::Fault& Evaluator::LastFault() const {
  return state_->fault;
}

} // namespace calder
