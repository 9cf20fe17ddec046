#include "files/PwfFile.h"

#include "platform/TempFolder.h"

namespace calder::pwf_file_test {

constexpr const char* kHead = "'+++++++++++++++\r\n'PWF Parameter\r\n'+++++++++++++++\r\n";

PwfTable Table() {
  PwfTable table;
  table[3].ParamCount = 2;
  table[3].FuncName = "Dämpfung";
  table[3].Params[0] = {0, 10, 0.001, 1.5, "a", 1};
  table[3].Params[1] = {0, 100, 5, 12.4, "b", 10};
  table[4] = table[3];
  table[4].FuncName = "Other";
  table.WaveIdx = 3;
  return table;
}

TEST(PwfFileTest, ResolutionsGiveTheirDecimals) {
  const std::tuple<double, const char*> rows[] = {
      {1, "0"}, {5, "0"}, {0.01, "0.00"}, {0.25, "0.00"}, {0.00001, "0.00000"}, {1e20, "0"}, {12.5, "0.0"}};
  for (const auto& [resolution, mask] : rows) EXPECT_EQ(Resolution_Mask(resolution), mask) << resolution;
}

TEST(PwfFileTest, WritesTheLayoutAndReplacesInOneStep) {
  const TempFolder folder;
  PwfTable table = Table();
  const PwfFile file(table, Language::English);
  EXPECT_EQ(file.Write_Pwf(folder / "a.pwf"), 0);
  EXPECT_EQ(GetFile(folder / "a.pwf"), std::string(kHead) +
                                           "3\r\nD\xE4mpfung\r\n1.500\r\n12\r\nNone\r\nNone\r\nNone\r\n"
                                           "'----------------\r\n");
  EXPECT_EQ(file.Write_Pwf(folder / "missing/a.pwf"), 72);
}

TEST(PwfFileTest, ReadsWhatMatchesAndKeepsWhatCameBeforeAFault) {
  const std::string head = kHead;
  // first, second: of function 3
  const std::tuple<const char*, std::string, int, int, double, double> rows[] = {
      {"as written", head + "3\r\nD\xE4mpfung\r\n2.5\r\n20\r\nNone\r\n", 0, 3, 2.5, 20},
      {"None keeps", head + "3\nD\xE4mpfung\nNone\n20\nNone", 0, 3, 1.5, 20},
      {"comments anywhere, blanks around numbers", head + "'x\n 3 \n'y\nD\xE4mpfung\n'z\n 2e0 \n'\n+5\n", 0, 3, 2, 5},
      {"what stands before the second rule is passed over",
       "junk\n" + head.substr(0, 17) + "9\nno\n" + head.substr(0, 17) + "4\nOther\n", 0, 4, 1.5, 12.4},
      {"what follows the fifth value too", head + "3\nD\xE4mpfung\nNone\nNone\nNone\nNone\nNone\nwords\n", 0, 3, 1.5,
       12.4},
      {"one rule: nothing", head.substr(0, 17) + "4\nOther\n1\n", 0, 0, 1.5, 12.4},
      {"empty", "", 0, 0, 1.5, 12.4},
      {"an index that is none", head + "three\nD\xE4mpfung\n", 71, 0, 1.5, 12.4},
      {"an index beyond the table", head + "25\n\n", 71, 0, 1.5, 12.4},
      {"an undefined function", head + "5\n\n1\n", 71, 0, 1.5, 12.4},
      {"a blank too many", head + "3\nD\xE4mpfung \n2\n", 71, 0, 1.5, 12.4},
      {"a value that is none", head + "3\nD\xE4mpfung\n2.5\nx\n", 71, 3, 2.5, 12.4}};
  for (const auto& [why, text, result, selected, first, second] : rows) {
    PwfTable table = Table();
    table.WaveIdx = 0;
    EXPECT_EQ(PwfFile(table, Language::English).Parse(text), result) << why;
    EXPECT_EQ(Texts(table.WaveIdx, table[3].Params[0].Value, table[3].Params[1].Value), Texts(selected, first, second))
        << why;
  }
  PwfTable table = Table();
  EXPECT_EQ(PwfFile(table, Language::English).Read_Pwf("/nowhere/a.pwf"), 71);
}

} // namespace calder::pwf_file_test
