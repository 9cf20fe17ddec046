// Writes docs/parameter-functions.md and its pictures from pwf.fnc: function_pages PWF.FNC DOCS. Ends with 1 when the
// file is not sound.
#include "app/EngValB.h"
#include "libs/eval32/eval32.h"
#include "platform/posix/WholeFile.h"
#include "tools/pwf/PwfDefinitions.h"
#include "tools/pwf/PwfGenerator.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace calder {
namespace {

constexpr int kWidth = 240;
constexpr int kHeight = 96;
constexpr std::int32_t kPoints = kWidth * 16;

// The lowest and the highest code of each column, joined.
std::string Picture(std::span<const std::int16_t> codes) {
  const auto y = [](std::int16_t code) {
    constexpr double half = (kHeight - 4) / 2.0;
    return FormatMask(kHeight / 2.0 - code * half / W_CODE_MAX, "0.#");
  };
  std::string path;
  for (int x = 0; x < kWidth; ++x) {
    const auto column = codes.subspan(static_cast<std::size_t>(x) * 16, 16);
    const auto [least, most] = std::ranges::minmax(column);
    const bool rises = column.front() < column.back();
    for (const std::int16_t code : {rises ? least : most, rises ? most : least})
      path += (path.empty() ? "M" : "L") + std::to_string(x) + " " + y(code);
  }
  const std::string width = std::to_string(kWidth);
  const std::string height = std::to_string(kHeight);
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
         "\"><path fill=\"#11161c\" d=\"M0 0h" + width + "v" + height + "H0z\"/><path stroke=\"#5a626b\" d=\"M0 " +
         std::to_string(kHeight / 2) + "h" + width + "\"/><path fill=\"none\" stroke=\"#6fb7ff\" d=\"" + path +
         "\"/></svg>\n";
}

std::string Row(int k, const PwfFunction& function, const std::string& description, const std::string& picture) {
  std::string parameters;
  for (const PwfParam& param : function.Parameters()) {
    if (!parameters.empty()) parameters += "<br>";
    parameters += param.ParamName + " " + NumberText(param.MinValue) + " to " + NumberText(param.MaxValue) + " by " +
                  NumberText(param.Resolution) + " (" + NumberText(param.FileValue) + ")";
  }
  return "| " + std::to_string(k) + " | ![" + function.FuncName + "](" + picture + ") | **" + function.FuncName +
         "**<br>" + description + " | " + parameters + " |\n";
}

int Write(const std::string& definitions, const std::string& docs) {
  std::vector<char> content;
  if (ReadWholeFile(definitions, content) != 0) return 1;
  const std::string_view text(content.data(), content.size());
  PwfTable table;
  const PwfReading reading = Read_Fnc(text, Language::English, table);
  for (const PwfFault& fault : reading.faults) std::fprintf(stderr, "line %d is faulty\n", fault.line);
  SystemInfo settings;
  settings.XUnit = kXUser;
  settings.YUnit = kYUser;
  settings.XUserMax = settings.YUserMax = 1;
  settings.YUserMin = -1;
  const ConvUnit units(settings);
  Evaluator evaluator;
  PwfGenerator generator(evaluator, units, settings, Language::English);
  const WaveHandle buffer = W_AllocMemory(kPoints);
  std::filesystem::create_directories(docs + "/images/functions");
  std::string rows;
  for (int k = 0; k < PwfTable::kFunctions; ++k) {
    if (!table[k].IsDefined()) continue;
    if (generator.MakeAside(table, k, buffer, kPoints).message != 0) return 1;
    const std::string picture = "images/functions/" + std::to_string(k) + ".svg";
    std::ofstream(docs + "/" + picture) << Picture(W_Lock(buffer));
    rows += Row(k, table[k], reading.remarks[static_cast<std::size_t>(k)], picture);
  }
  std::ofstream(docs + "/parameter-functions.md")
      << "# The parameter-variable functions\n\n"
         "Made by `scripts/function_pages` from `data/pwf.fnc`; change that file and run the script. How the file is\n"
         "built is in [file-formats.md](file-formats.md), the language of its formulas in "
         "[expressions.md](expressions.md).\n\n"
         "Frequencies are periods over the whole waveform, times are parts of its length, levels run from -1 to 1. "
         "Base "
         "is the\nlevel at rest: -1 uses the whole scale. Each parameter is followed by its limits, its step and, in "
         "parentheses, the value\nthat it begins with, which is the one of the picture.\n\n"
         "| | picture | function | parameters |\n|---|---|---|---|\n"
      << rows;
  return reading.faults.empty() ? 0 : 1;
}

} // namespace
} // namespace calder

int main(int count, char** arguments) {
  return count == 3 ? calder::Write(arguments[1], arguments[2]) : 2;
}
