#pragma once

#include <functional>

#include "platform/Property.h"

// What a timer asks of the outside.
class Clock {
 public:
  virtual ~Clock() = default;
  // Calls `tick` every `milliseconds` until stopped. Returns a number for Stop.
  virtual int Start(int milliseconds, std::function<void()> tick) = 0;
  virtual void Stop(int number) = 0;
};

// Ticks every Interval milliseconds while it is enabled. Enabling a running timer doesn't restart its count;
// a new Interval does. The interval is a request, not a promise.
class Timer {
 public:
  enum class Aspect { Interval, Enabled };

  Timer(Clock& clock, int interval, bool enabled)
      : Interval(this, Aspect::Interval, interval), Enabled(this, Aspect::Enabled, enabled), clock_(clock) {
    if (enabled) Restart();
  }
  Timer(const Timer&) = delete;
  ~Timer() { Stop(); }

  // Milliseconds, 0 to 65535; 0: never ticks. A value outside that range fails and leaves the interval.
  ObservedValue<int, Timer, Aspect> Interval;
  ObservedValue<bool, Timer, Aspect> Enabled;
  std::function<void()> Tick;

  void Check(Aspect aspect, int value) const;
  void Changed(Aspect aspect);

 private:
  void Restart();
  void Stop();

  Clock& clock_;
  int number_ = 0;  // of the running count, 0 for none
};
