// The settings of an import, as the plug-in describes them: a control an option, and what they make of the file.
#pragma once

#include "libs/pluginsp/PluginSp.h"
#include "tools/frame/ToolForm.h"

#include <functional>
#include <memory>

class QCheckBox;
class QComboBox;
class QSpinBox;

namespace Ui {
class ImportDialog;
}

namespace calder {

class ErrMsg;

class ImportDialog final : public ToolForm {
  Q_OBJECT

public:
  // Everything must outlive the form. change, stop: see ImportPort::AskOptions. exec() gives Accepted when the file is
  // to be read; also after a change that failed, which the reading then reports.
  ImportDialog(clsRegistry& registry, const ErrMsg& messages, const std::string& name, PluginForm& form,
               const PluginSp::ChangeOption& change, const std::function<void()>& stop, QWidget* parent);
  ~ImportDialog() override;

  static constexpr const char* kFormName = "ImportDialog";

private:
  // The control of an option; one of the three.
  struct Row {
    QComboBox* list = nullptr;
    QSpinBox* box = nullptr;
    QCheckBox* check = nullptr;
  };
  void Build();
  // What the controls and the preview show; the controls are made anew when the options are others than before.
  void ShowForm();
  void ShowOption(const PluginOption& option, const Row& row) const;
  void Change(std::size_t place, double value);
  void Leave(int result);

  PluginForm& form_;
  const PluginSp::ChangeOption& change_;
  const std::function<void()>& stop_;
  std::unique_ptr<Ui::ImportDialog> ui_;
  std::vector<Row> rows_;
  std::vector<std::string> keys_; // of the options that rows_ stand for
  bool showing_ = false;          // controls are being filled: their signals mean nothing
  bool changing_ = false;         // the plug-in works on a change: no other one can be made
  int waiting_ = -1;              // how the form is left when that is done; -1: it stays
};

} // namespace calder
