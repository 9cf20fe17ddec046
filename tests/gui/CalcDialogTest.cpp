// The real Operate form, opened from the real main window.
#include "tools/operate/CalcDialog.h"
#include "ToolFixture.h"
#include "tools/create/CreateDialog.h"

namespace calder::calc_dialog_test {

struct CalcDialogTest : ToolFixture {
  void Open(const std::function<void()>& act, Scope range = {0, 524288}) {
    Start();
    Ramp();
    State().settings.YUnit = kYCodes;
    State().buffers.CurrentScope() = range;
    OpenTool("Menu_Compute", act);
  }
};

TEST_F(CalcDialogTest, AWaveformIsCreatedAddedAndWrittenByKeys) {
  Open([this] {
    EXPECT_EQ(Focus(), "Comb_Comp");
    const QImage before = Find<WaveformCanvas>("Picture_Dest")->Image().copy();
    // The Create dialog on top of it.
    Within([this] { Do("set Comb_Wave 4; type Text_0 1000; click Btn_OK"); });
    Do("key Btn_Create Space");
    EXPECT_EQ(Line("Label_Operand"), "created waveform, 524288 points");
    EXPECT_NE(Find<WaveformCanvas>("Picture_Dest")->Image(), before);
    EXPECT_TRUE(Line("Label_Pending").starts_with("OK writes"));
    const QImage ghost = Find<WaveformCanvas>("Picture_Result")->Image().copy();
    Do("key Btn_Result Space");
    EXPECT_EQ(Line("Label_Pending"), "");
    EXPECT_NE(Find<WaveformCanvas>("Picture_Result")->Image(), ghost);
    Hover("Picture_Src", {0, 5});
    for (const auto& [label, value] : {std::pair{"Label_Value_Src", "Y 0.000000"},
                                       {"Label_Value_Dest", "Y 1000.000"},
                                       {"Label_Value_Result", "Y 1000.000"}})
      EXPECT_TRUE(Line(label).ends_with(value)) << label << ": " << Line(label);
    Do("key Btn_OK Space");
  });
  EXPECT_EQ(Texts(Code(0), Code(29999)), "1000 30999");
  Do("menu Menu_Undo");
  EXPECT_EQ(Code(29999), 29999);
  Do("menu Menu_Undo");
  EXPECT_EQ(Code(29999), 30999);
}

TEST_F(CalcDialogTest, LimitedPointsAreCountedInRed) {
  Open(
      [this] {
        State().fileLibrary.SetClipBoard(clipboard, State().buffers.Current(), 0, 100) == 0
            ? Click("Btn_Cut")
            : static_cast<void>(ADD_FAILURE());
        EXPECT_EQ(Line("Label_Operand"), "clipboard 100 of 1000 points");
        Do("key Comb_Comp Up");
        Walk({{"choose Comb_Comp 3", "Label_Scale", "in codes: 1 / 1 = 1"},
              {"click Btn_Result", "Label_Limited", "limited: 0 points, divided by 0: 901 points"}});
        EXPECT_EQ(Find<QLabel>("Label_Limited")->palette().color(QPalette::WindowText).red(), 0xFF);
        Do("key Btn_Cancel Esc");
      },
      {0, 1000});
  EXPECT_EQ(Code(99), 99) << "cancelled";
  EXPECT_TRUE(State().buffers.UndoDisabled());
}

TEST_F(CalcDialogTest, WithoutAPointThereIsASentenceAndNoForm) {
  desktop.boxes.Expect("The selected area holds no point.");
  Open({}, {500, 500});
  EXPECT_FALSE(Find<QAbstractButton>("Opt_DlgSel_3")->isChecked());
}

} // namespace calder::calc_dialog_test
