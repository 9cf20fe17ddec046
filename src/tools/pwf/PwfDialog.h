// The parameter-variable waveform dialog's form over PwfDesk: lays the controls out, forwards what the user does, shows
// what it says.
#pragma once

#include "app/Messages.h"
#include "tools/frame/ToolForm.h"
#include "tools/pwf/PwfDesk.h"

#include <array>
#include <memory>

class QLabel;
class QSlider;

namespace Ui {
class PwfDialog;
}

namespace calder {

class Program;
class ValueBox;

class PwfDialog final : public ToolForm, private PwfPort {
  Q_OBJECT

public:
  // The desk must outlive the form. Opens it; the caller shows the form.
  PwfDialog(Program& program, PwfDesk& desk, QWidget* parent);
  ~PwfDialog() override;

  static constexpr const char* kFormName = "PwfDialog";

protected:
  // A double click on a parameter's name gives the value of the definitions file back; without the pointer the preview
  // has no value to show.
  bool eventFilter(QObject* watched, QEvent* event) override;
  // Escape in a box whose text was refused takes that back before it closes the form.
  void keyPressEvent(QKeyEvent* event) override;

private:
  void Closing() override { desk_.Form_QueryUnload(); }

  // PwfPort
  void ShowList() override;
  void ShowFunction() override;
  void ShowParameters() override;
  void ShowPreview() override;
  void GoToBox(int j) override;
  void SetBusy(bool busy) override;
  void ShowFault(const ExpressionFault& fault) override;
  void Close() override { done(Accepted); }

  // A parameter's row.
  struct Row {
    QLabel* name = nullptr;
    ValueBox* box = nullptr;
    QLabel* limits = nullptr;
    QSlider* slider = nullptr;
  };
  void ConnectRows();
  void ConnectList();
  void ConnectPicture();
  void FocusNextOf(int j);
  void FilterList(const QString& part);
  void ShowNotes(const QString& fault);
  [[nodiscard]] QPixmap CurveOf(int function);

  const ErrMsg& messages_;
  PwfDesk& desk_;
  std::unique_ptr<Ui::PwfDialog> ui_;
  std::array<Row, PwfTable::kMaxParams> rows_{};
  int refusedNow_ = -1; // the box whose text was refused just now: what the user did with it does not go on
};

} // namespace calder
