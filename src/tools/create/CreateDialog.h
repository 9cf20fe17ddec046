// The Create dialog's form over CreatePages: lays the controls out, forwards what the user does, shows what it says.
#pragma once

#include "app/ConvUnit.h"
#include "app/Messages.h"
#include "tools/create/CreatePages.h"
#include "tools/frame/ToolForm.h"

#include <array>
#include <functional>
#include <memory>

class QLabel;

namespace Ui {
class CreateDialog;
}

namespace calder {

class Program;
class WaveformCanvas;
class ValueBox;

class CreateDialog final : public ToolForm, private CreatePort {
  Q_OBJECT

public:
  // Pages must outlive the form.
  CreateDialog(Program& program, CreatePages& pages, QWidget* parent);
  ~CreateDialog() override;

  // Prepares the pages for the main window. The caller shows the form.
  void PrepareForMainWindow();
  // The same for the Operate dialog: one page, as long as the target's range. redrawOperand is called once an OK has
  // put a waveform into the target's buffer; after Cancel the buffer holds zeros.
  void PrepareForOperate(const OperateTarget& target, std::function<void()> redrawOperand);

  static constexpr const char* kFormName = "CreateDialog";

private:
  void Closing() override { pages_.Form_QueryUnload(); }

  // CreatePort
  void ShowPage() override;
  void ShowPreview() override;
  void ShowOperand() override { redrawOperand_(); }
  void SetBusy(bool busy) override;
  void ShowFault(const ExpressionFault& fault) override;
  void Close() override { done(Accepted); }

  void FocusFirst();
  void MakeMenus();
  void FillLists();
  void ConnectBoxes();
  void ConnectPages();
  void ConnectExpression();
  void ConnectPreview();
  void FocusNextOf(int box);
  void TextTyped();
  void MarkFault(const ExpressionFault& fault, bool goThere);

  bool& formSetup_;
  const ErrMsg& messages_;
  const ConvUnit& units_;
  const Language language_;
  CreatePages& pages_;
  std::function<void()> redrawOperand_ = [] {}; // nothing but while the Operate dialog has it open
  std::unique_ptr<Ui::CreateDialog> ui_;
  std::array<ValueBox*, kPageBoxes> boxes_{};
  std::array<QLabel*, kPageBoxes> labels_{};
  std::array<QLabel*, kPageBoxes> unitLabels_{};
  QAction* fileMenu_ = nullptr;
};

} // namespace calder
