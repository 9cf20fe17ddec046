#include "print/PrintDesk.h"

#include "app/EngValB.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace calder {
namespace {

constexpr int kMsgBadFontSize = 30;

// The whole text is a number.
std::optional<double> Number(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return std::nullopt;
  const std::size_t last = text.find_last_not_of(' ');
  const std::string trimmed = text.substr(first, last - first + 1);
  double value = 0;
  const char* begin = trimmed.data() + (trimmed.front() == '+' ? 1 : 0);
  const auto [end, error] = std::from_chars(begin, trimmed.data() + trimmed.size(), value);
  if (error != std::errc() || end != trimmed.data() + trimmed.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

int Limited(double millimetres) {
  return static_cast<int>(std::clamp<double>(millimetres, PrintMargins::kLeast, PrintMargins::kMost));
}

} // namespace

PrintDesk::PrintDesk(PrintSettings& settings, const PrintSource& source, int mode, const ErrMsg& messages)
    : settings_(settings), source_(source), mode_(mode), messages_(messages) {}

bool PrintDesk::HasReport() const {
  return mode_ == kToolCreate || mode_ == kToolPwf || mode_ == kToolSystem || mode_ == kToolNone;
}

int& PrintDesk::MarginOf(Margin margin) const {
  switch (margin) {
  case Margin::Left: return settings_.margins.left;
  case Margin::Top: return settings_.margins.top;
  default: return settings_.margins.bottom;
  }
}

std::string PrintDesk::MarginText(Margin margin) const {
  return std::to_string(MarginOf(margin));
}

void PrintDesk::Text_LostFocus(Margin margin, const std::string& text) {
  if (const std::optional<double> value = Number(text)) MarginOf(margin) = Limited(*value);
}

void PrintDesk::StepMargin(Margin margin, int by) {
  MarginOf(margin) = Limited(MarginOf(margin) + by);
}

bool PrintDesk::Btn_Font_Click(const ChooseFont& choose) {
  while (const std::optional<PrintFont> font = choose(settings_.font)) {
    if (font->size > 0) {
      settings_.font = *font;
      return true;
    }
    messages_.ErrorBox(kMsgBadFontSize);
  }
  return false;
}

void PrintDesk::Print(Paper& paper) const {
  if (mode_ == kToolNone) {
    Print_Wave(paper, source_.wave());
    return;
  }
  ReportWriter writer(paper, settings_.margins);
  const Language language = messages_.GetLanguage();
  switch (mode_) {
  case kToolCreate: Print_Create_List(writer, source_.pages, source_.settings, source_.units, language); break;
  case kToolPwf: Print_Pwf(writer, source_.functions.Selected(), language); break;
  case kToolSystem: Print_System_Setup(writer, source_.settings, source_.systemTexts(), language); break;
  default: break;
  }
}

} // namespace calder
