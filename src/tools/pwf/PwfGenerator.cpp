#include "tools/pwf/PwfGenerator.h"

#include "app/EngValB.h"
#include "platform/AsciiText.h"
#include "tools/pwf/PwfScroll.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

// What the formula of the normalised function may divide by, so that it stays within the scale before.
constexpr double kYpk = 2;

std::string ConstantsOf(const PwfTable& table, int k, const PwfTexts& texts) {
  std::string constants;
  std::size_t j = 0;
  for (const PwfParam& param : table[k].Parameters()) {
    const std::string_view text = texts[j++];
    constants +=
        param.ParamName + "=" + std::string(text.substr(std::min(text.find_first_not_of(' '), text.size()))) + ";";
  }
  if (k == PwfTable::kNormalized) constants += "Ypk=" + NumberText(kYpk) + ";";
  return constants + table[k].FixedConstants;
}

} // namespace

PwfTexts FileTexts(const PwfFunction& function) {
  PwfTexts texts;
  std::size_t j = 0;
  for (const PwfParam& param : function.Parameters()) texts[j++] = PwfValueText(param, param.FileValue);
  return texts;
}

void Normalize_Peak(WaveHandle buffer, std::int32_t points) {
  const std::span<std::int16_t> all = W_Lock(buffer);
  const auto codes = all.first(std::min(all.size(), static_cast<std::size_t>(points)));
  if (codes.empty()) return;
  const auto [least, most] = std::ranges::minmax(codes);
  const double peak = std::max(most < -least ? -least : most, 0);
  if (peak == 0) return;
  for (std::int16_t& code : codes) {
    const double scaled = std::nearbyint(code * (W_CODE_MAX / peak));
    code = static_cast<std::int16_t>(std::clamp<double>(scaled, -W_CODE_MAX, W_CODE_MAX));
  }
}

ExpressionFault PwfGenerator::Make(const PwfTable& table, int k, const PwfTexts& texts, WaveHandle buffer,
                                   std::int32_t points) {
  const std::string constants = ConstantsOf(table, k, texts);
  ExpressionFault fault = run_.CheckConstants(evaluator_, constants, {0, static_cast<double>(points)});
  if (fault.message != 0) return fault;
  const std::string formula = TrimBlanks(table[k].Formula);
  fault = run_.Run(evaluator_, {constants, formula}, {buffer, 0, static_cast<double>(points), points});
  if (fault.message == 0 && k == PwfTable::kNormalized) Normalize_Peak(buffer, points);
  return fault;
}

ExpressionFault PwfGenerator::MakeAside(const PwfTable& table, int k, WaveHandle buffer, std::int32_t points) {
  const std::string constants = ConstantsOf(table, k, FileTexts(table[k]));
  const std::string formula = TrimBlanks(table[k].Formula);
  ExpressionFault fault =
      run_.RunAside(evaluator_, 0, {constants, formula}, {buffer, 0, static_cast<double>(points), points});
  if (fault.message == 0 && k == PwfTable::kNormalized) Normalize_Peak(buffer, points);
  return fault;
}

} // namespace calder
