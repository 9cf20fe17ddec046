#include "EvalPeerLoops.h"

#include <immintrin.h>
#include <sleef.h>

namespace calder {

namespace {

struct Avx2Peers {
  using V = __m256d;
  static constexpr int width = 4;
  static V Set(double value) { return _mm256_set1_pd(value); }
  static V Ramp() { return _mm256_setr_pd(0, 1, 2, 3); }
  static V Min(V a, V b) { return _mm256_min_pd(a, b); }
  static V Max(V a, V b) { return _mm256_max_pd(a, b); }
  static V Abs(V a) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), a); }
  static V Sqrt(V a) { return _mm256_sqrt_pd(a); }
  static V Fma(V a, V b, V c) { return _mm256_fmadd_pd(a, b, c); }
  static V Floor(V a) { return _mm256_floor_pd(a); }
  static V Sin(V a) { return Sleef_finz_sind4_u10avx2(a); }
  static V Exp(V a) { return Sleef_finz_expd4_u10avx2(a); }
  static V Log(V a) { return Sleef_finz_logd4_u10avx2(a); }
  static void StoreCodes(std::int16_t* to, const V* values) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to),
                     _mm_packs_epi32(_mm256_cvtpd_epi32(values[0]), _mm256_cvtpd_epi32(values[1])));
  }
};

} // namespace

PeerLoop Avx2Peer(std::size_t expression) {
  return PeerLoops<Avx2Peers>::At(expression);
}

} // namespace calder
