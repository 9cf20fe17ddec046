#include "WavePeers.h"

#include "platform/VectorClones.h"

namespace calder {

namespace {

CALDER_VECTOR std::int16_t MinimumLoop(const std::int16_t* codes, std::int32_t count) {
  std::int16_t low = INT16_MAX;
  for (std::int32_t i = 0; i < count; ++i) low = codes[i] < low ? codes[i] : low;
  return low;
}

} // namespace

std::int16_t PeerMinimum(std::span<const std::int16_t> codes) {
  return MinimumLoop(codes.data(), static_cast<std::int32_t>(codes.size()));
}

bool PeerSine(std::span<std::int16_t> codes) {
#ifdef CALDER_HAS_SLEEF
  if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) return false;
  SleefSine(codes);
  return true;
#else
  static_cast<void>(codes);
  return false;
#endif
}

} // namespace calder
