#pragma once

#include <memory>

#include "gtk/window/SceneHost.h"
#include "gtk/window/TaskBarEntry.h"

// The main window: managed, without a system frame. It is the one entry on the task bar; what the window
// manager does to it goes to the window that stands for the entry.
class MainHost : public SceneHost {
 public:
  MainHost(Events& gate, PopupGroup& popups, std::shared_ptr<TaskBarEntry> entry, Window& scene);
  ~MainHost() override;
  void Show() override;
  void Hide() override;
  void Move() override;
  void Resize() override;
  void State() override;
  void Focus() override;

 private:
  void Wire();
  void AdoptPlace();
  void OnState(const GdkEventWindowState& event);
  void OnFocus(bool in);
  // Whether the keyboard hasn't gone to anybody else: a popup may have come between, or nobody has it.
  bool KeepsFocus() const;

  std::shared_ptr<TaskBarEntry> entry_;
  bool active_ = false;
  bool iconified_ = false;
  gint64 settled_at_ = 0;  // microseconds; until then, places that the window manager reports may be old ones
  bool waiting_ = false;
  bool ask_again_ = false;  // the last move of the program's own hasn't been repeated yet
  Callbacks callbacks_;
};
