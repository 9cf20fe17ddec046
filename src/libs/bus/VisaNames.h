// Names of USB instruments as VISA writes them, and the expressions that look for them.
//
// A name is USB[board]::vendor id::product id::serial number[::interface number][::INSTR]; the ids are hexadecimal with
// 0x, or decimal. Upper and lower case are equal, also in the serial number.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace calder {

struct UsbName {
  int board = 0;
  std::uint16_t vendor = 0;
  std::uint16_t product = 0;
  std::string serial;
  std::optional<int> interface; // unset: whichever the device has
};

// Nothing: it is not the name of a USB instrument.
[[nodiscard]] std::optional<UsbName> ParseUsbName(std::string_view name);

// USB0::0x1209::0x5530::1234567::INSTR, with the interface number only when it is set and not 0.
[[nodiscard]] std::string FormatUsbName(const UsbName& name);

// Whether two names mean the same instrument.
[[nodiscard]] bool SameInstrument(const UsbName& a, const UsbName& b);

// Whether a name fits an expression: ? is any one character, * after a character or a ? is any number of them, \ takes
// the meaning from the next character.
[[nodiscard]] bool MatchesVisaExpression(std::string_view expression, std::string_view name);

// False: the expression begins with a *, repeats one, or ends in a \.
[[nodiscard]] bool IsVisaExpression(std::string_view expression);

} // namespace calder
