// For every other processor, one point at a time. Where the processor is no x86 the functions are those of the vector
// programs, bit for bit; an x86 without fused multiplication has the library's functions that do without.
#include "libs/eval32/KernelLoops.h"

#include <cmath>
#include <sleef.h>

namespace calder::eval {

#if !defined(__x86_64__) && !defined(__i386__)
const KernelTable* Avx512Kernels() {
  return nullptr;
}
const KernelTable* Avx2Kernels() {
  return nullptr;
}
#endif

namespace {

struct PlainLanes {
  using V = double;
  static constexpr std::size_t width = 1;
  static V Set(double value) { return value; }
  static V Ramp() { return 0; }
  static V Load(const double* from) { return *from; }
  static void Store(double* to, V value) { *to = value; }
  static V Min(V a, V b) { return a < b ? a : b; }
  static V Max(V a, V b) { return a > b ? a : b; }
  static V Abs(V a) { return std::fabs(a); }
  static V Sqrt(V a) { return std::sqrt(a); }
  static V Fma(V a, V b, V c) { return std::fma(a, b, c); }
  static V Floor(V a) { return std::floor(a); }
  static V Ceil(V a) { return std::ceil(a); }
  static V Trunc(V a) { return std::trunc(a); }
  static bool IsAnyNotZero(V a) { return a != 0; }
  static void StoreCodes(std::int16_t* to, const V* values) {
    for (std::size_t i = 0; i < kGroupPoints; ++i)
      to[i] = std::isnan(values[i]) ? std::int16_t{0} : static_cast<std::int16_t>(std::rint(values[i]));
  }
#if defined(__x86_64__) || defined(__i386__)
#define CALDER_MATH1(ours, theirs, error)                                                                              \
  static V ours(V a) {                                                                                                 \
    return Sleef_cinz_##theirs##d1_##error##purec(a);                                                                  \
  }
#define CALDER_MATH2(ours, theirs, error)                                                                              \
  static V ours(V a, V b) {                                                                                            \
    return Sleef_cinz_##theirs##d1_##error##purec(a, b);                                                               \
  }
#else
#define CALDER_MATH1(ours, theirs, error)                                                                              \
  static V ours(V a) {                                                                                                 \
    return Sleef_finz_##theirs##d1_##error##purecfma(a);                                                               \
  }
#define CALDER_MATH2(ours, theirs, error)                                                                              \
  static V ours(V a, V b) {                                                                                            \
    return Sleef_finz_##theirs##d1_##error##purecfma(a, b);                                                            \
  }
#endif
#include "libs/eval32/MathNames.h"
#undef CALDER_MATH1
#undef CALDER_MATH2
};

constexpr KernelTable kTable = Loops<PlainLanes>::Table();

} // namespace

const KernelTable& PlainKernels() {
  return kTable;
}

} // namespace calder::eval
