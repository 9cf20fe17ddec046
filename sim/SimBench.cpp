#include "sim/SimBench.h"

#include "sim/Bench.h"

namespace calder::sim {

void Reset() {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  bench.Reset();
}

bool Script(std::string_view text) {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  return bench.Script(text);
}

std::vector<std::string> Traffic() {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  return bench.traffic;
}

int CallCount() {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  return bench.calls;
}

int InjectedFaults() {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  return bench.injected;
}

void OnWait(std::function<void(double seconds)> wait) {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  bench.wait = std::move(wait);
}

std::vector<std::string> Messages(std::string_view model) {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  const Instrument* instrument = bench.Named(model);
  return instrument == nullptr ? std::vector<std::string>() : instrument->Messages();
}

std::optional<Waveform> Memory(std::string_view model, int number) {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  const Instrument* instrument = bench.Named(model);
  const Waveform* waveform = instrument == nullptr ? nullptr : instrument->Stored(number);
  return waveform == nullptr ? std::nullopt : std::optional(*waveform);
}

std::string AddModels(const std::string& folder, const std::string& usbIds) {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  return bench.AddModels(folder, usbIds);
}

std::string Setting(std::string_view model, std::string_view name) {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  const Instrument* instrument = bench.Named(model);
  return instrument == nullptr ? std::string() : instrument->Get(std::string(name));
}

std::vector<std::string> Errors(std::string_view model) {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  const Instrument* instrument = bench.Named(model);
  return instrument == nullptr ? std::vector<std::string>() : instrument->ErrorQueue();
}

bool Store(std::string_view model, int number, Waveform waveform) {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  Instrument* instrument = bench.Named(model);
  if (instrument == nullptr || !instrument->HasMemory(number)) return false;
  instrument->StoreWaveform(number, std::move(waveform));
  return true;
}

bool Set(std::string_view model, std::string_view name, std::string_view value) {
  Bench& bench = Bench::Get();
  const std::lock_guard lock(bench.mutex);
  Instrument* instrument = bench.Named(model);
  if (instrument == nullptr) return false;
  instrument->Put(instrument->NameOf(std::string(name)), value);
  if (name == "sequence") instrument->Put("running", value);
  return true;
}

} // namespace calder::sim
