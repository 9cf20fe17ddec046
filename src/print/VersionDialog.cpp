#include "print/VersionDialog.h"

#include "platform/qt/SvgIcon.h"
#include "platform/qt/Text.h"
#include "ui_VersionDialog.h"

#include <QClipboard>
#include <QGuiApplication>

namespace calder {
namespace {

constexpr int kIconSize = 48;

} // namespace

VersionDialog::VersionDialog(const VersionText& text, const QStringList& components, const ErrMsg& language,
                             QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::VersionDialog>()) {
  ui_->setupUi(this);
  setWindowTitle(Text(text.caption));
  ui_->Label1->setText(Text(text.product));
  ui_->Label2->setText(Text(text.version));
  ui_->Label3->setText(Text(text.notice));
  ui_->Label_Components->setText(components.join(QLatin1Char('\n')));
  ui_->Label_Icon->setPixmap(IconNamed("calder").pixmap(kIconSize));
  ui_->Command1->setText(QStringLiteral("OK"));
  ui_->Btn_Copy->setText(QString::fromUtf8(language.Pick("ｺﾋﾟｰ(&C)", "&Copy")));
  ui_->Btn_Copy->setToolTip(QString::fromUtf8(language.Pick("不具合の報告用に,この内容をクリップボードへコピーします。",
                                                            "Copies these lines for a fault report.")));
  connect(ui_->Command1, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->Btn_Copy, &QPushButton::clicked, this, [this, components] {
    QStringList lines{ui_->Label1->text(), ui_->Label2->text()};
    QGuiApplication::clipboard()->setText((lines + components).join(QLatin1Char('\n')));
  });
  layout()->setSizeConstraint(QLayout::SetFixedSize); // as wide as the widest line
}

VersionDialog::~VersionDialog() = default;

} // namespace calder
