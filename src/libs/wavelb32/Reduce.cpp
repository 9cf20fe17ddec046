#include "libs/wavelb32/Reduce.h"

#include "platform/VectorClones.h"

namespace calder::wavelb {

namespace {

// The compiler makes vector code of the ternaries, not of std::min and std::max.
[[gnu::always_inline]] inline Extremes ExtremesOf(const std::int16_t* codes, std::int32_t count) {
  std::int16_t low = codes[0];
  std::int16_t high = codes[0];
  for (std::int32_t i = 0; i < count; ++i) {
    const std::int16_t code = codes[i];
    low = code < low ? code : low;
    high = code > high ? code : high;
  }
  return {low, high};
}

CALDER_VECTOR Extremes ExtremesVector(const std::int16_t* codes, std::int32_t count) {
  return ExtremesOf(codes, count);
}

CALDER_SHORT_VECTOR void ReduceVector(const std::int16_t* codes, const std::int32_t* edges, std::int32_t columns,
                                      std::int16_t* lows, std::int16_t* highs) {
  for (std::int32_t c = 0; c < columns; ++c) {
    const std::int32_t first = edges[c];
    const std::int32_t count = edges[c + 1] - first;
    Extremes extremes{INT16_MAX, INT16_MIN};
    if (count > 0) extremes = ExtremesOf(codes + first, count);
    lows[c] = extremes.low;
    highs[c] = extremes.high;
  }
}

CALDER_SHORT_VECTOR void BitsVector(const std::int16_t* codes, const std::int32_t* firsts, const std::int32_t* ends,
                                    std::size_t columns, std::uint16_t* always, std::uint16_t* ever) {
  for (std::size_t c = 0; c < columns; ++c) {
    std::uint16_t all = 0xFFFF;
    std::uint16_t any = 0;
    for (std::int32_t i = firsts[c]; i < ends[c]; ++i) {
      all = static_cast<std::uint16_t>(all & codes[i]);
      any = static_cast<std::uint16_t>(any | codes[i]);
    }
    always[c] = all;
    ever[c] = any;
  }
}

CALDER_SHORT_VECTOR void DifferencesVector(const std::int16_t* codes, const std::int16_t* others,
                                           const std::int32_t* firsts, const std::int32_t* ends, std::size_t columns,
                                           std::uint16_t* differ) {
  for (std::size_t c = 0; c < columns; ++c) {
    std::uint16_t any = 0;
    for (std::int32_t i = firsts[c]; i < ends[c]; ++i) any = static_cast<std::uint16_t>(any | (codes[i] ^ others[i]));
    differ[c] = any;
  }
}

} // namespace

Extremes FindExtremes(std::span<const std::int16_t> codes) {
  return ExtremesVector(codes.data(), static_cast<std::int32_t>(codes.size()));
}

void ReduceColumns(std::span<const std::int16_t> codes, std::span<const std::int32_t> edges,
                   std::span<std::int16_t> lows, std::span<std::int16_t> highs) {
  ReduceVector(codes.data(), edges.data(), static_cast<std::int32_t>(lows.size()), lows.data(), highs.data());
}

void ReduceBits(std::span<const std::int16_t> codes, std::span<const std::int32_t> firsts,
                std::span<const std::int32_t> ends, std::span<std::uint16_t> always, std::span<std::uint16_t> ever) {
  BitsVector(codes.data(), firsts.data(), ends.data(), always.size(), always.data(), ever.data());
}

void ReduceDifferences(std::span<const std::int16_t> codes, std::span<const std::int16_t> others,
                       std::span<const std::int32_t> firsts, std::span<const std::int32_t> ends,
                       std::span<std::uint16_t> differ) {
  DifferencesVector(codes.data(), others.data(), firsts.data(), ends.data(), differ.size(), differ.data());
}

} // namespace calder::wavelb
