// The main window's picture on paper.
#include "platform/WaveformTheme.h"
#include "print/Reports.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace calder {
namespace {

constexpr int kRightEdge = 50;        // pixels that stay free
constexpr int kWidestPicture = 32767; // W_DrawWave2 takes no more
constexpr double kShape = 1.6;
constexpr int kTextIndent = 4;
constexpr Color kFrame = 0x000000;
constexpr Color kInk = 0x0B3D91; // dark on white, and told from the frame
constexpr Color kHalfInk = theme::Mixed(0xFFFFFF, kInk, 0.45);
constexpr std::int32_t kAllBits = 0xFFFF;
constexpr double kTraceWidth = 0.25; // millimetres, as the frame

std::string Label(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

} // namespace

PictureSize WavePictureSize(double printableWidth) {
  return {static_cast<int>(std::min<double>(std::floor(printableWidth) - kRightEdge, kWidestPicture)),
          static_cast<int>(std::min<double>(std::floor(printableWidth / kShape), kWidestPicture))};
}

void Print_Wave(Paper& paper, const WaveReport& report) {
  const double dots = paper.PixelsPerMillimetre();
  const auto [width, height] = WavePictureSize(paper.PrintableWidth() * dots);
  if (width < 1 || height < 1) return;
  const int pen = std::max(1, static_cast<int>(std::lround(kTraceWidth * dots)));
  DeviceContext& picture = paper.Picture(width + pen, height + pen); // with the frame

  picture.SetPen(kInk, pen);
  if (report.digital)
    static_cast<void>(W_DrawDigital(picture, report.wave, 0, report.points, kAllBits, width, height, kHalfInk));
  else
    static_cast<void>(W_DrawWave2(picture, report.wave, report.xStart, report.yStart, report.xSpan, report.ySpan, width,
                                  height, report.points));
  picture.SetPen(kFrame, pen);
  picture.Rectangle(1, 1, width, height);

  const double line = paper.LineHeight() * dots;
  const auto text = [&](double x, double y, const std::string& label) {
    paper.Text(x / dots, std::floor(y) / dots, Label(label));
  };
  text(1, 1, report.top);
  text(1, height - line - 1, report.bottom);
  if (!report.digital) text(1, height / 2.0 + 2, report.middle);
  text(1, height + 1, report.start);
  text(width - paper.TextWidth(Label(report.end)) * dots - kTextIndent, height + 1, report.end);
}

} // namespace calder
