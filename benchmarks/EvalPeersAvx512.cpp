#include "EvalPeerLoops.h"

#include <immintrin.h>
#include <sleef.h>

namespace calder {

namespace {

struct Avx512Peers {
  using V = __m512d;
  static constexpr int width = 8;
  static V Set(double value) { return _mm512_set1_pd(value); }
  static V Ramp() { return _mm512_setr_pd(0, 1, 2, 3, 4, 5, 6, 7); }
  static V Min(V a, V b) { return _mm512_min_pd(a, b); }
  static V Max(V a, V b) { return _mm512_max_pd(a, b); }
  static V Abs(V a) { return _mm512_abs_pd(a); }
  static V Sqrt(V a) { return _mm512_sqrt_pd(a); }
  static V Fma(V a, V b, V c) { return _mm512_fmadd_pd(a, b, c); }
  static V Floor(V a) { return _mm512_roundscale_pd(a, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC); }
  static V Sin(V a) { return Sleef_finz_sind8_u10avx512f(a); }
  static V Exp(V a) { return Sleef_finz_expd8_u10avx512f(a); }
  static V Log(V a) { return Sleef_finz_logd8_u10avx512f(a); }
  static void StoreCodes(std::int16_t* to, const V* values) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm256_cvtepi32_epi16(_mm512_cvtpd_epi32(values[0])));
  }
};

} // namespace

PeerLoop Avx512Peer(std::size_t expression) {
  return PeerLoops<Avx512Peers>::At(expression);
}

} // namespace calder
