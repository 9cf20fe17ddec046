// The parameter-variable dialog's real form off-screen.
#include "tools/pwf/PwfDialog.h"
#include "FormDriver.h"
#include "RecordingHost.h"
#include "editor/EditorFixture.h"
#include "platform/qt/Theme.h"
#include <QSlider>

namespace calder::pwf_dialog_test {

struct PwfDialogTest : EditorFixture, FormDriver {
  void SetUp() override { Open(); }
  void Open() {
    Begin();
    ApplyTheme(*qApp, program->language == Language::English);
    desk = std::make_unique<PwfDesk>(*program, editor->setup, editor->fileCommands, host, [] { return Scope{}; });
    dialog = std::make_unique<PwfDialog>(*program, *desk, nullptr);
    ShowForm(dialog.get());
  }
  void TearDown() override {
    dialog.reset();
    desk.reset();
  }
  QColor LimitsColour() { return Find<QLabel>("Label_Limits_0")->palette().color(QPalette::WindowText); }

  RecordingHost host;
  std::unique_ptr<PwfDesk> desk;
  std::unique_ptr<PwfDialog> dialog;
};

TEST_F(PwfDialogTest, KeysChooseTypeAndWrite) {
  Do("pick Comb_Wave Exponential decay");
  const QImage before = Find<WaveformCanvas>("PictWave")->Image().copy();
  Walk({{"type Text_0 0.5", "focus", "Text_1"}, {"tab Text_1 0", "Text_1 Text_3", "0.00 hidden 0"}});
  EXPECT_NE(before, Find<WaveformCanvas>("PictWave")->Image());
  Click("Btn_OK");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_NEAR(Code(262144), 32767 * std::exp(-1.0), 1);
  editor->Do(Command::Undo);
  EXPECT_EQ(Code(262144), 0);
}

TEST_F(PwfDialogTest, ARefusedTextSaysItsLimitsAndStopsWhatWasToFollow) {
  const QColor calm = LimitsColour();
  views["colour"] = [this, calm] { return std::string(LimitsColour() == calm ? "calm" : "red"); };
  views["value"] = [this] { return std::to_string(std::lround(desk->Function().Params[0].Value)); };
  views["selected"] = [this] { return Find<ValueBox>("Text_0")->selectedText().toStdString(); };
  Walk({{"", "Label_Limits_0", "1 to 200"},
        {"type Text_0 500", "focus Text_0 selected value colour", "Text_0 200 200 20 red"},
        {"key . Return", "focus value colour", "Text_1 200 calm"}, // a second press takes the limit
        {"type Text_0 0; key . Esc", "focus Text_0 colour", "Text_0 200 calm"},
        {"on Text_0 many; click Btn_OK", "focus Text_0", "Text_0 many"}});
  EXPECT_TRUE(dialog->isVisible());
  QTest::mouseDClick(Find<QLabel>("Label_Param_0"), Qt::LeftButton);
  EXPECT_EQ(Shown("Text_0"), "20") << "the file's value";
}

TEST_F(PwfDialogTest, BarsBoxesAndListMoveTogether) {
  for (const char* bar : {"HScroll1", "Slider_0"})
    views[bar] = [this, bar] {
      const auto* at = Find<QAbstractSlider>(bar);
      return std::to_string(at->value()) + "/" + std::to_string(at->maximum());
    };
  Walk({{"key HScroll1 Right", "Text_0 Slider_0", "21 21/200"},
        {"key Slider_2 Left", "Text_2 Comb_PrmSel HScroll1", "79 Depth 79/100"},
        {"set Comb_PrmSel 1", "HScroll1", "2/20"},
        {"type Text_1 5", "HScroll1", "5/20"},
        {"menu Menu_Restore", "Text_1", "2"}});
}

TEST_F(PwfDialogTest, TheSearchLeavesWhatFitsAndTheFormulaUnfolds) {
  auto* list = Find<QListWidget>("Comb_Wave");
  EXPECT_EQ(list->count(), 25);
  Do("on Txt_Search SWEEP");
  std::string left;
  for (int row = 0; row < list->count(); ++row)
    if (!list->item(row)->isHidden()) left += list->item(row)->text().toStdString() + ", ";
  EXPECT_EQ(left, "Linear sweep, Logarithmic sweep, ");
  EXPECT_TRUE(dialog->isVisible());
  Walk({{"key . Return", "focus", "Comb_Wave"}, {"pick Comb_Wave Linear sweep", "Txt_Formula", "hidden ", "hidden "}});
  Do("click Btn_Formula");
  EXPECT_TRUE(Find<QPlainTextEdit>("Txt_Formula")->toPlainText().contains("F1-F0"));
  EXPECT_TRUE(Find<QPlainTextEdit>("Txt_Formula")->isReadOnly());
  QTest::mouseMove(Find<WaveformCanvas>("PictWave"), {10, 10});
  EXPECT_TRUE(Line("Label_Pointer").starts_with("X "));
}

TEST_F(PwfDialogTest, WithoutFunctionsThereIsNothingToPress) {
  TearDown();
  Begin();
  const_cast<Desktop&>(program->desktop).folders.read = {"/none"};
  desk = std::make_unique<PwfDesk>(*program, editor->setup, editor->fileCommands, host, [] { return Scope{}; });
  dialog = std::make_unique<PwfDialog>(*program, *desk, nullptr);
  driven = dialog.get();
  dialog->show();
  EXPECT_EQ(See("Label_Note Btn_OK"), "pwf.fnc was not found in: /none off OK");
  desktop.language.id = SystemLanguage::kJapanese;
  TearDown();
  Open();
  EXPECT_EQ(See("Label_Wave"), "波形(&T)");
}

} // namespace calder::pwf_dialog_test
