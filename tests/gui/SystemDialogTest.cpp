// The System Setup dialog's real form off-screen, on the simulated bench.
#include "setup/SystemDialog.h"

#include "FormDriver.h"
#include "RecordingHost.h"
#include "editor/EditorFixture.h"
#include "platform/TempFolder.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/QtWorker.h"
#include "platform/qt/Theme.h"
#include "setup/Communication.h"
#include "setup/FrmGPIBExit.h"
#include "sim/SimBench.h"

#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>

#include <atomic>

namespace calder::system_dialog_test {

struct SystemDialogTest : EditorFixture, FormDriver {
  void SetUp() override {
    sim::Reset();
    desktop.libraries.folder = CALDER_SIM_FOLDER;
    desktop.folders.state = QDir::tempPath().toStdString() + "/calder_setup_" + std::to_string(::getpid());
    Begin();
    ApplyTheme(*qApp, program->language == Language::English);
    verbs["page"] = [this](const auto& index, const auto&) { Page(std::stoi(index)); };
    road.emplace(*program, editor->setup, editor->fileCommands, editor->waveFiles);
    Open();
  }
  void Open() {
    dialog.reset();
    dialog = std::make_unique<SystemDialog>(*program, road->desk, host, nullptr);
    ShowForm(dialog.get());
  }
  void TearDown() override {
    dialog.reset();
    road.reset();
    QDir(QString::fromStdString(desktop.folders.state)).removeRecursively();
  }
  void Page(int index) { Find<QTabWidget>("SSTab")->setCurrentIndex(index); }

  std::optional<Communication> road;
  std::unique_ptr<SystemDialog> dialog;
  RecordingHost host;
};

TEST_F(SystemDialogTest, ListsAndEnabledControlsFollowTheModel) {
  EXPECT_EQ(Find<QComboBox>("Comb_System")->count(), program->models.SysGetDeviceCnt());
  const auto count = [this](const char* list) {
    return [this, list] { return std::to_string(Find<QComboBox>(list)->count()); };
  };
  views["interfaces"] = count("Comb_Intfc");
  views["channels"] = count("Comb_Channel");
  views["Channel"] = [this] { return std::to_string(program->settings.Channel); };
  views["tip"] = [this] { return Find<QWidget>("Btn_Trans_2")->toolTip().toStdString(); };
  Walk({{"key Comb_System Alt+P", "Comb_System", "XG5530",
         "XG5530"}, // the key of another page's box is no model's first letter
        {"", "Comb_SerialNo Txt_GPIB_0", "1234567 hidden 0"},
        {"choose Comb_System 10", "Comb_System Txt_GPIB_0", "PJ7410 1"},
        {"page 3", "Label_Channel channels Frm_Offs", "&Mode 4 "},
        {"choose Comb_Channel 2", "Channel", "2"},
        {"", "Btn_Trans_2 tip", "off &Read Data Only USB(TMC) can read a waveform back."},
        {"page 0; choose Comb_System 0; choose Comb_Intfc 0", "Btn_Trans_2 tip", "&Read Data "},
        {"choose Comb_System 22", "interfaces", "1"},
        {"page 3", "Label_Channel", "off &Channel"}});
}

// Every control: what is chosen, typed or pressed, and what must be seen after it.
TEST_F(SystemDialogTest, EveryControlIsWired) {
  const TempFolder folder;
  using S = SystemInfo;
  ViewMembers([this]() -> const S& { return program->settings; }, "ModelNo", &S::ModelNo, "Address", &S::Address,
              "XUnit", &S::XUnit, "XUserName", &S::XUserName, "XUserMin", &S::XUserMin, "XUserMax", &S::XUserMax,
              "YUnit", &S::YUnit, "YUserName", &S::YUserName, "YUserMin", &S::YUserMin, "MemoryName", &S::MemoryName,
              "MemoryNo", &S::MemoryNo, "Channel", &S::Channel, "RangeNo", &S::RangeNo, "Polarity", &S::Polarity,
              "Frequency", &S::Frequency, "Amplitude", &S::Amplitude, "Offset", &S::Offset, "Output", &S::Output);
  views["Format"] = [this] { return std::to_string(editor->setup.TransferFormatChoice()); };
  views["kind"] = [this] { return std::to_string(program->interfaceKind); };
  views["page"] = [this] { return std::to_string(Find<QTabWidget>("SSTab")->currentIndex()); };
  views["files"] = [&] { return std::to_string(folder.Names().size()); };
  views["keeping"] = [this] { return std::string(road->desk.Trace().Keeping() ? "on" : "off"); };
  verbs["file"] = [&](const auto& name, const auto&) { desktop.dialogs.Answer(folder / name); };
  Walk({{"choose Comb_System 1", "ModelNo txtSerialNo", "1 USB0::0x1209::0x5531::1234567"},
        {"choose Comb_Intfc 1", "kind", "0"},
        {"type Txt_GPIB_0 7", "Address", "7"},
        {"click UD_GPIB_0_Up", "Address", "8"},
        {"click UD_GPIB_0_Down", "Address", "7"},
        {"page 1; choose Comb_Unit_0 1", "Txt_Unit_0 Txt_Unit_Name_0", "off 0.000000 off "},
        {"choose Comb_Unit_0 2", "XUnit", "2"},
        {"type Txt_Unit_Name_0 deg", "XUserName", "deg"},
        {"type Txt_Unit_0 -2", "XUserMin", "-2"},
        {"type Txt_Unit_1 5k", "XUserMax", "5000"},
        {"choose Comb_Unit_1 1", "Txt_Unit_Name_1", "off "},
        {"choose Comb_Unit_1 2", "YUnit", "2"},
        {"type Txt_Unit_Name_1 bar", "YUserName", "bar"},
        {"type Txt_Unit_2 -3", "YUserMin", "-3"},
        {"type Txt_Unit_3 4", "Txt_Unit_3", "4.000"},
        {"page 2; choose Comb_MSize 1", "Label_Cut", "524288 -> 262144 points: the waveform will be cut on OK"},
        {"choose Comb_MSize 0", "Label_Cut", "hidden "},
        {"type Txt_MName ABC", "MemoryName focus", "ABC Txt_GPIB_1"},
        {"type Txt_GPIB_1 9", "MemoryNo", "9"},
        {"click UD_GPIB_1_Up", "MemoryNo", "10"},
        {"click UD_GPIB_1_Down", "MemoryNo", "9"},
        {"choose Comb_Trns 0", "Format", "0"},
        {"choose Comb_Trns 1", "Format Label_CtrlPoints", "1 2 control points"},
        {"page 3; choose Comb_Channel 1", "Channel", "1"},
        {"", "Label_OscilLimit_0 Label_OscilLimit_2", "off 10n to 15M off 0 to 20"},
        {"", "Label_OscilLimit_1 Label_OscilLimit_3", "off 66.667n to 100M off -10 to 10"},
        {"choose Comb_Range 1", "RangeNo", "1"},
        {"choose Comb_AmplLim 3", "Polarity", "3"},
        {"type Txt_Oscil_0 5k", "Frequency", "5000"},
        {"type Txt_Oscil_1 1m", "Frequency", "1000"},
        {"type Txt_Oscil_2 2", "Amplitude", "2"},
        {"type Txt_Oscil_3 0.5", "Offset", "0.5"},
        {"click Opt_Output_2", "Output", "2"},
        {"click Opt_Output_1", "Output", "1"},
        {"click Opt_Output_0", "Output", "0"},
        {"page 0; file a.ocb; menu Menu_FileSave", "files", "1"},
        {"type Txt_GPIB_0 9", "Address", "9"},
        {"file a.ocb; menu Menu_FileOpen", "Address Txt_GPIB_0", "7 7"},
        {"menu Menu_LogTraffic", "keeping", "on"},
        {"file a.log; menu Menu_SaveLog", "files", "2"},
        {"menu Menu_LogTraffic", "keeping", "off"},
        {"key Comb_System Ctrl+Tab", "page", "1"},
        {"key . Ctrl+Shift+Backtab", "page", "0"},
        {"key . Ctrl+PgUp", "page", "3"},
        {"key . Ctrl+PgDown", "page", "0"},
        {"type Txt_GPIB_0 2", "Address", "2"}}); // where the bench has it
  for (const auto& [channel, next] : {std::pair{1, "Comb_Channel"}, {0, "Comb_Trns"}}) {
    program->settings.MemoryNoSelectable = 0;
    program->settings.ChannelSelectable = static_cast<std::int16_t>(channel);
    road->desk.EnterMemoryNo(""); // shows the record
    Walk({{"page 2; type Txt_MName X", "focus", next}});
  }
  Click("Btn_Trans_0");
  QTimer::singleShot(0, [] {
    QWidget* window = QApplication::activeModalWidget();
    EXPECT_EQ(window->objectName() + window->windowTitle(), "LastTransferLast transfer");
    EXPECT_TRUE(window->findChild<QPlainTextEdit*>()->toPlainText().contains("*IDN?"));
    window->close();
  });
  Do("menu Menu_LastTransfer");
}

TEST_F(SystemDialogTest, EnterPressesTheFocusedButton) {
  // frequency: what the record has after a change to 5 kHz and an Enter there
  using Row = std::tuple<const char*, double, bool>;
  for (const auto& [theControl, frequency, closed] :
       {Row{"Btn_Cancel", 1000, true}, Row{"Btn_OK", 5000, true}, Row{"Comb_AmplLim", 5000, true},
        Row{"Btn_Trans_0", 5000, false}}) {
    program->settings.Frequency = 1000;
    Open();
    program->settings.Frequency = 5000;
    auto* control = Find<QWidget>(theControl);
    Page(2);
    control->setFocus();
    QTest::keyClick(control, Qt::Key_Return);
    EXPECT_EQ(program->settings.Frequency, frequency) << theControl;
    EXPECT_EQ(!dialog->isVisible(), closed) << theControl;
  }
}

// The waveform keeps its points while the list is gone through, and a line says what an OK would cut.
TEST_F(SystemDialogTest, LookingThroughTheModelsCutsNothing) {
  W_MakeDC(program->buffers.Current(), 0, 524288, 77);
  auto* models = Find<QComboBox>("Comb_System");
  models->setFocus();
  for (int i = 0; i < 10; ++i) QTest::keyClick(models, Qt::Key_Down);
  EXPECT_EQ(program->settings.ModelName, "XG5530") << "nothing is chosen on the way";
  QTest::keyClick(models, Qt::Key_Return);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(program->settings.ModelName, "PJ7410");
  EXPECT_TRUE(See("Label_Cut").starts_with("524288 -> ")) << See("Label_Cut");
  Do("choose Comb_System 0");
  EXPECT_EQ(program->settings.MemorySize, 524288) << "the size from before comes back";
  EXPECT_EQ(See("Label_Cut"), "hidden ");
  Click("Btn_OK");
  EXPECT_EQ(W_GetWaveData(program->buffers.Current(), 524287, 524288), 77);
}

TEST_F(SystemDialogTest, ValuesAreTypedCheckedAndShownAgain) {
  Walk({{"page 3; type Txt_Oscil_0 2 .5 k", "Txt_Oscil_1", "400u"}, // blanks are not taken
        {"type Txt_Oscil_0 7k", "Txt_Oscil_1", "142.857142857143u"},
        {"type Txt_Oscil_2 21", "Txt_Oscil_2", "1", "1"}, // out of range: the setting again
        {"type Txt_Oscil_2 4; choose Comb_AmplLim 1", "Txt_Oscil_2 Label_OscilUnit_2", "2 Vpk"},
        {"page 2; type Txt_GPIB_1 999", "Txt_GPIB_1", "1"},
        {"type Txt_GPIB_1 +1,-0.x7 ", "Txt_GPIB_1 focus", "107 Comb_Trns"},
        {"tab Txt_GPIB_1 1", "Txt_GPIB_1 focus", "1 Comb_Trns"},
        {"click UD_GPIB_1_Up", "Txt_GPIB_1", "2"}});
  auto* period = Find<ValueBox>("Txt_Oscil_1");
  EXPECT_GT(period->width(), period->fontMetrics().horizontalAdvance(period->text()) + 8);
  Click("Btn_Cancel");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(Texts(program->settings.Frequency, program->settings.MemoryNo), "1000 1");
}

TEST_F(SystemDialogTest, AWaveformIsTransferredWatchedAndReadBack) {
  Page(2);
  Do("choose Comb_MSize 9; click Btn_OK");
  EXPECT_EQ(program->settings.MemorySize, 1024);
  Ramp();
  Open();
  QStringList steps;
  bool disabled = false;
  desktop.clock.onWait = [&] {
    auto* form = dialog->findChild<FrmGPIBExit*>();
    if (form == nullptr) return;
    const QString step = form->findChild<QLabel*>(QStringLiteral("LblMsg"))->text();
    if (!steps.contains(step)) steps << step;
    disabled = disabled || !Find<QWidget>("Btn_OK")->isEnabled();
  };
  Click("Btn_Trans_1");
  EXPECT_TRUE(steps.contains(QStringLiteral("Send data"))) << steps.join(' ').toStdString();
  EXPECT_TRUE(disabled);
  EXPECT_TRUE(Find<QWidget>("Btn_OK")->isEnabled());
  ASSERT_TRUE(sim::Memory("XG5530", 1));
  W_ClearMemory(program->buffers.Current(), 0, 1024);
  Click("Btn_Trans_2");
  EXPECT_EQ(Texts(host.waveforms, Code(1000)), "1 1000");
  EXPECT_TRUE(road->desk.Trace().LastTransfer().find(":TRAC:DATA? 1") != std::string::npos);
}

TEST_F(SystemDialogTest, TheProgressWindowCancelsByButtonKeyAndClose) {
  const std::function<void(FrmGPIBExit*)> ways[] = {
      [](FrmGPIBExit* form) { form->findChild<QPushButton*>(QStringLiteral("CmdGpibExit"))->click(); },
      [](FrmGPIBExit* form) { QTest::keyClick(form, Qt::Key_Escape); }, [](FrmGPIBExit* form) { form->close(); },
      [this](FrmGPIBExit*) {
        program->registry.SetGpibBusy(true);
        road->CancelTransfer();
        program->registry.SetGpibBusy(false);
      }};
  for (const auto& way : ways) {
    road->progress.Open();
    road->progress.Step("Send data", 1000);
    road->progress.Value(500);
    for (const char* caption : {"Log - third", ""}) road->progress.Caption(caption);
    auto* form = dialog->findChild<FrmGPIBExit*>();
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->findChild<QProgressBar*>(QStringLiteral("PrgGPIB"))->value(), 500);
    EXPECT_EQ(form->windowTitle(), "Log - third") << "an empty caption changes nothing";
    for (const std::size_t bytes : {0U, 500'000U}) {
      road->progress.Sent(bytes, 1'000'000);
      desktop.clock.seconds += 0.5;
    }
    const auto shown = [form](const char* label) { return form->findChild<QLabel*>(QLatin1String(label))->text(); };
    EXPECT_EQ(shown("LblMsg") + "; " + shown("LblRate"), "Send data; 1.00 MB/s, 1 s left");
    road->progress.SecondsRemaining(9);
    EXPECT_EQ(shown("LblRate"), "9 s left");
    EXPECT_FALSE(road->progress.Cancelled());
    way(form);
    EXPECT_TRUE(road->progress.Cancelled());
    road->progress.Unload();
    delete form;
    EXPECT_TRUE(road->progress.Cancelled()) << "what comes after it still sees it";
  }
}

TEST_F(SystemDialogTest, ABoxOutlivesTheProgressWindowBeneathIt) {
  road->progress.Open();
  const QPointer<FrmGPIBExit> form = dialog->findChild<FrmGPIBExit*>();
  QApplication::setActiveWindow(form);
  road->progress.Unload();
  bool closed = false;
  auto* look = new QTimer(dialog.get());
  QObject::connect(look, &QTimer::timeout, look, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || (form && form->isVisible())) return;
    closed = true;
    EXPECT_EQ(box->parentWidget(), dialog.get());
    box->accept();
  });
  look->start(20);
  EXPECT_EQ(QtMessageBoxes().Show("Error Message", "text", BoxButtons::Ok, BoxIcon::None), BoxAnswer::Ok);
  look->stop();
  EXPECT_TRUE(closed);
  EXPECT_FALSE(road->progress.Cancelled());
  EXPECT_TRUE(form) << "only whoever made it takes it away";
}

TEST_F(SystemDialogTest, AnEndlessSettingsTransferIsCancelledByButtonKeyAndClose) {
  Do("choose Comb_System 10; type Txt_GPIB_0 11");
  program->settings.RangeNo = 1;
  const std::function<void()> ways[] = {[this] { Click("Btn_Cancel"); },
                                        [this] { QTest::keyClick(dialog.get(), Qt::Key_Escape); },
                                        [this] { dialog->close(); }};
  for (const auto& way : ways) {
    sim::Reset();
    desktop.clock.seconds = 0;
    desktop.clock.onWait = [&] {
      EXPECT_TRUE(sim::Set("PJ7410", "settling", "9"));
      EXPECT_FALSE(Find<QWidget>("Btn_OK")->isEnabled());
      if (desktop.clock.seconds == 20) way();
    };
    Click("Btn_Trans_0");
    EXPECT_EQ(desktop.clock.seconds, 20);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(Texts(program->registry.GetGpibBusy(), road->bus.Initialised()), "false false");
  }
}

TEST_F(SystemDialogTest, OpensOnceAndAsksTheBusWithoutTheUsersInput) {
  dialog.reset();
  int runs = 0;
  desktop.worker.onRun = [&](Worker::Meanwhile meanwhile) {
    ++runs;
    EXPECT_EQ(meanwhile, Worker::Meanwhile::NoUserInput);
    EXPECT_EQ(road->MakeSystemSetup(host, nullptr), nullptr) << "the menu once more";
  };
  EXPECT_NE(road->MakeSystemSetup(host, nullptr), nullptr);
  EXPECT_EQ(runs, 1);
  EXPECT_FALSE(road->desk.Shown());
}

TEST_F(SystemDialogTest, TheInstrumentIsLocalAgainWhenTheProgramEndsInATransfer) {
  dialog.reset();
  program->interfaceKind = kNiGpib;
  ASSERT_EQ(road->bus.Setup(), kBusOk);
  program->registry.SetGpibBusy(true);
  EXPECT_TRUE(program->registry.GetGpibHost());
  EXPECT_EQ(desktop.settings.Get("GPIB0", "Busy"), "True");
  road.reset();
  EXPECT_EQ(sim::Traffic().back().substr(0, 11), "ibsre(0, 0)");
  EXPECT_EQ(desktop.settings.Get("GPIB0", "Busy"), "False");
}

// Work runs on one other thread in the order in which it was asked for, also when an event of the window asks for it
// while other work runs.
TEST(QtWorkerTest, EventsGoOnAndTheirWorkWaitsItsTurn) {
  QtWorker worker;
  std::vector<std::pair<std::string, std::thread::id>> done;
  std::atomic<bool> event = false;
  const auto did = [&](const char* what) { done.emplace_back(what, std::this_thread::get_id()); };
  QTimer::singleShot(0, [&] {
    event = true;
    worker.Run([&] { did("of the event"); }, Worker::Meanwhile::NoUserInput);
  });
  const auto first = [&] {
    while (!event) std::this_thread::yield();
    did("first");
  };
  worker.Run(first, Worker::Meanwhile::Everything);
  worker.Run([&] { did("last"); }, Worker::Meanwhile::Everything);
  ASSERT_EQ(done.size(), 3U);
  EXPECT_EQ(done[0].first + ", " + done[1].first + ", " + done[2].first, "first, of the event, last");
  for (const auto& [what, thread] : done) {
    EXPECT_EQ(thread, done[0].second) << what;
    EXPECT_NE(thread, std::this_thread::get_id()) << what;
  }
}

} // namespace calder::system_dialog_test
