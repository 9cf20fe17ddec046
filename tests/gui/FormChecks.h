// What holds for every form: nothing that it shows is clipped, and no two controls share an access key (Alt and a
// letter).
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>

namespace calder {

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
