// A text box for an expression, its constants or a bit pattern: marks the parenthesis that belongs to the one at the
// cursor, underlines the place of a fault. Tab moves on; the text has no line breaks of its own. Keys of the window's
// menu go to the menu.
#pragma once

#include "platform/qt/EditedBox.h"

#include <QPlainTextEdit>

namespace calder {

class ExpressionBox final : public QPlainTextEdit, public EditedBox {
  Q_OBJECT

public:
  explicit ExpressionBox(QWidget* parent = nullptr);

  // How many lines are seen, 4 at first; one line does not wrap.
  void SetLines(int lines);
  // What follows this mark in a line is a comment: it goes when lines are joined.
  void SetCommentMark(QChar mark) { comment_ = mark; }
  // The whole text is selected when the box gets the focus.
  void SelectAllOnFocus() { selectsAll_ = true; }
  // Typing stops at that many characters; what is too long to paste is cut.
  void SetMaxLength(int characters) { maxLength_ = characters; }
  // The text in one line.
  [[nodiscard]] QString Text() const;
  void ShowText(const QString& text);
  [[nodiscard]] QString SelectedText() const { return textCursor().selectedText(); }
  // Underlines the character at that position; below 0: none.
  void MarkFault(int position);
  // Puts the cursor there and takes the focus.
  void GoTo(int position);
  void Commit() override { Q_EMIT EditingFinished(); }
  // Replaces the selection; a "()" at the end leaves the cursor between the two.
  void Insert(const QString& text);

Q_SIGNALS:
  void EditingFinished();

protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  void keyPressEvent(QKeyEvent* event) override;

private:
  [[nodiscard]] QString OneLine(const QString& text) const;
  void ShowMarks();
  [[nodiscard]] int Partner(int position) const;

  int maxLength_ = 1024;
  int fault_ = -1;
  QChar comment_; // null: none
  bool selectsAll_ = false;
  bool selectOnPress_ = false;
};

} // namespace calder
