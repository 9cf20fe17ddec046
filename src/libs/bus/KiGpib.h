// The KI GPIB library: bus commands as words in a text, as function pointers into the library of the machine.
//
// A transmitted text is a list of words separated by blanks: UNT and UNL (untalk, unlisten), LISTEN n and TALK n
// (the instrument), MTA and MLA (the controller), DATA followed by texts in single quotes and by codes in decimal,
// EOI (the next byte carries the end mark), SDC, LLO, GTL, IFC, REN. A single quote inside a text is doubled.
// The calls that return a status give 0 or one of the numbers below; any other number is an error.
#pragma once

#include "platform/BusLibrary.h"

#include <memory>

namespace calder {

struct KiGpib {
  static constexpr const char* kNames[] = {"libieee_32m.so", "libieee_32m.so.1"};

  static constexpr int kTimeout = 8;
  static constexpr int kNoBoard = 16;
  static constexpr int kBufferOverflow = 32;

  int (*_ieee_board_present)();                        // 0: there is none
  void (*_ieee_initialize)(int ownAddress, int level); // level 0: system controller
  int (*_ieee_transmit)(const char* words, long length);
  int (*_ieee_receive)(char* text, long capacity, long* received); // up to the end mark or the terminator
  int (*_ieee_tarray)(const void* data, long count, int endMark);  // endMark: the last byte carries EOI
  int (*_ieee_settimeout)(unsigned long milliseconds);             // 0: none
  int (*_ieee_setinputEOS)(int code);                              // 0: none

  std::unique_ptr<BusLibrary> library;

  // Null when there is none that has every entry point; lacking: see LoadComplete.
  [[nodiscard]] static std::unique_ptr<KiGpib> Load(BusLibraries& libraries, std::string* lacking = nullptr);
};

} // namespace calder
