// libieee_32m.so: the KI GPIB library on the simulated bench. Its words are those of src/libs/bus/KiGpib.h and nothing
// else: an unknown word is an error, and nothing after it is done.
#include "sim/Bench.h"

#include "libs/bus/KiGpib.h"

#include <algorithm>
#include <string>
#include <utility>

#define CALDER_SIM_ENTRY extern "C" __attribute__((visibility("default")))

namespace {

using calder::KiGpib;
using calder::sim::Bench;
using calder::sim::Call;
using calder::sim::Fault;
using calder::sim::GpibBus;
using calder::sim::Quoted;

constexpr int kDone = 0;
constexpr int kError = 1;

struct Board {
  int eos = '\n'; // 0: none
  double limit = 10;
};

Board& TheBoard() {
  static Board board;
  return board;
}

int StatusOf(GpibBus::Result result) {
  switch (result) {
  case GpibBus::Result::Done: return kDone;
  case GpibBus::Result::NoListener:
  case GpibBus::Result::Nothing: return KiGpib::kTimeout;
  default: return kError;
  }
}

int StatusOf(Fault fault) {
  switch (fault) {
  case Fault::None: return kDone;
  case Fault::Timeout: return KiGpib::kTimeout;
  case Fault::Unplug: return KiGpib::kNoBoard;
  default: return kError;
  }
}

// Does the words of one text in their order.
class Transmission {
public:
  Transmission(Call& call, std::string_view words) : call_(call), rest_(words) {}

  int Run() {
    int status = kDone;
    while (status == kDone && NextWord()) status = DoWord();
    return status != kDone ? status : Flush(false);
  }

private:
  enum class List { None, Listen, Talk, Data };

  // A text in quotes with its quotes, or everything up to the next blank.
  bool NextWord() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
    if (rest_.empty()) return false;
    std::size_t end = 1;
    if (rest_.front() == '\'') {
      while (end < rest_.size() && (rest_[end] != '\'' || (end + 1 < rest_.size() && rest_[end + 1] == '\''))) {
        end += rest_[end] == '\'' ? 2 : 1;
      }
      end = std::min(end + 1, rest_.size());
    } else {
      end = std::min(rest_.find(' '), rest_.size());
    }
    word_ = rest_.substr(0, end);
    rest_.remove_prefix(end);
    return true;
  }

  int DoWord() {
    if (word_.front() == '\'') return Text();
    if (const auto number = calder::sim::ToInteger(word_)) return Number(*number);
    if (word_ == "EOI") {
      markNext_ = true;
      list_ = List::Data;
      return kDone;
    }
    if (word_ == "DATA") {
      list_ = List::Data;
      return kDone;
    }
    const int status = Flush(false);
    if (status != kDone) return status;
    return BusWord();
  }

  int BusWord() {
    Bench& bench = call_.On();
    const auto own = static_cast<char>(bench.Bus().Address());
    const List list = std::exchange(list_, List::None);
    if (word_ == "LISTEN" || word_ == "TALK") {
      list_ = word_ == "LISTEN" ? List::Listen : List::Talk;
      return kDone;
    }
    if (word_ == "MLA" || word_ == "MTA") {
      list_ = list;
      return Command(static_cast<char>((word_ == "MLA" ? 32 : 64) + own));
    }
    if (word_ == "UNL") return Command(63);
    if (word_ == "UNT") return Command(95);
    if (word_ == "SDC") return Command(4);
    if (word_ == "GTL") return Command(1);
    if (word_ == "LLO") return Command(17);
    if (word_ == "IFC") {
      bench.Bus().InterfaceClear();
      return kDone;
    }
    if (word_ == "REN") {
      bench.Bus().RemoteEnable(bench, true);
      return kDone;
    }
    return kError;
  }

  int Text() {
    if (list_ != List::Data || word_.size() < 2 || word_.back() != '\'') return kError;
    for (std::size_t i = 1; i + 1 < word_.size(); ++i) {
      if (word_[i] == '\'') ++i; // doubled
      const int status = Byte(word_[i]);
      if (status != kDone) return status;
    }
    return kDone;
  }

  int Number(int number) {
    if (list_ == List::Data && number >= 0 && number <= 255) return Byte(static_cast<char>(number));
    if (number < 0 || number > 30) return kError;
    if (list_ == List::Listen) return Command(static_cast<char>(32 + number));
    if (list_ == List::Talk) return Command(static_cast<char>(64 + number));
    return kError;
  }

  int Byte(char byte) {
    data_ += byte;
    return std::exchange(markNext_, false) ? Flush(true) : kDone;
  }

  int Flush(bool end) {
    if (data_.empty()) return kDone;
    const std::string data = std::exchange(data_, {});
    const std::size_t left = call_.Passing(moved_ + data.size()) - std::min(moved_, call_.Passing(moved_));
    moved_ += data.size();
    const auto result =
        call_.On().Bus().Write(call_.On(), std::string_view(data).substr(0, left), end && left == data.size());
    return StatusOf(result);
  }

  int Command(char code) { return StatusOf(call_.On().Bus().Command(call_.On(), std::string_view(&code, 1))); }

  Call& call_;
  std::string_view rest_;
  std::string_view word_;
  List list_ = List::None;
  bool markNext_ = false;
  std::string data_;
  std::size_t moved_ = 0;
};

int Finish(Call& call, const std::string& arguments, int status, const std::string& data = "") {
  call.Done(arguments, std::to_string(status) + (data.empty() ? "" : ", " + data));
  return status;
}

} // namespace

CALDER_SIM_ENTRY int _ieee_board_present() {
  Call call("_ieee_board_present");
  return Finish(call, "", call.Injected() == Fault::None ? 1 : 0);
}

CALDER_SIM_ENTRY void _ieee_initialize(int ownAddress, int level) {
  Call call("_ieee_initialize");
  if (call.Injected() == Fault::None) {
    TheBoard() = Board();
    call.On().Bus().SetAddress(ownAddress);
    if (level == 0) call.On().Bus().InterfaceClear();
  }
  call.Done(std::to_string(ownAddress) + ", " + std::to_string(level), "");
}

CALDER_SIM_ENTRY int _ieee_transmit(const char* words, long length) {
  Call call("_ieee_transmit", TheBoard().limit);
  const std::string_view text(words, static_cast<std::size_t>(length));
  int status = StatusOf(call.Injected());
  if (status == kDone) status = Transmission(call, text).Run();
  return Finish(call, Quoted(text), status);
}

CALDER_SIM_ENTRY int _ieee_receive(char* text, long capacity, long* received) {
  Call call("_ieee_receive", TheBoard().limit);
  const std::string arguments = std::to_string(capacity);
  *received = 0;
  if (call.Injected() != Fault::None) return Finish(call, arguments, StatusOf(call.Injected()));
  std::string data;
  bool ended = false;
  const std::size_t room = call.Passing(static_cast<std::size_t>(capacity));
  const int terminator = TheBoard().eos == 0 ? -1 : TheBoard().eos;
  const auto result = call.On().Bus().Read(call.On(), room, terminator, data, ended);
  if (result != GpibBus::Result::Done) return Finish(call, arguments, StatusOf(result));
  std::copy(data.begin(), data.end(), text);
  *received = static_cast<long>(data.size());
  const bool terminated = ended || (terminator >= 0 && !data.empty() && data.back() == static_cast<char>(terminator));
  const bool full = !terminated && data.size() == static_cast<std::size_t>(capacity);
  return Finish(call, arguments, full ? KiGpib::kBufferOverflow : kDone, Quoted(data));
}

CALDER_SIM_ENTRY int _ieee_tarray(const void* data, long count, int endMark) {
  Call call("_ieee_tarray", TheBoard().limit);
  const std::string_view bytes(static_cast<const char*>(data), static_cast<std::size_t>(count));
  int status = StatusOf(call.Injected());
  if (status == kDone) {
    const std::size_t passing = call.Passing(bytes.size());
    const bool end = endMark != 0 && passing == bytes.size();
    status = StatusOf(call.On().Bus().Write(call.On(), bytes.substr(0, passing), end));
  }
  return Finish(call, Quoted(bytes) + ", " + std::to_string(endMark), status);
}

CALDER_SIM_ENTRY int _ieee_settimeout(unsigned long milliseconds) {
  Call call("_ieee_settimeout", TheBoard().limit);
  const int status = StatusOf(call.Injected());
  if (status == kDone) TheBoard().limit = static_cast<double>(milliseconds) / 1000;
  return Finish(call, std::to_string(milliseconds), status);
}

CALDER_SIM_ENTRY int _ieee_setinputEOS(int code) {
  Call call("_ieee_setinputEOS", TheBoard().limit);
  int status = StatusOf(call.Injected());
  if (status == kDone && (code < 0 || code > 255)) status = kError;
  if (status == kDone) TheBoard().eos = code;
  return Finish(call, std::to_string(code), status);
}
