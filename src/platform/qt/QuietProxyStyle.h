// The toolkit's Fusion style with quiet boxes and round indicators. Drawn here, because a style sheet of the
// application costs a start a tenth of its time.
#pragma once

#include <QProxyStyle>

namespace calder {

class QuietProxyStyle final : public QProxyStyle {
  Q_OBJECT

public:
  QuietProxyStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option,
                                     const QWidget* widget) const override;
  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* result) const override;
};

} // namespace calder
