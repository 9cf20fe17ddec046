#include "tools/operate/CalcDialog.h"

#include "app/ConvUnit.h"
#include "platform/WaveformTheme.h"
#include "platform/qt/Text.h"
#include "tools/frame/PreviewPanel.h"
#include "tools/operate/CalcCaptions.h"
#include "ui_CalcDialog.h"

namespace calder {
namespace {

constexpr int kOperatorSize = 10; // points

void ShowFaults(QLabel* label, const std::string& text, const CalcFaultCount& count) {
  label->setText(Text(text));
  QPalette palette;
  if (!count.None()) palette.setColor(QPalette::WindowText, QColor(theme::kFault));
  label->setPalette(palette);
}

} // namespace

CalcDialog::CalcDialog(std::unique_ptr<Operate> operate, clsRegistry& registry, const ConvUnit& units,
                       const ErrMsg& messages, CreateOperand createOperand, QWidget* parent)
    : ToolForm(registry, kFormName, parent), operate_(std::move(operate)), createOperand_(std::move(createOperand)),
      ui_(std::make_unique<Ui::CalcDialog>()) {
  ui_->setupUi(this);
  views_ = {View{Operate::Picture::Source, ui_->Panel_Src}, View{Operate::Picture::Operand, ui_->Panel_Dest},
            View{Operate::Picture::Result, ui_->Panel_Result}};
  ui_->Panel_Src->NameParts("Src");
  ui_->Panel_Dest->NameParts("Dest");
  ui_->Panel_Result->NameParts("Result");
  SetCalcCaptions(*this, messages);
  ui_->Comb_Comp->addItems({QStringLiteral("+"), QStringLiteral("-"), QStringLiteral("*"), QStringLiteral("/")});
  QFont font = this->font();
  if (messages.GetLanguage() == Language::Japanese) font.setFamilies({QStringLiteral("Symbol"), font.family()});
  font.setPointSize(kOperatorSize);
  ui_->Comb_Comp->setFont(font);
  ui_->Btn_Result->setFont(font);
  // They may wrap, and the pictures are not to give way then.
  for (QLabel* label : {ui_->Label_Operand, ui_->Label_Pending})
    label->setMinimumHeight(2 * fontMetrics().lineSpacing());
  for (const View& view : views_) {
    view.panel->ShowY(PreviewLabels(units), Text(units.YUnitName()));
    connect(&view.panel->Picture(), &WaveformCanvas::Resized, this, [this, view] { Draw(view); });
    connect(view.panel, &PreviewPanel::Pointed, this,
            [this, view](int column) { ShowValues(column, view.panel->Picture()); });
  }
  ui_->Panel_Result->ShowX(Text(operate_->StartText()), Text(operate_->EndText()));
  connect(ui_->Comb_Comp, &QComboBox::currentIndexChanged, this, [this](int operation) {
    operate_->Comb_Comp_Click(operation);
    ShowResult();
  });
  On(ui_->Btn_Create, [this] { Btn_Create_Click(); });
  On(ui_->Btn_Cut, [this] {
    operate_->Btn_Cut_Click();
    ShowOperand();
  });
  On(ui_->Btn_Result, [this] {
    operate_->Btn_Result_Click();
    ShowResult();
  });
  On(ui_->Btn_OK, [this] {
    operate_->Btn_OK_Click();
    done(Accepted);
  });
  On(ui_->Btn_Cancel, [this] { done(Rejected); });
  ShowOperand();
  ui_->Comb_Comp->setFocus();
  Place({760, 620});
}

CalcDialog::~CalcDialog() {
  DisconnectControls();
}

void CalcDialog::Btn_Create_Click() {
  const bool made = createOperand_(this, *operate_, [this] { Draw(views_[1]); });
  if (made) {
    operate_->OperandCreated();
  } else {
    operate_->OperandCleared();
  }
  ShowOperand();
}

void CalcDialog::Draw(const View& view) {
  PixelContext context = view.panel->Picture().Context();
  operate_->Draw(view.picture, context);
  view.panel->Picture().Show();
}

void CalcDialog::ShowValues(int column, const WaveformCanvas& over) {
  for (const View& view : views_)
    view.panel->ShowValue(Text(operate_->ValueText(view.picture, column, over.PixelWidth())));
}

void CalcDialog::ShowOperand() {
  Draw(views_[1]);
  ui_->Label_Operand->setText(Text(operate_->OperandText()));
  ShowResult();
}

void CalcDialog::ShowResult() {
  Draw(views_[2]);
  ui_->Label_Scale->setText(Text(operate_->ScaleText()));
  ShowFaults(ui_->Label_Limited, operate_->FirmText(), operate_->FirmFaults());
  ShowFaults(ui_->Label_Pending, operate_->PendingText(), operate_->PendingFaults());
}

} // namespace calder
