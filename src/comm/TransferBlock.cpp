#include "comm/TransferBlock.h"

#include "platform/VectorClones.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace calder {
namespace {

static_assert(std::endian::native == std::endian::little);

constexpr std::size_t kAtOnce = 65536; // points between two looks at the progress

enum class ByteOrder : std::uint8_t { HighFirst, LowFirst };

template <ByteOrder order>
[[gnu::always_inline]] inline std::uint16_t InOrder(std::uint16_t code) {
  if constexpr (order == ByteOrder::LowFirst) return code;
  return static_cast<std::uint16_t>((code << 8) | (code >> 8));
}

CALDER_VECTOR void CopySwapped(const std::int16_t* codes, std::uint16_t* out, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) out[i] = InOrder<ByteOrder::HighFirst>(static_cast<std::uint16_t>(codes[i]));
}

// Division by 2^shift, shift 2 to 15: the floor, and one more when the rest is above a half, or is a half and the floor
// is odd. The upper half of a product is one instruction for many codes; a shift by a number that is not known is not.
template <ByteOrder order>
[[gnu::always_inline]] inline void PowerLoop(const std::int16_t* codes, std::uint16_t* out, std::size_t count,
                                             int shift) {
  const auto mask = static_cast<std::int16_t>((1 << shift) - 1);
  const auto half = static_cast<std::int16_t>(1 << (shift - 1));
  const auto inverse = static_cast<std::int16_t>(1 << (16 - shift));
  for (std::size_t i = 0; i < count; ++i) {
    const auto floor = static_cast<std::int16_t>((std::int32_t{codes[i]} * std::int32_t{inverse}) >> 16);
    const auto rest = static_cast<std::int16_t>(codes[i] & mask);
    const auto odd = static_cast<std::int16_t>(floor & 1);
    const auto up = static_cast<std::int16_t>(static_cast<std::int16_t>(rest + odd) > half ? 1 : 0);
    out[i] = InOrder<order>(static_cast<std::uint16_t>(floor + up));
  }
}

CALDER_VECTOR void DivideByPower(const std::int16_t* codes, std::uint16_t* out, std::size_t count, int shift,
                                 ByteOrder order) {
  if (order == ByteOrder::LowFirst) return PowerLoop<ByteOrder::LowFirst>(codes, out, count, shift);
  PowerLoop<ByteOrder::HighFirst>(codes, out, count, shift);
}

// A float quotient of a 16-bit code is exact enough: it is never rounded onto a half that it is not.
template <ByteOrder order>
[[gnu::always_inline]] inline void AnyLoop(const std::int16_t* codes, std::uint16_t* out, std::size_t count,
                                           float divisor) {
  constexpr float kToWhole = 12582912.0F; // 1.5 * 2^23: adding and taking away leaves the nearest whole number
  for (std::size_t i = 0; i < count; ++i) {
    const float quotient = static_cast<float>(codes[i]) / divisor;
    const float whole = (quotient + kToWhole) - kToWhole;
    out[i] = InOrder<order>(static_cast<std::uint16_t>(static_cast<std::int32_t>(whole)));
  }
}

CALDER_VECTOR void DivideByAny(const std::int16_t* codes, std::uint16_t* out, std::size_t count, float divisor,
                               ByteOrder order) {
  if (order == ByteOrder::LowFirst) return AnyLoop<ByteOrder::LowFirst>(codes, out, count, divisor);
  AnyLoop<ByteOrder::HighFirst>(codes, out, count, divisor);
}

void PackCodes(const std::int16_t* codes, std::byte* bytes, std::size_t count, std::int32_t divisor, ByteOrder order) {
  auto* out = reinterpret_cast<std::uint16_t*>(bytes);
  const auto magnitude = static_cast<std::uint32_t>(divisor);
  if (divisor > 2 && divisor < 32768 && std::has_single_bit(magnitude)) {
    DivideByPower(codes, out, count, std::countr_zero(magnitude), order);
  } else if (divisor != 1) {
    DivideByAny(codes, out, count, static_cast<float>(divisor), order);
  } else if (order == ByteOrder::HighFirst) {
    CopySwapped(codes, out, count);
  } else {
    std::memcpy(out, codes, count * sizeof *out);
  }
}

std::byte* PutWord(std::byte* out, std::uint32_t word, bool lowByteFirst) {
  if (!lowByteFirst) word = __builtin_bswap32(word);
  std::memcpy(out, &word, sizeof word);
  return out + sizeof word;
}

std::byte* PutCode(std::byte* out, std::uint16_t code, bool lowByteFirst) {
  if (!lowByteFirst) code = __builtin_bswap16(code);
  std::memcpy(out, &code, sizeof code);
  return out + sizeof code;
}

// How far the point with this index is, in thousandths.
int Thousandths(std::size_t index, std::size_t count) {
  return count > 1 ? static_cast<int>(index * 1000 / (count - 1)) : 1000;
}

template <typename Part>
bool InParts(std::size_t count, const std::function<bool(int)>& progress, Part part) {
  for (std::size_t from = 0; from < count; from += kAtOnce) {
    const std::size_t to = std::min(from + kAtOnce, count);
    part(from, to);
    if (progress && !progress(Thousandths(to - 1, count))) return false;
  }
  return true;
}

} // namespace

std::int32_t DivisorOfMask(std::uint32_t mask) {
  const auto low = static_cast<std::int16_t>(static_cast<std::uint16_t>(mask));
  return low == 0 ? 1 : -static_cast<std::int32_t>(low);
}

bool BuildTransferBlock(const BlockRequest& request, std::vector<std::byte>& block,
                        const std::function<bool(int)>& progress) {
  const std::size_t count = request.codes.size();
  const bool low = request.lowByteFirst;
  const std::int16_t* codes = request.codes.data();
  if (request.layout == BlockLayout::ControlPoints) {
    block.resize(kBlockHeader + count * 6);
    std::byte* out = PutWord(PutWord(block.data(), 1, low), static_cast<std::uint32_t>(count), low);
    return InParts(count, progress, [&](std::size_t from, std::size_t to) {
      for (std::size_t i = from; i < to; ++i) {
        out = PutWord(out, static_cast<std::uint32_t>(request.positions[i]), low);
        std::uint16_t code = 0;
        PackCodes(codes + i, reinterpret_cast<std::byte*>(&code), 1, request.divisor, ByteOrder::LowFirst);
        out = PutCode(out, code, low);
      }
    });
  }
  std::size_t header = 0;
  if (request.layout == BlockLayout::HeaderAndPoints) header = kBlockHeader;
  block.resize(header + count * 2);
  if (header > 0) PutWord(PutWord(block.data(), 0, low), static_cast<std::uint32_t>(request.shownPoints), low);
  return InParts(count, progress, [&](std::size_t from, std::size_t to) {
    PackCodes(codes + from, block.data() + header + from * 2, to - from, request.divisor,
              low ? ByteOrder::LowFirst : ByteOrder::HighFirst);
  });
}

void Decimate(std::vector<std::byte>& block, std::size_t header, std::size_t points, std::size_t step) {
  const std::size_t held = (block.size() - std::min(header, block.size())) / 2;
  if (step == 0 || held == 0) return;
  points = std::min(points, (held - 1) / step + 1);
  for (std::size_t i = 1; i < points; ++i) {
    std::memcpy(block.data() + header + i * 2, block.data() + header + i * step * 2, 2);
  }
  block.resize(header + points * 2);
}

} // namespace calder
