#include "platform/posix/BigPages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace calder {
namespace {

constexpr std::size_t kLeastForBigPages = kBigPage / 2;
constexpr int kKeptHeap = 8 << 20; // bytes

std::size_t RoundedUp(std::size_t size, std::size_t unit) {
  return (size + unit - 1) / unit * unit;
}

std::byte* After(void* memory, std::size_t bytes) {
  return static_cast<std::byte*>(memory) + bytes;
}

// A mapping that begins at a big page and ends at one.
std::shared_ptr<std::byte> MapBigPages(std::size_t bytes) {
  const std::size_t size = RoundedUp(bytes, kBigPage);
  void* all = ::mmap(nullptr, size + kBigPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (all == MAP_FAILED) return nullptr; // NOLINT: the system's own macro
  const auto address = reinterpret_cast<std::uintptr_t>(all);
  const std::size_t before = RoundedUp(address, kBigPage) - address;
  std::byte* memory = After(all, before);
  if (before > 0) ::munmap(all, before);
  if (before < kBigPage) ::munmap(After(memory, size), kBigPage - before);
  static_cast<void>(::madvise(memory, size, MADV_HUGEPAGE)); // refused: small pages
  return {memory, [size](std::byte* mapping) { ::munmap(mapping, size); }};
}

} // namespace

std::shared_ptr<std::byte> AllocateZeros(std::size_t bytes) {
  try {
    if (bytes >= kLeastForBigPages && bytes <= SIZE_MAX / 4) return MapBigPages(bytes);
    constexpr std::size_t alignment = 64;
    auto* base = static_cast<std::byte*>(std::calloc(1, bytes + alignment)); // NOLINT: untouched zeros
    if (base == nullptr) return nullptr;
    const std::size_t off =
        RoundedUp(reinterpret_cast<std::uintptr_t>(base), alignment) - reinterpret_cast<std::uintptr_t>(base);
    return {base + off, [base](std::byte*) { std::free(base); }}; // NOLINT: the other end of calloc
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void UseBigPagesForHeap() {
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  if (::mallopt(M_MMAP_THRESHOLD, kKeptHeap) == 0 || ::mallopt(M_TRIM_THRESHOLD, 2 * kKeptHeap) == 0 ||
      ::mallopt(M_TOP_PAD, kKeptHeap) == 0)
    return;
  // What the heap has so far ends somewhere inside a big page. A block up to that page's end, which nobody touches,
  // leaves all that comes after it in big pages; it lives as long as the process.
  const auto end = reinterpret_cast<std::uintptr_t>(::sbrk(0));
  static const void* const filler = std::malloc(RoundedUp(end, kBigPage) - end + kBigPage); // NOLINT: as said
  const auto grown = reinterpret_cast<std::uintptr_t>(::sbrk(0));
  const std::uintptr_t first = RoundedUp(end, kBigPage);
  if (filler == nullptr || grown < first + kBigPage) return;
  auto* heap = reinterpret_cast<void*>(first); // NOLINT: an address that was rounded up
  static_cast<void>(::madvise(heap, (grown - first) / kBigPage * kBigPage, MADV_HUGEPAGE));
#endif
}

} // namespace calder
