// libni4882.so: the board-level calls of NI-488.2 on the simulated bench. There is one board, gpib0.
#include "sim/Bench.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>

#define CALDER_SIM_ENTRY extern "C" __attribute__((visibility("default")))

namespace {

using calder::sim::Bench;
using calder::sim::Call;
using calder::sim::Fault;
using calder::sim::GpibBus;
using calder::sim::Hex;
using calder::sim::Quoted;

constexpr int kComplete = 0x0100;
constexpr int kEnd = 0x2000;
constexpr int kTimedOut = 0x4000;
constexpr int kError = 0x8000;

// Error codes.
constexpr int kNotInCharge = 1;
constexpr int kNoListener = 2;
constexpr int kNotAddressed = 3;
constexpr int kArgument = 4;
constexpr int kAborted = 6;
constexpr int kNoBoard = 7;
constexpr int kBusError = 14;

constexpr std::array<double, 18> kLimits = {0,   10e-6, 30e-6, 100e-6, 300e-6, 1e-3, 3e-3, 10e-3, 30e-3,
                                            0.1, 0.3,   1,     3,      10,     30,   100,  300,   1000};

constexpr int kReadToEos = 0x400;
constexpr int kEndWithEos = 0x800;

struct Board {
  int eos = 0;
  bool eot = true;
  int limit = 13; // 10 s, as the library begins with
};

struct Globals {
  int* status = nullptr;
  int* error = nullptr;
  int* count = nullptr;
  int* countLong = nullptr;
};

Board& TheBoard() {
  static Board board;
  return board;
}

Globals& ThreadGlobals() {
  static thread_local Globals globals;
  return globals;
}

double Limit() {
  return kLimits[static_cast<std::size_t>(TheBoard().limit)];
}

void Publish(int status, int error, int count) {
  const Globals& globals = ThreadGlobals();
  if (globals.status != nullptr) *globals.status = status;
  if (globals.error != nullptr && (status & kError) != 0) *globals.error = error;
  if (globals.count != nullptr) *globals.count = count;
  if (globals.countLong != nullptr) *globals.countLong = count;
}

// What a fault makes of the call: the error code and the bits beside the error bit.
int FaultError(Fault fault) {
  return fault == Fault::Timeout ? kAborted : fault == Fault::Unplug ? kNoBoard : kBusError;
}
int FaultBits(Fault fault) {
  return fault == Fault::Timeout ? kTimedOut : 0;
}

// Ends a call: with an error when `error` is not 0.
int Finish(Call& call, const std::string& arguments, int error, int bits, int count = 0, const std::string& data = "") {
  const int status = kComplete | bits | (error != 0 ? kError : 0);
  Publish(status, error, count);
  call.Done(arguments, Hex(static_cast<std::uint32_t>(status)) + (data.empty() ? "" : ", " + data));
  return status;
}

int ErrorOf(GpibBus::Result result) {
  switch (result) {
  case GpibBus::Result::Done: return 0;
  case GpibBus::Result::NotInCharge: return kNotInCharge;
  case GpibBus::Result::NotAddressed: return kNotAddressed;
  case GpibBus::Result::NoListener: return kNoListener;
  case GpibBus::Result::Nothing: return kAborted;
  }
  return kBusError;
}

// A call with a number that sets something of the board, when it lies in the limits.
template <typename Set>
int Simple(const char* name, int board, const std::string& more, bool valid, Set set) {
  Call call(name, Limit());
  const std::string arguments = std::to_string(board) + more;
  if (call.Injected() != Fault::None) {
    return Finish(call, arguments, FaultError(call.Injected()), FaultBits(call.Injected()));
  }
  if (board != 0) return Finish(call, arguments, kNoBoard, 0);
  if (!valid) return Finish(call, arguments, kArgument, 0);
  set(call.On());
  return Finish(call, arguments, 0, 0);
}

std::string With(int value) {
  return ", " + std::to_string(value);
}

} // namespace

CALDER_SIM_ENTRY int ibfind(const char* name) {
  Call call("ibfind");
  std::string lower = name;
  std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
  const bool found = call.Injected() == Fault::None && lower == "gpib0";
  if (found) TheBoard() = Board();
  Publish(found ? kComplete : kError | FaultBits(call.Injected()),
          call.Injected() == Fault::None ? kNoBoard : FaultError(call.Injected()), 0);
  const int descriptor = found ? 0 : -1;
  call.Done(Quoted(name), std::to_string(descriptor));
  return descriptor;
}

CALDER_SIM_ENTRY int ibconfig(int board, int option, int value) {
  return Simple("ibconfig", board, With(option) + With(value), option > 0, [](Bench&) {});
}

CALDER_SIM_ENTRY int ibask(int board, int option, int* value) {
  int answer = 0;
  const int status =
      Simple("ibask", board, With(option), option == 1, [&](Bench& bench) { answer = bench.Bus().Address(); });
  if ((status & kError) == 0) *value = answer;
  return status;
}

CALDER_SIM_ENTRY int ibpad(int board, int address) {
  return Simple("ibpad", board, With(address), address >= 0 && address <= 30,
                [&](Bench& bench) { bench.Bus().SetAddress(address); });
}

CALDER_SIM_ENTRY int ibsic(int board) {
  return Simple("ibsic", board, "", true, [](Bench& bench) { bench.Bus().InterfaceClear(); });
}

CALDER_SIM_ENTRY int ibsre(int board, int on) {
  return Simple("ibsre", board, With(on), true, [&](Bench& bench) { bench.Bus().RemoteEnable(bench, on != 0); });
}

CALDER_SIM_ENTRY int ibeos(int board, int eos) {
  return Simple("ibeos", board, With(eos), (eos & ~0x1CFF) == 0, [&](Bench&) { TheBoard().eos = eos; });
}

CALDER_SIM_ENTRY int ibeot(int board, int on) {
  return Simple("ibeot", board, With(on), true, [&](Bench&) { TheBoard().eot = on != 0; });
}

CALDER_SIM_ENTRY int ibtmo(int board, int code) {
  return Simple("ibtmo", board, With(code), code >= 0 && code <= 17, [&](Bench&) { TheBoard().limit = code; });
}

CALDER_SIM_ENTRY int ibcmd(int board, const void* commands, long count) {
  Call call("ibcmd", Limit());
  const std::string_view bytes(static_cast<const char*>(commands), static_cast<std::size_t>(count));
  const std::string arguments = std::to_string(board) + ", " + Quoted(bytes);
  const Fault fault = call.Injected();
  if (fault != Fault::None) return Finish(call, arguments, FaultError(fault), FaultBits(fault));
  if (board != 0) return Finish(call, arguments, kNoBoard, 0);
  const std::size_t passing = call.Passing(bytes.size());
  const auto result = call.On().Bus().Command(call.On(), bytes.substr(0, passing));
  return Finish(call, arguments, ErrorOf(result), 0, static_cast<int>(passing));
}

CALDER_SIM_ENTRY int ibwrt(int board, const void* data, long count) {
  Call call("ibwrt", Limit());
  const std::string_view bytes(static_cast<const char*>(data), static_cast<std::size_t>(count));
  const std::string arguments = std::to_string(board) + ", " + Quoted(bytes);
  const Fault fault = call.Injected();
  if (fault != Fault::None) return Finish(call, arguments, FaultError(fault), FaultBits(fault));
  if (board != 0) return Finish(call, arguments, kNoBoard, 0);
  const std::size_t passing = call.Passing(bytes.size());
  const Board& own = TheBoard();
  const bool eos = (own.eos & kEndWithEos) != 0 && !bytes.empty() && bytes.back() == static_cast<char>(own.eos & 0xFF);
  const bool end = passing == bytes.size() && (own.eot || eos);
  const auto result = call.On().Bus().Write(call.On(), bytes.substr(0, passing), end);
  const bool done = result == GpibBus::Result::Done;
  return Finish(call, arguments, ErrorOf(result), 0, done ? static_cast<int>(passing) : 0);
}

CALDER_SIM_ENTRY int ibrd(int board, void* data, long count) {
  Call call("ibrd", Limit());
  const std::string arguments = std::to_string(board) + With(static_cast<int>(count));
  const Fault fault = call.Injected();
  if (fault != Fault::None) return Finish(call, arguments, FaultError(fault), FaultBits(fault));
  if (board != 0) return Finish(call, arguments, kNoBoard, 0);
  const Board& own = TheBoard();
  const int terminator = (own.eos & kReadToEos) != 0 ? own.eos & 0xFF : -1;
  std::string text;
  bool ended = false;
  const std::size_t capacity = call.Passing(static_cast<std::size_t>(count));
  const auto result = call.On().Bus().Read(call.On(), capacity, terminator, text, ended);
  if (result != GpibBus::Result::Done) {
    return Finish(call, arguments, ErrorOf(result), result == GpibBus::Result::Nothing ? kTimedOut : 0);
  }
  std::copy(text.begin(), text.end(), static_cast<char*>(data));
  const bool eos = terminator >= 0 && !text.empty() && text.back() == static_cast<char>(terminator);
  return Finish(call, arguments, 0, ended || eos ? kEnd : 0, static_cast<int>(text.size()), Quoted(text));
}

CALDER_SIM_ENTRY int RegisterGpibGlobalsForThread(int* ibsta, int* iberr, int* ibcnt, int* ibcntl) {
  ThreadGlobals() = Globals{ibsta, iberr, ibcnt, ibcntl};
  return 0;
}

CALDER_SIM_ENTRY int UnregisterGpibGlobalsForThread() {
  ThreadGlobals() = Globals();
  return 0;
}
