#include "app/ConvUnit.h"

#include "app/EngValB.h"
#include "platform/AsciiText.h"
#include "platform/WaveLimits.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr double kCodeMax = W_CODE_MAX;
constexpr double kCodeSpan = W_CODE_SPAN;
constexpr double kNoVolts = W_CODE_SPAN; // what a code of an amplitude of 0 volts is
constexpr double kWholeTolerance = 1e-9;

// Conversions multiply the span by a fraction of the full scale (not the code by a step), so that both ends of a range
// come out exactly.

// Both ends belong to the range. NaN counts as below it.
bool Limit(double& value, double low, double high) {
  if (!(value >= low)) {
    value = low;
    return false;
  }
  if (value > high) {
    value = high;
    return false;
  }
  return true;
}

double SnapToWhole(double point) {
  const double whole = std::nearbyint(point);
  return std::fabs(point - whole) <= kWholeTolerance * std::max(1.0, std::fabs(whole)) ? whole : point;
}

double Finite(double value) {
  return std::isfinite(value) ? value : 0;
}

} // namespace

double ConvUnit::EffectiveOffset() const {
  return settings_.OffsetSwitch != 0 && settings_.OffsetOn == 0 ? 0 : settings_.Offset;
}

double ConvUnit::PointToX(double point) const {
  ClampX(point, kXPoints);
  switch (settings_.XUnit) {
  case kXSeconds: return settings_.Period * (point / settings_.MemorySize);
  case kXUser: return (settings_.XUserMax - settings_.XUserMin) * (point / settings_.MemorySize) + settings_.XUserMin;
  default: return point;
  }
}

double ConvUnit::XToPoint(double x) const {
  ClampX(x, settings_.XUnit);
  switch (settings_.XUnit) {
  case kXSeconds: return SnapToWhole(Finite(x / settings_.Period * settings_.MemorySize));
  case kXUser:
    return SnapToWhole(
        Finite((x - settings_.XUserMin) / (settings_.XUserMax - settings_.XUserMin) * settings_.MemorySize));
  default: return SnapToWhole(x);
  }
}

double ConvUnit::CodeToYIn(double code, int unit) const {
  switch (unit) {
  case kYVolts: return settings_.Amplitude * (code / kCodeSpan) + EffectiveOffset();
  case kYUser:
    return (settings_.YUserMax - settings_.YUserMin) * (code / kCodeSpan) +
           (settings_.YUserMin + settings_.YUserMax) / 2;
  default: return code;
  }
}

double ConvUnit::CodeToY(double code) const {
  Limit(code, -kCodeMax, kCodeMax);
  return CodeToYIn(code, settings_.YUnit);
}

double ConvUnit::CodeToYUnclamped(double code) const {
  return CodeToYIn(code, settings_.YUnit);
}

double ConvUnit::YToCode(double y) const {
  if (settings_.YUnit == kYVolts && settings_.Amplitude == 0) return kNoVolts;
  ClampY(y, settings_.YUnit);
  return YToCodeUnclamped(y);
}

double ConvUnit::YToCodeUnclamped(double y) const {
  switch (settings_.YUnit) {
  case kYVolts: return settings_.Amplitude == 0 ? kNoVolts : (y - EffectiveOffset()) / settings_.Amplitude * kCodeSpan;
  case kYUser:
    return (y - (settings_.YUserMin + settings_.YUserMax) / 2) / (settings_.YUserMax - settings_.YUserMin) * kCodeSpan;
  default: return y;
  }
}

double ConvUnit::CodeSpanToY(double codes) const {
  switch (settings_.YUnit) {
  case kYVolts: return settings_.Amplitude * (codes / kCodeSpan);
  case kYUser: return (settings_.YUserMax - settings_.YUserMin) * (codes / kCodeSpan);
  default: return codes;
  }
}

double ConvUnit::YSpanToCode(double y) const {
  switch (settings_.YUnit) {
  case kYVolts: return settings_.Amplitude == 0 ? kNoVolts : y / settings_.Amplitude * kCodeSpan;
  case kYUser: return y / (settings_.YUserMax - settings_.YUserMin) * kCodeSpan;
  default: return y;
  }
}

void ConvUnit::ClampX(double& x, int unit) const {
  if (unit == kXPoints && x > settings_.MemorySize) {
    x = 0;
    return;
  }
  static_cast<void>(CheckX(x, unit));
}

bool ConvUnit::CheckX(double& x, int unit) const {
  switch (unit) {
  case kXSeconds: return Limit(x, 0, 1 / settings_.Frequency);
  case kXUser: return Limit(x, settings_.XUserMin, settings_.XUserMax);
  default: return Limit(x, 0, settings_.MemorySize);
  }
}

bool ConvUnit::CheckXCurrent(double& x) const {
  return CheckX(x, settings_.XUnit);
}

void ConvUnit::ClampY(double& y, int unit) const {
  if (unit == kYCodes) {
    Limit(y, -kCodeMax, kCodeMax);
    return;
  }
  static_cast<void>(CheckY(y, unit));
}

bool ConvUnit::CheckY(double& y, int unit) const {
  switch (unit) {
  case kYVolts: return Limit(y, CodeToYIn(-kCodeMax, kYVolts), CodeToYIn(kCodeMax, kYVolts));
  case kYUser: return Limit(y, settings_.YUserMin, settings_.YUserMax);
  default: return Limit(y, -kCodeMax - 1, kCodeMax);
  }
}

bool ConvUnit::CheckYCurrent(double& y) const {
  return CheckY(y, settings_.YUnit);
}

std::string ConvUnit::XUnitName() const {
  switch (settings_.XUnit) {
  case kXSeconds: return "sec";
  case kXUser: return TrimBlanks(settings_.XUserName);
  default: return "Word";
  }
}

std::string ConvUnit::YUnitName() const {
  switch (settings_.YUnit) {
  case kYVolts: return "V";
  case kYUser: return TrimBlanks(settings_.YUserName);
  default: return {};
  }
}

std::string ConvUnit::PointToXText(double point) const {
  const double x = PointToX(point);
  return settings_.XUnit == kXPoints ? FormatFixed(x, 8) : FormatEng(x, 7);
}

std::string ConvUnit::PointToXTextWide(double point) const {
  const double x = PointToX(point);
  return settings_.XUnit == kXPoints ? FormatFixed(x, 11) : FormatEng(x, 10);
}

std::string ConvUnit::YText(double y) const {
  return settings_.YUnit == kYCodes ? FormatFixed(y, 8) : FormatEng(y, 7);
}

std::string ConvUnit::CodeToYText(double code) const {
  return YText(CodeToY(code));
}
std::string ConvUnit::CodeToYTextUnclamped(double code) const {
  return YText(CodeToYUnclamped(code));
}
std::string ConvUnit::CodeSpanToYText(double codes) const {
  return YText(CodeSpanToY(codes));
}

} // namespace calder
