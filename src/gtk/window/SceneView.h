#pragma once

#include <gtk/gtk.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "gtk/window/Accessible.h"
#include "gtk/window/Input.h"
#include "platform/Events.h"
#include "platform/scene/DisplayList.h"
#include "platform/scene/Window.h"

// Shows a window's scene: keeps its composed bitmap, paints anew what has changed once a frame, sets the real
// widgets over their places, and feeds the mouse in.
class SceneView {
 public:
  SceneView(Events& gate, Window& scene);
  SceneView(const SceneView&) = delete;

  GtkWidget* Widget() const { return widget_.get(); }

  // Something may look different: compares at the next frame.
  void Invalidate();
  // Compares and paints now.
  void Repaint();

  // Runs in a frame before anything is compared.
  std::function<void()> BeforeFrame;

 private:
  const Owned<GtkWidget> widget_;

 public:
  // What screen readers know of the scene.
  Accessible accessible;

 private:
  void WirePainting();
  void WireMouse();
  void WireDrops();
  void OnRealize();
  void OnFrame();
  void Paint(cairo_t* cairo);
  // The view's own: what its widgets leave of the events over them has another origin.
  bool IsOwn(const GdkEvent* event) const;
  void OnPress(const GdkEventButton& event);
  void OnRelease(const GdkEventButton& event);
  void OnMove(const GdkEventMotion& event);
  void OnWheel(const GdkEventScroll& event);
  bool TakesDrop(GdkDragContext* context, int x, int y);
  void OnDrop(const std::string& text, int x, int y);

  // Where the mouse is on the scene, in twips. While the scene captures the mouse this goes by the window's
  // own position, which runs ahead of the one that the window system has carried out.
  struct Point {
    Twips X, Y;
  };
  Point At(double x, double y, double root_x, double root_y) const;

  std::vector<PixelRect> Compose();
  void PlaceWidgets(const DisplayList& list);
  void FindKeyboardAPlace();
  void ShowPointer(const Control& control);
  bool ShowToolTip(int x, int y, GtkTooltip* tooltip);
  GtkLayout* Layout() const { return GTK_LAYOUT(widget_.get()); }
  GdkWindow* Inner() const { return gtk_layout_get_bin_window(Layout()); }

  Events& gate_;
  Window& scene_;
  DisplayList shown_;
  std::vector<uint32_t> pixels_;
  int width_ = 0, height_ = 0, scale_ = 0;  // of the bitmap: logical pixels, and device pixels to one of them
  bool dirty_ = true;
  Input::Wheel wheel_;
  Pointer pointer_ = Pointer::Default;
  Callbacks callbacks_;
};
