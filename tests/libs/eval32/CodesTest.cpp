#include "libs/eval32/eval32.h"
#include "libs/wavelb32/TestWave.h"

namespace calder::codes_test {

using std::numbers::pi;

std::vector<EvalProcessor> Processors() {
  std::vector<EvalProcessor> usable;
  for (const EvalProcessor p : {EvalProcessor::Avx512, EvalProcessor::Avx2, EvalProcessor::Plain})
    if (Evaluator::IsUsable(p)) usable.push_back(p);
  return usable;
}

struct PlainLoop {
  std::string_view text;
  double (*plain)(double x);
};

double Mod(double a, double b) {
  const double rest = std::fmod(a, b);
  return rest != 0 && (rest < 0) != (b < 0) ? rest + b : rest;
}

constexpr PlainLoop kPlainLoops[] = {
    {"x-20000.5", [](double x) { return x - 20000.5; }},
    {"30000*sin(2*pi*5*x/65537)*exp(-3*x/65537)",
     [](double x) { return 30000 * std::sin(2 * pi * 5 * x / 65537) * std::exp(-3 * x / 65537); }},
    {"((1+2*(x/65537)-3*(x/65537)^2+0.5*(x/65537)^3)-((1+-1)/2))*(65534/(1--1))",
     [](double x) {
       const double u = x / 65537;
       return (1 + 2 * u - 3 * (u * u) + 0.5 * (u * u * u)) * 32767;
     }},
    {"32767*(sin(x)+sin(2*x)/2+sin(3*x)/3+sin(4*x)/4)/2",
     [](double x) {
       return 32767 * (std::sin(x) + std::sin(2 * x) / 2 + std::sin(3 * x) / 3 + std::sin(4 * x) / 4) / 2;
     }},
    {"20000*min(max(abs(floor(x/1000)/30-1),0.25),x/50000)",
     [](double x) { return 20000 * std::min(std::max(std::abs(std::floor(x / 1000) / 30 - 1), 0.25), x / 50000); }},
    {"30000*sqrt(abs(x/65537-0.5))*log(1+9*x/65537)",
     [](double x) { return 30000 * std::sqrt(std::abs(x / 65537 - 0.5)) * std::log(1 + 9 * x / 65537); }},
    {"x%1000-500+mod(-x,37.5)", [](double x) { return Mod(x, 1000) - 500 + Mod(-x, 37.5); }},
    {"x<1000?x:x>=64000||x%2==0?-x/10:if(x!=5001,1e9,-1e9)",
     [](double x) {
       return x < 1000 ? x : x >= 64000 || std::fmod(x, 2) == 0 ? -x / 10 : x != 5001 ? 1e9 : -1e9;
     }},
    {"10000*(round(x/7)-int(x/3)*frac(x/9)+ceil(sign(x-9)/2))/1e4",
     [](double x) {
       return 10000 *
              (std::round(x / 7) - std::trunc(x / 3) * (x / 9 - std::trunc(x / 9)) +
               std::ceil(((x > 9) - (x < 9)) / 2.0)) /
              1e4;
     }},
    {"100*(atan2(x-1000,50)+hypot(x/100,3)+tan(x/1e5)+x^0.5+2^(x/1e4))",
     [](double x) {
       return 100 * (std::atan2(x - 1000, 50) + std::hypot(x / 100, 3) + std::tan(x / 1e5) + std::pow(x, 0.5) +
                     std::pow(2, x / 1e4));
     }},
    {"9000*max(min(abs(saw(x/70)),0.8),floor(3*saw(x/70))/4)",
     [](double x) {
       const double turns = x / 70 / (2 * pi);
       const double saw = 2 * (turns - std::floor(turns + 0.5));
       return 9000 * std::max(std::min(std::abs(saw), 0.8), std::floor(3 * saw) / 4);
     }},
    {"700*(sqrt(x)/8-sin(x))", [](double x) { return 700 * (std::sqrt(x) / 8 - std::sin(x)); }},
    {"sqrt(x-10)*100", [](double x) { return x < 10 ? 0 : std::sqrt(x - 10) * 100; }},
    {"3-x*x+(7-x)*2-(5-(x-3))", [](double x) { return 3 - x * x + (7 - x) * 2 - (5 - (x - 3)); }},
    {"exp(x)-exp(x)", [](double x) { return x > 709.7 ? 0 : 0 * x; }}};

// Codes of a plain loop; a value that stands on a half to the last places may go either way.
int CountWrong(const PlainLoop& row, std::span<const std::int16_t> codes, double start) {
  int wrong = 0;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const double value = row.plain(start + static_cast<double>(i));
    const double limited = std::clamp(value, -32767.0, 32767.0);
    const bool isHalf = value != std::rint(value * 2) / 2 && std::abs(std::abs(value - std::trunc(value)) - 0.5) < 1e-8;
    wrong += isHalf ? std::abs(codes[i] - limited) > 0.51 : codes[i] != static_cast<std::int16_t>(std::lrint(limited));
  }
  return wrong;
}

TEST(Codes, AreThoseOfAPlainLoopOnEveryProcessor) {
  const TestWave wave(65537);
  for (const EvalProcessor processor : Processors()) {
    Evaluator evaluator(1, processor);
    for (const PlainLoop& row : kPlainLoops) {
      ASSERT_EQ(evaluator.EvalArray1(0, 65537, wave.Handle(), row.text), 0) << row.text;
      EXPECT_EQ(CountWrong(row, wave.Codes(), 0), 0) << row.text << " " << static_cast<int>(processor);
    }
  }
}

// Every way to cut the work gives the same codes, with every processor that has fused multiplication.
TEST(Codes, DoNotDependOnThreadsBlocksAndProcessors) {
  constexpr std::int32_t points = 70001;
  std::vector<std::string> texts = {"20000*rnd(x)-10000*rnd(x,2)",
                                    "5000*(tri(x/50,30)+saw(x/70)+sqr(x/90)+pulse(x,3,10)+gauss(x/1e4,2)+sinc(x/99))",
                                    "1000*(asin(x/1e5)+acos(x/1e5)+atan(x)+sinh(x/1e5)+cosh(x/1e5)+tanh(x/1e5))",
                                    "600*(asinh(x)+acosh(x+1)+atanh(x/1e5)+exp2(x/1e5)+exp10(x/1e5)+log2(x+1))",
                                    "500*(log10(x+1)+cbrt(x)+x^1.5/(x+1)^1.25+chirp(x/1e4,1,9,7)+cos(x))"};
  for (const PlainLoop& row : kPlainLoops) texts.emplace_back(row.text);
  const TestWave whole(points);
  const TestWave parts(points);
  for (const EvalProcessor processor : Processors()) {
    if (processor == EvalProcessor::Plain) continue;
    Evaluator best(1, Processors().front());
    Evaluator two(2, processor, 1000);
    for (Evaluator* each : {&best, &two})
      EXPECT_EQ(each->EvalArray1(0, points, whole.Handle(), "1/(x-70000)"), EVAL_DIVIDE_BY_ZERO);
    for (const std::string& text : texts) {
      ASSERT_EQ(best.EvalArray1(0, points, whole.Handle(), text), 0) << text;
      ASSERT_EQ(two.EvalArray1(0, points, parts.Handle(), text), 0) << text;
      EXPECT_EQ(parts.Copy(), whole.Copy()) << text << " " << static_cast<int>(processor);
      const double cuts[] = {0, 1, 7, 519, 520, 4000, 44444, points};
      std::ranges::fill(parts.Codes(), std::int16_t{1});
      for (std::size_t i = 0; i + 1 < std::size(cuts); ++i)
        ASSERT_EQ(two.EvalArray1(cuts[i], cuts[i + 1] - cuts[i], parts.Handle(), text), 0);
      EXPECT_EQ(parts.Copy(), whole.Copy()) << text << ", cut";
    }
  }
}

TEST(Codes, AreRoundedToEvenAndLimitedAndNoNumberIsZero) {
  const TestWave wave(1);
  const std::pair<int, std::vector<std::string>> cases[] = {
      {0, {"0.5", "-0.5", "x+0.5", "sqrt(-1)", "sqrt(x-1)", "1e999-1e999", "0*ln(x)"}},
      {2, {"1.5", "2.5"}},
      {-2, {"-1.5"}},
      {32766, {"32766.5"}},
      {32767, {"32766.6", "1e999", "1e300*(x+1)"}},
      {-32767, {"-1e999", "-40000"}}};
  for (const EvalProcessor processor : Processors()) {
    Evaluator one(1, processor);
    for (const auto& [code, texts] : cases) {
      for (const std::string& text : texts) {
        ASSERT_EQ(one.EvalArray1(0, 1, wave.Handle(), text), 0) << text;
        EXPECT_EQ(wave.Codes()[0], code) << text;
      }
    }
  }
}

TEST(Codes, OnlyTheRangeIsWrittenAndXIsTheIndexInTheBuffer) {
  const TestWave wave(Codes(2000, 7));
  Evaluator evaluator;
  ASSERT_EQ(evaluator.EvalArray1(4.5, 1013, wave.Handle(), "x"), 0);
  Codes expected(2000, 7);
  for (std::int16_t i = 5; i < 1018; ++i) expected[static_cast<std::size_t>(i)] = i;
  EXPECT_EQ(wave.Copy(), expected);
}

// A constant on a page that is not mapped makes every masked load of it take hundreds of cycles.
TEST(Codes, TheMathLibrarysConstantsAreMapped) {
  const TestWave wave(100);
  Evaluator evaluator;
  ASSERT_EQ(evaluator.EvalArray1(0, 100, wave.Handle(), "sin(x)"), 0);
  std::ifstream maps("/proc/self/smaps");
  long size = 0;
  long mapped = 0;
  std::string before; // the permissions of the part in front
  bool isConstants = false;
  for (std::string line; std::getline(maps, line);) {
    std::istringstream words(line);
    std::string key;
    std::string value;
    words >> key >> value;
    if (key.back() != ':') {
      isConstants = line.find("libsleef") != std::string::npos && value == "r--p" && before == "r-xp";
      before = value;
    }
    if (isConstants && key == "Size:") size = std::stol(value);
    if (isConstants && key == "Rss:") mapped = std::stol(value);
  }
  if (size == 0) GTEST_SKIP() << "the library is not a file of its own here";
  EXPECT_EQ(mapped, size);
}

} // namespace calder::codes_test
