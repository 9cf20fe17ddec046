// The road to the instrument as the whole program has it: the interface layer, the progress window, and the System
// Setup dialog over its desk. It asks the buses nothing before the user wants something of them.
#pragma once

#include "setup/FrmGPIBExit.h"
#include "setup/SetupDesk.h"

namespace calder {

class Communication {
public:
  // What they refer to must outlive this object.
  Communication(Program& program, SystemSetup& setup, FileCommands& files, const WaveFiles& waveFiles);
  // Releases the session state, which may need the bus for it; to be called at the end of the program.
  ~Communication();
  Communication(const Communication&) = delete;
  Communication& operator=(const Communication&) = delete;

  // Shows the dialog and returns when it is closed. Nothing while it is shown or being made. waveformChanged: the main
  // window shows the waveform again.
  void ShowSystemSetup(const std::function<void()>& waveformChanged, QWidget* parent);

  IntfcLib bus;
  ProgressWindow progress;
  SetupDesk desk;

private:
  Program& program_;
};

} // namespace calder
