// What the evaluator costs: five expressions, 524288 points to codes, each beside peers in the same run. Ends with 1
// when a limit is passed.
//   bench_eval32                  the table, for the widest vectors that the processor has
//   bench_eval32 avx2             the table for processors without AVX-512
//   bench_eval32 times THREADS    only our time of each expression in microseconds, for eval_peers.py
#include "EvalPeers.h"
#include "FigureTable.h"
#include "libs/eval32/eval32.h"
#include "platform/VectorClones.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <muParser.h>
#include <sched.h>
#include <string>

namespace calder {

namespace {

constexpr std::int32_t points = W_MAX_POINTS;
constexpr int rounds = 40;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "failed: %s\n", what);
  std::exit(2);
}

// The text as the program sends it for X from 0 to 1 and Y from -1 to 1.
std::string Sent(std::string_view expression) {
  std::string text = "[]((";
  for (std::size_t i = 0; i < expression.size(); ++i) {
    const bool isAlone =
        (i == 0 || std::isalpha(static_cast<unsigned char>(expression[i - 1])) == 0) &&
        (i + 1 == expression.size() || std::isalpha(static_cast<unsigned char>(expression[i + 1])) == 0);
    if (expression[i] == 'x' && isAlone)
      text += "(x*((1-0)/524288)+(0))";
    else
      text += expression[i];
  }
  return text + ")-((1+-1)/2))*(65534/(1--1))";
}

class Buffer {
public:
  Buffer() : handle_(W_AllocMemory(points)) { Require(handle_ != 0, "memory"); }
  ~Buffer() { static_cast<void>(W_FreeMemory(handle_)); }
  Buffer(const Buffer&) = delete;
  Buffer& operator=(const Buffer&) = delete;
  [[nodiscard]] WaveHandle Handle() const { return handle_; }
  [[nodiscard]] std::span<std::int16_t> Codes() const { return W_Lock(handle_); }

private:
  WaveHandle handle_;
};

// muParser's bulk mode, then the same way to codes as the plain peer.
class MuParserPeer {
public:
  explicit MuParserPeer(const char* text) : x_(points), values_(points) {
    for (std::size_t i = 0; i < x_.size(); ++i) x_[i] = static_cast<double>(i) / points;
    parser_.DefineVar("x", x_.data());
    parser_.DefineFun("floor", &Floor);
    parser_.SetExpr(text);
  }
  void Run(std::span<std::int16_t> codes) {
    parser_.Eval(values_.data(), points);
    for (std::size_t i = 0; i < codes.size(); ++i)
      codes[i] = static_cast<std::int16_t>(std::lrint(std::clamp(values_[i] * 32767, -32767.0, 32767.0)));
  }

private:
  static double Floor(double value) { return std::floor(value); }
  mu::Parser parser_;
  std::vector<double> x_;
  std::vector<double> values_;
};

// How far two results lie apart at most; a jump may stand one point aside.
int Difference(std::span<const std::int16_t> one, std::span<const std::int16_t> other) {
  int difference = 0;
  for (std::size_t i = 1; i + 1 < one.size(); ++i) {
    const bool isJump = std::abs(one[i + 1] - one[i - 1]) > 1000;
    if (!isJump) difference = std::max(difference, std::abs(one[i] - other[i]));
  }
  return difference;
}

// Cores differ, by a third on some virtual machines: the time on a core whose speed is the mean of the first two's.
double TimeOnOneCore(auto&& work) {
  cpu_set_t all;
  Require(sched_getaffinity(0, sizeof all, &all) == 0, "sched_getaffinity");
  double speeds = 0;
  int cores = 0;
  for (int core = 0; core < CPU_SETSIZE && cores < 2; ++core) {
    if (!CPU_ISSET(core, &all)) continue;
    cpu_set_t only;
    CPU_ZERO(&only);
    CPU_SET(core, &only);
    Require(sched_setaffinity(0, sizeof only, &only) == 0, "sched_setaffinity");
    speeds += 1 / FigureTable::BestTime(2 * rounds, work);
    ++cores;
  }
  Require(sched_setaffinity(0, sizeof all, &all) == 0, "sched_setaffinity");
  return cores / speeds;
}

// nullptr where the processor has no vectors.
PeerLoop VectorPeer([[maybe_unused]] EvalProcessor processor, [[maybe_unused]] std::size_t expression) {
#ifdef CALDER_VECTOR_PEERS
  if (processor == EvalProcessor::Avx512) return Avx512Peer(expression);
  if (processor == EvalProcessor::Avx2) return Avx2Peer(expression);
#endif
  return nullptr;
}

EvalProcessor Widest() {
  for (const EvalProcessor processor : {EvalProcessor::Avx512, EvalProcessor::Avx2})
    if (Evaluator::IsUsable(processor)) return processor;
  return EvalProcessor::Plain;
}

int Table(EvalProcessor processor) {
  Require(Evaluator::IsUsable(processor), "the processor lacks these vectors");
  FigureTable table;
  Evaluator one(1, processor);
  Evaluator two(2, processor);
  const Buffer ours;
  const Buffer theirs;
  double product = 1;
  const auto evaluate = [&](Evaluator& evaluator, const std::string& text) {
    Require(evaluator.EvalArray1(0, points, ours.Handle(), text) == 0, "EvalArray1");
  };
  for (std::size_t i = 0; i < peerCount; ++i) {
    const PeerExpression& expression = peerExpressions[i];
    const std::string text = Sent(expression.text);
    const std::string name = expression.name;
    MuParserPeer muParser(expression.muParser);
    const PeerLoop plain = PlainPeer(i);
    if (const PeerLoop vectors = VectorPeer(processor, i); vectors != nullptr) {
      product *= table.Row((name + " / vectors by hand").c_str(), 1.5, rounds, [&] { evaluate(one, text); },
                           [&] { vectors(theirs.Codes()); });
      Require(Difference(ours.Codes(), theirs.Codes()) <= 1, "the vector loop computes something else");
    }
    static_cast<void>(table.Row((name + " / plain loop").c_str(), 1, rounds / 8, [&] { evaluate(one, text); },
                                [&] { plain(theirs.Codes()); }));
    Require(Difference(ours.Codes(), theirs.Codes()) <= 1, "the plain loop computes something else");
    static_cast<void>(table.Row((name + " / muParser in bulk").c_str(), 1, rounds / 8, [&] { evaluate(one, text); },
                                [&] { muParser.Run(theirs.Codes()); }));
    Require(Difference(ours.Codes(), theirs.Codes()) <= 1, "muParser computes something else");
    const double limit = i == 1 || i == 3 ? 1.1 : 1 / 1.7; // the cubic and the saw are too little work to share
    static_cast<void>(table.RatioRow((name + ", two threads / one").c_str(), limit,
                                     FigureTable::BestTime(4 * rounds, [&] { evaluate(two, text); }),
                                     TimeOnOneCore([&] { evaluate(one, text); })));
    constexpr int times = 1000;
    double value = 0;
    table.TimeRow((name + ", compiling a thousand times").c_str(), 5.0 * times, rounds, [&] {
      for (int n = 0; n < times; ++n) Require(one.EvalOneL(text, 1, value) == 0, "EvalOneL");
    });
  }
  table.LimitRow("geometric mean / vectors by hand", 1, std::pow(product, 1.0 / peerCount));
  return table.IsOver() ? 1 : 0;
}

// What somebody would write for one pattern, in vectors too.
CALDER_VECTOR void InvertByHand(std::int16_t* codes) {
  for (std::int32_t i = 0; i < points; ++i) codes[i] = static_cast<std::int16_t>(codes[i] ^ 0x4000);
}
CALDER_VECTOR void AlternateByHand(std::int16_t* codes) {
  for (std::int32_t i = 0; i + 1 < points; i += 2) {
    codes[i] = static_cast<std::int16_t>(codes[i] | 1);
    codes[i + 1] = static_cast<std::int16_t>(codes[i + 1] & ~1);
  }
}
CALDER_VECTOR void LongGroupsByHand(std::int16_t* codes) {
  for (std::int32_t i = 0; i < points; i += 10000) {
    const std::int32_t end = std::min(i + 10000, points);
    for (std::int32_t k = i; k < std::min(i + 5000, end); ++k) codes[k] = static_cast<std::int16_t>(codes[k] | 0xF0);
    for (std::int32_t k = i + 5000; k < end; ++k) codes[k] = static_cast<std::int16_t>(codes[k] & ~0xF0);
  }
}

int Patterns() {
  FigureTable table;
  Evaluator evaluator(1);
  const Buffer ours;
  const Buffer theirs;
  const struct {
    const char* text;
    void (*byHand)(std::int16_t*);
  } rows[] = {{"Mask $4000 0N", InvertByHand},
              {"Mask $1 [1H 1L]0", AlternateByHand},
              {"Mask $1 [[1H 1L]2]0", AlternateByHand},
              {"Mask $F0 [5000H 5000L]0", LongGroupsByHand}};
  for (const auto& row : rows) {
    std::ranges::fill(ours.Codes(), 21);
    std::ranges::fill(theirs.Codes(), 21);
    static_cast<void>(
        table.Row((std::string(row.text) + " / a loop by hand").c_str(), 2, 5 * rounds,
                  [&] { Require(evaluator.DigitalPattern(row.text, 0, ours.Handle(), points) == 0, row.text); },
                  [&] { row.byHand(theirs.Codes().data()); }));
    Require(std::ranges::equal(ours.Codes(), theirs.Codes()), "the loop by hand writes something else");
  }
  return table.IsOver() ? 1 : 0;
}

int Times(int threads) {
  Evaluator evaluator(threads);
  const Buffer buffer;
  for (const PeerExpression& expression : peerExpressions) {
    const std::string text = Sent(expression.text);
    std::printf("%.1f\n", FigureTable::BestTime(rounds, [&] {
                  Require(evaluator.EvalArray1(0, points, buffer.Handle(), text) == 0, "EvalArray1");
                }));
  }
  return 0;
}

} // namespace

} // namespace calder

int main(int count, char** arguments) {
  if (count == 3 && std::strcmp(arguments[1], "times") == 0) return calder::Times(std::atoi(arguments[2]));
  const bool isNarrow = count == 2 && std::strcmp(arguments[1], "avx2") == 0;
  const int patterns = calder::Patterns();
  return std::max(patterns, calder::Table(isNarrow ? calder::EvalProcessor::Avx2 : calder::Widest()));
}
