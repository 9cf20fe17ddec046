// The page that will be printed, small: what is on it is drawn by the report itself.
#pragma once

#include <QPageLayout>
#include <QPicture>
#include <QWidget>

#include <deque>

namespace calder {

class PagePreview final : public QWidget {
  Q_OBJECT

public:
  explicit PagePreview(QWidget* parent = nullptr);

  // Pages at kPreviewResolution; the shown one stays shown as far as there are so many.
  void ShowPages(const QPageLayout& layout, std::deque<QPicture> pages);
  // A sentence on the page instead.
  void ShowSentence(const QString& sentence);
  [[nodiscard]] int Pages() const { return static_cast<int>(pages_.size()); }
  [[nodiscard]] int Current() const { return current_; } // from 0
  void GoTo(int page);

  [[nodiscard]] QSize sizeHint() const override { return {320, 440}; }

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  QPageLayout layout_;
  std::deque<QPicture> pages_;
  int current_ = 0;
  QString sentence_;
};

} // namespace calder
