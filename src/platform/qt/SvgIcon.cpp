#include "platform/qt/SvgIcon.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

namespace calder {
namespace {

constexpr int kSmall = 16;
constexpr int kLarge = 48;

// The toolkit's own engine is a plug-in that is searched, loaded and asked at every start; this one is here already.
class SvgIcon final : public QIconEngine {
public:
  explicit SvgIcon(QString file) : file_(std::move(file)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const double scale = painter->device()->devicePixelRatioF();
    QPixmap drawn = pixmap((QSizeF(rect.size()) * scale).toSize(), mode, state);
    drawn.setDevicePixelRatio(scale);
    painter->drawPixmap(rect, drawn);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    static_cast<void>(state); // on and off look the same: the button shows which
    const QString key = QStringLiteral("%1 %2 %3 %4").arg(file_).arg(size.width()).arg(size.height()).arg(mode);
    QPixmap drawn;
    if (QPixmapCache::find(key, &drawn)) return drawn;
    drawn = QPixmap(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    QSvgRenderer(file_).render(&painter);
    painter.end();
    if (mode != QIcon::Normal) {
      QStyleOption option;
      option.palette = QGuiApplication::palette();
      drawn = QApplication::style()->generatedIconPixmap(mode, drawn, &option);
    }
    QPixmapCache::insert(key, drawn);
    return drawn;
  }

  // What window managers are given; everybody else asks for the size that is wanted.
  QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
    static_cast<void>(mode), static_cast<void>(state);
    return {{kSmall, kSmall}, {kLarge, kLarge}};
  }

  [[nodiscard]] QIconEngine* clone() const override { return new SvgIcon(file_); } // NOLINT: the toolkit owns it
  bool isNull() override { return false; }
  QString key() const override { return QStringLiteral("calder"); }

private:
  QString file_;
};

} // namespace

QIcon IconNamed(const char* name) {
  return QIcon(new SvgIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)))); // NOLINT: the icon owns it
}

} // namespace calder
