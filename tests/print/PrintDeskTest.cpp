// Margins, font and mode of the print dialog, and what the version dialog says.
#include "print/PrintDesk.h"
#include "FakeDesktop.h"
#include "RecordingPaper.h"
#include "print/VersionText.h"

namespace calder {
namespace {

struct PrintDeskTest : testing::Test {
  PrintDesk Desk(int mode) { return {settings, source, mode, messages}; }

  fake::Boxes boxes;
  ErrMsg messages{boxes, Language::English};
  PrintSettings settings{Language::English};
  SystemInfo record;
  ConvUnit units{record};
  PageTable pages;
  PwfTable functions;
  PrintSource source{record, units, pages, functions, [] { return SystemReportTexts{}; }, [] { return WaveReport{}; }};
};

TEST_F(PrintDeskTest, MarginsAreWholeMillimetresFrom5To100) {
  PrintDesk desk = Desk(kToolCreate);
  using Margin = PrintDesk::Margin;
  const struct {
    const char* typed;
    const char* shown;
  } rows[] = {{"3", "5"}, {"250", "100"}, {"17.9", "17"}, {"abc", "17"}, {"12x", "17"},
              {"", "17"}, {" 20 ", "20"}, {"1e1", "10"},  {"-8", "5"},   {"nan", "5"}};
  for (const auto& row : rows) {
    desk.Text_LostFocus(Margin::Top, row.typed);
    EXPECT_EQ(desk.MarginText(Margin::Top), row.shown) << row.typed;
  }
  desk.StepMargin(Margin::Left, -1);
  EXPECT_EQ(desk.MarginText(Margin::Left), "5");
  desk.Text_LostFocus(Margin::Bottom, "99");
  for (int i = 0; i < 3; ++i) desk.StepMargin(Margin::Bottom, 1);
  EXPECT_EQ(desk.MarginText(Margin::Bottom), "100");
  EXPECT_TRUE(desk.UsesMargins());
  EXPECT_FALSE(Desk(kToolNone).UsesMargins());
}

TEST_F(PrintDeskTest, AFontWithoutSizeIsAskedForAgain) {
  PrintDesk desk = Desk(kToolPwf);
  std::vector<double> sizes{0, -1, 12};
  std::vector<double> presets;
  boxes.Expect("Illegal Font Size.");
  boxes.Expect("Illegal Font Size.");
  EXPECT_TRUE(desk.Btn_Font_Click([&](const PrintFont& preset) {
    presets.push_back(preset.size);
    PrintFont font = preset;
    font.size = sizes[presets.size() - 1];
    return std::optional(font);
  }));
  EXPECT_EQ(presets, (std::vector<double>{10, 10, 10}));
  EXPECT_EQ(desk.Font().size, 12);
  EXPECT_FALSE(desk.Btn_Font_Click([](const PrintFont&) { return std::nullopt; }));
  EXPECT_EQ(settings.font.size, 12);
}

TEST_F(PrintDeskTest, TheSelectedToolSaysWhatIsPrinted) {
  const struct {
    int mode;
    const char* first; // null: nothing is printed
  } rows[] = {{kToolCreate, "1 5 5 +++++++++++++++"},
              {kToolElastic, nullptr},
              {kToolSpline, nullptr},
              {kToolCalc, nullptr},
              {kToolPwf, "1 5 5 <PWF Parameter>"},
              {kToolSystem, "1 5 5 <System Setup>"}};
  for (const auto& row : rows) {
    RecordingPaper paper(190, 280);
    const PrintDesk desk = Desk(row.mode);
    desk.Print(paper);
    EXPECT_EQ(desk.HasReport(), row.first != nullptr);
    EXPECT_EQ(paper.texts.empty() ? "" : paper.texts.front(), row.first == nullptr ? "" : row.first) << row.mode;
  }
}

TEST(VersionText, MonthsAreCutByTheirNumber) {
  const struct {
    int month;
    int day;
    const char* text;
  } rows[] = {{2, 1, "Mar.1,2026"},   {4, 9, "May 9,2026"},  {5, 12, "June 12,2026"}, {6, 3, "July 3,2026"},
              {7, 31, "Aug.31,2026"}, {8, 5, "Sept.5,2026"}, {11, 25, "Dec.25,2026"}};
  for (const auto& row : rows) {
    std::tm day{};
    day.tm_year = 126;
    day.tm_mon = row.month;
    day.tm_mday = row.day;
    EXPECT_EQ(BuildDateText(day), row.text);
  }
  const VersionText text = Make_VersionText(Language::English, fake::kNowhere);
  EXPECT_EQ(text.version.find(std::string("Version ") + ProgramVersion() + ".0  "), 0U) << text.version;
  EXPECT_EQ(Format_BuildDate("/proc/self/nothing"), "");
}

} // namespace
} // namespace calder
