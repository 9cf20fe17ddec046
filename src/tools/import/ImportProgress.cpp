#include "tools/import/ImportProgress.h"

#include "tools/import/ImportCaptions.h"
#include "ui_ImportProgress.h"

namespace calder {

ImportProgress::ImportProgress(const ErrMsg& messages, std::function<void()> cancel, QWidget* parent)
    : QDialog(parent), cancel_(std::move(cancel)), ui_(std::make_unique<Ui::ImportProgress>()) {
  ui_->setupUi(this);
  setWindowModality(Qt::ApplicationModal);
  SetImportProgressCaptions(*this, messages);
  connect(ui_->Btn_Cancel, &QPushButton::clicked, this, &ImportProgress::reject);
}

ImportProgress::~ImportProgress() = default;

void ImportProgress::ShowFraction(double fraction) {
  ui_->Bar_Import->setValue(static_cast<int>(fraction * ui_->Bar_Import->maximum()));
}

void ImportProgress::reject() {
  ui_->Btn_Cancel->setEnabled(false);
  cancel_();
}

} // namespace calder
