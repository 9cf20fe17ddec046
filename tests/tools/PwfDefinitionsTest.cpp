#include "tools/PwfFixture.h"

#include "app/EngValB.h"

namespace calder::pwf_definitions_test {

struct PwfDefinitionsTest : PwfFixture {};

TEST(PwfScrollTest, ParametersHaveAPositionAStepUpToALimit) {
  const std::tuple<const char*, double, double, double, double, double, double, int> rows[] = {
      {"one a step", 0, 10, 0.1, 2.5, 0, 100, 25},
      {"below 0: 30000 at most", -1, 1, 0.0001, 0.5, -10000, 10000, 5000},
      {"coarser", 0, 100, 0.001, 50, 0, 15000, 7500},
      {"coarser, from below 0", -300, 300, 0.001, -300, -15000, 15000, -15000},
      {"coarser, from above 0: both ends", 50, 100, 0.001, 75, 15000, 30000, 22500},
      {"halves to even", 0, 2.5, 1, 2.5, 0, 2, 2}};
  for (const auto& [why, min, max, resolution, value, low, high, position] : rows) {
    const PwfParam param{min, max, resolution, value, "p", value};
    const ScrollRange range = ScrollRangeOf(param);
    EXPECT_EQ(Texts(range.Min, range.Max), Texts(low, high)) << why;
    EXPECT_EQ(ScrollPositionOf(param, range), position) << why;
    EXPECT_NEAR(ScrolledValue(param, range, position), value, 1e-9) << why;
  }
  const PwfParam param{1, 100000, 1, 1, "p", 1};
  EXPECT_EQ(ScrolledValue(param, ScrollRangeOf(param), 0), 1) << "never below the limit";
}

TEST_F(PwfDefinitionsTest, FaultyLinesAreNamedAndTheOthersKeepTheirPlaces) {
  // line, note: note: after the line's number; empty: sound
  const std::tuple<const char*, const char*> rows[] = {
      {R"(A"p|0|1|0.1|0.5""p*x"0)", ""},
      {R"(A"p|0|1|0.1|0.5"q=p;"q*x" 7 )", ""},
      {R"(A"p|0|1|0.1|0.5""p*x)", "four double quotes"},
      {R"(A"p|0|1|0.1|0.5""p*x"0")", "four double quotes"},
      {R"(A"""x"0)", "1 to 5 parameters"},
      {R"(A"p|0|1|0.1""p*x"0)", "1 to 5 parameters"},
      {R"(A"a|0|1|1|0|b|0|1|1|0|c|0|1|1|0|d|0|1|1|0|e|0|1|1|0|f|0|1|1|0""x"0)", "1 to 5 parameters"},
      {R"(A"p|0|1|tenth|0.5""p*x"0)", "\"tenth\" is no number"},
      {R"(A"p|0|1|0.1|0.5""p*x"zero)", "\"zero\" is no number"},
      {R"(A"p|0|1|0|0.5""p*x"0)", "The resolution of p is not above 0"},
      {R"(A"p|1|1|0.1|1""p*x"0)", "The minimum of p is not below its maximum"},
      {R"(A"p|0|1|0.1|1.5""p*x"0)", "The value of p is outside its limits"},
      {R"(A"p|100000|100010|1|100000""x"0)", "The resolution of p does not fit its limits"},
      {R"(A"p|0|0.4|1|0""x"0)", "The resolution of p does not fit its limits"},
      {R"(A"p|0|1|0.1|0.5""p*y"0)", "unknown name \"y\""},
      {R"(A"p|0|1|0.1|0.5"q=)p"x"0)", "\")\""}};
  std::string definitions = "'a comment takes no place\r\n\r\n";
  for (const auto& [line, note] : rows) definitions += std::string(line) + "\n";
  definitions += R"(Last"p|0|1|0.1|0.5""p"0)"; // without a line end
  Open(definitions);
  auto note = desk->Notes().begin();
  int line = 7;
  int k = 0;
  for (const auto& [theLine, theNote] : rows) {
    const bool sound = std::string(theNote).empty();
    EXPECT_EQ(program->functions[k++].IsDefined(), sound) << theLine;
    const std::string where = "pwf.fnc, line " + std::to_string(line++) + ": ";
    if (sound) continue;
    ASSERT_NE(note, desk->Notes().end()) << theLine;
    EXPECT_TRUE(note->starts_with(where)) << *note << "\n" << theLine;
    EXPECT_NE(note->find(theNote), std::string::npos) << *note;
    ++note;
  }
  EXPECT_EQ(note, desk->Notes().end());
  EXPECT_EQ(Texts(program->functions[1].FuncNo, program->functions[k].FuncName, desk->Remark()),
            "7 Last a comment takes no place")
      << "of the first function alone";
  desk->Comb_Wave_Click(1);
  EXPECT_EQ(desk->Remark(), "");
}

TEST_F(PwfDefinitionsTest, TheWholeFileIsJudgedByItsHeader) {
  PwfTable table;
  const std::string function = "A\"p|0|1|0.1|0.5\"\"x\"0\n";
  std::string many;
  for (int i = 0; i < PwfTable::kFunctions + 2; ++i) many += function;
  const std::tuple<std::string, std::string, int> rows[] = {
      {"PWF x\nVER=1\nNUM=9\n'comment\n[definition]\n" + function, "", 1},
      {"PWF x\nVER=1\n[definition]\n" + function, "pwf.fnc, line 3: Before this line", 0},
      {"PWF\nVER=1\nNUM=9\n[definition]\n" + function, "pwf.fnc, line 4: Before this line", 0},
      {"PWF x\nVER=1\nNUM=9\n [definition]\n" + function, "pwf.fnc: The line [definition]", 0},
      {"", "pwf.fnc: The line [definition]", 0},
      {"\xEF\xBB\xBFPWF x\rVER=1\rNUM=9\r[definition]\r" + many, "pwf.fnc, line 30: There are at most 25", 25}};
  for (const auto& [text, fault, defined] : rows) {
    table = {};
    const PwfReading reading = Read_Fnc(text, Language::English, table);
    const std::string said = reading.faults.empty() ? "" : PwfFaultText(reading.faults[0], program->messages);
    EXPECT_EQ(reading.remarks[0], "") << "a comment of the header";
    EXPECT_TRUE(fault.empty() ? said.empty() : said.starts_with(fault)) << said;
    EXPECT_EQ(std::ranges::count_if(table.functions, &PwfFunction::IsDefined), defined) << fault;
  }
}

TEST_F(PwfDefinitionsTest, TheExampleOfTheFormatsPageIsSound) {
  const std::string page = GetFile(CALDER_SOURCE_DIR "/docs/file-formats.md");
  const std::size_t start = page.find("'my functions");
  PutFile(folder / kPwfDefinitions, page.substr(start, page.find("```", start) - start));
  desk->Form_Load();
  EXPECT_TRUE(desk->Notes().empty()) << desk->Notes()[0];
  EXPECT_EQ(Texts(program->functions[1].FuncName, Generated(4095)), "Sine 16380") << "the ramp with its first values";
}

// Each parameter at both of its limits, the others as the file has them.
TEST_F(PwfDefinitionsTest, EveryFunctionOfTheProgramHasASanePictureAtBothEnds) {
  desk->Form_Load();
  EXPECT_TRUE(desk->Notes().empty()) << desk->Notes()[0];
  PwfGenerator generator(program->evaluator, program->units, program->settings, program->language);
  const WaveHandle buffer = W_AllocMemory(PwfDesk::kPreviewPoints);
  for (int k = 0; k < PwfTable::kFunctions; ++k) {
    const PwfFunction& function = program->functions[k];
    ASSERT_TRUE(function.IsDefined()) << k;
    EXPECT_EQ(function.FuncNo, k);
    for (std::size_t j = 0; j < function.Parameters().size(); ++j) {
      const PwfParam& param = function.Params[j];
      EXPECT_EQ(LeadingNumber(FormatMask(param.FileValue, Resolution_Mask(param.Resolution))), param.FileValue)
          << "a start between two steps";
      for (const double end : {param.MinValue, param.MaxValue}) {
        PwfTexts texts = FileTexts(function);
        texts[j] = PwfValueText(param, end);
        const ExpressionFault fault = generator.Make(program->functions, k, texts, buffer, PwfDesk::kPreviewPoints);
        const std::string which = function.FuncName + ", " + param.ParamName + " = " + texts[j];
        EXPECT_EQ(fault.message, 0) << which << ": " << fault.reason;
        const auto [least, most] = std::ranges::minmax(W_Lock(buffer));
        EXPECT_GT(most - least, W_CODE_MAX / 10) << which << " is flat";
        if (k == PwfTable::kNormalized) continue;
        // At half the size nothing is cut off that leaves the scale.
        PwfTable half = program->functions;
        half[k].Formula = "(" + function.Formula + ")/2";
        ASSERT_EQ(generator.Make(half, k, texts, buffer, PwfDesk::kPreviewPoints).message, 0);
        const auto [lowest, highest] = std::ranges::minmax(W_Lock(buffer));
        EXPECT_LE(std::max<int>(-lowest, highest), 16384) << which << " leaves the scale";
      }
    }
  }
  W_FreeMemory(buffer);
}

} // namespace calder::pwf_definitions_test
