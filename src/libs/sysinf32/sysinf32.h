// The model database: every instrument model's names, sizes, limits, start-up settings and command definitions, read
// from one TOML file a model. docs/models.md describes the files.
//
// The limits of an output: Offset plus and minus half of Amplitude (plus and minus Amplitude for a one-sided Polarity)
// stay inside OffsetMin to OffsetMax. SysChangeChannel and SysChangeRange bring frequency, amplitude and then offset
// inside; SysChangeFrequency, SysChangeAmplitude and SysChangeOffset refuse a value outside of its own limits.
//
// Indices are 0-based positions in the lists. Calls with an index outside its list return a negative result, 0 counts
// or empty names, and leave their outputs alone. Change calls return 0 when the change was made and
// SYS_REFUSED (the record is unchanged) when the model does not allow the value.
#pragma once

#include "libs/sysinf32/Protocol.h"
#include "libs/sysinf32/SystemInfo.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace calder {

inline constexpr std::int32_t SYS_NO_MODEL_FILE = -30;
inline constexpr std::int32_t SYS_READ_FAILED = -20;
inline constexpr std::int32_t SYS_NO_MEMORY = -10;
inline constexpr std::int32_t SYS_SYNTAX_ERROR = -2;
inline constexpr std::int32_t SYS_BAD_VALUE = -1;
inline constexpr std::int16_t SYS_REFUSED = -1;

// Usable interfaces of a model, a bit each.
inline constexpr std::int32_t SYS_INTERFACE_NI_GPIB = 1;
inline constexpr std::int32_t SYS_INTERFACE_KI_GPIB = 2;
inline constexpr std::int32_t SYS_INTERFACE_NI_GPIB_2 = 4;
inline constexpr std::int32_t SYS_INTERFACE_USBTMC = 8;

// One of a model's four tables of command definitions: at most 50 rows, keys of at most 8 characters except that the
// database accepts the long key names of the command set, values of at most 64 characters.
struct CommandTable {
  static constexpr int kRows = 50;
  std::array<std::string, kRows> Key;
  std::array<std::string, kRows> Value;
};

class ModelDatabase {
public:
  ModelDatabase();
  ~ModelDatabase();
  ModelDatabase(ModelDatabase&&) noexcept;
  ModelDatabase& operator=(ModelDatabase&&) noexcept;
  ModelDatabase(const ModelDatabase&) = delete;
  ModelDatabase& operator=(const ModelDatabase&) = delete;

  // Begins to read the files of a folder on a thread of its own: a SysInitDeviceInfo of the same folder takes what it
  // found. Any other one forgets it.
  void Prefetch(const std::string& folder);

  // Reads index.toml and the model files that it lists, in its order, from `folder`. >= 0: loaded; negative: one of the
  // statuses above, and SysGetSysErrorFileName and SysGetSysErrorLineNo (1-based, 0 when no line is to blame) say
  // where. After a failure the database is empty.
  [[nodiscard]] std::int32_t SysInitDeviceInfo(const std::string& folder);
  [[nodiscard]] std::int32_t SysGetSysErrorLineNo() const;
  [[nodiscard]] std::string SysGetSysErrorFileName() const;
  // What is wrong there, in plain English; for people, beside the numbered message.
  [[nodiscard]] std::string SysGetSysErrorText() const;

  [[nodiscard]] std::int32_t SysGetDeviceCnt() const;
  [[nodiscard]] std::string SysGetDeviceName(std::int32_t model) const;
  // The model's defaults: everything about the model and its instrument settings. What is the user's own (Address when
  // it lies inside the new model's range, XUnit to YUserMax, user unit names, MemorySize with its number when the model
  // has that size) is kept, and so is what belongs to the waveform (TransferFormat, ControlPointCount).
  std::int32_t SysGetDeviceInfo(std::int32_t model, SystemInfo& record) const;
  // The model's start-up settings: the whole record, with user units on both axes and no control points. Both calls
  // give the address range of the bus when the model has one, else of USB.
  std::int32_t SysGetInitDeviceInfo(std::int32_t model, SystemInfo& record) const;

  [[nodiscard]] std::int32_t SysGetInterfaceInfo(std::int32_t model) const;
  // interfaceIndex: the interface kind (0 NI GPIB, 1 KI GPIB, 2 USB488, 3 USBTMC, 4 simulated), each of which
  // every model has, offered or not. Sets AddressMin and AddressMax; an Address outside them becomes AddressMin.
  std::int16_t SysChangeInterface(std::int32_t model, std::int32_t interfaceIndex, SystemInfo& record) const;

  [[nodiscard]] std::int32_t SysGetMemorySizeCnt(std::int32_t model) const;
  [[nodiscard]] std::string SysGetMemorySizeName(std::int32_t model, std::int32_t index) const;
  std::int16_t SysChangeMemorySize(std::int32_t model, std::int32_t index, SystemInfo& record) const;

  [[nodiscard]] std::int32_t SysGetChannelCnt(std::int32_t model) const;
  [[nodiscard]] std::string SysGetChannelName(std::int32_t model, std::int32_t index) const;
  std::int16_t SysChangeChannel(std::int32_t model, std::int32_t channel, SystemInfo& record) const;

  [[nodiscard]] std::int32_t SysGetRangeCnt(std::int32_t model, std::int32_t channel) const;
  [[nodiscard]] std::string SysGetRangeName(std::int32_t model, std::int32_t channel, std::int32_t index) const;
  std::int16_t SysChangeRange(std::int32_t model, std::int32_t channel, std::int32_t range, SystemInfo& record) const;

  // language: 0 Japanese, other English. 0: accepted without a remark; 1: `warning` holds a text to be confirmed.
  [[nodiscard]] std::int16_t SysCheckFrequency(std::int32_t model, std::int32_t channel, std::int32_t language,
                                               double frequency, std::string& warning) const;
  std::int16_t SysChangeFrequency(std::int32_t model, std::int32_t channel, double frequency, SystemInfo& record) const;
  std::int16_t SysChangeAmplitude(std::int32_t model, std::int32_t channel, std::int32_t range, double amplitude,
                                  SystemInfo& record) const;
  std::int16_t SysChangeOffset(std::int32_t model, std::int32_t channel, std::int32_t range, double offset,
                               SystemInfo& record) const;

  // tableNumber: 0 common, 1 closing, 2 oscillator, 3 waveform. The number of rows filled, negative on a bad number.
  std::int32_t SysGetGPIBInfo(std::int32_t model, std::int32_t tableNumber, CommandTable& table) const;

  // How the model's instruments are spoken to; plain for an index outside the list. Good until the next
  // SysInitDeviceInfo.
  [[nodiscard]] const Protocol& SysGetProtocol(std::int32_t model) const;

private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

} // namespace calder
