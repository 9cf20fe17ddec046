#include "setup/SystemDialog.h"

#include "app/EngValB.h"
#include "platform/qt/Text.h"
#include "setup/SystemCaptions.h"
#include "ui_SystemDialog.h"

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QRegularExpressionValidator>
#include <QShortcut>
#include <QTimer>

namespace calder {
namespace {

constexpr int kFocusLook = 500; // milliseconds
constexpr int kNumberCharacters = 7;
constexpr int kValueCharacters = 14;
constexpr int kOscillatorCharacters = 19; // three digits, a point, as many decimals as a period has, a unit prefix
constexpr int kNameCharacters = 33;

using Axis = SetupDesk::Axis;
using End = SetupDesk::End;

// The list and its choice, touched only when they differ, so that an open list stays as it is.
void ShowList(QComboBox* box, const std::vector<std::string>& items, int choice) {
  bool same = box->count() == static_cast<int>(items.size());
  for (int i = 0; same && i < box->count(); ++i) same = box->itemText(i) == Text(items[static_cast<std::size_t>(i)]);
  if (!same) {
    box->clear();
    for (const std::string& item : items) box->addItem(Text(item));
  }
  if (box->currentIndex() != choice) box->setCurrentIndex(choice);
}

} // namespace

SystemDialog::SystemDialog(Program& program, SetupDesk& desk, ToolHost& host, QWidget* parent)
    : ToolForm(program.registry, kFormName, parent), program_(program), desk_(desk), host_(host),
      ui_(std::make_unique<Ui::SystemDialog>()), timSetFocus_(new QTimer(this)) {
  ui_->setupUi(this);
  oscillator_ = {ui_->Txt_Oscil_0, ui_->Txt_Oscil_1, ui_->Txt_Oscil_2, ui_->Txt_Oscil_3};
  program_.formSetup = true;
  MakeMenus();
  SetSystemCaptions(*this, program_.messages);
  for (ValueBox* box : findChildren<ValueBox*>()) box->SetCharacters(kValueCharacters);
  for (ValueBox* box : {ui_->Txt_GPIB_0, ui_->Txt_GPIB_1}) {
    box->SetCharacters(kNumberCharacters);
    // A number's own validator would let signs and separators through.
    box->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,5}")), box));
    connect(box, &ValueBox::FocusNext, this, [this] { focusNextChild(); });
  }
  for (ValueBox* box : oscillator_) box->SetCharacters(kOscillatorCharacters);
  ui_->Txt_MName->SetCharacters(kNameCharacters);
  ui_->Txt_MName->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  for (ValueBox* box : {ui_->Txt_Unit_Name_0, ui_->Txt_Unit_Name_1})
    box->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  program_.formSetup = false;
  ConnectTabs();
  ConnectSystem();
  ConnectMemory();
  ConnectOscillator();
  ConnectUnits();
  ConnectButtons();
  desk_.SetPort(this);
  desk_.Form_Load();
  Place({640, 410});
  ui_->SSTab->setCurrentIndex(0);
  ui_->Comb_System->setFocus();
  // Something may have left the dialog without a focus while it is the window in front.
  connect(timSetFocus_, &QTimer::timeout, this, [this] {
    if (isActiveWindow() && focusWidget() == nullptr && QApplication::activePopupWidget() == nullptr) setFocus();
  });
  timSetFocus_->start(kFocusLook);
}

SystemDialog::~SystemDialog() {
  DisconnectControls();
  desk_.SetPort(nullptr);
}

void SystemDialog::MakeMenus() {
  const ErrMsg& language = program_.messages;
  AddMenu("Menu_File", QString::fromUtf8(language.Pick("ｼｽﾃﾑ設定ﾌｧｲﾙ(&F)", "System Setup &File")),
          {ui_->Menu_FileOpen, ui_->Menu_FileSave, ui_->Menu_FilePrint});
  AddMenu("Menu_Bus", QString::fromUtf8(language.Pick("通信(&B)", "&Bus")),
          {ui_->Menu_LogTraffic, ui_->Menu_SaveLog, ui_->Menu_LastTransfer});
  ui_->Menu_LogTraffic->setChecked(desk_.Trace().Keeping());
  On(ui_->Menu_FileOpen, [this] { desk_.Menu_FileOpen_Click(); });
  On(ui_->Menu_FileSave, [this] { desk_.Menu_FileSave_Click(); });
  On(ui_->Menu_FilePrint, [this] { Q_EMIT PrintWanted(); });
  connect(ui_->Menu_LogTraffic, &QAction::toggled, this, [this](bool on) { desk_.Trace().Keep(on); });
  On(ui_->Menu_SaveLog, [this] { desk_.SaveLog(); });
  On(ui_->Menu_LastTransfer, [this] { ShowLastTransfer(); });
}

// The tabs have no access keys in Japanese, and a list would take Ctrl+Tab for a letter.
void SystemDialog::ConnectTabs() {
  const std::pair<QKeySequence, int> steps[] = {{Qt::CTRL | Qt::Key_Tab, 1},
                                                {Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, -1},
                                                {Qt::CTRL | Qt::Key_PageDown, 1},
                                                {Qt::CTRL | Qt::Key_PageUp, -1}};
  for (const auto& [keys, step] : steps) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, by = step] {
      const int count = ui_->SSTab->count();
      ui_->SSTab->setCurrentIndex((ui_->SSTab->currentIndex() + by + count) % count);
    });
  }
}

void SystemDialog::ConnectSystem() {
  // Going through the list with the keyboard would make every model on the way the chosen one.
  ui_->Comb_System->installEventFilter(this);
  ui_->Comb_System->view()->installEventFilter(this);
  connect(ui_->Comb_System, &QComboBox::activated, this, [this] {
    if (!lookingThrough_) ChooseShownModel();
  });
  connect(ui_->Comb_Intfc, &QComboBox::activated, this, [this](int index) { desk_.ChooseInterface(index); });
  connect(ui_->Comb_SerialNo, &QComboBox::activated, this, [this](int) {
    desk_.ChooseSerial(ui_->Comb_SerialNo->currentText().toStdString());
    ShowRecord();
  });
  connect(ui_->Txt_GPIB_0, &ValueBox::EditingFinished, this,
          [this](const QString& text) { desk_.EnterAddress(text.toStdString()); });
  connect(ui_->UD_GPIB_0_Up, &QToolButton::clicked, this, [this] { desk_.StepAddress(1); });
  connect(ui_->UD_GPIB_0_Down, &QToolButton::clicked, this, [this] { desk_.StepAddress(-1); });
}

void SystemDialog::ConnectMemory() {
  connect(ui_->Comb_MSize, &QComboBox::activated, this, [this](int index) { desk_.ChooseMemorySize(index); });
  connect(ui_->Comb_Trns, &QComboBox::activated, this, [this](int format) { desk_.ChooseTransferFormat(format); });
  connect(ui_->Txt_GPIB_1, &ValueBox::EditingFinished, this,
          [this](const QString& text) { desk_.EnterMemoryNo(text.toStdString()); });
  connect(ui_->UD_GPIB_1_Up, &QToolButton::clicked, this, [this] { desk_.StepMemoryNo(1); });
  connect(ui_->UD_GPIB_1_Down, &QToolButton::clicked, this, [this] { desk_.StepMemoryNo(-1); });
  connect(ui_->Txt_MName, &ValueBox::EditingFinished, this,
          [this](const QString& text) { desk_.EnterMemoryName(text.toStdString()); });
  // The name leads to the number, so the number has to lead on.
  setTabOrder(ui_->Comb_MSize, ui_->Txt_MName);
  setTabOrder(ui_->Txt_MName, ui_->Txt_GPIB_1);
  setTabOrder(ui_->Txt_GPIB_1, ui_->Comb_Trns);
  connect(ui_->Txt_MName, &ValueBox::FocusNext, this, &SystemDialog::FocusNextOfMemoryName);
}

void SystemDialog::ConnectOscillator() {
  connect(ui_->Comb_Channel, &QComboBox::activated, this, [this](int channel) { desk_.ChooseChannel(channel); });
  connect(ui_->Comb_Range, &QComboBox::activated, this, [this](int range) { desk_.ChooseRange(range); });
  connect(ui_->Comb_AmplLim, &QComboBox::activated, this, [this](int polarity) { desk_.ChoosePolarity(polarity); });
  for (int i = 0; i < 4; ++i) {
    ValueBox* box = oscillator_[static_cast<std::size_t>(i)];
    box->RefuseBlanks();
    connect(box, &ValueBox::EditingFinished, this,
            [this, i](const QString& text) { desk_.EnterOscillator(i, text.toStdString()); });
  }
  QRadioButton* const outputs[] = {ui_->Opt_Output_0, ui_->Opt_Output_1, ui_->Opt_Output_2};
  for (int state = 0; state < 3; ++state) {
    connect(outputs[state], &QRadioButton::toggled, this, [this, state](bool on) {
      if (on && !program_.formSetup) desk_.ChooseOutput(state);
    });
  }
  connect(ui_->Opt_Offs_0, &QRadioButton::toggled, this, [this](bool on) {
    if (!program_.formSetup) desk_.ChooseOffsetOn(on);
  });
}

void SystemDialog::ConnectUnits() {
  QComboBox* const units[] = {ui_->Comb_Unit_0, ui_->Comb_Unit_1};
  ValueBox* const names[] = {ui_->Txt_Unit_Name_0, ui_->Txt_Unit_Name_1};
  ValueBox* const ends[] = {ui_->Txt_Unit_0, ui_->Txt_Unit_1, ui_->Txt_Unit_2, ui_->Txt_Unit_3};
  for (const Axis axis : {Axis::X, Axis::Y}) {
    const int i = static_cast<int>(axis);
    connect(units[i], &QComboBox::activated, this, [this, axis](int unit) { desk_.ChooseUnit(axis, unit); });
    connect(names[i], &ValueBox::EditingFinished, this,
            [this, axis](const QString& text) { desk_.EnterUnitName(axis, text.toStdString()); });
    for (const End end : {End::Min, End::Max}) {
      connect(ends[2 * i + static_cast<int>(end)], &ValueBox::EditingFinished, this,
              [this, axis, end](const QString& text) { desk_.EnterUnitRange(axis, end, text.toStdString()); });
    }
  }
}

void SystemDialog::ConnectButtons() {
  QPushButton* const transfers[] = {ui_->Btn_Trans_0, ui_->Btn_Trans_1, ui_->Btn_Trans_2};
  for (int i = 0; i < 3; ++i)
    On(transfers[i], [this, i] { desk_.Btn_Trans_Click(static_cast<SetupDesk::Transfer>(i)); });
  On(ui_->Btn_OK, [this] { desk_.Btn_OK_Click(); });
  On(ui_->Btn_Cancel, [this] { desk_.Btn_Cancel_Click(); });
}

void SystemDialog::ChooseShownModel() {
  lookingThrough_ = false;
  const int model = ui_->Comb_System->currentIndex();
  if (model != desk_.Setup().ModelChoice()) desk_.ChooseModel(model);
}

bool SystemDialog::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (watched != ui_->Comb_System) {
    if (type == QEvent::Show) lookingThrough_ = false; // what is chosen in the open list counts at once
  } else if (type == QEvent::KeyPress || type == QEvent::Wheel) {
    const int key = type == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (key != Qt::Key_Return && key != Qt::Key_Enter) {
      lookingThrough_ = true;
    } else if (ui_->Comb_System->currentIndex() != desk_.Setup().ModelChoice()) { // the next Enter is OK's
      ChooseShownModel();
      return true;
    }
  } else if (type == QEvent::FocusOut && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
    if (lookingThrough_) ChooseShownModel();
  }
  return ToolForm::eventFilter(watched, event);
}

void SystemDialog::FocusNextOfMemoryName() {
  if (ui_->Txt_GPIB_1->isEnabled()) {
    ui_->Txt_GPIB_1->setFocus(Qt::TabFocusReason);
  } else if (ui_->Comb_Channel->isEnabled()) {
    ui_->SSTab->setCurrentWidget(ui_->Page_Oscil);
    ui_->Comb_Channel->setFocus(Qt::TabFocusReason);
  } else {
    ui_->Comb_Trns->setFocus(Qt::TabFocusReason);
  }
}

void SystemDialog::ShowRecord() {
  program_.formSetup = true;
  ShowSystem();
  ShowMemory();
  ShowOscillator();
  ShowUnits();
  ui_->Label_Bench->setText(Text(desk_.BenchHint()));
  ui_->Label_Bench->setVisible(!ui_->Label_Bench->text().isEmpty());
  ui_->Label_Cut->setText(Text(desk_.CutWarning()));
  ui_->Label_Cut->setVisible(!ui_->Label_Cut->text().isEmpty());
  program_.formSetup = false;
}

void SystemDialog::ShowSystem() {
  const SystemSetup& setup = desk_.Setup();
  ShowList(ui_->Comb_System, setup.Models(), setup.ModelChoice());
  std::vector<std::string> interfaces;
  for (const SystemSetup::Interface& item : setup.Interfaces()) interfaces.push_back(item.name);
  ShowList(ui_->Comb_Intfc, interfaces, setup.InterfaceChoice());
  const bool usb = desk_.UsbShown();
  const bool readable = desk_.CanReadBack();
  ui_->Btn_Trans_2->setEnabled(readable && ui_->Btn_Trans_0->isEnabled());
  ui_->Btn_Trans_2->setToolTip(
      readable ? QString()
               : QString::fromUtf8(program_.messages.Pick("波形の読出しは USB(TMC) でのみできます。",
                                                          "Only USB(TMC) can read a waveform back.")));
  for (QWidget* control : {static_cast<QWidget*>(ui_->Label_GPIB_0), static_cast<QWidget*>(ui_->Panel_GPIB_0)})
    control->setVisible(!usb);
  for (QWidget* control : {static_cast<QWidget*>(ui_->Label_SerialNo), static_cast<QWidget*>(ui_->Comb_SerialNo),
                           static_cast<QWidget*>(ui_->txtSerialNo)})
    control->setVisible(usb);
  ui_->Txt_GPIB_0->ShowText(QString::number(static_cast<std::uint16_t>(program_.settings.Address)));
  const std::vector<std::string>& serials = desk_.SerialNumbers();
  const auto selected = std::find(serials.begin(), serials.end(), desk_.SelectedSerial());
  ShowList(ui_->Comb_SerialNo, serials, static_cast<int>(selected - serials.begin()));
  ui_->txtSerialNo->setText(Text(desk_.ResourceName()));
}

void SystemDialog::ShowMemory() {
  const SystemInfo& settings = program_.settings;
  const SystemSetup& setup = desk_.Setup();
  ShowList(ui_->Comb_MSize, setup.MemorySizes(), setup.MemorySizeChoice());
  ui_->Txt_GPIB_1->ShowText(QString::number(settings.MemoryNo));
  ui_->Txt_MName->ShowText(Text(settings.MemoryName));
  const bool number = settings.MemoryNoSelectable != 0;
  for (QWidget* control : {static_cast<QWidget*>(ui_->Label_GPIB_1), static_cast<QWidget*>(ui_->Panel_GPIB_1)})
    control->setEnabled(number);
  ui_->Txt_GPIB_1->setEnabled(number);
  const bool name = settings.MemoryNameSelectable != 0;
  ui_->Label_MName->setEnabled(name);
  ui_->Txt_MName->setEnabled(name);
  const ErrMsg& language = program_.messages;
  const bool controlPoints = setup.ControlPointsAvailable();
  ShowList(ui_->Comb_Trns, desk_.TransferFormats(), setup.TransferFormatChoice());
  ui_->Label_Trns->setEnabled(controlPoints);
  ui_->Label_CtrlPoints->setText(controlPoints ? QString::number(settings.ControlPointCount) +
                                                     QString::fromUtf8(language.Pick(" 点", " control points"))
                                               : QString());
}

void SystemDialog::ShowOscillator() {
  const SystemInfo& settings = program_.settings;
  const SystemSetup& setup = desk_.Setup();
  SetPowerSourceCaptions(*this, program_.messages, desk_.PowerSource());
  ShowList(ui_->Comb_Channel, setup.Channels(), settings.Channel);
  const bool channel = settings.ChannelSelectable != 0;
  ui_->Label_Channel->setEnabled(channel);
  ui_->Comb_Channel->setEnabled(channel);
  ShowList(ui_->Comb_Range, setup.Ranges(), settings.RangeNo);
  ShowList(ui_->Comb_AmplLim, {"Norm +/-FS", "Norm 0/+FS", "Norm -FS/0", "Inv +/-FS", "Inv 0/+FS", "Inv -FS/0"},
           settings.Polarity);
  QRadioButton* const outputs[] = {ui_->Opt_Output_0, ui_->Opt_Output_1, ui_->Opt_Output_2};
  outputs[settings.Output == 0 || settings.Output == 1 ? settings.Output : 2]->setChecked(true);
  for (int i = 0; i < 4; ++i) oscillator_[static_cast<std::size_t>(i)]->ShowText(Text(desk_.OscillatorText(i)));
  ui_->Label_OscilUnit_2->setText(QLatin1String(desk_.AmplitudeUnit()));
  QLabel* const limits[] = {ui_->Label_OscilLimit_0, ui_->Label_OscilLimit_1, ui_->Label_OscilLimit_2,
                            ui_->Label_OscilLimit_3};
  for (int i = 0; i < 4; ++i) limits[i]->setText(Text(desk_.OscillatorLimitText(i)));
  const bool offset = settings.OffsetSwitch != 0;
  ui_->Label_Offs->setVisible(offset);
  ui_->Frm_Offs->setVisible(offset);
  (settings.OffsetOn != 0 ? ui_->Opt_Offs_0 : ui_->Opt_Offs_1)->setChecked(true);
}

void SystemDialog::ShowUnits() {
  const ErrMsg& language = program_.messages;
  const std::string user = language.Pick("ｶｽﾀﾑ", "User Unit");
  ShowList(ui_->Comb_Unit_0, {language.Pick("ｱﾄﾞﾚｽ", "Address"), language.Pick("時間", "Time"), user},
           program_.settings.XUnit);
  ShowList(ui_->Comb_Unit_1, {language.Pick("ﾃﾞｰﾀ", "Data"), language.Pick("電圧", "Voltage"), user},
           program_.settings.YUnit);
  ValueBox* const names[] = {ui_->Txt_Unit_Name_0, ui_->Txt_Unit_Name_1};
  ValueBox* const ends[] = {ui_->Txt_Unit_0, ui_->Txt_Unit_1, ui_->Txt_Unit_2, ui_->Txt_Unit_3};
  for (const Axis axis : {Axis::X, Axis::Y}) {
    const int i = static_cast<int>(axis);
    const bool own = (axis == Axis::X ? program_.settings.XUnit : program_.settings.YUnit) == 2;
    names[i]->ShowText(Text(desk_.UnitName(axis)));
    names[i]->setEnabled(own);
    for (const End end : {End::Min, End::Max}) {
      ValueBox* box = ends[2 * i + static_cast<int>(end)];
      box->ShowText(Text(desk_.UnitRangeText(axis, end)));
      box->setEnabled(own);
    }
  }
}

void SystemDialog::GoToMemoryName() {
  ui_->SSTab->setCurrentWidget(ui_->Page_Waveform);
  ui_->Txt_MName->setFocus();
}

// What would change the settings under a transfer waits. The loop test's buttons stop it; Cancel ends a transfer that
// has no progress window.
void SystemDialog::SetTransferring(bool transferring) {
  const bool loop = program_.registry.GetLoopTest();
  if (transferring) focusBefore_ = focusWidget();
  ui_->SSTab->setEnabled(!transferring);
  layout()->menuBar()->setEnabled(!transferring);
  ui_->Btn_Trans_0->setEnabled(!transferring);
  for (QPushButton* button : {ui_->Btn_Trans_1, ui_->Btn_Trans_2}) button->setEnabled(!transferring || loop);
  ui_->Btn_OK->setEnabled(!transferring);
  ui_->Btn_Cancel->setEnabled(!transferring || desk_.Cancellable());
  if (!transferring && focusBefore_) focusBefore_->setFocus();
}

void SystemDialog::ShowLastTransfer() {
  QDialog window(this);
  window.setObjectName(QStringLiteral("LastTransfer"));
  window.setWindowTitle(QString::fromUtf8(program_.messages.Pick("前回の転送", "Last transfer")));
  auto* text = new QPlainTextEdit(Text(desk_.Trace().LastTransfer()), &window);
  text->setObjectName(QStringLiteral("Text_Traffic"));
  text->setReadOnly(true);
  text->setLineWrapMode(QPlainTextEdit::NoWrap);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  auto* column = new QVBoxLayout(&window);
  column->addWidget(text);
  window.resize(760, 420);
  window.exec();
}

void SystemDialog::CommitFocus() {
  if (lookingThrough_) ChooseShownModel();
  ToolForm::CommitFocus();
}

// Escape and the window's own button are Cancel.
void SystemDialog::reject() {
  CommitFocus();
  desk_.Btn_Cancel_Click();
}

} // namespace calder
