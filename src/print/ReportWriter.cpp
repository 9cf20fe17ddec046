#include "print/ReportWriter.h"

#include <cstddef>

namespace calder {
namespace {

constexpr const char* kLineBreak = "\r\n";
constexpr std::size_t kLineBreakLength = 2;

} // namespace

ReportWriter::ReportWriter(Paper& paper, const PrintMargins& margins)
    : paper_(paper), margins_(margins), x_(margins.left), lineHeight_(paper.LineHeight()), y_(margins.top),
      remaining_(paper.PrintableHeight() - margins.top - margins.bottom) {}

void ReportWriter::Check_NewPage(double height) {
  if (remaining_ - height >= 0) {
    remaining_ -= height;
    return;
  }
  paper_.NewPage();
  y_ = margins_.top;
  // The item that goes onto the new page is not counted: a page after the first holds one line more.
  remaining_ = paper_.PrintableHeight() - margins_.top - margins_.bottom;
}

void ReportWriter::Print_Heading(double x, double height, const std::string& text) {
  Print_Data(x, height, text, {});
}

void ReportWriter::Print_Data(double x, double height, const std::string& label, const std::string& value) {
  Check_NewPage(height);
  paper_.Text(x, y_, label);
  if (!value.empty()) paper_.Text(x + kValueColumn, y_, value);
  y_ += height;
}

void ReportWriter::Print_Data_Const(double x, double height, const std::string& label, const std::string& text) {
  PrintLines(x, height, label, text);
}

void ReportWriter::Print_Data_Expr(double x, double height, const std::string& label, const std::string& text) {
  PrintLines(x, height, label, text);
}

void ReportWriter::PrintLines(double x, double height, const std::string& label, const std::string& text) {
  std::size_t begin = 0;
  for (bool first = true;; first = false) {
    const std::size_t end = text.find(kLineBreak, begin);
    Print_Data(x, height, first ? label : std::string(), text.substr(begin, end - begin));
    if (end == std::string::npos) return;
    begin = end + kLineBreakLength;
  }
}

void ReportWriter::Print_Line(const std::string& label, const std::string& value) {
  if (!label.empty()) paper_.Text(x_, y_, label);
  if (!value.empty()) paper_.Text(x_ + kValueColumn, y_, value);
  y_ += lineHeight_;
}

} // namespace calder
