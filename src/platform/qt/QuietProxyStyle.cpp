#include "platform/qt/QuietProxyStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace calder {
namespace {

constexpr QRgb kBoxGround = 0xFF171C22;
constexpr QRgb kDisabledGround = 0xFF2C353F;
constexpr QRgb kBoxBorder = 0xFF3A4552;
constexpr QRgb kFocusBorder = 0xFF4D9AE0;
constexpr QRgb kMarkBorder = 0xFF7C8895;
constexpr QRgb kMark = 0xFF6FB7FF;
constexpr QRgb kFocusedMark = 0xFF9FD0FF;
constexpr QRgb kTipBorder = 0xFF55616E;
constexpr int kIndicatorSize = 13; // logical pixels, border included
constexpr double kCorner = 3;
constexpr int kTextInset = 3; // of a text box, beside its frame

void DrawBox(QPainter& painter, const QRect& rect, QRgb border, const QBrush& ground) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QColor(border));
  painter.setBrush(ground);
  painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
  painter.restore();
}

void DrawIndicator(QPainter& painter, const QStyleOption& option, bool round) {
  const bool on = (option.state & QStyle::State_On) != 0;
  const bool focused = (option.state & QStyle::State_HasFocus) != 0;
  const bool enabled = (option.state & QStyle::State_Enabled) != 0;
  const QRgb mark = enabled ? kMark : kMarkBorder;
  const QRectF outer = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QColor(focused ? kFocusedMark : (on ? mark : kMarkBorder)));
  painter.setBrush(QColor(kBoxGround));
  if (round)
    painter.drawEllipse(outer);
  else
    painter.drawRoundedRect(outer, 2, 2);
  if (on) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(mark));
    const double inset = outer.width() / 4;
    const QRectF inner = outer.adjusted(inset, inset, -inset, -inset);
    if (round)
      painter.drawEllipse(inner);
    else
      painter.drawRect(inner);
  }
  painter.restore();
}

bool IsReadOnly(const QStyleOption& option) {
  return (option.state & QStyle::State_ReadOnly) != 0;
}

} // namespace

QuietProxyStyle::QuietProxyStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void QuietProxyStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                    const QWidget* widget) const {
  const bool focused = (option->state & State_HasFocus) != 0;
  switch (element) {
  case PE_PanelLineEdit: {
    // A box within a larger control (a list that can be typed into) has no frame; one that only shows has no ground.
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (frame == nullptr || frame->lineWidth <= 0) break;
    if (IsReadOnly(*option)) return;
    const bool enabled = (option->state & State_Enabled) != 0;
    DrawBox(*painter, option->rect, focused ? kFocusBorder : kBoxBorder,
            QColor(enabled ? kBoxGround : kDisabledGround));
    return;
  }
  case PE_Frame: {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (frame == nullptr || frame->frameShape != QFrame::StyledPanel) break;
    DrawBox(*painter, option->rect, focused ? kFocusBorder : kBoxBorder, Qt::NoBrush);
    return;
  }
  case PE_IndicatorRadioButton: DrawIndicator(*painter, *option, true); return;
  case PE_IndicatorCheckBox: DrawIndicator(*painter, *option, false); return;
  case PE_PanelTipLabel:
    painter->setPen(QColor(kTipBorder));
    painter->setBrush(option->palette.toolTipBase());
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    return;
  default: break;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

int QuietProxyStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
  case PM_ExclusiveIndicatorWidth:
  case PM_ExclusiveIndicatorHeight:
  case PM_IndicatorWidth:
  case PM_IndicatorHeight: return kIndicatorSize;
  default: return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

QRect QuietProxyStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  const QRect rect = QProxyStyle::subElementRect(element, option, widget);
  return element == SE_LineEditContents ? rect.adjusted(kTextInset, 0, -kTextInset, 0) : rect;
}

// The words of a box's buttons say enough.
int QuietProxyStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                               QStyleHintReturn* result) const {
  return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, result);
}

} // namespace calder
