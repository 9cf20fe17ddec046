// How fast a transfer goes and how long it still takes, as a line of text.
#pragma once

#include "app/Messages.h"

#include <cstddef>
#include <string>

namespace calder {

// "1.20 MB/s, 3 s left", and "1.20 MB/s" when all is sent. seconds: since before the first byte. Empty until there is
// something to show.
[[nodiscard]] std::string TransferRateText(std::size_t bytes, std::size_t total, double seconds, Language language);

// "3 s left", after the rate when there is one.
[[nodiscard]] std::string SecondsLeftText(long seconds, Language language, const std::string& rate = {});

} // namespace calder
