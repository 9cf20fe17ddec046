// What an action changed of what the main window shows. Actions mark it; the window shows it once, after the action.
#pragma once

namespace calder {

enum class Change : unsigned {
  Picture = 1,   // waveform, grid, view or markers: the picture is drawn
  Markers = 2,   // only the markers moved
  Readouts = 4,  // the markers' positions, codes and distance
  View = 8,      // zoom lists, scroll bars, range labels, units, which view is shown
  Commands = 16, // what the entries say and whether they can be chosen
  Title = 32,
  Mouse = 64, // the pointer's position
};

class Changes {
public:
  constexpr Changes() = default;
  constexpr Changes(Change change) : bits_(static_cast<unsigned>(change)) {} // NOLINT: one change is a set of one
  [[nodiscard]] constexpr bool Has(Change change) const { return (bits_ & static_cast<unsigned>(change)) != 0; }
  [[nodiscard]] constexpr bool None() const { return bits_ == 0; }
  friend constexpr bool operator==(Changes, Changes) = default;
  friend constexpr Changes operator|(Changes a, Changes b) {
    a.bits_ |= b.bits_;
    return a;
  }

private:
  unsigned bits_ = 0;
};

constexpr Changes operator|(Change a, Change b) {
  return Changes(a) | Changes(b);
}

inline constexpr Changes kEdited = Change::Picture | Change::Readouts | Change::Commands;
inline constexpr Changes kViewMoved = Change::Picture | Change::View | Change::Mouse;
inline constexpr Changes kEverything = kEdited | kViewMoved | Change::Title;

} // namespace calder
