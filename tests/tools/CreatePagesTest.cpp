#include "RecordingContext.h"
#include "platform/TempFolder.h"
#include "tools/CreateFixture.h"

namespace calder::create_pages_test {

struct CreatePagesTest : CreateFixture {};
using End = CreatePages::AreaEnd;
using Button = CreatePages::PageButton;

TEST_F(CreatePagesTest, OpensOnTheFirstValidPageOrMakesPageOneOfTheRange) {
  createPort->previews = 0;
  create->PrepareCreate();
  EXPECT_EQ(createPort->previews, 1);
  EXPECT_EQ(Texts(create->CurrentPage(), Page(1).StartX, Page(1).Size, Page(1).Valid, Page(1).Visited),
            "1 100 100 -1 0");
  EXPECT_EQ(Texts(create->PageModified(), create->Cancelled(), create->StartText(), Generated(125), Generated(225)),
            "true true 100.0000000 32767 0")
      << "a sine over the range";
  // Another page, whose area passes the end of a memory that has become smaller.
  Page(1).Valid = 0;
  Page(7).Valid = kPageTrue;
  Page(7).SetArea(900, 5000);
  create->PrepareCreate();
  EXPECT_EQ(Texts(create->CurrentPage(), Page(7).EndX, Page(7).Size, program->buffers.CurrentScope()),
            "7 1000 100 900..1000");
}

TEST_F(CreatePagesTest, ParameterBoxesAcceptTheirRangesAndShowTheStoredValueOtherwise) {
  using Row = std::tuple<const char*, int, const char*, double, const char*>;
  for (const auto& [why, box, typed, stored, shown] :
       {Row{"offset", kBoxOffset, "-100", -100, "-100.000"},
        Row{"lowest code", kBoxOffset, "-32768", -32768, "-32767.0"},
        Row{"offset beyond the scale", kBoxOffset, "32768", 0, "0.000000"},
        Row{"amplitude of any size, prefixes work", kBoxAmplitude, "100k", 100000, "100000.0"},
        Row{"period", kBoxPeriod, "2.5", 2.5, "2.5"}, Row{"no period", kBoxPeriod, "0", 0, "0"},
        Row{"negative period", kBoxPeriod, "-1", 1, "1"}, Row{"a full turn", kBoxPhase, "360", 360, "360"},
        Row{"a full turn back", kBoxPhase, "-360", -360, "-360"}, Row{"more than a turn", kBoxPhase, "360.5", 0, "0"},
        Row{"symmetry", kBoxSymmetry, "100", 100, "100"}, Row{"symmetry beyond", kBoxSymmetry, "100.1", 50, "50"},
        Row{"duty below", kBoxDuty, "-0.1", 50, "50"},
        Row{"transition, small numbers in exponent form", kBoxTransition, "10u", 1e-5, "1E-05"},
        Row{"size up to the end", kBoxSize, "900", 900, "900.0000"},
        Row{"size that would pass the end", kBoxSize, "901", 100, "100.0000"},
        Row{"negative size", kBoxSize, "-1", 100, "100.0000"}}) {
    program->pages = PageTable{};
    program->buffers.CurrentScope() = {100, 200};
    create->PrepareCreate();
    const double before = BoxField(create->Page(), box);
    createPort->previews = 0;
    program->settings.TransferFormat = 1;
    create->Text_LostFocus(box, typed);
    EXPECT_DOUBLE_EQ(BoxField(create->Page(), box), stored) << why;
    EXPECT_EQ(create->ParameterText(box), shown) << why;
    const bool changed = before != stored;
    EXPECT_EQ(Texts(createPort->previews > 0, program->settings.TransferFormat == 0, create->Page().EndX),
              Texts(changed, changed, 100 + create->Page().Size))
        << why;
    EXPECT_EQ(program->buffers.CurrentScope().End, create->Page().EndX) << why;
  }
}

TEST_F(CreatePagesTest, LeavingABoxUntouchedChangesNothing) {
  program->settings.XUnit = program->settings.YUnit = 2;
  create->PrepareCreate();
  Page(1).Offset = 12345;
  Page(1).SetArea(100, 433);
  const CreatePage before = Page(1);
  for (int box = 0; box < kPageBoxes; ++box) create->Text_LostFocus(box, create->ParameterText(box));
  create->Text_X_LostFocus(End::Start, create->StartText(), create->EndText());
  create->Text_X_LostFocus(End::End, create->StartText(), create->EndText());
  EXPECT_EQ(Page(1), before);
}

TEST_F(CreatePagesTest, TypedAreasPushTheOtherEndOrAreRefused) {
  const std::tuple<const char*, End, const char*, const char*, Scope> rows[] = {
      {"start", End::Start, "150", "200.0000000", {150, 200}},
      {"start after the end", End::Start, "300", "200.0000000", {300, 300}},
      {"end", End::End, "100.0000000", "1k", {100, 1000}},
      {"end before the start", End::End, "100.0000000", "50", {50, 50}},
      {"end beyond the memory, not taken for 0", End::End, "100.0000000", "1000.5", {100, 200}},
      {"start below 0", End::Start, "-1", "200.0000000", {100, 200}},
      {"the same in other digits", End::Start, "1e2", "200.0000000", {100, 200}}};
  for (const auto& [why, edited, start, end, after] : rows) {
    program->pages = PageTable{};
    program->buffers.CurrentScope() = {100, 200};
    create->PrepareCreate();
    Page(1).Valid = 0;
    create->Text_X_LostFocus(edited, start, end);
    EXPECT_EQ(program->buffers.CurrentScope(), after) << why;
    EXPECT_EQ((Scope{Page(1).StartX, Page(1).EndX}), after) << why;
    EXPECT_EQ(Page(1).Size, after.Length()) << why;
    EXPECT_EQ(Page(1).Visited != 0, !(after == Scope{100, 200})) << why;
  }
}

TEST_F(CreatePagesTest, FunctionsShowTheirBoxesAndEnterGoesThroughThem) {
  create->PrepareCreate();
  const char* const shown[] = {"01234", "012345", "0123467", "012", "01", ""};
  for (int function = 0; function < kPageFunctions; ++function) {
    create->Comb_Wave_Click(function);
    std::string boxes;
    for (std::optional<int> box = create->NextBox(-1); box; box = create->NextBox(*box)) boxes += std::to_string(*box);
    EXPECT_EQ(boxes, shown[function]);
  }
}

TEST_F(CreatePagesTest, PageButtonsAndThePageBoxFindTheirPages) {
  create->PrepareCreate();
  Page(1).Function = kFunctionSquare;
  Page(9).Valid = Page(50).Valid = kPageTrue;
  Page(50).SetArea(0, 100);
  Page(50).Amplitude = 0;
  Page(50).Offset = 7;
  const auto press = [this](Button button) {
    create->Cmd_Page_Click(button);
    const int page = create->CurrentPage();
    return Texts(page, Page(page).Function, Generated(50));
  };
  EXPECT_EQ(press(Button::Previous), Texts(1, kFunctionSquare, 0));
  EXPECT_EQ(press(Button::Next), Texts(2, kFunctionSquare, 0)) << "an untouched page takes over the function";
  EXPECT_EQ(program->buffers.CurrentScope(), (Scope{0, 0}));
  EXPECT_EQ(press(Button::Last), Texts(50, kFunctionSine, 7)) << "a valid one keeps its own";
  EXPECT_EQ(press(Button::First), Texts(1, kFunctionSquare, 7));
  using Row = std::tuple<const char*, int>;
  for (const auto& [typed, page] :
       {Row{"7", 7}, Row{"", 1}, Row{"999", 200}, Row{"-4", 1}, Row{"12", 12}, Row{"abc", 1}, Row{"1e30", 200}}) {
    create->Txt_Page_LostFocus(typed);
    EXPECT_EQ(Texts(create->CurrentPage(), create->PageText()), Texts(page, page)) << typed;
  }
  press(Button::Next);
  EXPECT_EQ(create->CurrentPage(), 200);
  for (int page = 1; page <= 200; ++page) Page(page).Valid = 0;
  press(Button::First);
  EXPECT_EQ(create->CurrentPage(), 1);
  EXPECT_EQ(press(Button::Last), Texts(200, kFunctionSine, 7)) << "taken over from page 1 only when untouched";
}

TEST_F(CreatePagesTest, DraggingChangesWhatTheRegionSays) {
  // x, y, toX, toY: a picture of 400 by 200
  using Row = std::tuple<const char*, int, double, double, double, double, double CreatePage::*, double, double>;
  const double code = 65534 / 200.0 / 4;
  for (const auto& [why, function, x, y, toX, toY, field, before, after] :
       {Row{"top: period", 0, 200, 50, 150, 50, &CreatePage::Period, 1, 2},
        Row{"bottom: amplitude", 0, 200, 150, 200, 140, &CreatePage::Amplitude, 1000, 1000 + 10 * code},
        Row{"a period below 0.1 is refused", 0, 0, 0, 46, 0, &CreatePage::Period, 1, 1},
        Row{"middle: phase", 0, 300, 100, 310, 100, &CreatePage::Phase, 0, -2.25},
        Row{"the phase wraps", 0, 8, 100, 0, 100, &CreatePage::Phase, 359.5, 1.3},
        Row{"and the other way", 0, 0, 100, 8, 100, &CreatePage::Phase, -359.5, -1.3},
        Row{"middle: offset", 4, 300, 100, 300, 120, &CreatePage::Offset, 0, -20 * code},
        Row{"right half of a triangle: symmetry", 1, 300, 100, 310, 100, &CreatePage::Symmetry, 50, 52.25},
        Row{"which stops", 1, 300, 100, 0, 100, &CreatePage::Symmetry, 50, 0},
        Row{"left half: phase", 1, 200, 100, 210, 100, &CreatePage::Phase, 0, -2.25},
        Row{"right half of a square: duty", 2, 300, 100, 310, 100, &CreatePage::Duty, 99, 100},
        Row{"and transition", 2, 300, 100, 310, 100, &CreatePage::Transition, 0, 2.25},
        Row{"an expression cannot be dragged", 5, 200, 50, 150, 50, &CreatePage::Period, 1, 1}}) {
    program->pages = PageTable{};
    create->PrepareCreate();
    Page(1).Function = static_cast<std::int16_t>(function);
    Page(1).*field = before;
    create->PictWave_MouseDown(true, x, y, 400, 200);
    create->PictWave_MouseMove(toX, toY);
    create->PictWave_MouseUp();
    create->PictWave_MouseMove(0, 0);
    EXPECT_NEAR(Page(1).*field, after, 1e-9) << why;
  }
  create->PictWave_MouseDown(false, 10, 10, 400, 200);
  create->PictWave_MouseMove(20, 20);
  EXPECT_EQ(Page(1).Period, 1) << "another button drags nothing";
}

TEST_F(CreatePagesTest, ARefusedPeriodWaitsForThePointer) {
  create->PrepareCreate();
  create->PictWave_MouseDown(true, 100, 10, 400, 200);
  create->PictWave_MouseMove(144, 10);
  EXPECT_NEAR(Page(1).Period, 0.12, 1e-12);
  create->PictWave_MouseMove(200, 20); // refused, the amplitude follows
  EXPECT_NEAR(Page(1).Period, 0.12, 1e-12);
  EXPECT_LT(Page(1).Amplitude, 65534);
  create->PictWave_MouseMove(140, 20);
  EXPECT_NEAR(Page(1).Period, 0.2, 1e-12) << "counted from where it was taken last";
}

TEST_F(CreatePagesTest, PageOkCopiesTheAreaAlone) {
  Ramp();
  create->PrepareCreate();
  create->Comb_Wave_Click(kFunctionDc);
  create->Text_LostFocus(kBoxOffset, "1234");
  EXPECT_EQ(Code(150), 150) << "nothing before OK";
  create->Btn_OK_Click();
  EXPECT_EQ(Texts(Code(99), Code(100), Code(199), Code(200), create->Cancelled(), createPort->closes),
            "99 1234 1234 200 false 1");
  editor->Do(Command::Undo);
  EXPECT_EQ(Code(150), 150);
}

TEST_F(CreatePagesTest, PagesWithoutEffectAreNotCopied) {
  Ramp();
  create->PrepareCreate();
  create->Opt_effect_Click(false);
  create->Btn_Confirm_Click();
  EXPECT_EQ(Texts(createPort->closes, editor->commands.CanUndo()), "1 false") << "there was nothing to do";
  Page(2).SetArea(100, 200);
  create->GoToPage(2);
  create->Text_LostFocus(kBoxOffset, "1");
  create->Opt_effect_Click(false);
  create->Btn_OK_Click();
  EXPECT_EQ(Texts(createPort->closes, Code(150)), "2 150");
  create->GoToPage(1); // which nobody has visited yet: the OK is the first touch
  create->Btn_OK_Click();
  EXPECT_EQ(Code(125), 32767);
}

TEST_F(CreatePagesTest, AllPageOkOverlaysThePagesInOrder) {
  Ramp();
  for (int page = 1; page <= 3; ++page) {
    Page(page).Function = kFunctionDc;
    Page(page).Offset = page * 1000;
    Page(page).Valid = page == 2 ? std::int16_t{0} : kPageTrue;
    Page(page).SetArea(page * 100, page * 100 + 250);
  }
  create->PrepareCreate();
  create->Btn_Confirm_Click();
  EXPECT_EQ(Texts(Code(299), Code(300), Code(549), Code(550), createPort->closes), "1000 3000 3000 550 1")
      << "a later page covers an earlier one";
}

TEST_F(CreatePagesTest, CancelLeavesTheWaveformAndTheOperandHasOnePage) {
  Ramp();
  create->PrepareCreate();
  create->Btn_Cancel_Click();
  create->Form_QueryUnload();
  EXPECT_EQ(Texts(create->Cancelled(), Code(150)), "true 150");

  const WaveHandle operand = W_AllocMemory(100);
  create->PrepareCreate({operand, {100, 200}});
  EXPECT_EQ(create->CurrentPage(), 0);
  create->Menu_AllClear_Click();
  EXPECT_EQ(create->Page().Size, 100) << "the range stays the page's area";
  create->Comb_Wave_Click(kFunctionDc);
  create->Text_LostFocus(kBoxOffset, "7");
  create->Btn_Confirm_Click(); // the same as Page OK
  create->Form_QueryUnload();
  EXPECT_EQ(Texts(createPort->operands, W_GetWaveData(operand, 99, 100), Code(150)), "1 7 150");
  W_FreeMemory(operand);
}

TEST_F(CreatePagesTest, ClearsKeepWhatTheyShould) {
  create->PrepareCreate();
  create->Comb_Wave_Click(kFunctionSquare);
  create->Text_LostFocus(kBoxDuty, "20");
  Page(1).Expression = "x";
  Page(5).Valid = kPageTrue;
  create->Menu_Clear_Click();
  EXPECT_EQ(Texts(Page(1).Duty, Generated(130), Page(1).Expression, Page(1).Function, Page(1).EndX, Page(1).Valid),
            Texts(50, 32767, "", kFunctionSquare, 200, kPageTrue)); // the first half, not the first fifth
  create->GoToPage(5);
  create->Menu_AllClear_Click();
  EXPECT_EQ(Texts(create->CurrentPage(), Generated(150)), "1 0");
  EXPECT_TRUE(Page(1) == CreatePage{} && Page(5) == CreatePage{});
}

TEST_F(CreatePagesTest, TheSameSeedGivesTheSameNoise) {
  const auto noise = [this](double seed) {
    random = seed;
    create->PrepareCreate();
    create->Comb_Wave_Click(kFunctionNoise);
    const auto codes = W_Lock(program->buffers.Create()).subspan(100, 100);
    return std::vector(codes.begin(), codes.end());
  };
  EXPECT_EQ(noise(0.5), noise(0.5));
  EXPECT_NE(noise(0.5), noise(0.51));
}

TEST_F(CreatePagesTest, ThePreviewShowsTheAreaAndNothingWhileTheFormIsFilled) {
  create->PrepareCreate();
  const auto drawn = [this] {
    RecordingContext picture(100, 80);
    create->Draw_Wave_Create(picture);
    return picture.calls;
  };
  EXPECT_FALSE(drawn().empty());
  Page(1).SetArea(100, 100);
  for (const std::string& call : drawn()) EXPECT_FALSE(call.starts_with("columns")) << "an empty area is empty";
  program->formSetup = true;
  EXPECT_TRUE(drawn().empty());
  program->formSetup = false;
}

TEST_F(CreatePagesTest, AListFromTheFileMenuShowsItsFirstPage) {
  const TempFolder folder;
  const std::string path = folder / "list.wfn";
  create->PrepareCreate();
  Page(1).Valid = 0;
  Page(20).Valid = kPageTrue;
  Page(20).SetArea(10, 60);
  Page(20).Offset = 5;
  desktop.dialogs.Answer(path);
  create->Menu_FileSave_Click();
  EXPECT_EQ(program->names.LastListFile, path);
  create->Menu_AllClear_Click();
  desktop.dialogs.Cancel();
  create->Menu_FileOpen_Click();
  EXPECT_EQ(create->CurrentPage(), 1) << "nothing was read";
  desktop.dialogs.Answer(path);
  create->Menu_FileOpen_Click();
  EXPECT_EQ(Texts(create->CurrentPage(), create->ParameterText(kBoxOffset)), "20 5.000000");
  EXPECT_EQ(program->buffers.CurrentScope(), (Scope{10, 60}));
}

TEST_F(CreatePagesTest, AreasBeyondASmallerMemoryAreShownShorterAndKept) {
  Page(1).SetArea(0, 400);
  Page(1).Valid = kPageTrue;
  Page(2).SetArea(100, 900);
  Page(3).SetArea(100, 900);
  program->settings.MemorySize = 500;
  create->PrepareCreate();
  EXPECT_EQ(Page(2).EndX, 500);
  create->GoToPage(3);
  create->Text_X_LostFocus(End::Start, "200", create->EndText());
  create->Form_QueryUnload();
  EXPECT_EQ(Texts(Page(2).EndX, Page(2).Size, Page(3).EndX), "900 800 500") << "an area that was edited is the user's";
}

TEST_F(CreatePagesTest, ATypedSizeMovesTheRangesEndOnly) {
  create->PrepareCreate();
  create->Menu_AllClear_Click();
  program->buffers.CurrentScope() = {100, 200};
  create->Text_LostFocus(kBoxSize, "300");
  EXPECT_EQ(program->buffers.CurrentScope(), (Scope{100, 300}));
}

} // namespace calder::create_pages_test
