// The control points as rows of a table: a view over the arrays, which asks for the texts of the rows that it shows.
#pragma once

#include "tools/interpolate/SplineDesk.h"

#include <QAbstractTableModel>

namespace calder {

// Row r of the model is row r + 1 of the desk; column 0 is X, 1 is Y.
class PointGridModel final : public QAbstractTableModel {
  Q_OBJECT

public:
  static constexpr int kRows = SplinePoints::kMost;

  // lastRowTip: over the last point.
  PointGridModel(const SplineDesk& desk, QString lastRowTip, QObject* parent);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  // The points changed.
  void Refresh() { Q_EMIT dataChanged(index(0, 0), index(kRows - 1, 1)); }

private:
  const SplineDesk& desk_;
  const QString lastRowTip_;
};

} // namespace calder
