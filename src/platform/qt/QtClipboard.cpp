#include "platform/qt/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace calder {
namespace {

// Hands a source to the desktop; each format is made when it is asked for.
class OfferedData final : public QMimeData {
public:
  explicit OfferedData(std::shared_ptr<ClipboardSource> source) : source_(std::move(source)) {}

  [[nodiscard]] std::span<const std::byte> Bytes(const std::string& mime) const { return source_->Data(mime); }

  [[nodiscard]] QStringList formats() const override {
    QStringList list;
    for (const std::string& mime : source_->Formats()) {
      list << QString::fromStdString(mime);
      // Readers ask for plain text by this name.
      if (mime.starts_with("text/plain")) list << QStringLiteral("text/plain");
    }
    return list;
  }
  [[nodiscard]] bool hasFormat(const QString& mime) const override { return formats().contains(mime); }

protected:
  [[nodiscard]] QVariant retrieveData(const QString& mime, QMetaType type) const override {
    std::string wanted = mime.toStdString();
    if (wanted == "text/plain") wanted = "text/plain;charset=utf-8";
    const std::span<const std::byte> bytes = source_->Data(wanted);
    // The offer outlives the request, so the bytes need no copy of their own.
    const QByteArray data = QByteArray::fromRawData(static_cast<const char*>(static_cast<const void*>(bytes.data())),
                                                    static_cast<qsizetype>(bytes.size()));
    if (type.id() == QMetaType::QString) return QString::fromUtf8(data);
    return data;
  }

private:
  std::shared_ptr<ClipboardSource> source_;
};

} // namespace

bool QtClipboard::Offer(std::shared_ptr<ClipboardSource> source) {
  QClipboard* clipboard = QGuiApplication::clipboard();
  if (clipboard == nullptr) return false;
  clipboard->setMimeData(new OfferedData(std::move(source))); // the clipboard owns it
  return true;
}

bool QtClipboard::Available() const {
  return QGuiApplication::clipboard() != nullptr;
}

bool QtClipboard::Has(const std::string& mime) const {
  const QClipboard* clipboard = QGuiApplication::clipboard();
  if (clipboard == nullptr) return false;
  const QMimeData* data = clipboard->mimeData();
  if (data == nullptr) return false;
  return mime.starts_with("text/plain") ? data->hasText() : data->hasFormat(QString::fromStdString(mime));
}

std::optional<std::span<const std::byte>> QtClipboard::Read(const std::string& mime) {
  if (!Has(mime)) return std::nullopt;
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  if (data == nullptr) return std::nullopt;
  if (const auto* own = dynamic_cast<const OfferedData*>(data)) return own->Bytes(mime);
  lastRead_ = mime.starts_with("text/plain") ? data->text().toUtf8() : data->data(QString::fromStdString(mime));
  return std::as_bytes(std::span(lastRead_.constData(), static_cast<std::size_t>(lastRead_.size())));
}

} // namespace calder
