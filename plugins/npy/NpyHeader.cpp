#include "npy/NpyHeader.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>

namespace calder::plugin {
namespace {

constexpr std::string_view kMagic = "\x93NUMPY";
constexpr std::size_t kVersionBytes = 2;

// The header's text is a literal of the Python language: a dictionary of a string, a truth value and a tuple of
// numbers.
class Literal {
public:
  explicit Literal(std::string_view text) : left_(text) {}

  [[nodiscard]] bool Take(char c) {
    Skip();
    if (left_.empty() || left_.front() != c) return false;
    left_.remove_prefix(1);
    return true;
  }
  [[nodiscard]] bool TakeString(std::string_view& value) {
    Skip();
    if (left_.empty() || (left_.front() != '\'' && left_.front() != '"')) return false;
    const std::size_t close = left_.find(left_.front(), 1);
    if (close == std::string_view::npos) return false;
    value = left_.substr(1, close - 1);
    left_.remove_prefix(close + 1);
    return true;
  }
  [[nodiscard]] bool TakeTruth(bool& value) {
    Skip();
    value = left_.starts_with("True");
    if (!value && !left_.starts_with("False")) return false;
    left_.remove_prefix(value ? 4 : 5);
    return true;
  }
  [[nodiscard]] bool TakeShape(std::vector<std::uint64_t>& shape) {
    shape.clear();
    if (!Take('(')) return false;
    while (!Take(')')) {
      Skip();
      std::uint64_t length = 0;
      const auto [stop, error] = std::from_chars(left_.data(), left_.data() + left_.size(), length);
      if (error != std::errc()) return false;
      left_.remove_prefix(static_cast<std::size_t>(stop - left_.data()));
      if (left_.starts_with('L')) left_.remove_prefix(1); // old versions of the language wrote long numbers so
      shape.push_back(length);
      if (!Take(',') && !(left_.starts_with(')'))) return false;
    }
    return true;
  }
  [[nodiscard]] bool AtEnd() {
    Skip();
    return left_.empty();
  }

private:
  void Skip() { left_.remove_prefix(std::min(left_.find_first_not_of(" \t\r\n"), left_.size())); }

  std::string_view left_;
};

NpyFault ParseType(std::string_view type, NpyHeader& header) {
  if (type.size() != 3 || std::string_view("<>|=").find(type[0]) == std::string_view::npos) return NpyFault::Type;
  header.bigEndian = type[0] == '>';
  header.kind = type[1];
  header.size = static_cast<std::size_t>(type[2] - '0');
  const bool whole = header.kind == 'i' || header.kind == 'u';
  const bool sized = header.size == 1 || header.size == 2 || header.size == 4 || header.size == 8;
  const bool known =
      (whole && sized) || (header.kind == 'f' && sized && header.size > 1) || (header.kind == 'b' && header.size == 1);
  // One byte has no order; more than one must have it.
  return known && (header.size == 1 || type[0] != '|') ? NpyFault::None : NpyFault::Type;
}

NpyFault ParseDictionary(std::string_view text, NpyHeader& header) {
  Literal literal(text);
  unsigned seen = 0;
  if (!literal.Take('{')) return NpyFault::Header;
  while (!literal.Take('}')) {
    std::string_view key;
    if (!literal.TakeString(key) || !literal.Take(':')) return NpyFault::Header;
    if (key == "descr") {
      std::string_view type;
      if (!literal.TakeString(type)) return NpyFault::Type; // a list: records
      if (const NpyFault fault = ParseType(type, header); fault != NpyFault::None) return fault;
      seen |= 1U;
    } else if (key == "fortran_order") {
      if (!literal.TakeTruth(header.fortran)) return NpyFault::Header;
      seen |= 2U;
    } else if (key == "shape") {
      if (!literal.TakeShape(header.shape)) return NpyFault::Header;
      seen |= 4U;
    } else {
      return NpyFault::Header;
    }
    static_cast<void>(literal.Take(','));
  }
  return seen == 7U && literal.AtEnd() ? NpyFault::None : NpyFault::Header;
}

// The double that sixteen bits of the IEEE half format mean.
double HalfValue(std::uint16_t bits) {
  const int exponent = (bits >> 10) & 0x1F;
  const double fraction = (bits & 0x3FF) / 1024.0;
  double magnitude = 0;
  if (exponent == 0) {
    magnitude = std::ldexp(fraction, -14);
  } else if (exponent < 31) {
    magnitude = std::ldexp(1 + fraction, exponent - 15);
  } else {
    magnitude = fraction == 0 ? HUGE_VAL : std::nan("");
  }
  return (bits & 0x8000U) != 0 ? -magnitude : magnitude;
}

} // namespace

NpyFault ParseNpyHeader(std::string_view file, NpyHeader& header) {
  if (!file.starts_with(kMagic)) return NpyFault::NotNpy;
  const std::string_view version = file.substr(kMagic.size());
  if (version.size() < kVersionBytes) return NpyFault::Header;
  if (version[0] < 1 || version[0] > 3 || version[1] != 0) return NpyFault::Version;
  const std::size_t lengthBytes = version[0] == 1 ? 2 : 4;
  const std::size_t begin = kMagic.size() + kVersionBytes + lengthBytes;
  if (file.size() < begin) return NpyFault::Header;
  std::size_t length = 0;
  for (std::size_t i = lengthBytes; i > 0; --i)
    length = length << 8U | static_cast<unsigned char>(file[begin - lengthBytes + i - 1]);
  if (length > file.size() - begin) return NpyFault::Header;
  if (const NpyFault fault = ParseDictionary(file.substr(begin, length), header); fault != NpyFault::None) return fault;
  header.dataOffset = begin + length;
  const std::uint64_t room = (file.size() - header.dataOffset) / header.size;
  header.count = 1;
  if (std::ranges::find(header.shape, std::uint64_t{0}) != header.shape.end()) {
    header.count = 0;
    return NpyFault::None;
  }
  for (const std::uint64_t extent : header.shape) {
    if (extent > room / header.count) return NpyFault::TooShort;
    header.count *= extent;
  }
  return header.count > room ? NpyFault::TooShort : NpyFault::None;
}

double NpyValue(std::string_view file, const NpyHeader& header, std::uint64_t i) {
  const std::string_view bytes =
      file.substr(header.dataOffset + static_cast<std::size_t>(i) * header.size, header.size);
  std::uint64_t bits = 0;
  for (std::size_t k = 0; k < header.size; ++k) {
    const std::size_t place = header.bigEndian ? k : header.size - 1 - k; // the highest byte first
    bits = bits << 8U | static_cast<unsigned char>(bytes[place]);
  }
  if (header.kind == 'f') {
    if (header.size == 2) return HalfValue(static_cast<std::uint16_t>(bits));
    return header.size == 4 ? double{std::bit_cast<float>(static_cast<std::uint32_t>(bits))}
                            : std::bit_cast<double>(bits);
  }
  if (header.kind == 'i') {
    const unsigned unused = 64 - 8 * static_cast<unsigned>(header.size); // bits above the sign
    return static_cast<double>(static_cast<std::int64_t>(bits << unused) >> unused);
  }
  return static_cast<double>(bits);
}

} // namespace calder::plugin
