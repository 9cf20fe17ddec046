#include "tools/create/CreateDialog.h"

#include "app/Program.h"
#include "libs/eval32/eval32.h"
#include "platform/qt/Text.h"
#include "platform/qt/ValueBox.h"
#include "platform/qt/WaveformCanvas.h"
#include "tools/create/CreateCaptions.h"
#include "tools/frame/ExpressionBox.h"
#include "ui_CreateDialog.h"

#include <QButtonGroup>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

#include <functional>

namespace calder {
namespace {

constexpr int kWideCharacters = 13;
constexpr int kPageCharacters = 4;
constexpr int kMaxConstants = 944;
constexpr int kMaxExpression = 1024;

} // namespace

CreateDialog::CreateDialog(Program& program, CreatePages& pages, QWidget* parent)
    : ToolForm(program.registry, kFormName, parent), formSetup_(program.formSetup), messages_(program.messages),
      units_(program.units), language_(program.language), pages_(pages), ui_(std::make_unique<Ui::CreateDialog>()) {
  ui_->setupUi(this);
  boxes_ = {ui_->Text_0, ui_->Text_1, ui_->Text_2, ui_->Text_3, ui_->Text_4, ui_->Text_5, ui_->Text_6, ui_->Text_7};
  labels_ = {ui_->Label_Param_0, ui_->Label_Param_1, ui_->Label_Param_2, ui_->Label_Param_3,
             ui_->Label_Param_4, ui_->Label_Param_5, ui_->Label_Param_6, ui_->Label_Param_7};
  unitLabels_ = {ui_->Label_ParamUnit_0, ui_->Label_ParamUnit_1, ui_->Label_ParamUnit_2, ui_->Label_ParamUnit_3,
                 ui_->Label_ParamUnit_4, ui_->Label_ParamUnit_5, ui_->Label_ParamUnit_6, ui_->Label_ParamUnit_7};
  formSetup_ = true;
  MakeMenus();
  SetCreateCaptions(*this, messages_);
  FillLists();
  formSetup_ = false;
  for (ValueBox* box : findChildren<ValueBox*>()) box->SetCharacters(kWideCharacters);
  ui_->Txt_Page->SetCharacters(kPageCharacters);
  ui_->Txt_Const->SetMaxLength(kMaxConstants);
  ui_->Txt_Expr->SetMaxLength(kMaxExpression);
  // Both alike, so that the preview stays where it is when the function changes.
  for (QGroupBox* frame : {ui_->Frame_Std, ui_->Frame_Expr}) frame->setMinimumWidth(360);
  ConnectBoxes();
  ConnectPages();
  ConnectExpression();
  ConnectPreview();
  pages_.SetPort(this);
  Place({940, 600});
}

CreateDialog::~CreateDialog() {
  DisconnectControls();
  pages_.SetPort(nullptr);
}

void CreateDialog::PrepareForMainWindow() {
  pages_.PrepareCreate();
  FocusFirst();
}

void CreateDialog::PrepareForOperate(const OperateTarget& target, std::function<void()> redrawOperand) {
  redrawOperand_ = std::move(redrawOperand);
  pages_.PrepareCreate(target);
  FocusFirst();
}

void CreateDialog::FocusFirst() {
  if (pages_.ExpressionShown()) {
    ui_->Txt_Expr->setFocus();
  } else {
    boxes_[kBoxOffset]->setFocus();
  }
}

void CreateDialog::MakeMenus() {
  const ErrMsg& language = messages_;
  const QMenu* file = AddMenu("Menu_File", QString::fromUtf8(language.Pick("ﾌｧｲﾙ(&F)", "&File")),
                              {ui_->Menu_FileOpen, ui_->Menu_FileSave, ui_->Menu_Print});
  AddMenu("Menu_Edit", QString::fromUtf8(language.Pick("編集(&E)", "&Edit")), {ui_->Menu_Clear, ui_->Menu_AllClear});
  fileMenu_ = file->menuAction();
  On(ui_->Menu_FileOpen, [this] { pages_.Menu_FileOpen_Click(); });
  On(ui_->Menu_FileSave, [this] { pages_.Menu_FileSave_Click(); });
  On(ui_->Menu_Print, [this] { Q_EMIT PrintWanted(); });
  On(ui_->Menu_Clear, [this] { pages_.Menu_Clear_Click(); });
  On(ui_->Menu_AllClear, [this] { pages_.Menu_AllClear_Click(); });
}

void CreateDialog::FillLists() {
  const struct {
    const char* japanese;
    const char* english;
  } functions[] = {{"正弦波", "Sin"},   {"三角波", "Triangle"}, {"方形波", "Square"},
                   {"ノイズ", "Noise"}, {"DC", "DC Volts"},     {"波形関数", "Expression"}};
  for (const auto& function : functions) {
    ui_->Comb_Wave->addItem(QString::fromUtf8(messages_.Pick(function.japanese, function.english)));
  }
  const bool english = language_ == Language::English;
  for (const EvalEntry& entry : EvalEntries()) {
    const std::string_view help = english ? entry.english : entry.japanese;
    const QString name = QString::fromUtf8(entry.name.data(), static_cast<qsizetype>(entry.name.size()));
    const QString arguments = QString::fromUtf8(entry.arguments.data(), static_cast<qsizetype>(entry.arguments.size()));
    const QString text = QString::fromUtf8(help.data(), static_cast<qsizetype>(help.size()));
    auto* item = new QListWidgetItem(name + arguments + QStringLiteral("   ") + text, ui_->List_Functions);
    item->setToolTip(text);
    // What is inserted: a function with empty parentheses, a constant as it is.
    item->setData(Qt::UserRole, arguments.isEmpty() ? name : name + QStringLiteral("()"));
  }
  ui_->List_Functions->hide();
}

void CreateDialog::ConnectBoxes() {
  for (int i = 0; i < kPageBoxes; ++i) {
    ValueBox* box = boxes_[static_cast<std::size_t>(i)];
    connect(box, &ValueBox::EditingFinished, this,
            [this, i](const QString& text) { pages_.Text_LostFocus(i, text.toStdString()); });
    connect(box, &ValueBox::FocusNext, this, [this, i] { FocusNextOf(i); });
  }
  const auto area = [this](CreatePages::AreaEnd end, const QString& start, const QString& finish) {
    pages_.Text_X_LostFocus(end, start.toStdString(), finish.toStdString());
  };
  connect(ui_->Text_X_0, &ValueBox::EditingFinished, this,
          [this, area](const QString& text) { area(CreatePages::AreaEnd::Start, text, ui_->Text_X_1->text()); });
  connect(ui_->Text_X_1, &ValueBox::EditingFinished, this,
          [this, area](const QString& text) { area(CreatePages::AreaEnd::End, ui_->Text_X_0->text(), text); });
  connect(ui_->Text_X_0, &ValueBox::FocusNext, this, [this] { ui_->Text_X_1->setFocus(Qt::TabFocusReason); });
  connect(ui_->Text_X_1, &ValueBox::FocusNext, this, [this] { ui_->Comb_Wave->setFocus(Qt::TabFocusReason); });
  connect(ui_->Comb_Wave, &QComboBox::currentIndexChanged, this, [this](int function) {
    if (!formSetup_) pages_.Comb_Wave_Click(function);
  });
}

void CreateDialog::ConnectPages() {
  QToolButton* const buttons[] = {ui_->Cmd_Page_0, ui_->Cmd_Page_1, ui_->Cmd_Page_2, ui_->Cmd_Page_3};
  for (int i = 0; i < 4; ++i) {
    On(buttons[i], [this, i] { pages_.Cmd_Page_Click(static_cast<CreatePages::PageButton>(i)); });
  }
  // The keys that turn pages wherever the focus is.
  const struct {
    QKeySequence keys;
    QToolButton* button;
  } turns[] = {{QKeySequence(Qt::CTRL | Qt::Key_PageUp), ui_->Cmd_Page_1},
               {QKeySequence(Qt::CTRL | Qt::Key_PageDown), ui_->Cmd_Page_2}};
  for (const auto& turn : turns) {
    connect(new QShortcut(turn.keys, this), &QShortcut::activated, turn.button, [button = turn.button] {
      if (button->isVisible()) button->click();
    });
  }
  connect(ui_->Txt_Page, &ValueBox::EditingFinished, this,
          [this](const QString& text) { pages_.Txt_Page_LostFocus(text.toStdString()); });
  connect(ui_->Txt_Page, &ValueBox::FocusNext, this, [this] { ui_->Cmd_Page_2->setFocus(Qt::TabFocusReason); });
  connect(ui_->Opt_effect_0, &QRadioButton::toggled, this, [this](bool on) {
    if (!formSetup_) pages_.Opt_effect_Click(on);
  });
  On(ui_->Btn_Comp, [this] { pages_.Btn_Comp_Click(); });
  On(ui_->Btn_OK, [this] { pages_.Btn_OK_Click(); });
  On(ui_->Btn_Confirm, [this] { pages_.Btn_Confirm_Click(); });
  On(ui_->Btn_Cancel, [this] { pages_.Btn_Cancel_Click(); });
}

void CreateDialog::ConnectExpression() {
  connect(ui_->Txt_Const, &ExpressionBox::EditingFinished, this,
          [this] { pages_.Txt_Const_LostFocus(ui_->Txt_Const->Text().toStdString()); });
  connect(ui_->Txt_Expr, &ExpressionBox::EditingFinished, this,
          [this] { pages_.Txt_Expr_LostFocus(ui_->Txt_Expr->Text().toStdString()); });
  for (ExpressionBox* box : {ui_->Txt_Const, ui_->Txt_Expr}) {
    connect(box, &ExpressionBox::textChanged, this, &CreateDialog::TextTyped);
  }
  connect(ui_->Btn_Functions, &QToolButton::toggled, ui_->List_Functions, &QWidget::setVisible);
  connect(ui_->List_Functions, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
    ui_->Txt_Expr->Insert(item->data(Qt::UserRole).toString());
    ui_->Txt_Expr->setFocus();
  });
}

void CreateDialog::ConnectPreview() {
  WaveformCanvas* picture = ui_->PictWave;
  const auto logical = [picture](QPoint pixel) { return QPointF(pixel) / picture->Scale(); };
  connect(picture, &WaveformCanvas::Resized, this, [this] { ShowPreview(); });
  connect(picture, &WaveformCanvas::Pressed, this,
          [this, picture, logical](QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
            const QPointF at = logical(pixel);
            pages_.PictWave_MouseDown(button == Qt::LeftButton && (modifiers & Qt::ShiftModifier) == 0, at.x(), at.y(),
                                      picture->width(), picture->height());
          });
  connect(picture, &WaveformCanvas::Moved, this, [this, picture, logical](QPoint pixel) {
    const QPointF at = logical(pixel);
    pages_.PictWave_MouseMove(at.x(), at.y());
    switch (pages_.DragModeAt(at.x(), at.y(), picture->width(), picture->height())) {
    case PreviewDrag::Mode::Size: picture->setCursor(Qt::SizeAllCursor); break;
    case PreviewDrag::Mode::Shift: picture->setCursor(Qt::OpenHandCursor); break;
    case PreviewDrag::Mode::Shape: picture->setCursor(Qt::SizeHorCursor); break;
    case PreviewDrag::Mode::None: picture->setCursor(Qt::ArrowCursor); break;
    }
  });
  connect(picture, &WaveformCanvas::Released, this, [this](QPoint, Qt::MouseButton) { pages_.PictWave_MouseUp(); });
}

void CreateDialog::FocusNextOf(int box) {
  if (const std::optional<int> next = pages_.NextBox(box)) {
    boxes_[static_cast<std::size_t>(*next)]->setFocus(Qt::TabFocusReason);
  } else if (pages_.FromMainWindow()) {
    ui_->Cmd_Page_0->setFocus(Qt::TabFocusReason);
  } else {
    ui_->Btn_OK->setFocus(Qt::TabFocusReason);
  }
}

void CreateDialog::TextTyped() {
  if (formSetup_) return;
  const std::string constants = ui_->Txt_Const->Text().toStdString();
  const std::string expression = ui_->Txt_Expr->Text().toStdString();
  MarkFault(pages_.LivePreview(constants, expression), false);
}

void CreateDialog::MarkFault(const ExpressionFault& fault, bool goThere) {
  ui_->Txt_Const->MarkFault(-1);
  ui_->Txt_Expr->MarkFault(-1);
  if (fault.message == 0) {
    ui_->Label_Fault->clear();
    return;
  }
  QString line = Text(messages_.MessageText(fault.message)).trimmed();
  if (!fault.reason.empty()) line += QStringLiteral("  ") + Text(fault.reason);
  ui_->Label_Fault->setText(line);
  if (!fault.place) return;
  ExpressionBox* box = fault.place->box == TextBox::Constants ? ui_->Txt_Const : ui_->Txt_Expr;
  const int position = CharacterAt(box->Text(), fault.place->position);
  box->MarkFault(position);
  if (goThere) box->GoTo(position);
}

void CreateDialog::ShowPage() {
  const bool own = pages_.FromMainWindow();
  ui_->Panel_Page->setVisible(own);
  fileMenu_->setEnabled(own);
  for (ValueBox* box : {ui_->Text_X_0, ui_->Text_X_1}) box->setEnabled(own);
  ui_->Txt_Page->ShowText(Text(pages_.PageText()));
  ui_->Text_X_0->ShowText(Text(pages_.StartText()));
  ui_->Text_X_1->ShowText(Text(pages_.EndText()));
  ui_->Comb_Wave->setCurrentIndex(pages_.Page().Function);
  (pages_.Page().Valid ? ui_->Opt_effect_0 : ui_->Opt_effect_1)->setChecked(true);
  const bool expression = pages_.ExpressionShown();
  // What goes is hidden first, so that the form never has to hold both.
  (expression ? ui_->Frame_Std : ui_->Frame_Expr)->hide();
  (expression ? ui_->Frame_Expr : ui_->Frame_Std)->show();
  for (int i = 0; i < kPageBoxes; ++i) {
    const auto index = static_cast<std::size_t>(i);
    const bool shown = pages_.ParameterShown(i);
    boxes_[index]->setVisible(shown);
    labels_[index]->setVisible(shown);
    unitLabels_[index]->setVisible(shown);
    boxes_[index]->setEnabled(pages_.ParameterEnabled(i));
    if (shown) boxes_[index]->ShowText(Text(pages_.ParameterText(i)));
  }
  for (const int box : {kBoxOffset, kBoxAmplitude}) {
    unitLabels_[static_cast<std::size_t>(box)]->setText(Text(units_.YUnitName()));
  }
  unitLabels_[kBoxSize]->setText(Text(units_.XUnitName()));
  ui_->Txt_Const->ShowText(Text(pages_.Page().Constants));
  ui_->Txt_Expr->ShowText(Text(pages_.Page().Expression));
  ui_->Label_Fault->clear();
  const PreviewLabels labels = pages_.Labels();
  ui_->Label_Max->setText(Text(labels.max));
  ui_->Label_Offs->setText(Text(labels.offset));
  ui_->Label_Min->setText(Text(labels.min));
}

void CreateDialog::ShowPreview() {
  PixelContext context = ui_->PictWave->Context();
  pages_.Draw_Wave_Create(context);
  ui_->PictWave->Show();
}

void CreateDialog::SetBusy(bool busy) {
  if (busy) {
    setCursor(Qt::WaitCursor);
  } else {
    unsetCursor();
  }
}

void CreateDialog::ShowFault(const ExpressionFault& fault) {
  MarkFault(fault, true);
}

} // namespace calder
