// The Create dialog's form over CreatePages: lays the controls out, forwards what the user does, shows what it says.
#pragma once

#include "tools/create/CreatePages.h"

#include <QDialog>

#include <array>
#include <functional>
#include <memory>

class QLabel;

namespace Ui {
class CreateDialog;
}

namespace calder {

class WaveformCanvas;
class ValueBox;

class CreateDialog final : public QDialog, private CreatePort {
  Q_OBJECT

public:
  // Pages must outlive the form. mainRangeChanged: the main window's markers and readouts follow its range.
  CreateDialog(Program& program, CreatePages& pages, std::function<void()> mainRangeChanged, QWidget* parent);
  ~CreateDialog() override;

  // Prepares the pages for the main window, shows the form and returns when it is closed.
  void OpenFromMainWindow();
  // The same for the Operate dialog: one page, as long as the target's range. redrawOperand is called once an OK has
  // put a waveform into the target's buffer; after Cancel the buffer holds zeros.
  void OpenFromOperate(const OperateTarget& target, std::function<void()> redrawOperand);

  static constexpr const char* kFormName = "CreateDialog";

protected:
  void done(int result) override;

private:
  // CreatePort
  void ShowPage() override;
  void ShowPreview() override;
  void ShowMainRange() override { mainRangeChanged_(); }
  void ShowOperand() override { redrawOperand_(); }
  void SetBusy(bool busy) override;
  void ShowFault(const ExpressionFault& fault) override;
  void Close() override { done(Accepted); }

  void Run();
  void MakeMenus();
  void FillLists();
  void ConnectBoxes();
  void ConnectPages();
  void ConnectExpression();
  void ConnectPreview();
  void CommitFocus();
  void FocusNextOf(int box);
  void TextTyped();
  void MarkFault(const ExpressionFault& fault, bool goThere);
  void StorePosition();

  Program& program_;
  CreatePages& pages_;
  std::function<void()> mainRangeChanged_;
  std::function<void()> redrawOperand_ = [] {}; // nothing but while the Operate dialog has it open
  std::unique_ptr<Ui::CreateDialog> ui_;
  std::array<ValueBox*, kPageBoxes> boxes_{};
  std::array<QLabel*, kPageBoxes> labels_{};
  std::array<QLabel*, kPageBoxes> units_{};
  QAction* fileMenu_ = nullptr;
  bool closing_ = false;
};

} // namespace calder
