#include "platform/qt/Theme.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace calder {
namespace {

constexpr int kFontSize = 9; // points

QPalette DarkPalette() {
  const QColor window(0x22, 0x29, 0x31);
  const QColor base(0x17, 0x1C, 0x22);
  const QColor button(0x2C, 0x35, 0x3F);
  const QColor text(0xDC, 0xE3, 0xEA);
  const QColor dim(0x7C, 0x88, 0x95);
  QPalette palette(button, window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::PlaceholderText, dim);
  palette.setColor(QPalette::Button, button);
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::BrightText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, QColor(0x36, 0x41, 0x4D));
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6F, 0xB0));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x6F, 0xB7, 0xFF));
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, dim);
  }
  return palette;
}

} // namespace

void ApplyTheme(QApplication& application, bool english) {
  if (QStyle* style = QStyleFactory::create(QStringLiteral("Fusion"))) QApplication::setStyle(style);
  QApplication::setPalette(DarkPalette());
  // The second names are what free desktops have in place of the first.
  QFont font = english ? QFont(QStringList{QStringLiteral("Arial"), QStringLiteral("Liberation Sans")})
                       : QFont(QStringList{QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAGothic")});
  font.setPointSize(kFontSize);
  QApplication::setFont(font);
  application.setStyleSheet(QStringLiteral(
      "QToolTip { color: #dce3ea; background: #36414d; border: 1px solid #55616e; padding: 2px; }"
      "QLineEdit { background: #171c22; border: 1px solid #3a4552; border-radius: 3px; padding: 1px 4px; }"
      "QPlainTextEdit, QListWidget { background: #171c22; border: 1px solid #3a4552; border-radius: 3px; }"
      "QLineEdit:disabled { background: #2c353f; }"
      "QLineEdit:focus, QPlainTextEdit:focus, QListWidget:focus { border-color: #4d9ae0; }"
      "QRadioButton::indicator, QCheckBox::indicator { width: 11px; height: 11px; border: 1px solid #7c8895;"
      " background: #171c22; border-radius: 6px; }"
      "QCheckBox::indicator { border-radius: 2px; }"
      "QRadioButton::indicator:checked { border-color: #6fb7ff; background: qradialgradient(cx:0.5, cy:0.5,"
      " radius:0.5, fx:0.5, fy:0.5, stop:0 #6fb7ff, stop:0.5 #6fb7ff, stop:0.6 #171c22, stop:1 #171c22); }"
      "QCheckBox::indicator:checked { border-color: #6fb7ff; background: #6fb7ff; }"
      "QRadioButton::indicator:focus, QCheckBox::indicator:focus { border-color: #9fd0ff; }"
      "QLineEdit[readOnly=\"true\"] { background: transparent; border-color: transparent; color: #b9c5d1; }"));
}

} // namespace calder
