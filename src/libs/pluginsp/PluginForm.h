// The settings that a plug-in lets the user look at before it reads a file, and why an import failed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace calder {

struct PluginOption {
  enum class Kind : std::uint32_t { Choice = 1, Number = 2, Truth = 3 };

  Kind kind = Kind::Truth;
  std::string key;
  std::string caption;
  std::vector<std::string> choices; // of a Choice, at least one
  double minimum = 0;               // of a Number
  double maximum = 0;
  double value = 0; // a place among the choices, a whole number within the limits, 0 or 1
};

struct PluginForm {
  std::vector<PluginOption> options; // empty: nothing can be set
  std::string preview;               // lines for letters of equal width; empty: none
};

struct PluginFault {
  // Append only: the helper process and the editor may be of two builds.
  enum class Kind : std::uint32_t {
    None,
    Refused,       // by the plug-in
    Crashed,       // number: the signal
    Ended,         // the helper went without a signal; number: its exit status
    Hung,          // number: seconds
    NegativeCount, // of points; number: the count
    OffsetPastEnd, // number: the start offset
    WrongCount,    // of a block; number: delivered, expected: how many it had to be
    MorePoints,    // than announced
    NotLoaded,     // the shared object is no plug-in, or one of another version
    NoHelper,      // the helper process could not be started
    Garbled,       // what came back means nothing
    Cancelled,     // by the user
  };

  Kind kind = Kind::None;
  std::int32_t number = 0;
  std::int32_t expected = 0;
  std::string text{}; // the plug-in's or the system's own sentence; may be empty
};

} // namespace calder
