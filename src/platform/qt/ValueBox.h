// A text box for one value. Its text is taken when the box is left or on Tab or Enter, and only when it was changed, so
// that a value shown with fewer digits than it has does not move by itself. Escape gives the shown text back. The
// menu's editing keys go to the menu, not to the box, and a file dropped on it is for the form.
#pragma once

#include "platform/qt/EditedBox.h"

#include <QLineEdit>

namespace calder {

class ValueBox final : public QLineEdit, public EditedBox {
  Q_OBJECT

public:
  explicit ValueBox(QWidget* parent = nullptr);

  // The text that the box shows when nothing is typed.
  void ShowText(const QString& text);
  // A blank cannot be typed.
  void RefuseBlanks() { refuseBlanks_ = true; }
  // Takes the text as leaving the box does. The focus stays, the whole text is selected.
  void Commit() override;
  // Wide enough for that many digits.
  void SetCharacters(int characters);

Q_SIGNALS:
  // The box was left with a changed text.
  void EditingFinished(const QString& text);
  // Tab or Enter: the focus has to move on.
  void FocusNext(bool backwards);

protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  bool focusNextPrevChild(bool next) override;

private:
  QString shown_;
  bool refuseBlanks_ = false;
  bool selectOnPress_ = false;
};

} // namespace calder
