#include "gtk/window/SceneView.h"

#include <gtkmm/tooltip.h>
#include <gtkmm/window.h>

#include <algorithm>

#include "gtk/window/HasWidget.h"
#include "platform/Desktop.h"
#include "platform/Text.h"
#include "platform/scene/Drawing.h"

namespace {

int MouseButton(guint button) { return button == 1 ? 1 : button == 3 ? 2 : 4; }

int HeldButtons(guint state) {
  return (state & GDK_BUTTON1_MASK ? 1 : 0) | (state & GDK_BUTTON3_MASK ? 2 : 0) |
         (state & GDK_BUTTON2_MASK ? 4 : 0);
}

int ShiftKeys(guint state) {
  return (state & GDK_SHIFT_MASK ? 1 : 0) | (state & GDK_CONTROL_MASK ? 2 : 0) |
         (state & GDK_MOD1_MASK ? 4 : 0);
}

const char* PointerName(Pointer pointer) {
  switch (pointer) {
    case Pointer::SizeDiagonal:
      return "nwse-resize";
    case Pointer::SizeLeftRight:
      return "ew-resize";
    case Pointer::SizeUpDown:
      return "ns-resize";
    case Pointer::Default:
      break;
  }
  return "default";
}

class DroppedText : public DataObject {
 public:
  explicit DroppedText(std::string text) : text_(std::move(text)) {}
  bool GetFormat(int format) const override { return format == 1; }
  std::string GetData(int format) const override {
    if (format != 1) throw Failure("What was dropped has no format " + std::to_string(format));
    return text_;
  }

 private:
  std::string text_;
};

GtkWidget* WidgetOf(const DrawItem& item) {
  // The list names its controls by their address.
  auto* control = static_cast<Control*>(const_cast<void*>(item.Control));
  auto* owner = dynamic_cast<HasWidget*>(control);
  return owner ? owner->Widget() : nullptr;
}

}  // namespace

SceneView::SceneView(Events& gate, Window& scene)
    : Glib::ObjectBase("MarlowickSceneView"),
      accessible(GTK_WIDGET(gobj()), gate, scene),
      gate_(gate),
      scene_(scene) {
  add_events(Gdk::BUTTON_PRESS_MASK | Gdk::BUTTON_RELEASE_MASK | Gdk::POINTER_MOTION_MASK);
  set_has_tooltip();
  signal_query_tooltip().connect([this](int x, int y, bool, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
    return ShowToolTip(x, y, tooltip);
  });
  set_hexpand();
  set_vexpand();
  std::vector<Gtk::TargetEntry> none;
  drag_dest_set(none, static_cast<Gtk::DestDefaults>(0), Gdk::ACTION_COPY | Gdk::ACTION_LINK);
  drag_dest_add_text_targets();
}

SceneView::~SceneView() = default;

void SceneView::on_realize() {
  Gtk::Layout::on_realize();
  GdkFrameClock* clock = gtk_widget_get_frame_clock(GTK_WIDGET(gobj()));
  const auto update = +[](GdkFrameClock*, gpointer self) {
    auto* view = static_cast<SceneView*>(self);
    if (!view->dirty_) return;
    if (view->BeforeFrame) view->BeforeFrame();
    for (const PixelRect& rect : view->Compose())
      view->queue_draw_area(rect.Left, rect.Top, rect.Width, rect.Height);
  };
  update_ = g_signal_connect(clock, "update", G_CALLBACK(update), this);
}

void SceneView::on_unrealize() {
  g_signal_handler_disconnect(gtk_widget_get_frame_clock(GTK_WIDGET(gobj())), update_);
  Gtk::Layout::on_unrealize();
}

void SceneView::Invalidate() {
  if (dirty_) return;
  dirty_ = true;
  if (get_realized())
    gdk_frame_clock_request_phase(gtk_widget_get_frame_clock(GTK_WIDGET(gobj())),
                                  GDK_FRAME_CLOCK_PHASE_UPDATE);
}

void SceneView::Repaint() {
  if (!get_mapped()) return;
  const auto damage = Compose();
  if (damage.empty()) return;
  // By way of the toplevel window, which is the one that reaches the screen; the view fills it.
  GtkWidget* frame = gtk_widget_get_toplevel(GTK_WIDGET(gobj()));
  GdkWindow* window = gtk_widget_get_window(frame);
  cairo_region_t* region = cairo_region_create();
  for (const PixelRect& rect : damage) {
    const cairo_rectangle_int_t part{rect.Left, rect.Top, rect.Width, rect.Height};
    cairo_region_union_rectangle(region, &part);
  }
  // A layout that waits for the next frame comes first, as it would there.
  gtk_container_check_resize(GTK_CONTAINER(frame));
  GdkDrawingContext* drawing = gdk_window_begin_draw_frame(window, region);
  gtk_widget_draw(frame, gdk_drawing_context_get_cairo_context(drawing));
  gdk_window_end_draw_frame(window, drawing);
  cairo_region_destroy(region);
  gdk_display_flush(gdk_window_get_display(window));
}

std::vector<PixelRect> SceneView::Compose() {
  dirty_ = false;
  accessible.Update();
  DisplayList wanted = scene_.Describe();
  const PixelRect bounds = scene_.PixelBounds();
  const int scale = get_scale_factor();
  std::vector<PixelRect> damage;
  if (bounds.Width != width_ || bounds.Height != height_ || scale != scale_) {
    width_ = bounds.Width;
    height_ = bounds.Height;
    scale_ = scale;
    pixels_.resize(static_cast<size_t>(width_) * static_cast<size_t>(height_) *
                   static_cast<size_t>(scale_ * scale_));
    damage.push_back({0, 0, width_, height_});
  } else {
    damage = Damage(shown_, wanted);
  }
  if (damage.empty()) return damage;
  scene_.OwnDesktop().Draws().Compose({pixels_.data(), width_ * scale_, height_ * scale_, scale_}, wanted,
                                      damage);
  PlaceWidgets(wanted);
  shown_ = std::move(wanted);
  return damage;
}

void SceneView::PlaceWidgets(const DisplayList& list) {
  std::vector<PixelRect> covers;
  for (auto item = list.rbegin(); item != list.rend(); ++item) {
    if (!item->Foreign) continue;
    GtkWidget* widget = WidgetOf(*item);
    if (!widget) continue;
    // A page behind the page on show goes on loading, but nothing of it needs to be painted.
    const bool hidden = std::any_of(covers.begin(), covers.end(),
                                    [&item](const PixelRect& cover) { return cover.Contains(item->Clip); });
    if (!hidden) covers.push_back(item->Clip);
    if (!gtk_widget_get_parent(widget)) {
      gtk_layout_put(gobj(), widget, item->Bounds.Left, item->Bounds.Top);
      gtk_widget_show(widget);
    }
    if (!hidden) {
      gtk_layout_move(gobj(), widget, item->Bounds.Left, item->Bounds.Top);
      gtk_widget_set_size_request(widget, item->Bounds.Width, item->Bounds.Height);
    }
    gtk_widget_set_child_visible(widget, !hidden);
  }
}

bool SceneView::on_draw(const Cairo::RefPtr<Cairo::Context>& cairo) {
  if (!gtk_cairo_should_draw_window(cairo->cobj(), gtk_layout_get_bin_window(gobj())))
    return Gtk::Layout::on_draw(cairo);
  // What has changed since the last frame waits for the next one, where all of it is painted.
  if (pixels_.empty()) Compose();
  cairo_surface_t* surface = cairo_image_surface_create_for_data(
      reinterpret_cast<unsigned char*>(pixels_.data()), CAIRO_FORMAT_RGB24, width_ * scale_, height_ * scale_,
      width_ * scale_ * 4);
  cairo_surface_set_device_scale(surface, scale_, scale_);
  cairo_set_source_surface(cairo->cobj(), surface, 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cairo->cobj()), CAIRO_FILTER_NEAREST);
  cairo->paint();
  cairo_surface_destroy(surface);
  return Gtk::Layout::on_draw(cairo);
}

SceneView::Point SceneView::At(double x, double y, double root_x, double root_y) const {
  if (!scene_.Captures()) return {x * TwipsPerPixel, y * TwipsPerPixel};
  return {root_x * TwipsPerPixel - scene_.Left, root_y * TwipsPerPixel - scene_.Top};
}

bool SceneView::on_button_press_event(GdkEventButton* event) {
  if (event->type == GDK_3BUTTON_PRESS || event->button > 3) return true;
  const bool second = event->type == GDK_2BUTTON_PRESS;
  gate_.Run([&] {
    // GDK tells the second press of a double click twice: as a press, and as a double click.
    const Point at{event->x * TwipsPerPixel, event->y * TwipsPerPixel};
    if (second && !scene_.At(at.X, at.Y).DblClick) return;
    scene_.MousePressed(MouseButton(event->button), ShiftKeys(event->state), at.X, at.Y, second);
  });
  return true;
}

bool SceneView::on_button_release_event(GdkEventButton* event) {
  if (event->button > 3) return true;
  gate_.Run([&] {
    const Point at = At(event->x, event->y, event->x_root, event->y_root);
    scene_.MouseReleased(MouseButton(event->button), ShiftKeys(event->state), at.X, at.Y);
  });
  return true;
}

bool SceneView::on_motion_notify_event(GdkEventMotion* event) {
  gate_.Run([&] {
    const Point at = At(event->x, event->y, event->x_root, event->y_root);
    if (!scene_.Captures()) ShowPointer(scene_.At(at.X, at.Y));
    scene_.MouseMoved(HeldButtons(event->state), ShiftKeys(event->state), at.X, at.Y);
  });
  return true;
}

void SceneView::ShowPointer(const Control& control) {
  if (control.MousePointer == pointer_) return;
  pointer_ = control.MousePointer;
  get_bin_window()->set_cursor(Gdk::Cursor::create(get_display(), PointerName(pointer_)));
}

bool SceneView::ShowToolTip(int x, int y, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
  const Control& control = scene_.At(x * TwipsPerPixel, y * TwipsPerPixel);
  if (control.ToolTipText->empty()) return false;
  const PixelRect bounds = control.PixelBounds();
  tooltip->set_text(Text::Left(Text::Valid(control.ToolTipText()), 500));
  tooltip->set_tip_area({bounds.Left, bounds.Top, bounds.Width, bounds.Height});
  return true;
}

bool SceneView::on_drag_motion(const Glib::RefPtr<Gdk::DragContext>& context, int x, int y, guint time) {
  const bool takes = static_cast<bool>(scene_.At(x * TwipsPerPixel, y * TwipsPerPixel).OLEDragDrop) &&
                     drag_dest_find_target(context) != "NONE" && !drag_dest_find_target(context).empty();
  context->drag_status(takes ? context->get_suggested_action() : static_cast<Gdk::DragAction>(0), time);
  return takes;
}

bool SceneView::on_drag_drop(const Glib::RefPtr<Gdk::DragContext>& context, int, int, guint time) {
  const Glib::ustring target = drag_dest_find_target(context);
  if (target.empty() || target == "NONE") return false;
  drag_get_data(context, target, time);
  return true;
}

void SceneView::on_drag_data_received(const Glib::RefPtr<Gdk::DragContext>& context, int x, int y,
                                      const Gtk::SelectionData& data, guint, guint time) {
  const std::string text = data.get_text();
  if (!text.empty())
    gate_.Run([&] { scene_.Dropped(DroppedText(text), x * TwipsPerPixel, y * TwipsPerPixel); });
  context->drag_finish(!text.empty(), false, time);
}
