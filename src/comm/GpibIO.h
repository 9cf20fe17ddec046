// One transfer's hold on the bus: it takes the busy flag and opens the bus, sends and reads, and gives both back.
//
// What is told: the interface layer shows its own box for a failed operation; after that the transfer shows one
// sentence and no more, touches the bus only to close it, and closes it without further boxes.
#pragma once

#include "app/Program.h"
#include "comm/BusMessages.h"
#include "comm/IntfcLib.h"
#include "platform/Clock.h"

namespace calder {

// The controller's own address: the instrument must not have it.
[[nodiscard]] int ControllerAddress(const Program& program, IntfcLib& interfaceLayer);

class GpibIO {
public:
  // cancelled: whether the user wants the transfer to end; empty: this transfer is cancelled elsewhere. Once it says
  // so, nothing more is sent, read or told.
  GpibIO(Program& program, IntfcLib& interfaceLayer, std::function<bool()> cancelled = {})
      : program_(program), bus_(interfaceLayer), cancelled_(std::move(cancelled)) {}
  ~GpibIO() { End(); }
  GpibIO(const GpibIO&) = delete;
  GpibIO& operator=(const GpibIO&) = delete;

  // Takes the busy flag and the settings snapshot and opens the bus. False: the user was told why, nothing is held.
  [[nodiscard]] bool Begin(const std::string& title);
  // Closes the bus and clears the busy flag; a failure that was not told yet is told now. Twice is once.
  void End();

  // The settings as they were when the transfer began.
  [[nodiscard]] const SystemInfo& Snapshot() const { return snapshot_; }
  // How its model is spoken to.
  [[nodiscard]] const Protocol& ModelProtocol() const { return program_.models.SysGetProtocol(snapshot_.ModelNo); }
  [[nodiscard]] int Address() const { return static_cast<std::uint16_t>(snapshot_.Address); }

  // An empty command is not sent and counts as sent. False: the failure was told.
  bool Send(const std::string& command);
  // The reply; empty when there is none or the read failed.
  [[nodiscard]] std::string Read();
  // The reply to a query; empty when it could not be sent.
  [[nodiscard]] std::string Query(const std::string& command) { return Send(command) ? Read() : std::string(); }
  // For an operation made directly on Bus(): false when it failed, and then the failure was told.
  bool Check(int errorCode);

  // An error box with the text, unless the failure of the interface was told already.
  void Report(const std::string& text);
  void Report(int message) { Report(program_.messages.MessageText(message)); }
  void Debug(const char* title, const std::string& command) const; // a box, with the debug switch on
  void Wait(double seconds) { program_.desktop.clock.Wait(seconds, true); }
  // Closes and opens the bus, which clears the instrument. False: the failure was told.
  [[nodiscard]] bool Reopen();

  // An operation on the interface has failed.
  [[nodiscard]] bool Failed() const { return failed_; }
  // It has, or the user has cancelled.
  [[nodiscard]] bool Stopped() const { return failed_ || (cancelled_ && cancelled_()); }
  [[nodiscard]] IntfcLib& Bus() { return bus_; }
  [[nodiscard]] Program& GetProgram() { return program_; }

private:
  [[nodiscard]] bool OpenBus();
  void CloseBus();
  void Release();
  void Break(int errorCode);
  void ReportFailure();

  Program& program_;
  IntfcLib& bus_;
  const std::function<bool()> cancelled_;
  SystemInfo snapshot_;
  bool held_ = false; // the busy flag is ours
  bool failed_ = false;
  bool reported_ = false; // of the broken interface
  int failure_ = 0;       // the error code that broke it
  FailureHint hint_;
};

} // namespace calder
