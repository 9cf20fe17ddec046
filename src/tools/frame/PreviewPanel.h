// A preview with its numbers: a heading and the value under the pointer above the picture, Y values beside it, X values
// below it.
#pragma once

#include "platform/qt/WaveformCanvas.h"
#include "tools/frame/WavePreview.h"

#include <QWidget>

class QLabel;

namespace calder {

class PreviewPanel final : public QWidget {
  Q_OBJECT

public:
  explicit PreviewPanel(QWidget* parent = nullptr);

  // The names by which captions and tests find the parts: Picture_ for the picture, Label_ for the heading,
  // Label_Value_ for the value under the pointer, each followed by `name`. To be called before the captions are set.
  void NameParts(const char* name);
  [[nodiscard]] WaveformCanvas& Picture() { return *picture_; }

  // Y values in the current unit, and its name.
  void ShowY(const PreviewLabels& labels, const QString& unit);
  // The X values at both edges, with their unit; before the first call there is no room for them.
  void ShowX(const QString& start, const QString& end);
  // The value under the pointer; empty: none.
  void ShowValue(const QString& value);

Q_SIGNALS:
  // The pointer is over that column of the picture, in device pixels; -1: it has left the picture.
  void Pointed(int column);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  QLabel* heading_;
  QLabel* value_;
  QLabel* max_;
  QLabel* middle_;
  QLabel* min_;
  QLabel* start_;
  QLabel* end_;
  WaveformCanvas* picture_;
};

} // namespace calder
