// Two waveforms combined point by point.
#include "libs/wavelb32/Reshape.h"
#include "libs/wavelb32/State.h"

#include <algorithm>

namespace calder {

std::int32_t W_CalcWave(WaveHandle source, WaveHandle operand, WaveHandle result, double start, double count,
                        double yMin, double yMax, std::int32_t operation) {
  // Y values are physical values in any unit, so they may be far smaller or larger than codes; within these magnitudes
  // no product or quotient of theirs is lost.
  constexpr double smallest = 1e-150;
  constexpr double largest = 1e100;
  const wavelb::CodeRange codes = wavelb::FindCodes(source, start, count);
  if (codes.status != W_SUCCESS) return codes.status;
  const wavelb::CodeRange operands = wavelb::FindCodes(operand, 0, static_cast<double>(codes.codes.size()));
  if (operands.status != W_SUCCESS) return operands.status;
  const wavelb::CodeRange results = wavelb::FindCodes(result, 0, static_cast<double>(codes.codes.size()));
  if (results.status != W_SUCCESS) return results.status;
  if (operation < 0 || operation > 3) return W_BAD_VALUE;
  if (!(std::abs(yMin) <= largest && std::abs(yMax) <= largest)) return W_BAD_VALUE;
  const double half = (yMax - yMin) / 2;
  if (!(std::abs(half) >= smallest)) return W_BAD_VALUE;

  constexpr double zeroPart = 1e-12;
  const wavelb::Scale scale{(yMin + yMax) / 2, half, zeroPart * std::max(std::abs(yMin), std::abs(yMax))};
  wavelb::Calculate(codes.codes, operands.codes, results.codes, scale, static_cast<wavelb::Operation>(operation));
  return W_SUCCESS;
}

} // namespace calder
