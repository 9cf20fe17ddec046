// Memory in big pages. The first touch of every page costs a trip into the system, on a virtual machine as much as
// computing thousands of points; a page of 2 MiB is touched once, 512 small ones are touched 512 times. Where the
// system has no big pages everything works with small ones.
#pragma once

#include <cstddef>
#include <memory>

namespace calder {

inline constexpr std::size_t kBigPage = std::size_t{1} << 21;

// Zeros, at least `bytes` of them and aligned for vectors; in big pages when they fill a good part of one. Null: no
// memory. Costs nothing before it is touched.
[[nodiscard]] std::shared_ptr<std::byte> AllocateZeros(std::size_t bytes);

// The heap of the process in big pages from here on, and kept: freed memory is used again instead of being fetched
// anew. For the beginning of main().
void UseBigPagesForHeap();

} // namespace calder
