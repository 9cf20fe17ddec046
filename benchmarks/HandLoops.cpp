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

namespace {

// Calls value(a, b) for 4 points at a time.
template <typename Value>
void Combine(std::span<const std::int16_t> a, std::span<const std::int16_t> b, std::span<std::int16_t> result,
             Value value) {
  const auto four = [](const std::int16_t* codes) {
    return _mm256_cvtepi32_pd(_mm_cvtepi16_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(codes))));
  };
  const __m256d most = _mm256_set1_pd(32767);
  const __m256d least = _mm256_set1_pd(-32767);
  const auto codesOf = [&](__m256d y) { return _mm256_cvtpd_epi32(_mm256_max_pd(least, _mm256_min_pd(most, y))); };
  for (std::size_t i = 0; i + 8 <= result.size(); i += 8) {
    const __m128i low = codesOf(value(four(&a[i]), four(&b[i])));
    const __m128i high = codesOf(value(four(&a[i + 4]), four(&b[i + 4])));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(&result[i]), _mm_packs_epi32(low, high));
  }
}

template <typename Value>
void CombineCodes(std::span<const std::int16_t> a, std::span<const std::int16_t> b, std::span<std::int16_t> result,
                  Value value) {
  const __m256i least = _mm256_set1_epi16(-32767);
  const auto sixteen = [](const std::int16_t* codes) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(codes));
  };
  for (std::size_t i = 0; i + 16 <= result.size(); i += 16) {
    const __m256i codes = _mm256_max_epi16(least, value(sixteen(&a[i]), sixteen(&b[i])));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(&result[i]), codes);
  }
}

} // namespace

bool PeerCombine(std::span<const std::int16_t> a, std::span<const std::int16_t> b, std::span<std::int16_t> result,
                 double perCode, double centre, int operation) {
  if (!__builtin_cpu_supports("avx2")) return false;
  const __m256d c = _mm256_set1_pd(centre);
  const __m256d k = _mm256_set1_pd(perCode);
  const __m256d codesPerY = _mm256_set1_pd(1 / perCode);
  if (operation == 0 && centre == 0) {
    CombineCodes(a, b, result, [](__m256i x, __m256i y) { return _mm256_adds_epi16(x, y); });
  } else if (operation == 1 && centre == 0) {
    CombineCodes(a, b, result, [](__m256i x, __m256i y) { return _mm256_subs_epi16(x, y); });
  } else if (operation == 0) {
    Combine(a, b, result, [&](__m256d x, __m256d y) { return _mm256_add_pd(_mm256_add_pd(x, y), c); });
  } else if (operation == 1) {
    Combine(a, b, result, [&](__m256d x, __m256d y) { return _mm256_sub_pd(_mm256_sub_pd(x, y), c); });
  } else if (operation == 2) {
    Combine(a, b, result, [&](__m256d x, __m256d y) {
      return _mm256_sub_pd(_mm256_mul_pd(_mm256_mul_pd(_mm256_add_pd(x, c), _mm256_add_pd(y, c)), k), c);
    });
  } else {
    const __m256d zero = _mm256_setzero_pd();
    Combine(a, b, result, [&](__m256d x, __m256d y) {
      const __m256d dividend = _mm256_add_pd(x, c);
      const __m256d ratio = _mm256_div_pd(dividend, _mm256_add_pd(y, c));
      const __m256d quotient = _mm256_sub_pd(_mm256_mul_pd(ratio, codesPerY), c);
      // 0 / 0 is the Y value 0.
      return _mm256_blendv_pd(quotient, _mm256_sub_pd(zero, c), _mm256_cmp_pd(ratio, ratio, _CMP_UNORD_Q));
    });
  }
  return true;
}

} // namespace calder
