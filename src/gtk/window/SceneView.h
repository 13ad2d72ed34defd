#pragma once

#include <gtkmm/layout.h>

#include <cstdint>
#include <vector>

#include "gtk/window/Accessible.h"
#include "platform/Events.h"
#include "platform/scene/DisplayList.h"
#include "platform/scene/Window.h"

// Shows a window's scene: keeps its composed bitmap, paints anew what has changed once a frame, sets the real
// widgets over their places, and feeds the mouse in.
class SceneView : public Gtk::Layout {
 public:
  SceneView(Events& gate, Window& scene);
  ~SceneView() override;

  // Something may look different: compares at the next frame.
  void Invalidate();
  // Compares and paints now.
  void Repaint();

  // Runs in a frame before anything is compared.
  std::function<void()> BeforeFrame;

  // What screen readers know of the scene.
  Accessible accessible;

 protected:
  bool on_draw(const Cairo::RefPtr<Cairo::Context>& cairo) override;
  void on_realize() override;
  void on_unrealize() override;
  bool on_button_press_event(GdkEventButton* event) override;
  bool on_button_release_event(GdkEventButton* event) override;
  bool on_motion_notify_event(GdkEventMotion* event) override;
  bool on_drag_motion(const Glib::RefPtr<Gdk::DragContext>& context, int x, int y, guint time) override;
  bool on_drag_drop(const Glib::RefPtr<Gdk::DragContext>& context, int x, int y, guint time) override;
  void on_drag_data_received(const Glib::RefPtr<Gdk::DragContext>& context, int x, int y,
                             const Gtk::SelectionData& data, guint info, guint time) override;

 private:
  // Where the mouse is on the scene, in twips. While the scene captures the mouse this goes by the window's
  // own position, which runs ahead of the one that the window system has carried out.
  struct Point {
    Twips X, Y;
  };
  Point At(double x, double y, double root_x, double root_y) const;

  std::vector<PixelRect> Compose();
  void PlaceWidgets(const DisplayList& list);
  void ShowPointer(const Control& control);
  bool ShowToolTip(int x, int y, const Glib::RefPtr<Gtk::Tooltip>& tooltip);

  Events& gate_;
  Window& scene_;
  DisplayList shown_;
  std::vector<uint32_t> pixels_;
  int width_ = 0, height_ = 0, scale_ = 0;  // of the bitmap: logical pixels, and device pixels to one of them
  bool dirty_ = true;
  gulong update_ = 0;  // the frame clock's signal
  Pointer pointer_ = Pointer::Default;
};
