// The Create dialog's real form off-screen.
#include "tools/create/CreateDialog.h"
#include "FormDriver.h"
#include "RecordingHost.h"
#include "editor/EditorFixture.h"
#include "platform/qt/Theme.h"
#include "tools/frame/ExpressionBox.h"

namespace calder::create_dialog_test {

struct CreateDialogTest : EditorFixture, FormDriver {
  void SetUp() override { Open(); }
  void Open() {
    TearDown();
    Begin();
    ApplyTheme(*qApp, program->language == Language::English);
    pages = std::make_unique<CreatePages>(*program, editor->setup, editor->fileCommands, host, [] { return 0.5; });
    dialog = std::make_unique<CreateDialog>(*program, *pages, nullptr);
    pages->PrepareCreate();
    ShowForm(dialog.get());
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
  views["picture"] = [this] {
    const QImage& image = Find<WaveformCanvas>("PictWave")->Image();
    return std::to_string(qHashBits(image.constBits(), static_cast<std::size_t>(image.sizeInBytes())));
  };
  Walk({{"", "Label_Max Label_Offs Label_Min", "1.000000 0.000000 -1.00000"},
        {"set Comb_Wave 2", "Text_6 Text_5", "50 hidden "},
        {"type Text_3 4; type Text_6 25", "picture", "~"},
        {"type Text_6 101", "Text_6", "25", "25"}}); // out of range: the stored value again
  Click("Btn_OK");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(Texts(Code(1000), Code(524288 / 4 - 1000)), "32767 -32767");
  editor->Do(Command::Undo);
  EXPECT_EQ(Code(1000), 0);
}

// Every control: what is chosen, typed or pressed, and what must be seen after it.
TEST_F(CreateDialogTest, EveryControlIsWired) {
  program->pages[50].Valid = kPageTrue;
  using P = CreatePage;
  ViewMembers([this]() -> const P& { return pages->Page(); }, "StartX", &P::StartX, "EndX", &P::EndX, "Function",
              &P::Function, "Offset", &P::Offset, "Amplitude", &P::Amplitude, "Size", &P::Size, "Period", &P::Period,
              "Phase", &P::Phase, "Symmetry", &P::Symmetry, "Duty", &P::Duty, "Transition", &P::Transition, "Valid",
              &P::Valid);
  views["pointer"] = [this] { return Find<QWidget>("PictWave")->cursor().shape() == Qt::SizeAllCursor ? "all" : ""; };
  verbs["hover"] = [this](const auto& name, const auto&) { QTest::mouseMove(Find<QWidget>(name), {200, 10}); };
  Walk({{"type Text_X_1 0.5", "EndX focus", "262144 Comb_Wave"},
        {"type Text_X_0 0.25", "StartX focus", "131072 Text_X_1"},
        {"set Comb_Wave 1", "Function", "1"},
        {"type Text_5 20", "Symmetry", "20"},
        {"hover PictWave", "pointer", "all"},
        {"set Comb_Wave 2", "Function", "2"},
        {"type Text_0 1", "Offset", "32767"},
        {"type Text_2 1", "Amplitude", "32767"},
        {"type Text_1 0.5", "Size", "262144"},
        {"type Text_3 4", "Period", "4"},
        {"type Text_4 90", "Phase", "90"},
        {"type Text_6 30", "Duty", "30"},
        {"type Text_7 5", "Transition focus", "5 Cmd_Page_0"},
        {"click Opt_effect_1", "Valid", "0"},
        {"click Cmd_Page_3", "Txt_Page", "50"},
        {"click Cmd_Page_0", "Txt_Page", "50", "50"}, // the only one with Effect
        {"click Cmd_Page_1", "Txt_Page", "49"},
        {"click Cmd_Page_2", "Txt_Page", "50"},
        {"type Txt_Page 1", "Txt_Page focus", "1 Cmd_Page_2"},
        {"click Opt_effect_0", "Valid", std::to_string(kPageTrue)}});
}

TEST_F(CreateDialogTest, KeysWalkThroughTheBoxesAndTurnPagesFromAnywhere) {
  Walk({{"key Text_0 Return", "focus", "Text_1"},
        {"key . Tab", "focus", "Text_2"},
        {"key . Enter", "focus", "Text_3"},
        {"key . Tab", "focus", "Text_4"},
        {"key . Return", "focus", "Cmd_Page_0"},
        {"type Txt_Page 2; on Text_3 4; key . Ctrl+PgUp", "focus Txt_Page", "Text_3 1"},
        {"key . Ctrl+PgDown", "focus Txt_Page Text_3", "Text_3 2 4"}});
  EXPECT_EQ(Find<ValueBox>("Text_3")->selectedText(), "4") << "the next text takes its place";
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
  EXPECT_EQ(Texts(W_GetWaveData(operand, 25, 100), redraws), "0 0");
  open([&] { Click("Btn_OK"); });
  EXPECT_EQ(Texts(redraws, W_GetWaveData(operand, 25, 100)), "1 32767");
  W_FreeMemory(operand);
}

TEST_F(CreateDialogTest, TheExpressionBoxMarksPairsAndFaultsAndHasALimit) {
  Find<QComboBox>("Comb_Wave")->setCurrentIndex(5);
  auto* box = Find<ExpressionBox>("Txt_Expr");
  using Row = std::tuple<const char*, const char*, const char*, int>;
  for (const auto& [why, text, theMarks, theCursor] :
       {Row{"after the last one", "(1*(x)+2)", "8 0 ", 9}, Row{"before the inner one", "(1*(x)+2)", "3 5 ", 3},
        Row{"one that is alone is the fault", "1+(x", "2 ~2 ", 3}, Row{"none at the cursor", "1+foo", "~2 ", 1},
        Row{"a fault at the end", "1+", "~1 ", 2}}) {
    box->selectAll();
    TypeOn("Txt_Expr", text);
    QTextCursor cursor = box->textCursor();
    cursor.setPosition(theCursor);
    box->setTextCursor(cursor);
    std::string marks;
    for (const auto& mark : box->extraSelections()) {
      const bool isFault = mark.format.underlineStyle() == QTextCharFormat::WaveUnderline;
      marks += (isFault ? "~" : "") + std::to_string(mark.cursor.selectionStart()) + " ";
    }
    EXPECT_EQ(marks, theMarks) << why;
  }
  box->selectAll();
  QApplication::clipboard()->setText("1\n+" + QString(1030, QLatin1Char('x')));
  box->paste();
  QTest::keyClicks(box, "y");
  EXPECT_EQ(box->Text(), "1 +" + QString(1021, QLatin1Char('x')));
}

TEST_F(CreateDialogTest, AnExpressionShowsItsFaultWhileItIsTyped) {
  for (const auto& [language, reason] : {std::pair{SystemLanguage::kJapanese, "文末の前に値が必要です"},
                                         {SystemLanguage::kEnglish, "before the end of the text"}}) {
    desktop.language.id = language;
    Open();
    Do("set Comb_Wave 5; on Txt_Expr 1+");
    EXPECT_TRUE(Line("Label_Fault").ends_with(reason));
  }
  Do("key Txt_Expr Ctrl+A; on Txt_Expr sin(2*pi*x");
  EXPECT_NE(Line("Label_Fault"), "");
  Do("on Txt_Expr )*k");
  EXPECT_NE(Line("Label_Fault"), "") << "k is not known";
  desktop.boxes.Expect("Syntax error in equation.");
  Click("Btn_OK");
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(Find<ExpressionBox>("Txt_Expr")->textCursor().position(), 12) << "at the fault";
  Do("on Txt_Const k=0.5");
  EXPECT_EQ(Line("Label_Fault"), "");
  Do("click Btn_Comp; click Btn_OK");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_NEAR(Code(131072), 16384, 1);
  EXPECT_NEAR(Code(393216), -16384, 1);
}

TEST_F(CreateDialogTest, ChosenFunctionsAreInserted) {
  Do("set Comb_Wave 5; click Btn_Functions");
  auto* list = Find<QListWidget>("List_Functions");
  EXPECT_TRUE(list->isVisible());
  ASSERT_GT(list->count(), 30);
  Q_EMIT list->itemActivated(list->findItems("sqrt", Qt::MatchStartsWith).value(0));
  auto* box = Find<ExpressionBox>("Txt_Expr");
  EXPECT_EQ(box->Text(), "sqrt()");
  EXPECT_EQ(box->textCursor().position(), 5);
}

TEST_F(CreateDialogTest, PagesAreWalkedAndAllWritten) {
  Walk({{"type Text_X_1 0.5; key Cmd_Page_2 Space", "focus Txt_Page", "Cmd_Page_2 2"}, // the pressed one keeps it
        {"set Comb_Wave 4; type Text_X_1 1; type Text_X_0 0.5; type Text_0 0.25", "Opt_effect_0", "checked"},
        {"type Txt_Page 1", "Comb_Wave", "Sin"}});
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

} // namespace calder::create_dialog_test
