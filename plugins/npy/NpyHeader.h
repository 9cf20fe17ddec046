// The header of a NumPy array file, versions 1 to 3.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace calder::plugin {

struct NpyHeader {
  char kind = 'f';      // 'i', 'u' or 'f'; 'b' for truth values of one byte
  std::size_t size = 8; // bytes a value: 1, 2, 4 or 8; of 'f' not 1
  bool bigEndian = false;
  bool fortran = false;             // the first index changes fastest
  std::vector<std::uint64_t> shape; // empty: one value
  std::size_t dataOffset = 0;       // bytes before the first value
  std::uint64_t count = 1;          // of values; they lie within the file
};

enum class NpyFault { None, NotNpy, Version, Header, Type, TooShort };

// Of the whole file.
[[nodiscard]] NpyFault ParseNpyHeader(std::string_view file, NpyHeader& header);

// Value number i as it lies in the file, from 0. REQUIRES: i < count.
[[nodiscard]] double NpyValue(std::string_view file, const NpyHeader& header, std::uint64_t i);

} // namespace calder::plugin
