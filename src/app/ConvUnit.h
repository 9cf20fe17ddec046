// Points and codes as the user sees them: conversions between point and X value and between code and Y value in the
// current units, range checks, unit names and value texts. Everything is worked out from the settings record at each
// call, so a changed setting holds at once.
//
// Units are an XUnitNo or a YUnitNo. A point runs from 0 to MemorySize, the right end.
#pragma once

#include "libs/sysinf32/SystemInfo.h"

#include <string>

namespace calder {

class ConvUnit {
public:
  // The record must outlive this object.
  explicit ConvUnit(const SystemInfo& settings) : settings_(settings) {}

  // The X value of a point, which is clamped first (a point above MemorySize counts as point 0).
  [[nodiscard]] double PointToX(double point) const;
  // The point of an X value, clamped first; keeps its fraction, but is whole when within 1e-9 (relative) of a whole
  // number.
  [[nodiscard]] double XToPoint(double x) const;
  [[nodiscard]] double CodeToY(double code) const; // the code is limited to +-32767
  [[nodiscard]] double CodeToYUnclamped(double code) const;
  // With an amplitude of 0 the volt conversions give 65534.
  [[nodiscard]] double YToCode(double y) const;
  [[nodiscard]] double YToCodeUnclamped(double y) const;
  [[nodiscard]] double CodeSpanToY(double codes) const;
  [[nodiscard]] double YSpanToCode(double y) const;

  // Limits a value in the given unit. ClampX turns a point above MemorySize into 0.
  void ClampX(double& x, int unit) const;
  void ClampY(double& y, int unit) const;
  // As the clamps, but a point above MemorySize becomes MemorySize and a code may be -32768. False: it was changed.
  [[nodiscard]] bool CheckX(double& x, int unit) const;
  [[nodiscard]] bool CheckXCurrent(double& x) const;
  [[nodiscard]] bool CheckY(double& y, int unit) const;
  [[nodiscard]] bool CheckYCurrent(double& y) const;

  [[nodiscard]] std::string XUnitName() const; // "Word", "sec" or the user's
  [[nodiscard]] std::string YUnitName() const; // "", "V" or the user's

  [[nodiscard]] std::string PointToXText(double point) const;
  [[nodiscard]] std::string PointToXTextWide(double point) const;
  [[nodiscard]] std::string CodeToYText(double code) const;
  [[nodiscard]] std::string CodeToYTextUnclamped(double code) const;
  [[nodiscard]] std::string CodeSpanToYText(double codes) const;

private:
  [[nodiscard]] double EffectiveOffset() const;
  [[nodiscard]] double CodeToYIn(double code, int unit) const;
  [[nodiscard]] std::string YText(double y) const;

  const SystemInfo& settings_;
};

} // namespace calder
