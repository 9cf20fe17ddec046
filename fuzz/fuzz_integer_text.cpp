// Any bytes as a text of codes: what is accepted is what writing and reading it again gives; a fault has a line that
// the text has.
#include "libs/file32/IntegerText.h"

#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  constexpr std::size_t kMost = 1000;
  std::vector<std::int16_t> codes(kMost);
  std::size_t count = 0;
  TextFault fault;
  if (!ParseCodes(text, codes, count, fault)) {
    if (fault.reason == TextReason::None || fault.line < 0 || fault.line > static_cast<std::int64_t>(size))
      std::abort();
    return 0;
  }
  if (count == 0 || count > kMost) std::abort();
  codes.resize(count);
  std::vector<char> written(count * CODE_LINE_BYTES);
  written.resize(FormatCodes(codes, LineEnd::CrLf, written.data()));
  std::vector<std::int16_t> again(count);
  std::size_t countAgain = 0;
  if (!ParseCodes({written.data(), written.size()}, again, countAgain, fault)) std::abort();
  if (countAgain != count || again != codes) std::abort();
  return 0;
}
