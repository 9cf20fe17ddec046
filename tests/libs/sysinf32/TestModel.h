// A small model for tests.
#pragma once

#include "Testing.h"

#include <string_view>

namespace calder::test {

// Two channels: A with its own frequency, B with its own single range.
inline constexpr std::string_view kModelText = R"(name = "TM1"
interfaces = ["NI GPIB 2", "USBTMC"]
data_bits = 14
offset_switch = true
default_arb_command = ":PRE, :SEND"

[address]
default = 5
ni_gpib = [1, 20]
usb488 = [4, 99]

[memory]
sizes = [8192, 1024, 1500]
number = { min = 1, max = 9, default = 3 }
name = { default = "WAVE" }

[frequency]
min = 0.5
max = 2e6
default = 1000
resolution = 0.01
period_resolution = 1e-9

[[range]]
name = "wide"
amplitude = { min = 0.1, max = 20, default = 2, resolution = 0.005 }
offset = { min = -10, max = 10, default = 1, resolution = 0.002 }

[[range]]
name = "narrow"
amplitude = { min = 0, max = 2, default = 1 }
offset = { min = -1, max = 1, default = 0.25 }

[[channel]]
name = "A"
frequency = { min = 1, max = 100, default = 50 }

[[channel]]
name = "B"
[[channel.range]]
name = "lopsided"
amplitude = { min = 0, max = 11, default = 1 }
offset = { min = -3.3, max = 7.7, default = 0 }

[[frequency_warning]]
above = 1e6
up_to = 2e6
channel = "B"
japanese = "速い"
english = "fast"

[defaults]
range = "narrow"
output = "on"
polarity = "Inv 0/+FS"
offset_on = true
amplitude = 0.5

[start]
channel = "B"
range = "lopsided"
output = "off"
frequency = 20000

[commands.common]
model = "*IDN?, 1, 3, TM1"
getsts = "*ESR?"
errmask = "60"

[commands.closing]
outon = ":OUTP$CH$ ON"

[commands.oscillator]
freq = ":FREQ, 0.###"
amp = ":VOLT, 0.####"

[commands.waveform]
arbbank = "BANK, 0, -1"
arbmask = "0xFFFC"
arbname = ":NAME 0x20 0x22 _$Name 0x22, 8"
arbsend = '":TRAC 1,2:DATA $ARBNUM$"'
)";

} // namespace calder::test
