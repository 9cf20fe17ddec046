// What the bus libraries see of the bench: the instruments, and a record of each of their calls.
#pragma once

#include "sim/GpibBus.h"
#include "sim/Instrument.h"

#include <fstream>
#include <map>
#include <memory>
#include <mutex>
#include <span>

namespace calder::sim {

enum class Fault { None, Fail, Timeout, Unplug };

class Bench {
public:
  // The bench of the process.
  static Bench& Get();

  Bench();
  void Reset();
  [[nodiscard]] bool Script(std::string_view text);

  // Adds those models of a folder of model files that the bench lacks. Empty, or what is wrong with the files.
  [[nodiscard]] std::string AddModels(const std::string& folder, const std::string& usbIds);
  // The instrument of an address, or of a name; null when there is none or its power is off.
  [[nodiscard]] Instrument* At(int address);
  [[nodiscard]] Instrument* Named(std::string_view model);
  [[nodiscard]] std::vector<std::unique_ptr<Instrument>>& Instruments() { return instruments_; }
  [[nodiscard]] GpibBus& Bus() { return bus_; }

  std::mutex mutex;
  std::vector<std::string> traffic;
  int calls = 0;
  int injected = 0;
  int resets = 0; // says to a library that what it remembers is of an earlier bench
  std::function<void(double)> wait;

private:
  friend class Call;
  enum class Kind { Fail, Timeout, Short, Late, Unplug };
  struct Line {
    Kind kind = Kind::Fail;
    std::string name; // empty: any call
    int number = 0;
    double value = 0;
  };
  [[nodiscard]] static bool ParseLine(std::string_view text, Line& line);
  void Record(std::string line);

  std::vector<std::unique_ptr<Instrument>> instruments_;
  GpibBus bus_;
  std::vector<Line> script_;
  std::map<std::string, int, std::less<>> callsOf_;
  bool unplugged_ = false;
  std::ofstream trafficFile_;
};

// One call of an entry point, from its beginning to its end. It holds the bench for that time.
class Call {
public:
  // limit: its time limit in seconds; 0: none.
  explicit Call(const char* name, double limit = 0);

  // What is to be done instead of the call's work.
  [[nodiscard]] Fault Injected() const { return fault_; }
  // How many of `count` bytes are moved.
  [[nodiscard]] std::size_t Passing(std::size_t count) const;
  [[nodiscard]] Bench& On() { return bench_; }
  // Writes the line of the traffic. To be called once, at the end.
  void Done(const std::string& arguments, const std::string& result);

private:
  void Apply(const Bench::Line& line, double limit);

  Bench& bench_;
  std::lock_guard<std::mutex> lock_;
  const char* name_;
  Fault fault_ = Fault::None;
  std::size_t passing_ = static_cast<std::size_t>(-1);
};

// Data as in C: "*IDN?\n".
[[nodiscard]] std::string Quoted(std::string_view data);
// At least four digits: 0x0100.
[[nodiscard]] std::string Hex(std::uint32_t number);

} // namespace calder::sim
