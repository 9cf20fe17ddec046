// Each function against the long double of the standard library.
#include "Testing.h"
#include "libs/eval32/eval32.h"

namespace calder::accuracy_test {

struct TrueFunction {
  const char* name;
  long double (*exact)(long double);
  double low;
  double high;
};

long double Gauss(long double t) {
  return std::exp(-t * t / 2);
}

long double Exp10(long double v) {
  return std::pow(10.0L, v);
}
long double Sinc(long double t) {
  return std::sin(t) / t;
}

constexpr TrueFunction kTrueFunctions[] = {
    {"sin", &std::sin, -1e3, 1e3},   {"sin", &std::sin, 1e5, 1e15},     {"cos", &std::cos, -1e3, 1e3},
    {"tan", &std::tan, -1e3, 1e3},   {"asin", &std::asin, -1, 1},       {"acos", &std::acos, -1, 1},
    {"atan", &std::atan, -50, 50},   {"sinh", &std::sinh, -700, 700},   {"cosh", &std::cosh, -700, 700},
    {"tanh", &std::tanh, -20, 20},   {"asinh", &std::asinh, -1e6, 1e6}, {"acosh", &std::acosh, 1, 1e6},
    {"atanh", &std::atanh, -1, 1},   {"exp", &std::exp, -700, 700},     {"exp2", &std::exp2, -1000, 1000},
    {"log", &std::log, 0, 1e6},      {"log", &std::log, 0.5, 2},        {"ln", &std::log, 0, 1e-3},
    {"log10", &std::log10, 0, 1e6},  {"log2", &std::log2, 0, 1e6},      {"sqrt", &std::sqrt, 0, 1e6},
    {"cbrt", &std::cbrt, -1e6, 1e6}, {"exp10", &Exp10, -300, 300},      {"gauss", &Gauss, -39, 39},
    {"sinc", &Sinc, -1e3, 1e3}};

// Units in the last place of the true value.
double Error(double value, long double exact) {
  const double rounded = std::abs(static_cast<double>(exact));
  const double unit = std::nextafter(rounded, std::numeric_limits<double>::infinity()) - rounded;
  return static_cast<double>(std::abs(static_cast<long double>(value) - exact) / static_cast<long double>(unit));
}

TEST(Accuracy, EveryFunctionIsWithinThreeAndAHalfUnits) {
  std::mt19937_64 random(5);
  char text[100];
  for (const EvalProcessor processor : {EvalProcessor::Avx512, EvalProcessor::Avx2, EvalProcessor::Plain}) {
    if (!Evaluator::IsUsable(processor)) continue;
    Evaluator evaluator(1, processor);
    for (const TrueFunction& row : kTrueFunctions) {
      double worst = 0;
      for (int i = 0; i < 2000; ++i) {
        const double argument = std::uniform_real_distribution(row.low, row.high)(random);
        static_cast<void>(std::snprintf(text, sizeof text, "%s(%.17g)", row.name, argument));
        double value = 0;
        ASSERT_EQ(evaluator.EvalOneL(text, 0, value), 0) << text;
        worst = std::max(worst, Error(value, row.exact(static_cast<long double>(argument))));
      }
      EXPECT_LE(worst, 3.5) << row.name << " " << static_cast<int>(processor);
    }
  }
}

TEST(Accuracy, FunctionsOfTwoAndSmallPowersToo) {
  std::mt19937_64 random(6);
  std::uniform_real_distribution<double> any(-50, 50);
  char text[100];
  Evaluator evaluator;
  const auto value = [&](const char* form, double a, double b) {
    static_cast<void>(std::snprintf(text, sizeof text, form, a, b));
    double result = 0;
    EXPECT_EQ(evaluator.EvalOneL(text, 0, result), 0) << text;
    return result;
  };
  const std::pair<const char*, long double (*)(long double, long double)> forms[] = {
      {"atan2(%.17g,%.17g)", &std::atan2},
      {"hypot(%.17g,%.17g)", &std::hypot},
      {"abs(%.17g)^(%.17g)", [](long double a, long double b) { return std::pow(std::abs(a), b); }},
      {"gauss(%.17g,%.17g)", [](long double a, long double b) { return Gauss(a / b); }}};
  for (int i = 0; i < 3000; ++i) {
    const double a = any(random);
    const double b = any(random);
    for (const auto& [form, exact] : forms) EXPECT_LE(Error(value(form, a, b), exact(a, b)), 3.5) << text;
    for (const int power : {2, 3, 4, 5, 13})
      EXPECT_LE(Error(value("(%.17g)^%.0f", a, power), std::pow(static_cast<long double>(a), power)), 3.5) << text;
    // The phase is rounded as any expression is.
    const long double square = (3.0L - 2.0L) / (2 * 7.0L) * a * a;
    const long double twoPi = 2 * std::numbers::pi_v<long double>;
    const long double off = std::abs(value("chirp(%.17g,2,%.0f,7)", a, 3) - std::sin(twoPi * (2.0L * a + square)));
    EXPECT_LE(off, 1e-15L * (1 + twoPi * (2 * std::abs(a) + square))) << text;
    const double rest = std::fmod(std::abs(a), std::abs(b));
    EXPECT_EQ(value("%.17g%%(%.17g)", std::abs(a), std::abs(b)), rest) << text;
  }
}

} // namespace calder::accuracy_test
