// How the instruments of a model are spoken to where the command tables do not say it: the form of the waveform block,
// what chooses a loaded memory, what goes before and after.
//
// Texts hold placeholders, replaced when they are sent: $CH$ (the channel's number, from 1), $NUMBER$ (the memory's
// number), $NAME$ (its name). An empty text is not sent. docs/models.md describes the keys.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace calder {

// A running sequence is in the way of a transfer: how to see and to stop it.
struct SequenceProtocol {
  std::string State;     // answers 1 while sequences are on
  std::string Condition; // a query whose bits `Running` say that one runs
  std::uint32_t Running = 0;
  std::string Stop;
  std::string End; // switches sequences off
};

// Polarity and scale go out with the amplitude range.
struct PolarityProtocol {
  std::string Query;   // answers the shape
  std::string Command; // $SHAPE$ is that answer, $POLARITY$ and $SCALE$ one of the words below
  std::string Normal;
  std::string Inverted;
  std::array<std::string, 3> Scales; // +/-FS, 0/+FS, -FS/0
};

// Settings that go out step by step, each after the instrument has settled.
struct PowerSourceProtocol {
  std::string Clear;
  std::string ModeQuery;
  std::vector<std::string> ModeReplies; // by the channel's position
  std::vector<std::string> ModeCommands;
  std::string ModeOutputOff; // before the mode changes
  std::string RangeQuery;
  std::vector<std::string> RangeReplies; // by the range's position; any other answer is the first
  std::vector<std::string> RangeCommands;
  std::string Amplitude; // a blank and the number follow
  std::string Offset;
  std::string Frequency;
  std::array<std::string, 3> Output; // on, off, keep
  std::string SettlingQuery;
  std::uint32_t SettlingBits = 0; // set until it has settled
};

struct Protocol {
  bool BlockHeader = false;             // format and count before the points, and control points are possible
  std::string BlockCommand;             // of a block with a header: begins its message on USBTMC
  std::string Select;                   // makes the loaded memory the waveform
  std::int32_t SelectOffset = 0;        // added to $NUMBER$ there
  std::array<std::string, 3> Output;    // after the choice: on, off, keep
  std::int32_t LoadSeconds = 0;         // until the instrument has loaded the memory
  bool PeakSuffix = true;               // PP or PK after an amplitude
  std::vector<std::string> Preparation; // after the common settings
  std::string ReadInformation = ":TRAC:INF? $NUMBER$";
  std::string ReadData = ":TRAC:DATA? $NUMBER$";
  std::optional<SequenceProtocol> Sequence;
  std::optional<PolarityProtocol> Polarity;
  std::optional<PowerSourceProtocol> PowerSource;
};

} // namespace calder
