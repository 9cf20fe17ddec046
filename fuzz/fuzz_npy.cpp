// Any bytes as a NumPy file: a header that is accepted describes values that lie within the file.
#include "npy/NpyHeader.h"

#include <cmath>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder::plugin;
  const std::string_view file(reinterpret_cast<const char*>(data), size);
  NpyHeader header;
  if (ParseNpyHeader(file, header) != NpyFault::None) return 0;
  if (header.dataOffset > size || header.count > (size - header.dataOffset) / header.size) std::abort();
  for (std::uint64_t i = 0; i < header.count; ++i) {
    const double value = NpyValue(file, header, i);
    if (header.kind != 'f' && !std::isfinite(value)) std::abort();
  }
  return 0;
}
