#include "tools/interpolate/PointGridModel.h"

#include <QApplication>
#include <QPalette>

namespace calder {

PointGridModel::PointGridModel(const SplineDesk& desk, QString lastRowTip, QObject* parent)
    : QAbstractTableModel(parent), desk_(desk), lastRowTip_(std::move(lastRowTip)) {}

int PointGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kRows;
}

int PointGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : 2;
}

QVariant PointGridModel::data(const QModelIndex& index, int role) const {
  const int row = index.row() + 1;
  switch (role) {
  case Qt::DisplayRole:
    return QString::fromStdString(
        desk_.CellText(row, index.column() == 0 ? SplineDesk::Column::X : SplineDesk::Column::Y).c_str());
  case Qt::TextAlignmentRole: return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
  case Qt::ForegroundRole:
    if (row == desk_.Rows()) return QApplication::palette().color(QPalette::Disabled, QPalette::Text);
    return {};
  case Qt::ToolTipRole: return row == desk_.Rows() ? lastRowTip_ : QVariant();
  default: return {};
  }
}

QVariant PointGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section;
  return section == 0 ? QStringLiteral("X") : QStringLiteral("Y");
}

} // namespace calder
