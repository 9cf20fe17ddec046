#include "libs/file32/RealText.h"
#include "Testing.h"
#include "files/ParseErrorTexts.h"

namespace calder::real_text_test {

// The codes of the text, or the line and the reason of the fault.
std::string Load(std::string_view text, std::size_t most = 100) {
  RealValues reals;
  TextFault fault;
  std::vector<std::int16_t> codes(most);
  if (!ParseReals(text, most, reals, fault) || !ScaleReals(reals, codes, fault)) {
    return std::to_string(fault.line) + ": " + ReasonText(fault.reason, Language::English);
  }
  std::string list;
  for (std::size_t i = 0; i < reals.values.size(); ++i) list += (i == 0 ? "" : " ") + std::to_string(codes[i]);
  return list;
}

TEST(RealText, ScalesToTheLargestMagnitude) {
  const std::tuple<std::string_view, const char*> kRows[] = {
      {"4\r\n-1\r\n1\r\n", "32767 -8192 8192"},
      {"-1\r\n0.5\r\n", "-32767 16384"}, // 16383.5: halves to even
      {"-1\n-0.25\n", "-32767 -8192"},
      {"2e300\n-1e300\n1e-300", "32767 -16384 0"},
      {"1.7976931348623157e308\n0\n", "32767 0"},
      {"1.976e-319\n-1.976e-319\n", "32767 -32767"}, // the scale has one digit left
      {" +.5\t\r\n\t-5.e-1 \r0.25\n\n \r\n", "32767 -32767 16384"},
      {"\xEF\xBB\xBF"
       "1\n",
       "32767"},
      {"1\n1e-400\n", "32767 0"},
      {"65534\n32767\n3\n1\n", "32767 16384 2 0"}, // 16383.5, 1.5, 0.5
  };
  for (const auto& [text, result] : kRows) EXPECT_EQ(Load(text), result) << text;
}

TEST(RealText, TheValueAfterTheLastCountsForTheScale) {
  EXPECT_EQ(Load("1\n-1\n2\n1000\nnot looked at\n", 2), "16384 -16384");
  EXPECT_EQ(Load("1\n-1\n-2\n", 2), "16384 -16384");
  EXPECT_EQ(Load("1\n-1\n \n", 2), "32767 -32767");
  EXPECT_EQ(Load("1\n-1\nx\n", 2), "3: not a number");
}

TEST(RealText, RefusesWithLineAndReason) {
  using Row = std::tuple<std::string_view, const char*>;
  for (const auto& [text, result] :
       {Row{"", "0: no number in the file"}, Row{"\r\n\r\n", "0: no number in the file"},
        Row{"0\r\n-0.0\r\n0e9\r\n", "0: every value is zero, or too small to be scaled"},
        Row{"5e-324\r\n", "0: every value is zero, or too small to be scaled"},
        Row{"1\r\n\r\n2\r\n", "2: an empty line between numbers"}, Row{"1\r\n1,5\r\n", "2: not a number"},
        Row{"1\r\rnan", "2: an empty line between numbers"}, Row{"1\rnan", "2: not a number"},
        Row{"1\n2\n1e309\n", "3: not a number"}, Row{"1\n2\n-1e999999999999999999999\n", "3: not a number"}})
    EXPECT_EQ(Load(text), result) << text;
  for (const char* text : {"1 V\n", "# Volts\n1\n", "inf\n", "-infinity\n", "1e\n", "0x1p3\n", ".\n", "1d3\n"})
    EXPECT_EQ(Load(text), "1: not a number") << text;
}

TEST(RealText, TooSmallIsZeroAndTooLargeIsRefused) {
  const std::string zeros(400, '0');
  for (const std::string& tiny :
       std::vector<std::string>{std::string("1e-400"), "0." + zeros + "1", "-1e-99999999999999999999",
                                "0." + zeros + "1e30", "1" + zeros + "e-800", ".0001e-322"})
    EXPECT_EQ(Load("1\n" + tiny), "32767 0") << tiny;
  for (const std::string& huge :
       {std::string("1e400"), "1" + zeros, "0." + zeros + "1e900", "1" + zeros + "e-20", "1" + zeros + ".5"})
    EXPECT_EQ(Load("1\n" + huge), "2: not a number") << huge;
  EXPECT_EQ(Load("1" + zeros + "e-400"), "32767");
}

} // namespace calder::real_text_test
