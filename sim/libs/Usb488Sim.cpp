// libusb488ps.so: the USB488 library on the simulated bench. A device's number is its instrument's address.
#include "sim/Bench.h"

#include "libs/bus/Usb488.h"

#include <algorithm>
#include <string>

#define CALDER_SIM_ENTRY extern "C" __attribute__((visibility("default")))

namespace {

using calder::Usb488;
using calder::sim::Call;
using calder::sim::Fault;
using calder::sim::Instrument;
using calder::sim::Quoted;

constexpr int kDone = 0;
constexpr int kError = 2;

struct Library {
  bool initialised = false;
  std::map<int, double> open; // the device's time limit
};

Library& TheLibrary() {
  static Library library;
  return library;
}

double LimitOf(int device) {
  const auto found = TheLibrary().open.find(device);
  return found == TheLibrary().open.end() ? 0 : found->second;
}

int StatusOf(Fault fault) {
  switch (fault) {
  case Fault::None: return kDone;
  case Fault::Timeout: return Usb488::kTimeout;
  case Fault::Unplug: return Usb488::kNoDevice;
  default: return kError;
  }
}

int Finish(Call& call, const std::string& arguments, int status, const std::string& data = "") {
  call.Done(arguments, std::to_string(status) + (data.empty() ? "" : ", " + data));
  return status;
}

// The instrument of an open device; null with the status of what is wrong.
Instrument* Opened(Call& call, int device, int& status) {
  status = StatusOf(call.Injected());
  if (status != kDone) return nullptr;
  if (!TheLibrary().open.contains(device)) {
    status = kError;
    return nullptr;
  }
  Instrument* instrument = call.On().At(device);
  if (instrument == nullptr) status = Usb488::kNoDevice;
  return instrument;
}

// A call that does something to an open device.
template <typename Act>
int Simple(const char* name, int device, const std::string& more, Act act) {
  Call call(name, LimitOf(device));
  int status = kDone;
  if (Instrument* instrument = Opened(call, device, status)) act(*instrument);
  return Finish(call, std::to_string(device) + more, status);
}

int Send(const char* name, int device, std::string_view data, int endMark) {
  Call call(name, LimitOf(device));
  int status = kDone;
  if (Instrument* instrument = Opened(call, device, status)) {
    const std::size_t passing = call.Passing(data.size());
    instrument->Receive(data.substr(0, passing), endMark != 0 && passing == data.size());
  }
  return Finish(call, std::to_string(device) + ", " + Quoted(data) + ", " + std::to_string(endMark), status);
}

} // namespace

CALDER_SIM_ENTRY int UsbInitialize() {
  Call call("UsbInitialize");
  const int status = StatusOf(call.Injected());
  if (status == kDone) TheLibrary() = Library{true, {}};
  return Finish(call, "", status);
}

CALDER_SIM_ENTRY int UsbFinalize() {
  Call call("UsbFinalize");
  const int status = StatusOf(call.Injected());
  if (status == kDone) TheLibrary() = Library();
  return Finish(call, "", status);
}

CALDER_SIM_ENTRY int UsbOpenDevice(int device) {
  Call call("UsbOpenDevice");
  int status = StatusOf(call.Injected());
  if (status == kDone && !TheLibrary().initialised) status = kError;
  if (status == kDone && call.On().At(device) == nullptr) status = Usb488::kNoDevice;
  if (status == kDone) TheLibrary().open[device] = 10;
  return Finish(call, std::to_string(device), status);
}

CALDER_SIM_ENTRY int UsbCloseDevice(int device) {
  Call call("UsbCloseDevice");
  int status = StatusOf(call.Injected());
  if (status == kDone && TheLibrary().open.erase(device) == 0) status = kError;
  return Finish(call, std::to_string(device), status);
}

CALDER_SIM_ENTRY int UsbCLS(int device) {
  return Simple("UsbCLS", device, "", [](Instrument& instrument) { instrument.Clear(); });
}

CALDER_SIM_ENTRY int UsbDevClear(int device) {
  return Simple("UsbDevClear", device, "", [](Instrument& instrument) { instrument.Clear(); });
}

CALDER_SIM_ENTRY int UsbSetIFC(int device) {
  return Simple("UsbSetIFC", device, "", [](Instrument&) {});
}

CALDER_SIM_ENTRY int UsbEnableRemote(int device) {
  return Simple("UsbEnableRemote", device, "", [](Instrument& instrument) { instrument.Put("remote", "1"); });
}

CALDER_SIM_ENTRY int UsbEnableLocal(int device) {
  return Simple("UsbEnableLocal", device, "", [](Instrument& instrument) {
    instrument.Put("remote", "0");
    instrument.Put("lockout", "0");
  });
}

CALDER_SIM_ENTRY int UsbSendLLO(int device) {
  return Simple("UsbSendLLO", device, "", [](Instrument& instrument) { instrument.Put("lockout", "1"); });
}

CALDER_SIM_ENTRY int UsbSetTimeout(int device, unsigned long milliseconds) {
  return Simple("UsbSetTimeout", device, ", " + std::to_string(milliseconds),
                [&](Instrument&) { TheLibrary().open[device] = static_cast<double>(milliseconds) / 1000; });
}

CALDER_SIM_ENTRY int UsbSendTextData(int device, const char* text, long length, int endMark) {
  return Send("UsbSendTextData", device, std::string_view(text, static_cast<std::size_t>(length)), endMark);
}

CALDER_SIM_ENTRY int UsbSendBinary(int device, const void* data, long count, int endMark) {
  return Send("UsbSendBinary", device,
              std::string_view(static_cast<const char*>(data), static_cast<std::size_t>(count)), endMark);
}

CALDER_SIM_ENTRY int UsbReceiveTextData(int device, char* text, long capacity, long* received) {
  Call call("UsbReceiveTextData", LimitOf(device));
  const std::string arguments = std::to_string(device) + ", " + std::to_string(capacity);
  *received = 0;
  int status = kDone;
  Instrument* instrument = Opened(call, device, status);
  if (instrument == nullptr) return Finish(call, arguments, status);
  if (!instrument->HasAnswer()) {
    instrument->NothingToSay();
    return Finish(call, arguments, Usb488::kTimeout);
  }
  bool ended = false;
  const std::string data = instrument->Send(call.Passing(static_cast<std::size_t>(capacity)), -1, ended);
  std::copy(data.begin(), data.end(), text);
  *received = static_cast<long>(data.size());
  const bool full = !ended && data.size() == static_cast<std::size_t>(capacity);
  return Finish(call, arguments, full ? Usb488::kBufferOverflow : kDone, Quoted(data));
}
