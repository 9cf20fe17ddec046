// Drives a form by its controls' names, with real keys and clicks; and what holds for every form.
#pragma once

#include "Testing.h"
#include "platform/qt/ValueBox.h"
#include "platform/qt/WaveformCanvas.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRadioButton>
#include <QScrollBar>
#include <QSet>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace calder {

struct FormDriver {
  // What the user does, where to look then, and what must be seen there: it has to change, or be given as `before` too.
  // "~" is any text.
  struct Step {
    const char *gestures, *seen;
    std::string after;
    const char* before = nullptr; // null: whatever it was
  };

  template <typename Widget>
  Widget* Find(const std::string& name) {
    auto* widget = driven->findChild<Widget*>(QString::fromStdString(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  void ShowForm(QWidget* form) {
    driven = form;
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form));
    QApplication::setActiveWindow(form);
    QCoreApplication::processEvents();
  }
  std::string Shown(const std::string& name) { return Find<ValueBox>(name)->text().toStdString(); }
  std::string Line(const std::string& name) { return Find<QLabel>(name)->text().toStdString(); }
  void Click(const std::string& name) { QTest::mouseClick(Find<QAbstractButton>(name), Qt::LeftButton); }
  // The focus stays in the box.
  void TypeOn(const std::string& name, const std::string& text) {
    auto* box = Find<QWidget>(name);
    box->setFocus();
    QCoreApplication::processEvents();
    QTest::keyClicks(box, QString::fromStdString(text));
  }
  void Type(const std::string& name, const std::string& text, Qt::Key end = Qt::Key_Return) {
    TypeOn(name, text);
    QTest::keyClick(Find<QWidget>(name), end);
    QCoreApplication::processEvents();
  }
  static std::string Focus() { return QApplication::focusWidget()->objectName().toStdString(); }

  // "VERB CONTROL REST; VERB ...": "type" with Return, "tab" with Tab, "on" without an end; "key" a shortcut in the
  // control or, for ".", where the focus is; "set" a list's entry, "choose" the same by keys and leaving it; "pick" a
  // row by its text; "click"; "menu" an entry; and what the fixture adds.
  void Do(const std::string& gestures) {
    for (const QString& one : QString::fromStdString(gestures).split(QStringLiteral("; "), Qt::SkipEmptyParts)) {
      const std::string verb = one.section(QLatin1Char(' '), 0, 0).toStdString();
      const std::string name = one.section(QLatin1Char(' '), 1, 1).toStdString();
      const std::string rest = one.section(QLatin1Char(' '), 2).toStdString();
      if (const auto found = verbs.find(verb); found != verbs.end())
        found->second(name, rest);
      else
        ADD_FAILURE() << "no gesture: " << verb;
      QCoreApplication::processEvents();
    }
  }
  // What controls show, one after the other: the text, or whether it is checked; in front of it "hidden" or "off".
  std::string See(const std::string& controls) {
    std::string text;
    for (const QString& one : QString::fromStdString(controls).split(QLatin1Char(' '))) {
      const std::string name = one.toStdString();
      const auto found = views.find(name);
      text += (text.empty() ? "" : " ") + (found != views.end() ? found->second() : SeeOne(name));
    }
    return text;
  }
  // Adds views of a record's members: a name, a member, and so on.
  template <typename Record, typename Member, typename... More>
  void ViewMembers(Record record, const char* name, Member member, More... more) {
    views[name] = [record, member] { return Texts(record().*member); };
    if constexpr (sizeof...(more) > 0) ViewMembers(record, more...);
  }
  void Walk(std::initializer_list<Step> steps) {
    for (const Step& step : steps) {
      const std::string before = See(step.seen);
      Do(step.gestures);
      const std::string after = See(step.seen);
      const std::string from = step.before == nullptr ? "" : step.before;
      EXPECT_EQ(step.after == "~" ? "~" : after, step.after) << step.seen << " after " << step.gestures;
      EXPECT_EQ(from == "~" || step.before == nullptr ? from : before, from)
          << step.seen << " before " << step.gestures;
      EXPECT_TRUE(before != after || from == after || *step.gestures == 0) << step.gestures << " did nothing";
    }
  }

  QWidget* driven = nullptr;
  using Verb = std::function<void(const std::string& name, const std::string& rest)>;
  std::map<std::string, Verb> verbs = {
      {"type", [this](const auto& name, const auto& text) { Type(name, text); }},
      {"tab", [this](const auto& name, const auto& text) { Type(name, text, Qt::Key_Tab); }},
      {"on", [this](const auto& name, const auto& text) { TypeOn(name, text); }},
      {"click", [this](const auto& name, const auto&) { Click(name); }},
      {"menu", [this](const auto& name, const auto&) { Find<QAction>(name)->trigger(); }},
      {"set",
       [this](const auto& name, const auto& index) { Find<QComboBox>(name)->setCurrentIndex(std::stoi(index)); }},
      {"choose", [this](const auto& name, const auto& index) { Choose(name, std::stoi(index)); }},
      {"pick",
       [this](const auto& name, const auto& text) {
         auto* list = Find<QListWidget>(name);
         const auto found = list->findItems(QString::fromStdString(text), Qt::MatchExactly);
         ASSERT_EQ(found.size(), 1) << text;
         list->setCurrentItem(found.front());
       }},
      {"key", [this](const auto& name, const auto& keys) {
         if (name != ".") Find<QWidget>(name)->setFocus();
         const QKeyCombination key = QKeySequence(QString::fromStdString(keys))[0];
         QTest::keyClick(name == "." ? QApplication::focusWidget() : Find<QWidget>(name), key.key(),
                         key.keyboardModifiers());
       }}};
  std::map<std::string, std::function<std::string()>> views = {{"focus", [] { return Focus(); }}};

private:
  void Choose(const std::string& name, int index) {
    auto* box = Find<QComboBox>(name);
    box->setFocus();
    while (box->currentIndex() < index) QTest::keyClick(box, Qt::Key_Down);
    while (box->currentIndex() > index) QTest::keyClick(box, Qt::Key_Up);
    QTest::keyClick(box, Qt::Key_Tab);
  }
  std::string SeeOne(const std::string& name) {
    const auto* seen = Find<QObject>(name);
    if (seen == nullptr) return "none";
    std::string text = seen->property("visible").toBool() ? "" : "hidden ";
    if (!seen->property("enabled").toBool()) text += "off ";
    if (seen->property("checkable").toBool())
      return text + (seen->property("checked").toBool() ? "checked" : "unchecked");
    const auto* list = qobject_cast<const QComboBox*>(seen);
    return text + (list != nullptr ? list->currentText() : seen->property("text").toString()).toStdString();
  }
};

// Nothing that it shows is clipped, and no two controls share an access key (Alt and a letter), unless they may.
inline void ExpectWellLaidOut(const QWidget& form, const QString& sharedKeys = {}) {
  QMap<QString, QString> owners;
  const auto expectOwnKey = [&](const QString& text) {
    const QString key = QKeySequence::mnemonic(text).toString();
    EXPECT_TRUE(key.isEmpty() || sharedKeys.contains(key.back()) || !owners.contains(key))
        << text.toStdString() << ", " << owners[key].toStdString();
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

// Tab reaches every control that takes it and comes round again, and assistive technology has a name for each.
inline void ExpectReachable(QWidget& form) {
  QSet<QWidget*> missing;
  for (QWidget* control : form.findChildren<QWidget*>()) {
    if (!control->isVisible() || !control->isEnabled() || (control->focusPolicy() & Qt::TabFocus) == 0) continue;
    if (control->focusProxy() != nullptr || control->window() != &form) continue;
    const auto* button = qobject_cast<QAbstractButton*>(control);
    const bool oneOfGroup = button != nullptr && button->isCheckable() && button->autoExclusive();
    if (!oneOfGroup || button->isChecked()) missing.insert(control); // the checked one stands for the group
    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
    EXPECT_TRUE(spoken != nullptr && !spoken->text(QAccessible::Name).isEmpty()) << control->objectName().toStdString();
  }
  const qsizetype most = 3 * missing.size() + 10;
  for (qsizetype i = 0; i < most && !missing.isEmpty(); ++i) {
    missing.remove(QApplication::focusWidget());
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus == nullptr ? &form : focus, Qt::Key_Tab);
  }
  for (const QWidget* control : missing) ADD_FAILURE() << "Tab does not reach " << control->objectName().toStdString();
}

} // namespace calder
