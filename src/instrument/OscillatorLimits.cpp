#include "instrument/OscillatorLimits.h"

#include "app/EngValB.h"
#include "app/Messages.h"
#include "libs/sysinf32/sysinf32.h"

#include <algorithm>

namespace calder {
namespace {

constexpr int kPolarities = 6;
constexpr double kHair = 1e-9; // volts: sums of decimal numbers are not exact in binary

// The value printed with a picture and read back.
double Rounded(double value, std::string_view picture) {
  return LeadingNumber(FormatMask(value, picture));
}

} // namespace

double RoundVolts(double value) {
  const double four = Rounded(value, ".0###");
  return Rounded(four, "0.###") > four ? four : Rounded(four, ".0##");
}

bool OscillatorLimits::EnterFrequency(std::string_view text) {
  const double frequency = Rounded(ParseEng(text), ".0#######");
  return frequency != settings_.Frequency && StoreFrequency(frequency);
}

bool OscillatorLimits::EnterPeriod(std::string_view text) {
  const double period = ParseEng(text);
  return period != settings_.Period && StoreFrequency(1 / period);
}

bool OscillatorLimits::StoreFrequency(double frequency) {
  if (!(frequency >= settings_.FrequencyMin && frequency <= settings_.FrequencyMax)) return false;
  std::string warning;
  const int language = messages_.GetLanguage() == Language::English ? 1 : 0;
  if (models_.SysCheckFrequency(settings_.ModelNo, settings_.Channel, language, frequency, warning) != 0 &&
      messages_.WarningBox(warning) != BoxAnswer::Yes)
    return false;
  if (models_.SysChangeFrequency(settings_.ModelNo, settings_.Channel, frequency, settings_) != 0) return false;
  settings_.Period = 1 / settings_.Frequency;
  return true;
}

bool OscillatorLimits::Fits(double amplitude, double offset) const {
  const double swing = Unipolar() ? amplitude : amplitude / 2;
  return offset + swing <= settings_.OffsetMax + kHair && offset - swing >= settings_.OffsetMin - kHair;
}

bool OscillatorLimits::EnterAmplitude(std::string_view text) {
  const double amplitude = RoundVolts(ParseEng(text));
  if (amplitude == settings_.Amplitude) return false;
  const double most = Unipolar() ? settings_.AmplitudeMax / 2 : settings_.AmplitudeMax;
  if (!(amplitude >= settings_.AmplitudeMin && amplitude <= most) || !Fits(amplitude, settings_.Offset)) return false;
  if (models_.SysChangeAmplitude(settings_.ModelNo, settings_.Channel, settings_.RangeNo, amplitude, settings_) != 0)
    return false;
  settings_.Amplitude = amplitude;
  return true;
}

bool OscillatorLimits::EnterOffset(std::string_view text) {
  const double offset = RoundVolts(ParseEng(text));
  if (offset == settings_.Offset) return false;
  if (!(offset >= settings_.OffsetMin && offset <= settings_.OffsetMax) || !Fits(settings_.Amplitude, offset))
    return false;
  if (models_.SysChangeOffset(settings_.ModelNo, settings_.Channel, settings_.RangeNo, offset, settings_) != 0)
    return false;
  settings_.Offset = offset;
  return true;
}

void OscillatorLimits::ChoosePolarity(int polarity) {
  if (polarity < 0 || polarity >= kPolarities) return;
  const bool wasUnipolar = Unipolar();
  settings_.Polarity = static_cast<std::int16_t>(polarity);
  if (Unipolar() == wasUnipolar) return;
  settings_.Amplitude = RoundVolts(wasUnipolar ? settings_.Amplitude * 2 : settings_.Amplitude / 2);
}

std::string OscillatorLimits::FrequencyText() const {
  return FormatEngMask(settings_.Frequency, ".##############");
}

std::string OscillatorLimits::PeriodText() const {
  return FormatEngMask(settings_.Period, ".#############");
}

std::string OscillatorLimits::AmplitudeText() const {
  return FormatEngMask(settings_.Amplitude, ".####");
}

std::string OscillatorLimits::OffsetText() const {
  return FormatEngMask(settings_.Offset, ".####");
}

const char* OscillatorLimits::AmplitudeUnit() const {
  return Unipolar() ? "Vpk" : "Vp-p";
}

} // namespace calder
