#include "tools/import/ImportDialog.h"

#include "app/Messages.h"
#include "platform/qt/Text.h"
#include "tools/import/ImportCaptions.h"
#include "ui_ImportDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QSpinBox>

namespace calder {
namespace {

constexpr int kListCharacters = 12; // a list may be narrower than its longest entry

QString ControlName(const char* prefix, const PluginOption& option) {
  return QLatin1String(prefix) + Text(option.key);
}

} // namespace

ImportDialog::ImportDialog(clsRegistry& registry, const ErrMsg& messages, const std::string& name, PluginForm& form,
                           const PluginSp::ChangeOption& change, const std::function<void()>& stop, QWidget* parent)
    : ToolForm(registry, kFormName, parent), form_(form), change_(change), stop_(stop),
      ui_(std::make_unique<Ui::ImportDialog>()) {
  ui_->setupUi(this);
  SetImportDialogCaptions(*this, messages, name);
  ui_->Text_Preview->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  ShowForm();
  if (QLayoutItem* first = ui_->Layout_Options->itemAt(0, QFormLayout::FieldRole)) first->widget()->setFocus();
  connect(ui_->Btn_OK, &QPushButton::clicked, this, [this] { Leave(Accepted); });
  connect(ui_->Btn_Cancel, &QPushButton::clicked, this, [this] { Leave(Rejected); });
  Place({560, 480});
}

ImportDialog::~ImportDialog() {
  DisconnectControls();
}

void ImportDialog::Build() {
  while (ui_->Layout_Options->rowCount() > 0) ui_->Layout_Options->removeRow(0);
  rows_.clear();
  keys_.clear();
  QWidget* last = nullptr;
  for (std::size_t i = 0; i < form_.options.size(); ++i) {
    const PluginOption& option = form_.options[i];
    Row row;
    QWidget* control = nullptr;
    // NOLINTBEGIN(cppcoreguidelines-owning-memory): the form owns them
    switch (option.kind) {
    case PluginOption::Kind::Choice:
      control = row.list = new QComboBox(this);
      row.list->setObjectName(ControlName("Comb_", option));
      row.list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
      row.list->setMinimumContentsLength(kListCharacters);
      connect(row.list, &QComboBox::currentIndexChanged, this, [this, i](int index) { Change(i, index); });
      break;
    case PluginOption::Kind::Number:
      control = row.box = new QSpinBox(this);
      row.box->setObjectName(ControlName("Num_", option));
      row.box->setKeyboardTracking(false); // a typed number counts when it is complete
      connect(row.box, &QSpinBox::valueChanged, this, [this, i](int value) { Change(i, value); });
      break;
    case PluginOption::Kind::Truth:
      control = row.check = new QCheckBox(this);
      row.check->setObjectName(ControlName("Check_", option));
      connect(row.check, &QCheckBox::toggled, this, [this, i](bool on) { Change(i, on ? 1 : 0); });
      break;
    }
    // NOLINTEND(cppcoreguidelines-owning-memory)
    control->setAccessibleName(Text(option.caption));
    ui_->Layout_Options->addRow(Text(option.caption), control);
    rows_.push_back(row);
    keys_.push_back(option.key);
    if (last != nullptr) setTabOrder(last, control);
    last = control;
  }
  if (last == nullptr) return;
  for (QWidget* below : {static_cast<QWidget*>(ui_->Text_Preview), static_cast<QWidget*>(ui_->Btn_OK),
                         static_cast<QWidget*>(ui_->Btn_Cancel)}) {
    setTabOrder(last, below);
    last = below;
  }
}

void ImportDialog::ShowForm() {
  showing_ = true;
  bool same = keys_.size() == form_.options.size();
  for (std::size_t i = 0; same && i < keys_.size(); ++i) {
    const PluginOption& option = form_.options[i];
    same = keys_[i] == option.key && (rows_[i].list != nullptr) == (option.kind == PluginOption::Kind::Choice) &&
           (rows_[i].box != nullptr) == (option.kind == PluginOption::Kind::Number);
  }
  if (!same) Build();
  for (std::size_t i = 0; i < rows_.size(); ++i) ShowOption(form_.options[i], rows_[i]);
  const bool previews = !form_.preview.empty();
  ui_->Text_Preview->setVisible(previews);
  ui_->Label_Preview->setVisible(previews);
  ui_->Text_Preview->setPlainText(Text(form_.preview));
  showing_ = false;
}

void ImportDialog::ShowOption(const PluginOption& option, const Row& row) const {
  if (row.list != nullptr) {
    QStringList texts;
    for (const std::string& choice : option.choices) texts << Text(choice);
    row.list->clear();
    row.list->addItems(texts);
    row.list->setCurrentIndex(static_cast<int>(option.value));
    row.list->setToolTip(row.list->currentText()); // in case it is wider than its place
  } else if (row.box != nullptr) {
    row.box->setRange(static_cast<int>(option.minimum), static_cast<int>(option.maximum));
    row.box->setValue(static_cast<int>(option.value));
  } else {
    row.check->setChecked(option.value != 0);
  }
}

void ImportDialog::Change(std::size_t place, double value) {
  if (showing_ || changing_) return;
  const std::string key = form_.options[place].key;
  // The plug-in may take its time, and events go on: nothing but Cancel can be pressed meanwhile.
  changing_ = true;
  const bool changed = change_(key, value, form_);
  changing_ = false;
  if (!changed) {
    done(waiting_ == Rejected ? Rejected : Accepted);
    return;
  }
  ShowForm();
  if (waiting_ >= 0) done(waiting_);
}

void ImportDialog::Leave(int result) {
  if (!changing_) {
    done(result);
    return;
  }
  waiting_ = result;
  if (result == Rejected) stop_();
}

} // namespace calder
