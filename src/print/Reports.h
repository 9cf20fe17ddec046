// The four reports: what each prints, line by line.
#pragma once

#include "app/ConvUnit.h"
#include "app/PageTable.h"
#include "app/PwfTable.h"
#include "libs/wavelb32/wavelb32.h"
#include "print/ReportWriter.h"

#include <array>
#include <string>

namespace calder {

// What the System Setup dialog shows beside the settings record itself.
struct SystemReportTexts {
  std::string model; // selected entries of the dialog's lists
  std::string interface;
  int interfaceKind = 0; // an InterfaceKind
  std::string serialNumber;
  std::string transferFormat;
  std::string memorySize;
  std::string channel;
  std::string range;
  std::string amplitudeUnit;
};

// The main window's view.
struct WaveReport {
  WaveHandle wave = 0;
  std::int32_t points = 0; // MemorySize
  bool digital = false;    // the 16 lanes of the whole waveform, whatever the view shows
  // The shown range of the waveform view, as W_DrawWave2 takes it.
  double xStart = 0;
  double xSpan = 0;
  double yStart = 0;
  double ySpan = 0;
  // The labels of the view; blanks at their ends do not count. The middle one is the waveform view's alone.
  std::string top;
  std::string middle;
  std::string bottom;
  std::string start;
  std::string end;
};

void Print_System_Setup(ReportWriter& writer, const SystemInfo& settings, const SystemReportTexts& texts,
                        Language language);
// All pages of the table that are valid, with all parameters whatever the function.
void Print_Create_List(ReportWriter& writer, const PageTable& pages, const SystemInfo& settings, const ConvUnit& units,
                       Language language);
// At most eleven lines, on one page.
void Print_Pwf(ReportWriter& writer, const PwfFunction& function, Language language);
// A picture in the page's top left corner that fills its width; without margins.
void Print_Wave(Paper& paper, const WaveReport& report);

// The size of that picture in pixels for a page of that printable width.
struct PictureSize {
  int width = 0;
  int height = 0;
};
[[nodiscard]] PictureSize WavePictureSize(double printableWidth);

} // namespace calder
