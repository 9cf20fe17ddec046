// The loops over rows of points, one table of them a processor. Inside the evaluator only.
#pragma once

#include "libs/eval32/Ops.h"

#include <cstddef>
#include <cstdint>

namespace calder::eval {

// A row holds one value a point, of the points of one block. Rows stand 8 doubles further apart than their length, so
// that equal places of several rows do not fall into one cache set.
inline constexpr std::size_t kLargestBlock = 1024;
inline constexpr std::size_t kRowStride = kLargestBlock + 8;
// Loops run over whole groups of this many points.
inline constexpr std::size_t kGroupPoints = 8;

inline constexpr std::size_t kPolynomialLimit = 6;

struct Operands {
  double* out = nullptr; // may be one of the operands
  const double* a = nullptr;
  const double* b = nullptr;
  const double* c = nullptr;
  double k = 0; // immediate operands; of Wrap, k is a factor of the angle and m the shift
  double m = 0;
  const double* coefficients = nullptr; // of a polynomial, the constant first
  std::uint64_t key = 0;                // of the random values
  double first = 0;                     // the points themselves: first, first + 1, ..., but never above last
  double last = 0;
  std::size_t points = 0; // a multiple of kGroupPoints
};
using Kernel = void (*)(const Operands&);

// The last pass: its result times k, limited, rounded and packed. out is not used.
using PackKernel = void (*)(const Operands&, std::int16_t* codes);
// True when at a point a is 0 and b, where there is one, is not.
using ZeroKernel = bool (*)(const Operands&);

struct KernelTable {
  Kernel unary[kOpCount] = {};                  // op(a)
  Kernel unaryMulK[kOpCount] = {};              // op(a * k)
  Kernel binary[kOpCount] = {};                 // a op b
  Kernel binaryK[kOpCount] = {};                // a op k
  Kernel kBinary[kOpCount] = {};                // k op a
  Kernel step[kStepCount] = {};                 // step(a, k)
  Kernel steps[kStepCount][kStepCount] = {};    // second(first(a, k), m)
  Kernel joinStep[kJoinCount][kStepCount] = {}; // step(a join b, k)
  Kernel mulKJoin[kJoinCount] = {};             // (a * k) join b
  Kernel joinMulK[kJoinCount] = {};             // a join (b * k)
  Kernel select = nullptr;                      // a ? b : c
  Kernel points = nullptr;                      // the points
  Kernel wrapPoints = nullptr;                  // Wrap of the points
  PackKernel pack = nullptr;                    // a
  PackKernel packJoin[kJoinCount] = {};         // a join b
  PackKernel packMulJoin[kJoinCount] = {};      // (a * m) join b
  PackKernel packJoinMul[kJoinCount] = {};      // a join (b * m)
  // Of the points from first on; a, k and m are not used.
  PackKernel packPolynomial[kPolynomialLimit + 1] = {};
  ZeroKernel isZero = nullptr;
};

// nullptr where the processor cannot run it.
[[nodiscard]] const KernelTable* Avx512Kernels();
[[nodiscard]] const KernelTable* Avx2Kernels();
[[nodiscard]] const KernelTable& PlainKernels();

} // namespace calder::eval
