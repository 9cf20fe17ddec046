#include "platform/qt/CanvasAccessible.h"

#include "platform/qt/WaveformCanvas.h"

#include <QAccessibleWidget>

namespace calder {
namespace {

class CanvasAccessible final : public QAccessibleWidget {
public:
  explicit CanvasAccessible(WaveformCanvas* canvas) : QAccessibleWidget(canvas, QAccessible::Chart), canvas_(*canvas) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? canvas_.Spoken() : QAccessibleWidget::text(kind);
  }

private:
  const WaveformCanvas& canvas_;
};

QAccessibleInterface* Make(const QString& /*className*/, QObject* object) {
  auto* canvas = qobject_cast<WaveformCanvas*>(object);
  return canvas == nullptr ? nullptr : new CanvasAccessible(canvas); // the toolkit owns it
}

} // namespace

void InstallCanvasAccessibility() {
  QAccessible::installFactory(Make);
}

} // namespace calder
