// The oscillator settings as they are typed: checked against the model's limits and against each other.
//
// An entry that is refused, and one that equals the setting, changes nothing; the box then shows the setting again.
#pragma once

#include "libs/sysinf32/SystemInfo.h"

#include <string>
#include <string_view>

namespace calder {

class ErrMsg;
class ModelDatabase;

class OscillatorLimits {
public:
  // What they refer to must outlive this object. settings: the live record.
  OscillatorLimits(SystemInfo& settings, const ModelDatabase& models, const ErrMsg& messages)
      : settings_(settings), models_(models), messages_(messages) {}

  // Texts as typed, with prefixes. True: the setting changed.
  bool EnterFrequency(std::string_view text);
  bool EnterPeriod(std::string_view text);
  bool EnterAmplitude(std::string_view text);
  bool EnterOffset(std::string_view text);
  // 0 to 5. A step between peak-to-peak and peak polarities halves or doubles the amplitude's number, so that the
  // output stays the same.
  void ChoosePolarity(int polarity);

  [[nodiscard]] std::string FrequencyText() const;
  [[nodiscard]] std::string PeriodText() const;
  [[nodiscard]] std::string AmplitudeText() const;
  [[nodiscard]] std::string OffsetText() const;
  [[nodiscard]] const char* AmplitudeUnit() const; // "Vp-p" or "Vpk"

private:
  [[nodiscard]] bool StoreFrequency(double frequency);
  [[nodiscard]] bool Unipolar() const { return settings_.Polarity % 3 != 0; }
  // The output, offset plus and minus what the amplitude adds, stays inside the offset's limits.
  [[nodiscard]] bool Fits(double amplitude, double offset) const;

  SystemInfo& settings_;
  const ModelDatabase& models_;
  const ErrMsg& messages_;
};

// Volts as the boxes keep them: to 4 decimals, and to 3 when that is not more.
[[nodiscard]] double RoundVolts(double value);

} // namespace calder
