// Compiled for AVX-512; called only where the processor has it.
#include "libs/eval32/KernelLoops.h"

#include <immintrin.h>
#include <sleef.h>

namespace calder::eval {

namespace {

struct Avx512Lanes {
  using V = __m512d;
  static constexpr std::size_t width = 8;
  static V Set(double value) { return _mm512_set1_pd(value); }
  static V Ramp() { return _mm512_setr_pd(0, 1, 2, 3, 4, 5, 6, 7); }
  static V Load(const double* from) { return _mm512_loadu_pd(from); }
  static void Store(double* to, V value) { _mm512_storeu_pd(to, value); }
  static V Min(V a, V b) { return _mm512_min_pd(a, b); }
  static V Max(V a, V b) { return _mm512_max_pd(a, b); }
  static V Abs(V a) { return _mm512_abs_pd(a); }
  static V Sqrt(V a) { return _mm512_sqrt_pd(a); }
  static V Fma(V a, V b, V c) { return _mm512_fmadd_pd(a, b, c); }
  static V Floor(V a) { return _mm512_roundscale_pd(a, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC); }
  static V Ceil(V a) { return _mm512_roundscale_pd(a, _MM_FROUND_TO_POS_INF | _MM_FROUND_NO_EXC); }
  static V Trunc(V a) { return _mm512_roundscale_pd(a, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC); }
  static bool IsAnyNotZero(V a) { return _mm512_cmp_pd_mask(a, _mm512_setzero_pd(), _CMP_NEQ_UQ) != 0; }
  static void StoreCodes(std::int16_t* to, const V* values) {
    // What is no number becomes -2^31, of which the low half, 0, is kept.
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm256_cvtepi32_epi16(_mm512_cvtpd_epi32(values[0])));
  }
#define CALDER_MATH1(ours, theirs, error)                                                                              \
  static V ours(V a) {                                                                                                 \
    return Sleef_finz_##theirs##d8_##error##avx512f(a);                                                                \
  }
#define CALDER_MATH2(ours, theirs, error)                                                                              \
  static V ours(V a, V b) {                                                                                            \
    return Sleef_finz_##theirs##d8_##error##avx512f(a, b);                                                             \
  }
#include "libs/eval32/MathNames.h"
#undef CALDER_MATH1
#undef CALDER_MATH2
};

constexpr KernelTable kTable = Loops<Avx512Lanes>::Table();

} // namespace

const KernelTable* Avx512Kernels() {
  const bool isThere = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
                       __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512bw");
  return isThere ? &kTable : nullptr;
}

} // namespace calder::eval
