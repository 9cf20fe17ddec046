// VISA (the IVI Foundation's VPP-4.3) as far as the program calls it.
//
// It is one of two things: a VISA library of the machine, or, when there is none, a small layer of our own over the
// kernel's usbtmc driver. Statuses are VISA's: negative numbers are errors, 0 and above success.
#pragma once

#include "platform/BusLibrary.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace calder {

using ViStatus = std::int32_t;
using ViSession = std::uint32_t;

inline constexpr ViStatus VI_SUCCESS = 0;
inline constexpr ViStatus VI_SUCCESS_TERM_CHAR = 0x3FFF0005;
inline constexpr ViStatus VI_SUCCESS_MAX_CNT = 0x3FFF0006;
inline constexpr ViStatus VI_ERROR_SYSTEM_ERROR = static_cast<ViStatus>(0xBFFF0000);
inline constexpr ViStatus VI_ERROR_INV_OBJECT = static_cast<ViStatus>(0xBFFF000E);
inline constexpr ViStatus VI_ERROR_RSRC_LOCKED = static_cast<ViStatus>(0xBFFF000F);
inline constexpr ViStatus VI_ERROR_INV_EXPR = static_cast<ViStatus>(0xBFFF0010);
inline constexpr ViStatus VI_ERROR_RSRC_NFOUND = static_cast<ViStatus>(0xBFFF0011);
inline constexpr ViStatus VI_ERROR_INV_RSRC_NAME = static_cast<ViStatus>(0xBFFF0012);
inline constexpr ViStatus VI_ERROR_TMO = static_cast<ViStatus>(0xBFFF0015);
inline constexpr ViStatus VI_ERROR_NSUP_ATTR = static_cast<ViStatus>(0xBFFF001D);
inline constexpr ViStatus VI_ERROR_IO = static_cast<ViStatus>(0xBFFF003E);
inline constexpr ViStatus VI_ERROR_NSUP_OPER = static_cast<ViStatus>(0xBFFF0067);
inline constexpr ViStatus VI_ERROR_RSRC_BUSY = static_cast<ViStatus>(0xBFFF0072);
inline constexpr ViStatus VI_ERROR_FILE_ACCESS = static_cast<ViStatus>(0xBFFF00A1);
inline constexpr ViStatus VI_ERROR_FILE_IO = static_cast<ViStatus>(0xBFFF00A2);
inline constexpr ViStatus VI_ERROR_CONN_LOST = static_cast<ViStatus>(0xBFFF00A6);
inline constexpr ViStatus VI_ERROR_NPERMISSION = static_cast<ViStatus>(0xBFFF00A8);

inline constexpr std::uint32_t VI_ATTR_SEND_END_EN = 0x3FFF0016;
inline constexpr std::uint32_t VI_ATTR_TERMCHAR = 0x3FFF0018;
inline constexpr std::uint32_t VI_ATTR_TMO_VALUE = 0x3FFF001A; // milliseconds; 0xFFFFFFFF: none
inline constexpr std::uint32_t VI_ATTR_TERMCHAR_EN = 0x3FFF0038;

// Modes of viGpibControlREN.
inline constexpr std::uint16_t VI_GPIB_REN_ASSERT = 1;
inline constexpr std::uint16_t VI_GPIB_REN_DEASSERT_GTL = 2;
inline constexpr std::uint16_t VI_GPIB_REN_ASSERT_ADDRESS_LLO = 5;

class Visa {
public:
  virtual ~Visa() = default;
  virtual ViStatus viOpenDefaultRM(ViSession& manager) = 0;
  // expression: a resource name in which ? stands for one character and ?* for any number of them. The first name found
  // goes to `name`, the others are fetched with viFindNext, `count` in all.
  virtual ViStatus viFindRsrc(ViSession manager, const std::string& expression, ViSession& list, std::uint32_t& count,
                              std::string& name) = 0;
  virtual ViStatus viFindNext(ViSession list, std::string& name) = 0;
  virtual ViStatus viOpen(ViSession manager, const std::string& name, ViSession& device) = 0;
  // A manager, a device or a list.
  virtual ViStatus viClose(ViSession object) = 0;
  virtual ViStatus viSetAttribute(ViSession device, std::uint32_t attribute, std::uint64_t value) = 0;
  virtual ViStatus viWrite(ViSession device, const void* data, std::uint32_t count, std::uint32_t& written) = 0;
  virtual ViStatus viRead(ViSession device, void* data, std::uint32_t capacity, std::uint32_t& received) = 0;
  virtual ViStatus viClear(ViSession device) = 0;
  virtual ViStatus viGpibControlREN(ViSession device, std::uint16_t mode) = 0;
  // `count` bytes of the file; the whole of what the device sends, at most `count` bytes, into the file.
  virtual ViStatus viWriteFromFile(ViSession device, const std::string& file, std::uint32_t count,
                                   std::uint32_t& written) = 0;
  virtual ViStatus viReadToFile(ViSession device, const std::string& file, std::uint32_t count,
                                std::uint32_t& received) = 0;
};

// The first VISA library of the machine that has every entry point; null when there is none. lacking: see LoadComplete.
[[nodiscard]] std::unique_ptr<Visa> LoadVisa(BusLibraries& libraries, std::string* lacking = nullptr);

} // namespace calder
