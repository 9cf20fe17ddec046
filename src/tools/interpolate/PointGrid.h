// The grid of control points: the keys move the current cell within the filled rows, typing opens a box over it.
#pragma once

#include "platform/qt/EditedBox.h"

#include <QTableView>

#include <functional>

class QLineEdit;

namespace calder {

class PointGrid final : public QTableView, public EditedBox {
  Q_OBJECT

public:
  explicit PointGrid(QWidget* parent = nullptr);

  // What the grid asks about its cells; rows count from 0.
  struct Cells {
    std::function<bool(int row)> editable;
    std::function<int()> filledRows;
    // A text was typed. False: it is refused, and the box stays open.
    std::function<bool(int row, int column, const QString& text)> take;
  };
  void SetCells(Cells cells) { cells_ = std::move(cells); }

  // Takes the box's text; a refused one leaves the box open with a red edge.
  void Commit() override { static_cast<void>(TakeText()); }
  // Without taking its text.
  void HideEditor();

Q_SIGNALS:
  void DeletePressed();
  void PastePressed();

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void scrollContentsBy(int dx, int dy) override;
  void resizeEvent(QResizeEvent* event) override;

private:
  [[nodiscard]] bool TakeText();
  // text: what the box holds at first; all of it is selected when it is the cell's own.
  void OpenEditor(const QString& text, bool selected);
  void PlaceEditor();
  void MoveCurrent(int rows, int cells);
  void ShowRefused(bool refused);

  Cells cells_;
  QLineEdit* editor_;
};

} // namespace calder
