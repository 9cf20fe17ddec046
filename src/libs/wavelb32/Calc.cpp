// Two waveforms combined point by point.
#include "libs/wavelb32/Reshape.h"
#include "libs/wavelb32/State.h"

#include <algorithm>

namespace calder {
namespace {

// The operation's arguments once they are known to be sound, or the status that says why not.
struct Combination {
  std::int32_t status = W_SUCCESS;
  std::span<const std::int16_t> codes;
  std::span<const std::int16_t> operand;
  wavelb::Scale scale{};
  wavelb::Operation operation{};
};

Combination Find(WaveHandle source, WaveHandle operand, double start, double count, double yMin, double yMax,
                 std::int32_t operation) {
  // Y values are physical values in any unit, so they may be far smaller or larger than codes; within these magnitudes
  // no product or quotient of theirs is lost.
  constexpr double smallest = 1e-150;
  constexpr double largest = 1e100;
  const wavelb::CodeRange codes = wavelb::FindCodes(source, start, count);
  if (codes.status != W_SUCCESS) return {codes.status, {}, {}};
  const wavelb::CodeRange operands = wavelb::FindCodes(operand, 0, static_cast<double>(codes.codes.size()));
  if (operands.status != W_SUCCESS) return {operands.status, {}, {}};
  if (operation < 0 || operation > 3) return {W_BAD_VALUE, {}, {}};
  if (!(std::abs(yMin) <= largest && std::abs(yMax) <= largest)) return {W_BAD_VALUE, {}, {}};
  const double half = (yMax - yMin) / 2;
  if (!(std::abs(half) >= smallest)) return {W_BAD_VALUE, {}, {}};

  // A code whose Y value comes this near to 0, as a part of the scale, is one with the Y value 0: the code is a whole
  // number, so the centre is one too.
  constexpr double zeroPart = 1e-12;
  const double centre = (yMin + yMax) / 2 / half * W_CODE_MAX;
  const double whole = std::rint(centre);
  const bool isWhole = std::abs(centre - whole) <= zeroPart * (std::abs(centre) + W_CODE_MAX);
  return {W_SUCCESS,
          codes.codes,
          operands.codes,
          {half / W_CODE_MAX, isWhole ? whole : centre},
          static_cast<wavelb::Operation>(operation)};
}

} // namespace

std::int32_t W_CalcWave(WaveHandle source, WaveHandle operand, WaveHandle result, double start, double count,
                        double yMin, double yMax, std::int32_t operation) {
  const Combination found = Find(source, operand, start, count, yMin, yMax, operation);
  if (found.status != W_SUCCESS) return found.status;
  const wavelb::CodeRange results = wavelb::FindCodes(result, 0, static_cast<double>(found.codes.size()));
  if (results.status != W_SUCCESS) return results.status;
  wavelb::Calculate(found.codes, found.operand, results.codes, found.scale, found.operation);
  return W_SUCCESS;
}

std::int32_t W_CalcFaults(WaveHandle source, WaveHandle operand, double start, double count, double yMin, double yMax,
                          std::int32_t operation, std::span<std::uint8_t> marks) {
  const Combination found = Find(source, operand, start, count, yMin, yMax, operation);
  if (found.status != W_SUCCESS) return found.status;
  if (marks.size() != found.codes.size()) return W_BAD_RANGE;
  wavelb::MarkFaults(found.codes, found.operand, marks, found.scale, found.operation);
  return W_SUCCESS;
}

} // namespace calder
