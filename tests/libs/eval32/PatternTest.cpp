#include "libs/eval32/DocTable.h"
#include "libs/eval32/eval32.h"
#include "libs/wavelb32/TestWave.h"

namespace calder::pattern_test {

TEST(Pattern, TheDocumentsExamplesHold) {
  const auto rows = DocTable("patterns.md", "pattern");
  ASSERT_GE(rows.size(), 10U);
  Evaluator evaluator;
  for (const auto& row : rows) {
    const TestWave wave(Codes(16, 0));
    EXPECT_EQ(evaluator.DigitalPattern(row[0], 4, wave.Handle(), 8), 0) << row[0];
    Codes expected(16, 0);
    std::istringstream numbers(row[1]);
    for (std::size_t i = 4; i < 12; ++i) numbers >> expected[i];
    EXPECT_EQ(wave.Copy(), expected) << row[0];
  }
}

TEST(Pattern, OtherBitsAndPointsStay) {
  const Codes before = {0x1234, -1, 0x0F0F, -32768, 7};
  Evaluator evaluator;
  const std::tuple<std::string_view, std::int32_t, std::int32_t, Codes> rows[] = {
      {"Mask $F 0L", 0, 5, {0x1230, -16, 0x0F00, -32768, 0}},
      {"Mask $FF00 0H", 1, 2, {0x1234, -1, -241, -32768, 7}},
      {"0N", 0, 5, {static_cast<std::int16_t>(0xEDCB), 0, static_cast<std::int16_t>(0xF0F0), 32767, -8}},
      {"Mask $0 0H", 0, 5, before},
      {"100H", 2, 2, {0x1234, -1, -1, -1, 7}},
      {"", 0, 5, before},
      {" 'only a comment", 0, 5, before},
      {"0H", 5, 0, before},
      {"0X", 0, 5, before}};
  for (const auto& [text, start, count, after] : rows) {
    const TestWave wave(before);
    EXPECT_EQ(evaluator.DigitalPattern(text, start, wave.Handle(), count), 0) << text;
    EXPECT_EQ(wave.Copy(), after) << text;
  }
}

// The fault stands at the mark @.
TEST(Pattern, EachFaultHasItsNumberAndItsPlaceAndChangesNothing) {
  const std::pair<std::int16_t, std::vector<std::string>> rows[] = {
      {110, {std::string(32767, ' ') + '@' + std::string(7233, ' ')}},
      {112, {std::string(32, '[') + "@[H" + std::string(33, ']')}},
      {111, {"@[1H", "1H@]", "@[[1H]2"}},
      {113, {"@524289H", "[H]@99999999999", "1H@{-1}L", "@{1e9}L", "1H[L]@{sqrt(-1)}"}},
      {114, {"@{1L", "1@}L", "@{{1}}L"}},
      {115, {"{1+@}L", "1H{@}L", "1H@{1/(x-1)}L", "{@foo}L"}},
      {116, {"1H @Mask", "@Mask 3", "@Mask $", "@Mask $12345"}},
      {117, {"@3", "1H @3]", "@3[H]", "@{1}", "@3 Mask $1"}},
      {118, {"1H @Q", "@$", "@$12345", "@-1L", "1H @\x80"}}};
  Evaluator evaluator;
  const TestWave wave(Codes(100, 21));
  for (const auto& [code, texts] : rows) {
    for (std::string text : texts) {
      const std::size_t position = text.find('@');
      text.erase(position, 1);
      EXPECT_EQ(evaluator.DigitalPattern(text, 0, wave.Handle(), 100), code) << text;
      EXPECT_EQ(evaluator.LastFault().position, position) << text;
      const auto [japanese, english] = EvalReasonText(evaluator.LastFault());
      EXPECT_FALSE(japanese.empty() || english.empty()) << text;
    }
  }
  for (const auto& [start, count] : {std::pair{-1, 5}, {0, 101}, {101, 0}, {100, 1}, {0, -1}, {1, INT32_MAX}})
    EXPECT_EQ(evaluator.DigitalPattern("0H", start, wave.Handle(), count), 118) << start << " " << count;
  EXPECT_EQ(evaluator.DigitalPattern("0H", 0, wave.Handle() + 1, 1), 118);
  EXPECT_EQ(wave.Copy(), Codes(100, 21));
}

TEST(Pattern, GroupsThatGoNowhereAndEndlessOnesEnd) {
  const TestWave wave(W_MAX_POINTS);
  Evaluator evaluator;
  for (const std::string_view text : {"[]0", "[[[]524288]524288]524288 0H", "[Mask $1]0 Mask $FFFF 0H", "[{0}L]0 0H",
                                      "[[1X]0]0", "[[1X]524288]524288"})
    EXPECT_EQ(evaluator.DigitalPattern(text, 0, wave.Handle(), W_MAX_POINTS), 0) << text;
  EXPECT_EQ(evaluator.DigitalPattern("[{x*0+1}H]0", 0, wave.Handle(), W_MAX_POINTS), 0) << "an expression a point";
  EXPECT_EQ(wave.Codes().back(), -1);
  std::string endless = "[1H";
  for (int i = 0; i < 5000; ++i) endless += "{0}L";
  EXPECT_EQ(evaluator.DigitalPattern(endless + "]0", 0, wave.Handle(), W_MAX_POINTS), PATTERN_TOO_DEEP);
}

// Repeats are worked out at once; a text that spells them out is played item by item.
TEST(Pattern, AGroupIsItsTextOverAndOver) {
  Evaluator evaluator;
  constexpr int times = 100;
  const std::string texts[] = {"1H 1L",
                               "Mask $FF 3N 2$1234",
                               "1H Mask $F0 2L Mask $F 1N",
                               "[1H [2L 1N]90 Mask $3 1X]2",
                               "[Mask $1 1H]70 [Mask $2 1N 1X]66 Mask $FFFF 1L",
                               "8H 7L 9N 8$5555",
                               "3000N 1H",
                               "[[[1N]80 2H]80 Mask $F00 3L]3"};
  for (const std::string& text : texts) {
    std::string spelled;
    for (int i = 0; i < times; ++i) spelled += text + " ";
    const TestWave repeated(Noise(100000));
    const TestWave expected(Noise(100000));
    EXPECT_EQ(evaluator.DigitalPattern("[" + text + "]" + std::to_string(times), 3, repeated.Handle(), 99990), 0);
    EXPECT_EQ(evaluator.DigitalPattern(spelled, 3, expected.Handle(), 99990), 0);
    EXPECT_EQ(repeated.Copy(), expected.Copy()) << text;
  }
}

TEST(Pattern, WhatTakesLongerThanAFrameIsRefusedThere) {
  Evaluator evaluator;
  const TestWave wave(Codes(100000, 5));
  using Effort = Evaluator::PatternEffort;
  for (const auto& [text, code] : {std::pair{"[{x*0+1}H]0", PATTERN_TOO_DEEP}, {"[1H 1L]0", EVAL_SUCCESS}})
    EXPECT_EQ(evaluator.DigitalPattern(text, 0, wave.Handle(), 100000, Effort::Frame), code) << text;
  EXPECT_EQ(wave.Codes()[1], 0);
}

TEST(Pattern, ThePartsThatAreOfferedAreSound) {
  Evaluator evaluator;
  const TestWave wave(Codes(100, 0));
  for (const EvalEntry& part : PatternEntries())
    EXPECT_EQ(evaluator.DigitalPattern(part.name, 0, wave.Handle(), 100), 0) << part.name;
}

TEST(Pattern, BracesSeeTheConstantsAndTheirOwn) {
  Evaluator evaluator;
  double unused = 0;
  ASSERT_EQ(evaluator.EvalOneL("[n=2]0", 0, unused), 0);
  const TestWave wave(Codes(6, 0));
  EXPECT_EQ(evaluator.DigitalPattern("{n}H{[m=1]m}L{n+0.4}H", 0, wave.Handle(), 6), 0);
  EXPECT_EQ(wave.Copy(), (Codes{-1, -1, 0, -1, -1, 0}));
}

} // namespace calder::pattern_test
