// The labels of the reports in both languages.
#pragma once

#include "app/Messages.h"

namespace calder {

// In the order of the system settings report; a page of the expression list begins with the unit labels too.
enum class ReportLabel {
  System,
  Basic,
  Model,
  GpibAddress,
  WaveMemory,
  MemorySize,
  MemoryName,
  MemoryNumber,
  Oscillator,
  Channel,
  Output,
  Frequency,
  Period,
  Range,
  Amplitude,
  DcOffset,
  OffsetOutput,
  Unit,
  XAxis,
  XUnit,
  XName,
  XMinToMax,
  YAxis,
  YUnit,
  YName,
  YMinToMax,
  Interface,
  UsbId,
  SerialNo,
  Format,
  // A page of the expression list.
  Page,
  Function,
  StartX,
  EndX,
  Offset,
  Size,
  PageAmplitude,
  PagePeriod,
  Phase,
  Symmetry,
  Duty,
  Constant,
  Expression,
  Transition,
  // The parameter-variable waveform; five parameters follow each other.
  PwfParameter,
  PwfFunction,
  PwfSetting,
  Parameter1,
  Parameter2,
  Parameter3,
  Parameter4,
  Parameter5,
};

[[nodiscard]] const char* ReportText(ReportLabel label, Language language);

} // namespace calder
