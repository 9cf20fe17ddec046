// The USB488 library, as function pointers into the library of the machine. A device is known by its number.
//
// Calls return 0 or one of the numbers below; any other number is an error.
#pragma once

#include "platform/BusLibrary.h"

#include <memory>

namespace calder {

struct Usb488 {
  static constexpr const char* kNames[] = {"libusb488ps.so", "libusb488ps.so.1"};

  static constexpr int kTimeout = 1;
  static constexpr int kNoDevice = 4;
  static constexpr int kBufferOverflow = 8;

  int (*UsbInitialize)();
  int (*UsbFinalize)();
  int (*UsbOpenDevice)(int device);
  int (*UsbCloseDevice)(int device);
  int (*UsbCLS)(int device);      // forgets what is pending
  int (*UsbDevClear)(int device); // selected device clear
  int (*UsbSetIFC)(int device);
  int (*UsbEnableRemote)(int device);
  int (*UsbEnableLocal)(int device);
  int (*UsbSendLLO)(int device);
  int (*UsbSetTimeout)(int device, unsigned long milliseconds);
  int (*UsbSendTextData)(int device, const char* text, long length, int endMark);
  int (*UsbReceiveTextData)(int device, char* text, long capacity, long* received);
  int (*UsbSendBinary)(int device, const void* data, long count, int endMark);

  std::unique_ptr<BusLibrary> library;

  // Null when there is none that has every entry point; lacking: see LoadComplete.
  [[nodiscard]] static std::unique_ptr<Usb488> Load(BusLibraries& libraries, std::string* lacking = nullptr);
};

} // namespace calder
