// One instrument model as its file describes it.
#pragma once

#include "libs/sysinf32/Protocol.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace calder {

// Min <= Default <= Max, Resolution > 0.
struct Limits {
  double Min = 0;
  double Max = 0;
  double Default = 0;
  double Resolution = 0;

  [[nodiscard]] bool Holds(double value) const { return value >= Min && value <= Max; } // false for NaN
};

// An amplitude range. Amplitude in volts peak to peak, Offset in volts. The offset limits are also those of the output:
// offset plus and minus half of the amplitude stay inside them, so Amplitude.Max <= Offset.Max - Offset.Min; and
// Amplitude.Min <= Amplitude.Max / 2, so that a one-sided polarity is possible too.
struct AmplitudeRange {
  std::string Name; // at most 20 characters
  Limits Amplitude;
  Limits Offset;
};

struct ModelChannel {
  std::string Name;            // at most 20 characters
  Limits Frequency;            // Hz, Min > 0
  double PeriodResolution = 0; // seconds
  std::vector<AmplitudeRange> Ranges;
};

// Frequencies Above < f <= UpTo (Hz) are allowed but need a word first.
struct FrequencyWarning {
  double Above = 0;
  double UpTo = 0;
  std::int32_t Channel = -1; // -1: every channel
  std::string Japanese;
  std::string English;
};

struct CommandRow {
  std::string Key;   // lower case
  std::string Value; // at most 64 printable ASCII characters
};

// A choice of settings that lies inside the limits.
struct ModelSettings {
  std::int16_t Channel = 0;
  std::int16_t Range = 0;
  std::int16_t Output = 2;
  std::int16_t Polarity = 0;
  std::int16_t OffsetOn = 0;
  double Frequency = 0;
  double Amplitude = 0;
  double Offset = 0;
};

struct AddressRange {
  std::int16_t Min = 0;
  std::int16_t Max = 30;
};

struct Model {
  static constexpr std::size_t kInterfaceKinds = 5;
  static constexpr std::size_t kTables = 4;
  static constexpr std::size_t kMaxMemoryName = 32; // characters

  std::string Name;            // at most 16 characters
  std::int32_t NameLine = 0;   // where the file says so
  std::int32_t Interfaces = 0; // bits SYS_INTERFACE_...
  std::int32_t DataBits = 16;
  bool OffsetSwitch = false;
  bool ChannelSelectable = false;
  std::string DefaultArbCommand;

  std::int16_t Address = 2;
  std::array<AddressRange, kInterfaceKinds> Addresses; // by interface kind

  std::vector<std::int32_t> MemorySizes; // points; the first is the default
  bool MemoryNoSelectable = false;
  std::int16_t MemoryNo = 0;
  std::int16_t MemoryNoMin = 0;
  std::int16_t MemoryNoMax = 0;
  bool MemoryNameSelectable = false;
  std::string MemoryName;

  std::vector<ModelChannel> Channels;
  std::vector<FrequencyWarning> Warnings;
  ModelSettings Defaults;
  ModelSettings Start;
  std::array<std::vector<CommandRow>, kTables> Commands;
  calder::Protocol Protocol;
};

} // namespace calder
