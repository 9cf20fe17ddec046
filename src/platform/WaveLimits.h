// The numbers that bound every waveform.
#pragma once

#include <cstdint>

namespace calder {

// Codes run from -W_CODE_MAX to W_CODE_MAX, which is the full scale; W_CODE_SPAN is the span between the two.
inline constexpr std::int32_t W_CODE_MAX = 32767;
inline constexpr std::int32_t W_CODE_SPAN = 2 * W_CODE_MAX;
inline constexpr std::int32_t W_MAX_POINTS = 524288;

} // namespace calder
