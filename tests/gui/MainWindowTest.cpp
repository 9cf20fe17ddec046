// The real window off-screen, driven by keys and mouse.
#include "MainWindowFixture.h"
#include "platform/TempFolder.h"

#include <QScreen>
#include <QStatusBar>

namespace calder::main_window_test {

struct MainWindowTest : MainWindowFixture {};

TEST_F(MainWindowTest, StartsCaptionedAndFilled) {
  Start();
  EXPECT_EQ(window->windowTitle(), "Orvo Calder for XG5530/31 <Untitled>");
  EXPECT_EQ(See("Menu_FileSaveAs2 Menu_Undo Menu_Grid"), "Save As(&TXT)... off &Undo checked");
  EXPECT_TRUE(Find<QAction>("Menu_System")->isVisible());
  EXPECT_EQ(Find<QAction>("Menu_FileSaveAs2")->shortcut(), QKeySequence("Ctrl+T"));
  EXPECT_EQ(Find<QComboBox>("Comb_XZoom_0")->count(), 8);
  EXPECT_EQ(Find<QComboBox>("Comb_YZoom")->itemText(8), "1:256");
  EXPECT_EQ(See("Txt_End_X Label_W_Min"), "1.000000 -1.00000");
  const QSize screen = window->screen()->availableSize();
  EXPECT_LT(firstSize.width(), screen.width());
  EXPECT_LT(firstSize.height(), screen.height());
}

TEST_F(MainWindowTest, LookingAtAValueDoesNotMoveIt) {
  Start();
  const Scope scope{12345, 400000}; // 0.02354621887..., shown with seven digits
  State().buffers.CurrentScope() = scope;
  window->Show(kEverything);
  Walk({{"tab Txt_Start_X ; tab Txt_End_X ", "focus", "Comb_XZoom_0"}, {"key . Tab", "focus", "Comb_YZoom"}});
  EXPECT_EQ(State().buffers.CurrentScope(), scope);
  Do("on Txt_Start_X 77; key . Esc; key Txt_End_X Tab");
  EXPECT_EQ(State().buffers.CurrentScope(), scope);
}

TEST_F(MainWindowTest, AStartTakesUpWhatWasLeft) {
  const TempFolder folder;
  PutFile(folder / "five.txt", "5\r\n");
  desktop.language.id = SystemLanguage::kJapanese;
  desktop.settings.Set("FormProperty", "MainWindow", "600,450,0,0");
  desktop.settings.Set("System", "GpibBoard", "0");
  desktop.settings.Set("System", "SerialNum", "SN7");
  desktop.folders.bus = CALDER_SIM_FOLDER;
  Start({folder / "five.txt", folder / "six.txt"});
  EXPECT_EQ(desktop.copies.files, std::vector<std::string>{folder / "six.txt"});
  QCoreApplication::processEvents(); // the file is opened after the first picture
  EXPECT_EQ(window->pos(), QPoint(30, 40));
  EXPECT_EQ(State().interfaceKind, kNiGpib);
  EXPECT_EQ(State().serialNumber, "SN7");
  EXPECT_EQ(Code(9), 5);
  EXPECT_EQ(window->windowTitle().toStdString(), "Orvo Calder for XG5530/31 <" + folder / "five.txt" + ">");
  EXPECT_EQ(See("Menu_FileOpen"), "開く(&O)...");
  EXPECT_EQ(Find<QMenu>("Menu_File")->title(), "ﾌｧｲﾙ(&F)");
  EXPECT_EQ(Find<QToolButton>("Tool_Open")->toolTip(), "開く (Ctrl+O)");
  EXPECT_EQ(Find<QRadioButton>("Opt_Scope_1")->text(), "連動(&R)");
  EXPECT_TRUE(Line("Label_Status").starts_with("計測器はシミュレーション"));
  EXPECT_TRUE(window->statusBar()->isAncestorOf(Find<QLabel>("Label_Status")));
  desktop.settings.Set("FormProperty", "MainWindow", "600000,450,0,0");
  Start();
  EXPECT_EQ(window->pos(), QPoint(30, 0)) << "a place off the screen";
}

TEST_F(MainWindowTest, TheSessionCannotEndWhileTheProgramRuns) {
  Start();
  desktop.boxes.Expect("[CALDER] is Active!");
  EXPECT_FALSE(window->SessionMayEnd());
}

TEST_F(MainWindowTest, EveryCommandTakesWhatWasTypedFirst) {
  Start();
  verbs["tool"] = [this](const auto& name, const auto&) {
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    Click(name);
  };
  verbs["drop"] = [this](const auto& name, const auto&) {
    desktop.boxes.Expect("File Read error.");
    Drop(window, name);
  };
  double end = 524288;
  for (const char* command : {"click Tool_Copy", "key . Ctrl+C", "menu Menu_Grid", "click Opt_DspSel_1",
                              "tool Opt_DlgSel_0", "drop /missing/a.wdb"}) {
    end /= 2;
    TypeOn("Txt_End_X", std::to_string(end / 524288));
    EXPECT_EQ(State().buffers.CurrentScope().End, end * 2);
    Do(command);
    EXPECT_EQ(State().buffers.CurrentScope().End, end) << command;
  }
}

TEST_F(MainWindowTest, AColumnOfNumbersPastesAsAWaveform) {
  Start();
  QApplication::clipboard()->setText("10\n-20\n30\n");
  Do("menu Menu_Paste");
  EXPECT_EQ(Code(1), -20);
  EXPECT_EQ(State().buffers.CurrentScope(), (Scope{0, 3}));
  QApplication::clipboard()->setText("no numbers");
  desktop.boxes.Expect("ClipBoard Read error.");
  Do("menu Menu_Paste");
}

TEST_F(MainWindowTest, TheWheelZoomsAtThePointerAndTheReadoutFollowsTheView) {
  Start();
  auto* picture = Find<WaveformCanvas>("Pict_Wave");
  QTest::mouseMove(picture, QPoint(picture->width() * 3 / 4, 50));
  Wheel("Pict_Wave", QPointF(picture->width() * 0.75, 50), 3);
  const double under = State().view.XStart + 0.75 * (State().view.XEnd - State().view.XStart);
  EXPECT_NEAR(under, 0.75 * 524288, 2000);
  const std::string before = Shown("Txt_Cur_X_0");
  Wheel("Pict_Wave", QPointF(10, 50), -1, Qt::ShiftModifier);
  EXPECT_NE(Shown("Txt_Cur_X_0"), before) << "another point is under the pointer";
}

TEST_F(MainWindowTest, AMarkerIsDraggedWithTheMouse) {
  Start();
  Ramp();
  Type("Txt_End_X", "0.5");
  auto* picture = Find<WaveformCanvas>("Pict_Wave");
  const int column = application->TheEditor().view.PointToPixelX(262144, picture->PixelWidth());
  QTest::mouseMove(picture, QPoint(column, 100));
  EXPECT_EQ(picture->cursor().shape(), Qt::SizeHorCursor);
  QTest::mousePress(picture, Qt::LeftButton, Qt::NoModifier, QPoint(column, 100));
  QTest::mouseMove(picture, QPoint(column + 40, 100));
  QTest::mouseRelease(picture, Qt::LeftButton, Qt::NoModifier, QPoint(column + 40, 100));
  const double expected = application->TheEditor().view.PixelXToPoint(column + 40, picture->PixelWidth());
  EXPECT_NEAR(State().buffers.CurrentScope().End, expected, 1);
  const QImage moved = picture->Image().copy();
  window->Draw_Wave();
  EXPECT_EQ(moved, picture->Image()) << "drawing again gives the same pixels as moving the marker";
  // A press with a key held grabs nothing.
  QTest::mousePress(picture, Qt::LeftButton, Qt::ShiftModifier, QPoint(column + 40, 100));
  QTest::mouseMove(picture, QPoint(column, 100));
  EXPECT_NEAR(State().buffers.CurrentScope().End, expected, 1);
  QTest::mouseRelease(picture, Qt::LeftButton, Qt::ShiftModifier, QPoint(column, 100));
}

TEST_F(MainWindowTest, ADroppedFileOpens) {
  const TempFolder folder;
  Start();
  for (const char* target : {"Panel_Main", "Txt_End_X", "Txt_Cur_X_0", "Pict_Wave"}) {
    const std::string name = std::string(target) + ".txt";
    PutFile(folder / name, "5\r\n");
    W_ClearMemory(State().buffers.Current(), 0, 524288);
    Drop(Find<QWidget>(target), folder / name);
    EXPECT_EQ(Code(9), 5) << target;
    EXPECT_NE(window->windowTitle().indexOf(QString::fromStdString(name)), -1) << target;
  }
  EXPECT_EQ(Shown("Txt_End_X"), "1.000000") << "no text of the file's name";
}

TEST_F(MainWindowTest, ClosingStoresThePositionUnlessItIsRefused) {
  Start();
  window->move(30, 40);
  QCoreApplication::processEvents();
  desktop.boxes.Expect("Exit Program.", BoxAnswer::No);
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(window->isVisible());
  desktop.boxes.Expect("Exit Program.", BoxAnswer::Yes);
  EXPECT_TRUE(window->close());
  application.reset();
  EXPECT_EQ(desktop.settings.Get("FormProperty", "MainWindow"), "600,450,0,0");
}

// As a signal asks for it: no question, and a transfer under way has its end first.
TEST_F(MainWindowTest, AnEndFromOutsideWaitsForTheTransfer) {
  Start();
  State().registry.SetGpibBusy(true);
  bool waited = false;
  QTimer::singleShot(0, window, [this] { application->End(); });
  QTimer::singleShot(120, window, [&] {
    waited = true;
    State().registry.SetGpibBusy(false);
  });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_TRUE(waited);
  application.reset();
  EXPECT_EQ(desktop.settings.Get("System", "WinCount"), "0");
  EXPECT_EQ(desktop.settings.Get("Sysinfo", "sys_no"), "0");
  EXPECT_TRUE(desktop.settings.Get("FormProperty", "MainWindow").has_value());
}

// A tool is a row: its number, how much of the window waits, how its form is made.
TEST_F(MainWindowTest, AToolOfTenLinesIsInTheMenuAndTheSelector) {
  struct Small : ToolForm {
    Small(Program& program, QWidget* parent) : ToolForm(program.registry, "Small", parent) { Place({200, 100}); }
  };
  Start();
  MainWindow bare(application->TheEditor()); // the program's own has all of its tools
  driven = window = &bare;
  window->show();
  EXPECT_FALSE(Find<QAction>("Menu_Pwf")->isVisible());
  window->AddTool(
      {kToolPwf, ToolModality::Modeless, [this](QWidget* parent) { return std::make_unique<Small>(State(), parent); }});
  EXPECT_TRUE(Find<QAction>("Menu_Pwf")->isVisible());
  EXPECT_TRUE(Find<QToolButton>("Opt_DlgSel_4")->isVisible());
  const char* const blocked[] = {"Menu_File", "Menu_Edit", "Menu_Tools", "Menu_Set"};
  const auto expectBlocked = [&](bool block) {
    for (const char* menu : blocked) EXPECT_EQ(Find<QMenu>(menu)->isEnabled(), !block) << menu;
    EXPECT_EQ(Find<QToolButton>("Tool_Cut")->isEnabled(), !block) << "nor by its button or its key";
    EXPECT_EQ(Find<QToolButton>("Opt_DspSel_1")->isEnabled(), !block);
    EXPECT_EQ(Find<QWidget>("Panel_Dlg")->isEnabled(), !block);
    EXPECT_EQ(Find<QToolButton>("Opt_DlgSel_4")->isChecked(), block);
    EXPECT_EQ(State().selectedTool, block ? kToolPwf : kToolNone);
  };
  Find<QAction>("Menu_Pwf")->trigger();
  auto* form = window->findChild<ToolForm*>();
  ASSERT_NE(form, nullptr);
  EXPECT_TRUE(form->isVisible());
  expectBlocked(true);
  form->move(300, 200);
  form->close();
  expectBlocked(false);
  Find<QAction>("Menu_Pwf")->trigger();
  EXPECT_EQ(window->findChildren<ToolForm*>().back()->pos(), QPoint(300, 200)) << "where it was left";
}

} // namespace calder::main_window_test
