// Standard waveforms: the calls. The formulas are in docs/waveform-library.md.
#include "libs/wavelb32/Generate.h"

#include "libs/wavelb32/State.h"
#include "libs/wavelb32/StraightPieces.h"
#include "platform/WholePoint.h"

#include <algorithm>
#include <initializer_list>

namespace calder {

using wavelb::TheState;

namespace {

constexpr double kDegreesPerTurn = 360;
constexpr double kPercent = 100;

// The points to fill and how turns run over them, or the status that says why not.
struct Task {
  std::int32_t status = W_SUCCESS;
  std::span<std::int16_t> codes;
  wavelb::Turns turns{};
};

Task Prepare(WaveHandle handle, double start, double count, double period, double phase,
             std::initializer_list<double> others) {
  const wavelb::CodeRange range = wavelb::FindCodes(handle, start, count);
  if (range.status != W_SUCCESS) return {range.status, {}, {}};
  if (!wavelb::IsUsable(period) || !wavelb::IsUsable(phase) || !std::ranges::all_of(others, wavelb::IsUsable))
    return {W_BAD_VALUE, {}, {}};
  const double first = std::max(0.0, WholePoint(start)) - start;
  // A range much shorter than a point still has one whole point; the floor keeps its turn a number.
  constexpr double shortest = 1e-9;
  return {W_SUCCESS, range.codes, {first, period, std::max(count, shortest), phase / kDegreesPerTurn}};
}

double Part(double percentage) {
  return std::clamp(percentage, 0.0, kPercent) / kPercent;
}

// SplitMix64's finish (G. Steele, D. Lea, C. Flood, "Fast splittable pseudorandom number generators", 2014).
std::uint64_t Scramble(std::uint64_t value) {
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9U;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
  return value ^ (value >> 31);
}

} // namespace

std::int32_t W_MakeSin(WaveHandle handle, double start, double count, double offset, double amplitude, double period,
                       double phase) {
  const Task task = Prepare(handle, start, count, period, phase, {offset, amplitude});
  wavelb::FillSine(task.codes, task.turns, {offset, amplitude / 2});
  return task.status;
}

std::int32_t W_MakeTriangle(WaveHandle handle, double start, double count, double offset, double amplitude,
                            double period, double phase, double symmetry) {
  const Task task = Prepare(handle, start, count, period, phase, {offset, amplitude, symmetry});
  wavelb::FillPieces(task.codes, task.turns, wavelb::TrianglePieces({offset, amplitude / 2}, Part(symmetry)));
  return task.status;
}

std::int32_t W_MakeSquare(WaveHandle handle, double start, double count, double offset, double amplitude, double period,
                          double phase, double duty, double transition) {
  const Task task = Prepare(handle, start, count, period, phase, {offset, amplitude, duty, transition});
  const double high = Part(duty);
  const double edge = std::min({Part(transition), high, 1 - high});
  wavelb::FillPieces(task.codes, task.turns, wavelb::SquarePieces({offset, amplitude / 2}, high, edge));
  return task.status;
}

std::int32_t W_MakeNoise(WaveHandle handle, double start, double count, double offset, double amplitude) {
  const Task task = Prepare(handle, start, count, 0, 0, {offset, amplitude});
  wavelb::State& state = TheState();
  wavelb::FillNoise(task.codes, {offset, amplitude / 2}, state.noiseKey, state.noiseIndex);
  state.noiseIndex += task.codes.size();
  return task.status;
}

std::int32_t W_MakeDC(WaveHandle handle, double start, double count, double offset) {
  const Task task = Prepare(handle, start, count, 0, 0, {offset});
  if (task.status == W_SUCCESS) std::ranges::fill(task.codes, wavelb::ToCode(offset));
  return task.status;
}

std::int32_t W_InitRand(std::int32_t seed) {
  wavelb::State& state = TheState();
  // Neighbouring seeds must not give neighbouring parts of one sequence.
  state.noiseKey = Scramble(static_cast<std::uint32_t>(seed));
  state.noiseIndex = 0;
  return W_SUCCESS;
}

} // namespace calder
