// Any bytes as a bit pattern: a defined code, a place inside the text, nothing written on a fault.
#include "libs/eval32/eval32.h"

#include <algorithm>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  constexpr std::int32_t points = 300;
  constexpr std::int16_t before = 0x1234;
  static const WaveHandle wave = W_AllocMemory(points);
  Evaluator evaluator(1);
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::ranges::fill(W_Lock(wave), before);
  const std::int16_t code = evaluator.DigitalPattern(text, 20, wave, points - 40);
  if (code != 0 && (code < 110 || code > 118)) std::abort();
  if (code != evaluator.LastFault().code || evaluator.LastFault().position > size) std::abort();
  const auto codes = W_Lock(wave);
  const auto isBefore = [](std::int16_t value) { return value == before; };
  if (code != 0 && !std::ranges::all_of(codes, isBefore)) std::abort();
  if (!std::ranges::all_of(codes.first(20), isBefore) || !std::ranges::all_of(codes.last(20), isBefore)) std::abort();
  return 0;
}
