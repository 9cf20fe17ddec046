// The functions of the parameter-variable waveform dialog with their parameters. The table lives as long as the
// program; parameter files and printing read it too.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace calder {

struct PwfParam {
  double MinValue = 0;
  double MaxValue = 0;
  double Resolution = 0; // the step in which the value is shown and set
  double Value = 0;
  std::string ParamName; // UTF-8; also the name of the constant that the formula uses
  double FileValue = 0;  // what the definitions file gave
  friend bool operator==(const PwfParam&, const PwfParam&) = default;
};

struct PwfFunction {
  std::int16_t ParamCount = 0; // 0: no function
  std::int16_t FuncNo = 0;
  std::string FuncName;       // UTF-8
  std::string FixedConstants; // follow the parameters in the constant block
  std::string Formula;        // -1 to 1 over x from 0 to 1
  std::array<PwfParam, 5> Params;

  [[nodiscard]] bool IsDefined() const { return ParamCount > 0; }
  [[nodiscard]] std::span<const PwfParam> Parameters() const {
    return std::span(Params).first(static_cast<std::size_t>(ParamCount));
  }
  friend bool operator==(const PwfFunction&, const PwfFunction&) = default;
};

struct PwfTable {
  static constexpr int kFunctions = 25;
  static constexpr int kMaxParams = 5;
  // The function whose result is brought to full scale, and which may use the constant Ypk.
  static constexpr int kNormalized = 20;

  // REQUIRES: 0 <= k < kFunctions
  [[nodiscard]] PwfFunction& operator[](int k) { return functions[static_cast<std::size_t>(k)]; }
  [[nodiscard]] const PwfFunction& operator[](int k) const { return functions[static_cast<std::size_t>(k)]; }
  [[nodiscard]] const PwfFunction& Selected() const { return (*this)[WaveIdx]; }

  std::array<PwfFunction, kFunctions> functions;
  int WaveIdx = 0; // the selected function
};

// The mask (FormatMask) of a value with that resolution: as many decimals as the resolution's decimal value has.
[[nodiscard]] std::string Resolution_Mask(double resolution);

} // namespace calder
