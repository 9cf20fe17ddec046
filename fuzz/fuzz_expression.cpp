// Any bytes as an expression: a defined code, a place inside the text, nothing written on a fault, and the same codes
// whatever the processor's program and the number of threads.
#include "libs/eval32/eval32.h"

#include <algorithm>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  constexpr std::int32_t points = 600;
  constexpr std::int16_t untouched = -32768;
  static const WaveHandle one = W_AllocMemory(points);
  static const WaveHandle other = W_AllocMemory(points);
  const EvalProcessor second = Evaluator::IsUsable(EvalProcessor::Avx2) ? EvalProcessor::Avx2 : EvalProcessor::Plain;
  Evaluator first(1);
  static Evaluator shared(2, second, 100); // keeps its thread
  shared.ClearConstant();
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::ranges::fill(W_Lock(one), untouched);
  const std::int16_t code = first.EvalArray1(3, points - 3, one, text);
  if (code != 0 && code != -1 && (code < 100 || code > 109)) std::abort();
  if (code != first.LastFault().code || first.LastFault().position > size) std::abort();
  for (const std::int16_t value : W_Lock(one).subspan(3))
    if ((value == untouched) != (code != 0)) std::abort();
  if (shared.EvalArray1(3, points - 3, other, text) != code) std::abort();
  if (code == 0 && !std::ranges::equal(W_Lock(one).subspan(3), W_Lock(other).subspan(3))) std::abort();
  double value = 0;
  static_cast<void>(first.EvalOneL(text, -7, value));
  return 0;
}
