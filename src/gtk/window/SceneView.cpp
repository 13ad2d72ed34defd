#include "gtk/window/SceneView.h"

#include <algorithm>

#include "gtk/window/HasWidget.h"
#include "gtk/window/Input.h"
#include "platform/Text.h"
#include "platform/scene/Drawing.h"

namespace {

constexpr size_t LongestToolTip = 500;  // characters

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

// A class of its own for the toolkit, whose accessible object is ours.
struct SceneLayout {
  GtkLayout Base;
};
struct SceneLayoutClass {
  GtkLayoutClass Base;
};
G_DEFINE_TYPE(SceneLayout, scene_layout, GTK_TYPE_LAYOUT)
void scene_layout_class_init(SceneLayoutClass*) {}
void scene_layout_init(SceneLayout*) {}

GtkWidget* MakeLayout() {
  return static_cast<GtkWidget*>(g_object_ref_sink(g_object_new(scene_layout_get_type(), nullptr)));
}

}  // namespace

SceneView::SceneView(Events& gate, Window& scene)
    : widget_(MakeLayout()), accessible(widget_.get(), gate, scene), gate_(gate), scene_(scene) {
  gtk_widget_set_hexpand(Widget(), TRUE);
  gtk_widget_set_vexpand(Widget(), TRUE);
  WirePainting();
  WireMouse();
  WireDrops();
}

void SceneView::WirePainting() {
  callbacks_.On<void(GtkWidget*)>(Widget(), "realize", [this](auto*) { OnRealize(); });
  callbacks_.On<void(GtkWidget*)>(Widget(), "unrealize",
                                  [this](auto*) { callbacks_.Off(gtk_widget_get_frame_clock(Widget())); });
  callbacks_.On<gboolean(GtkWidget*, cairo_t*)>(Widget(), "draw", [this](auto*, cairo_t* cairo) {
    Paint(cairo);
    return FALSE;  // the widgets follow
  });
}

void SceneView::WireMouse() {
  using Handled = gboolean(GtkWidget*, GdkEvent*);
  gtk_widget_add_events(
      Widget(), GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_POINTER_MOTION_MASK | GDK_SCROLL_MASK);
  callbacks_.On<Handled>(Widget(), "button-press-event", [this](auto*, GdkEvent* event) -> gboolean {
    if (!IsOwn(event)) return FALSE;
    OnPress(event->button);
    return TRUE;
  });
  callbacks_.On<Handled>(Widget(), "button-release-event", [this](auto*, GdkEvent* event) -> gboolean {
    if (!IsOwn(event)) return FALSE;
    OnRelease(event->button);
    return TRUE;
  });
  callbacks_.On<Handled>(Widget(), "motion-notify-event", [this](auto*, GdkEvent* event) -> gboolean {
    if (!IsOwn(event)) return FALSE;
    OnMove(event->motion);
    return TRUE;
  });
  callbacks_.On<Handled>(Widget(), "scroll-event", [this](auto*, GdkEvent* event) -> gboolean {
    if (!IsOwn(event)) return FALSE;
    OnWheel(event->scroll);
    return TRUE;
  });
  gtk_widget_set_has_tooltip(Widget(), TRUE);
  callbacks_.On<gboolean(GtkWidget*, int, int, gboolean, GtkTooltip*)>(
      Widget(), "query-tooltip",
      [this](auto*, int x, int y, gboolean, GtkTooltip* tooltip) { return ShowToolTip(x, y, tooltip); });
}

void SceneView::WireDrops() {
  gtk_drag_dest_set(Widget(), static_cast<GtkDestDefaults>(0), nullptr, 0,
                    static_cast<GdkDragAction>(GDK_ACTION_COPY | GDK_ACTION_LINK));
  gtk_drag_dest_add_text_targets(Widget());
  using Moved = gboolean(GtkWidget*, GdkDragContext*, int, int, guint);
  callbacks_.On<Moved>(
      Widget(), "drag-motion", [this](auto*, GdkDragContext* context, int x, int y, guint time) {
        const bool takes = TakesDrop(context, x, y);
        const auto none = static_cast<GdkDragAction>(0);
        gdk_drag_status(context, takes ? gdk_drag_context_get_suggested_action(context) : none, time);
        return takes;
      });
  callbacks_.On<Moved>(Widget(), "drag-drop",
                       [this](auto*, GdkDragContext* context, int, int, guint time) -> gboolean {
                         GdkAtom target = gtk_drag_dest_find_target(Widget(), context, nullptr);
                         if (target == GDK_NONE) return FALSE;
                         gtk_drag_get_data(Widget(), context, target, time);
                         return TRUE;
                       });
  callbacks_.On<void(GtkWidget*, GdkDragContext*, int, int, GtkSelectionData*, guint, guint)>(
      Widget(), "drag-data-received",
      [this](auto*, GdkDragContext* context, int x, int y, GtkSelectionData* data, guint, guint time) {
        const std::string text = TakeText(reinterpret_cast<char*>(gtk_selection_data_get_text(data)));
        if (!text.empty()) OnDrop(text, x, y);
        gtk_drag_finish(context, !text.empty(), FALSE, time);
      });
}

void SceneView::OnRealize() {
  callbacks_.On<void(GdkFrameClock*)>(gtk_widget_get_frame_clock(Widget()), "update",
                                      [this](auto*) { OnFrame(); });
}

void SceneView::OnFrame() {
  if (!dirty_) return;
  if (BeforeFrame) BeforeFrame();
  for (const PixelRect& rect : Compose())
    gtk_widget_queue_draw_area(Widget(), rect.Left, rect.Top, rect.Width, rect.Height);
}

void SceneView::Invalidate() {
  if (dirty_) return;
  dirty_ = true;
  if (gtk_widget_get_realized(Widget()))
    gdk_frame_clock_request_phase(gtk_widget_get_frame_clock(Widget()), GDK_FRAME_CLOCK_PHASE_UPDATE);
}

void SceneView::Repaint() {
  if (!gtk_widget_get_mapped(Widget())) return;
  const auto damage = Compose();
  if (damage.empty()) return;
  // By way of the toplevel window, which is the one that reaches the screen.
  GtkWidget* frame = gtk_widget_get_toplevel(Widget());
  GdkWindow* window = gtk_widget_get_window(frame);
  int left = 0, top = 0;
  gtk_widget_translate_coordinates(Widget(), frame, 0, 0, &left, &top);
  cairo_region_t* region = cairo_region_create();
  for (const PixelRect& rect : damage) {
    const cairo_rectangle_int_t part{left + rect.Left, top + rect.Top, rect.Width, rect.Height};
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
  const int scale = gtk_widget_get_scale_factor(Widget());
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
  scene_.Draws().Compose({pixels_.data(), width_ * scale_, height_ * scale_, scale_}, wanted, damage);
  PlaceWidgets(wanted);
  shown_ = std::move(wanted);
  FindKeyboardAPlace();
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
    const bool is_new = !gtk_widget_get_parent(widget);
    if (is_new) {
      gtk_layout_put(Layout(), widget, item->Bounds.Left, item->Bounds.Top);
      gtk_widget_show(widget);
    }
    // A page that begins behind has the size that it will be seen in.
    if (!hidden || is_new) {
      gtk_layout_move(Layout(), widget, item->Bounds.Left, item->Bounds.Top);
      gtk_widget_set_size_request(widget, item->Bounds.Width, item->Bounds.Height);
    }
    gtk_widget_set_child_visible(widget, !hidden);
  }
}

// A page that has gone, or behind another, takes the keyboard along; one that is new has only now come in.
void SceneView::FindKeyboardAPlace() {
  GtkWidget* top = gtk_widget_get_toplevel(Widget());
  if (!scene_.KeyboardFree || !GTK_IS_WINDOW(top) || gtk_window_get_focus(GTK_WINDOW(top))) return;
  gate_.Run([this] { scene_.KeyboardFree(); });
}

void SceneView::Paint(cairo_t* cairo) {
  if (!gtk_cairo_should_draw_window(cairo, Inner())) return;
  // What has changed since the last frame waits for the next one, where all of it is painted.
  if (pixels_.empty()) Compose();
  cairo_surface_t* surface = cairo_image_surface_create_for_data(
      reinterpret_cast<unsigned char*>(pixels_.data()), CAIRO_FORMAT_RGB24, width_ * scale_, height_ * scale_,
      width_ * scale_ * 4);
  cairo_surface_set_device_scale(surface, scale_, scale_);
  cairo_set_source_surface(cairo, surface, 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
  cairo_paint(cairo);
  cairo_surface_destroy(surface);
}

SceneView::Point SceneView::At(double x, double y, double root_x, double root_y) const {
  if (!scene_.Captures()) return {x * TwipsPerPixel, y * TwipsPerPixel};
  return {root_x * TwipsPerPixel - scene_.Left, root_y * TwipsPerPixel - scene_.Top};
}

bool SceneView::IsOwn(const GdkEvent* event) const { return event->any.window == Inner(); }

void SceneView::OnPress(const GdkEventButton& event) {
  if (event.type == GDK_3BUTTON_PRESS || event.button > 3) return;
  const bool second = event.type == GDK_2BUTTON_PRESS;
  gate_.Run([&] {
    // GDK tells the second press of a double click twice: as a press, and as a double click.
    const Point at{event.x * TwipsPerPixel, event.y * TwipsPerPixel};
    if (second && !scene_.At(at.X, at.Y).DblClick) return;
    scene_.MousePressed(Input::Button(event.button), Input::Shift(event.state), at.X, at.Y, second);
  });
}

void SceneView::OnRelease(const GdkEventButton& event) {
  if (event.button > 3) return;
  gate_.Run([&] {
    const Point at = At(event.x, event.y, event.x_root, event.y_root);
    scene_.MouseReleased(Input::Button(event.button), Input::Shift(event.state), at.X, at.Y);
  });
}

void SceneView::OnMove(const GdkEventMotion& event) {
  gate_.Run([&] {
    const Point at = At(event.x, event.y, event.x_root, event.y_root);
    if (!scene_.Captures()) ShowPointer(scene_.At(at.X, at.Y));
    scene_.MouseMoved(Input::Held(event.state), Input::Shift(event.state), at.X, at.Y);
  });
}

void SceneView::OnWheel(const GdkEventScroll& event) {
  const int notches = wheel_.Turn(event);
  if (notches == 0) return;
  gate_.Run([&] { scene_.Wheeled(notches, event.x * TwipsPerPixel, event.y * TwipsPerPixel); });
}

void SceneView::ShowPointer(const Control& control) {
  if (control.MousePointer == pointer_) return;
  pointer_ = control.MousePointer;
  const Owned<GdkCursor> cursor(
      gdk_cursor_new_from_name(gtk_widget_get_display(Widget()), PointerName(pointer_)));
  gdk_window_set_cursor(Inner(), cursor.get());
}

bool SceneView::ShowToolTip(int x, int y, GtkTooltip* tooltip) {
  // A modal dialog keeps the mouse off the window, but not its tips.
  GtkWidget* modal = gtk_grab_get_current();
  if (modal && modal != Widget() && !gtk_widget_is_ancestor(Widget(), modal)) return false;
  const Control& control = scene_.At(x * TwipsPerPixel, y * TwipsPerPixel);
  if (control.ToolTipText->empty()) return false;
  const PixelRect bounds = control.PixelBounds();
  const GdkRectangle area{bounds.Left, bounds.Top, bounds.Width, bounds.Height};
  gtk_tooltip_set_text(tooltip, Text::Left(Text::Valid(control.ToolTipText()), LongestToolTip).c_str());
  gtk_tooltip_set_tip_area(tooltip, &area);
  return true;
}

bool SceneView::TakesDrop(GdkDragContext* context, int x, int y) {
  return scene_.At(x * TwipsPerPixel, y * TwipsPerPixel).OLEDragDrop &&
         gtk_drag_dest_find_target(Widget(), context, nullptr) != GDK_NONE;
}

void SceneView::OnDrop(const std::string& text, int x, int y) {
  gate_.Run([&] { scene_.Dropped(DroppedText(text), x * TwipsPerPixel, y * TwipsPerPixel); });
}
