// Strokes onto codes, as fast as a plain loop over them.
#include "libs/eval32/PatternPlayer.h"
#include "platform/VectorClones.h"

#include <algorithm>
#include <array>

namespace calder::eval {

namespace {

// Repeated strokes are first worked out for so many points, whose words stay in the nearest cache.
constexpr std::size_t kWordPoints = 2048;

CALDER_VECTOR void WriteConstant(std::int16_t* codes, std::size_t count, std::uint16_t keep, std::uint16_t flip) {
  for (std::size_t i = 0; i < count; ++i)
    codes[i] = static_cast<std::int16_t>((static_cast<std::uint16_t>(codes[i]) & keep) ^ flip);
}

CALDER_VECTOR void WriteWords(std::int16_t* codes, std::size_t count, const std::uint16_t* keep,
                              const std::uint16_t* flip) {
  for (std::size_t i = 0; i < count; ++i)
    codes[i] = static_cast<std::int16_t>((static_cast<std::uint16_t>(codes[i]) & keep[i]) ^ flip[i]);
}

// The same words over and over: few enough that they stay in registers.
constexpr std::size_t kRegisterWords = 32;
CALDER_VECTOR void WriteSameWords(std::int16_t* codes, std::size_t count, const std::uint16_t* keep,
                                  const std::uint16_t* flip) {
  for (std::size_t i = 0; i + kRegisterWords <= count; i += kRegisterWords) {
    for (std::size_t k = 0; k < kRegisterWords; ++k)
      codes[i + k] = static_cast<std::int16_t>((static_cast<std::uint16_t>(codes[i + k]) & keep[k]) ^ flip[k]);
  }
  for (std::size_t i = count - count % kRegisterWords; i < count; ++i) {
    const std::size_t k = i % kRegisterWords;
    codes[i] = static_cast<std::int16_t>((static_cast<std::uint16_t>(codes[i]) & keep[k]) ^ flip[k]);
  }
}

// What strokes are written onto: codes, or the words that say what codes will undergo.
struct CodeTarget {
  std::span<std::int16_t> codes;

  [[nodiscard]] std::size_t Size() const { return codes.size(); }
  CodeTarget Take(std::size_t count) {
    const CodeTarget taken{codes.first(count)};
    codes = codes.subspan(count);
    return taken;
  }
  void Constant(std::uint16_t keep, std::uint16_t flip) const { WriteConstant(codes.data(), codes.size(), keep, flip); }
  void Words(const std::uint16_t* keep, const std::uint16_t* flip) const {
    WriteWords(codes.data(), codes.size(), keep, flip);
  }
  void SameWords(const std::uint16_t* keep, const std::uint16_t* flip) const {
    WriteSameWords(codes.data(), codes.size(), keep, flip);
  }
};

struct WordTarget {
  std::span<std::uint16_t> keeps;
  std::span<std::uint16_t> flips;

  [[nodiscard]] std::size_t Size() const { return keeps.size(); }
  WordTarget Take(std::size_t count) {
    const WordTarget taken{keeps.first(count), flips.first(count)};
    keeps = keeps.subspan(count);
    flips = flips.subspan(count);
    return taken;
  }
  void Constant(std::uint16_t keep, std::uint16_t flip) const {
    std::ranges::fill(keeps, keep);
    std::ranges::fill(flips, flip);
  }
  void Words(const std::uint16_t* keep, const std::uint16_t* flip) const {
    std::copy_n(keep, keeps.size(), keeps.begin());
    std::copy_n(flip, flips.size(), flips.begin());
  }
  void SameWords(const std::uint16_t* keep, const std::uint16_t* flip) const {
    for (std::size_t i = 0; i < keeps.size(); ++i) {
      keeps[i] = keep[i % kRegisterWords];
      flips[i] = flip[i % kRegisterWords];
    }
  }
};

template <typename Target>
void WriteAll(std::span<const PatternStroke> strokes, std::size_t first, std::size_t last, Target target);

template <typename Target>
void Repeat(std::span<const PatternStroke> strokes, std::size_t last, Target target) {
  const auto& [points, keep, flip, first, period] = strokes[last];
  if (period > kWordPoints) {
    while (target.Size() > 0) WriteAll(strokes, first, last, target.Take(std::min(period, target.Size())));
    return;
  }
  std::array<std::uint16_t, kWordPoints> keeps; // NOLINT: filled below as far as it is read
  std::array<std::uint16_t, kWordPoints> flips; // NOLINT
  WriteAll(strokes, first, last, WordTarget{std::span(keeps).first(period), std::span(flips).first(period)});
  const bool isShort = kRegisterWords % period == 0;
  const std::size_t most = isShort ? kRegisterWords : std::min(kWordPoints, target.Size() + period);
  const std::size_t block = most / period * period;
  for (std::size_t i = period; i < block; ++i) {
    keeps[i] = keeps[i - period];
    flips[i] = flips[i - period];
  }
  if (isShort) {
    target.SameWords(keeps.data(), flips.data());
    return;
  }
  while (target.Size() > 0) target.Take(std::min(block, target.Size())).Words(keeps.data(), flips.data());
}

// Strokes follow each other and never meet the same point twice, so words need not be joined.
template <typename Target>
void WriteAll(std::span<const PatternStroke> strokes, std::size_t first, std::size_t last, Target target) {
  for (std::size_t i = first; i < last && target.Size() > 0; ++i) {
    const PatternStroke& stroke = strokes[i];
    const Target part = target.Take(std::min(stroke.points, target.Size()));
    if (stroke.period == 0)
      part.Constant(stroke.keep, stroke.flip);
    else
      Repeat(strokes, i, part);
  }
}

} // namespace

void WriteStrokes(std::span<const PatternStroke> strokes, std::span<std::int16_t> codes) {
  WriteAll(strokes, 0, strokes.size(), CodeTarget{codes});
}

} // namespace calder::eval
