// The System Setup dialog without its window: what each control does to the settings record, and the transfers that its
// buttons start.
//
// The live record is edited at once; Cancel puts back the copy that was taken when the dialog opened. The lists and the
// choices in them are SystemSetup's, the texts of the oscillator boxes OscillatorLimits'.
#pragma once

#include "app/Program.h"
#include "comm/LoopTest.h"
#include "comm/SimulatedBench.h"
#include "comm/WaveTransfer.h"
#include "files/SystemFile.h"
#include "instrument/OscillatorLimits.h"
#include "instrument/SystemSetup.h"

#include <string>
#include <string_view>
#include <vector>

namespace calder {

class FileCommands;

// What the window does on the desk's behalf.
class SetupPort {
public:
  virtual ~SetupPort() = default;
  virtual void ShowRecord() = 0;     // every control from the record
  virtual void GoToMemoryName() = 0; // the memory name is wrong
  virtual void SetTransferring(bool transferring) = 0;
  virtual void WaveformChanged() = 0; // the main window draws the waveform again
  virtual void Close() = 0;
};

class SetupDesk {
public:
  enum class Transfer : int { Settings = 0, Waveform = 1, ReadBack = 2 };
  enum class Axis : int { X = 0, Y = 1 };
  enum class End : int { Min = 0, Max = 1 };

  // What they refer to must outlive this object.
  SetupDesk(Program& program, SystemSetup& setup, FileCommands& files, const WaveFiles& waveFiles, IntfcLib& bus,
            TransferProgress& progress);

  // nullptr: no window. REQUIRES: a window before any call below.
  void SetPort(SetupPort* port) { port_ = port; }
  void Form_Load();
  void Form_Unload();

  // Choices by their position in the lists; one outside of its list changes nothing.
  void ChooseModel(int model);
  void ChooseInterface(int index);
  void ChooseSerial(const std::string& serial) { program_.serialNumber = serial; }
  void StepAddress(int by);
  void StepMemoryNo(int by);
  // Entries of a box that was left; a refused one changes nothing, and the box shows the record again.
  void EnterAddress(std::string_view text);
  void EnterMemoryNo(std::string_view text);
  void EnterMemoryName(std::string_view text);
  void ChooseMemorySize(int index);
  void ChooseTransferFormat(int format);
  void ChooseChannel(int channel);
  void ChooseRange(int range);
  void ChooseOutput(int state); // 0 on, 1 off, 2 leave it as it is
  void ChooseOffsetOn(bool on);
  void ChoosePolarity(int polarity);
  void EnterOscillator(int box, std::string_view text); // 0 frequency, 1 period, 2 amplitude, 3 offset
  void ChooseUnit(Axis axis, int unit);
  void EnterUnitName(Axis axis, std::string_view text);
  void EnterUnitRange(Axis axis, End end, std::string_view text);

  void Btn_Trans_Click(Transfer transfer);
  // Only USBTMC brings a waveform back; the loop test runs on every bus.
  [[nodiscard]] bool CanReadBack() const { return UsbShown() || program_.registry.GetLoopTest(); }
  void Btn_OK_Click();
  // Puts the settings back and closes; while a transfer runs it cancels the transfer instead, when that is Cancellable.
  void Btn_Cancel_Click();
  void Menu_FileOpen_Click();
  void Menu_FileSave_Click();
  // Asks for a file and writes the recorded bus traffic there.
  void SaveLog();

  // What the controls show beside the record itself.
  [[nodiscard]] bool UsbShown() const { return program_.interfaceKind == kUsbTmc; }
  [[nodiscard]] const std::vector<std::string>& SerialNumbers() const { return serials_; }
  [[nodiscard]] std::string SelectedSerial() const;
  [[nodiscard]] std::string ResourceName() const; // of the selected instrument; empty for none
  [[nodiscard]] std::vector<std::string> TransferFormats() const;
  [[nodiscard]] std::string OscillatorText(int box) const;
  [[nodiscard]] std::string OscillatorLimitText(int box) const; // the smallest and the largest value
  [[nodiscard]] const char* AmplitudeUnit() const { return limits_.AmplitudeUnit(); }
  [[nodiscard]] std::string UnitName(Axis axis) const;
  [[nodiscard]] std::string UnitRangeText(Axis axis, End end) const;
  // A line about the points that OK will cut off, because the memory has become smaller than it was when the dialog
  // opened; empty when none.
  [[nodiscard]] std::string CutWarning() const;
  // A line about the simulated bench; empty when the buses are real.
  [[nodiscard]] std::string BenchHint() const;
  // The dialog's own Cancel ends the transfer under way; waveforms are cancelled in the progress window.
  [[nodiscard]] bool Cancellable() const { return cancellable_; }
  // A window shows this desk.
  [[nodiscard]] bool Shown() const { return port_ != nullptr; }
  [[nodiscard]] bool PowerSource() const {
    return program_.models.SysGetProtocol(program_.settings.ModelNo).PowerSource.has_value();
  }
  [[nodiscard]] BusTrace& Trace() { return bus_.Trace(); }
  [[nodiscard]] const SystemSetup& Setup() const { return setup_; }

private:
  [[nodiscard]] bool PrepareUsb();
  [[nodiscard]] bool MemoryNameValid() const;
  void RefreshSerials();
  void AskController();
  void AvoidController();
  // Points that a larger memory has brought since the dialog opened hold what was there before: they are cleared,
  // before anything is made of them.
  void ClearAddedPoints();
  void SystemRead(); // the dialog follows a record that a system file gave
  void Show() const;
  void Run(Transfer transfer);
  [[nodiscard]] std::string UsbPrefix() const;

  Program& program_;
  SystemSetup& setup_;
  FileCommands& files_;
  IntfcLib& bus_;
  OscillatorLimits limits_;
  SystemFile systemFile_;
  WaveTransfer waveTransfer_;
  LoopTest loopTest_;
  SimulatedBench bench_;
  SetupPort* port_ = nullptr;
  SystemInfo cancelCopy_;
  std::vector<std::string> serials_;
  std::int32_t knownPoints_ = 0; // from here on points have never been the waveform's since the dialog opened
  int controller_ = -1;          // its address when it was asked last
  bool transferring_ = false;
  bool cancellable_ = false;
  bool cancelRequested_ = false;
};

} // namespace calder
