#include "setup/Communication.h"

#include "libs/bus/KiGpib.h"
#include "libs/bus/Ni4882.h"
#include "libs/bus/Usb488.h"
#include "libs/bus/UsbtmcVisa.h"
#include "libs/bus/Visa.h"
#include "setup/SystemDialog.h"

#include <QCoreApplication>

namespace calder {
namespace {

// What stands in for a VISA library on a machine that has none.
std::function<std::unique_ptr<Visa>()> KernelVisa(const Program& program) {
  return [&program]() -> std::unique_ptr<Visa> {
    const auto& usbtmc = program.desktop.usbtmc;
    if (!usbtmc) return nullptr;
    return std::make_unique<UsbtmcVisa>(usbtmc());
  };
}

} // namespace

Communication::Communication(Program& program, SystemSetup& setup, FileCommands& files, const WaveFiles& waveFiles)
    : bus(program.desktop, program.messages, program.settings, program.interfaceKind, KernelVisa(program),
          [] { QCoreApplication::quit(); }),
      progress(program.registry, program.messages, program.desktop.clock),
      desk(program, setup, files, waveFiles, bus, progress), program_(program) {
  program_.registry.SetLocalControl([this] { bus.Local(); });
}

Communication::~Communication() {
  program_.registry.Release();
  program_.registry.SetLocalControl({});
}

void Communication::CancelTransfer() {
  if (!program_.registry.GetGpibHost()) return;
  progress.Cancel();
  if (desk.Shown()) desk.Btn_Cancel_Click(); // while a transfer runs it only asks for its end
}

// Making the dialog asks the bus, and events go on meanwhile.
std::unique_ptr<ToolForm> Communication::MakeSystemSetup(ToolHost& host, QWidget* parent) {
  if (desk.Shown()) return nullptr;
  return std::make_unique<SystemDialog>(program_, desk, host, parent);
}

std::vector<std::string> Communication::BusLines() const {
  const ErrMsg& language = program_.messages;
  BusLibraries& libraries = program_.desktop.busLibraries;
  const auto line = [&](const char* name, const auto& load, const char* otherwise) {
    std::string lacking;
    const bool found = load(lacking) != nullptr;
    const char* state = found ? language.Pick("使用できます", "found") : otherwise;
    return std::string(name) + ": " +
           (lacking.empty() || found ? state : language.Pick("欠けています: ", "lacks ") + lacking);
  };
  const char* none = language.Pick("見つかりません", "not found");
  const char* kernel = language.Pick("カーネルの usbtmc", "kernel (usbtmc)");
  return {line(
              "USB(TMC)", [&](std::string& lacking) { return LoadVisa(libraries, &lacking); },
              program_.desktop.usbtmc ? kernel : none),
          line(
              "NI GPIB", [&](std::string& lacking) { return Ni4882::Load(libraries, &lacking); }, none),
          line(
              "KI GPIB", [&](std::string& lacking) { return KiGpib::Load(libraries, &lacking); }, none),
          line(
              "USB488", [&](std::string& lacking) { return Usb488::Load(libraries, &lacking); }, none)};
}

SystemReportTexts Communication::ReportTexts() const {
  const SystemSetup& setup = desk.Setup();
  const SystemInfo& settings = program_.settings;
  const auto entry = [](const std::vector<std::string>& list, int choice) {
    return choice >= 0 && static_cast<std::size_t>(choice) < list.size() ? list[static_cast<std::size_t>(choice)]
                                                                         : std::string();
  };
  SystemReportTexts texts;
  texts.model = entry(setup.Models(), setup.ModelChoice());
  texts.interfaceKind = program_.interfaceKind;
  const int chosen = setup.InterfaceChoice();
  if (chosen >= 0) texts.interface = setup.Interfaces()[static_cast<std::size_t>(chosen)].name;
  texts.serialNumber = desk.SelectedSerial();
  texts.transferFormat = entry(desk.TransferFormats(), setup.TransferFormatChoice());
  texts.memorySize = entry(setup.MemorySizes(), setup.MemorySizeChoice());
  texts.channel = entry(setup.Channels(), settings.Channel);
  texts.range = entry(setup.Ranges(), settings.RangeNo);
  texts.amplitudeUnit = desk.AmplitudeUnit();
  return texts;
}

} // namespace calder
