// What a bus must be able to do: the operations that the interface layer hands to the back end of the chosen kind.
//
// Every operation returns the bits of an error code, 0 for success (BusError below). One back end is used from one
// thread at a time; an operation may block as long as its time limit says.
#pragma once

#include "comm/BusData.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace calder {

class BusLibraries;
class MessageBoxes;
class Visa;

enum BusError : int {
  kBusOk = 0,
  kBusTimeout = 1,
  kBusFailed = 2,
  kBusNoBoard = 4,
  kBusOverflow = 8,
  kBusNotPossible = -1, // an operation that this kind of bus lacks
};

// Addresses from here on mean: whoever is addressed already.
inline constexpr int kNoAddress = 65535;

// Terminator codes of GP_MTerm.
enum BusTerminator : int { kTermNone = 0, kTermLf = 1, kTermCr = 2, kTermCrLf = 3 };
// The text of a terminator code; empty for others.
[[nodiscard]] std::string_view TerminatorText(int mode);

// What a back end needs of the program around it.
struct BackEndHost {
  MessageBoxes& boxes;
  BusLibraries& libraries;
  std::string folder;         // for the files that it writes; without a trailing separator
  std::function<void()> quit; // the user wants the program to end
  // What stands in for a VISA library when the machine has none; may be empty.
  std::function<std::unique_ptr<Visa>()> kernelVisa;
};

// What a back end calls its error codes in its log and its box.
struct ErrorLabels {
  const char* failed;
  const char* timeout;
  const char* noBoard;
  const char* overflow;
};

// What the user can do about a failure, when the back end knows more than its error code says.
struct FailureHint {
  enum class Kind { None, NotPermitted, IncompleteLibrary };
  Kind kind = Kind::None;
  std::string entry{}; // the entry point that the library lacks
};

class BackEnd {
public:
  virtual ~BackEnd() = default;

  // The title of its boxes.
  [[nodiscard]] virtual const char* Name() const = 0;
  // Whether its calls may block, so that they belong on the worker.
  [[nodiscard]] virtual bool Blocks() const { return true; }
  [[nodiscard]] const FailureHint& Hint() const { return hint_; } // about the last operation
  [[nodiscard]] virtual ErrorLabels Labels() const {
    return {"Error", "Time Out", "Board does not exit", "Buffer over"};
  }

  // "KEY = value, KEY = value": see ConfigurationValue.
  virtual int GP_Init(const std::string& configuration) = 0;
  virtual int GP_End() = 0;
  virtual int GP_Send_Str(int address, const std::string& text) = 0;
  virtual int GP_Receive_Str(int address, std::string& text) = 0;
  virtual int GP_LLO() = 0;
  virtual int GP_REN(bool on) = 0;
  virtual int GP_IFC() = 0;
  virtual int GP_SDC(int address) = 0;
  // The code of a time limit, 0 to 17 (none, 10 us, 30 us, ... 1000 s).
  virtual int GP_Time_Out(int code) = 0;
  virtual int GP_MTerm(int mode) = 0;
  virtual int GP_EOI(bool on) = 0;
  // `count` elements of `width` 0 bytes, 1 16-bit words, 2 32-bit values; `swap` exchanges the bytes of every 16-bit
  // word.
  virtual int GP_Send_Binary_Data(std::span<const std::byte> data, int address, int count, int width, bool swap) = 0;
  // The text and right after it `count` bytes, in one message. Only USBTMC has it; the others do nothing.
  virtual int GP_Send_AsciiBinary_Data(int /*address*/, const std::string& /*header*/,
                                       std::span<const std::byte> /*data*/) {
    return kBusOk;
  }
  // At most `limit` bytes of a reply into the file. Only USBTMC has it.
  virtual int GP_Receive_Binary_Data(int /*address*/, const std::string& /*file*/, int /*limit*/) {
    return kBusNotPossible;
  }

  // "LOG_FILE" and "VIEW_ERR_DIALOG" of a configuration text.
  void ReadReporting(const std::string& configuration);
  // After an operation, on the caller's thread: a line in the log file, when there is one, and with the dialog on a
  // failure is shown and may end the program.
  void Report(const BackEndHost& host, const char* operation, int address, const BusData& data, int result) const;

protected:
  // Loads the library by load(lacking) when `api` is null. False: there is none, and the hint says what it lacks.
  template <typename Api, typename Load>
  [[nodiscard]] bool Loaded(std::unique_ptr<Api>& api, Load load) {
    hint_ = {};
    if (api) return true;
    std::string lacking;
    api = load(&lacking);
    if (!api && !lacking.empty()) hint_ = {FailureHint::Kind::IncompleteLibrary, lacking};
    return api != nullptr;
  }
  FailureHint hint_;

private:
  std::string logFile_;
  bool showDialog_ = false;
};

// The value of a key of a configuration text, without regard to case: the text after the key up to the next comma, and
// of that what stands after the first "=", trimmed. Missing: empty.
[[nodiscard]] std::string ConfigurationValue(const std::string& configuration, std::string_view key);
[[nodiscard]] bool ConfigurationHas(const std::string& configuration, std::string_view key);

// Milliseconds of a time limit's code, as the millisecond-based libraries take it: 1 for 0 to 5, then 3, 10, ...
// 1000000.
[[nodiscard]] unsigned long TimeLimitMilliseconds(int code);
constexpr int kTimeLimit300ms = 10; // the code that every back end begins with

// A reply of that many characters: up to the first line feed or carriage return, without blanks at its end.
void CutReply(std::string& reply, std::size_t received);

// The elements as the bytes that go out.
[[nodiscard]] std::string BinaryPayload(std::span<const std::byte> data, int count, int width, bool swap);

} // namespace calder
