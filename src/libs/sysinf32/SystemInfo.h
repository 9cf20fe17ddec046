// The settings record of the program: the instrument model, its limits, and what the user chose.
//
// Texts are UTF-8 without the padding that the packed forms give them; the maximum number of characters is in the
// comment. 16- and 32-bit fields are as wide as the packed forms are.
#pragma once

#include "platform/WaveLimits.h"

#include <cstdint>
#include <string>

namespace calder {

// What the record's unit fields hold.
enum XUnitNo : std::int16_t { kXPoints = 0, kXSeconds = 1, kXUser = 2 };
enum YUnitNo : std::int16_t { kYCodes = 0, kYVolts = 1, kYUser = 2 };

struct SystemInfo {
  std::string ModelName;                  // 0   at most 16 characters
  std::int16_t ModelNo = 0;               // 1   index in the device list
  std::int16_t Address = 0;               // 2   instrument bus address
  std::int16_t AddressMin = 0;            // 3
  std::int16_t AddressMax = 0;            // 4
  std::string DefaultArbCommand;          // 5   at most 64 characters: waveform transfer command pair
  std::string MemoryName;                 // 6   at most 32 characters
  std::int32_t MemorySize = W_MAX_POINTS; // 7   points in the waveform
  std::int32_t CodeSpan = W_CODE_SPAN;    // 8   codes from the lowest to the highest
  std::int16_t Field9 = 0;                // 9   smallest memory size of the model, in units of 1024 points, rounded up
  std::int16_t Field10 = 0;               // 10  largest memory size of the model, in units of 1024 points, rounded up
  std::int32_t DataBits = 16;             // 11  data bits of the model's codes
  std::int16_t MemoryNoSelectable = 0;    // 12
  std::int16_t MemoryNo = 0;              // 13
  std::int16_t MemoryNoMin = 0;           // 14
  std::int16_t MemoryNoMax = 0;           // 15
  std::int16_t MemoryNameSelectable = 0;  // 16
  std::int16_t MemorySizeNo = 0;          // 17  index in the memory-size list
  std::int16_t ChannelSelectable = 0;     // 18
  std::int16_t Channel = 0;               // 19  0-based
  double Frequency = 1000;                // 20  Hz
  double FrequencyMin = 0;                // 21
  double FrequencyMax = 0;                // 22
  double Field23 = 0;                     // 23  frequency resolution, Hz
  double Period = 0.001;                  // 24  seconds
  double Field25 = 0;                     // 25  shortest period, seconds
  double Field26 = 0;                     // 26  longest period, seconds
  double Field27 = 0;                     // 27  period resolution, seconds
  double Amplitude = 0;                   // 28  volts peak to peak
  double AmplitudeMin = 0;                // 29
  double AmplitudeMax = 0;                // 30
  double Field31 = 0;                     // 31  amplitude resolution, volts
  double Offset = 0;                      // 32  volts
  double OffsetMin = 0;                   // 33
  double OffsetMax = 0;                   // 34
  double Field35 = 0;                     // 35  offset resolution, volts
  std::int16_t OffsetSwitch = 0;          // 36  the model has a DC-offset switch
  std::int16_t OffsetOn = 0;              // 37
  std::int16_t XUnit = 0;                 // 38  an XUnitNo
  std::int16_t YUnit = 0;                 // 39  a YUnitNo
  double XUserMin = 0;                    // 40
  double XUserMax = 1;                    // 41
  double YUserMin = -1;                   // 42
  double YUserMax = 1;                    // 43
  std::int16_t Output = 0;                // 44  0 on, 1 off, other: leave unchanged
  std::int16_t RangeNo = 0;               // 45
  std::int16_t Field46 = 0;               // 46  number of amplitude ranges of the channel
  std::string XUserName;                  // 47  at most 8 characters
  std::string YUserName;                  // 48  at most 8 characters
  std::int16_t TransferFormat = 0;        // 49  1: the waveform has a control-point table
  std::int32_t ControlPointCount = 0;     // 50
  std::int16_t SizeRatio = 1;             // 51  MemorySize / chosen number of points, rounded
  std::int16_t Polarity = 0;              // 52  0 to 5

  friend bool operator==(const SystemInfo&, const SystemInfo&) = default;
};

} // namespace calder
