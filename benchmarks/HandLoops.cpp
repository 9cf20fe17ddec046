// Standard waveforms by hand for AVX2; the callers ask the processor before.
#include "WavePeers.h"

#include <immintrin.h>

#include <cstdint>

namespace calder {
namespace {

constexpr double kPeriods = 12.3;

void Store(std::int16_t* out, __m256d first, __m256d second) {
  const __m256d half = _mm256_set1_pd(32767);
  const __m128i low = _mm256_cvtpd_epi32(_mm256_mul_pd(first, half));
  const __m128i high = _mm256_cvtpd_epi32(_mm256_mul_pd(second, half));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packs_epi32(low, high));
}

// Calls value(turn) for 4 turns at a time.
template <typename Value>
bool Fill(std::span<std::int16_t> codes, Value value) {
  if (!__builtin_cpu_supports("avx2")) return false;
  const __m256d step = _mm256_set1_pd(kPeriods / static_cast<double>(codes.size()));
  const __m256d four = _mm256_set1_pd(4);
  __m256d index = _mm256_setr_pd(0, 1, 2, 3);
  for (std::size_t i = 0; i + 8 <= codes.size(); i += 8) {
    const __m256d first = value(_mm256_mul_pd(index, step));
    index = _mm256_add_pd(index, four);
    const __m256d second = value(_mm256_mul_pd(index, step));
    index = _mm256_add_pd(index, four);
    Store(codes.data() + i, first, second);
  }
  return true;
}

__m256d Part(__m256d turn) {
  return _mm256_sub_pd(turn, _mm256_floor_pd(turn));
}

__m256i Multiply(__m256i a, std::uint64_t factor) {
  const __m256i b = _mm256_set1_epi64x(static_cast<long long>(factor));
  const __m256i cross =
      _mm256_add_epi64(_mm256_mul_epu32(_mm256_srli_epi64(a, 32), b), _mm256_mul_epu32(a, _mm256_srli_epi64(b, 32)));
  return _mm256_add_epi64(_mm256_mul_epu32(a, b), _mm256_slli_epi64(cross, 32));
}

} // namespace

bool PeerTriangle(std::span<std::int16_t> codes) {
  const __m256d rise = _mm256_set1_pd(0.3);
  const __m256d one = _mm256_set1_pd(1);
  return Fill(codes, [&](__m256d turn) {
    const __m256d part = Part(_mm256_add_pd(turn, _mm256_set1_pd(0.15)));
    const __m256d up = _mm256_fmsub_pd(part, _mm256_set1_pd(2 / 0.3), one);
    const __m256d down = _mm256_fnmadd_pd(_mm256_sub_pd(part, rise), _mm256_set1_pd(2 / 0.7), one);
    return _mm256_blendv_pd(down, up, _mm256_cmp_pd(part, rise, _CMP_LT_OQ));
  });
}

bool PeerSquare(std::span<std::int16_t> codes) {
  return Fill(codes, [](__m256d turn) {
    const __m256d high = _mm256_cmp_pd(Part(turn), _mm256_set1_pd(0.3), _CMP_LT_OQ);
    return _mm256_blendv_pd(_mm256_set1_pd(-1), _mm256_set1_pd(1), high);
  });
}

bool PeerSlopes(std::span<std::int16_t> codes) {
  const __m256d one = _mm256_set1_pd(1);
  const __m256d sign = _mm256_set1_pd(-0.0);
  return Fill(codes, [&](__m256d turn) {
    const __m256d away = _mm256_sub_pd(turn, _mm256_set1_pd(0.15));
    const __m256d nearest = _mm256_round_pd(away, _MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC);
    const __m256d distance = _mm256_andnot_pd(sign, _mm256_sub_pd(away, nearest));
    const __m256d raw = _mm256_mul_pd(_mm256_sub_pd(_mm256_set1_pd(0.15), distance), _mm256_set1_pd(20));
    return _mm256_min_pd(one, _mm256_max_pd(_mm256_sub_pd(_mm256_setzero_pd(), one), raw));
  });
}

bool PeerNoise(std::span<std::int16_t> codes) {
  if (!__builtin_cpu_supports("avx2")) return false;
  constexpr std::uint64_t golden = 0x9E3779B97F4A7C15U;
  const auto at = [](std::uint64_t i) { return static_cast<long long>(i * golden); };
  __m256i counter = _mm256_setr_epi64x(at(1), at(2), at(3), at(4));
  const __m256i step = _mm256_set1_epi64x(at(4));
  const __m256d scale = _mm256_set1_pd(1.0 / 2147483648.0);
  const auto next = [&] {
    __m256i value = counter;
    counter = _mm256_add_epi64(counter, step);
    value = Multiply(_mm256_xor_si256(value, _mm256_srli_epi64(value, 30)), 0xBF58476D1CE4E5B9U);
    value = Multiply(_mm256_xor_si256(value, _mm256_srli_epi64(value, 27)), 0x94D049BB133111EBU);
    value = _mm256_xor_si256(value, _mm256_srli_epi64(value, 31));
    const __m256i upper = _mm256_permutevar8x32_epi32(value, _mm256_setr_epi32(1, 3, 5, 7, 1, 3, 5, 7));
    const __m256d unit = _mm256_cvtepi32_pd(_mm256_castsi256_si128(upper));
    return _mm256_mul_pd(_mm256_add_pd(unit, _mm256_set1_pd(0.5)), scale);
  };
  for (std::size_t i = 0; i + 8 <= codes.size(); i += 8) {
    const __m256d first = next();
    const __m256d second = next();
    Store(codes.data() + i, first, second);
  }
  return true;
}

} // namespace calder
