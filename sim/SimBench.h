// The simulated bench: one of each instrument on a GPIB board, on USB488 and, for those that have it, on USBTMC.
//
// The bus libraries beside this one (libni4882.so, libieee_32m.so, libusb488ps.so, libvisa.so.0) are thin: every call
// ends here. A process has one bench, whichever of them it loads, and a test program that links this library looks at
// the same bench. The instruments' addresses, which are also their USB488 numbers, are listed in bench.txt, which the
// build makes of the models' list. Models without commands of their own here are as their files in the folder models
// beside this library describe them.
//
// A program that does not link it is reached by the environment, read at the first call:
//   CALDER_SIM_SCRIPT   a file with lines for Script()
//   CALDER_SIM_TRAFFIC  a file that gets the lines of Traffic() as they happen
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calder::sim {

// Instruments as switched on with empty memories, the buses at rest; traffic, messages, faults and the count of calls
// are forgotten, and time passes for real again.
void Reset();

// Adds faults, one a line; empty lines and lines that begin with # are skipped. CALL is the number of a call since
// Reset, from 1, or the name of an entry point and which of its calls is meant, from 1: "fail ibwrt 3".
//   fail CALL           the call does nothing and returns the library's general error
//   timeout CALL        the call does nothing and returns that its time limit has passed
//   short CALL BYTES    a call that moves data moves only the first BYTES of them and says so, without an error; the
//                       rest of what was to be written is lost, the rest of an answer can still be read
//   late CALL SECONDS   the call takes that long; when this is more than its time limit, it is a timeout at the limit
//   unplug CALL         this call and every later one, by whichever library, finds the board or the device gone
// False: a line was not understood; nothing of the text is added then.
[[nodiscard]] bool Script(std::string_view text);

// One line a call in the order of the calls: name(arguments) = result, and what was read after it:
//   ibwrt(0, "*IDN?\n") = 0x0100
//   ibrd(0, 256) = 0x2100, "ORVO,XG5530,1234567,1.00\n"
// Data are written as in C (\n \r \" \\ \xNN) and never shortened. What a call was to move stands there whole,
// also when a fault cut it. RegisterGpibGlobalsForThread and its opposite are no calls of the bus: they have no line
// and no number.
std::vector<std::string> Traffic();
int CallCount();

// How many faults took effect. An unplugged bus counts once; a "short" for a call that moved no more than that, or a
// "late", which only delays, within the time limit, counts when it was met.
int InjectedFaults();

// How time passes in a late call; an empty function: for real.
void OnWait(std::function<void(double seconds)> wait);

// Adds those models of a folder of model files that the bench lacks; usbIds: the file with their resource prefixes.
// They understand what their files say. Empty, or what is wrong with the files.
std::string AddModels(const std::string& folder, const std::string& usbIds);

// What the instrument was sent: each complete program message without its terminator, blocks included byte by byte; a
// raw block is a message of its own.
std::vector<std::string> Messages(std::string_view model);

struct ControlPoint {
  std::int32_t position = 0; // 0 to 524288
  std::int16_t value = 0;
  bool operator==(const ControlPoint&) const = default;
};

struct Waveform {
  std::string name;
  int format = 0;                     // 0: codes, 1: control points
  std::vector<std::int16_t> codes;    // of the instrument's data bits
  std::vector<ControlPoint> controls; // ascending
  bool operator==(const Waveform&) const = default;
};

// Empty: that memory holds nothing, or there is no such memory.
std::optional<Waveform> Memory(std::string_view model, int number);

// A setting as text; a number in its shortest form. Settings of a channel end with its number, "frequency1", and
// without a number the first channel's is meant. Unknown ones are empty. There are:
//   frequencyN, amplitudeN, unitN (PP, PK or empty), offsetN, offsetonN (0, 1), rangeN (position; volts for the
//   PJ7410), outputN (0, 1), loadN, shapeN, polarityN (NORM, INV), scaleN (FS, PFS, MFS), userN (number of the memory
//   chosen), channel, mode, header, order (NORM, SWAP), size, bank, start, name, sequence (0, 1), running (0, 1),
//   settling (polls left), remote, lockout (0, 1), serial, power (on, off)
// as far as the instrument has them.
std::string Setting(std::string_view model, std::string_view name);

// The error queue, oldest first, such as: -113,"Undefined header". Reading it here removes nothing.
std::vector<std::string> Errors(std::string_view model);

// Gives an instrument a stored waveform or a setting, whatever its limits. "sequence" 1 also starts it; "power" off
// takes the instrument from every bus; "serial" changes its number. False: no such model or memory.
[[nodiscard]] bool Store(std::string_view model, int number, Waveform waveform);
[[nodiscard]] bool Set(std::string_view model, std::string_view name, std::string_view value);

} // namespace calder::sim
