// Time, so that a test never has to wait.
#pragma once

namespace calder {

class Clock {
public:
  virtual ~Clock() = default;
  // Seconds since midnight, local time: 0 <= value < 86400.
  [[nodiscard]] virtual double SecondsOfDay() const = 0;
  // Waits that long; with processEvents the window stays alive meanwhile, and what is pending is processed even when
  // there is nothing to wait for.
  virtual void Wait(double seconds, bool processEvents) = 0;
};

} // namespace calder
