#include "PlotPeer.h"

#include <qcustomplot.h>

#include <memory>

namespace calder {

std::function<void()> MakePlotPeer(std::span<const std::int16_t> points, int width, int height) {
  auto plot = std::make_shared<QCustomPlot>();
  plot->resize(width, height);
  plot->setViewport(QRect(0, 0, width, height));
  QCPGraph* graph = plot->addGraph();
  const auto data = QSharedPointer<QCPGraphDataContainer>::create();
  QVector<QCPGraphData> values;
  values.reserve(static_cast<qsizetype>(points.size()));
  for (std::size_t i = 0; i < points.size(); ++i) values.append(QCPGraphData(static_cast<double>(i), points[i]));
  data->set(values, true);
  graph->setData(data);
  plot->xAxis->setRange(0, static_cast<double>(points.size()));
  plot->yAxis->setRange(-32767, 32767);
  return [plot] { plot->replot(QCustomPlot::rpImmediateRefresh); };
}

} // namespace calder
