// A waveform buffer of the test's own.
#pragma once

#include "libs/wavelb32/wavelb32.h"

#include <algorithm>
#include <string>
#include <vector>

namespace calder {

class WaveBuffer {
public:
  explicit WaveBuffer(std::int32_t points) : handle(W_AllocMemory(points)) {}
  explicit WaveBuffer(const std::vector<std::int16_t>& codes) : WaveBuffer(static_cast<std::int32_t>(codes.size())) {
    std::ranges::copy(codes, W_Lock(handle).begin());
  }
  ~WaveBuffer() { W_FreeMemory(handle); }
  WaveBuffer(const WaveBuffer&) = delete;
  WaveBuffer& operator=(const WaveBuffer&) = delete;

  [[nodiscard]] std::vector<std::int16_t> Codes() const {
    const auto points = W_Lock(handle);
    return {points.begin(), points.end()};
  }
  // The codes with a blank between them.
  [[nodiscard]] std::string Text() const {
    std::string text;
    for (const std::int16_t code : W_Lock(handle)) text += (text.empty() ? "" : " ") + std::to_string(code);
    return text;
  }

  const WaveHandle handle;
};

inline std::vector<std::int16_t> Noise(std::size_t points) {
  std::vector<std::int16_t> codes(points);
  std::uint32_t random = 5;
  for (std::int16_t& code : codes) {
    random = random * 1664525 + 1013904223;
    code = static_cast<std::int16_t>(random >> 16);
  }
  return codes;
}

} // namespace calder
