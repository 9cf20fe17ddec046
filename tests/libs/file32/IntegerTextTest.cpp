#include "libs/file32/IntegerText.h"
#include "Testing.h"
#include "files/ParseErrorTexts.h"

#include <gmock/gmock.h>

#include <charconv>

namespace calder::integer_text_test {

std::string Format(const std::vector<std::int16_t>& codes, LineEnd end) {
  std::string text(codes.size() * CODE_LINE_BYTES + 1, '!');
  text.resize(FormatCodes(codes, end, text.data()));
  return text;
}

// The codes of the text, or the line and the reason of the fault.
std::string Parse(std::string_view text, std::size_t most = 100) {
  std::vector<std::int16_t> codes(most, 99);
  std::size_t count = 0;
  TextFault fault;
  if (!ParseCodes(text, codes, count, fault))
    return std::to_string(fault.line) + ": " + ReasonText(fault.reason, Language::English);
  std::string list;
  for (std::size_t i = 0; i < count; ++i) list += (i == 0 ? "" : " ") + std::to_string(codes[i]);
  return list;
}

TEST(IntegerText, WritesAndReadsEveryCode) {
  std::vector<std::int16_t> codes(65536);
  std::iota(codes.begin(), codes.end(), std::int16_t{-32768});
  for (const LineEnd end : {LineEnd::CrLf, LineEnd::Lf}) {
    std::string expected;
    for (const std::int16_t code : codes) expected += std::to_string(code) + (end == LineEnd::CrLf ? "\r\n" : "\n");
    const std::string text = Format(codes, end);
    ASSERT_EQ(text, expected);

    std::vector<std::int16_t> back(codes.size());
    std::size_t count = 0;
    TextFault fault;
    ASSERT_TRUE(ParseCodes(text, back, count, fault)) << fault.line << ReasonText(fault.reason, Language::English);
    EXPECT_TRUE(count == codes.size() && back == codes);
  }
}

TEST(IntegerText, ReadsWhatOtherProgramsWrite) {
  const std::tuple<std::string_view, const char*> kRows[] = {
      {"1\r\n-2\r\n3\r\n", "1 -2 3"},
      {"1\n-2\n3", "1 -2 3"},
      {"1\r-2\r3\r", "1 -2 3"},
      {"11111\r22222\r-31111\r-31112\r1", "11111 22222 -31111 -31112 1"},
      {"1\r\r\n2\n\r3\n\n\n4\r\n\r\n", "1 2 3 4"},
      {"  1\t\r\n\t-2 \r\n   \r\n\t\r\n3 ", "1 -2 3"},
      {"+5\r\n+0\r\n-0\r\n+32767\r\n", "5 0 0 32767"},
      {"00012\r\n000000000000000000000007\r\n-000000000032768\r\n", "12 7 -32768"},
      {"\xEF\xBB\xBF"
       "12\r\n",
       "12"},
      {"; made by hand\r\n# 524288 points\n'x\n\n  # indented\n7\n", "7"},
      {"12.0\r\n1e3\r\n-3.2768E+4\r\n5.\r\n0.5e1\r\n1.2e+01\n", "12 1000 -32768 5 5 12"},
      {"0", "0"},
      {"-32768", "-32768"}};
  for (const auto& [text, result] : kRows) EXPECT_EQ(Parse(text), result) << text;
}

TEST(IntegerText, RefusesWithLineAndReason) {
  const std::tuple<std::string_view, const char*> kRows[] = {
      {"", "0: no number in the file"},
      {"\xEF\xBB\xBF", "0: no number in the file"},
      {"\r\n \r\n# only a comment\r\n", "0: no number in the file"},
      {"1\r\n2\r\n32768\r\n", "3: outside -32768 to 32767"},
      {"1\n-32769\n", "2: outside -32768 to 32767"},
      {"99999\r\n", "1: outside -32768 to 32767"},
      {"1\r2\r-123456789012345678901234567890\r", "3: outside -32768 to 32767"},
      {"1\r\n\r\n\r1.5\n", "4: not a whole number"},
      {"1e-400\n", "0"}, // too small for a number: zero
      {"1e400\n", "1: not a number"},
      {"1\r\n# late comment\r\n", "2: not a number"}};
  for (const auto& [text, result] : kRows) EXPECT_EQ(Parse(text), result) << text;
  for (const std::string_view text :
       {std::string_view("Code\r\n1\r\n"), std::string_view("1,2\r\n"), std::string_view("1 2\r\n"),
        std::string_view("--1\n"), std::string_view("+-1\n"), std::string_view("++1\n"), std::string_view("- 1\n"),
        std::string_view("-\r\n"), std::string_view("-\r\n-\r\n-\r\n-\r\n"), std::string_view("0x10\n"),
        std::string_view("nan\n"), std::string_view("-inf\n"), std::string_view("12345a\r\n"),
        std::string_view("\xEF\xBC\x91\n"), std::string_view("1\0\n", 3), std::string_view("12345\0\r\n", 8)})
    EXPECT_EQ(Parse(text), "1: not a number") << text;
}

TEST(IntegerText, StopsAtTheMostPoints) {
  EXPECT_EQ(Parse("1\n2\n3\n", 2), "1 2");
  EXPECT_EQ(Parse("1\n2\nnot looked at\n", 2), "1 2");
  EXPECT_EQ(Parse("1\n", 0), "");
}

// Whatever stands between plain lines, reading in blocks and reading line by line agree.
TEST(IntegerText, BlocksAndSingleLinesAgree) {
  const std::string_view kAlphabet = "--+0123456789012345678901234567890123456789\r\n\r\n\r\n .e";
  const auto repeated = [](std::string_view line, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += line;
    return text;
  };
  const std::string before = repeated("-123\r\n", 5);
  const std::string after = "\n" + repeated("7\r\n", 40);
  std::uint32_t random = 1;
  int accepted = 0;
  for (int round = 0; round < 50'000; ++round) {
    std::string text = before;
    for (int i = 0; i < 12; ++i) {
      random = random * 1664525 + 1013904223;
      text += kAlphabet[(random >> 16) % kAlphabet.size()];
    }
    text += after;
    const std::string found = Parse(text);
    // A blank before each line keeps it from the blocks.
    std::string single;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const bool lineStart = i == 0 || text[i - 1] == '\n' || (text[i - 1] == '\r' && text[i] != '\n');
      if (lineStart) single += ' ';
      single += text[i];
    }
    ASSERT_EQ(found, Parse(single)) << testing::PrintToString(text);
    accepted += found.find(':') == std::string::npos ? 1 : 0;
  }
  EXPECT_GT(accepted, 1000);
}

TEST(IntegerText, FaultsInsideBlocksHaveTheirLine) {
  std::string text;
  for (int i = 0; i < 3000; ++i) text += std::to_string(i * 7 % 30000) + "\r\n";
  const auto withLine = [&text](int line, const std::string& content) {
    std::size_t at = 0;
    for (int i = 1; i < line; ++i) at = text.find('\n', at) + 1;
    return text.substr(0, at) + content + text.substr(text.find('\r', at));
  };
  for (const int line : {1, 2, 9, 511, 512, 513, 1024, 2990, 3000}) {
    const std::string number = std::to_string(line);
    for (const char* outside : {"32768", "-32769", "123456", "1234567890123"})
      EXPECT_EQ(Parse(withLine(line, outside), 3000), number + ": outside -32768 to 32767");
    for (const char* wrong : {"-", "1-2", "1\t2"})
      EXPECT_EQ(Parse(withLine(line, wrong), 3000), number + ": not a number");
    for (const char* odd : {"", " 00123 ", "\r\n\r\n5\r\n", "1e2"})
      EXPECT_EQ(Parse(withLine(line, odd), 4000).find(':'), std::string::npos) << line << odd;
  }
}

} // namespace calder::integer_text_test
