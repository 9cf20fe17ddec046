// The real window off-screen, driven by keys and mouse.
#include "editor/MainWindow.h"
#include "Application.h"
#include "FakeDesktop.h"
#include "FormDriver.h"
#include "platform/TempFolder.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/WaveformCanvas.h"

#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QRadioButton>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QWheelEvent>

namespace calder {
namespace {

struct MainWindowTest : testing::Test, FormDriver {
  void Start(const std::string& file = {}) {
    Desktop services = {desktop.boxes,     desktop.dialogs, desktop.settings, desktop.clock,
                        clipboard,         desktop.windows, desktop.copies,   desktop.language,
                        desktop.libraries, desktop.worker,  desktop.folders,  {}};
    application = std::make_unique<Application>(services);
    ASSERT_TRUE(application->Start(file));
    window = &application->Window();
    driven = window;
    firstSize = window->size();
    window->resize(1000, 640);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    QApplication::setActiveWindow(window);
    QCoreApplication::processEvents();
  }

  void Wheel(WaveformCanvas* picture, QPointF at, int notches, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QWheelEvent event(at, picture->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, keys, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(picture, &event);
  }
  // As a file manager does it: the file's name comes as text as well.
  void Drop(QWidget* target, const std::string& path) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
    data.setText(QString::fromStdString(path));
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
    QCoreApplication::processEvents(); // the file is opened after the drop
  }
  Program& State() { return application->TheEditor().program; }
  void Ramp() {
    const auto points = W_Lock(State().buffers.Current());
    for (std::size_t i = 0; i < points.size(); ++i) points[i] = static_cast<std::int16_t>(i % 30000);
    window->Draw_Wave();
  }

  fake::FakeDesktop desktop;
  QtClipboard clipboard;
  std::unique_ptr<Application> application;
  MainWindow* window = nullptr;
  QSize firstSize;
};

TEST_F(MainWindowTest, StartsCaptionedAndFilled) {
  Start();
  EXPECT_EQ(window->windowTitle(), "Orvo Calder for XG5530/31 <Untitled>");
  EXPECT_EQ(Find<QAction>("Menu_FileSaveAs2")->text(), "Save As(&TXT)...");
  EXPECT_EQ(Find<QAction>("Menu_FileSaveAs2")->shortcut(), QKeySequence("Ctrl+T"));
  EXPECT_EQ(Find<QComboBox>("Comb_XZoom_0")->count(), 8);
  EXPECT_EQ(Find<QComboBox>("Comb_YZoom")->itemText(8), "1:256");
  EXPECT_FALSE(Find<QAction>("Menu_Undo")->isEnabled());
  EXPECT_TRUE(Find<QAction>("Menu_Grid")->isChecked());
  EXPECT_EQ(Shown("Txt_Start_X"), "0.000000");
  EXPECT_EQ(Shown("Txt_End_X"), "1.000000");
  EXPECT_EQ(Find<QLabel>("Label_W_Min")->text(), "-1.00000");
  const QSize screen = window->screen()->availableSize();
  EXPECT_LT(firstSize.width(), screen.width());
  EXPECT_LT(firstSize.height(), screen.height());
}

TEST_F(MainWindowTest, TypedMarkersMoveAndTheFocusGoesOn) {
  Start();
  Type("Txt_Start_X", "0.25", Qt::Key_Tab);
  EXPECT_EQ(Focus(), "Txt_End_X");
  EXPECT_EQ(Shown("Txt_Start_X"), "250.000m");
  Type("Txt_End_X", "750m");
  EXPECT_EQ(Focus(), "Comb_XZoom_0");
  EXPECT_EQ(State().buffers.CurrentScope(), (Scope{131072, 393216}));
  EXPECT_EQ(Shown("Txt_End_X"), "750.000m");
  EXPECT_EQ(Shown("Txt_Scope"), "500.000m");
  Type("Txt_Start_X", "0.9");
  EXPECT_EQ(Shown("Txt_Start_X"), "250.000m") << "a refused text leaves what was there";
  Type("Txt_Scope", "0.125");
  EXPECT_EQ(Focus(), "Txt_Start_X");
  EXPECT_EQ(State().buffers.CurrentScope(), (Scope{131072, 196608}));
}

TEST_F(MainWindowTest, LookingAtAValueDoesNotMoveIt) {
  Start();
  State().buffers.CurrentScope() = {12345, 400000}; // 0.02354621887..., shown with seven digits
  window->Show(kEverything);
  Type("Txt_Start_X", "", Qt::Key_Tab);
  Type("Txt_End_X", "", Qt::Key_Tab);
  EXPECT_EQ(Focus(), "Comb_XZoom_0");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(Focus(), "Comb_YZoom");
  EXPECT_EQ(State().buffers.CurrentScope(), (Scope{12345, 400000}));
  auto* box = Find<ValueBox>("Txt_Start_X");
  box->setFocus();
  QTest::keyClicks(box, "77");
  QTest::keyClick(box, Qt::Key_Escape);
  box->clearFocus();
  EXPECT_EQ(State().buffers.CurrentScope().Start, 12345);
}

TEST_F(MainWindowTest, ShortcutsWorkOnTheWaveformWhateverBoxHasTheFocus) {
  Start();
  Ramp();
  Type("Txt_End_X", "0.5");
  auto* box = Find<ValueBox>("Txt_Start_X");
  box->setFocus();
  box->selectAll();
  QTest::keyClick(box, Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(W_GetWaveData(State().buffers.Current(), 0, 524288), 262144 % 30000);
  EXPECT_TRUE(Find<QAction>("Menu_Undo")->isEnabled());
  EXPECT_EQ(QApplication::clipboard()->text().left(8).toStdString(), "0\n1\n2\n3\n");
  EXPECT_EQ(Find<QToolButton>("Tool_Undo")->toolTip(), "Undo (Ctrl+U)");
  QTest::keyClick(box, Qt::Key_U, Qt::ControlModifier);
  EXPECT_EQ(W_GetWaveData(State().buffers.Current(), 5, 524288), 5);
  EXPECT_EQ(Find<QAction>("Menu_Undo")->text(), "&Redo");
  EXPECT_EQ(Find<QToolButton>("Tool_Undo")->toolTip(), "Redo (Ctrl+U)");
}

TEST_F(MainWindowTest, EveryCommandTakesWhatWasTypedFirst) {
  Start();
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"tool button", [this] { Click("Tool_Copy"); }},
      {"shortcut", [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier); }},
      {"menu", [this] { Find<QAction>("Menu_Grid")->trigger(); }},
      {"view", [this] { Click("Opt_DspSel_1"); }},
      {"tool",
       [this] {
         QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
         Click("Opt_DlgSel_0");
       }},
      {"drop", [this] {
         desktop.boxes.Expect("File Read error.");
         Drop(window, "/missing/a.wdb");
       }}};
  double end = 524288;
  for (const auto& [way, command] : rows) {
    end /= 2;
    TypeOn("Txt_End_X", std::to_string(end / 524288).c_str());
    EXPECT_EQ(State().buffers.CurrentScope().End, end * 2);
    command();
    EXPECT_EQ(State().buffers.CurrentScope().End, end) << way;
  }
}

TEST_F(MainWindowTest, AColumnOfNumbersPastesAsAWaveform) {
  Start();
  QApplication::clipboard()->setText("10\n-20\n30\n");
  Find<QAction>("Menu_Paste")->trigger();
  EXPECT_EQ(W_GetWaveData(State().buffers.Current(), 1, 524288), -20);
  EXPECT_EQ(State().buffers.CurrentScope(), (Scope{0, 3}));
  QApplication::clipboard()->setText("no numbers");
  desktop.boxes.Expect("ClipBoard Read error.");
  Find<QAction>("Menu_Paste")->trigger();
}

TEST_F(MainWindowTest, ListsBarsWheelAndBothViewsGoTogether) {
  Start();
  auto* bar = Find<QScrollBar>("HScroll_0");
  EXPECT_FALSE(bar->isEnabled());
  Find<QComboBox>("Comb_XZoom_0")->setCurrentIndex(1);
  EXPECT_EQ(Find<QComboBox>("Comb_XZoom_1")->currentIndex(), 1);
  EXPECT_TRUE(bar->isEnabled());
  EXPECT_EQ(bar->maximum(), 16384);
  EXPECT_EQ(bar->singleStep(), 1);
  bar->setValue(16384);
  EXPECT_EQ(State().view.XStart, 262144);
  EXPECT_EQ(Find<QScrollBar>("HScroll_1")->value(), 16384);
  EXPECT_EQ(Find<QLabel>("Label_End_0")->text(), "1.000000");
  Find<QComboBox>("Comb_XZoom_0")->setCurrentIndex(0);
  auto* picture = Find<WaveformCanvas>("Pict_Wave");
  Wheel(picture, QPointF(picture->width() * 0.75, 50), 3);
  EXPECT_EQ(State().view.XZoom, 8);
  const double under = State().view.XStart + 0.75 * (State().view.XEnd - State().view.XStart);
  EXPECT_NEAR(under, 0.75 * 524288, 2000);
  QTest::mouseMove(picture, QPoint(10, 50));
  const std::string under10 = Shown("Txt_Cur_X_0");
  Wheel(picture, QPointF(10, 50), -1, Qt::ShiftModifier);
  EXPECT_NE(Shown("Txt_Cur_X_0"), under10) << "another point is under the pointer";
  EXPECT_NEAR(State().view.XStart, 0.75 * 524288 - 0.75 * 65536 + 6553, 1500);
  Wheel(picture, QPointF(10, 50), 1, Qt::ControlModifier);
  EXPECT_EQ(State().view.YZoom, 2);
  Wheel(picture, QPointF(10, 50), -20);
  EXPECT_EQ(State().view.XZoom, 1);
  Find<QToolButton>("Opt_DspSel_1")->click();
  EXPECT_FALSE(Find<QWidget>("Frm_Wave")->isVisible());
  EXPECT_TRUE(Find<QWidget>("Frm_Digital")->isVisible());
  Find<QComboBox>("Comb_XZoom_1")->setCurrentIndex(3);
  EXPECT_EQ(State().view.XZoom, 8);
  Find<QToolButton>("Opt_DspSel_0")->click();
  EXPECT_EQ(Find<QComboBox>("Comb_XZoom_0")->currentIndex(), 3);
  EXPECT_TRUE(Find<QWidget>("Frm_Wave")->isVisible());
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
    EXPECT_EQ(W_GetWaveData(State().buffers.Current(), 9, 524288), 5) << target;
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

// Every text fits its control at the smallest size, in both languages.
TEST_F(MainWindowTest, NothingIsClippedAtTheSmallestSize) {
  for (const int language : {SystemLanguage::kEnglish, SystemLanguage::kJapanese}) {
    desktop.language.id = language;
    Start();
    window->resize(window->minimumSize());
    QCoreApplication::processEvents();
    EXPECT_EQ(window->size(), QSize(614, 416));
    ExpectWellLaidOut(*window);
    for (const ValueBox* box : window->findChildren<ValueBox*>()) {
      EXPECT_GE(box->width(), box->fontMetrics().horizontalAdvance("-999.999m") + 8) << box->objectName().toStdString();
    }
    EXPECT_GT(Find<WaveformCanvas>("Pict_Wave")->height(), 120);
    application.reset();
  }
}

// A tool is a row: its number, how much of the window waits, how its form is made.
TEST_F(MainWindowTest, AToolOfTenLinesIsInTheMenuAndTheSelector) {
  struct Small : ToolForm {
    Small(Program& program, QWidget* parent) : ToolForm(program.registry, "Small", parent) { Place({200, 100}); }
  };
  Start();
  EXPECT_FALSE(Find<QAction>("Menu_Pwf")->isVisible());
  window->AddTool(
      {kToolPwf, ToolModality::Modeless, [this](QWidget* parent) { return std::make_unique<Small>(State(), parent); }});
  EXPECT_TRUE(Find<QAction>("Menu_Pwf")->isVisible());
  EXPECT_TRUE(Find<QToolButton>("Opt_DlgSel_4")->isVisible());
  const char* const blocked[] = {"Menu_File", "Menu_Edit", "Menu_Tools", "Menu_Set"};
  const auto expectBlocked = [&](bool block) {
    for (const char* menu : blocked) EXPECT_EQ(Find<QMenu>(menu)->isEnabled(), !block) << menu;
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

} // namespace
} // namespace calder
