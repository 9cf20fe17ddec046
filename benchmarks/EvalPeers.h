// What the evaluator is measured against: the five expressions by hand, x from 0 to below 1, values -1..1 to codes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace calder {

inline constexpr std::size_t peerCount = 5;

struct PeerExpression {
  const char* name;
  std::string_view text;
  const char* muParser; // in its own language
};

inline constexpr PeerExpression peerExpressions[peerCount] = {
    {"damped sine", "sin(2*pi*5*x)*exp(-3*x)", "sin(2*_pi*5*x)*exp(-3*x)"},
    {"cubic", "0.1+x*0.7-1.9*x^2+1.3*x^3", "0.1+x*0.7-1.9*x^2+1.3*x^3"},
    {"four sines", "(sin(2*pi*x)+sin(6*pi*x)/3+sin(10*pi*x)/5+sin(14*pi*x)/7)*0.9",
     "(sin(2*_pi*x)+sin(6*_pi*x)/3+sin(10*_pi*x)/5+sin(14*_pi*x)/7)*0.9"},
    {"min, max, abs, floor of a saw", "max(min(abs(saw(2*pi*5*x)),0.8),floor(3*saw(2*pi*5*x))/4)",
     "max(min(abs(2*(5*x-floor(5*x+0.5))),0.8),floor(3*2*(5*x-floor(5*x+0.5)))/4)"},
    {"root and logarithm", "sqrt(abs(x-0.5))*log(1+9*x)*0.5", "sqrt(abs(x-0.5))*ln(1+9*x)*0.5"}};

using PeerLoop = void (*)(std::span<std::int16_t> codes);

// Hand-written loops over vectors, with the vector library's functions of 1 unit in the last place.
[[nodiscard]] PeerLoop Avx512Peer(std::size_t expression);
[[nodiscard]] PeerLoop Avx2Peer(std::size_t expression);
// The plain loop over the standard library.
[[nodiscard]] PeerLoop PlainPeer(std::size_t expression);

} // namespace calder
