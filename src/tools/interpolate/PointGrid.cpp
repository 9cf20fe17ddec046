#include "tools/interpolate/PointGrid.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

namespace calder {
namespace {

constexpr int kRowLabels = 47; // logical pixels: five digits

} // namespace

PointGrid::PointGrid(QWidget* parent) : QTableView(parent), editor_(new QLineEdit(viewport())) {
  editor_->setObjectName(QStringLiteral("txtVal"));
  editor_->setFrame(true);
  editor_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  editor_->installEventFilter(this);
  editor_->hide();
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setSelectionBehavior(SelectRows);
  setTabKeyNavigation(false);
  setWordWrap(false);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  verticalHeader()->setFixedWidth(kRowLabels);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void PointGrid::OpenEditor(const QString& text, bool selected) {
  const QModelIndex cell = currentIndex();
  if (!cell.isValid() || !cells_.editable || !cells_.editable(cell.row())) return;
  ShowRefused(false);
  editor_->setText(text);
  editor_->setModified(!selected);
  if (selected) editor_->selectAll();
  scrollTo(cell);
  PlaceEditor();
  editor_->show();
  editor_->setFocus();
}

void PointGrid::PlaceEditor() {
  editor_->setGeometry(visualRect(currentIndex()).adjusted(0, 0, 1, 1));
}

void PointGrid::HideEditor() {
  if (editor_->isHidden()) return;
  const bool focused = editor_->hasFocus();
  editor_->setModified(false);
  editor_->hide();
  if (focused) setFocus();
}

bool PointGrid::TakeText() {
  if (editor_->isHidden()) return true;
  if (editor_->isModified()) {
    const QModelIndex cell = currentIndex();
    if (!cells_.take(cell.row(), cell.column(), editor_->text())) {
      ShowRefused(true);
      return false;
    }
  }
  HideEditor();
  return true;
}

void PointGrid::ShowRefused(bool refused) {
  editor_->setStyleSheet(refused ? QStringLiteral("QLineEdit { border: 1px solid #E05252; }") : QString());
}

void PointGrid::MoveCurrent(int rows, int cells) {
  const int last = std::max(cells_.filledRows() - 1, 0);
  const int row = std::clamp(currentIndex().row(), 0, last);
  const int column = std::max(currentIndex().column(), 0);
  const int place = std::clamp(2 * (row + rows) + column + cells, 0, 2 * last + 1);
  const bool outside = row + rows < 0 || row + rows > last;
  setCurrentIndex(model()->index(outside ? row : place / 2, outside ? column : place % 2));
}

bool PointGrid::eventFilter(QObject* watched, QEvent* event) {
  if (watched != editor_) return QTableView::eventFilter(watched, event);
  if (event->type() == QEvent::FocusOut) {
    if (static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) static_cast<void>(TakeText());
    return false;
  }
  if (event->type() == QEvent::ShortcutOverride) {
    event->accept(); // the box's own editing keys
    return false;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const auto commitAndMove = [this](int rows, int cells) {
    if (!TakeText()) return true;
    MoveCurrent(rows, cells);
    return true;
  };
  switch (key.key()) {
  case Qt::Key_Return:
  case Qt::Key_Enter:
  case Qt::Key_Down: return commitAndMove(1, 0);
  case Qt::Key_Up: return commitAndMove(-1, 0);
  case Qt::Key_Tab: return commitAndMove(0, 1);
  case Qt::Key_Backtab: return commitAndMove(0, -1);
  case Qt::Key_Left: return editor_->isModified() ? false : commitAndMove(0, -1);
  case Qt::Key_Right: return editor_->isModified() ? false : commitAndMove(0, 1);
  case Qt::Key_Escape: HideEditor(); return true;
  default: return false;
  }
}

void PointGrid::keyPressEvent(QKeyEvent* event) {
  const QString text = event->text();
  switch (event->key()) {
  case Qt::Key_Return:
  case Qt::Key_Enter:
  case Qt::Key_F2:
    OpenEditor(currentIndex().data().toString(), true);
    event->accept();
    return;
  case Qt::Key_Left: MoveCurrent(0, -1); return;
  case Qt::Key_Right: MoveCurrent(0, 1); return;
  case Qt::Key_Delete: Q_EMIT DeletePressed(); return;
  default: break;
  }
  if (event->matches(QKeySequence::Paste)) {
    Q_EMIT PastePressed();
    return;
  }
  const bool typed = !text.isEmpty() && text.front().isPrint() &&
                     (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::NoModifier;
  if (typed) {
    OpenEditor(text, false);
    return;
  }
  QTableView::keyPressEvent(event);
  // The first empty row is as far as the keys go.
  const int end = cells_.filledRows ? cells_.filledRows() : 0;
  if (currentIndex().row() > end) setCurrentIndex(model()->index(end, currentIndex().column()));
}

void PointGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  QTableView::mouseDoubleClickEvent(event);
  OpenEditor(currentIndex().data().toString(), true);
}

void PointGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  HideEditor();
}

void PointGrid::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  if (!editor_->isHidden()) PlaceEditor();
}

void PointGrid::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  if (!editor_->isHidden()) PlaceEditor();
}

} // namespace calder
