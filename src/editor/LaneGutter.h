// The bit numbers beside the lanes of the digital view, in line with them.
#pragma once

#include <QWidget>

#include <cstdint>

namespace calder {

class LaneGutter final : public QWidget {
  Q_OBJECT

public:
  explicit LaneGutter(QWidget* parent = nullptr);

  // bitCount: of the model; the numbers of further lanes are dim, those of selected bits bright. pictureHeight: of the
  // picture beside it in device pixels.
  void ShowLanes(std::uint16_t selectedBits, int bitCount, int pictureHeight);

protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

private:
  void FitWidth();

  std::uint16_t selectedBits_ = 0;
  int bitCount_ = 0;
  int pictureHeight_ = 0;
};

} // namespace calder
