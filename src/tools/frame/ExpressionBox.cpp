#include "tools/frame/ExpressionBox.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMimeData>

namespace calder {
namespace {

bool Opens(QChar c) {
  return c == QLatin1Char('(') || c == QLatin1Char('[') || c == QLatin1Char('{');
}
bool Closes(QChar c) {
  return c == QLatin1Char(')') || c == QLatin1Char(']') || c == QLatin1Char('}');
}

} // namespace

ExpressionBox::ExpressionBox(QWidget* parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
  setWordWrapMode(QTextOption::WrapAnywhere);
  SetLines(4);
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, &ExpressionBox::ShowMarks);
}

void ExpressionBox::SetLines(int lines) {
  const bool single = lines == 1;
  setLineWrapMode(single ? NoWrap : WidgetWidth);
  for (const auto set : {&ExpressionBox::setHorizontalScrollBarPolicy, &ExpressionBox::setVerticalScrollBarPolicy})
    (this->*set)(single ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
  setFixedHeight(fontMetrics().lineSpacing() * lines + 12);
}

QString ExpressionBox::OneLine(const QString& text) const {
  QStringList lines = QString(text).replace(QLatin1Char('\r'), QLatin1Char('\n')).split(QLatin1Char('\n'));
  for (qsizetype i = 0; i + 1 < lines.size() && !comment_.isNull(); ++i) {
    if (const qsizetype mark = lines[i].indexOf(comment_); mark >= 0) lines[i].truncate(mark);
  }
  return lines.join(QLatin1Char(' '));
}

QString ExpressionBox::Text() const {
  return OneLine(toPlainText());
}

void ExpressionBox::ShowText(const QString& text) {
  fault_ = -1;
  if (Text() != text) setPlainText(text);
  ShowMarks();
}

void ExpressionBox::MarkFault(int position) {
  fault_ = position;
  ShowMarks();
}

void ExpressionBox::GoTo(int position) {
  QTextCursor cursor = textCursor();
  cursor.setPosition(std::clamp(position, 0, static_cast<int>(toPlainText().size())));
  setTextCursor(cursor);
  setFocus();
}

void ExpressionBox::Insert(const QString& text) {
  if (Text().size() + text.size() > maxLength_) return;
  insertPlainText(text);
  if (text.endsWith(QLatin1String("()"))) moveCursor(QTextCursor::PreviousCharacter);
}

bool ExpressionBox::event(QEvent* event) {
  // The editing keys are the menu's where the window has one: the box declines to override the shortcut.
  if (event->type() == QEvent::ShortcutOverride &&
      (static_cast<QKeyEvent*>(event)->modifiers() & Qt::ControlModifier) != 0) {
    event->ignore();
    return false;
  }
  return QPlainTextEdit::event(event);
}

void ExpressionBox::focusInEvent(QFocusEvent* event) {
  QPlainTextEdit::focusInEvent(event);
  if (!selectsAll_ || event->reason() == Qt::PopupFocusReason || event->reason() == Qt::OtherFocusReason) return;
  selectAll();
  selectOnPress_ = event->reason() == Qt::MouseFocusReason;
}

// The press that brought the focus would leave a cursor where the whole text is to be selected.
void ExpressionBox::mousePressEvent(QMouseEvent* event) {
  QPlainTextEdit::mousePressEvent(event);
  if (selectOnPress_) selectAll();
  selectOnPress_ = false;
}

void ExpressionBox::focusOutEvent(QFocusEvent* event) {
  QPlainTextEdit::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) Commit();
}

void ExpressionBox::insertFromMimeData(const QMimeData* source) {
  const qsizetype room = maxLength_ - toPlainText().size() + textCursor().selectedText().size();
  insertPlainText(OneLine(source->text()).left(std::max<qsizetype>(room, 0)));
}

void ExpressionBox::keyPressEvent(QKeyEvent* event) {
  const bool line = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (line) {
    focusNextChild();
    return;
  }
  const bool types = !event->text().isEmpty() && event->text().at(0).isPrint();
  if (types && !textCursor().hasSelection() && toPlainText().size() >= maxLength_) return;
  QPlainTextEdit::keyPressEvent(event);
}

int ExpressionBox::Partner(int position) const {
  const QString text = toPlainText();
  if (position < 0 || position >= text.size()) return -1;
  const int step = Opens(text[position]) ? 1 : Closes(text[position]) ? -1 : 0;
  if (step == 0) return -1;
  int depth = 0;
  for (int i = position; i >= 0 && i < text.size(); i += step) {
    if (Opens(text[i])) depth += step;
    if (Closes(text[i])) depth -= step;
    if (depth == 0) return i;
  }
  return -1;
}

void ExpressionBox::ShowMarks() {
  QList<QTextEdit::ExtraSelection> marks;
  const auto mark = [&](int position, const QTextCharFormat& format) {
    QTextEdit::ExtraSelection selection;
    selection.cursor = textCursor();
    selection.cursor.setPosition(position);
    selection.cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    selection.format = format;
    marks.append(selection);
  };
  const QString text = toPlainText();
  // The parenthesis before the cursor, else the one after it.
  for (const int position : {textCursor().position() - 1, textCursor().position()}) {
    if (position < 0 || position >= text.size() || !(Opens(text[position]) || Closes(text[position]))) continue;
    const int partner = Partner(position);
    QTextCharFormat format;
    format.setBackground(partner >= 0 ? QColor(0x2A, 0x4A, 0x6B) : QColor(0x7A, 0x2E, 0x2E));
    mark(position, format);
    if (partner >= 0) mark(partner, format);
    break;
  }
  if (fault_ >= 0 && !text.isEmpty()) {
    QTextCharFormat format;
    format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    format.setUnderlineColor(QColor(0xFF, 0x7A, 0x6E));
    format.setBackground(QColor(0x4A, 0x25, 0x25));
    mark(std::min(fault_, static_cast<int>(text.size()) - 1), format);
  }
  setExtraSelections(marks);
}

} // namespace calder
