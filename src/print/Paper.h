// What a report is printed on: a printer, a PDF file or a preview.
//
// Texts stand at millimetres, x to the right and y down from the top left corner of the printable area; the picture of
// a waveform is drawn in the device's own pixels from the same corner. Once the device has failed nothing more reaches
// it, and nothing more is an error.
#pragma once

#include "platform/DeviceContext.h"

#include <string>

namespace calder {

class Paper {
public:
  virtual ~Paper() = default;

  // The printable area, in millimetres.
  [[nodiscard]] virtual double PrintableWidth() const = 0;
  [[nodiscard]] virtual double PrintableHeight() const = 0;
  [[nodiscard]] virtual double PixelsPerMillimetre() const = 0;

  // In the print font: the height of one blank, and the width of a text, in millimetres.
  [[nodiscard]] virtual double LineHeight() const = 0;
  [[nodiscard]] virtual double TextWidth(const std::string& text) const = 0;
  // The text's top left corner.
  virtual void Text(double x, double y, const std::string& text) = 0;

  // What is drawn from now on goes onto a new page.
  virtual void NewPage() = 0;

  // The top left corner of the page as a surface of that size in pixels; what is outside is cut off. Valid until the
  // next call of this object.
  [[nodiscard]] virtual DeviceContext& Picture(int width, int height) = 0;
};

} // namespace calder
