// The Compress/Decompress dialog's form over Elastic. It is narrow, since the main window beside it is the live
// preview.
#pragma once

#include "tools/elastic/Elastic.h"
#include "tools/frame/ToolForm.h"

#include <array>
#include <memory>

class QLabel;

namespace Ui {
class ElasticDialog;
}

namespace calder {

class ErrMsg;
class ValueBox;

class ElasticDialog final : public ToolForm {
  Q_OBJECT

public:
  // Loads the current range. What is referred to must outlive the form.
  ElasticDialog(std::unique_ptr<Elastic> elastic, clsRegistry& registry, const ConvUnit& units, const ErrMsg& messages,
                QWidget* parent);
  ~ElasticDialog() override;

  static constexpr const char* kFormName = "ElasticDialog";

private:
  void Closing() override { elastic_->Form_QueryUnload(); }
  void Connect();
  void ConnectPicture();
  void EnableBoxes();
  // Boxes, levels, picture, the number of limited points.
  void ShowAll();

  const std::unique_ptr<Elastic> elastic_;
  const ErrMsg& messages_;
  std::unique_ptr<Ui::ElasticDialog> ui_;
  std::array<ValueBox*, 2> x_{};
  std::array<QLabel*, 2> levels_{};
  std::array<ValueBox*, 4> y_{};
};

} // namespace calder
