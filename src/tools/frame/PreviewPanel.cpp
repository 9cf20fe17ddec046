#include "tools/frame/PreviewPanel.h"

#include "platform/qt/Text.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>

namespace calder {
namespace {

constexpr int kValueCharacters = 24; // room for "X 500.000m, Y -1.25000 V"
constexpr int kNumberCharacters = 9; // of the Y values, so that the pictures of one form stand in one line

} // namespace

PreviewPanel::PreviewPanel(QWidget* parent)
    : QWidget(parent), heading_(new QLabel(this)), value_(new QLabel(this)), max_(new QLabel(this)),
      middle_(new QLabel(this)), min_(new QLabel(this)), start_(new QLabel(this)), end_(new QLabel(this)),
      picture_(new WaveformCanvas(this)) {
  auto* layout = new QGridLayout(this); // NOLINT(cppcoreguidelines-owning-memory): the panel owns it
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setHorizontalSpacing(6);
  layout->setVerticalSpacing(2);
  layout->addWidget(heading_, 0, 1);
  layout->addWidget(value_, 0, 2);
  layout->addWidget(max_, 1, 0, Qt::AlignRight | Qt::AlignTop);
  layout->addWidget(middle_, 2, 0, Qt::AlignRight | Qt::AlignVCenter);
  layout->addWidget(min_, 3, 0, Qt::AlignRight | Qt::AlignBottom);
  layout->addWidget(picture_, 1, 1, 3, 2);
  layout->addWidget(start_, 4, 1, Qt::AlignLeft);
  layout->addWidget(end_, 4, 2, Qt::AlignRight);
  for (const int row : {1, 2, 3}) layout->setRowStretch(row, 1);
  layout->setColumnStretch(2, 1);
  layout->setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(QString(kNumberCharacters, QLatin1Char('0'))));
  // It changes with every move of the pointer, which is to move nothing else.
  value_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  value_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  value_->setMinimumWidth(fontMetrics().horizontalAdvance(QString(kValueCharacters, QLatin1Char('0'))));
  for (QLabel* label : {start_, end_}) label->hide();
  picture_->setMinimumSize(160, 3 * max_->sizeHint().height()); // three numbers stand beside it
  picture_->installEventFilter(this);
  connect(picture_, &WaveformCanvas::Moved, this, [this](QPoint pixel) { Q_EMIT Pointed(pixel.x()); });
}

void PreviewPanel::NameParts(const char* name) {
  const QLatin1String suffix(name);
  picture_->setObjectName(QLatin1String("Picture_") + suffix);
  heading_->setObjectName(QLatin1String("Label_") + suffix);
  value_->setObjectName(QLatin1String("Label_Value_") + suffix);
}

void PreviewPanel::ShowY(const PreviewLabels& labels, const QString& unit) {
  const QString end = unit.isEmpty() ? QString() : QLatin1Char(' ') + unit;
  max_->setText(Text(labels.max) + end);
  middle_->setText(Text(labels.offset) + end);
  min_->setText(Text(labels.min) + end);
}

void PreviewPanel::ShowX(const QString& start, const QString& end) {
  start_->setText(start);
  end_->setText(end);
  for (QLabel* label : {start_, end_}) label->show();
}

void PreviewPanel::ShowValue(const QString& value) {
  value_->setText(value);
}

bool PreviewPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == picture_ && event->type() == QEvent::Leave) Q_EMIT Pointed(-1);
  return QWidget::eventFilter(watched, event);
}

} // namespace calder
