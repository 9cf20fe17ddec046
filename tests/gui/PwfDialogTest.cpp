// The parameter-variable dialog's real form off-screen.
#include "tools/pwf/PwfDialog.h"
#include "FormDriver.h"
#include "RecordingHost.h"
#include "editor/EditorFixture.h"
#include "platform/qt/Theme.h"
#include "platform/qt/WaveformCanvas.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSlider>
#include <QToolButton>

namespace calder {
namespace {

struct PwfDialogTest : EditorFixture, FormDriver {
  void SetUp() override { Open(); }
  void Open() {
    Begin();
    ApplyTheme(*qApp, program->language == Language::English);
    desk = std::make_unique<PwfDesk>(*program, editor->setup, editor->fileCommands, host, [] { return Scope{}; });
    dialog = std::make_unique<PwfDialog>(*program, *desk, nullptr);
    driven = dialog.get();
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    QApplication::setActiveWindow(dialog.get());
  }
  void TearDown() override {
    dialog.reset();
    desk.reset();
  }
  void Choose(const char* function) {
    auto* list = Find<QListWidget>("Comb_Wave");
    const auto found = list->findItems(QLatin1String(function), Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1) << function;
    list->setCurrentItem(found.front());
  }
  QColor LimitsColour() { return Find<QLabel>("Label_Limits_0")->palette().color(QPalette::WindowText); }

  RecordingHost host;
  std::unique_ptr<PwfDesk> desk;
  std::unique_ptr<PwfDialog> dialog;
};

TEST_F(PwfDialogTest, KeysChooseTypeAndWrite) {
  Choose("Exponential decay");
  const QImage before = Find<WaveformCanvas>("PictWave")->Image().copy();
  Type("Text_0", "0.5");
  EXPECT_EQ(Focus(), "Text_1");
  EXPECT_NE(before, Find<WaveformCanvas>("PictWave")->Image());
  Type("Text_1", "0", Qt::Key_Tab);
  EXPECT_FALSE(Find<QWidget>("Text_3")->isVisible());
  Click("Btn_OK");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_NEAR(Code(262144), 32767 * std::exp(-1.0), 1);
  editor->Do(Command::Undo);
  EXPECT_EQ(Code(262144), 0);
}

TEST_F(PwfDialogTest, ARefusedTextSaysItsLimitsAndStopsWhatWasToFollow) {
  const QColor calm = LimitsColour();
  EXPECT_EQ(Find<QLabel>("Label_Limits_0")->text(), "1 to 200");
  Type("Text_0", "500");
  EXPECT_EQ(Focus() + " " + Shown("Text_0"), "Text_0 200");
  EXPECT_EQ(Find<ValueBox>("Text_0")->selectedText(), "200");
  EXPECT_NE(LimitsColour(), calm);
  EXPECT_EQ(desk->Function().Params[0].Value, 20);
  QTest::keyClick(Find<ValueBox>("Text_0"), Qt::Key_Return);
  EXPECT_EQ(Focus(), "Text_1") << "a second press takes the limit";
  EXPECT_EQ(desk->Function().Params[0].Value, 200);
  EXPECT_EQ(LimitsColour(), calm);
  Type("Text_0", "0");
  QTest::keyClick(Find<ValueBox>("Text_0"), Qt::Key_Escape);
  EXPECT_EQ(Focus() + " " + Shown("Text_0"), "Text_0 200") << "the stored value";
  EXPECT_EQ(LimitsColour(), calm);
  EXPECT_TRUE(dialog->isVisible());
  TypeOn("Text_0", "many");
  Click("Btn_OK");
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(Focus() + " " + Shown("Text_0"), "Text_0 many");
  QTest::mouseDClick(Find<QLabel>("Label_Param_0"), Qt::LeftButton);
  EXPECT_EQ(Shown("Text_0"), "20") << "the file's value";
}

TEST_F(PwfDialogTest, BarsBoxesAndListMoveTogether) {
  QTest::keyClick(Find<QScrollBar>("HScroll1"), Qt::Key_Right);
  EXPECT_EQ(Shown("Text_0"), "21");
  EXPECT_EQ(Find<QSlider>("Slider_0")->value(), 21);
  QTest::keyClick(Find<QSlider>("Slider_2"), Qt::Key_Left);
  EXPECT_EQ(Shown("Text_2"), "79");
  EXPECT_EQ(Find<QComboBox>("Comb_PrmSel")->currentText(), "Depth");
  EXPECT_EQ(Find<QScrollBar>("HScroll1")->value(), 79);
  Find<QComboBox>("Comb_PrmSel")->setCurrentIndex(1);
  EXPECT_EQ(Find<QScrollBar>("HScroll1")->maximum(), 20);
  EXPECT_EQ(Find<QScrollBar>("HScroll1")->value(), 2);
  Type("Text_1", "5");
  EXPECT_EQ(Find<QScrollBar>("HScroll1")->value(), 5);
  Find<QAction>("Menu_Restore")->trigger();
  EXPECT_EQ(Shown("Text_1"), "2");
}

TEST_F(PwfDialogTest, TheSearchLeavesWhatFitsAndTheFormulaUnfolds) {
  auto* list = Find<QListWidget>("Comb_Wave");
  EXPECT_EQ(list->count(), 25);
  TypeOn("Txt_Search", "SWEEP");
  std::string left;
  for (int row = 0; row < list->count(); ++row)
    if (!list->item(row)->isHidden()) left += list->item(row)->text().toStdString() + ", ";
  EXPECT_EQ(left, "Linear sweep, Logarithmic sweep, ");
  EXPECT_TRUE(dialog->isVisible());
  QTest::keyClick(Find<QLineEdit>("Txt_Search"), Qt::Key_Return);
  EXPECT_EQ(Focus(), "Comb_Wave");
  Choose("Linear sweep");
  EXPECT_FALSE(Find<QWidget>("Txt_Formula")->isVisible());
  Click("Btn_Formula");
  EXPECT_TRUE(Find<QPlainTextEdit>("Txt_Formula")->toPlainText().contains("F1-F0"));
  EXPECT_TRUE(Find<QPlainTextEdit>("Txt_Formula")->isReadOnly());
  QTest::mouseMove(Find<WaveformCanvas>("PictWave"), {10, 10});
  EXPECT_TRUE(Find<QLabel>("Label_Pointer")->text().startsWith("X "));
}

TEST_F(PwfDialogTest, WithoutFunctionsThereIsNothingToPress) {
  TearDown();
  const auto folders = desktop.folders.read;
  Begin();
  const_cast<Desktop&>(program->desktop).folders.read = {"/none"};
  desk = std::make_unique<PwfDesk>(*program, editor->setup, editor->fileCommands, host, [] { return Scope{}; });
  dialog = std::make_unique<PwfDialog>(*program, *desk, nullptr);
  driven = dialog.get();
  dialog->show();
  EXPECT_EQ(Find<QLabel>("Label_Note")->text(), "pwf.fnc was not found in: /none");
  EXPECT_FALSE(Find<QAbstractButton>("Btn_OK")->isEnabled());
}

TEST_F(PwfDialogTest, NothingIsClippedOrTwiceOnAKeyInEitherLanguage) {
  for (const int language : {SystemLanguage::kEnglish, SystemLanguage::kJapanese}) {
    TearDown();
    desktop.language.id = language;
    Open();
    for (const bool unfolded : {false, true}) {
      Find<QToolButton>("Btn_Formula")->setChecked(unfolded);
      for (const char* function : {"AM", "Sine with harmonics", "Load dump"}) {
        Choose(function);
        QCoreApplication::processEvents();
        dialog->resize(dialog->minimumSizeHint());
        QCoreApplication::processEvents();
        ExpectWellLaidOut(*dialog);
      }
    }
  }
}

} // namespace
} // namespace calder
