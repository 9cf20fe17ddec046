// Compiled for AVX2; PeerSine asks the processor before it calls.
#include "WavePeers.h"

#include <immintrin.h>
#include <numbers>
#include <sleef.h>

namespace calder {

void SleefSine(std::span<std::int16_t> codes) {
  const std::size_t count = codes.size();
  const __m256d step = _mm256_set1_pd(2 * std::numbers::pi / static_cast<double>(count));
  const __m256d half = _mm256_set1_pd(32767);
  __m256d index = _mm256_setr_pd(0, 1, 2, 3);
  const __m256d four = _mm256_set1_pd(4);
  for (std::size_t i = 0; i + 8 <= count; i += 8) {
    const __m256d first = Sleef_finz_sind4_u10avx2(_mm256_mul_pd(index, step));
    index = _mm256_add_pd(index, four);
    const __m256d second = Sleef_finz_sind4_u10avx2(_mm256_mul_pd(index, step));
    index = _mm256_add_pd(index, four);
    const __m128i low = _mm256_cvtpd_epi32(_mm256_mul_pd(first, half));
    const __m128i high = _mm256_cvtpd_epi32(_mm256_mul_pd(second, half));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(codes.data() + i), _mm_packs_epi32(low, high));
  }
}

} // namespace calder
