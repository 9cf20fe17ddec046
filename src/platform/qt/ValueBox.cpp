#include "platform/qt/ValueBox.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMimeData>

namespace calder {

ValueBox::ValueBox(QWidget* parent) : QLineEdit(parent) {
  SetCharacters(10);
}

void ValueBox::ShowText(const QString& text) {
  shown_ = text;
  if (text != this->text()) {
    setText(text);
    if (hasFocus()) {
      selectAll();
    } else {
      setCursorPosition(0);
    }
  }
}

void ValueBox::SetCharacters(int characters) {
  const int digits = fontMetrics().horizontalAdvance(QString(characters, QLatin1Char('0')));
  const QMargins margins = textMargins();
  setFixedWidth(digits + margins.left() + margins.right() + 14);
}

bool ValueBox::event(QEvent* event) {
  // The editing keys are the menu's: the box declines to override the shortcut.
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if ((key->modifiers() & Qt::ControlModifier) != 0) {
      event->ignore();
      return false;
    }
  }
  return QLineEdit::event(event);
}

void ValueBox::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
  case Qt::Key_U: // with Ctrl the toolkit's box empties itself: where Undo cannot be chosen nothing is to happen
    if ((event->modifiers() & Qt::ControlModifier) == 0) QLineEdit::keyPressEvent(event);
    return;
  case Qt::Key_Space:
    if (!refuseBlanks_) QLineEdit::keyPressEvent(event);
    event->accept();
    return;
  case Qt::Key_Return:
  case Qt::Key_Enter:
    Commit();
    Q_EMIT FocusNext(false);
    event->accept();
    return;
  case Qt::Key_Escape:
    if (text() == shown_) { // nothing to take back: for the form
      event->ignore();
      return;
    }
    setText(shown_);
    selectAll();
    event->accept();
    return;
  default: QLineEdit::keyPressEvent(event);
  }
}

void ValueBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  selectAll();
  selectOnPress_ = event->reason() == Qt::MouseFocusReason;
}

// The press that brought the focus would leave a cursor where the whole text is to be selected.
void ValueBox::mousePressEvent(QMouseEvent* event) {
  QLineEdit::mousePressEvent(event);
  if (selectOnPress_) selectAll();
  selectOnPress_ = false;
}

// Files come with their names as text, which the box would take.
void ValueBox::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) {
    event->ignore();
  } else {
    QLineEdit::dragEnterEvent(event);
  }
}

void ValueBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) Commit();
}

// Tab is as Enter where somebody decides where the focus goes; else it follows the tab order.
bool ValueBox::focusNextPrevChild(bool next) {
  if (!next || !isSignalConnected(QMetaMethod::fromSignal(&ValueBox::FocusNext)))
    return QLineEdit::focusNextPrevChild(next);
  Commit();
  Q_EMIT FocusNext(false);
  return true;
}

void ValueBox::Commit() {
  if (text() == shown_) return;
  setModified(false); // whoever takes the text may show another one at once
  Q_EMIT EditingFinished(text());
  // A refused text leaves what was shown.
  setText(shown_);
  if (hasFocus()) selectAll(); // what is typed next replaces it
}

} // namespace calder
