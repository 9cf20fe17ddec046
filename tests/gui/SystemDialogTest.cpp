// The System Setup dialog's real form off-screen, on the simulated bench.
#include "setup/SystemDialog.h"

#include "FormDriver.h"
#include "editor/EditorFixture.h"
#include "platform/qt/Theme.h"
#include "setup/FrmGPIBExit.h"
#include "sim/SimBench.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

namespace calder {
namespace {

struct SystemDialogTest : EditorFixture, FormDriver {
  void SetUp() override {
    sim::Reset();
    desktop.libraries.folder = CALDER_SIM_FOLDER;
    desktop.folders.state = QDir::tempPath().toStdString() + "/calder_setup_" + std::to_string(::getpid());
    Begin();
    ApplyTheme(*qApp, program->language == Language::English);
    bus.emplace(*program, std::function<std::unique_ptr<Visa>()>(), std::function<void()>());
    progress.emplace(*program);
    desk.emplace(*program, editor->setup, editor->fileCommands, editor->waveFiles, *bus, *progress);
    Open();
  }
  void Open() {
    dialog.reset();
    dialog = std::make_unique<SystemDialog>(
        *program, *desk, [this] { ++changes; }, nullptr);
    driven = dialog.get();
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    QApplication::setActiveWindow(dialog.get());
  }
  void TearDown() override {
    dialog.reset();
    desk.reset();
    progress.reset();
    bus.reset();
    QDir(QString::fromStdString(desktop.folders.state)).removeRecursively();
  }
  void Page(int index) { Find<QTabWidget>("SSTab")->setCurrentIndex(index); }
  void Choose(const char* name, int index) {
    auto* box = Find<QComboBox>(name);
    box->setFocus();
    while (box->currentIndex() < index) QTest::keyClick(box, Qt::Key_Down);
    while (box->currentIndex() > index) QTest::keyClick(box, Qt::Key_Up);
  }

  std::optional<IntfcLib> bus;
  std::optional<ProgressWindow> progress;
  std::optional<SetupDesk> desk;
  std::unique_ptr<SystemDialog> dialog;
  int changes = 0;
};

TEST_F(SystemDialogTest, ListsAndEnabledControlsFollowTheModel) {
  EXPECT_EQ(Find<QComboBox>("Comb_System")->count(), 26);
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
  Choose("Comb_System", 22);
  EXPECT_EQ(Find<QComboBox>("Comb_Intfc")->count(), 1);
  EXPECT_EQ(Find<QLabel>("Label_Channel")->text(), "&Channel");
}

TEST_F(SystemDialogTest, ValuesAreTypedCheckedAndShownAgain) {
  Page(3);
  Type("Txt_Oscil_0", "2.5k");
  EXPECT_EQ(Shown("Txt_Oscil_1"), "400u");
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
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(Code(1000), 1000);
  EXPECT_TRUE(desk->Trace().LastTransfer().find(":TRAC:DATA? 1") != std::string::npos);
}

TEST_F(SystemDialogTest, TheProgressWindowCancelsByButtonKeyAndClose) {
  const std::function<void(FrmGPIBExit*)> ways[] = {
      [](FrmGPIBExit* form) { form->findChild<QPushButton*>(QStringLiteral("CmdGpibExit"))->click(); },
      [](FrmGPIBExit* form) { QTest::keyClick(form, Qt::Key_Escape); }, [](FrmGPIBExit* form) { form->close(); }};
  for (const auto& way : ways) {
    progress->Open();
    progress->Step("Send data", 1000);
    progress->Value(500);
    FrmGPIBExit* form = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (auto* candidate = qobject_cast<FrmGPIBExit*>(widget)) form = candidate;
    }
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->findChild<QProgressBar*>(QStringLiteral("PrgGPIB"))->value(), 500);
    EXPECT_FALSE(progress->Cancelled());
    way(form);
    EXPECT_TRUE(progress->Cancelled());
  }
}

} // namespace
} // namespace calder
