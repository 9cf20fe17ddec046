// The System Setup dialog's real form off-screen, on the simulated bench.
#include "setup/SystemDialog.h"

#include "FormDriver.h"
#include "RecordingHost.h"
#include "editor/EditorFixture.h"
#include "platform/TempFolder.h"
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
#include <functional>
#include <sstream>

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

// Every control: what is chosen, typed or pressed, and what must be seen after it.
TEST_F(SystemDialogTest, EveryControlIsWired) {
  const TempFolder folder;
  const auto field = [this](auto SystemInfo::*member) {
    return [this, member] { return (std::ostringstream() << program->settings.*member).str(); };
  };
  const auto text = [this](const char* name) {
    return [this, name] {
      auto* widget = Find<QWidget>(name);
      return (widget->isEnabled() ? "" : "off ") + widget->property("text").toString().toStdString();
    };
  };
  const auto kind = [this] { return std::to_string(program->interfaceKind); };
  const auto page = [this] { return std::to_string(Find<QTabWidget>("SSTab")->currentIndex()); };
  const auto file = [&](const char* name) {
    return [&, name] { return std::string(std::filesystem::exists(folder / name) ? "file" : "none"); };
  };
  const auto focus = [] { return Focus(); };
  const auto keeping = [this] { return std::string(road->desk.Trace().Keeping() ? "on" : "off"); };
  const struct {
    int page;
    const char *control, *input; // an index, a text, a file for the dialog that comes
    std::function<std::string()> seen;
    std::string after;
  } rows[] = {
      {0, "Comb_System", "1", field(&SystemInfo::ModelNo), "1"},
      {0, "", "", text("txtSerialNo"), "USB0::0x1209::0x5531::1234567"},
      {0, "Comb_Intfc", "1", kind, "0"},
      {0, "Txt_GPIB_0", "7", field(&SystemInfo::Address), "7"},
      {0, "UD_GPIB_0_Up", "", field(&SystemInfo::Address), "8"},
      {0, "UD_GPIB_0_Down", "", field(&SystemInfo::Address), "7"},
      {1, "Comb_Unit_0", "1", text("Txt_Unit_0"), "off 0.000000"},
      {1, "Comb_Unit_0", "2", field(&SystemInfo::XUnit), "2"},
      {1, "Txt_Unit_Name_0", "deg", field(&SystemInfo::XUserName), "deg"},
      {1, "Txt_Unit_0", "-2", field(&SystemInfo::XUserMin), "-2"},
      {1, "Txt_Unit_1", "5k", field(&SystemInfo::XUserMax), "5000"},
      {1, "Comb_Unit_1", "1", text("Txt_Unit_Name_1"), "off "},
      {1, "Comb_Unit_1", "2", field(&SystemInfo::YUnit), "2"},
      {1, "Txt_Unit_Name_1", "bar", field(&SystemInfo::YUserName), "bar"},
      {1, "Txt_Unit_2", "-3", field(&SystemInfo::YUserMin), "-3"},
      {1, "Txt_Unit_3", "4", text("Txt_Unit_3"), "4.000"},
      {2, "Comb_MSize", "1", text("Label_Cut"), "524288 -> 262144 points: the waveform will be cut on OK"},
      {2, "Comb_MSize", "0", text("Label_Cut"), ""},
      {2, "Txt_MName", "ABC", field(&SystemInfo::MemoryName), "ABC"},
      {2, "", "", focus, "Txt_GPIB_1"},
      {2, "Txt_GPIB_1", "9", field(&SystemInfo::MemoryNo), "9"},
      {2, "UD_GPIB_1_Up", "", field(&SystemInfo::MemoryNo), "10"},
      {2, "UD_GPIB_1_Down", "", field(&SystemInfo::MemoryNo), "9"},
      {2, "Comb_Trns", "1", field(&SystemInfo::TransferFormat), "1"},
      {2, "", "", text("Label_CtrlPoints"), "2 control points"},
      {3, "Comb_Channel", "1", field(&SystemInfo::Channel), "1"},
      {3, "", "", text("Label_OscilLimit_0"), "off 10n to 15M"},
      {3, "", "", text("Label_OscilLimit_2"), "off 0 to 20"},
      {3, "", "", text("Label_OscilLimit_1"), "off 66.667n to 100M"},
      {3, "", "", text("Label_OscilLimit_3"), "off -10 to 10"},
      {3, "Comb_Range", "1", field(&SystemInfo::RangeNo), "1"},
      {3, "Comb_AmplLim", "3", field(&SystemInfo::Polarity), "3"},
      {3, "Txt_Oscil_0", "5k", field(&SystemInfo::Frequency), "5000"},
      {3, "Txt_Oscil_1", "1m", field(&SystemInfo::Frequency), "1000"},
      {3, "Txt_Oscil_2", "1", field(&SystemInfo::Amplitude), "1"},
      {3, "Txt_Oscil_3", "0.5", field(&SystemInfo::Offset), "0.5"},
      {3, "Opt_Output_2", "", field(&SystemInfo::Output), "2"},
      {3, "Opt_Output_1", "", field(&SystemInfo::Output), "1"},
      {3, "Opt_Output_0", "", field(&SystemInfo::Output), "0"},
      {0, "Menu_FileSave", "a.ocb", file("a.ocb"), "file"},
      {0, "Txt_GPIB_0", "9", field(&SystemInfo::Address), "9"},
      {0, "Menu_FileOpen", "a.ocb", field(&SystemInfo::Address), "7"},
      {0, "", "", text("Txt_GPIB_0"), "7"},
      {0, "Menu_LogTraffic", "", keeping, "on"},
      {0, "Menu_SaveLog", "a.log", file("a.log"), "file"},
      {0, "Menu_LogTraffic", "", keeping, "off"},
      {0, "Ctrl+Tab", "", page, "1"},
      {1, "Ctrl+Shift+Backtab", "", page, "0"},
      {0, "Ctrl+PgUp", "", page, "3"},
      {3, "Ctrl+PgDown", "", page, "0"},
      {0, "Txt_GPIB_0", "2", field(&SystemInfo::Address), "2"}, // where the bench has it
  };
  for (const auto& row : rows) {
    Page(row.page);
    if (std::string(row.control).starts_with("Ctrl")) {
      const QKeyCombination keys = QKeySequence(QLatin1String(row.control))[0];
      Find<QWidget>("Comb_System")->setFocus();
      QTest::keyClick(dialog.get(), keys.key(), keys.keyboardModifiers());
    } else if (std::string(row.control).starts_with("Menu")) {
      if (*row.input != 0) desktop.dialogs.Answer(folder / row.input);
      Find<QAction>(row.control)->trigger();
    } else if (*row.control != 0) {
      auto* control = Find<QWidget>(row.control);
      if (qobject_cast<QComboBox*>(control) != nullptr)
        Choose(row.control, std::stoi(row.input));
      else if (qobject_cast<ValueBox*>(control) != nullptr)
        Type(row.control, row.input);
      else
        Click(row.control);
    }
    EXPECT_EQ(row.seen(), row.after) << row.control << " " << row.input;
  }
  for (const auto& [channel, next] : {std::pair{1, "Comb_Channel"}, {0, "Comb_Trns"}}) {
    program->settings.MemoryNoSelectable = 0;
    program->settings.ChannelSelectable = static_cast<std::int16_t>(channel);
    road->desk.EnterMemoryNo(""); // shows the record
    Page(2);
    Type("Txt_MName", "X");
    EXPECT_EQ(Focus(), next);
  }
  Click("Btn_Trans_0");
  QTimer::singleShot(0, [] {
    QWidget* window = QApplication::activeModalWidget();
    EXPECT_EQ(window->objectName() + window->windowTitle(), "LastTransferLast transfer");
    EXPECT_TRUE(window->findChild<QPlainTextEdit*>()->toPlainText().contains("*IDN?"));
    window->close();
  });
  Find<QAction>("Menu_LastTransfer")->trigger();
}

TEST_F(SystemDialogTest, EnterPressesTheFocusedButton) {
  struct Row {
    const char* control;
    double frequency; // what the record has after a change to 5 kHz and an Enter there
    bool closed;
  };
  for (const Row& row : {Row{"Btn_Cancel", 1000, true}, Row{"Btn_OK", 5000, true}, Row{"Comb_AmplLim", 5000, true},
                         Row{"Btn_Trans_0", 5000, false}}) {
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
        EXPECT_EQ(widget->size().expandedTo(widget->sizeHint()), widget->size())
            << widget->objectName().toStdString() << language;
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
