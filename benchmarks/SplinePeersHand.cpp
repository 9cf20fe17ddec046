#include "SplinePeers.h"

#include <immintrin.h>

#include <cmath>

namespace calder {

bool HandLineWalk(std::span<std::int16_t> codes, std::span<const spline::Point> points) {
  if (!__builtin_cpu_supports("avx2")) return false;
  const __m256d limit = _mm256_set1_pd(32767);
  const __m256d least = _mm256_set1_pd(-32767);
  const auto four = [&](__m256d base, __m256d slope, __m256d t) {
    const __m256d value = _mm256_add_pd(_mm256_mul_pd(slope, t), base);
    return _mm256_cvtpd_epi32(_mm256_max_pd(least, _mm256_min_pd(limit, value)));
  };
  for (std::size_t k = 0; k + 1 < points.size(); ++k) {
    const auto from = static_cast<std::size_t>(std::ceil(points[k].x));
    const auto to = static_cast<std::size_t>(std::ceil(points[k + 1].x));
    const double rise = (points[k + 1].y - points[k].y) / (points[k + 1].x - points[k].x);
    const __m256d base = _mm256_set1_pd(points[k].y);
    const __m256d slope = _mm256_set1_pd(rise);
    for (std::size_t block = from; block < to; block += 8) {
      const std::size_t i = block + 8 <= to || to < from + 8 ? block : to - 8;
      const double first = static_cast<double>(i) - points[k].x;
      if (i + 8 > codes.size()) break;
      const __m128i low = four(base, slope, _mm256_setr_pd(first, first + 1, first + 2, first + 3));
      const __m128i high = four(base, slope, _mm256_setr_pd(first + 4, first + 5, first + 6, first + 7));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(&codes[i]), _mm_packs_epi32(low, high));
    }
  }
  return true;
}

} // namespace calder
