#include "libs/eval32/eval32.h"
#include "libs/wavelb32/TestWave.h"

#include <cstdlib>
#include <new>
#include <tuple>

// The evaluator's rows are aligned memory, which can be made to run out here.
static bool isMemoryGone = false;

void* operator new(std::size_t size, std::align_val_t alignment) {
  const auto step = static_cast<std::size_t>(alignment);
  void* memory = isMemoryGone ? nullptr : std::aligned_alloc(step, (size + step - 1) / step * step);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void operator delete(void* memory, std::align_val_t) noexcept {
  std::free(memory);
}

namespace calder::fault_test {

// The fault stands at the mark @.
TEST(Fault, EachHasItsNumberAndItsPlace) {
  const std::pair<std::int16_t, std::vector<std::string>> rows[] = {
      {100, {"@",        "   @", "1+@",    "@*2",      "2@x",      "2 @(3)", "(1)@(2)", "pi@(3)",
             "x@(3)",    "1@,2", "(1@,2)", "sin(1,@)", "sin(@,1)", "1?2@",   "1@:2",    "0<x@<5",
             "1==1@!=0", "1@&2", "1+@#",   "2*@*3",    "1 @[a=1]", "[a=1]@"}},
      {108, {"@a=1", "@foo", "1+@bar(2)", "@x2"}},
      {109, {"@2e", "3*@1e+", "@1.2.3", "@$", "2+@$g", "@1.e5."}},
      {101, {"@sin", "1+@cos*2", "@sin 3"}},
      {102, {"@(1+2", "1+2@)", "sin@(1", "max@(1,(2)", "@((1)"}},
      {103, {"@sin(1,2)", "1+@atan2(1)", "@sin()", "@if(1,2)", "@rnd(x,1,2)"}},
      {104, {"1@/0", "3@%(1-1)", "2+@mod(1,0)", "2@/(x-3)", "abs(1)/x+1@/(x-3)"}},
      {-1,
       {"@[a=1", "[a@]1", "[a=@]1", "[@=1]1", "[@1=1]1", "[a=1 @b=2]1", "[a@==1]1", "[a=@x]1", "[a=@rnd()]1", "[@x=1]1",
        "[a=1@/0]1", "[a=@b;b=1]1", "[a=@sin]1", "[a=@(1]1", "[a=@1e]1", "[@[a=1]]1"}}};
  for (const auto& [code, texts] : rows) {
    for (std::string text : texts) {
      Evaluator evaluator; // that remembers no constants
      const std::size_t position = text.find('@');
      text.erase(position, 1);
      double result = 77;
      EXPECT_EQ(evaluator.EvalOneL(text, 3, result), code) << text;
      EXPECT_EQ(evaluator.LastFault().code, code) << text;
      EXPECT_EQ(evaluator.LastFault().position, position) << text;
      const auto [japanese, english] = EvalReasonText(evaluator.LastFault());
      EXPECT_FALSE(japanese.empty() || english.empty()) << text;
      EXPECT_EQ(result, 77) << text;
    }
  }
  Evaluator evaluator;
  double result = 0;
  EXPECT_EQ(evaluator.EvalOneL("1", 3, result), 0);
  EXPECT_EQ(evaluator.LastFault().code, 0) << "a call that went well has no fault";
}

TEST(Fault, ADivisionThatIsNotTakenIsNoFault) {
  constexpr std::tuple<std::string_view, double, std::int32_t> cases[] = {{"if(x==0,1,sin(x)/x)", 1, 0},
                                                                          {"x!=0&&1/x>3", 0, 0},
                                                                          {"x==0||1/x>3", 1, 0},
                                                                          {"x?10/x:-1", -1, 0},
                                                                          {"x?10/x:-1", 2, 5},
                                                                          {"if(0,1/0,2)", 2, 0},
                                                                          {"if(x>5,1/0,2)", 2, 5},
                                                                          {"x>0?x>1?1/(x-1):2:3", 2, 1},
                                                                          {"if(x,if(x-1,1/x/(x-1),4),5)", 5, 0},
                                                                          {"1?2:1/0", 2, 0}};
  Evaluator evaluator;
  for (const auto& [text, value, x] : cases) {
    double result = 0;
    EXPECT_EQ(evaluator.EvalOneL(text, x, result), 0) << text;
    EXPECT_EQ(result, value) << text;
  }
  double result = 0;
  EXPECT_EQ(evaluator.EvalOneL("if(x>5,1/0,2)", 6, result), EVAL_DIVIDE_BY_ZERO);
  EXPECT_EQ(evaluator.EvalOneL("if(x>5,2,1/(x-3))", 3, result), EVAL_DIVIDE_BY_ZERO);
}

TEST(Fault, TheBufferIsLeftAlone) {
  const TestWave wave(Codes(5000, 7));
  const Codes before = wave.Copy();
  Evaluator evaluator;
  const double bad[] = {-1, 5001, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                        1e300};
  for (const double value : bad) {
    EXPECT_EQ(evaluator.EvalArray1(value, 1, wave.Handle(), "1"), EVAL_BUFFER) << value;
    EXPECT_EQ(evaluator.EvalArray1(0, value, wave.Handle(), "1"), EVAL_BUFFER) << value;
  }
  EXPECT_EQ(evaluator.EvalArray1(0, 1, wave.Handle() + 1, "1"), EVAL_BUFFER);
  EXPECT_EQ(evaluator.EvalArray1(0, 5000, wave.Handle(), "1/(x-4999)"), EVAL_DIVIDE_BY_ZERO);
  EXPECT_EQ(evaluator.EvalArray1(0, 5000, wave.Handle(), "x+"), EVAL_SYNTAX);
  isMemoryGone = true;
  Evaluator starved;
  EXPECT_EQ(starved.EvalArray1(0, 5000, wave.Handle(), "sin(x)"), EVAL_NO_MEMORY);
  isMemoryGone = false;
  EXPECT_EQ(starved.EvalArray1(0, 0, wave.Handle(), "1/x"), 0) << "and it works again";
  EXPECT_EQ(wave.Copy(), before);
  EXPECT_EQ(evaluator.EvalArray1(0, 4999, wave.Handle(), "1/(x-4999)"), 0)
      << "the point after the range is not looked at";
  EXPECT_EQ(wave.Codes()[4999], 7);
}

std::string Repeated(std::string_view part, int times) {
  std::string text;
  for (int i = 0; i < times; ++i) text += part;
  return text;
}

TEST(Fault, HugeTextsEndWithADefinedCode) {
  Evaluator evaluator;
  double result = 0;
  EXPECT_EQ(evaluator.EvalOneL(Repeated("(", 900) + "x" + Repeated(")", 900), 5, result), 0);
  EXPECT_EQ(result, 5);
  EXPECT_EQ(evaluator.EvalOneL(Repeated("-", 1967) + "x", 5, result), 0);
  EXPECT_EQ(result, -5);
  EXPECT_EQ(evaluator.EvalOneL("x" + Repeated("+x", 2000), 5, result), 0) << "long but not deep";
  EXPECT_EQ(result, 10005);
  const std::string deep[] = {Repeated("(", 100000),    Repeated("!", 100000),
                              Repeated("sin(", 100000), Repeated("2^", 100000),
                              Repeated("1?", 100000),   Repeated("1?2:", 100000),
                              Repeated("x+(", 100000),  Repeated("1||", 1) + Repeated("(", 5000)};
  for (const std::string& text : deep) EXPECT_EQ(evaluator.EvalOneL(text, 5, result), EVAL_TOO_COMPLEX);
  std::string many;
  for (int i = 1; i < 20000; ++i) many += "sin(x+" + std::to_string(i) + ")+";
  EXPECT_EQ(evaluator.EvalOneL(many + "1", 5, result), EVAL_TOO_COMPLEX);
}

} // namespace calder::fault_test
