// The System Setup dialog's form over SetupDesk: lays the controls out, forwards what the user does, shows what it
// says.
#pragma once

#include "setup/SetupDesk.h"

#include <QDialog>
#include <QPointer>

#include <array>
#include <functional>
#include <memory>

namespace Ui {
class SystemDialog;
}

namespace calder {

class ValueBox;

class SystemDialog final : public QDialog, private SetupPort {
  Q_OBJECT

public:
  // The desk must outlive the form. waveformChanged: the main window shows the waveform again.
  SystemDialog(Program& program, SetupDesk& desk, std::function<void()> waveformChanged, QWidget* parent);
  ~SystemDialog() override;

  static constexpr const char* kFormName = "SystemDialog";

protected:
  void done(int result) override;
  void reject() override;

private:
  // SetupPort
  void ShowRecord() override;
  void GoToMemoryName() override;
  void SetTransferring(bool transferring) override;
  void WaveformChanged() override { waveformChanged_(); }
  void Close() override { done(Accepted); }

  void MakeMenus();
  void ConnectTabs();
  void ConnectSystem();
  void ConnectMemory();
  void ConnectOscillator();
  void ConnectUnits();
  void ConnectButtons();
  void ShowSystem();
  void ShowMemory();
  void ShowOscillator();
  void ShowUnits();
  void FocusNextOfMemoryName();
  void ShowLastTransfer();
  void CommitFocus();
  void StorePosition();

  Program& program_;
  SetupDesk& desk_;
  std::function<void()> waveformChanged_;
  std::unique_ptr<Ui::SystemDialog> ui_;
  std::array<ValueBox*, 4> oscillator_{};
  QPointer<QWidget> focusBefore_; // the transfer under way
  QTimer* timSetFocus_ = nullptr;
  bool closing_ = false;
};

} // namespace calder
