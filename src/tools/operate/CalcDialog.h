// The Operate dialog's form over Operate: three pictures on one X axis, the operator between the upper two, the button
// that makes the result firm above the lowest.
#pragma once

#include "tools/frame/ToolForm.h"
#include "tools/operate/Operate.h"

#include <array>
#include <functional>
#include <memory>

namespace Ui {
class CalcDialog;
}

namespace calder {

class PreviewPanel;
class WaveformCanvas;

class CalcDialog final : public ToolForm {
  Q_OBJECT

public:
  // Shows the Create dialog for the operand and comes back when it is closed. True: the operand holds what it made.
  using CreateOperand = std::function<bool(QWidget* parent, const Operate& operate, std::function<void()> redraw)>;

  // REQUIRES: operate.Open() succeeded. The others must outlive the form.
  CalcDialog(std::unique_ptr<Operate> operate, clsRegistry& registry, const ConvUnit& units, const ErrMsg& messages,
             CreateOperand createOperand, QWidget* parent);
  ~CalcDialog() override;

  static constexpr const char* kFormName = "CalcDialog";

private:
  struct View {
    Operate::Picture picture;
    PreviewPanel* panel;
  };
  void Btn_Create_Click();
  void Draw(const View& view);
  // The values in all three pictures at that column of one of them.
  void ShowValues(int column, const WaveformCanvas& over);
  // What follows a changed operand, operator or result.
  void ShowOperand();
  void ShowResult();

  std::unique_ptr<Operate> operate_;
  CreateOperand createOperand_;
  std::unique_ptr<Ui::CalcDialog> ui_;
  std::array<View, 3> views_;
};

} // namespace calder
