// The System Setup dialog's real form off-screen, on the simulated bench.
#include "setup/SystemDialog.h"

#include "FormDriver.h"
#include "RecordingHost.h"
#include "editor/EditorFixture.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/QtWorker.h"
#include "platform/qt/Theme.h"
#include "platform/qt/ValueBox.h"
#include "setup/Communication.h"
#include "setup/FrmGPIBExit.h"
#include "sim/SimBench.h"

#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <atomic>

namespace calder {
namespace {

struct SystemDialogTest : EditorFixture, FormDriver {
  void SetUp() override {
    sim::Reset();
    desktop.libraries.folder = CALDER_SIM_FOLDER;
    desktop.folders.state = QDir::tempPath().toStdString() + "/calder_setup_" + std::to_string(::getpid());
    Begin();
    ApplyTheme(*qApp, program->language == Language::English);
    road.emplace(*program, editor->setup, editor->fileCommands, editor->waveFiles);
    Open();
  }
  void Open() {
    dialog.reset();
    dialog = std::make_unique<SystemDialog>(*program, road->desk, host, nullptr);
    driven = dialog.get();
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    QApplication::setActiveWindow(dialog.get());
  }
  void TearDown() override {
    dialog.reset();
    road.reset();
    QDir(QString::fromStdString(desktop.folders.state)).removeRecursively();
  }
  void Page(int index) { Find<QTabWidget>("SSTab")->setCurrentIndex(index); }
  void Choose(const char* name, int index) {
    auto* box = Find<QComboBox>(name);
    box->setFocus();
    while (box->currentIndex() < index) QTest::keyClick(box, Qt::Key_Down);
    while (box->currentIndex() > index) QTest::keyClick(box, Qt::Key_Up);
    QTest::keyClick(box, Qt::Key_Tab); // a choice counts when the list is left
  }

  std::optional<Communication> road;
  std::unique_ptr<SystemDialog> dialog;
  RecordingHost host;
};

TEST_F(SystemDialogTest, ListsAndEnabledControlsFollowTheModel) {
  EXPECT_EQ(Find<QComboBox>("Comb_System")->count(), program->models.SysGetDeviceCnt());
  // The access key of a box on another page is not the first letter of a model.
  QTest::keyClick(Find<QWidget>("Comb_System"), Qt::Key_P, Qt::AltModifier);
  EXPECT_EQ(Find<QComboBox>("Comb_System")->currentText(), "XG5530");
  EXPECT_TRUE(Find<QWidget>("Comb_SerialNo")->isVisible());
  EXPECT_FALSE(Find<QWidget>("Txt_GPIB_0")->isVisible());
  EXPECT_FALSE(Find<QWidget>("Comb_Channel")->isEnabled());
  Choose("Comb_System", 10);
  EXPECT_EQ(program->settings.ModelName, "PJ7410");
  EXPECT_TRUE(Find<QWidget>("Txt_GPIB_0")->isVisible());
  EXPECT_EQ(Find<QLabel>("Label_Channel")->text(), "&Mode");
  Page(3);
  EXPECT_EQ(Find<QComboBox>("Comb_Channel")->count(), 4);
  EXPECT_TRUE(Find<QWidget>("Frm_Offs")->isVisible());
  Choose("Comb_Channel", 2);
  EXPECT_EQ(program->settings.Channel, 2);
  Page(0);
  // Only USBTMC reads a waveform back, and the button says so.
  EXPECT_FALSE(Find<QWidget>("Btn_Trans_2")->isEnabled());
  EXPECT_EQ(Find<QWidget>("Btn_Trans_2")->toolTip(), "Only USB(TMC) can read a waveform back.");
  Choose("Comb_System", 0);
  Choose("Comb_Intfc", 0);
  EXPECT_TRUE(Find<QWidget>("Btn_Trans_2")->isEnabled());
  EXPECT_EQ(Find<QWidget>("Btn_Trans_2")->toolTip(), "");
  Choose("Comb_System", 22);
  EXPECT_EQ(Find<QComboBox>("Comb_Intfc")->count(), 1);
  EXPECT_EQ(Find<QLabel>("Label_Channel")->text(), "&Channel");
}

TEST_F(SystemDialogTest, EnterPressesTheFocusedButton) {
  const struct {
    const char* control;
    double frequency; // what the record has after a change to 5 kHz and an Enter there
    bool closed;
  } rows[] = {
      {"Btn_Cancel", 1000, true}, {"Btn_OK", 5000, true}, {"Comb_AmplLim", 5000, true}, {"Btn_Trans_0", 5000, false}};
  for (const auto& row : rows) {
    program->settings.Frequency = 1000;
    Open();
    program->settings.Frequency = 5000;
    auto* control = Find<QWidget>(row.control);
    Page(2);
    control->setFocus();
    QTest::keyClick(control, Qt::Key_Return);
    EXPECT_EQ(program->settings.Frequency, row.frequency) << row.control;
    EXPECT_EQ(!dialog->isVisible(), row.closed) << row.control;
  }
}

// The waveform keeps its points while the list is gone through, and a line says what an OK would cut.
TEST_F(SystemDialogTest, LookingThroughTheModelsCutsNothing) {
  const auto last = [this] { return W_GetWaveData(program->buffers.Current(), 524287, 524288); };
  W_MakeDC(program->buffers.Current(), 0, 524288, 77);
  auto* models = Find<QComboBox>("Comb_System");
  models->setFocus();
  for (int i = 0; i < 10; ++i) QTest::keyClick(models, Qt::Key_Down);
  EXPECT_EQ(program->settings.ModelName, "XG5530") << "nothing is chosen on the way";
  QTest::keyClick(models, Qt::Key_Return);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(program->settings.ModelName, "PJ7410");
  const QString line = Find<QLabel>("Label_Cut")->text();
  EXPECT_TRUE(line.startsWith(QLatin1String("524288 -> "))) << line.toStdString();
  Choose("Comb_System", 0);
  EXPECT_EQ(program->settings.MemorySize, 524288) << "the size from before comes back";
  EXPECT_FALSE(Find<QLabel>("Label_Cut")->isVisible());
  Click("Btn_OK");
  EXPECT_EQ(last(), 77);
}

TEST_F(SystemDialogTest, ValuesAreTypedCheckedAndShownAgain) {
  Page(3);
  Type("Txt_Oscil_0", "2 .5 k"); // blanks are not taken
  EXPECT_EQ(Shown("Txt_Oscil_1"), "400u");
  Type("Txt_Oscil_0", "7k");
  EXPECT_EQ(Shown("Txt_Oscil_1"), "142.857142857143u");
  auto* period = Find<ValueBox>("Txt_Oscil_1");
  EXPECT_GT(period->width(), period->fontMetrics().horizontalAdvance(period->text()) + 8);
  Type("Txt_Oscil_2", "21");
  EXPECT_EQ(Shown("Txt_Oscil_2"), "1") << "out of range: the setting again";
  Type("Txt_Oscil_2", "4");
  Choose("Comb_AmplLim", 1);
  EXPECT_EQ(Shown("Txt_Oscil_2"), "2");
  EXPECT_EQ(Find<QLabel>("Label_OscilUnit_2")->text(), "Vpk");
  Click("Opt_Output_0");
  EXPECT_EQ(program->settings.Output, 0);
  Page(1);
  Choose("Comb_Unit_0", 1);
  EXPECT_FALSE(Find<QWidget>("Txt_Unit_Name_0")->isEnabled());
  Page(2);
  Type("Txt_GPIB_1", "999");
  EXPECT_EQ(Shown("Txt_GPIB_1"), "1");
  Type("Txt_GPIB_1", "+1,-0.x7 ");
  EXPECT_EQ(Shown("Txt_GPIB_1"), "107");
  EXPECT_FALSE(Find<ValueBox>("Txt_GPIB_1")->hasFocus()); // Enter moves on, and so does Tab
  Find<ValueBox>("Txt_GPIB_1")->setFocus();
  QTest::keyClick(Find<ValueBox>("Txt_GPIB_1"), Qt::Key_Tab);
  EXPECT_FALSE(Find<ValueBox>("Txt_GPIB_1")->hasFocus());
  Type("Txt_GPIB_1", "1");
  Click("UD_GPIB_1_Up");
  EXPECT_EQ(Shown("Txt_GPIB_1"), "2");
  Click("Btn_Cancel");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(program->settings.Frequency, 1000);
  EXPECT_EQ(program->settings.MemoryNo, 1);
}

TEST_F(SystemDialogTest, AWaveformIsTransferredWatchedAndReadBack) {
  Page(2);
  Choose("Comb_MSize", 9);
  Click("Btn_OK");
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
  EXPECT_EQ(host.waveforms, 1);
  EXPECT_EQ(Code(1000), 1000);
  EXPECT_TRUE(road->desk.Trace().LastTransfer().find(":TRAC:DATA? 1") != std::string::npos);
}

TEST_F(SystemDialogTest, TheProgressWindowCancelsByButtonKeyAndClose) {
  const std::function<void(FrmGPIBExit*)> ways[] = {
      [](FrmGPIBExit* form) { form->findChild<QPushButton*>(QStringLiteral("CmdGpibExit"))->click(); },
      [](FrmGPIBExit* form) { QTest::keyClick(form, Qt::Key_Escape); }, [](FrmGPIBExit* form) { form->close(); }};
  for (const auto& way : ways) {
    road->progress.Open();
    road->progress.Step("Send data", 1000);
    road->progress.Value(500);
    auto* form = dialog->findChild<FrmGPIBExit*>();
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->findChild<QProgressBar*>(QStringLiteral("PrgGPIB"))->value(), 500);
    EXPECT_FALSE(road->progress.Cancelled());
    way(form);
    EXPECT_TRUE(road->progress.Cancelled());
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
  Choose("Comb_System", 10);
  Type("Txt_GPIB_0", "11");
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
    EXPECT_FALSE(program->registry.GetGpibBusy());
    EXPECT_FALSE(road->bus.Initialised());
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

TEST_F(SystemDialogTest, NoCaptionIsClippedInEitherLanguage) {
  for (const int language : {SystemLanguage::kJapanese, SystemLanguage::kEnglish}) {
    TearDown();
    desktop.language.id = language;
    SetUp();
    for (int page = 0; page < 4; ++page) {
      Page(page);
      for (QWidget* widget : dialog->findChildren<QWidget*>()) {
        const bool captioned = qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget);
        if (!captioned || !widget->isVisible()) continue;
        EXPECT_LE(widget->sizeHint().width(), widget->width()) << widget->objectName().toStdString() << language;
        EXPECT_LE(widget->sizeHint().height(), widget->height()) << widget->objectName().toStdString() << language;
      }
    }
  }
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

} // namespace
} // namespace calder
