#include "setup/Communication.h"

#include "libs/bus/UsbtmcVisa.h"
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

} // namespace calder
