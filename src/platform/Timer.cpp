#include "platform/Timer.h"

#include <string>

#include "platform/Failure.h"

void Timer::Check(Aspect aspect, int value) const {
  if (aspect == Aspect::Interval && (value < 0 || value > 65535))
    throw Failure("A timer can't tick every " + std::to_string(value) + " ms: 0 to 65535 is possible");
}

void Timer::Changed(Aspect) { Restart(); }

void Timer::Restart() {
  Stop();
  if (Enabled && Interval > 0)
    number_ = clock_.Start(Interval, [this] {
      if (Tick) Tick();
    });
}

void Timer::Stop() {
  if (number_ != 0) clock_.Stop(number_);
  number_ = 0;
}
