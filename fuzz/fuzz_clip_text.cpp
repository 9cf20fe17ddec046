// Any bytes on the clipboard, as the exact form and as a text of another program.
#include "libs/file32/WaveClip.h"

#include <algorithm>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  const auto exact = ExactClipCodes(std::as_bytes(std::span(data, size)));
  if (exact && (exact->empty() || exact->size() % 2 != 0 || exact->size() + 16 != size)) std::abort();

  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::vector<std::int16_t> codes;
  RealValues reals;
  if (!ParseClipText(text, 300, codes, reals)) return 0;
  if (codes.empty() || codes.size() > 300) std::abort();

  // Our own text of the same codes gives them back.
  WaveClip clip;
  clip.Assign(codes);
  const auto own = clip.Data(CLIP_TEXT_FORMAT);
  std::vector<std::int16_t> again;
  if (!ParseClipText({reinterpret_cast<const char*>(own.data()), own.size()}, 300, again, reals)) std::abort();
  if (again != codes) std::abort();
  return 0;
}
