#include "files/ListFile.h"
#include "editor/EditorFixture.h"
#include "files/ListText.h"
#include "platform/TempFolder.h"

namespace calder::list_file_test {

struct ListFileTest : EditorFixture {
  void SetUp() override {
    Begin();
    SetPoints();
    program->settings.MemorySize = 1000;
    program->settings.Amplitude = 5;
    list.emplace(program->pages, program->settings, program->messages);
  }
  // Page 1 a square over 100 to 200, page 3 an expression over the rest.
  void FillPages() {
    CreatePage& square = program->pages[1];
    square.Valid = kPageTrue;
    square.Function = kFunctionSquare;
    square.SetArea(100, 200);
    square.Offset = -123;
    square.Amplitude = 2000;
    square.Period = 2.5;
    square.Phase = -90;
    square.Duty = 12.5;
    square.Transition = 1e-5;
    CreatePage& expression = program->pages[3];
    expression.Valid = kPageTrue;
    expression.Function = kFunctionExpression;
    expression.SetArea(200, 1000);
    expression.Expression = "sin(2*pi*x/p)";
    expression.Constants = "p=7";
  }
  // A list with that in place of its second page's lines from `from` to the end.
  [[nodiscard]] std::string ListWith(const std::string& from, const std::string& replacement) const {
    const std::string text = Compose();
    return text.substr(0, text.find(from, text.find("\r\n3\t"))) + replacement;
  }
  static std::string WithLine(std::string text, const std::string& line, const std::string& replacement) {
    const auto at = text.find(line);
    EXPECT_NE(at, std::string::npos) << line;
    return text.replace(at, line.size(), replacement);
  }
  [[nodiscard]] std::string Compose() const { return Text().Compose(program->pages); }
  [[nodiscard]] bool Parse(const std::string& text, PageTable& pages) const { return Text().Parse(text, pages); }
  [[nodiscard]] ListText Text() const { return {program->settings, program->language}; }
  TempFolder folder;
  std::optional<ListFile> list;
};

TEST_F(ListFileTest, WritesTheLayout) {
  FillPages();
  program->pages[3].Valid = 0;
  const std::string expected = "'+++++++++++++++\n'<Unit Setup>\n'[X-Axis Unit]\n'X-Axis Unit\tAddress\n'Name\tWord\n"
                               "'Min to Max\t\n'XX\t0,1000\n'[Y-Axis Unit]\n'Y-Axis Unit\tData\n'Name\t\n"
                               "'Min to Max\t\n'YY\t-32767,32767\n'+++++++++++++++\nStartPage\n1\t\t'Page\n"
                               "2\t\t'Type  Square\n100\t\t'Start\n200\t\t'End\n-123\t\t'Offset\n100\t\t'Size\n"
                               "2000\t\t'Ampl\n2.5\t\t'Cycle\n-90\t\t'Phase\n50\t\t'Symm\n12.5\t\t'Duty\n"
                               "1E-05\t\t'Transition\n\t\t'Y=\nNone\n\t\t'Const\nNone\nEndPage\n'----------------\n";
  std::string windows;
  for (const char c : expected) windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_EQ(Compose(), windows);
}

// Written in any units and read in any others, pages are the same.
TEST_F(ListFileTest, ComesBackInAllUnits) {
  using Unit = std::int16_t;
  SystemInfo& settings = program->settings;
  settings.Period = 0.001;
  settings.Frequency = 1000;
  settings.Offset = 0.25;
  settings.XUserMin = 1000; // a narrow range far from 0 is the hardest for 15 digits
  settings.XUserMax = 1001;
  settings.YUserMin = -3;
  settings.YUserMax = 0.1;
  settings.MemorySize = 524288;
  FillPages();
  program->pages[1].SetArea(1, 524287);
  program->pages[3].SetArea(12345, 524288);
  CreatePage square = program->pages[1];
  CreatePage expression = program->pages[3];
  square.Visited = expression.Visited = kPageTrue;
  square.PageNo = 1;
  expression.PageNo = 3;
  for (const Unit writeX : {Unit{0}, Unit{1}, Unit{2}}) {
    for (const Unit writeY : {Unit{0}, Unit{1}, Unit{2}}) {
      settings.XUnit = writeX;
      settings.YUnit = writeY;
      const std::string text = Compose();
      for (const Unit read : {Unit{0}, Unit{1}, Unit{2}}) {
        settings.XUnit = settings.YUnit = read;
        PageTable pages;
        ASSERT_TRUE(Parse(text, pages));
        EXPECT_TRUE(pages[1] == square && pages[3] == expression) << writeX << writeY << read;
        EXPECT_EQ(pages.CountValid(), 2);
      }
    }
  }
}

TEST_F(ListFileTest, AJapaneseListIsReadByTheEnglishProgram) {
  fake::FakeDesktop japaneseDesktop;
  japaneseDesktop.language.id = SystemLanguage::kJapanese;
  Program japanese(japaneseDesktop.Services());
  japanese.settings.MemorySize = 1000;
  FillPages();
  japanese.pages = program->pages;
  ListFile japaneseList(japanese.pages, japanese.settings, japanese.messages);
  const std::string text = ListText(japanese.settings, Language::Japanese).Compose(japanese.pages);
  EXPECT_NE(text.find(ToCodePage("5\t\t'Type  波形関数\r\n", CodePage::Japanese)), std::string::npos);
  EXPECT_NE(text.find(ToCodePage("'単位\tｱﾄﾞﾚｽ\r\n", CodePage::Japanese)), std::string::npos);
  ASSERT_EQ(japaneseList.Write_List(folder / "j.wfn"), 0);
  ASSERT_EQ(list->Read_List(folder / "j.wfn"), 0);
  EXPECT_EQ(Texts(program->pages[3].Expression, program->pages[1].EndX), "sin(2*pi*x/p) 200");
}

TEST_F(ListFileTest, NothingToWriteMakesNoFileAndAFailureKeepsTheOldOne) {
  EXPECT_EQ(list->Write_List(folder / "empty.wfn"), 0);
  EXPECT_TRUE(folder.Names().empty());
  FillPages();
  EXPECT_EQ(list->Write_List(folder / "missing/a.wfn"), FILE_WRITE_FAILED);
  EXPECT_TRUE(folder.Names().empty());
}

TEST_F(ListFileTest, ADamagedListGivesThePagesBeforeTheDamageOrNone) {
  FillPages();
  const std::string whole = Compose();
  // pages: -1: message 71, nothing changes
  const std::tuple<const char*, std::string, int> rows[] = {
      {"whole", whole, 2},
      {"line ends of other systems",
       [&] {
         std::string text = whole;
         std::erase(text, '\r');
         return text;
       }(),
       2},
      {"empty", "", -1},
      {"no ranges", whole.substr(whole.find("StartPage")), -1},
      {"no Y range", WithLine(whole, "'YY\t-32767,32767", "'"), -1},
      {"a range that is none", WithLine(whole, "'XX\t0,1000", "'XX\t0;1000"), -1},
      {"an empty range", WithLine(whole, "'XX\t0,1000", "'XX\t5,5"), -1},
      {"a range the wrong way round", WithLine(whole, "'YY\t-32767,32767", "'YY\t1,-1"), -1},
      {"no number", WithLine(whole, "'YY\t-32767,32767", "'YY\tnan,1"), -1},
      {"no pages", whole.substr(0, whole.find("StartPage")), 0},
      {"first page damaged", WithLine(whole, "2.5\t\t'Cycle", "2.5.1\t\t'Cycle"), -1},
      {"cut in a number line", ListWith("\t\t'Offset", ""), 1},
      {"cut before the constants", ListWith("\t\t'Const", ""), 1},
      {"cut before the end of the page", ListWith("EndPage", ""), 1},
      {"a value is missing", ListWith("0\t\t'Transition", "\t\t'Y=\r\nx\r\n\t\t'Const\r\nNone\r\nEndPage\r\n"), 1},
      {"the text is missing", ListWith("sin(2", "\t\t'Const\r\nNone\r\nEndPage\r\n"), 1},
      {"a page inside a page", ListWith("p=7", "StartPage\r\nStartPage\r\n"), 1},
      {"rubbish between pages", WithLine(whole, "'----------------", "rubbish"), 1},
      {"no such function", WithLine(whole, "5\t\t'Type", "6\t\t'Type"), 1},
      {"no such page ends without a message", WithLine(whole, "3\t\t'Page", "203\t\t'Page"), 1},
      {"even as the first", WithLine(whole, "1\t\t'Page", "-1\t\t'Page"), 0},
      {"a page number with a fraction", WithLine(whole, "3\t\t'Page", "3.5\t\t'Page"), 1}};
  for (const auto& [why, text, thePages] : rows) {
    SCOPED_TRACE(why);
    PageTable pages;
    pages[9].Valid = kPageTrue;
    const bool read = Parse(text, pages);
    EXPECT_EQ(Texts(read, pages[9].Valid != 0, pages.CountValid()),
              Texts(thePages >= 0, thePages < 0, thePages < 0 ? 1 : thePages))
        << "all pages are replaced, or none";
  }
  std::vector<std::byte> bytes(3);
  const std::span<const std::byte> piece(bytes);
  ASSERT_EQ(ReplaceFile(folder / "bad.wfn", {&piece, 1}), 0);
  const PageTable before = program->pages;
  for (const char* name : {"bad.wfn", "missing.wfn"}) {
    desktop.boxes.Expect("File Read error");
    EXPECT_EQ(list->Read_List(folder / name), FILE_READ_FAILED);
    EXPECT_EQ(program->pages[3], before[3]);
  }
}

// What no box would accept comes into its range; what a text line could be taken for stays text.
TEST_F(ListFileTest, OddPagesAreBroughtInto) {
  FillPages();
  CreatePage& page = program->pages[3];
  page.SetArea(400, 2000);
  page.Phase = 365;
  page.Symmetry = 120;
  page.Duty = -5;
  page.Period = -1;
  page.Expression = "None";
  page.Constants = "'Const";
  PageTable pages;
  ASSERT_TRUE(Parse(Compose(), pages));
  EXPECT_EQ(Texts(pages[3].EndX, pages[3].Size, pages[3].Phase, pages[3].Symmetry, pages[3].Duty), "1000 600 5 100 0");
  EXPECT_EQ(Texts(pages[3].Period, pages[3].Expression, pages[3].Constants), "0 none 'Const");
  const std::string broken = WithLine(Compose(), "none\r\n", "a+\r\nb" + std::string(1, '\0') + "rest\r\n");
  ASSERT_TRUE(Parse(broken, pages));
  EXPECT_EQ(pages[3].Expression, "a+ b") << "broken lines are joined, a NUL ends the text";
  program->settings.YUnit = 1;
  program->settings.Amplitude = 0;
  ASSERT_TRUE(Parse(Compose(), pages));
  EXPECT_EQ(pages[1].Amplitude, 65534) << "0 volts say nothing about codes";
}

} // namespace calder::list_file_test
