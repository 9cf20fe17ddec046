#include "files/PwfFile.h"

#include "app/EngValB.h"
#include "files/SettingsBlock.h"
#include "libs/file32/TextLines.h"
#include "platform/posix/WholeFile.h"

#include <array>
#include <cmath>
#include <span>
#include <vector>

namespace calder {
namespace {

constexpr std::string_view kPwfRule = "'+++++++++++++++";
constexpr std::string_view kPwfTitle = "'PWF Parameter";
constexpr std::string_view kPwfEnd = "'----------------";
constexpr std::string_view kNoValue = "None";

bool IsNumeric(std::string_view line, double& value) {
  return ParseReal(Trimmed(line), value);
}

} // namespace

std::string PwfFile::Compose() const {
  const PwfFunction& function = table_.Selected();
  std::string text;
  const auto line = [&text](std::string_view content) {
    text += content;
    text += "\r\n";
  };
  line(kPwfRule);
  line(kPwfTitle);
  line(kPwfRule);
  line(std::to_string(table_.WaveIdx));
  line(ToCodePage(function.FuncName, PageOf(language_)));
  for (int j = 0; j < PwfTable::kMaxParams; ++j) {
    const PwfParam& param = function.Params[static_cast<std::size_t>(j)];
    line(j < function.ParamCount ? FormatMask(param.Value, Resolution_Mask(param.Resolution)) : std::string(kNoValue));
  }
  line(kPwfEnd);
  return text;
}

std::int32_t PwfFile::Write_Pwf(const std::string& path) const {
  const std::string text = Compose();
  const std::array<std::span<const std::byte>, 1> pieces{std::as_bytes(std::span(text))};
  return ReplaceFile(path, pieces);
}

std::int32_t PwfFile::Parse(std::string_view text) {
  // Two rules, then the index, the name and the parameters; comments may stand anywhere.
  enum State { RulesMissing = -4, Index = -2, Name = -1, FirstValue = 0 };
  int state = RulesMissing;
  int k = 0;
  double value = 0;
  text = WithoutByteOrderMark(text);
  while (!text.empty()) {
    const std::string_view line = text.substr(0, LineLength(text));
    text.remove_prefix(line.size());
    text.remove_prefix(LineEndLength(text));
    if (line == kPwfRule) ++state;
    if (line.starts_with('\'')) continue;
    if (state == Index) {
      if (!IsNumeric(line, value)) return FILE_READ_FAILED;
      value = std::nearbyint(value);
      if (!(value >= 0 && value < PwfTable::kFunctions)) return FILE_READ_FAILED;
      k = static_cast<int>(value);
      state = Name;
    } else if (state == Name) {
      if (!table_[k].IsDefined() || FromCodePage(line, PageOf(language_)) != table_[k].FuncName)
        return FILE_READ_FAILED;
      table_.WaveIdx = k;
      state = FirstValue;
    } else if (state >= FirstValue && state < PwfTable::kMaxParams) {
      if (!line.starts_with(kNoValue)) {
        if (!IsNumeric(line, value)) return FILE_READ_FAILED;
        table_[k].Params[static_cast<std::size_t>(state)].Value = value;
      }
      ++state;
    }
  }
  return 0;
}

std::int32_t PwfFile::Read_Pwf(const std::string& path) {
  std::vector<char> content;
  if (ReadWholeFile(path, content) != 0) return FILE_READ_FAILED;
  return Parse({content.data(), content.size()});
}

} // namespace calder
