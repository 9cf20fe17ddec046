// The small window of a transfer under way: its step, how far it is, and the button that cancels it.
#pragma once

#include "app/Messages.h"
#include "app/Registry.h"
#include "comm/TransferProgress.h"

#include <QDialog>
#include <QPointer>

#include <memory>

class QTimer;

namespace Ui {
class FrmGPIBExit;
}

namespace calder {

class Clock;

class FrmGPIBExit final : public QDialog {
  Q_OBJECT

public:
  FrmGPIBExit(clsRegistry& registry, const ErrMsg& messages, QWidget* parent);
  ~FrmGPIBExit() override;

  [[nodiscard]] bool GpibExit() const { return gpibExit_; }
  // A new step at 0, and the value that means its end; the rate of the one before goes.
  void ShowStep(const QString& text, int maximum);
  void ShowValue(int value);
  void ShowRate(const QString& text);
  // Hides the window in a moment, unless KeepOpen comes first: a transfer whose next step follows at once keeps it. It
  // is never deleted by itself: something may be open over it.
  void HideSoon();
  void KeepOpen();

  static constexpr const char* kFormName = "FrmGPIBExit";

protected:
  void closeEvent(QCloseEvent* event) override;
  void reject() override; // Escape cancels the transfer, and the transfer closes the window

private:
  void Set_GpibExitLabel();
  void CmdGpibExit_Click();
  void StorePosition();

  clsRegistry& registry_;
  const ErrMsg& messages_;
  std::unique_ptr<Ui::FrmGPIBExit> ui_;
  QTimer* hiding_ = nullptr;
  bool gpibExit_ = false;
};

// Makes the window when a transfer wants it and hides it after the transfer. The window goes with the window that it
// belongs to, or with this object.
class ProgressWindow final : public TransferProgress {
public:
  // What they refer to must outlive this object.
  ProgressWindow(clsRegistry& registry, const ErrMsg& messages, Clock& clock)
      : registry_(registry), messages_(messages), clock_(clock) {}
  ~ProgressWindow() override { delete form_; }
  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;

  void Open() override;
  void Step(const std::string& text, int maximum) override;
  void Value(int value) override;
  void Sent(std::size_t bytes, std::size_t total) override;
  void SecondsRemaining(int seconds) override;
  void Caption(const std::string& text) override;
  [[nodiscard]] bool Cancelled() const override { return cancelled_ || (form_ && form_->GpibExit()); }
  void Unload() override;
  // As the window's own button.
  void Cancel() {
    if (form_) form_->close();
  }

private:
  clsRegistry& registry_;
  const ErrMsg& messages_;
  Clock& clock_;
  QPointer<FrmGPIBExit> form_;
  std::string caption_;    // of the loop test; empty: the form's own
  bool cancelled_ = false; // the form was left with a cancel
  bool unloaded_ = false;  // the form is hidden, or about to be
  double began_ = 0;       // second of the day when the first byte went
  std::string rate_;       // of what was sent, when all of it is
};

} // namespace calder
