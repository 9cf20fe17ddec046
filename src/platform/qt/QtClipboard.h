// The desktop's clipboard. A copy of this program reads its own offer where it lies, without a conversion.
#pragma once

#include "platform/Clipboard.h"

#include <QByteArray>

namespace calder {

class QtClipboard final : public Clipboard {
public:
  [[nodiscard]] bool Offer(std::shared_ptr<ClipboardSource> source) override;
  [[nodiscard]] bool Available() const override;
  [[nodiscard]] bool Has(const std::string& mime) const override;
  [[nodiscard]] std::optional<std::span<const std::byte>> Read(const std::string& mime) override;

private:
  QByteArray lastRead_;
};

} // namespace calder
