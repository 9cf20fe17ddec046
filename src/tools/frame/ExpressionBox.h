// A text box for an expression or its constants: marks the parenthesis that belongs to the one at the cursor,
// underlines the place of a fault. Tab moves on; the text has no line breaks of its own.
#pragma once

#include "platform/qt/EditedBox.h"

#include <QPlainTextEdit>

namespace calder {

class ExpressionBox final : public QPlainTextEdit, public EditedBox {
  Q_OBJECT

public:
  explicit ExpressionBox(QWidget* parent = nullptr);

  // Typing stops at that many characters; what is too long to paste is cut.
  void SetMaxLength(int characters) { maxLength_ = characters; }
  // The text in one line.
  [[nodiscard]] QString Text() const;
  void ShowText(const QString& text);
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
  void focusOutEvent(QFocusEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  void keyPressEvent(QKeyEvent* event) override;

private:
  void ShowMarks();
  [[nodiscard]] int Partner(int position) const;

  int maxLength_ = 1024;
  int fault_ = -1;
};

} // namespace calder
