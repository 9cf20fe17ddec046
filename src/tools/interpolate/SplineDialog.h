// The Interpolate dialog's form over SplineDesk. It stands beside the main window.
#pragma once

#include "app/Messages.h"
#include "tools/frame/ToolForm.h"
#include "tools/interpolate/SplineDesk.h"

#include <memory>

namespace Ui {
class SplineDialog;
}

namespace calder {

class Program;
class PointGridModel;

class SplineDialog final : public ToolForm, private SplinePort {
  Q_OBJECT

public:
  // The desk must outlive the form.
  SplineDialog(Program& program, SplineDesk& desk, QWidget* parent);
  ~SplineDialog() override;

  static constexpr const char* kFormName = "SplineDialog";

private:
  void Closing() override { desk_.Form_QueryUnload(); }

  // SplinePort
  void ShowPoints() override;
  void ShowRow() override;
  void HideCellEditor() override;
  void ShowRefusal(const std::string& text) override;

  void Connect();

  const ErrMsg& messages_;
  SplineDesk& desk_;
  std::unique_ptr<Ui::SplineDialog> ui_;
  PointGridModel* model_ = nullptr;
  bool showing_ = false; // the grid's current row is being set
};

} // namespace calder
