#pragma once

#include <memory>

#include "gtk/window/SceneHost.h"
#include "gtk/window/TaskBarEntry.h"

// A popup window: above everything, without the keyboard's focus, one of the group while it is on the screen.
class PopupHost : public SceneHost {
 public:
  PopupHost(Events& gate, PopupGroup& popups, std::shared_ptr<TaskBarEntry> owner, Window& scene);
  ~PopupHost() override;
  void Show() override;
  void Hide() override;
  void Focus() override;

 private:
  std::shared_ptr<TaskBarEntry> owner_;
};
