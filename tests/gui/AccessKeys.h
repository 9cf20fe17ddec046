// Access keys (Alt and a letter) of what a window shows at the moment.
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>

#include <map>
#include <string>

namespace calder {

// The keys that two controls share, each with their texts; empty: none.
inline std::string SharedAccessKeys(const QWidget& window) {
  std::map<std::string, QStringList> owners;
  const auto add = [&](const QString& text) {
    const QKeySequence key = QKeySequence::mnemonic(text);
    if (!key.isEmpty()) owners[key.toString().toStdString()] << text;
  };
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (label->isVisible() && label->buddy() != nullptr) add(label->text());
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
    if (button->isVisible()) add(button->text());
  for (const QMenuBar* bar : window.findChildren<QMenuBar*>())
    for (const QAction* menu : bar->actions())
      if (menu->isVisible()) add(menu->text());
  std::string shared;
  for (const auto& [key, texts] : owners)
    if (texts.size() > 1) shared += key + ": " + texts.join(", ").toStdString() + "; ";
  return shared;
}

} // namespace calder
