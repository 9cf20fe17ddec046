// Drives a form by its controls' names, with real keys and clicks; and what holds for every form.
#pragma once

#include "platform/qt/ValueBox.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QTest>

namespace calder {

struct FormDriver {
  template <typename Widget>
  Widget* Find(const char* name) {
    auto* widget = driven->findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  std::string Shown(const char* name) { return Find<ValueBox>(name)->text().toStdString(); }
  void Click(const char* name) { QTest::mouseClick(Find<QAbstractButton>(name), Qt::LeftButton); }
  // The focus stays in the box.
  void TypeOn(const char* name, const char* text) {
    auto* box = Find<QWidget>(name);
    box->setFocus();
    QCoreApplication::processEvents();
    QTest::keyClicks(box, QLatin1String(text));
  }
  void Type(const char* name, const char* text, Qt::Key end = Qt::Key_Return) {
    TypeOn(name, text);
    QTest::keyClick(Find<QWidget>(name), end);
    QCoreApplication::processEvents();
  }
  static std::string Focus() { return QApplication::focusWidget()->objectName().toStdString(); }

  QWidget* driven = nullptr;
};

// Nothing that it shows is clipped, and no two controls share an access key (Alt and a letter).
inline void ExpectWellLaidOut(const QWidget& form) {
  QMap<QString, QString> owners;
  const auto expectOwnKey = [&owners](const QString& text) {
    const QString key = QKeySequence::mnemonic(text).toString();
    EXPECT_TRUE(key.isEmpty() || !owners.contains(key)) << text.toStdString() << ", " << owners[key].toStdString();
    owners.insert(key, text);
  };
  for (const QLabel* label : form.findChildren<QLabel*>()) {
    if (!label->isVisible()) continue;
    if (label->buddy() != nullptr) expectOwnKey(label->text());
    const QSize needed = label->wordWrap() ? QSize() : label->sizeHint();
    EXPECT_EQ(label->size().expandedTo(needed), label->size()) << label->objectName().toStdString();
  }
  for (const QAbstractButton* button : form.findChildren<QAbstractButton*>()) {
    if (!button->isVisible()) continue;
    expectOwnKey(button->text());
    EXPECT_GE(button->width(), button->sizeHint().width()) << button->objectName().toStdString();
  }
  for (const QMenuBar* bar : form.findChildren<QMenuBar*>())
    for (const QAction* menu : bar->actions())
      if (menu->isVisible()) expectOwnKey(menu->text());
}

} // namespace calder
