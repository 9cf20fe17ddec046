#include "tools/elastic/ElasticDialog.h"

#include "app/ConvUnit.h"
#include "app/Messages.h"
#include "platform/WaveformTheme.h"
#include "platform/qt/Text.h"
#include "platform/qt/ValueBox.h"
#include "tools/elastic/ElasticCaptions.h"
#include "tools/frame/PreviewPanel.h"
#include "ui_ElasticDialog.h"

namespace calder {
namespace {

constexpr int kXCharacters = 13;
constexpr int kYCharacters = 10;

} // namespace

ElasticDialog::ElasticDialog(std::unique_ptr<Elastic> elastic, clsRegistry& registry, const ConvUnit& units,
                             const ErrMsg& messages, QWidget* parent)
    : ToolForm(registry, kFormName, parent), elastic_(std::move(elastic)), messages_(messages),
      ui_(std::make_unique<Ui::ElasticDialog>()) {
  ui_->setupUi(this);
  ui_->Panel_Whole->NameParts("Whole");
  SetElasticCaptions(*this, messages);
  x_ = {ui_->Text_X_0, ui_->Text_X_1};
  levels_ = {ui_->Label_Level_0, ui_->Label_Level_1};
  y_ = {ui_->Text_Y_0, ui_->Text_Y_1, ui_->Text_Y_2, ui_->Text_Y_3};
  for (ValueBox* box : x_) box->SetCharacters(kXCharacters);
  for (ValueBox* box : y_) box->SetCharacters(kYCharacters);
  for (QLabel* label : {ui_->Label_XUnit_0, ui_->Label_XUnit_1}) label->setText(Text(units.XUnitName()));
  for (QLabel* label : {ui_->Label_LevelUnit_0, ui_->Label_LevelUnit_1, ui_->Label_YUnit_0, ui_->Label_YUnit_1,
                        ui_->Label_YUnit_2, ui_->Label_YUnit_3})
    label->setText(Text(units.YUnitName()));
  QPalette red;
  red.setColor(QPalette::WindowText, QColor(theme::kFault));
  ui_->Label_Limited->setPalette(red);
  ui_->Panel_Whole->ShowY(PreviewLabels(units), Text(units.YUnitName()));
  ui_->Panel_Whole->ShowX(Text(elastic_->WholeStartText()), Text(elastic_->WholeEndText()));
  elastic_->Form_Load();
  Connect();
  ConnectPicture();
  EnableBoxes();
  ShowAll();
  x_[0]->setFocus();
  Place({440, 560}, FirstPlace::Beside);
}

ElasticDialog::~ElasticDialog() {
  DisconnectControls();
}

void ElasticDialog::Connect() {
  for (int i = 0; i < 2; ++i) {
    connect(x_[static_cast<std::size_t>(i)], &ValueBox::EditingFinished, this, [this, i](const QString& text) {
      elastic_->Text_X_LostFocus(i, text.toStdString());
      ShowAll();
    });
  }
  for (int i = 0; i < 4; ++i) {
    connect(y_[static_cast<std::size_t>(i)], &ValueBox::EditingFinished, this, [this, i](const QString& text) {
      elastic_->Text_Y_LostFocus(i, text.toStdString());
      ShowAll();
    });
  }
  connect(ui_->Opt_Y_0, &QRadioButton::toggled, this, &ElasticDialog::EnableBoxes);
  const struct {
    QPushButton* button;
    void (Elastic::*click)();
  } fits[] = {{ui_->Btn_Length, &Elastic::Btn_Length_Click},
              {ui_->Btn_Peak, &Elastic::Btn_Peak_Click},
              {ui_->Btn_Ampl, &Elastic::Btn_Ampl_Click}};
  for (const auto& fit : fits) {
    On(fit.button, [this, click = fit.click] {
      (elastic_.get()->*click)();
      ShowAll();
    });
  }
  On(ui_->Btn_OK, [this] {
    elastic_->Btn_OK_Click();
    done(Accepted);
  });
  On(ui_->Btn_Cancel, [this] { done(Rejected); });
}

void ElasticDialog::ConnectPicture() {
  WaveformCanvas* picture = &ui_->Panel_Whole->Picture();
  connect(picture, &WaveformCanvas::Resized, this, &ElasticDialog::ShowAll);
  connect(picture, &WaveformCanvas::Pressed, this, [this, picture](QPoint pixel, Qt::MouseButton button) {
    if (button == Qt::LeftButton) elastic_->Press(pixel.x(), picture->PixelWidth(), picture->Scale());
  });
  connect(picture, &WaveformCanvas::Moved, this, [this, picture](QPoint pixel) {
    if (elastic_->Move(pixel.x(), picture->PixelWidth())) ShowAll();
    const bool over = elastic_->Hover(pixel.x(), picture->PixelWidth(), picture->Scale());
    picture->setCursor(over ? Qt::SizeHorCursor : Qt::ArrowCursor);
  });
  connect(picture, &WaveformCanvas::Released, this, [this] { elastic_->Release(); });
  connect(ui_->Panel_Whole, &PreviewPanel::Pointed, this, [this, picture](int column) {
    ui_->Panel_Whole->ShowValue(Text(elastic_->ValueText(column, picture->PixelWidth())));
  });
}

// The option says which pair can be typed; the other one follows.
void ElasticDialog::EnableBoxes() {
  const bool peaks = ui_->Opt_Y_0->isChecked();
  for (std::size_t i = 0; i < y_.size(); ++i) y_[i]->setEnabled((i < 2) == peaks);
}

void ElasticDialog::ShowAll() {
  for (int i = 0; i < 2; ++i) {
    x_[static_cast<std::size_t>(i)]->ShowText(Text(elastic_->XText(i)));
    levels_[static_cast<std::size_t>(i)]->setText(Text(elastic_->XLevelText(i)));
  }
  for (int i = 0; i < 4; ++i) y_[static_cast<std::size_t>(i)]->ShowText(Text(elastic_->YText(i)));
  const std::int32_t limited = elastic_->Limited();
  const std::string count = std::to_string(limited);
  ui_->Label_Limited->setText(limited == 0                                   ? QString()
                              : messages_.GetLanguage() == Language::English ? Text("limited: " + count + " points")
                                                                             : Text("制限: " + count + " 点"));
  PixelContext context = ui_->Panel_Whole->Picture().Context();
  elastic_->Draw(context);
  ui_->Panel_Whole->Picture().Show();
}

} // namespace calder
