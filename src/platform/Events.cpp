#include "platform/Events.h"

#include <exception>
#include <string>
#include <utility>

void Events::Run(const std::function<void()>& handler) {
  if (closed_) return;
  struct Depth {
    explicit Depth(int& count) : count(count) { ++count; }
    ~Depth() { --count; }
    int& count;
  };
  try {
    const Depth depth(depth_);
    handler();
  } catch (const Failure& failure) {
    if (!Unhandled) throw;
    Unhandled(failure);
  } catch (const std::exception& failure) {
    // The standard library's own failures as well, such as a lack of memory.
    if (!Unhandled) throw;
    Unhandled(Failure(std::string("Something that wasn't expected failed in the program itself: ") +
                      failure.what()));
  } catch (...) {
    if (!Unhandled) throw;
    Unhandled(Failure("Something that wasn't expected failed in the program itself"));
  }
  if (depth_ == 0) std::exchange(buried_, {}).clear();
}

void Events::Bury(std::shared_ptr<void> thing) {
  if (depth_ > 0) buried_.push_back(std::move(thing));
}
