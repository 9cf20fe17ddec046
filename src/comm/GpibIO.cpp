#include "comm/GpibIO.h"

#include "app/EngValB.h"
#include "app/InterfaceKind.h"
#include "app/Messages.h"
#include "comm/FailureText.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"

namespace calder {
namespace {

constexpr double kTimeLimit = 1; // seconds
constexpr int kAsk = 1;
constexpr int kOff = 0;

} // namespace

int ControllerAddress(const TransferContext& context) {
  const clsRegistry& registry = context.registry;
  if (registry.GetGpibBusy()) return registry.GetGpibAddress();
  switch (context.interfaceKind) {
  case kNiGpib:
  case kUsb488: return context.bus.OwnBoardAdr();
  case kKiGpib:
    // The board's installation keeps it among the user's settings.
    return static_cast<int>(
        LeadingNumber(registry.GetSetting("Gpib.GPIB" + std::to_string(registry.GetGpibId()), "pad")));
  default: return 0;
  }
}

bool GpibIO::Begin(const std::string& title) {
  clsRegistry& registry = live_.registry;
  if (registry.GetGpibBusy()) {
    live_.messages.ErrorBox(kMsgInterfaceBusy);
    return false;
  }
  bus_.Trace().Begin(title);
  const int controller = ControllerAddress(live_);
  registry.SetGpibAddress(static_cast<std::int16_t>(controller));
  registry.SetGpibBusy(true);
  held_ = true;
  snapshot_ = live_.settings;
  kind_ = live_.interfaceKind;
  if (kind_ != kUsbTmc && static_cast<std::int16_t>(controller) == snapshot_.Address) {
    Release();
    live_.messages.ErrorBoxText(live_.messages.MessageText(kMsgInterfaceAddress) +
                                "Address:" + std::to_string(snapshot_.Address));
    return false;
  }
  if (OpenBus()) return true;
  End();
  return false;
}

void GpibIO::End() {
  if (!held_) return;
  CloseBus();
  Release();
  if (failed_ && !reported_) ReportFailure();
}

void GpibIO::Release() {
  live_.registry.SetGpibBusy(false);
  bus_.Trace().End();
  held_ = false;
}

bool GpibIO::OpenBus() {
  if (const int error = bus_.Setup(); error != kBusOk) {
    Break(error);
    reported_ = error == kBusNoBoard; // the layer's own box says it all
    return false;
  }
  bus_.GpErrMsgOn(kAsk);
  return TimeLimit(kTimeLimit) && Check(bus_.IFC()) && Check(bus_.REN()) && Check(bus_.LLO()) &&
         Check(bus_.SDC(Address())) && EndMark(true) && Terminator("\n");
}

void GpibIO::CloseBus() {
  if (!bus_.Initialised()) return;
  if (failed_) bus_.GpErrMsgOn(kOff);
  // All the way, whatever fails on it; what fails first is reported.
  const auto step = [this](int errorCode) {
    if (errorCode == kBusOk || failed_) return;
    Break(errorCode);
    if (bus_.Initialised()) bus_.GpErrMsgOn(kOff);
  };
  bus_.Eot(2);
  step(bus_.ErrorCode());
  bus_.Eos("\r\n");
  step(bus_.ErrorCode());
  step(bus_.Local());
  step(bus_.End());
}

void GpibIO::Break(int errorCode) {
  failed_ = true;
  failure_ = errorCode;
  hint_ = bus_.Hint();
}

bool GpibIO::Reopen() {
  if (failed_) return false;
  CloseBus();
  return !failed_ && OpenBus();
}

bool GpibIO::Send(const std::string& command) {
  if (Stopped()) return false;
  if (command.empty()) return true;
  Debug("GpibPuts", command);
  return Check(bus_.Puts(Address(), command));
}

std::string GpibIO::Read() {
  if (Stopped()) return {};
  std::string reply = bus_.Gets(Address());
  if (bus_.ErrorCode() != kBusOk) Break(bus_.ErrorCode());
  return reply;
}

bool GpibIO::TimeLimit(double seconds) {
  bus_.Tmo(seconds);
  return Check(bus_.ErrorCode());
}

bool GpibIO::EndMark(bool on) {
  bus_.Eot(on ? 2 : 0);
  return Check(bus_.ErrorCode());
}

bool GpibIO::Terminator(std::string_view text) {
  bus_.Eos(text);
  return Check(bus_.ErrorCode());
}

bool GpibIO::SendAnnouncement(const std::string& command) {
  if (Stopped()) return false;
  Debug("GpPuts", command);
  return Check(bus_.Puts(Address(), command));
}

bool GpibIO::SendBytes(Addressing addressing, std::span<const std::byte> bytes) {
  return Check(bus_.Data(addressing == Addressing::Instrument ? Address() : kNoAddress, bytes));
}

bool GpibIO::SendBlock(const std::string& header, std::span<const std::byte> block) {
  return !Stopped() && Check(bus_.DataScpi(Address(), header, block));
}

bool GpibIO::ReceiveFile(const std::string& file, int limit) {
  return !Stopped() && Check(bus_.DataRecvScpi(Address(), file, limit));
}

bool GpibIO::Check(int errorCode) {
  if (errorCode == kBusOk) return true;
  Break(errorCode);
  ReportFailure();
  return false;
}

void GpibIO::Report(const std::string& text) {
  if (failed_ ? reported_ : Stopped()) return;
  reported_ = failed_;
  live_.messages.ErrorBoxText(text);
}

void GpibIO::Report(int message) {
  Report(live_.messages.MessageText(message));
}

void GpibIO::Wait(double seconds) {
  live_.desktop.clock.Wait(seconds, true);
}

void GpibIO::ReportFailure() {
  Report(FailureText(live_.messages, failure_, hint_));
}

void GpibIO::Debug(const char* title, const std::string& command) const {
  if (!live_.registry.GetDebugMode()) return;
  live_.desktop.messageBoxes.Show(title, "'" + command + "'", BoxButtons::Ok, BoxIcon::None);
}

} // namespace calder
