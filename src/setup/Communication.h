// All that reaches the instruments: the interface layer, the progress window, and the System Setup dialog with its
// desk. The buses are asked nothing before the user wants something of them.
#pragma once

#include "print/Reports.h"
#include "setup/FrmGPIBExit.h"
#include "setup/SetupDesk.h"
#include "tools/frame/ToolForm.h"

#include <memory>
#include <string>
#include <vector>

namespace calder {

class ToolHost;

class Communication {
public:
  // What they refer to must outlive this object.
  Communication(Program& program, SystemSetup& setup, FileCommands& files, const WaveFiles& waveFiles);
  // Releases the session state, which may need the bus for it; to be called at the end of the program.
  ~Communication();
  Communication(const Communication&) = delete;
  Communication& operator=(const Communication&) = delete;

  // The dialog, for the caller to show; nullptr while it is shown or being made.
  [[nodiscard]] std::unique_ptr<ToolForm> MakeSystemSetup(ToolHost& host, QWidget* parent);

  // What the dialog shows beside the settings record, for its report.
  [[nodiscard]] SystemReportTexts ReportTexts() const;

  // A line a bus: whether what it needs is on this machine.
  [[nodiscard]] std::vector<std::string> BusLines() const;

  // Ends a transfer under way as the user's cancel does; nothing while there is none.
  void CancelTransfer();

  IntfcLib bus;
  ProgressWindow progress;
  SetupDesk desk;

private:
  Program& program_;
};

} // namespace calder
