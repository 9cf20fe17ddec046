// One table of a model's command definitions, turned into command texts with values.
//
// A definition is a row of up to four columns (docs/models.md lists the keys). An accessor of a key that the table
// lacks gives an empty text; a mask 0, a flag false.
#pragma once

#include "libs/sysinf32/sysinf32.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

class MessageBoxes;

// A value for a template: nothing, a number, or a text that may be one.
class CommandValue {
public:
  CommandValue() = default;
  CommandValue(double number) : number_(number), given_(true) {}           // NOLINT(google-explicit-constructor)
  CommandValue(std::string text) : text_(std::move(text)), given_(true) {} // NOLINT(google-explicit-constructor)
  [[nodiscard]] bool Given() const { return given_; }
  // By a number-format picture ("0" a digit always, "#" one when needed); a text that is no number stays as it is.
  [[nodiscard]] std::string Format(const std::string& picture) const;

private:
  std::optional<double> number_;
  std::string text_;
  bool given_ = false;
};

class clsGpibCommand {
public:
  static constexpr int kColumns = 4;
  using Row = std::array<std::string, kColumns>;

  // A query and where its reply holds the field.
  struct ReplyField {
    std::string command;
    int start = 0; // 1-based, in characters
    int length = 0;
    std::string expected; // of Model only
  };

  explicit clsGpibCommand(MessageBoxes& boxes) : boxes_(boxes) {}

  // What the placeholders stand for: $ARBNUM$, $ARBNAME$ and $CH$ (the channel index plus 1).
  int MemoryNo = 0;
  std::string MemoryName;
  int Channel = 0;

  // Loads rows up to the first empty key. With reset all definitions are forgotten first, without it rows overwrite
  // only the keys that they name. An unknown key is shown in a box, and loading goes on.
  void SetUp(bool reset, const std::vector<std::string>& keys, const std::vector<Row>& values);
  // Loads a table of the model database. A table without "arbsend" takes the waveform command from defaultArbCommand:
  // "command" or "preparation, command".
  void Fill(const CommandTable& table, int rows, const std::string& defaultArbCommand);

  [[nodiscard]] ReplyField Maker() const { return Field("maker"); }
  [[nodiscard]] ReplyField Model() const { return Field("model"); }
  [[nodiscard]] ReplyField Serial() const { return Field("serial"); }
  [[nodiscard]] ReplyField Version() const { return Field("version"); }

  [[nodiscard]] std::string Preset() const { return Plain("preset"); }
  [[nodiscard]] std::string HeaderOff() const { return Plain("headoff"); }
  [[nodiscard]] std::string DcOffsetOn() const { return Plain("ofson"); }
  [[nodiscard]] std::string DcOffsetOff() const { return Plain("ofsoff"); }
  [[nodiscard]] std::string ArbFormat() const { return Plain("arbfmt"); }
  [[nodiscard]] std::string GetStatus() const { return Plain("getsts"); }
  [[nodiscard]] std::string GetErrorMessage() const { return Plain("geterr"); }
  [[nodiscard]] std::string SendGpibCommand() const { return Plain("gpibcmd"); }

  // Values: the channel's number from 1, hertz, the range's position from 0, volts peak to peak or peak, volts.
  [[nodiscard]] std::string channel(const CommandValue& value = {}) const { return Formatted("channel", value); }
  [[nodiscard]] std::string frequency(const CommandValue& value = {}) const { return Formatted("freq", value); }
  [[nodiscard]] std::string AmplitudeRange(const CommandValue& value = {}) const { return Formatted("amprng", value); }
  [[nodiscard]] std::string AmplitudeLevel(const CommandValue& value = {}) const { return Formatted("amp", value); }
  [[nodiscard]] std::string DcOffsetLevel(const CommandValue& value = {}) const { return Formatted("offset", value); }
  [[nodiscard]] std::string OutputOn() const { return Formatted("outon", {}); }
  [[nodiscard]] std::string OutputOff() const { return Formatted("outoff", {}); }
  [[nodiscard]] std::string ArbPreCommand() const;
  [[nodiscard]] std::string ArbSend(const CommandValue& value = {}) const { return Formatted("arbsend", value); }
  [[nodiscard]] std::string ArbStartAddress(const CommandValue& value = {}) const { return Formatted("arbstt", value); }
  [[nodiscard]] std::string ArbSize(const CommandValue& value = {}) const { return Formatted("arbsize", value); }
  // The bank offset of the table is added.
  [[nodiscard]] std::string ArbBank(std::optional<double> value = {}) const;
  [[nodiscard]] std::string ArbName(std::string_view name) const;

  [[nodiscard]] std::string DcOffset(int flag) const { return flag != 0 ? DcOffsetOn() : DcOffsetOff(); }
  // 0 on, 1 off, any other state nothing.
  [[nodiscard]] std::string Output(int state) const;
  // Any text but "true" and none is shown in a box.
  [[nodiscard]] bool ArbByteSwap() const;
  [[nodiscard]] std::uint32_t ArbBitMask() const { return Mask("arbmask"); }
  [[nodiscard]] std::uint16_t ErrorMask() const { return static_cast<std::uint16_t>(Mask("errmask")); }

private:
  [[nodiscard]] const Row& Get(std::string_view key) const;
  [[nodiscard]] std::string Plain(std::string_view key) const { return Get(key)[0]; }
  [[nodiscard]] std::string Formatted(std::string_view key, const CommandValue& value) const;
  [[nodiscard]] std::string ReplacePlaceholders(std::string_view text) const;
  [[nodiscard]] ReplyField Field(std::string_view key) const;
  [[nodiscard]] std::uint32_t Mask(std::string_view key) const;

  MessageBoxes& boxes_;
  std::map<std::string, Row, std::less<>> rows_;
};

// Decimal text, or hexadecimal after "0x" in any case; what is no number is 0.
[[nodiscard]] std::uint32_t ParseCommandMask(std::string_view text);

} // namespace calder
