// Transfers without a window, on the simulated bench.
#pragma once

#include "FakeDesktop.h"
#include "app/Program.h"
#include "comm/WaveTransfer.h"
#include "instrument/Initialise.h"
#include "instrument/SystemSetup.h"
#include "platform/posix/WholeFile.h"
#include "sim/SimBench.h"

#include <filesystem>

namespace calder {

// A cancel lasts until the window opens anew, as it does for a step after an Unload.
struct RecordingProgress final : TransferProgress {
  void Open() override { cancelled = closed = false; }
  void Step(const std::string& text, int maximum) override {
    if (closed) Open();
    steps.push_back(text + " " + std::to_string(maximum));
  }
  void Value(int value) override {
    values.push_back(value);
    if (onValue) onValue(value);
  }
  void Sent(std::size_t bytes, std::size_t) override { sends.push_back(sent = bytes); }
  void SecondsRemaining(int) override {}
  void Caption(const std::string& text) override { captions.push_back(text); }
  [[nodiscard]] bool Cancelled() const override { return cancelled; }
  void Unload() override { closed = true; }

  std::vector<std::string> steps;
  std::vector<int> values;
  std::vector<std::string> captions;
  std::size_t sent = 0;
  std::vector<std::size_t> sends;
  bool closed = true;
  bool cancelled = false;
  std::function<void(int)> onValue;
};

struct BusFixture : testing::Test {
  fake::FakeDesktop desktop;
  std::optional<Program> program;
  std::optional<SystemSetup> setup;
  std::optional<IntfcLib> bus;
  RecordingProgress progress;
  std::function<std::unique_ptr<Visa>()> kernelVisa;
  std::filesystem::path folder = std::filesystem::temp_directory_path() / ("calder_bus_" + std::to_string(::getpid()));

  BusFixture() {
    sim::Reset();
    sim::OnWait([](double) {});
    std::filesystem::create_directories(folder);
    desktop.libraries.folder = CALDER_SIM_FOLDER;
    desktop.folders.state = folder.string();
    desktop.folders.bus = CALDER_SIM_FOLDER;
    program.emplace(desktop.Services());
    setup.emplace(*program);
    MakeBus();
    EXPECT_TRUE(ReadUsbIds(CALDER_SOURCE_DIR "/data/USBTMC.ID", program->usbIds));
    EXPECT_TRUE(InitialiseSystem(*program, *setup));
  }
  ~BusFixture() override {
    bus.reset();
    std::filesystem::remove_all(folder);
  }

  // The interface layer as at the program's start.
  void MakeBus() {
    bus.emplace(program->desktop, program->messages, program->settings, program->interfaceKind, kernelVisa,
                std::function<void()>());
    bus->SetUsbResource(Resource());
  }
  TransferContext Context() { return ContextOf(*program, *bus); }
  static std::string TextOf(const std::string& path) {
    std::vector<char> content;
    EXPECT_EQ(ReadWholeFile(path, content), 0) << path;
    return {content.begin(), content.end()};
  }
  // The model on that interface, at the address where the bench has it, with a small memory.
  void Choose(int model, InterfaceKind kind) {
    SystemInfo& settings = program->settings;
    settings.Channel = settings.RangeNo = settings.Polarity = 0; // what a model keeps of the one before
    setup->ChooseModel(model);
    setup->ChooseInterface(kind);
    settings.Address = static_cast<std::int16_t>(kind == kUsbTmc ? 0 : model + 1);
    if (kind == kUsbTmc) bus->SetUsbResource(Resource());
    setup->ChooseMemorySize(static_cast<int>(setup->MemorySizes().size()) - 1);
    setup->ApplyMemorySize();
    const auto codes = W_Lock(program->buffers.Current());
    for (std::size_t i = 0; i < codes.size(); ++i) codes[i] = static_cast<std::int16_t>(i * 37 % 65535 - 32767);
  }
  [[nodiscard]] std::string Resource() const {
    return program->settings.ModelNo == 0 ? "USB0::0x1209::0x5530::1234567" : "USB0::0x1209::0x5531::1234567";
  }
  bool TransferWave() { return WaveTransfer(Context(), *setup, progress).Run(); }

  // Everything that a transfer leaves behind is in order again.
  void ExpectIdle() {
    EXPECT_FALSE(program->registry.GetGpibBusy());
    EXPECT_FALSE(program->registry.GetGpibHost());
    EXPECT_FALSE(bus->Initialised());
  }

  // The calls without their results.
  static std::vector<std::string> Calls() {
    std::vector<std::string> calls = sim::Traffic();
    for (std::string& call : calls) {
      // Data may hold anything but an unescaped quote, so the last one of these ends the arguments.
      if (const std::size_t end = call.rfind(") = "); end != std::string::npos) call.resize(end + 1);
    }
    return calls;
  }
};

} // namespace calder
