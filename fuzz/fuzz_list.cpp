// Any bytes as an expression list: the pages that are read are sound, and what is written of them comes back the same.
// The first byte chooses the units and the language.
#include "files/ListText.h"

#include <cmath>
#include <cstdlib>

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void RequireSound(const calder::CreatePage& page, double size) {
  Require(page.Function >= 0 && page.Function < calder::kPageFunctions);
  Require(page.StartX >= 0 && page.StartX <= page.EndX && page.EndX <= size && page.Size == page.EndX - page.StartX);
  Require(std::isfinite(page.Offset) && std::isfinite(page.Amplitude));
  Require(page.Period >= 0 && std::fabs(page.Phase) <= 360);
  for (const double percent : {page.Symmetry, page.Duty, page.Transition}) Require(percent >= 0 && percent <= 100);
  // Three bytes a character of the Japanese page at most.
  Require(page.Constants.size() <= 3 * calder::CreatePage::kConstantsLimit);
  Require(page.Expression.size() <= 3 * calder::CreatePage::kExpressionLimit);
  Require((page.Constants + page.Expression).find_first_of({"\r\n\t\0", 4}) == std::string::npos);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  if (size < 1) return 0;
  SystemInfo settings;
  settings.Amplitude = 5;
  settings.XUnit = static_cast<std::int16_t>(data[0] % 3);
  settings.YUnit = static_cast<std::int16_t>(data[0] / 3 % 3);
  const ListText list(settings, data[0] / 9 % 2 == 0 ? Language::English : Language::Japanese);
  PageTable pages;
  pages[9].Valid = kPageTrue;
  if (!list.Parse({reinterpret_cast<const char*>(data) + 1, size - 1}, pages)) {
    Require(pages.CountValid() == 1 && pages.FirstValid() == 9);
    return 0;
  }
  for (int page = 0; page < PageTable::kPages; ++page) RequireSound(pages[page], settings.MemorySize);
  PageTable once;
  Require(list.Parse(list.Compose(pages), once));
  Require(once.CountValid() == pages.CountValid());
  for (int page = PageTable::kFirst; page <= PageTable::kLast; ++page) RequireSound(once[page], settings.MemorySize);
  // Numbers lose their digits beyond the 15th once; texts never change but for the code page's "?".
  PageTable twice;
  Require(list.Parse(list.Compose(once), twice));
  for (int page = PageTable::kFirst; page <= PageTable::kLast; ++page) {
    Require(twice[page].Expression == once[page].Expression && twice[page].Constants == once[page].Constants);
    Require(std::fabs(twice[page].StartX - once[page].StartX) <= 1e-6 * settings.MemorySize);
  }
  return 0;
}
