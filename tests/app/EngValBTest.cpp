#include "app/EngValB.h"
#include "Testing.h"

namespace calder::eng_val_btest {

TEST(EngValB, FixedTextCutsFifteenDigitsWithoutACarry) {
  using Row = std::tuple<double, int, const char*>;
  for (const auto& [value, width, theText] :
       {Row{1000, 8, "1000.000"}, Row{-32767, 8, "-32767.0"}, Row{0, 11, "0.000000000"}, Row{12345678, 8, "12345678"},
        Row{1048576, 8, "1048576."}, Row{12.345, 12, "12.345000000"}, Row{0.1 + 0.2, 22, "0.30000000000000000000"},
        Row{99.99999999, 5, "99.99"}, Row{-0.25, 6, "-0.250"}, Row{1.0 / 3, 20, "0.333333333333333000"},
        Row{123456789012345678.0, 30, "123456789012346000.00000000000"}, Row{std::nan(""), 5, "0.000"},
        Row{5, 0, ""}}) {
    const std::string text = FormatFixed(value, width);
    EXPECT_EQ(text, std::string(theText).substr(0, static_cast<std::size_t>(width))) << value;
  }
}

TEST(EngValB, EngineeringTextPrefersThePrefixAndNeverCarriesIntoTheNextOne) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  using Row = std::tuple<double, int, const char*>;
  for (const auto& [value, width, text] :
       {Row{0, 7, "0.000000"}, Row{0, 1, "0"}, Row{0.005, 7, "5.00000m"}, Row{12345, 7, "12.3450k"},
        Row{-0.5, 7, "-500.00m"}, Row{1000, 7, "1.00000k"}, Row{999.99999, 7, "999.9999"}, Row{1e-18, 7, "1.00E-18"},
        Row{1.0000001e-18, 7, "1.00000a"}, Row{1e12, 7, "1.00E+12"}, Row{999999999999.0, 7, "999.999G"},
        Row{-2.5e-20, 7, "-2.50E-20"}, Row{9.999e15, 7, "1.00E+16"}, Row{1.005e12, 7, "1.00E+12"},
        Row{1.015e12, 7, "1.02E+12"}, Row{999999999999.99999, 7, "1.00E+12"}, Row{0.02354621887, 10, "23.5462188m"},
        Row{1.5e-300, 7, "1.50E-300"}, Row{kInfinity, 7, "1.80E+308"}})
    EXPECT_EQ(FormatEng(value, width), text) << value;
}

TEST(EngValB, MasksDecideTheDecimals) {
  using Row = std::tuple<double, const char*, const char*>;
  for (const auto& [value, mask, text] :
       {Row{12345.678, ".###", "12.346k"}, Row{5, ".###", "5"}, Row{0, ".###", "0.000"}, Row{0, ".######", "0.000000"},
        Row{0, "#", "0"}, Row{999.9996, ".###", "1000"}, Row{0.25, ".000", "250.000m"}, Row{-1, ".000", "-1.000"},
        Row{1e12, ".###", "1.00E+12"}, Row{1e-6, ".##############", "1u"}, Row{1.0005, ".###", "1"},
        Row{1.0015, ".###", "1.002"}})
    EXPECT_EQ(FormatEngMask(value, mask), text) << value << " " << mask;
  using Plain = std::tuple<double, const char*, const char*>;
  for (const auto& [value, mask, text] :
       {Plain{1.2341, "0.###", "1.234"}, Plain{0.5, ".0###", ".5"}, Plain{0.5, "0.0", "0.5"}, Plain{12.4, "0", "12"},
        Plain{2.5, "0", "2"}, Plain{3.5, "0", "4"}, Plain{-0.004, "0.00", "0.00"}, Plain{7, "000", "007"},
        Plain{99.995, "0.00", "100.00"}, Plain{1.5, "0.000", "1.500"}, Plain{0.00000001, ".0#######", ".00000001"}})
    EXPECT_EQ(FormatMask(value, mask), text) << value << " " << mask;
}

TEST(EngValB, ParserTakesTheLeadingNumberAndTheLastLetter) {
  constexpr double kMost = std::numeric_limits<double>::max();
  using Row = std::tuple<const char*, double>;
  for (const auto& [text, value] :
       {Row{"1.5k", 1500}, Row{"10 k", 10000}, Row{"5K", 5}, Row{"1.5m", 0.0015}, Row{"m", 0}, Row{"2T", 2e12},
        Row{"3e2k", 300000}, Row{"1e300T", kMost}, Row{"1  u  ", 1e-6}, Row{"abc", 0}, Row{"", 0}})
    EXPECT_EQ(ParseEng(text), value) << '"' << text << '"';
  for (const auto& [text, value] :
       {Row{"1D-2", 0.01}, Row{"1 2 3", 123}, Row{"\t4\n5", 45}, Row{"1.2.3", 1.2}, Row{".5", 0.5}, Row{"1e", 1},
        Row{"1e3", 1000}, Row{"--1", 0}, Row{"1e400", kMost}, Row{"-1e400", -kMost}, Row{"1e-400", 0}, Row{"12,5", 12}})
    EXPECT_EQ(ParseEng(text), value) << '"' << text << '"';
  EXPECT_EQ(ParseEng("0." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(ParseEng(std::string(400, '1') + "e-5"), kMost);
}

TEST(EngValB, GeneralFormHasFifteenDigits) {
  EXPECT_EQ(Texts(NumberText(0.25), NumberText(1e-5), NumberText(1e15), NumberText(-0.0)), "0.25 1E-05 1E+15 0");
  EXPECT_EQ(NumberText(1.0 / 3), "0.333333333333333");
}

} // namespace calder::eng_val_btest
