#include "platform/qt/Theme.h"

#include "platform/qt/ButtonKeyFilter.h"
#include "platform/qt/CanvasAccessible.h"
#include "platform/qt/ComboBoxKeyFilter.h"
#include "platform/qt/QuietProxyStyle.h"

#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QPalette>
#include <QTranslator>

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
  // The texts of the toolkit's own dialogs and buttons.
  if (!english) {
    auto* translator = new QTranslator(&application); // NOLINT: the application owns it
    if (translator->load(QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
      QCoreApplication::installTranslator(translator);
  }
  // NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks): the application owns the style
  InstallCanvasAccessibility();
  application.installEventFilter(new ComboBoxKeyFilter(&application));
  application.installEventFilter(new ButtonKeyFilter(&application));
  QApplication::setStyle(new QuietProxyStyle);
  QApplication::setPalette(DarkPalette());
  // The second names are what free desktops have in place of the first.
  QFont font = english ? QFont(QStringList{QStringLiteral("Arial"), QStringLiteral("Liberation Sans")})
                       : QFont(QStringList{QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAGothic")});
  font.setPointSize(kFontSize);
  QApplication::setFont(font);
  // NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
}

} // namespace calder
