// What goes between the editor and the helper process that runs a plug-in: packets on a socket, and memory that both
// see for codes and texts.
//
// The editor asks, the helper answers, one packet each. Texts and lists lie in the shared text area, where the sender
// of the packet has put them. Neither side takes the other's numbers on trust: the plug-in may have written anything
// into the helper's memory.
#pragma once

#include "calder_plugin.h"
#include "libs/pluginsp/PluginForm.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

// The helper finds them open under these numbers.
inline constexpr int kHelperSocket = 3;
inline constexpr int kHelperMemory = 4;

enum class PluginCall : std::uint32_t {
  Identify, // answered by three texts: applications, names, extension; see PluginIdentity
  Open,     // language, path
  Options,  // answered by the form
  Set,      // key, value; answered by the form
  Start,    // answered by number: points, other: start offset
  Seek,     // number: start offset
  Read,     // answered by number: points in the codes
  Report,   // answered by the text
  Close,
};

struct PluginPacket {
  std::uint32_t what = 0; // the editor's: a PluginCall; the helper's: a PluginFault::Kind, with the text in the area
  std::int32_t number = 0;
  std::int32_t other = 0;
  std::uint32_t length = 0; // bytes of the text area that belong to the packet
};

// How much one answer to Read holds at most: enough that the way between the processes does not count.
inline constexpr std::int32_t kBatchBlocks = 64;
inline constexpr std::int32_t kBatchPoints = kBatchBlocks * CALDER_PLUGIN_BLOCK;

struct PluginArea {
  std::atomic<std::uint32_t> alive{0};    // counts up at every sign of life of the plug-in
  std::atomic<std::uint32_t> progress{0}; // of the present call, of kWholeProgress
  std::array<std::int16_t, static_cast<std::size_t>(kBatchPoints)> codes{};
  std::array<char, (std::size_t{1} << 20) + 4096> text{};
};
inline constexpr std::uint32_t kWholeProgress = 10000;
static_assert(std::atomic<std::uint32_t>::is_always_lock_free);

inline constexpr std::size_t kMostReportBytes = std::size_t{1} << 20;
inline constexpr std::size_t kMostPreviewBytes = std::size_t{1} << 16;
inline constexpr std::size_t kMostReasonBytes = 1000;
inline constexpr std::size_t kMostShortBytes = 4096; // captions, keys, all choices of an option
inline constexpr std::size_t kMostOptions = 32;

struct PluginIdentity {
  std::string applications;
  std::string name;
  std::string japaneseName;
  std::string extension;
};

// Puts values one after the other into a fixed room; what does not fit is left out, and Ok says so.
class PluginWriter {
public:
  explicit PluginWriter(std::span<char> room) : room_(room) {}
  void Number(double value);
  // At most `most` bytes of it, cut at a whole character.
  void Text(std::string_view text, std::size_t most);
  [[nodiscard]] bool Ok() const { return ok_; }
  [[nodiscard]] std::uint32_t Length() const { return static_cast<std::uint32_t>(filled_); }

private:
  void Raw(std::span<const char> bytes);

  std::span<char> room_;
  std::size_t filled_ = 0;
  bool ok_ = true;
};

// Takes them out again. After a value that is not there everything is empty, and Ok says so.
class PluginReader {
public:
  explicit PluginReader(std::string_view bytes) : left_(bytes) {}
  [[nodiscard]] double Number();
  [[nodiscard]] std::string Text();
  [[nodiscard]] bool Ok() const { return ok_; }

private:
  std::string_view left_;
  bool ok_ = true;
};

// The first bytes of the text, not more than `most`, without the half of a character at the end.
[[nodiscard]] std::string_view CutText(std::string_view text, std::size_t most);

// The form as the helper writes it; what a plug-in may not say (a choice without a text, too many options) is refused.
[[nodiscard]] bool WriteForm(const calder_form& form, PluginWriter& writer);
// None: the bytes are no form. Values outside of their limits are brought into them.
[[nodiscard]] std::optional<PluginForm> ReadForm(std::string_view bytes);

void WriteIdentity(const calder_plugin& plugin, PluginWriter& writer);
[[nodiscard]] std::optional<PluginIdentity> ReadIdentity(std::string_view bytes);

} // namespace calder
