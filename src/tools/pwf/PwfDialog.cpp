#include "tools/pwf/PwfDialog.h"

#include "app/Program.h"
#include "platform/WaveformTheme.h"
#include "platform/qt/Text.h"
#include "platform/qt/ValueBox.h"
#include "platform/qt/WaveformCanvas.h"
#include "tools/pwf/PwfCaptions.h"
#include "ui_PwfDialog.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMenu>

namespace calder {
namespace {

constexpr int kValueCharacters = 12;

void Colour(QWidget& control, QPalette::ColorRole role, bool isRefused) {
  QPalette palette;
  if (isRefused) palette.setColor(role, QColor(0xFF, 0x7A, 0x6E));
  control.setPalette(palette);
}

} // namespace

PwfDialog::PwfDialog(Program& program, PwfDesk& desk, QWidget* parent)
    : ToolForm(program.registry, kFormName, parent), messages_(program.messages), desk_(desk),
      ui_(std::make_unique<Ui::PwfDialog>()) {
  ui_->setupUi(this);
  rows_ = {{{ui_->Label_Param_0, ui_->Text_0, ui_->Label_Limits_0, ui_->Slider_0},
            {ui_->Label_Param_1, ui_->Text_1, ui_->Label_Limits_1, ui_->Slider_1},
            {ui_->Label_Param_2, ui_->Text_2, ui_->Label_Limits_2, ui_->Slider_2},
            {ui_->Label_Param_3, ui_->Text_3, ui_->Label_Limits_3, ui_->Slider_3},
            {ui_->Label_Param_4, ui_->Text_4, ui_->Label_Limits_4, ui_->Slider_4}}};
  const ErrMsg& language = messages_;
  AddMenu("Menu_File", QString::fromUtf8(language.Pick("ﾌｧｲﾙ(&F)", "&File")),
          {ui_->Menu_FileOpen, ui_->Menu_FileSave, ui_->Menu_Print});
  AddMenu("Menu_Edit", QString::fromUtf8(language.Pick("編集(&E)", "&Edit")), {ui_->Menu_Restore});
  SetPwfCaptions(*this, language);
  ui_->Panel_Formula->hide();
  ui_->Frame_Param->setMinimumWidth(290); // alike for every function, so that the preview stays where it is
  ConnectRows();
  ConnectList();
  ConnectPicture();
  On(ui_->Menu_FileOpen, [this] { desk_.Menu_FileOpen_Click(); });
  On(ui_->Menu_FileSave, [this] { desk_.Menu_FileSave_Click(); });
  On(ui_->Menu_Print, [this] { Q_EMIT PrintWanted(); });
  On(ui_->Menu_Restore, [this] { desk_.Restore(desk_.ParameterChoice()); });
  On(ui_->Btn_OK, [this] {
    const int refused = std::exchange(refusedNow_, -1);
    if (refused >= 0 && desk_.IsRefused(refused)) {
      GoToBox(refused);
    } else {
      desk_.Btn_OK_Click();
    }
  });
  On(ui_->Btn_Cancel, [this] { desk_.Btn_Cancel_Click(); });
  desk_.SetPort(this);
  desk_.Form_Load();
  Place({1020, 560});
  ui_->Comb_Wave->setFocus();
}

PwfDialog::~PwfDialog() {
  DisconnectControls();
  desk_.SetPort(nullptr);
}

void PwfDialog::ConnectRows() {
  for (int j = 0; j < PwfTable::kMaxParams; ++j) {
    const Row& row = rows_[static_cast<std::size_t>(j)];
    row.box->SetCharacters(kValueCharacters);
    row.name->installEventFilter(this);
    connect(row.box, &ValueBox::EditingFinished, this, [this, j](const QString& text) {
      const bool taken = desk_.Text_Validate(j, text.toStdString());
      refusedNow_ = taken ? -1 : j;
    });
    connect(row.box, &ValueBox::FocusNext, this, [this, j] { FocusNextOf(j); });
    connect(row.slider, &QSlider::valueChanged, this, [this, j](int position) { desk_.Slider_Change(j, position); });
  }
  QList<QAbstractSlider*> bars{ui_->HScroll1};
  for (const Row& row : rows_) bars.append(row.slider);
  for (QAbstractSlider* bar : bars) {
    connect(bar, &QAbstractSlider::sliderPressed, this, [this] { desk_.Scroll_Pressed(); });
    connect(bar, &QAbstractSlider::sliderReleased, this, [this] { desk_.Scroll_Released(); });
  }
  ui_->HScroll1->setInvertedControls(false); // as on the sliders the right arrow and the wheel upwards raise the value
  connect(ui_->HScroll1, &QScrollBar::valueChanged, this, [this](int position) { desk_.HScroll1_Change(position); });
  connect(ui_->Comb_PrmSel, &QComboBox::currentIndexChanged, this, [this](int j) { desk_.Comb_PrmSel_Click(j); });
  connect(ui_->Btn_Formula, &QToolButton::toggled, this, [this](bool open) {
    ui_->Btn_Formula->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
    ui_->Panel_Formula->setVisible(open);
  });
}

void PwfDialog::ConnectList() {
  connect(ui_->Comb_Wave, &QListWidget::currentRowChanged, this, [this](int row) { desk_.Comb_Wave_Click(row); });
  connect(ui_->Txt_Search, &QLineEdit::textChanged, this, &PwfDialog::FilterList);
  connect(ui_->Txt_Search, &QLineEdit::returnPressed, this, [this] { ui_->Comb_Wave->setFocus(); });
}

void PwfDialog::ConnectPicture() {
  WaveformCanvas* picture = ui_->PictWave;
  picture->installEventFilter(this);
  connect(picture, &WaveformCanvas::Resized, this, [this] { ShowPreview(); });
  connect(picture, &WaveformCanvas::Moved, this, [this, picture](QPoint pixel) {
    ui_->Label_Pointer->setText(Text(desk_.PointerText(pixel.x(), picture->PixelWidth())));
  });
}

bool PwfDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->PictWave && event->type() == QEvent::Leave) ui_->Label_Pointer->clear();
  if (event->type() == QEvent::MouseButtonDblClick) {
    for (int j = 0; j < PwfTable::kMaxParams; ++j) {
      if (watched != rows_[static_cast<std::size_t>(j)].name) continue;
      desk_.Restore(j);
      return true;
    }
  }
  return ToolForm::eventFilter(watched, event);
}

void PwfDialog::keyPressEvent(QKeyEvent* event) {
  for (int j = 0; j < desk_.Function().ParamCount; ++j) {
    if (event->key() != Qt::Key_Escape || focusWidget() != rows_[static_cast<std::size_t>(j)].box) continue;
    if (!desk_.IsRefused(j)) break;
    desk_.Revert(j);
    GoToBox(j);
    return;
  }
  ToolForm::keyPressEvent(event);
}

void PwfDialog::FocusNextOf(int j) {
  if (std::exchange(refusedNow_, -1) == j) {
    GoToBox(j);
    return;
  }
  // The limit that stands in place of a refused text is taken by a second press.
  const ValueBox* box = rows_[static_cast<std::size_t>(j)].box;
  if (desk_.IsRefused(j) && !desk_.Text_Validate(j, box->text().toStdString())) {
    GoToBox(j);
  } else if (j + 1 < desk_.Function().ParamCount) {
    rows_[static_cast<std::size_t>(j) + 1].box->setFocus(Qt::TabFocusReason);
  } else {
    ui_->Slider_0->setFocus(Qt::TabFocusReason);
  }
}

void PwfDialog::FilterList(const QString& part) {
  for (int row = 0; row < ui_->Comb_Wave->count(); ++row) {
    QListWidgetItem* item = ui_->Comb_Wave->item(row);
    const bool fits = item->text().contains(part, Qt::CaseInsensitive);
    item->setHidden(!fits || !desk_.Table()[row].IsDefined());
  }
}

QPixmap PwfDialog::CurveOf(int function) {
  const double scale = devicePixelRatioF();
  QImage image((QSizeF(ui_->Comb_Wave->iconSize()) * scale).toSize(), QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  const auto pixels = static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height());
  // Rows of 32-bit pixels are never filled up.
  PixelContext context({reinterpret_cast<std::uint32_t*>(image.bits()), pixels}, // NOLINT: the image's own pixels
                       static_cast<std::size_t>(image.width()), image.width(), image.height(), scale);
  desk_.DrawCurve(function, context);
  return QPixmap::fromImage(image);
}

void PwfDialog::ShowList() {
  ui_->Comb_Wave->clear();
  for (int k = 0; k < PwfTable::kFunctions; ++k) {
    auto* item = new QListWidgetItem(Text(desk_.Table()[k].FuncName), ui_->Comb_Wave);
    if (desk_.Table()[k].IsDefined()) item->setIcon(QIcon(CurveOf(k)));
  }
  FilterList(ui_->Txt_Search->text());
  ShowNotes({});
}

void PwfDialog::ShowFunction() {
  const PwfFunction& function = desk_.Function();
  ui_->Comb_Wave->setCurrentRow(function.IsDefined() ? desk_.IsWaveIdx() : -1);
  ui_->Comb_PrmSel->clear();
  for (int j = 0; j < PwfTable::kMaxParams; ++j) {
    const Row& row = rows_[static_cast<std::size_t>(j)];
    const bool shown = j < function.ParamCount;
    const QString name = Text(function.Params[static_cast<std::size_t>(j)].ParamName);
    row.name->setText(name);
    row.box->setAccessibleName(name);
    row.slider->setAccessibleName(name);
    row.limits->setText(shown ? Text(desk_.LimitsText(j)) : QString());
    if (shown) {
      ui_->Comb_PrmSel->addItem(name);
      const ScrollRange range = desk_.Scroll(j);
      row.slider->setRange(static_cast<int>(range.Min), static_cast<int>(range.Max));
      row.slider->setPageStep(std::max(1, static_cast<int>(range.Max - range.Min) / 10));
    }
    for (QWidget* control : {static_cast<QWidget*>(row.name), static_cast<QWidget*>(row.box),
                             static_cast<QWidget*>(row.limits), static_cast<QWidget*>(row.slider)})
      control->setVisible(shown);
  }
  ui_->Label_Remark->setText(Text(desk_.Remark()));
  ui_->Txt_Formula->setPlainText(Text(function.Formula));
  ui_->Txt_Fixed->setPlainText(Text(function.FixedConstants));
  const PreviewLabels labels = desk_.Labels();
  ui_->Label_Max->setText(Text(labels.max));
  ui_->Label_Offs->setText(Text(labels.offset));
  ui_->Label_Min->setText(Text(labels.min));
  for (QWidget* control : {static_cast<QWidget*>(ui_->Btn_OK), static_cast<QWidget*>(ui_->HScroll1),
                           static_cast<QWidget*>(ui_->Comb_PrmSel)})
    control->setEnabled(function.IsDefined());
  ui_->Menu_FileSave->setEnabled(function.IsDefined());
  ShowParameters();
}

void PwfDialog::ShowParameters() {
  for (int j = 0; j < desk_.Function().ParamCount; ++j) {
    const Row& row = rows_[static_cast<std::size_t>(j)];
    row.box->ShowText(Text(desk_.ParameterText(j)));
    row.slider->setValue(desk_.ScrollPosition(j));
    Colour(*row.box, QPalette::Text, desk_.IsRefused(j));
    Colour(*row.limits, QPalette::WindowText, desk_.IsRefused(j));
  }
  const int choice = desk_.ParameterChoice();
  if (choice >= desk_.Function().ParamCount) return;
  ui_->Comb_PrmSel->setCurrentIndex(choice);
  const ScrollRange range = desk_.Scroll(choice);
  ui_->HScroll1->setRange(static_cast<int>(range.Min), static_cast<int>(range.Max));
  ui_->HScroll1->setPageStep(std::max(1, static_cast<int>(range.Max - range.Min) / 10));
  ui_->HScroll1->setValue(desk_.ScrollPosition(choice));
}

void PwfDialog::ShowPreview() {
  PixelContext context = ui_->PictWave->Context();
  desk_.Draw_Wave_PWF(context);
  ui_->PictWave->Show();
}

void PwfDialog::GoToBox(int j) {
  ValueBox* box = rows_[static_cast<std::size_t>(j)].box;
  box->setFocus();
  box->selectAll();
}

void PwfDialog::SetBusy(bool busy) {
  if (busy) {
    setCursor(Qt::WaitCursor);
  } else {
    unsetCursor();
  }
}

void PwfDialog::ShowFault(const ExpressionFault& fault) {
  QString line;
  if (fault.message != 0) line = Text(messages_.MessageText(fault.message)).trimmed();
  if (!fault.reason.empty()) line += QStringLiteral("  ") + Text(fault.reason);
  ShowNotes(line);
}

// The first sentence; all of them when the pointer rests on it.
void PwfDialog::ShowNotes(const QString& fault) {
  QStringList notes;
  if (!fault.isEmpty()) notes.append(fault);
  for (const std::string& note : desk_.Notes()) notes.append(Text(note));
  if (const std::string area = desk_.AreaNote(); !area.empty()) notes.append(Text(area));
  QString line = notes.isEmpty() ? QString() : notes.front();
  if (notes.size() > 1) line += QStringLiteral("  (+%1)").arg(notes.size() - 1);
  ui_->Label_Note->setText(line);
  ui_->Label_Note->setToolTip(notes.size() > 1 ? notes.join(QLatin1Char('\n')) : QString());
}

} // namespace calder
