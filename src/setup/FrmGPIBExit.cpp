#include "setup/FrmGPIBExit.h"

#include "app/FormPosition.h"
#include "comm/TransferRate.h"
#include "platform/Clock.h"
#include "platform/qt/Text.h"
#include "tools/frame/WindowPosition.h"
#include "ui_FrmGPIBExit.h"

#include <QApplication>
#include <QCloseEvent>
#include <QTimer>

namespace calder {
namespace {

constexpr double kDay = 86400;
constexpr int kLinger = 200; // milliseconds

} // namespace

FrmGPIBExit::FrmGPIBExit(clsRegistry& registry, const ErrMsg& messages, QWidget* parent)
    : QDialog(parent), registry_(registry), messages_(messages), ui_(std::make_unique<Ui::FrmGPIBExit>()) {
  ui_->setupUi(this);
  setWindowModality(Qt::NonModal);
  Set_GpibExitLabel();
  hiding_ = new QTimer(this);
  hiding_->setSingleShot(true);
  connect(hiding_, &QTimer::timeout, this, [this] {
    StorePosition();
    hide();
  });
  connect(ui_->CmdGpibExit, &QPushButton::clicked, this, &FrmGPIBExit::CmdGpibExit_Click);
  if (const auto at = StoredPosition(registry_, kFormName)) move(at->left, at->top);
}

FrmGPIBExit::~FrmGPIBExit() = default;

void FrmGPIBExit::Set_GpibExitLabel() {
  const ErrMsg& language = messages_;
  setWindowTitle(QString::fromUtf8(language.Pick("波形データ転送", "Copy wave data")));
  ui_->CmdGpibExit->setText(QString::fromUtf8(language.Pick("ｷｬﾝｾﾙ", "Cancel")));
  ui_->PrgGPIB->setAccessibleName(QString::fromUtf8(language.Pick("進行状況", "Progress")));
}

void FrmGPIBExit::ShowStep(const QString& text, int maximum) {
  ui_->LblMsg->setText(text);
  ui_->LblRate->clear();
  ui_->PrgGPIB->setRange(0, maximum);
  ui_->PrgGPIB->setValue(0);
}

void FrmGPIBExit::ShowValue(int value) {
  ui_->PrgGPIB->setValue(value);
}

void FrmGPIBExit::ShowRate(const QString& text) {
  ui_->LblRate->setText(text);
}

void FrmGPIBExit::HideSoon() {
  hiding_->start(kLinger);
}

void FrmGPIBExit::KeepOpen() {
  hiding_->stop();
  gpibExit_ = false;
  ui_->CmdGpibExit->setEnabled(true);
  if (isHidden()) show();
}

void FrmGPIBExit::CmdGpibExit_Click() {
  gpibExit_ = true;
  ui_->CmdGpibExit->setEnabled(false);
}

void FrmGPIBExit::reject() {
  CmdGpibExit_Click();
}

void FrmGPIBExit::closeEvent(QCloseEvent* event) {
  StorePosition();
  CmdGpibExit_Click();
  event->accept();
}

void FrmGPIBExit::StorePosition() {
  if (isVisible()) StoreWindowPosition(registry_, kFormName, *this);
}

void ProgressWindow::Open() {
  cancelled_ = false;
  unloaded_ = false;
  rate_.clear();
  if (!form_) form_ = new FrmGPIBExit(registry_, messages_, QApplication::activeModalWidget());
  if (!caption_.empty()) form_->setWindowTitle(Text(caption_));
  form_->KeepOpen();
}

void ProgressWindow::Step(const std::string& text, int maximum) {
  if (!form_ || unloaded_) Open();
  form_->ShowStep(Text(text), maximum);
  clock_.Wait(0, true);
}

void ProgressWindow::Value(int value) {
  if (form_) form_->ShowValue(value);
  QCoreApplication::processEvents();
}

void ProgressWindow::Sent(std::size_t bytes, std::size_t total) {
  const double now = clock_.SecondsOfDay();
  if (bytes == 0) began_ = now;
  const double seconds = now >= began_ ? now - began_ : now + kDay - began_;
  const std::string text = TransferRateText(bytes, total, seconds, messages_.GetLanguage());
  rate_ = bytes == total ? text : std::string();
  if (form_) form_->ShowRate(Text(text));
}

void ProgressWindow::SecondsRemaining(int seconds) {
  if (form_) form_->ShowRate(Text(SecondsLeftText(seconds, messages_.GetLanguage(), rate_)));
}

void ProgressWindow::Caption(const std::string& text) {
  caption_ = text;
  if (form_ && !text.empty()) form_->setWindowTitle(Text(text));
}

void ProgressWindow::Unload() {
  if (!form_ || unloaded_) return;
  cancelled_ = form_->GpibExit();
  unloaded_ = true;
  form_->HideSoon();
}

} // namespace calder
