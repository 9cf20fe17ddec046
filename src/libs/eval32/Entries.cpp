// What a dialog shows of the language.
#include "libs/eval32/eval32.h"

namespace calder {

namespace {

constexpr EvalEntry kEntries[] = {
    {"x", "", "変数: 点の番号、または設定した単位のX", "variable: the point, or X in the chosen unit"},
    {"pi", "", "円周率 3.14159...", "3.14159..."},
    {"e", "", "自然対数の底 2.71828...", "2.71828..., base of the natural logarithm"},
    {"sin", "(t)", "正弦 (ラジアン)", "sine of t in radians"},
    {"cos", "(t)", "余弦 (ラジアン)", "cosine of t in radians"},
    {"tan", "(t)", "正接 (ラジアン)", "tangent of t in radians"},
    {"asin", "(v)", "逆正弦", "angle in radians whose sine is v"},
    {"acos", "(v)", "逆余弦", "angle in radians whose cosine is v"},
    {"atan", "(v)", "逆正接", "angle in radians whose tangent is v"},
    {"atan2", "(y, x)", "点(x, y)の偏角", "angle in radians of the point (x, y)"},
    {"sinh", "(v)", "双曲線正弦", "hyperbolic sine"},
    {"cosh", "(v)", "双曲線余弦", "hyperbolic cosine"},
    {"tanh", "(v)", "双曲線正接", "hyperbolic tangent"},
    {"asinh", "(v)", "逆双曲線正弦", "inverse hyperbolic sine"},
    {"acosh", "(v)", "逆双曲線余弦", "inverse hyperbolic cosine"},
    {"atanh", "(v)", "逆双曲線正接", "inverse hyperbolic tangent"},
    {"deg", "(t)", "ラジアンを度に変換", "radians to degrees"},
    {"rad", "(d)", "度をラジアンに変換", "degrees to radians"},
    {"exp", "(v)", "eのv乗", "e to the power v"},
    {"exp2", "(v)", "2のv乗", "2 to the power v"},
    {"exp10", "(v)", "10のv乗", "10 to the power v"},
    {"ln", "(v)", "自然対数", "natural logarithm"},
    {"log", "(v)", "自然対数 (lnと同じ)", "natural logarithm, as ln"},
    {"log10", "(v)", "常用対数", "logarithm to base 10"},
    {"log2", "(v)", "2を底とする対数", "logarithm to base 2"},
    {"sqrt", "(v)", "平方根", "square root"},
    {"cbrt", "(v)", "立方根", "cube root"},
    {"pow", "(a, b)", "aのb乗 (a^bと同じ)", "a to the power b, as a^b"},
    {"hypot", "(a, b)", "aとbの二乗和の平方根", "square root of a*a + b*b"},
    {"abs", "(v)", "絶対値", "absolute value"},
    {"sign", "(v)", "符号: -1、0、1", "-1, 0 or 1"},
    {"sgn", "(v)", "signと同じ", "as sign"},
    {"int", "(v)", "整数部 (0方向へ切り捨て)", "whole part, towards 0"},
    {"frac", "(v)", "小数部 v-int(v)", "v - int(v)"},
    {"floor", "(v)", "v以下の最大の整数", "largest whole number not above v"},
    {"ceil", "(v)", "v以上の最小の整数", "smallest whole number not below v"},
    {"round", "(v)", "四捨五入", "nearest whole number, halves away from 0"},
    {"mod", "(a, b)", "aをbで割った余り (a%bと同じ、符号はb)", "remainder of a / b with the sign of b, as a%b"},
    {"min", "(a, b, ...)", "最小値", "smallest"},
    {"max", "(a, b, ...)", "最大値", "largest"},
    {"clip", "(v, low, high)", "vをlowからhighに制限", "v limited to low..high"},
    {"if", "(c, a, b)", "cが0でなければa、0ならばb (c?a:bと同じ)", "a where c is not 0, else b; as c?a:b"},
    {"saw", "(t)", "のこぎり波、周期2*pi、t=0で0から上昇", "sawtooth -1..1, period 2*pi, rising through 0 at t = 0"},
    {"tri", "(t[, symmetry])", "三角波、周期2*pi、傾斜% (50)",
     "triangle -1..1, period 2*pi, rising for symmetry % (50)"},
    {"sqr", "(t[, duty])", "方形波、周期2*pi、デューティ% (50)",
     "square, 1 for duty % (50) of the period 2*pi, then -1"},
    {"pulse", "(t, width[, period])", "0<=t<widthで1、ほかは0 (periodで繰り返し)",
     "1 for 0 <= t < width, else 0; repeated every period"},
    {"step", "(t)", "t>=0で1、ほかは0", "1 for t >= 0, else 0"},
    {"ramp", "(t)", "0からtに沿って1まで", "t limited to 0..1"},
    {"rect", "(t[, width])", "幅width (1)の矩形、-width/2<=t<width/2で1",
     "1 for -width/2 <= t < width/2 (width 1), else 0"},
    {"sinc", "(t)", "sin(t)/t、t=0で1", "sin(t)/t, 1 at t = 0"},
    {"gauss", "(t[, sigma])", "ガウス形 exp(-(t/sigma)^2/2)、sigma (1)", "exp(-(t/sigma)^2/2), sigma 1"},
    {"chirp", "(t, f0, f1, time)", "チャープ: 周波数がtime間にf0からf1へ",
     "sine whose frequency runs from f0 to f1 in time"},
    {"rnd", "([limit])", "乱数 0以上limit (1)未満", "random number from 0 to below limit (1)"},
};

// In the order in which a pattern is written.
constexpr EvalEntry kPatternEntries[] = {
    {"Mask $8000", "", "以降、16進数で1のビットだけを変える", "from here on only the bits that are 1 in the number"},
    {"4L", "", "4点をLにする (0Lは範囲の終わりまで)", "4 points low (0L: to the end of the range)"},
    {"4H", "", "4点をHにする", "4 points high"},
    {"4N", "", "4点を反転する", "4 points inverted"},
    {"4X", "", "4点をそのままにする", "4 points left as they are"},
    {"4$7FFF", "", "4点を16進数の値にする", "4 points set to the number"},
    {"[4H 4L]8", "", "中を8回繰り返す ([...]0は終わりまで)", "what stands inside 8 times ([...]0: to the end)"},
    {"{x%16}H", "", "点数を式で与える、xは点の番号", "a number of points by an expression, x is the point"},
    {"'", "", "行末までコメント", "a comment to the end of the line"},
};

} // namespace

std::span<const EvalEntry> PatternEntries() {
  return kPatternEntries;
}

std::span<const EvalEntry> EvalEntries() {
  return kEntries;
}

} // namespace calder
