// The Create dialog's real form off-screen.
#include "tools/create/CreateDialog.h"
#include "FormDriver.h"
#include "RecordingHost.h"
#include "editor/EditorFixture.h"
#include "platform/qt/Theme.h"
#include "platform/qt/WaveformCanvas.h"
#include "tools/create/ExpressionBox.h"

#include <QClipboard>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QToolButton>

#include <functional>
#include <sstream>

namespace calder {
namespace {

struct CreateDialogTest : EditorFixture, FormDriver {
  void SetUp() override { Open(); }
  void Open() {
    Begin();
    ApplyTheme(*qApp, program->language == Language::English);
    pages = std::make_unique<CreatePages>(*program, editor->setup, editor->fileCommands, host, [] { return 0.5; });
    dialog = std::make_unique<CreateDialog>(*program, *pages, nullptr);
    driven = dialog.get();
    pages->PrepareCreate();
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    QApplication::setActiveWindow(dialog.get());
  }
  void TearDown() override {
    dialog.reset();
    pages.reset();
  }
  RecordingHost host;
  std::unique_ptr<CreatePages> pages;
  std::unique_ptr<CreateDialog> dialog;
};

TEST_F(CreateDialogTest, ASquareIsTypedPreviewedAndWritten) {
  Find<QComboBox>("Comb_Wave")->setCurrentIndex(2);
  std::string labels;
  for (const char* label : {"Label_Max", "Label_Offs", "Label_Min"})
    labels += Find<QLabel>(label)->text().toStdString() + " ";
  EXPECT_EQ(labels, "1.000000 0.000000 -1.00000 ");
  EXPECT_TRUE(Find<ValueBox>("Text_6")->isVisible());
  EXPECT_FALSE(Find<ValueBox>("Text_5")->isVisible());
  const QImage before = Find<WaveformCanvas>("PictWave")->Image().copy();
  Type("Text_3", "4");
  Type("Text_6", "25");
  EXPECT_NE(before, Find<WaveformCanvas>("PictWave")->Image());
  Type("Text_6", "101");
  EXPECT_EQ(Shown("Text_6"), "25") << "out of range: the stored value again";
  Click("Btn_OK");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(Code(1000), 32767);
  EXPECT_EQ(Code(524288 / 4 - 1000), -32767);
  editor->Do(Command::Undo);
  EXPECT_EQ(Code(1000), 0);
}

// Every control: what is chosen, typed or pressed, and what must be seen after it.
TEST_F(CreateDialogTest, EveryControlIsWired) {
  program->pages[50].Valid = kPageTrue;
  const auto field = [this](auto CreatePage::*member) {
    return [this, member] { return (std::ostringstream() << pages->Page().*member).str(); };
  };
  const auto page = [this] { return Shown("Txt_Page"); };
  const auto focus = [] { return Focus(); };
  const auto pointer = [this] { return std::to_string(Find<QWidget>("PictWave")->cursor().shape()); };
  const struct {
    const char *control, *input; // an index, a text
    std::function<std::string()> seen;
    std::string after;
  } rows[] = {
      {"Text_X_1", "0.5", field(&CreatePage::EndX), "262144"},
      {"", "", focus, "Comb_Wave"},
      {"Text_X_0", "0.25", field(&CreatePage::StartX), "131072"},
      {"", "", focus, "Text_X_1"},
      {"Comb_Wave", "1", field(&CreatePage::Function), "1"},
      {"Text_5", "20", field(&CreatePage::Symmetry), "20"},
      {"PictWave", "", pointer, std::to_string(Qt::SizeAllCursor)},
      {"Comb_Wave", "2", field(&CreatePage::Function), "2"},
      {"Text_0", "1", field(&CreatePage::Offset), "32767"},
      {"Text_2", "1", field(&CreatePage::Amplitude), "32767"},
      {"Text_1", "0.5", field(&CreatePage::Size), "262144"},
      {"Text_3", "4", field(&CreatePage::Period), "4"},
      {"Text_4", "90", field(&CreatePage::Phase), "90"},
      {"Text_6", "30", field(&CreatePage::Duty), "30"},
      {"Text_7", "5", field(&CreatePage::Transition), "5"},
      {"", "", focus, "Cmd_Page_0"},
      {"Opt_effect_1", "", field(&CreatePage::Valid), "0"},
      {"Cmd_Page_3", "", page, "50"},
      {"Cmd_Page_0", "", page, "50"}, // the only one with Effect
      {"Cmd_Page_1", "", page, "49"},
      {"Cmd_Page_2", "", page, "50"},
      {"Txt_Page", "1", page, "1"},
      {"", "", focus, "Cmd_Page_2"},
      {"Opt_effect_0", "", field(&CreatePage::Valid), std::to_string(kPageTrue)},
  };
  for (const auto& row : rows) {
    auto* control = *row.control == 0 ? nullptr : Find<QWidget>(row.control);
    if (auto* list = qobject_cast<QComboBox*>(control))
      list->setCurrentIndex(std::stoi(row.input));
    else if (qobject_cast<ValueBox*>(control) != nullptr)
      Type(row.control, row.input);
    else if (qobject_cast<QAbstractButton*>(control) != nullptr)
      Click(row.control);
    else if (control != nullptr)
      QTest::mouseMove(control, {200, 10});
    EXPECT_EQ(row.seen(), row.after) << row.control << " " << row.input;
  }
}

TEST_F(CreateDialogTest, KeysWalkThroughTheBoxesAndTurnPagesFromAnywhere) {
  const Qt::Key ends[] = {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Enter, Qt::Key_Tab, Qt::Key_Return};
  Find<ValueBox>("Text_0")->setFocus();
  std::string way;
  for (const Qt::Key end : ends) {
    QTest::keyClick(QApplication::focusWidget(), end);
    way += Focus() + " ";
  }
  EXPECT_EQ(way, "Text_1 Text_2 Text_3 Text_4 Cmd_Page_0 ");
  Type("Txt_Page", "2");
  TypeOn("Text_3", "4");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(Focus() + Shown("Txt_Page"), "Text_31");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(Find<ValueBox>("Text_3")->selectedText(), "4") << "kept, and the next text takes its place";
}

TEST_F(CreateDialogTest, MenuEntriesTakeWhatWasTypedFirst) {
  for (const char* entry : {"Menu_FileOpen", "Menu_FileSave", "Menu_Clear", "Menu_AllClear"}) {
    if (std::string(entry).starts_with("Menu_File")) desktop.dialogs.Cancel();
    TypeOn("Text_1", std::to_string(0.125 * (host.ranges + 1)).c_str());
    const int before = host.ranges;
    Find<QAction>(entry)->trigger();
    EXPECT_EQ(host.ranges, before + 1) << entry;
  }
}

// What was typed last goes into the page, not into the operand that a Cancel clears.
TEST_F(CreateDialogTest, ForTheOperateDialogThereIsOnePageAndItsRange) {
  dialog->hide();
  const WaveHandle operand = W_AllocMemory(100);
  int redraws = 0;
  const auto open = [&](const std::function<void()>& act) {
    QTimer::singleShot(0, dialog.get(), [&] {
      QApplication::setActiveWindow(dialog.get());
      act();
    });
    dialog->PrepareForOperate({operand, {100, 200}}, [&] { ++redraws; });
    dialog->exec();
  };
  open([&] {
    EXPECT_FALSE(Find<QWidget>("Panel_Page")->isVisible());
    EXPECT_FALSE(Find<QMenu>("Menu_File")->menuAction()->isEnabled());
    const auto ground = [this](const char* box) { return Find<ValueBox>(box)->grab().toImage().pixel(4, 4); };
    for (const char* box : {"Text_X_0", "Text_X_1", "Text_1"}) {
      EXPECT_FALSE(Find<ValueBox>(box)->isEnabled()) << box;
      EXPECT_NE(ground(box), ground("Text_2")) << box << " is not grey";
    }
    TypeOn("Text_0", "0.25");
    dialog->close();
  });
  EXPECT_NEAR(program->pages[0].Offset, 8192, 1);
  EXPECT_EQ(W_GetWaveData(operand, 25, 100), 0);
  open([&] {
    TypeOn("Text_0", "0.5");
    Click("Btn_Cancel");
  });
  EXPECT_EQ(W_GetWaveData(operand, 25, 100), 0);
  EXPECT_EQ(redraws, 0);
  open([&] { Click("Btn_OK"); });
  EXPECT_EQ(redraws, 1);
  EXPECT_EQ(W_GetWaveData(operand, 25, 100), 32767);
  W_FreeMemory(operand);
}

TEST_F(CreateDialogTest, TheExpressionBoxMarksPairsAndFaultsAndHasALimit) {
  Find<QComboBox>("Comb_Wave")->setCurrentIndex(5);
  auto* box = Find<ExpressionBox>("Txt_Expr");
  struct Row {
    const char *why, *text, *marks;
    int cursor;
  };
  for (const Row& row :
       {Row{"after the last one", "(1*(x)+2)", "8 0 ", 9}, Row{"before the inner one", "(1*(x)+2)", "3 5 ", 3},
        Row{"one that is alone is the fault", "1+(x", "2 ~2 ", 3}, Row{"none at the cursor", "1+foo", "~2 ", 1},
        Row{"a fault at the end", "1+", "~1 ", 2}}) {
    box->selectAll();
    TypeOn("Txt_Expr", row.text);
    QTextCursor cursor = box->textCursor();
    cursor.setPosition(row.cursor);
    box->setTextCursor(cursor);
    std::string marks;
    for (const auto& mark : box->extraSelections()) {
      const bool isFault = mark.format.underlineStyle() == QTextCharFormat::WaveUnderline;
      marks += (isFault ? "~" : "") + std::to_string(mark.cursor.selectionStart()) + " ";
    }
    EXPECT_EQ(marks, row.marks) << row.why;
  }
  box->selectAll();
  QApplication::clipboard()->setText("1\n+" + QString(1030, QLatin1Char('x')));
  box->paste();
  QTest::keyClicks(box, "y");
  EXPECT_EQ(box->Text(), "1 +" + QString(1021, QLatin1Char('x')));
}

TEST_F(CreateDialogTest, AnExpressionShowsItsFaultWhileItIsTyped) {
  Find<QComboBox>("Comb_Wave")->setCurrentIndex(5);
  auto* box = Find<ExpressionBox>("Txt_Expr");
  TypeOn("Txt_Expr", "sin(2*pi*x");
  EXPECT_FALSE(Find<QLabel>("Label_Fault")->text().isEmpty());
  QTest::keyClicks(box, ")*k");
  EXPECT_FALSE(Find<QLabel>("Label_Fault")->text().isEmpty()) << "k is not known";
  desktop.boxes.Expect("Syntax error in equation.");
  Click("Btn_OK");
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(box->textCursor().position(), 12) << "at the fault";
  TypeOn("Txt_Const", "k=0.5");
  EXPECT_EQ(Find<QLabel>("Label_Fault")->text(), "");
  Click("Btn_Comp");
  Click("Btn_OK");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_NEAR(Code(131072), 16384, 1);
  EXPECT_NEAR(Code(393216), -16384, 1);
}

TEST_F(CreateDialogTest, ChosenFunctionsAreInserted) {
  Find<QComboBox>("Comb_Wave")->setCurrentIndex(5);
  Find<QToolButton>("Btn_Functions")->click();
  auto* list = Find<QListWidget>("List_Functions");
  EXPECT_TRUE(list->isVisible());
  ASSERT_GT(list->count(), 30);
  const auto found = list->findItems("sqrt", Qt::MatchStartsWith);
  ASSERT_FALSE(found.isEmpty());
  Q_EMIT list->itemActivated(found.front());
  auto* box = Find<ExpressionBox>("Txt_Expr");
  EXPECT_EQ(box->Text(), "sqrt()");
  EXPECT_EQ(box->textCursor().position(), 5);
}

TEST_F(CreateDialogTest, PagesAreWalkedAndAllWritten) {
  Type("Text_X_1", "0.5");
  auto* next = Find<QToolButton>("Cmd_Page_2");
  next->setFocus();
  QTest::keyClick(next, Qt::Key_Space);
  EXPECT_EQ(Focus() + Shown("Txt_Page"), "Cmd_Page_22") << "the button that was pressed keeps the focus";
  Find<QComboBox>("Comb_Wave")->setCurrentIndex(4);
  Type("Text_X_1", "1");
  Type("Text_X_0", "0.5");
  Type("Text_0", "0.25");
  EXPECT_TRUE(Find<QRadioButton>("Opt_effect_0")->isChecked());
  Type("Txt_Page", "1");
  EXPECT_EQ(Find<QComboBox>("Comb_Wave")->currentIndex(), 0);
  Click("Btn_Confirm");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_NEAR(Code(65536), 32767, 1) << "page 1: a sine over the first half";
  EXPECT_NEAR(Code(400000), 8192, 1) << "page 2: direct current over the second";
}

TEST_F(CreateDialogTest, DraggingThePreviewChangesTheBoxes) {
  auto* picture = Find<WaveformCanvas>("PictWave");
  QTest::mousePress(picture, Qt::LeftButton, Qt::NoModifier, {200, 10});
  QTest::mouseMove(picture, {150, 10});
  QTest::mouseRelease(picture, Qt::LeftButton, Qt::NoModifier, {150, 10});
  EXPECT_EQ(Shown("Text_3"), "2");
}

TEST_F(CreateDialogTest, NothingIsClippedOrTwiceOnAKeyInEitherLanguage) {
  for (const int language : {SystemLanguage::kEnglish, SystemLanguage::kJapanese}) {
    TearDown();
    desktop.language.id = language;
    Open();
    for (const int function : {1, 2, 5}) {
      Find<QComboBox>("Comb_Wave")->setCurrentIndex(function);
      QCoreApplication::processEvents();
      dialog->resize(dialog->minimumSizeHint());
      QCoreApplication::processEvents();
      ExpectWellLaidOut(*dialog);
    }
    TypeOn("Txt_Expr", "1+");
    const char* reason = language == SystemLanguage::kEnglish ? "before the end of the text" : "文末の前に値が必要です";
    EXPECT_TRUE(Find<QLabel>("Label_Fault")->text().endsWith(reason));
  }
}

} // namespace
} // namespace calder
