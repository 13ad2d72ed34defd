#pragma once

#include <memory>
#include <optional>

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
  void ApplyPlace() override;
  // Asks the window manager for what the scene wants to be; false where it knows no maximised windows.
  bool ApplyMaximised();
  // The scene within the frame: of a maximised one the edges lie outside.
  void PlaceView();
  bool IsMaximised() const { return awaited_.value_or(maximised_); }
  void MeasureOverhang();
  // What of the scene's edges the frame cuts off, in pixels.
  int Cut() const { return IsMaximised() ? overhang_ : 0; }
  void HandOverDrag();
  void OnButton(const GdkEventButton& event);
  void AdoptPlace();
  void OnState(const GdkEventWindowState& event);
  void FindKeyboardAPlace();
  void OnMaximised(bool maximised);
  void OnFocus(bool in);
  // Whether the keyboard hasn't gone to anybody else: a popup may have come between, or nobody has it.
  bool KeepsFocus() const;

  std::shared_ptr<TaskBarEntry> entry_;
  bool active_ = false;
  bool iconified_ = false;
  gint64 settled_at_ = 0;  // microseconds; until then, places that the window manager reports may be old ones
  bool waiting_ = false;
  bool ask_again_ = false;  // the last move of the program's own hasn't been repeated yet
  GtkWidget* frame_of_view_;
  GdkRectangle place_of_view_{};
  bool maximised_ = false;       // by the window manager
  std::optional<bool> awaited_;  // what it was asked for and hasn't answered yet
  int overhang_ = 0;             // of a maximised scene over the work area, in pixels
  struct Point {
    int x, y;
  };
  std::optional<Point>
      dragged_at_;  // where the mouse holds the window that the window manager moves, in pixels
  Callbacks callbacks_;
};
