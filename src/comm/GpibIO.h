// One transfer's hold on the bus: it takes the busy flag and opens the bus, sends and reads, and gives both back. What
// a transfer does on the bus goes through here, and what it does it by is the copy of the settings that was taken when
// it began.
//
// What is reported: the interface layer shows its own box for a failed operation; after that the transfer shows one
// sentence and no more, touches the bus only to close it, and closes it without further boxes.
#pragma once

#include "app/Registry.h"
#include "comm/BusMessages.h"
#include "comm/IntfcLib.h"
#include "comm/TransferContext.h"

namespace calder {

// The controller's own address: the instrument must not have it.
[[nodiscard]] int ControllerAddress(const TransferContext& context);

class GpibIO {
public:
  static constexpr std::string_view kNoTerminator{"\0", 1};

  // cancelled: whether the user wants the transfer to end; empty: this transfer is cancelled elsewhere. Once it says
  // so, nothing more is sent, read or reported.
  explicit GpibIO(const TransferContext& context, std::function<bool()> cancelled = {})
      : live_(context), bus_(context.bus), cancelled_(std::move(cancelled)) {}
  ~GpibIO() { End(); }
  GpibIO(const GpibIO&) = delete;
  GpibIO& operator=(const GpibIO&) = delete;

  // Takes the busy flag and the settings snapshot and opens the bus. False: the user was shown why, nothing is held.
  [[nodiscard]] bool Begin(const std::string& title);
  // Closes the bus and clears the busy flag; a failure that was not reported yet is reported now. A second call does
  // nothing.
  void End();

  // The settings as they were when the transfer began.
  [[nodiscard]] const SystemInfo& Snapshot() const { return snapshot_; }
  // How its model is spoken to.
  [[nodiscard]] const Protocol& ModelProtocol() const { return live_.models.SysGetProtocol(snapshot_.ModelNo); }
  [[nodiscard]] int Address() const { return static_cast<std::uint16_t>(snapshot_.Address); }

  // An empty command is not sent and counts as sent. False: the failure was reported.
  bool Send(const std::string& command);
  // The reply; empty when there is none or the read failed.
  [[nodiscard]] std::string Read();
  // The reply to a query; empty when it could not be sent.
  [[nodiscard]] std::string Query(const std::string& command) { return Send(command) ? Read() : std::string(); }
  // Further operations. False: it failed, and the failure was reported.
  bool TimeLimit(double seconds);
  bool EndMark(bool on);
  bool Terminator(std::string_view text); // "\n", "\r\n" or kNoTerminator
  // Announces a waveform: a Send whose debug box has a title of its own.
  bool SendAnnouncement(const std::string& command);
  // Bytes as they are; without addressing they go to whoever is addressed already.
  enum class Addressing { Instrument, None };
  bool SendBytes(Addressing addressing, std::span<const std::byte> bytes);
  // A text with a block right after it, as one message.
  bool SendBlock(const std::string& header, std::span<const std::byte> block);
  // At most `limit` bytes of an answer into a file.
  bool ReceiveFile(const std::string& file, int limit);

  // An error box with the text, unless the failure of the interface was reported already.
  void Report(const std::string& text);
  void Report(int message);
  void Debug(const char* title, const std::string& command) const; // a box, with the debug switch on
  void Wait(double seconds);
  // Closes and opens the bus, which clears the instrument. False: the failure was reported.
  [[nodiscard]] bool Reopen();

  // An operation on the interface has failed.
  [[nodiscard]] bool Failed() const { return failed_; }
  // It has, or the user has cancelled.
  [[nodiscard]] bool Stopped() const { return failed_ || (cancelled_ && cancelled_()); }
  [[nodiscard]] std::int16_t Kind() const { return kind_; } // of the interface
  // For the two queries that go by the settings as they are now, and for what is shown.
  [[nodiscard]] const TransferContext& Live() const { return live_; }

private:
  [[nodiscard]] bool OpenBus();
  void CloseBus();
  void Release();
  bool Check(int errorCode); // false: it is a failure, and it was reported
  void Break(int errorCode);
  void ReportFailure();

  const TransferContext live_;
  IntfcLib& bus_;
  const std::function<bool()> cancelled_;
  SystemInfo snapshot_;
  std::int16_t kind_ = 0;
  bool held_ = false; // the busy flag is ours
  bool failed_ = false;
  bool reported_ = false; // of the broken interface
  int failure_ = 0;       // the error code that broke it
  FailureHint hint_;
};

} // namespace calder
