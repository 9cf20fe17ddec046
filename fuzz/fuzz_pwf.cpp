// Any bytes as a parameter file: a defined result, one of the table's functions selected, and what is written then
// reads back as it is shown. The first byte chooses the language.
#include "app/EngValB.h"
#include "files/PwfFile.h"

#include <cmath>
#include <cstdlib>

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

calder::PwfTable Table() {
  calder::PwfTable table;
  const char* const names[] = {"AM", "", "Damped sine", "\xC3\xA4\xEF\xBC\xAD"};
  std::int16_t count = 1;
  for (const char* name : names) {
    calder::PwfFunction& function = table[count * 4];
    function.FuncName = name;
    function.ParamCount = count++;
    for (calder::PwfParam& param : function.Params) param = {-10, 10, 0.01, 1.25, "p", 1};
  }
  table.WaveIdx = 4;
  return table;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  if (size < 1) return 0;
  const Language language = data[0] % 2 == 0 ? Language::English : Language::Japanese;
  PwfTable table = Table();
  const PwfTable before = table;
  PwfFile file(table, language);
  const std::int32_t result = file.Parse({reinterpret_cast<const char*>(data) + 1, size - 1});
  Require(result == 0 || result == 71);
  Require(table.WaveIdx >= 0 && table.WaveIdx < PwfTable::kFunctions && table.Selected().IsDefined());
  for (int k = 0; k < PwfTable::kFunctions; ++k) {
    Require(table[k].FuncName == before[k].FuncName && table[k].ParamCount == before[k].ParamCount);
    for (const PwfParam& param : table[k].Params) Require(std::isfinite(param.Value));
  }
  // A name that the code page lacks cannot come back.
  if (table.WaveIdx == 16) return 0;
  PwfTable again = Table();
  PwfFile copy(again, language);
  Require(copy.Parse(file.Compose()) == 0 && again.WaveIdx == table.WaveIdx);
  for (const PwfParam& param : again.Selected().Parameters()) {
    const PwfParam& was = table.Selected().Params[static_cast<std::size_t>(&param - again.Selected().Params.data())];
    Require(std::fabs(param.Value - was.Value) <= 0.005 + 1e-14 * std::fabs(was.Value));
  }
  return 0;
}
