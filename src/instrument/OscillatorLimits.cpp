#include "instrument/OscillatorLimits.h"

#include "app/EngValB.h"
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
  return frequency != program_.settings.Frequency && StoreFrequency(frequency);
}

bool OscillatorLimits::EnterPeriod(std::string_view text) {
  const double period = ParseEng(text);
  return period != program_.settings.Period && StoreFrequency(1 / period);
}

bool OscillatorLimits::StoreFrequency(double frequency) {
  SystemInfo& settings = program_.settings;
  if (!(frequency >= settings.FrequencyMin && frequency <= settings.FrequencyMax)) return false;
  std::string warning;
  const int language = program_.language == Language::English ? 1 : 0;
  if (program_.models.SysCheckFrequency(settings.ModelNo, settings.Channel, language, frequency, warning) != 0 &&
      program_.messages.WarningBox(warning) != BoxAnswer::Yes)
    return false;
  if (program_.models.SysChangeFrequency(settings.ModelNo, settings.Channel, frequency, settings) != 0) return false;
  settings.Period = 1 / settings.Frequency;
  return true;
}

bool OscillatorLimits::Fits(double amplitude, double offset) const {
  const SystemInfo& settings = program_.settings;
  const double swing = Unipolar() ? amplitude : amplitude / 2;
  return offset + swing <= settings.OffsetMax + kHair && offset - swing >= settings.OffsetMin - kHair;
}

bool OscillatorLimits::EnterAmplitude(std::string_view text) {
  SystemInfo& settings = program_.settings;
  const double amplitude = RoundVolts(ParseEng(text));
  if (amplitude == settings.Amplitude) return false;
  const double most = Unipolar() ? settings.AmplitudeMax / 2 : settings.AmplitudeMax;
  if (!(amplitude >= settings.AmplitudeMin && amplitude <= most) || !Fits(amplitude, settings.Offset)) return false;
  if (program_.models.SysChangeAmplitude(settings.ModelNo, settings.Channel, settings.RangeNo, amplitude, settings) !=
      0)
    return false;
  settings.Amplitude = amplitude;
  return true;
}

bool OscillatorLimits::EnterOffset(std::string_view text) {
  SystemInfo& settings = program_.settings;
  const double offset = RoundVolts(ParseEng(text));
  if (offset == settings.Offset) return false;
  if (!(offset >= settings.OffsetMin && offset <= settings.OffsetMax) || !Fits(settings.Amplitude, offset))
    return false;
  if (program_.models.SysChangeOffset(settings.ModelNo, settings.Channel, settings.RangeNo, offset, settings) != 0)
    return false;
  settings.Offset = offset;
  return true;
}

void OscillatorLimits::ChoosePolarity(int polarity) {
  if (polarity < 0 || polarity >= kPolarities) return;
  SystemInfo& settings = program_.settings;
  const bool wasUnipolar = Unipolar();
  settings.Polarity = static_cast<std::int16_t>(polarity);
  if (Unipolar() == wasUnipolar) return;
  settings.Amplitude = RoundVolts(wasUnipolar ? settings.Amplitude * 2 : settings.Amplitude / 2);
}

std::string OscillatorLimits::FrequencyText() const {
  return FormatEngMask(program_.settings.Frequency, ".##############");
}

std::string OscillatorLimits::PeriodText() const {
  return FormatEngMask(program_.settings.Period, ".#############");
}

std::string OscillatorLimits::AmplitudeText() const {
  return FormatEngMask(program_.settings.Amplitude, ".####");
}

std::string OscillatorLimits::OffsetText() const {
  return FormatEngMask(program_.settings.Offset, ".####");
}

const char* OscillatorLimits::AmplitudeUnit() const {
  return Unipolar() ? "Vpk" : "Vp-p";
}

} // namespace calder
