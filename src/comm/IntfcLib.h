// The interface layer: all instrument traffic passes here. Each operation goes to the back end of the chosen interface
// kind and leaves one error code and one error text; with the show-errors flag on, a failure is shown in a box first.
//
// Back ends run on the worker, so that the window stays alive while a bus call blocks; the layer itself, its boxes
// included, belongs to the caller's thread.
#pragma once

#include "comm/BackEnd.h"
#include "comm/BusTrace.h"
#include "comm/Debug_Mdl.h"
#include "comm/KI_GPIB_MDL.h"
#include "comm/NI_GPIB_Mdl.h"
#include "comm/USB488_MDL.h"
#include "comm/USBTMC_MDL.h"
#include "platform/Worker.h"

#include <array>
#include <optional>

namespace calder {

class ErrMsg;
struct Desktop;
struct SystemInfo;

class IntfcLib {
public:
  // What it refers to must outlive this object; interface kind and the settings' address are read at each operation.
  // kernelVisa and quit: see BackEndHost.
  IntfcLib(const Desktop& desktop, const ErrMsg& messages, const SystemInfo& settings,
           const std::int16_t& interfaceKind, std::function<std::unique_ptr<Visa>()> kernelVisa,
           std::function<void()> quit);

  // Every operation returns the error code, 0 for success.
  int Setup();
  int End();
  int Puts(int address, const std::string& text);
  // The reply up to the first line feed, trimmed; empty when the operation failed.
  [[nodiscard]] std::string Gets(int address);
  int IFC();
  int REN();
  int Local(); // only when initialised
  int LLO();
  int SDC(int address);
  // The time limit for the seconds, rounded to one that every bus knows; 0 and less: none. The limit in seconds.
  double Tmo(double seconds);
  // The terminator: NUL (none), LF, CR or CR LF, when given; any other text is error 4 and does not reach the back end.
  // The current one.
  std::string Eos(std::optional<std::string_view> text = {});
  // 0 no end mark, 1 as it is, 2 an end mark; -1 no change. The current mode.
  int Eot(int mode);
  int Data(int address, std::span<const std::byte> bytes);
  int DataScpi(int address, const std::string& header, std::span<const std::byte> bytes);
  int DataRecvScpi(int address, const std::string& file, int limit);
  // The NI board's own address, whatever the kind: -1 and 0 ask, a positive value sets. -1 on failure.
  [[nodiscard]] int BoardAdr(int address);
  // The same as BoardAdr(-1) without a box: what asks for it is no action of the user's.
  [[nodiscard]] int OwnBoardAdr();
  // 1 asks, -1 turns the boxes on, 0 off. The current flag.
  bool GpErrMsgOn(int flag);

  [[nodiscard]] bool Initialised() const { return initialised_; }
  [[nodiscard]] int ErrorCode() const { return errorCode_; }
  [[nodiscard]] const std::string& ErrorText() const { return errorText_; }
  // About the last operation of the chosen back end.
  [[nodiscard]] FailureHint Hint();
  [[nodiscard]] BusTrace& Trace() { return trace_; }
  // The USBTMC devices of a resource prefix; none when there is no way to USBTMC, about which Hint() knows more, and
  // the one that the next transfer uses.
  [[nodiscard]] std::vector<std::string> UsbSerialNumbers(const std::string& prefix);
  void SetUsbResource(const std::string& name) { usbTmc_.SetResource(0, name); }

private:
  [[nodiscard]] BackEnd* Selected();
  // Runs the operation on the chosen back end and applies the error rule. data: what is sent, or where the operation
  // leaves what it received.
  template <typename Operation>
  int Call(const char* operation, const std::string& context, int address, const BusData& data, Operation run);
  template <typename Operation>
  int CallOn(BackEnd* backEnd, Worker::Meanwhile meanwhile, const char* operation, const std::string& context,
             int address, const BusData& data, Operation run);
  int SetUpFirst();
  void Finish(int errorCode, const std::string& context);
  int Invalid(const char* context);

  const Desktop& desktop_;
  const ErrMsg& messages_;
  const SystemInfo& settings_;
  const std::int16_t& interfaceKind_;
  BackEndHost host_;
  NI_GPIB_Mdl niGpib_{host_};
  KI_GPIB_MDL kiGpib_{host_};
  USB488_MDL usb488_{host_};
  USBTMC_MDL usbTmc_{host_};
  Debug_Mdl simulated_{host_};
  std::array<BackEnd*, 5> backEnds_{&niGpib_, &kiGpib_, &usb488_, &usbTmc_, &simulated_}; // by interface kind
  BusTrace trace_;
  bool initialised_ = false;
  int errorCode_ = 0;
  std::string errorText_;
  bool showErrors_ = false; // until the first Setup
  std::string eos_;
  int eot_ = 0;
};

// The code of the time limit of that many seconds, and the seconds of a code.
[[nodiscard]] int TimeLimitCode(double seconds);
[[nodiscard]] double TimeLimitSeconds(int code);

} // namespace calder
