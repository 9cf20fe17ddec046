// The System Setup dialog's form over SetupDesk: lays the controls out, forwards what the user does, shows what it
// says.
#pragma once

#include "setup/SetupDesk.h"
#include "tools/frame/ToolForm.h"
#include "tools/frame/ToolHost.h"

#include <QPointer>

#include <array>
#include <memory>

namespace Ui {
class SystemDialog;
}

namespace calder {

class ValueBox;

class SystemDialog final : public ToolForm, private SetupPort {
  Q_OBJECT

public:
  // The desk and the host must outlive the form.
  SystemDialog(Program& program, SetupDesk& desk, ToolHost& host, QWidget* parent);
  ~SystemDialog() override;

  static constexpr const char* kFormName = "SystemDialog";

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void reject() override;
  void CommitFocus() override;

private:
  // SetupPort
  void ShowRecord() override;
  void GoToMemoryName() override;
  void SetTransferring(bool transferring) override;
  void WaveformChanged() override { host_.WaveformChanged(); }
  void Close() override { done(Accepted); }

  void Closing() override { desk_.Form_Unload(); }
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
  void ChooseShownModel();

  Program& program_;
  SetupDesk& desk_;
  ToolHost& host_;
  std::unique_ptr<Ui::SystemDialog> ui_;
  std::array<ValueBox*, 4> oscillator_{};
  QPointer<QWidget> focusBefore_; // the transfer under way
  QTimer* timSetFocus_ = nullptr;
  bool lookingThrough_ = false; // the model list is being gone through with the keyboard or the wheel
};

} // namespace calder
