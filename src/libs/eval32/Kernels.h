// The loops over rows of points, one table of them a processor. Inside the evaluator only.
#pragma once

#include "libs/eval32/Ops.h"

#include <cstddef>
#include <cstdint>

namespace calder::eval {

// A block's points; a row holds one value a point. Rows stand 8 doubles further apart than their length, so that equal
// places of several rows do not fall into one cache set.
inline constexpr std::size_t blockPoints = 512;
inline constexpr std::size_t rowStride = blockPoints + 8;
// Loops run over whole groups of this many points.
inline constexpr std::size_t groupPoints = 8;

inline constexpr std::size_t polynomialLimit = 6;

struct Operands {
  double* out = nullptr; // may be one of the operands
  const double* a = nullptr;
  const double* b = nullptr;
  const double* c = nullptr;
  double k = 0; // immediate operands; of Wrap, k is a factor of the angle and m the shift
  double m = 0;
  const double* coefficients = nullptr; // of a polynomial, the constant first
  std::uint64_t key = 0;                // of the random values
  std::size_t points = 0;               // a multiple of groupPoints
};
using Kernel = void (*)(const Operands&);

// The last pass: (a join b) * k, limited, rounded and packed. out is not used.
using PackKernel = void (*)(const Operands&, std::int16_t* codes);
// True when at a point a is 0 and b, where there is one, is not.
using ZeroKernel = bool (*)(const Operands&);

struct KernelTable {
  Kernel unary[opCount] = {};                 // op(a)
  Kernel unaryMulK[opCount] = {};             // op(a * k)
  Kernel binary[opCount] = {};                // a op b
  Kernel binaryK[opCount] = {};               // a op k
  Kernel kBinary[opCount] = {};               // k op a
  Kernel step[stepCount] = {};                // step(a, k)
  Kernel steps[stepCount][stepCount] = {};    // second(first(a, k), m)
  Kernel joinStep[joinCount][stepCount] = {}; // step(a join b, k)
  Kernel mulKJoin[joinCount] = {};            // (a * k) join b
  Kernel joinMulK[joinCount] = {};            // a join (b * k)
  Kernel select = nullptr;                    // a ? b : c
  Kernel points = nullptr;                    // k, k + 1, ..., but never above m
  PackKernel pack = nullptr;                  // a * k
  PackKernel packJoin[joinCount] = {};
  // Of the points k, k + 1, ...; a and m are not used.
  PackKernel packPolynomial[polynomialLimit + 1] = {};
  ZeroKernel isZero = nullptr;
};

// nullptr where the processor cannot run it.
[[nodiscard]] const KernelTable* Avx512Kernels();
[[nodiscard]] const KernelTable* Avx2Kernels();
[[nodiscard]] const KernelTable& PlainKernels();

} // namespace calder::eval
