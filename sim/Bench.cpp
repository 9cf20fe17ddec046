#include "sim/Bench.h"

#include "sim/FileModels.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <thread>

namespace calder::sim {
namespace {

std::string ReadFile(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Where this library stands, and beside it the model files.
std::string OwnFolder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&Bench::Get), &info) == 0 || info.dli_fname == nullptr) return {};
  return std::filesystem::path(info.dli_fname).parent_path().string();
}

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  while (true) {
    text = Trim(text);
    if (text.empty()) return words;
    const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
    words.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
}

} // namespace

Bench& Bench::Get() {
  static Bench bench;
  return bench;
}

Bench::Bench() {
  for (const Model& model : AllModels()) instruments_.push_back(std::make_unique<Instrument>(model));
  const std::string folder = OwnFolder();
  if (std::filesystem::exists(folder + "/models")) {
    const std::string fault = AddModels(folder + "/models", folder + "/USBTMC.ID");
    if (!fault.empty()) std::fprintf(stderr, "calder simulation: %s\n", fault.c_str());
  }
  if (const char* path = std::getenv("CALDER_SIM_TRAFFIC")) trafficFile_.open(path, std::ios::app | std::ios::binary);
  const char* path = std::getenv("CALDER_SIM_SCRIPT");
  if (path != nullptr && !Script(ReadFile(path))) {
    std::fprintf(stderr, "calder simulation: the fault script %s has a line that is not understood\n", path);
  }
}

std::string Bench::AddModels(const std::string& folder, const std::string& usbIds) {
  std::string fault;
  for (const Model& model : ReadModels(folder, usbIds, fault)) {
    if (Named(model.name) == nullptr) instruments_.push_back(std::make_unique<Instrument>(model));
  }
  return fault;
}

void Bench::Reset() {
  for (auto& instrument : instruments_) instrument->SwitchOn();
  bus_.Reset();
  traffic.clear();
  calls = 0;
  injected = 0;
  ++resets;
  wait = nullptr;
  script_.clear();
  callsOf_.clear();
  unplugged_ = false;
}

bool Bench::Script(std::string_view text) {
  std::vector<Line> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view one = Trim(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (one.empty() || one.front() == '#') continue;
    Line line;
    if (!ParseLine(one, line)) return false;
    lines.push_back(line);
  }
  script_.insert(script_.end(), lines.begin(), lines.end());
  return true;
}

bool Bench::ParseLine(std::string_view text, Line& line) {
  constexpr std::array<std::string_view, 5> kKinds = {"fail", "timeout", "short", "late", "unplug"};
  std::vector<std::string_view> words = Words(text);
  const auto kind = std::find(kKinds.begin(), kKinds.end(), words.front());
  if (kind == kKinds.end()) return false;
  line.kind = static_cast<Kind>(kind - kKinds.begin());
  words.erase(words.begin());
  const bool valued = line.kind == Kind::Short || line.kind == Kind::Late;
  if (valued) {
    const auto value = words.empty() ? std::nullopt : ToNumber(words.back());
    if (!value || *value < 0) return false;
    line.value = *value;
    words.pop_back();
  }
  if (words.empty() || words.size() > 2) return false;
  if (words.size() == 2) line.name = words.front();
  const auto number = ToInteger(words.back());
  line.number = number.value_or(0);
  return line.number >= 1;
}

Instrument* Bench::At(int address) {
  if (address < 1 || address > static_cast<int>(instruments_.size())) return nullptr;
  Instrument* instrument = instruments_[static_cast<std::size_t>(address - 1)].get();
  return instrument->Get("power") == "on" ? instrument : nullptr;
}

Instrument* Bench::Named(std::string_view model) {
  for (auto& instrument : instruments_) {
    if (instrument->Kind().name == model) return instrument.get();
  }
  return nullptr;
}

void Bench::Record(std::string line) {
  if (trafficFile_.is_open()) trafficFile_ << line << std::endl; // flushed: the program may be killed
  traffic.push_back(std::move(line));
}

Call::Call(const char* name, double limit) : bench_(Bench::Get()), lock_(bench_.mutex), name_(name) {
  ++bench_.calls;
  const int own = ++bench_.callsOf_[name];
  if (bench_.unplugged_) fault_ = Fault::Unplug;
  for (const Bench::Line& line : bench_.script_) {
    const bool named = line.name == name && line.number == own;
    if (named || (line.name.empty() && line.number == bench_.calls)) Apply(line, limit);
  }
}

void Call::Apply(const Bench::Line& line, double limit) {
  if (fault_ == Fault::Unplug) return; // nothing more can happen to it
  ++bench_.injected;
  switch (line.kind) {
  case Bench::Kind::Fail: fault_ = Fault::Fail; break;
  case Bench::Kind::Timeout: fault_ = Fault::Timeout; break;
  case Bench::Kind::Short: passing_ = static_cast<std::size_t>(line.value); break;
  case Bench::Kind::Unplug:
    fault_ = Fault::Unplug;
    bench_.unplugged_ = true;
    break;
  case Bench::Kind::Late: {
    const bool tooLate = limit > 0 && line.value > limit;
    const double seconds = tooLate ? limit : line.value;
    if (bench_.wait) {
      bench_.wait(seconds);
    } else {
      std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    }
    if (tooLate) fault_ = Fault::Timeout;
    break;
  }
  }
}

std::size_t Call::Passing(std::size_t count) const {
  return std::min(count, passing_);
}

void Call::Done(const std::string& arguments, const std::string& result) {
  bench_.Record(std::string(name_) + "(" + arguments + ")" + (result.empty() ? "" : " = " + result));
}

std::string Quoted(std::string_view data) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text = "\"";
  text.reserve(data.size() + 2);
  for (const char c : data) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      text += "\\n";
    } else if (c == '\r') {
      text += "\\r";
    } else if (c == '"' || c == '\\') {
      text += '\\';
      text += c;
    } else if (byte < 0x20 || byte > 0x7E) {
      text += "\\x";
      text += kDigits[byte >> 4];
      text += kDigits[byte & 15];
    } else {
      text += c;
    }
  }
  text += '"';
  return text;
}

std::string Hex(std::uint32_t number) {
  std::array<char, 16> digits{};
  const auto [stop, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16);
  std::string text(digits.data(), stop);
  if (text.size() < 4) text.insert(0, 4 - text.size(), '0');
  return "0x" + text;
}

} // namespace calder::sim
