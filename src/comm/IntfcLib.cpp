#include "comm/IntfcLib.h"

#include "app/Messages.h"
#include "comm/FailureText.h"
#include "libs/file32/file32.h"
#include "libs/sysinf32/CommandColumns.h"
#include "libs/sysinf32/SystemInfo.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/posix/WholeFile.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

namespace calder {
namespace {

constexpr double kFirstTimeLimit = 1; // seconds
constexpr std::string_view kNoTerminator("\0", 1);

std::string Context(const char* name) {
  return std::string("Module IntfcLib : Function ") + name;
}

std::string Context(const char* name, int address) {
  return Context(name) + "\rAddress " + std::to_string(address);
}

const char* TextOf(int errorCode) {
  switch (errorCode) {
  case kBusTimeout: return "I/O operation aborted(timeout)";
  case kBusFailed: return "Interface error";
  case kBusNoBoard: return "Nonexistent interface board";
  default: return "";
  }
}

int TerminatorCode(std::string_view text) {
  if (text == kNoTerminator) return kTermNone;
  for (const int code : {kTermLf, kTermCr, kTermCrLf}) {
    if (text == TerminatorText(code)) return code;
  }
  return -1;
}

} // namespace

// Code = 2 log10(seconds) + 11.5, cut to a whole number: NI-488.2's table of time limits.
int TimeLimitCode(double seconds) {
  if (!(seconds > 0)) return 0;
  return static_cast<int>(std::clamp(std::trunc(2 * std::log10(seconds) + 11.5), 1.0, 17.0));
}

double TimeLimitSeconds(int code) {
  static constexpr std::array<double, 18> kSeconds{0,   10e-6, 30e-6, 100e-6, 300e-6, 1e-3, 3e-3, 10e-3, 30e-3,
                                                   0.1, 0.3,   1,     3,      10,     30,   100,  300,   1000};
  return kSeconds[static_cast<std::size_t>(std::clamp(code, 0, 17))];
}

IntfcLib::IntfcLib(const Desktop& desktop, const ErrMsg& messages, const SystemInfo& settings,
                   const std::int16_t& interfaceKind, std::function<std::unique_ptr<Visa>()> kernelVisa,
                   std::function<void()> quit)
    : desktop_(desktop), messages_(messages), settings_(settings),
      interfaceKind_(interfaceKind), host_{desktop.messageBoxes, desktop.busLibraries, desktop.folders.state,
                                           std::move(quit), std::move(kernelVisa)} {}

BackEnd* IntfcLib::Selected() {
  const int kind = interfaceKind_;
  if (kind < 0 || kind >= static_cast<int>(backEnds_.size())) return nullptr;
  return backEnds_[static_cast<std::size_t>(kind)];
}

template <typename Operation>
int IntfcLib::Call(const char* operation, const std::string& context, int address, const BusData& data, Operation run) {
  return CallOn(Selected(), Worker::Meanwhile::Everything, operation, context, address, data, run);
}

template <typename Operation>
int IntfcLib::CallOn(BackEnd* backEnd, Worker::Meanwhile meanwhile, const char* operation, const std::string& context,
                     int address, const BusData& data, Operation run) {
  int result = kBusFailed;
  if (backEnd != nullptr) {
    if (backEnd->Blocks()) {
      desktop_.worker.Run([&] { result = run(*backEnd); }, meanwhile);
    } else {
      result = run(*backEnd);
    }
    backEnd->Report(host_, operation, address, data, result);
  }
  trace_.Add(desktop_.clock.SecondsOfDay(), operation, address, data, result);
  const bool incomplete = backEnd != nullptr && backEnd->Hint().kind == FailureHint::Kind::IncompleteLibrary;
  Finish(result, incomplete ? context + '\r' + HintText(messages_, backEnd->Hint()) : context);
  return result;
}

// The error rule after every operation.
void IntfcLib::Finish(int errorCode, const std::string& context) {
  errorCode_ = errorCode;
  errorText_ = TextOf(errorCode);
  if (errorCode == kBusOk || !showErrors_) return;
  desktop_.messageBoxes.Show("Interface Error", errorText_ + '\r' + context, BoxButtons::Ok, BoxIcon::Critical);
}

int IntfcLib::Invalid(const char* context) {
  Finish(kBusNoBoard, Context(context));
  return kBusNoBoard;
}

int IntfcLib::SetUpFirst() {
  return initialised_ ? kBusOk : Setup();
}

int IntfcLib::Setup() {
  std::error_code ignored; // a folder that cannot be made shows in what is to be written there
  std::filesystem::create_directories(host_.folder, ignored);
  const std::string configuration = "MYADRS = 0, BOARD_NAME = GPIB0, USB488ID = " + std::to_string(settings_.Address);
  showErrors_ = true; // also of the opening itself: a broken transfer has turned them off
  const int result = Call("GP_Init", Context("Setup"), -1, {}, [&](BackEnd& backEnd) {
    backEnd.ReadReporting(configuration);
    return backEnd.GP_Init(configuration);
  });
  if (result != kBusOk) return result;
  eos_ = "\n";
  eot_ = 2;
  initialised_ = true;
  Tmo(kFirstTimeLimit);
  return errorCode_;
}

int IntfcLib::End() {
  const int result = Call("GP_End", Context("End"), -1, {}, [](BackEnd& backEnd) { return backEnd.GP_End(); });
  initialised_ = false;
  return result;
}

int IntfcLib::Puts(int address, const std::string& text) {
  if (const int result = SetUpFirst(); result != kBusOk) return result;
  return Call("GP_Send_Str", Context("Puts", address), address, {.text = text},
              [&](BackEnd& backEnd) { return backEnd.GP_Send_Str(address, text); });
}

std::string IntfcLib::Gets(int address) {
  if (SetUpFirst() != kBusOk) return {};
  std::string reply;
  BusData received;
  const int result = Call("GP_Receive_Str", Context("Gets"), address, received, [&](BackEnd& backEnd) {
    const int code = backEnd.GP_Receive_Str(address, reply);
    received.text = reply;
    return code;
  });
  if (result != kBusOk) return {};
  return std::string(TrimCommandText(std::string_view(reply).substr(0, reply.find('\n'))));
}

int IntfcLib::IFC() {
  if (const int result = SetUpFirst(); result != kBusOk) return result;
  return Call("GP_IFC", Context(": Function IFC"), -1, {}, [](BackEnd& backEnd) { return backEnd.GP_IFC(); });
}

int IntfcLib::REN() {
  if (const int result = SetUpFirst(); result != kBusOk) return result;
  return Call("GP_REN", Context("REN"), 1, {}, [](BackEnd& backEnd) { return backEnd.GP_REN(true); });
}

int IntfcLib::Local() {
  if (!initialised_) return kBusOk;
  return Call("GP_REN", Context("Local"), 0, {}, [](BackEnd& backEnd) { return backEnd.GP_REN(false); });
}

int IntfcLib::LLO() {
  return Call("GP_LLO", {}, -1, {}, [](BackEnd& backEnd) { return backEnd.GP_LLO(); });
}

int IntfcLib::SDC(int address) {
  return Call("GP_SDC", Context("SDC", address), address, {},
              [&](BackEnd& backEnd) { return backEnd.GP_SDC(address); });
}

double IntfcLib::Tmo(double seconds) {
  if (SetUpFirst() != kBusOk) return 0;
  const int code = TimeLimitCode(seconds);
  Call("GP_Time_Out", Context("Tmo"), code, {}, [&](BackEnd& backEnd) { return backEnd.GP_Time_Out(code); });
  return TimeLimitSeconds(code);
}

std::string IntfcLib::Eos(std::optional<std::string_view> text) {
  if (!initialised_ || !text) return eos_;
  const int code = TerminatorCode(*text);
  if (code < 0) {
    Invalid("GpEos");
  } else {
    Call("GP_MTerm", {}, code, {}, [&](BackEnd& backEnd) { return backEnd.GP_MTerm(code); });
  }
  return eos_ = *text;
}

int IntfcLib::Eot(int mode) {
  if (!initialised_ || mode == -1) return eot_;
  if (mode < 0 || mode > 2) {
    Invalid("GpEot");
    return eot_;
  }
  eot_ = mode;
  if (mode != 1) Call("GP_EOI", {}, mode, {}, [&](BackEnd& backEnd) { return backEnd.GP_EOI(mode == 2); });
  return eot_;
}

int IntfcLib::Data(int address, std::span<const std::byte> bytes) {
  if (const int result = SetUpFirst(); result != kBusOk) return result;
  return Call("GP_Send_Binary_Data", Context("Data"), address, {.block = bytes}, [&](BackEnd& backEnd) {
    return backEnd.GP_Send_Binary_Data(bytes, address, static_cast<int>(bytes.size()), 0, false);
  });
}

int IntfcLib::DataScpi(int address, const std::string& header, std::span<const std::byte> bytes) {
  if (const int result = SetUpFirst(); result != kBusOk) return result;
  return Call("GP_Send_AsciiBinary_Data", Context("Data SCPI"), address, {.text = header, .block = bytes},
              [&](BackEnd& backEnd) { return backEnd.GP_Send_AsciiBinary_Data(address, header, bytes); });
}

int IntfcLib::DataRecvScpi(int address, const std::string& file, int limit) {
  if (const int result = SetUpFirst(); result != kBusOk) return result;
  std::vector<char> content;
  BusData received;
  return Call("GP_Receive_Binary_Data", Context("Data Recv SCPI"), address, received, [&](BackEnd& backEnd) {
    const int code = backEnd.GP_Receive_Binary_Data(address, file, limit);
    // For the trace; what cannot be read was not received.
    if (ReadWholeFile(file, content) == 0) received.block = std::as_bytes(std::span(content));
    return code;
  });
}

int IntfcLib::BoardAdr(int address) {
  int answer = -1;
  // Also asked while no transfer runs, where nothing is prepared for a press in the middle.
  const int result = CallOn(&niGpib_, Worker::Meanwhile::NoUserInput, "BoardAdr", Context("BoardAdr"), address, {},
                            [&](BackEnd&) { return niGpib_.BoardAdr(address, answer); });
  return result == kBusOk ? answer : -1;
}

int IntfcLib::OwnBoardAdr() {
  const bool shown = std::exchange(showErrors_, false);
  const int answer = BoardAdr(-1);
  showErrors_ = shown;
  return answer;
}

bool IntfcLib::GpErrMsgOn(int flag) {
  if (SetUpFirst() != kBusOk) return showErrors_;
  switch (flag) {
  case 1: break;
  case 0: showErrors_ = false; break;
  case -1: showErrors_ = true; break;
  default: Invalid("GpErrMsgOn");
  }
  return showErrors_;
}

FailureHint IntfcLib::Hint() {
  const BackEnd* backEnd = Selected();
  return backEnd != nullptr ? backEnd->Hint() : FailureHint{};
}

std::vector<std::string> IntfcLib::UsbSerialNumbers(const std::string& prefix) {
  std::vector<std::string> serials;
  desktop_.worker.Run([&] { serials = usbTmc_.SerialNumbers(prefix); }, Worker::Meanwhile::NoUserInput);
  return serials;
}

} // namespace calder
