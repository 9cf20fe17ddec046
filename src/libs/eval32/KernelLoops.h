// The loops, written once for vectors of any width. Each processor's file includes this with its own vectors L, and is
// compiled for that processor: nothing here may be shared between those files, so nothing of the standard library is
// called, and every name depends on L.
//
// L::V is a vector type with the compiler's own operators, or double; Floor, Fma and the like are L's functions.
// L::Min(a, b) is a < b ? a : b and L::Max(a, b) is a > b ? a : b, so b where one of them is not a number.
#pragma once

#include "libs/eval32/Kernels.h"
#include "platform/WaveLimits.h"

namespace calder::eval {

template <class L>
struct Loops {
  using V = typename L::V;
  static V Set(double value) { return L::Set(value); }

  // ---- operations on one vector ----
  struct OpAdd {
    static V Of(V a, V b) { return a + b; }
  };
  struct OpSub {
    static V Of(V a, V b) { return a - b; }
  };
  struct OpRSub {
    static V Of(V a, V b) { return b - a; }
  };
  struct OpMul {
    static V Of(V a, V b) { return a * b; }
  };
  struct OpDiv {
    static V Of(V a, V b) { return a / b; }
  };
  struct OpMin {
    static V Of(V a, V b) { return L::Min(b, a); }
  };
  struct OpMax {
    static V Of(V a, V b) { return L::Max(b, a); }
  };
  struct OpPow {
    static V Of(V a, V b) { return L::Pow(a, b); }
  };
  struct OpAtan2 {
    static V Of(V a, V b) { return L::Atan2(a, b); }
  };
  struct OpHypot {
    static V Of(V a, V b) { return L::Hypot(a, b); }
  };
  struct OpLess {
    static V Of(V a, V b) { return a < b ? Set(1) : Set(0); }
  };
  struct OpLessEqual {
    static V Of(V a, V b) { return a <= b ? Set(1) : Set(0); }
  };
  struct OpEqual {
    static V Of(V a, V b) { return a == b ? Set(1) : Set(0); }
  };
  struct OpNotEqual {
    static V Of(V a, V b) { return a != b ? Set(1) : Set(0); }
  };
  struct OpAnd {
    static V Of(V a, V b) { return a != Set(0) ? (b != Set(0) ? Set(1) : Set(0)) : Set(0); }
  };
  struct OpOr {
    static V Of(V a, V b) { return a != Set(0) ? Set(1) : (b != Set(0) ? Set(1) : Set(0)); }
  };
  // a - b floor(a / b) without an error: the quotient, rounded, may be one off, and the remainder of either is exact.
  // Where the quotient has no binary places left the remainder has no meaning, and is 0.
  struct OpMod {
    static V Of(V a, V b) {
      const V quotient = a / b;
      V rest = L::Fma(-L::Floor(quotient), b, a);
      rest = (b > Set(0) ? rest < Set(0) : rest > Set(0)) ? rest + b : rest;
      rest = (b > Set(0) ? rest >= b : rest <= b) ? rest - b : rest;
      return L::Abs(quotient) >= Set(0x1p53) ? a * Set(0) : rest;
    }
  };

  // The rounding of the quotient and of its square would be hundreds of units in the last place of a small result. Both
  // rests are exact, and where they are large or no numbers the result is 0, 1 or none without them.
  struct OpGauss {
    static V Of(V a, V b) {
      const V quotient = a / b;
      const V square = quotient * quotient;
      const V quotientRest = L::Fma(-quotient, b, a) / b;
      const V rest = L::Fma(quotient, quotient, -square) + Set(2) * quotient * quotientRest;
      const V rough = L::Exp(square * Set(-0.5));
      const V better = L::Fma(rough, rest * Set(-0.5), rough);
      return L::Abs(rest) < Set(1) ? better : rough;
    }
  };

  struct OpAbs {
    static V Of(V a) { return L::Abs(a); }
  };
  struct OpFloor {
    static V Of(V a) { return L::Floor(a); }
  };
  struct OpCeil {
    static V Of(V a) { return L::Ceil(a); }
  };
  struct OpTrunc {
    static V Of(V a) { return L::Trunc(a); }
  };
  struct OpRound {
    static V Of(V a) {
      const V whole = L::Trunc(a);
      const V up = a < Set(0) ? whole - Set(1) : whole + Set(1);
      return L::Abs(a - whole) >= Set(0.5) ? up : whole;
    }
  };
  struct OpFrac {
    static V Of(V a) { return a - L::Trunc(a); }
  };
  struct OpSign {
    static V Of(V a) { return a > Set(0) ? Set(1) : (a < Set(0) ? Set(-1) : a * Set(0)); }
  };
  struct OpNot {
    static V Of(V a) { return a == Set(0) ? Set(1) : Set(0); }
  };
  struct OpSqrt {
    static V Of(V a) { return L::Sqrt(a); }
  };
  struct OpSin {
    static V Of(V a) { return L::Sin(a); }
  };
  struct OpSinc {
    static V Of(V a) { return a == Set(0) ? Set(1) : L::FineSin(a) / a; }
  };
  struct OpCos {
    static V Of(V a) { return L::Cos(a); }
  };
  struct OpTan {
    static V Of(V a) { return L::Tan(a); }
  };
  struct OpAsin {
    static V Of(V a) { return L::Asin(a); }
  };
  struct OpAcos {
    static V Of(V a) { return L::Acos(a); }
  };
  struct OpAtan {
    static V Of(V a) { return L::Atan(a); }
  };
  struct OpSinh {
    static V Of(V a) { return L::Sinh(a); }
  };
  struct OpCosh {
    static V Of(V a) { return L::Cosh(a); }
  };
  struct OpTanh {
    static V Of(V a) { return L::Tanh(a); }
  };
  struct OpAsinh {
    static V Of(V a) { return L::Asinh(a); }
  };
  struct OpAcosh {
    static V Of(V a) { return L::Acosh(a); }
  };
  struct OpAtanh {
    static V Of(V a) { return L::Atanh(a); }
  };
  struct OpExp {
    static V Of(V a) { return L::Exp(a); }
  };
  struct OpExp2 {
    static V Of(V a) { return L::Exp2(a); }
  };
  struct OpExp10 {
    static V Of(V a) { return L::Exp10(a); }
  };
  struct OpLog {
    static V Of(V a) { return L::Log(a); }
  };
  struct OpLog2 {
    static V Of(V a) { return L::Log2(a); }
  };
  struct OpLog10 {
    static V Of(V a) { return L::Log10(a); }
  };
  struct OpCbrt {
    static V Of(V a) { return L::Cbrt(a); }
  };

  // Steps that need no immediate operand.
  struct StepAbs {
    static V Of(V a, V) { return L::Abs(a); }
  };
  struct StepFloor {
    static V Of(V a, V) { return L::Floor(a); }
  };

  // ---- loops ----
  // Stores go through vector types, which may stand for anything: without copies of its own in registers a loop would
  // read its pointers again after each store.
  struct Rows {
    explicit Rows(const Operands& o) : out(o.out), a(o.a), b(o.b), points(o.points), k(Set(o.k)), m(Set(o.m)) {}
    double* out;
    const double* a;
    const double* b;
    std::size_t points;
    V k;
    V m;
  };
  template <class F>
  static void ForAll(const Operands& operands, F value) {
    const Rows rows(operands);
    for (std::size_t i = 0; i < rows.points; i += L::width) L::Store(rows.out + i, value(rows, i));
  }
  static V A(const Rows& rows, std::size_t i) { return L::Load(rows.a + i); }
  static V B(const Rows& rows, std::size_t i) { return L::Load(rows.b + i); }

  template <class F>
  static void Unary(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return F::Of(A(r, i)); });
  }
  template <class F>
  static void UnaryMulK(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return F::Of(A(r, i) * r.k); });
  }
  template <class F>
  static void Binary(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return F::Of(A(r, i), B(r, i)); });
  }
  template <class F>
  static void BinaryK(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return F::Of(A(r, i), r.k); });
  }
  template <class F>
  static void KBinary(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return F::Of(r.k, A(r, i)); });
  }
  template <class F, class G>
  static void Steps(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return G::Of(F::Of(A(r, i), r.k), r.m); });
  }
  template <class J, class G>
  static void JoinStep(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return G::Of(J::Of(A(r, i), B(r, i)), r.k); });
  }
  template <class J>
  static void MulKJoin(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return J::Of(A(r, i) * r.k, B(r, i)); });
  }
  template <class J>
  static void JoinMulK(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return J::Of(A(r, i), B(r, i) * r.k); });
  }
  static void Select(const Operands& o) {
    const double* const c = o.c;
    ForAll(o, [c](const Rows& r, std::size_t i) {
      const V yes = B(r, i);
      const V no = L::Load(c + i);
      return A(r, i) != Set(0) ? yes : no;
    });
  }
  static V WrapOf(const Rows& r, V angle) {
    constexpr double turn = 6.283185307179586;
    const V turns = angle * r.k * Set(1 / turn);
    const V place = turns - L::Floor(turns + r.m);
    return place * Set(2); // not a sum: most of the others are sums, and processors multiply beside them
  }
  static void Wrap(const Operands& o) {
    ForAll(o, [](const Rows& r, std::size_t i) { return WrapOf(r, A(r, i)); });
  }
  // Two sums side by side, since each waits for itself; the row has room for a vector too many.
  template <class F>
  static void ForAllPoints(const Operands& o, F value) {
    const Rows rows(o);
    const V last = Set(o.last);
    const V step = Set(2.0 * static_cast<double>(L::width));
    V even = L::Ramp() + Set(o.first);
    V odd = even + Set(static_cast<double>(L::width));
    for (std::size_t i = 0; i < rows.points; i += 2 * L::width) {
      L::Store(rows.out + i, value(rows, L::Min(even, last)));
      L::Store(rows.out + i + L::width, value(rows, L::Min(odd, last)));
      even = even + step;
      odd = odd + step;
    }
  }
  static void Points(const Operands& o) {
    ForAllPoints(o, [](const Rows&, V point) { return point; });
  }
  static void WrapPoints(const Operands& o) {
    ForAllPoints(o, [](const Rows& r, V point) { return WrapOf(r, point); });
  }
  // SplitMix64's finish (G. Steele, D. Lea, C. Flood, "Fast splittable pseudorandom number generators", 2014) over the
  // bits of the value and the key; the top 52 bits make a number from 0 to below 1.
  static void Random(const Operands& o) {
    for (std::size_t i = 0; i < o.points; ++i) {
      std::uint64_t bits = __builtin_bit_cast(std::uint64_t, o.a[i] + 0.0) + o.key; // + 0.0: -0 is 0
      bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
      bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
      bits = (bits ^ (bits >> 31)) >> 12 | 0x3FF0000000000000U;
      o.out[i] = __builtin_bit_cast(double, bits) - 1;
    }
  }

  // ---- last passes ----
  static V Limit(V value) { return L::Min(Set(W_CODE_MAX), L::Max(Set(-W_CODE_MAX), value)); }
  template <class F>
  static void PackAll(std::size_t points, std::int16_t* codes, F value) {
    for (std::size_t i = 0; i < points; i += kGroupPoints) {
      V values[kGroupPoints / L::width];
      for (std::size_t j = 0; j < kGroupPoints / L::width; ++j) values[j] = Limit(value(i + j * L::width));
      L::StoreCodes(codes + i, values);
    }
  }
  static void Pack(const Operands& o, std::int16_t* codes) {
    const Rows rows(o);
    PackAll(rows.points, codes, [rows](std::size_t i) { return A(rows, i) * rows.k; });
  }
  template <class J>
  static void PackJoin(const Operands& o, std::int16_t* codes) {
    const Rows rows(o);
    PackAll(rows.points, codes, [rows](std::size_t i) { return J::Of(A(rows, i), B(rows, i)) * rows.k; });
  }
  template <class J>
  static void PackMulJoin(const Operands& o, std::int16_t* codes) {
    const Rows rows(o);
    PackAll(rows.points, codes, [rows](std::size_t i) { return J::Of(A(rows, i) * rows.m, B(rows, i)) * rows.k; });
  }
  template <class J>
  static void PackJoinMul(const Operands& o, std::int16_t* codes) {
    const Rows rows(o);
    PackAll(rows.points, codes, [rows](std::size_t i) { return J::Of(A(rows, i), B(rows, i) * rows.m) * rows.k; });
  }
  template <std::size_t degree>
  static void PackPolynomial(const Operands& o, std::int16_t* codes) {
    V c[degree + 1];
    for (std::size_t i = 0; i <= degree; ++i) c[i] = Set(o.coefficients[i]);
    V index = L::Ramp() + Set(o.first);
    PackAll(o.points, codes, [&c, &index](std::size_t) {
      V sum = c[degree];
      for (std::size_t i = degree; i-- > 0;) sum = L::Fma(sum, index, c[i]);
      index = index + Set(static_cast<double>(L::width));
      return sum;
    });
  }
  static bool IsZero(const Operands& o) {
    V found = Set(0);
    for (std::size_t i = 0; i < o.points; i += L::width) {
      const V isZero = L::Load(o.a + i) == Set(0) ? Set(1) : Set(0);
      found = found + (o.b == nullptr ? isZero : L::Load(o.b + i) != Set(0) ? isZero : Set(0));
    }
    return L::IsAnyNotZero(found);
  }

  // ---- the table ----
  static constexpr int At(Op op) { return static_cast<int>(op); }
  template <class F>
  static constexpr void AddUnary(KernelTable& t, Op op) {
    t.unary[At(op)] = &Unary<F>;
    t.unaryMulK[At(op)] = &UnaryMulK<F>;
  }
  template <class F>
  static constexpr void AddBinary(KernelTable& t, Op op) {
    t.binary[At(op)] = &Binary<F>;
    t.binaryK[At(op)] = &BinaryK<F>;
    t.kBinary[At(op)] = &KBinary<F>;
  }
  template <class F, class... G>
  static constexpr void AddSteps(KernelTable& t, Step step) {
    t.step[static_cast<int>(step)] = &BinaryK<F>;
    int at = 0;
    ((t.steps[static_cast<int>(step)][at++] = &Steps<F, G>), ...);
  }
  template <class J, class... G>
  static constexpr void AddJoin(KernelTable& t, Join join) {
    int at = 0;
    ((t.joinStep[static_cast<int>(join)][at++] = &JoinStep<J, G>), ...);
    t.mulKJoin[static_cast<int>(join)] = &MulKJoin<J>;
    t.joinMulK[static_cast<int>(join)] = &JoinMulK<J>;
    t.packJoin[static_cast<int>(join)] = &PackJoin<J>;
    t.packMulJoin[static_cast<int>(join)] = &PackMulJoin<J>;
    t.packJoinMul[static_cast<int>(join)] = &PackJoinMul<J>;
  }
  // In the order of Step.
  template <class... F>
  static constexpr void AddAllSteps(KernelTable& t) {
    int at = 0;
    (AddSteps<F, F...>(t, static_cast<Step>(at++)), ...);
    AddJoin<OpAdd, F...>(t, Join::Add);
    AddJoin<OpSub, F...>(t, Join::Sub);
    AddJoin<OpMul, F...>(t, Join::Mul);
    AddJoin<OpMin, F...>(t, Join::Min);
    AddJoin<OpMax, F...>(t, Join::Max);
  }
  static constexpr void AddPolynomials(KernelTable& t) {
    t.packPolynomial[0] = &PackPolynomial<0>;
    t.packPolynomial[1] = &PackPolynomial<1>;
    t.packPolynomial[2] = &PackPolynomial<2>;
    t.packPolynomial[3] = &PackPolynomial<3>;
    t.packPolynomial[4] = &PackPolynomial<4>;
    t.packPolynomial[5] = &PackPolynomial<5>;
    t.packPolynomial[6] = &PackPolynomial<6>;
  }
  static constexpr KernelTable Table() {
    KernelTable t;
    AddUnary<OpAbs>(t, Op::Abs);
    AddUnary<OpFloor>(t, Op::Floor);
    AddUnary<OpCeil>(t, Op::Ceil);
    AddUnary<OpTrunc>(t, Op::Trunc);
    AddUnary<OpRound>(t, Op::Round);
    AddUnary<OpFrac>(t, Op::Frac);
    AddUnary<OpSign>(t, Op::Sign);
    AddUnary<OpNot>(t, Op::Not);
    AddUnary<OpSqrt>(t, Op::Sqrt);
    AddUnary<OpSin>(t, Op::Sin);
    AddUnary<OpCos>(t, Op::Cos);
    AddUnary<OpTan>(t, Op::Tan);
    AddUnary<OpAsin>(t, Op::Asin);
    AddUnary<OpAcos>(t, Op::Acos);
    AddUnary<OpAtan>(t, Op::Atan);
    AddUnary<OpSinh>(t, Op::Sinh);
    AddUnary<OpCosh>(t, Op::Cosh);
    AddUnary<OpTanh>(t, Op::Tanh);
    AddUnary<OpAsinh>(t, Op::Asinh);
    AddUnary<OpAcosh>(t, Op::Acosh);
    AddUnary<OpAtanh>(t, Op::Atanh);
    AddUnary<OpExp>(t, Op::Exp);
    AddUnary<OpExp2>(t, Op::Exp2);
    AddUnary<OpExp10>(t, Op::Exp10);
    AddUnary<OpLog>(t, Op::Log);
    AddUnary<OpLog2>(t, Op::Log2);
    AddUnary<OpLog10>(t, Op::Log10);
    AddUnary<OpCbrt>(t, Op::Cbrt);
    AddUnary<OpSinc>(t, Op::Sinc);
    t.unary[At(Op::Wrap)] = &Wrap;
    t.unaryMulK[At(Op::Wrap)] = &Wrap;
    t.unary[At(Op::Random)] = &Random;
    AddBinary<OpAdd>(t, Op::Add);
    AddBinary<OpSub>(t, Op::Sub);
    AddBinary<OpMul>(t, Op::Mul);
    AddBinary<OpDiv>(t, Op::Div);
    AddBinary<OpMod>(t, Op::Mod);
    AddBinary<OpMin>(t, Op::Min);
    AddBinary<OpMax>(t, Op::Max);
    AddBinary<OpPow>(t, Op::Pow);
    AddBinary<OpAtan2>(t, Op::Atan2);
    AddBinary<OpHypot>(t, Op::Hypot);
    AddBinary<OpGauss>(t, Op::Gauss);
    AddBinary<OpLess>(t, Op::Less);
    AddBinary<OpLessEqual>(t, Op::LessEqual);
    AddBinary<OpEqual>(t, Op::Equal);
    AddBinary<OpNotEqual>(t, Op::NotEqual);
    AddBinary<OpAnd>(t, Op::And);
    AddBinary<OpOr>(t, Op::Or);
    AddAllSteps<OpAdd, OpMul, OpRSub, OpDiv, OpMin, OpMax, StepAbs, StepFloor>(t);
    t.select = &Select;
    t.points = &Points;
    t.wrapPoints = &WrapPoints;
    t.pack = &Pack;
    t.isZero = &IsZero;
    AddPolynomials(t);
    return t;
  }
};

} // namespace calder::eval
