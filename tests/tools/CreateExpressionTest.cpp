// Expression pages: when they are computed, what a fault costs, where it is.
#include "tools/CreateFixture.h"

namespace calder::create_expression_test {

struct CreateExpressionTest : CreateFixture {};

TEST_F(CreateExpressionTest, IsEmptyUntilComputeOrAnOk) {
  Ramp();
  OpenExpression(100, 200, "  X*10 ", "");
  EXPECT_EQ(Generated(150), 0);
  create->Btn_Comp_Click();
  EXPECT_EQ(Texts(Generated(150), Page(1).Expression, create->PageModified()), "1500 X*10 false")
      << "stored back trimmed";
  desktop.dialogs.Cancel();
  create->Menu_FileOpen_Click();
  EXPECT_EQ(Generated(150), 1500) << "no list was read";
  create->Make_Wave(1);
  EXPECT_EQ(Generated(150), 0);
  create->Btn_OK_Click();
  EXPECT_EQ(Code(150), 1500) << "what was cleared is computed again";
  create->Text_X_LostFocus(CreatePages::AreaEnd::End, create->StartText(), "300");
  EXPECT_EQ(Generated(150), 0);
  create->Btn_OK_Click();
  EXPECT_EQ(Texts(Code(299), Code(300)), "2990 300");
}

TEST_F(CreateExpressionTest, WhatWasSeenWhileTypingFollowsTheArea) {
  OpenExpression(100, 200, "", "");
  EXPECT_EQ(create->LivePreview("", "x*10").message, 0);
  create->Txt_Expr_LostFocus("x*10");
  create->Text_X_LostFocus(CreatePages::AreaEnd::End, create->StartText(), "300");
  EXPECT_EQ(Generated(250), 2500);
  for (const int function : {kFunctionSine, kFunctionExpression}) create->Comb_Wave_Click(function);
  create->Text_X_LostFocus(CreatePages::AreaEnd::End, create->StartText(), "310");
  EXPECT_EQ(Generated(250), 0) << "nothing was typed since the function was chosen";
  EXPECT_EQ(create->LivePreview("", "x*10").message, 0);
  create->Menu_Clear_Click();
  EXPECT_EQ(Generated(250), 0);
}

TEST_F(CreateExpressionTest, UnitsAreThoseOnShow) {
  program->settings.XUnit = 1;
  program->settings.Period = 0.002;
  program->settings.Frequency = 500;
  program->settings.YUnit = 1;
  program->settings.Amplitude = 4;
  program->settings.Offset = 1;
  OpenExpression(0, 1000, "x*1000+1", "");
  create->Btn_Comp_Click();
  EXPECT_EQ(Generated(0), 0) << "1 V is the offset, code 0";
  EXPECT_EQ(Generated(500), 16384) << "1 ms: 2 V, a quarter of the span above it (16383.5)";
}

TEST_F(CreateExpressionTest, AFaultIsToldWithItsPlaceAndWritesNothing) {
  const std::tuple<const char*, const char*, const char*, const char*, TextBox, std::size_t> rows[] = {
      {"an unknown name", "", "1+foo", "Syntax error in equation", TextBox::Expression, 2},
      {"an unknown name after a random value", "", "rnd()*foo", "Syntax error in equation", TextBox::Expression, 6},
      {"a stray parenthesis", "", "(x", "Unbalance of parenthesis", TextBox::Expression, 0},
      {"constants", "a=1;b=*", "a", "Constant format error", TextBox::Constants, 6}};
  for (const auto& [why, constants, expression, message, box, position] : rows) {
    Ramp();
    program->buffers.Reset_Undo();
    OpenExpression(100, 200, expression, constants);
    createPort->closes = 0;
    createPort->fault.reset();
    desktop.boxes.Expect(message);
    create->Btn_OK_Click();
    EXPECT_EQ(Code(150), 150) << why;
    EXPECT_TRUE(editor->commands.CanUndo()) << why << ": the step is recorded before the page is computed";
    EXPECT_EQ(Texts(createPort->closes, create->Cancelled()), "0 true") << why;
    ASSERT_TRUE(createPort->fault && createPort->fault->place) << why;
    EXPECT_EQ(createPort->fault->place->box, box) << why;
    EXPECT_EQ(createPort->fault->place->position, position) << why;
    desktop.boxes.Expect(message);
    create->Btn_Comp_Click();
    EXPECT_TRUE(create->PageModified()) << why;
  }
}

TEST_F(CreateExpressionTest, ConstantsAreCheckedAtBothEndsAndKeptInSmallLetters) {
  OpenExpression(100.5, 201.5, "a", "A=3 ;");
  create->Btn_Comp_Click();
  EXPECT_EQ(Texts(Page(1).Constants, Generated(150)), "a=3 ; 3");
  // Nothing to compute: no message, nothing changes.
  create->Txt_Expr_LostFocus("   ");
  create->Btn_Comp_Click();
  EXPECT_EQ(Generated(150), 3);
  create->Txt_Const_LostFocus("a==3");
  desktop.boxes.Expect("Constant format error");
  EXPECT_FALSE(create->CheckConstants());
  // They end with the dialog.
  create->Txt_Const_LostFocus("a=3");
  create->Txt_Expr_LostFocus("a");
  create->Btn_OK_Click();
  OpenExpression(0, 100, "a");
  desktop.boxes.Expect("Syntax error in equation");
  create->Btn_OK_Click();
}

TEST_F(CreateExpressionTest, AllPageOkCopiesTheOthersAndShowsTheFirstFault) {
  Ramp();
  OpenExpression(0, 100, "7");
  for (const int page : {2, 3, 4}) {
    Page(page) = Page(1);
    Page(page).SetArea(page * 100, page * 100 + 100);
  }
  Page(2).Expression = "bad(";
  Page(3).Expression = "(((";
  desktop.boxes.Expect("Syntax error in equation");
  create->Btn_Confirm_Click();
  EXPECT_EQ(Texts(create->CurrentPage(), createPort->closes, Code(50), Code(450)), "2 0 7 7");
  EXPECT_EQ(Code(250), 0) << "the failed page's area is copied as it was left";
  ASSERT_TRUE(createPort->fault && createPort->fault->place);
  EXPECT_EQ(createPort->fault->place->position, 0U);
  const int redrawn = host.ranges;
  desktop.boxes.Expect("Syntax error in equation");
  create->Btn_Confirm_Click();
  EXPECT_GT(host.ranges, redrawn) << "the main window shows the others though the page is the same";
  // Mended, the same button finishes.
  Page(2).Expression = "8";
  Page(3).Expression = "9";
  create->Btn_Confirm_Click();
  EXPECT_EQ(Texts(createPort->closes, Code(250), Code(350)), "1 8 9");
}

TEST_F(CreateExpressionTest, TypingShowsWhatCanBeComputedAndLeavesNoTrace) {
  Ramp();
  OpenExpression(100, 200, "1");
  create->Btn_Comp_Click();
  Page(1).Valid = Page(1).Visited = 0;
  const CreatePage before = Page(1);
  const int previews = createPort->previews;
  EXPECT_EQ(create->LivePreview("b=4", "b*100").message, 0);
  EXPECT_EQ(Texts(Generated(150), createPort->previews), Texts(400, previews + 1));
  const ExpressionFault fault = create->LivePreview("b=4", "b*100+");
  EXPECT_EQ(fault.message, 100);
  EXPECT_TRUE(fault.place);
  EXPECT_EQ(Generated(150), 400) << "what could be computed last stays";
  EXPECT_EQ(create->LivePreview("", "b*100").message, 108) << "constants typed before are not known";
  double unused = 0;
  ASSERT_EQ(program->evaluator.EvalOneL("[c=3]0", 0, unused), 0);
  EXPECT_EQ(create->LivePreview("", "c*100").message, 0) << "those that are remembered are";
  EXPECT_EQ(create->LivePreview("", "").message, 0);
  EXPECT_TRUE(Generated(150) == 0 && Page(1) == before);
  create->LivePreview("", "55");
  create->Btn_OK_Click();
  EXPECT_EQ(Code(150), 1) << "the stored text, not what the preview showed last";
}

TEST_F(CreateExpressionTest, AnEditedTextIsComputedAgain) {
  OpenExpression(100, 200, "1");
  create->Btn_Comp_Click();
  create->Txt_Expr_LostFocus("2\r\n+ 0");
  EXPECT_EQ(Page(1).Expression, "2  + 0") << "line breaks are blanks";
  create->Btn_OK_Click();
  EXPECT_EQ(Code(150), 2);
  create->Txt_Expr_LostFocus(std::string(2000, '1'));
  EXPECT_EQ(Page(1).Expression.size(), 1024U);
  std::string wide;
  for (int i = 0; i < 1000; ++i) wide += "é";
  create->Txt_Const_LostFocus(wide);
  EXPECT_EQ(Page(1).Constants.size(), 2 * 944U) << "whole characters";
}

} // namespace calder::create_expression_test
