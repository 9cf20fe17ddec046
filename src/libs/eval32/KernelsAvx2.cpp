// Compiled for AVX2 with fused multiplication; called only where the processor has both.
#include "libs/eval32/KernelLoops.h"

#include <immintrin.h>
#include <sleef.h>

namespace calder::eval {

namespace {

struct Avx2Lanes {
  using V = __m256d;
  static constexpr std::size_t width = 4;
  static V Set(double value) { return _mm256_set1_pd(value); }
  static V Ramp() { return _mm256_setr_pd(0, 1, 2, 3); }
  static V Load(const double* from) { return _mm256_loadu_pd(from); }
  static void Store(double* to, V value) { _mm256_storeu_pd(to, value); }
  static V Min(V a, V b) { return _mm256_min_pd(a, b); }
  static V Max(V a, V b) { return _mm256_max_pd(a, b); }
  static V Abs(V a) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), a); }
  static V Sqrt(V a) { return _mm256_sqrt_pd(a); }
  static V Fma(V a, V b, V c) { return _mm256_fmadd_pd(a, b, c); }
  static V Floor(V a) { return _mm256_round_pd(a, _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC); }
  static V Ceil(V a) { return _mm256_round_pd(a, _MM_FROUND_TO_POS_INF | _MM_FROUND_NO_EXC); }
  static V Trunc(V a) { return _mm256_round_pd(a, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC); }
  static bool IsAnyNotZero(V a) { return _mm256_movemask_pd(_mm256_cmp_pd(a, _mm256_setzero_pd(), _CMP_NEQ_UQ)) != 0; }
  static void StoreCodes(std::int16_t* to, const V* values) {
    const __m256d first = _mm256_and_pd(values[0], _mm256_cmp_pd(values[0], values[0], _CMP_ORD_Q));
    const __m256d second = _mm256_and_pd(values[1], _mm256_cmp_pd(values[1], values[1], _CMP_ORD_Q));
    const __m128i codes = _mm_packs_epi32(_mm256_cvtpd_epi32(first), _mm256_cvtpd_epi32(second));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), codes);
  }
#define CALDER_MATH1(ours, theirs, error)                                                                              \
  static V ours(V a) {                                                                                                 \
    return Sleef_finz_##theirs##d4_##error##avx2(a);                                                                   \
  }
#define CALDER_MATH2(ours, theirs, error)                                                                              \
  static V ours(V a, V b) {                                                                                            \
    return Sleef_finz_##theirs##d4_##error##avx2(a, b);                                                                \
  }
#include "libs/eval32/MathNames.h"
#undef CALDER_MATH1
#undef CALDER_MATH2
};

constexpr KernelTable kTable = Loops<Avx2Lanes>::Table();

} // namespace

const KernelTable* Avx2Kernels() {
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") ? &kTable : nullptr;
}

} // namespace calder::eval
