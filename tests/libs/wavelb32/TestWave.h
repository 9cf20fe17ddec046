// A buffer that frees itself, and short ways to fill and read it.
#pragma once

#include "Testing.h"
#include "libs/wavelb32/wavelb32.h"

#include <cstdint>
#include <span>

namespace calder {

using Codes = std::vector<std::int16_t>;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class TestWave {
public:
  explicit TestWave(std::int32_t points) : handle_(W_AllocMemory(points)) {}
  explicit TestWave(const std::vector<std::int16_t>& codes) : TestWave(static_cast<std::int32_t>(codes.size())) {
    std::ranges::copy(codes, W_Lock(handle_).begin());
  }
  ~TestWave() { static_cast<void>(W_FreeMemory(handle_)); }
  TestWave(const TestWave&) = delete;
  TestWave& operator=(const TestWave&) = delete;

  [[nodiscard]] WaveHandle Handle() const { return handle_; }
  [[nodiscard]] std::span<std::int16_t> Codes() const { return W_Lock(handle_); }
  [[nodiscard]] std::vector<std::int16_t> Copy() const {
    const std::span<std::int16_t> codes = W_Lock(handle_);
    return {codes.begin(), codes.end()};
  }
  // The codes with a blank between them.
  [[nodiscard]] std::string Text() const {
    std::string text;
    for (const std::int16_t code : Codes()) text += (text.empty() ? "" : " ") + std::to_string(code);
    return text;
  }

private:
  WaveHandle handle_;
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
