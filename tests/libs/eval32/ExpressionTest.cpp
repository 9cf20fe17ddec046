#include "Testing.h"
#include "libs/eval32/eval32.h"

namespace calder::expression_test {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
using std::numbers::pi;

double Value(Evaluator& evaluator, std::string_view text, std::int32_t x = 0) {
  double result = -12345;
  EXPECT_EQ(evaluator.EvalOneL(text, x, result), 0) << text << ": " << EvalReasonText(evaluator.LastFault()).english;
  return result;
}

struct Row {
  std::string_view text;
  double value;
  std::int32_t x = 0;
};

void Expect(const Row& row) {
  Evaluator evaluator;
  const double value = Value(evaluator, row.text, row.x);
  if (std::isnan(row.value))
    EXPECT_TRUE(std::isnan(value)) << row.text << " " << value;
  else
    EXPECT_DOUBLE_EQ(value, row.value) << row.text;
}

// Each "expression => its value".
void ExpectAll(std::initializer_list<std::string> rows) {
  for (const std::string& row : rows) {
    const std::size_t arrow = row.find(" => ");
    Expect({std::string_view(row).substr(0, arrow), std::stod(row.substr(arrow + 4))});
  }
}

TEST(Expression, OperatorsBindAsUsual) {
  ExpectAll({"1+2*3 => 7",      "(1+2)*3 => 9",  "2*3^2 => 18",    "-2^2 => -4",     "(-2)^2 => 4",    "2^3^2 => 512",
             "2^-1 => 0.5",     "2^-2^0 => 0.5", "-2^-2 => -0.25", "1--1 => 2",      "1+-1 => 0",      "--+-3 => -3",
             "2*-3 => -6",      "8/4/2 => 1",    "7-2-1 => 4",     "7%4*2 => 6",     "-7%4 => 1",      "7%-4 => -1",
             "5.5%2 => 1.5",    "1<2 => 1",      "2<=1 => 0",      "1+1==2 => 1",    "1=1 => 1",       "1<>1 => 0",
             "1!=2 => 1",       "2>1&&0 => 0",   "2>1||0 => 1",    "!0 => 1",        "!3==0 => 1",     "!-2 => 0",
             "1||0&&0 => 1",    "1<2==1 => 1",   "1?2:3 => 2",     "0?2:0?4:5 => 5", "1?0?6:7:8 => 7", "1+1?3:4 => 3",
             " 1\t+\r\n2  => 3"});
  for (const Row& row : {Row{"x", 5, 5}, Row{"x*x-1", 24, 5}, Row{"-x^2", -9, 3}, Row{"x^3", -27, -3},
                         Row{"x^4", 81, -3}, Row{"3*x^0", 3, 0}, Row{"x>2?1:-1", -1, 2}, Row{"X+PI*0", 4, 4},
                         Row{"\xE3\x80\x80"
                             "1\xE3\x80\x80+\xE3\x80\x80"
                             "1",
                             2}})
    Expect(row);
}

TEST(Expression, NumbersAreReadAsWritten) {
  ExpectAll({"12 => 12", "1.5 => 1.5", ".5 => 0.5", "5. => 5", "1e3 => 1000", "1E+3 => 1000", "1e-05 => 1e-5",
             "2.5e-1 => 0.25", "$ff => 255", "$7FFF => 32767", "$1e-5 => 25", "1e400 => inf", "1e-400 => 0",
             "-1e99999999999999999999 => -inf", "1e-99999999999999999999 => 0", "000000.0e999 => 0", "0.1 => 0.1"});
  for (const Row& row : {Row{"pi", pi}, Row{"e", std::numbers::e}}) Expect(row);
  Evaluator evaluator;
  EXPECT_EQ(Value(evaluator, "1" + std::string(500, '0')), kInfinity);
  EXPECT_EQ(Value(evaluator, "0." + std::string(500, '0') + "1"), 0);
  EXPECT_DOUBLE_EQ(Value(evaluator, "0." + std::string(500, '0') + "1e501"), 1);
}

TEST(Expression, FunctionsGiveWhatTheirNamesSay) {
  ExpectAll({"abs(-3) => 3", "SIGN(-2) => -1", "sgn(0) => 0", "sign(1e-300) => 1", "int(-1.5) => -1", "int(1.9) => 1",
             "frac(-1.25) => -0.25", "floor(-1.5) => -2", "ceil(-1.5) => -1", "ceil(1.2) => 2", "round(0.5) => 1",
             "round(-2.5) => -3", "round(0.49999999999999994) => 0", "round(1.4) => 1"});
  ExpectAll({"mod(-1,3) => 2", "mod(7,2.5) => 2", "min(3,1,2) => 1", "max(3,1,2) => 3", "min(4) => 4"});
  ExpectAll({"clip(5,-1,1) => 1", "clip(-5,-1,1) => -1", "pow(2,10) => 1024", "10^3 => 1000", "10^15 => 1e15",
             "3^5 => 243", "7^11 => 1977326743"});
  ExpectAll(
      {"hypot(3,4) => 5", "cbrt(27) => 3", "cbrt(-8) => -2", "exp(0) => 1", "exp2(10) => 1024", "exp10(3) => 1000"});
  ExpectAll({"ln(1) => 0", "log(e) => 1", "log10(1000) => 3", "log2(8) => 3", "log2(1024) => 10", "deg(pi) => 180"});
  ExpectAll({"if(2>1,10,20) => 10", "if(0,10,20) => 20", "step(0) => 1", "step(-1e-9) => 0", "ramp(0.25) => 0.25",
             "ramp(2) => 1", "ramp(-1) => 0", "rect(-0.5) => 1", "rect(0.5) => 0", "rect(0.9,2) => 1"});
  ExpectAll({"pulse(0,2) => 1", "pulse(2,2) => 0", "pulse(-1,2) => 0", "pulse(11,2,10) => 1", "pulse(-9,2,10) => 1",
             "pulse(12,2,10) => 0"});
  ExpectAll({"sinc(0) => 1", "gauss(0) => 1", "gauss(2,2) => 0.60653065971263342", "chirp(0.25,1,1,9) => 1"});
  ExpectAll({"sqrt(-1) => nan", "ln(-1) => nan", "ln(0) => -inf", "0^-1 => inf", "asin(2) => nan", "exp(1e9) => inf",
             "exp(-1e9) => 0", "sinh(1e9) => inf", "tanh(-1e9) => -1", "acosh(1) => 0", "atanh(1) => inf",
             "hypot(1e300,1e300) => 1.4142135623730951e300"});
  for (const Row& row : {Row{"sqrt(2)", std::numbers::sqrt2}, Row{"atan2(1,-1)", 0.75 * pi}, Row{"rad(180)", pi},
                         Row{"sinc(pi/2)", 2 / pi}})
    Expect(row);
}

TEST(Expression, PeriodicShapesStandWhereSinStands) {
  constexpr Row rows[] = {{"saw(0)", 0},          {"saw(pi/2)", 0.5},      {"saw(pi)", -1},     {"saw(-pi/2)", -0.5},
                          {"saw(3*pi)", -1},      {"tri(pi/2)", 1},        {"tri(-pi/2)", -1},  {"tri(pi/4)", 0.5},
                          {"tri(5*pi/4)", -0.5},  {"tri(pi/2,50)", 1},     {"tri(pi/4,25)", 1}, {"tri(pi/4,0)", 0.75},
                          {"tri(pi/2,100)", 0.5}, {"tri(pi/4,250)", 0.25}, {"sqr(0)", 1},       {"sqr(pi)", -1},
                          {"sqr(2*pi)", 1},       {"sqr(3*pi)", -1},       {"sqr(1.9*pi)", -1}, {"sqr(0.5*pi,25)", -1},
                          {"sqr(0.49*pi,25)", 1}, {"sqr(1,0)", -1},        {"sqr(1,100)", 1}};
  Evaluator evaluator;
  for (const Row& row : rows) EXPECT_NEAR(Value(evaluator, row.text), row.value, 1e-14) << row.text;
  // In single points too: 2 pi is no binary fraction, and jumps must not fall on the wrong side for that.
  for (std::int32_t x = 0; x < 1000; ++x) {
    EXPECT_EQ(Value(evaluator, "sqr(2*pi*7*x/100,30)", x), x * 7 % 100 < 30 ? 1 : -1) << x;
    EXPECT_NEAR(Value(evaluator, "saw(2*pi*x/10)", x), ((x + 5) % 10 - 5) / 5.0, 1e-12) << x;
  }
}

TEST(Expression, ConstantsAreKeptAndTheTextsOwnWin) {
  Evaluator evaluator;
  EXPECT_EQ(Value(evaluator, "[a=1;b=2*a;]a+b"), 3);
  EXPECT_EQ(Value(evaluator, "a+10*B"), 21);
  EXPECT_EQ(Value(evaluator, "[ a = 1e-05 ; ; c=a==1e-05 ]a*c"), 1e-5) << "and the kept one is replaced";
  EXPECT_EQ(Value(evaluator, "a"), 1e-5);
  EXPECT_EQ(Value(evaluator, "[]b"), 2);
  EXPECT_EQ(Value(evaluator, "[   ]7"), 7);
  EXPECT_EQ(Value(evaluator, "[e=3;step=4;\xE5\x91\xA8\xE6\x9C\x9F=5]e+step+\xE5\x91\xA8\xE6\x9C\x9F*step(1)"), 12);
  EXPECT_EQ(Value(evaluator, "[a=1;a=a+1]a"), 2);
  double result = 0;
  EXPECT_EQ(evaluator.EvalOneL("[q=1;w=]0", 0, result), EVAL_BAD_CONSTANTS);
  EXPECT_EQ(evaluator.EvalOneL("q", 0, result), EVAL_UNKNOWN_NAME) << "a faulty block leaves nothing behind";
  EXPECT_EQ(evaluator.EvalOneL("[q=1]0*", 0, result), EVAL_SYNTAX);
  EXPECT_EQ(Value(evaluator, "q"), 1) << "a good block counts though the expression is faulty";
  evaluator.ClearConstant();
  EXPECT_EQ(evaluator.EvalOneL("q", 0, result), EVAL_UNKNOWN_NAME);
  EXPECT_EQ(Value(evaluator, "e"), std::numbers::e);
  Evaluator other;
  EXPECT_EQ(other.EvalOneL("a", 0, result), EVAL_UNKNOWN_NAME);
}

TEST(Expression, RandomDependsOnSeedPointAndPlaceOnly) {
  Evaluator evaluator;
  const double first = Value(evaluator, "rnd(x)", 7);
  EXPECT_EQ(Value(evaluator, "RND(X)", 7), first);
  EXPECT_EQ(Value(evaluator, "0+rnd( x , 1)", 7), first);
  EXPECT_EQ(Value(evaluator, "rnd()", 7), first);
  EXPECT_EQ(Value(evaluator, "rnd(x,8)", 7), 8 * first);
  EXPECT_EQ(Value(evaluator, "rnd(8)", 7), 8 * first) << "a constant alone is the limit";
  EXPECT_NE(Value(evaluator, "rnd(x)", 8), first);
  EXPECT_NE(Value(evaluator, "rnd(x)-rnd(x)", 7), 0) << "two of them are two";
  evaluator.EvalInitRandom(1);
  EXPECT_NE(Value(evaluator, "rnd(x)", 7), first);
  evaluator.EvalInitRandom(0);
  EXPECT_EQ(Value(evaluator, "rnd(x)", 7), first);
  std::vector<int> bins(10);
  for (std::int32_t x = 0; x < 20000; ++x) ++bins[static_cast<std::size_t>(Value(evaluator, "rnd(x,10)", x))];
  for (const int bin : bins) EXPECT_NEAR(bin, 2000, 6 * std::sqrt(1800)); // six standard deviations
}

// A name without parentheses is a value or lacks them; with too many arguments every function complains.
TEST(Expression, EveryListedEntryIsInTheLanguage) {
  Evaluator evaluator;
  std::string tooMany = "(1";
  for (int i = 0; i < 100; ++i) tooMany += ",1";
  for (const EvalEntry& entry : EvalEntries()) {
    const bool isFunction = !entry.arguments.empty();
    double result = 0;
    EXPECT_EQ(evaluator.EvalOneL(entry.name, 0, result), isFunction ? EVAL_NO_PARENTHESIS : 0) << entry.name;
    const std::string call = std::string(entry.name) + tooMany + ")";
    EXPECT_EQ(evaluator.EvalOneL(call, 0, result), isFunction ? EVAL_ARGUMENT_COUNT : EVAL_SYNTAX) << entry.name;
    EXPECT_FALSE(entry.japanese.empty() || entry.english.empty()) << entry.name;
  }
  EXPECT_EQ(EvalEntries().size(), 53);
}

} // namespace calder::expression_test
