// Any bytes as pwf.fnc: every function that is read can be shown, scrolled and set, and each fault is one sentence
// about a line of the text. The first byte chooses the language.
#include "app/EngValB.h"
#include "tools/pwf/PwfDefinitions.h"
#include "tools/pwf/PwfGenerator.h"
#include "tools/pwf/PwfScroll.h"

#include <cmath>
#include <cstdlib>

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

struct NoBoxes final : calder::MessageBoxes {
  calder::BoxAnswer Show(const std::string&, const std::string&, calder::BoxButtons, calder::BoxIcon) override {
    std::abort();
  }
  std::string Input(const std::string&, const std::string&) override { std::abort(); }
};

void RequireUsable(const calder::PwfParam& param) {
  using namespace calder;
  Require(param.Resolution > 0 && param.MinValue < param.MaxValue && param.Value == param.FileValue);
  const ScrollRange range = ScrollRangeOf(param);
  Require(range.IsUsable());
  const int position = ScrollPositionOf(param, range);
  Require(position >= range.Min && position <= range.Max);
  for (const double end : {range.Min, range.Max}) {
    const double value = ScrolledValue(param, range, static_cast<int>(end));
    Require(value >= param.MinValue && value <= param.MaxValue);
    const double shown = LeadingNumber(PwfValueText(param, value));
    // A limit that is shown with 15 digits may lie a little outside.
    const double slack = 1e-14 * std::fabs(value);
    Require(shown >= param.MinValue - slack && shown <= param.MaxValue + slack);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  if (size < 1) return 0;
  const Language language = data[0] % 2 == 0 ? Language::English : Language::Japanese;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  PwfTable table;
  const PwfReading reading = Read_Fnc(text, language, table);
  NoBoxes boxes;
  const ErrMsg messages(boxes, language);
  int line = 0;
  for (const PwfFault& fault : reading.faults) {
    Require(fault.line == 0 || fault.line > line);
    line = fault.line;
    Require(!PwfFaultText(fault, messages).empty());
  }
  static const WaveHandle wave = W_AllocMemory(64);
  static SystemInfo settings;
  settings.XUnit = settings.YUnit = 2;
  static const ConvUnit units(settings);
  static Evaluator evaluator(1);
  static PwfGenerator generator(evaluator, units, settings, Language::English);
  for (int k = 0; k < PwfTable::kFunctions; ++k) {
    if (!table[k].IsDefined()) continue;
    Require(reading.lines[static_cast<std::size_t>(k)] > 0);
    for (const PwfParam& param : table[k].Parameters()) RequireUsable(param);
    const std::int16_t before = W_Lock(wave)[0];
    if (generator.MakeAside(table, k, wave, 64).message != 0) Require(W_Lock(wave)[0] == before);
  }
  return 0;
}
