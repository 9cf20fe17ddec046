// The board-level calls of NI-488.2 that the program makes, as function pointers into the library of the machine.
//
// Each call returns the status word: bit 15 (0x8000) error, bit 14 (0x4000) time limit exceeded. Status word, error
// code and count of the last call are read in one of two ways, whichever the library has: from the variables that
// RegisterGpibGlobalsForThread was given, or from ThreadIbsta, ThreadIberr and ThreadIbcntl.
#pragma once

#include "platform/BusLibrary.h"

#include <memory>

namespace calder {

struct Ni4882 {
  // File names, in the order in which they are tried.
  static constexpr const char* kNames[] = {"libni4882.so", "libgpibapi.so", "libgpib.so.0", "libgpib.so"};

  static constexpr int kError = 0x8000;
  static constexpr int kTimeout = 0x4000;
  static constexpr int kNoBoard = 7;           // error code: nonexistent board
  static constexpr int kConfigAutoPoll = 7;    // option of ibconfig
  static constexpr int kAskPrimaryAddress = 1; // option of ibask

  int (*ibfind)(const char* name); // descriptor, negative when there is none
  int (*ibconfig)(int board, int option, int value);
  int (*ibask)(int board, int option, int* value);
  int (*ibpad)(int board, int address);
  int (*ibsic)(int board);
  int (*ibsre)(int board, int on);
  int (*ibeos)(int board, int eos);
  int (*ibeot)(int board, int on);
  int (*ibtmo)(int board, int code);
  int (*ibcmd)(int board, const void* commands, long count);
  int (*ibwrt)(int board, const void* data, long count);
  int (*ibrd)(int board, void* data, long count);
  int (*RegisterGpibGlobalsForThread)(int* ibsta, int* iberr, int* ibcnt, int* ibcntl);
  int (*UnregisterGpibGlobalsForThread)();
  int (*ThreadIbsta)();
  int (*ThreadIberr)();
  long (*ThreadIbcntl)();

  std::unique_ptr<BusLibrary> library; // what keeps the pointers good

  // Null when there is none that has every entry point; lacking: see LoadComplete.
  [[nodiscard]] static std::unique_ptr<Ni4882> Load(BusLibraries& libraries, std::string* lacking = nullptr);
};

} // namespace calder
