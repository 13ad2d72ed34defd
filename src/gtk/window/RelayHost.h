#pragma once

#include <memory>

#include "gtk/window/TaskBarEntry.h"

// A window that is on the task bar only: what it says of itself goes to the main window's frame.
class RelayHost : public WindowHost {
 public:
  RelayHost(std::shared_ptr<TaskBarEntry> entry, Window& scene);
  ~RelayHost() override;
  void Show() override {}
  void Hide() override {}
  void Move() override {}
  void Resize() override {}
  void Caption() override;
  void State() override;
  void Focus() override;
  void Invalidate() override {}
  void Repaint() override {}

 private:
  std::shared_ptr<TaskBarEntry> entry_;
  Window& scene_;
};
