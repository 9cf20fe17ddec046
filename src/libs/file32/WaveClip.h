// A waveform on the clipboard: the exact codes for a copy of this program, and a text for everybody else.
// docs/file-formats.md has the layout and the rules for foreign text.
#pragma once

#include "libs/file32/RealText.h"
#include "platform/Clipboard.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

inline constexpr const char* CLIP_EXACT_FORMAT = "application/x-calder-waveform";
inline constexpr const char* CLIP_TEXT_FORMAT = "text/plain;charset=utf-8";
inline constexpr const char* CLIP_PLAIN_TEXT_FORMAT = "text/plain";

// What a copy command offers. Its memory is kept from one waveform to the next.
class WaveClip final : public ClipboardSource {
public:
  void Assign(std::span<const std::int16_t> codes);

  [[nodiscard]] std::vector<std::string> Formats() const override;
  // The text is made when it is asked for first.
  [[nodiscard]] std::span<const std::byte> Data(const std::string& mime) override;

private:
  std::vector<std::byte> exact_; // only ever grows; exactBytes_ of it are valid
  std::size_t exactBytes_ = 0;
  std::vector<char> text_;
  std::size_t textBytes_ = 0; // 0: not made yet
};

// The codes, two bytes each, lowest byte first, in bytes of CLIP_EXACT_FORMAT; none when the bytes are not sound.
[[nodiscard]] std::optional<std::span<const std::byte>> ExactClipCodes(std::span<const std::byte> bytes);

// The first `most` points of a text into `codes`; `reals` is scratch. False when the text is not numbers.
[[nodiscard]] bool ParseClipText(std::string_view text, std::size_t most, std::vector<std::int16_t>& codes,
                                 RealValues& reals);

} // namespace calder
