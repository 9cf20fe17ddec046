#include "app/PageTable.h"

namespace calder {
namespace {

struct Name {
  const char* japanese;
  const char* english;
};

constexpr std::array<Name, kPageFunctions> kNames{{{"正弦波", "Sin"},
                                                   {"三角波", "Triangle"},
                                                   {"方形波", "Square"},
                                                   {"ノイズ", "Noise"},
                                                   {"DC", "DC Volts"},
                                                   {"波形関数", "Expression"}}};

bool IsControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

} // namespace

const char* PageFunctionName(int function, Language language) {
  if (function < 0 || function >= kPageFunctions) return "";
  const Name& name = kNames[static_cast<std::size_t>(function)];
  return language == Language::English ? name.english : name.japanese;
}

std::string PageText(std::string_view text, std::size_t limit) {
  std::string kept;
  std::size_t characters = 0;
  for (const char c : text) {
    const bool starts = (static_cast<unsigned char>(c) & 0xC0U) != 0x80;
    if (starts && ++characters > limit) break;
    kept += IsControl(c) ? ' ' : c;
  }
  kept.erase(kept.find_last_not_of(' ') + 1);
  return kept;
}

int PageTable::FirstValid() const {
  for (int page = kFirst; page <= kLast; ++page) {
    if ((*this)[page].Valid != 0) return page;
  }
  return 0;
}

int PageTable::LastValid() const {
  for (int page = kLast; page >= kFirst; --page) {
    if ((*this)[page].Valid != 0) return page;
  }
  return 0;
}

int PageTable::CountValid() const {
  int count = 0;
  for (int page = kFirst; page <= kLast; ++page) count += (*this)[page].Valid != 0 ? 1 : 0;
  return count;
}

} // namespace calder
