// The print dialog without its window: margins, font, and which report is printed.
#pragma once

#include "app/Messages.h"
#include "app/ToolNo.h"
#include "libs/sysinf32/SystemInfo.h"
#include "print/PrintSettings.h"
#include "print/Reports.h"

#include <functional>
#include <optional>
#include <string>

namespace calder {

// Asks for a print font, preset to the given one; no value: cancelled.
using ChooseFont = std::function<std::optional<PrintFont>(const PrintFont&)>;

// What the reports take; the references must outlive the desk that holds them.
struct PrintSource {
  const SystemInfo& settings;
  const ConvUnit& units;
  const PageTable& pages;
  const PwfTable& functions;
  std::function<SystemReportTexts()> systemTexts;
  std::function<WaveReport()> wave;
};

class PrintDesk {
public:
  enum class Margin : int { Left = 0, Top = 1, Bottom = 2 };

  // mode: the selected tool, which says what is printed. All references must outlive this object.
  PrintDesk(PrintSettings& settings, const PrintSource& source, int mode, const ErrMsg& messages);

  // The waveform is printed without margins.
  [[nodiscard]] bool UsesMargins() const { return mode_ != kToolNone; }
  // Interpolate, Operate and Compress/Decompress have no report.
  [[nodiscard]] bool HasReport() const;

  [[nodiscard]] std::string MarginText(Margin margin) const;
  // A number is limited to 5 to 100 and loses its decimals; a text that is none changes nothing.
  void Text_LostFocus(Margin margin, const std::string& text);
  void StepMargin(Margin margin, int by);

  // Asks until the size is above 0 or the user cancels. False: cancelled, the font is as it was.
  bool Btn_Font_Click(const ChooseFont& choose);
  [[nodiscard]] const PrintFont& Font() const { return settings_.font; }

  // The report, from the paper's first page on.
  void Print(Paper& paper) const;

private:
  [[nodiscard]] int& MarginOf(Margin margin) const;

  PrintSettings& settings_;
  const PrintSource& source_;
  const int mode_;
  const ErrMsg& messages_;
};

} // namespace calder
